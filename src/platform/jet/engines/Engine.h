#pragma once

#include "platform/jet/Arguments.h"
#include "platform/jet/Rows.h"
#include "platform/jet/Schema.h"
#include "platform/jet/Translate.h"

#include <QByteArray>

#include <chrono>
#include <memory>

namespace jet {

/// A statement that an engine has prepared. It may be let go after its engine.
class Prepared {
  public:
    virtual ~Prepared() = default;
};

/// What a database was like at a moment, to tell later whether rows read then still stand.
struct ChangeMark {
    qint64 others = 0; ///< counts what other connections wrote
    qint64 own = 0;    ///< counts what this connection wrote
    std::chrono::steady_clock::time_point taken;
};

/// One connection to one database, in the engine's own SQL. No read stays open behind a call, and a
/// failed statement leaves an open transaction as it was before it.
class Engine {
  public:
    enum class Access { Reads, Writes };
    struct Outcome {
        int touched = 0;      ///< rows that a write changed
        bool complete = true; ///< false: there are more rows than were asked for
    };

    virtual ~Engine() = default;

    virtual Dialect dialect() const = 0;
    virtual QString name() const = 0;

    virtual std::unique_ptr<Prepared> prepare(const QByteArray& sql, Access access) = 0;
    /// A select of which run() will take no more than `limit` rows.
    virtual std::unique_ptr<Prepared> prepareFirst(const QByteArray& sql, int limit) = 0;
    /// Runs a statement, appending up to `limit` of its rows (-1: all) to `rows`.
    virtual Outcome run(Prepared& statement, const Arguments& arguments, Rows* rows = nullptr,
                        int limit = -1) = 0;
    /// Runs a statement without parameters once, such as a definition.
    virtual void execute(const QByteArray& sql) = 0;

    /// Opens a transaction, or at `depth` 1 and beyond one within it.
    virtual void begin(int depth) = 0;
    virtual void commit(int depth) = 0;
    virtual void rollback(int depth) = 0;
    /// False: the engine has given up the open transaction by itself.
    virtual bool inTransaction() const = 0;

    /// Gives back what deleted rows took, as far as other stations may go on working.
    virtual void tidy() {}

    virtual Schema readSchema() = 0;
    /// Whether the tables may have been changed from elsewhere since readSchema().
    virtual bool schemaMayHaveChanged() = 0;

    /// What the database was like when the last read ended.
    virtual ChangeMark mark() = 0;
    /// Whether rows that were read at the mark need not be read again to be shown.
    virtual bool stillStands(const ChangeMark& mark) = 0;
};

} // namespace jet
