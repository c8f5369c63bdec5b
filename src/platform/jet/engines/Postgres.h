#pragma once

#include "platform/jet/engines/Engine.h"
#include "platform/jet/engines/PostgresLine.h"

namespace jet {

/// A server's database. Transactions are begun, and their writes sent, with the next statement
/// whose outcome somebody asks for, or with the commit: what waits is sent in one go.
class Postgres : public Engine {
  public:
    explicit Postgres(const QString& uri);
    ~Postgres() override;

    Dialect dialect() const override { return Dialect::postgres(); }
    QString name() const override { return m_line.uri(); }
    PreparedPtr prepare(const QByteArray& sql, Access access) override;
    PreparedPtr prepareFirst(const QByteArray& sql, int limit) override;
    Outcome run(const PreparedPtr& statement, const Arguments& arguments, Rows* rows,
                int limit) override;
    void runTogether(std::vector<Read>& reads) override;
    void execute(const QByteArray& sql) override;
    bool defers() const override { return true; }
    DeferredPtr writeLater(const PreparedPtr& statement, const Arguments& arguments,
                           const QString& step) override;
    DeferredPtr readLater(const PreparedPtr& statement, const Arguments& arguments,
                          int limit) override;
    void sendWaiting() override;
    void begin(int depth, const QString& step) override;
    void commit(int depth) override;
    void rollback(int depth) override;
    void setWriter(const QString& who) override;
    bool inTransaction() const override { return m_transaction != Transaction::None; }
    void tidy() override;
    EngineOrder order() const override { return m_order; }
    Schema readSchema() override;
    bool schemaMayHaveChanged() override { return true; }
    ChangeMark mark() override;
    bool stillStands(const ChangeMark& mark) override;
    quint64 waits() const override { return m_line.waits(); }

  private:
    struct Statement;
    struct Command;
    struct Flight;
    enum class Transaction {
        None,
        Waiting, ///< begun here; the server hasn't been told
        Open,
    };
    /// What one of the things sent is.
    enum class Part {
        Statement,
        Preparing,
        Guard, ///< the savepoint before the commands that are asked for
        Word,  ///< of the engine's own
        Any,   ///< whether it succeeds doesn't matter
    };

    void talk(std::vector<Command>& commands);
    Flight fly(std::vector<Command>& commands);
    void endGroup(Flight& flight);
    void closeStatements(Flight& flight);
    void send(Flight& flight, Command& command);
    void receive(Flight& flight, Part part, Command* command);
    static void takeOutcome(Command& command, PGresult* result);
    void arrived(const std::vector<Command>& commands);
    bool failed(Flight& flight, bool again);
    void dropWaiting(std::size_t from);
    void connectAgain();
    void clearReceived(std::vector<Command>& commands);
    void endUnheard(const char* sql);

    PostgresLine m_line;
    std::vector<Command> m_waiting; ///< to be sent with the next trip
    EngineOrder m_order = EngineOrder::Other;
    Transaction m_transaction = Transaction::None;
    bool m_hasWritten = false; ///< in the open transaction
    QByteArray m_sign;         ///< what a lock's select asks for besides, to tell the writer
    qint64 m_names = 0;
    qint64 m_writes = 0;
    /// Names of statements that have been let go and are still to be closed on the server.
    std::shared_ptr<std::vector<QByteArray>> m_toClose;
};

/// The error of a statement that a server refused.
Error serverError(const PGresult* result);
/// Its SQLSTATE.
QByteArray serverState(const PGresult* result);

} // namespace jet
