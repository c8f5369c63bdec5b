#pragma once

#include "platform/jet/Arguments.h"
#include "platform/jet/Database.h"
#include "platform/jet/Expected.h"
#include "platform/jet/Rows.h"
#include "platform/jet/Schema.h"
#include "platform/jet/Translate.h"
#include "platform/jet/engines/Engine.h"

#include <QHash>

#include <memory>

namespace jet {

/// A statement that was translated once, with what the engine has prepared of it so far.
struct CachedStatement {
    Translation translation;
    PreparedPtr whole, firstRow, exists, keyed, keys, row, touching;
    PreparedPtr up, upFar, down, downFar, last, count, countBelow, few, fewBelow;
    std::vector<PreparedPtr> more;
    ColumnType keyType = ColumnType::Long; ///< of a dynaset's key
    bool givesCounter = false;             ///< an INSERT into a table with a counter
    quint64 lastUse = 0;
};
using StatementPtr = std::shared_ptr<CachedStatement>;

/// What stands between a Database and its engine: the schema, the statements that were translated
/// and prepared before, and the depth of the transactions.
class Connection {
  public:
    using Access = Engine::Access;

    explicit Connection(std::unique_ptr<Engine> engine);
    ~Connection();

    Engine& engine() { return *m_engine; }
    const Engine& engine() const { return *m_engine; }
    const Dialect& dialect() const { return m_dialect; }
    const Schema& schema();

    StatementPtr statement(const Normalized& statement);
    /// The statement that finds a criterion's rows in a select.
    StatementPtr finder(const Normalized& select, const Normalized& criteria);
    /// A statement in the engine's own SQL, kept under it.
    StatementPtr generated(const QString& key, const std::function<QByteArray()>& sql);

    /// The arguments of a statement, none so far.
    Arguments newArguments() const { return Arguments(m_money); }
    /// The arguments that a statement's literals make.
    Arguments argumentsOf(const CachedStatement& statement,
                          const std::vector<Value>& literals) const;

    /// What `slot` holds, preparing `sql` into it the first time. `first` over 0: a select of which
    /// no more than so many rows are taken.
    const PreparedPtr& prepared(PreparedPtr& slot, const QByteArray& sql, Access access,
                                int first = 0);
    /// Runs it.
    Outcome run(PreparedPtr& slot, const QByteArray& sql, Access access, const Arguments& arguments,
                Rows* rows = nullptr, int first = 0);
    Outcome run(const Read& read);
    /// Shows the rows of a select in the engine's own SQL: see Engine::each.
    void each(const QByteArray& sql, const Engine::Look& look);
    void sweep(const QByteArray& columns, const QByteArray& from, const Engine::Look& look);
    void runTogether(std::vector<Read>& reads);
    /// What will be asked for next goes along with the next select.
    Expected& expected() { return m_expected; }
    /// A write whose outcome may be asked for later: sent with the next statement where the engine
    /// is far away and a transaction is open, run at once elsewhere.
    Touched write(CachedStatement& statement, const Arguments& arguments);
    /// A write that throws rowDeleted, at once or when it is sent, where it meets no row.
    void writeOne(CachedStatement& statement, const Arguments& arguments);
    /// A select that is sent with the next statement; nullptr where it must be run at once.
    DeferredPtr readLater(const PreparedPtr& statement, const Arguments& arguments, int limit);
    /// Lets what was deferred come to an end and throws its error; false if it was dropped.
    bool settle(const Deferred& deferred);

    /// Runs a statement of the dialect that is no select; the number of rows it touched.
    Touched execute(const QString& text);
    /// Inserts a row by a generated statement and tells the identity that the engine gave it.
    qint64 insert(CachedStatement& statement, const Arguments& arguments, const Table& table);
    qint64 lastCounter();

    const QString& step() const { return m_step; }
    void setStep(const QString& name) { m_step = name; }

    void begin();
    void commit();
    void rollback();
    int depth() const { return m_depth; }
    /// Counts what this connection wrote, began and ended: reads at the same count may stand
    /// together.
    quint64 changes() const { return m_changes; }
    /// The number of the open transaction; 0 where none is open.
    quint64 transaction() const { return m_depth > 0 ? m_transaction : 0; }

  private:
    StatementPtr cached(const QString& key);
    StatementPtr keep(const QString& key, Translation translation);
    template <class Translate>
    StatementPtr translated(const QString& key, Translate translate);
    void reloadSchema();
    void define(const CachedStatement& statement, QStringView text);
    void noteFailure(const Error& error);
    void checkUsable() const;

    std::unique_ptr<Engine> m_engine;
    Dialect m_dialect;
    Expected m_expected;
    Schema m_schema;
    QHash<QString, StatementPtr> m_cache;
    quint64 m_uses = 0;
    Arguments::Money m_money;
    qint64 m_lastCounter = 0;
    DeferredPtr m_counterOf; ///< the INSERT that is to tell the last counter
    QString m_step;
    int m_depth = 0;
    quint64 m_changes = 0;
    quint64 m_transaction = 0; ///< of the last one
    bool m_broken = false;     ///< the engine gave up the transaction that is still open here
    bool m_schemaStale = false;
    bool m_defined = false; ///< the open transaction has changed the schema
    bool m_serverPrepared = false;
};

} // namespace jet
