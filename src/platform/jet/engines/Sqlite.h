#pragma once

#include "platform/jet/engines/Engine.h"

#include <sqlite3.h>

#include <unordered_set>

namespace jet {

/// A table of each connection's own, with the columns c0, c1 and so on, from which a statement
/// takes many rows. It is empty between statements.
constexpr char givenTable[] = "GivenRows";
constexpr int givenColumns = 64;

/// A database file.
class Sqlite : public Engine {
  public:
    enum class Mode { Open, Create };
    Sqlite(const QString& path, Mode mode);
    ~Sqlite() override;

    Dialect dialect() const override { return Dialect::sqlite(); }
    QString name() const override { return m_path; }
    PreparedPtr prepare(const QByteArray& sql, Access access) override;
    PreparedPtr prepareFirst(const QByteArray& sql, int limit) override;
    void each(const PreparedPtr& statement, const Look& look) override;
    void sweep(const QByteArray& columns, const QByteArray& from, const Look& look) override;
    Outcome run(const PreparedPtr& statement, const Arguments& arguments, Rows* rows,
                int limit) override;
    void execute(const QByteArray& sql) override;
    void begin(int depth, const QString& step) override;
    void commit(int depth) override;
    void rollback(int depth) override;
    void setWriter(const QString& who) override;
    bool inTransaction() const override { return sqlite3_get_autocommit(m_db) == 0; }
    EngineOrder order() const override { return EngineOrder::ByBytes; }
    Schema readSchema() override;
    bool schemaMayHaveChanged() override;
    ChangeMark mark() override;
    bool stillStands(const ChangeMark& mark) override;

    /// Writes a compacted copy with all indexes made anew. Only while no other connection is open.
    void copyCompacted(const QString& to);

  private:
    void openFile(Mode mode);
    void configure();
    void close();
    Outcome step(const PreparedPtr& statement, const Arguments& arguments, Rows* rows, int limit);
    void step(PreparedPtr& slot, const char* sql, const Arguments& arguments = Arguments());
    qint64 number(const char* pragma, PreparedPtr& statement);
    qint64 lastReadVersion() const;
    Error notFound() const;
    [[noreturn]] void fail(int code) const;

    QString m_path;
    sqlite3* m_db = nullptr;
    /// What was prepared here; in the connection a virtual table has statements of its own, too.
    std::shared_ptr<std::unordered_set<sqlite3_stmt*>> m_statements =
        std::make_shared<std::unordered_set<sqlite3_stmt*>>();
    PreparedPtr m_begin, m_commit, m_sign, m_unsign, m_dataVersion, m_schemaVersion;
    QString m_writer;
    bool m_signed = false; ///< the open transaction tells it
    qint64 m_readSchemaVersion = -1;
};

} // namespace jet
