#pragma once

#include "platform/jet/engines/Engine.h"

#include <libpq-fe.h>

namespace jet {

/// A server's database.
class Postgres : public Engine {
  public:
    explicit Postgres(const QString& uri);
    ~Postgres() override;

    Dialect dialect() const override { return Dialect::postgres(); }
    QString name() const override { return m_uri; }
    std::unique_ptr<Prepared> prepare(const QByteArray& sql, Access access) override;
    std::unique_ptr<Prepared> prepareFirst(const QByteArray& sql, int limit) override;
    Outcome run(Prepared& statement, const Arguments& arguments, Rows* rows, int limit) override;
    void execute(const QByteArray& sql) override;
    void begin(int depth) override;
    void commit(int depth) override;
    void rollback(int depth) override;
    bool inTransaction() const override;
    void tidy() override;
    Schema readSchema() override;
    bool schemaMayHaveChanged() override { return true; }
    ChangeMark mark() override;
    bool stillStands(const ChangeMark& mark) override;

  private:
    struct Statement;
    struct Result;

    void connect();
    void ensureConnected();
    void sendPlain(const char* sql);
    void sendNamed(const char* name);
    int sendWaitingCloses();
    void finish(Result& result);
    void exchange(const std::vector<QByteArray>& statements);
    bool sendAndFinish(Statement& statement, const Arguments& arguments, Result& result);
    [[noreturn]] void fail(const Result& result);
    [[noreturn]] void lost();

    QString m_uri;
    PGconn* m_connection = nullptr;
    int m_session = 0; ///< counts the connections, as each has its own prepared statements
    bool m_inTransaction = false;
    qint64 m_names = 0;
    qint64 m_writes = 0;
    /// Names of statements that have been let go and are still to be closed on the server.
    std::shared_ptr<std::vector<QByteArray>> m_toClose;
};

} // namespace jet
