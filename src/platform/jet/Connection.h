#pragma once

#include "platform/jet/Arguments.h"
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
    std::unique_ptr<Prepared> whole, firstRow, keyed, keys, row;
    std::vector<std::unique_ptr<Prepared>> more;
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

    /// The arguments of a statement, empty; they are good until the next one runs.
    Arguments& newArguments();
    /// The arguments that a statement's literals make.
    Arguments& argumentsOf(const CachedStatement& statement, const std::vector<Value>& literals);

    /// Runs what `slot` holds, preparing `sql` into it the first time. `first` over 0: a select of
    /// which no more than so many rows are taken.
    Engine::Outcome run(std::unique_ptr<Prepared>& slot, const QByteArray& sql, Access access,
                        const Arguments& arguments, Rows* rows = nullptr, int first = 0);

    /// Runs a statement of the dialect that is no select; the number of rows it touched.
    int execute(QStringView text);
    /// Inserts a row by a generated statement and tells the identity that the engine gave it.
    Value insert(CachedStatement& statement, const Arguments& arguments, const Table& table);
    /// A name, and the n-th parameter (from 1), as the engine's SQL has them.
    QByteArray quoted(const QString& name) const;
    QByteArray parameter(int number) const;
    /// The engine's way to get the new row's key from an INSERT.
    QByteArray returning(const QString& keyColumn) const;
    qint64 lastCounter() const { return m_lastCounter; }

    void begin();
    void commit();
    void rollback();
    int depth() const { return m_depth; }

  private:
    StatementPtr cached(const QString& key);
    StatementPtr keep(const QString& key, Translation translation);
    template <class Translate>
    StatementPtr translated(const QString& key, Translate translate);
    void reloadSchema();
    void define(const CachedStatement& statement, QStringView text);
    int write(CachedStatement& statement, const std::vector<Value>& literals);
    void noteFailure(const Error& error);
    void checkUsable() const;

    std::unique_ptr<Engine> m_engine;
    Dialect m_dialect;
    Schema m_schema;
    QHash<QString, StatementPtr> m_cache;
    quint64 m_uses = 0;
    Arguments m_arguments;
    qint64 m_lastCounter = 0;
    int m_depth = 0;
    bool m_broken = false; ///< the engine gave up the transaction that is still open here
    bool m_schemaStale = false;
    bool m_defined = false; ///< the open transaction has changed the schema
    bool m_serverPrepared = false;
};

} // namespace jet
