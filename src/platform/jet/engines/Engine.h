#pragma once

#include "platform/jet/Arguments.h"
#include "platform/jet/Dialect.h"
#include "platform/jet/Error.h"
#include "platform/jet/Rows.h"
#include "platform/jet/Schema.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace jet {

/// A statement that an engine has prepared. It may be let go after its engine.
class Prepared {
  public:
    virtual ~Prepared() = default;
};
using PreparedPtr = std::shared_ptr<Prepared>;

/// Whether an engine's order of texts is that of their small letters' bytes, as values::compareText
/// has it for texts of ASCII alone.
enum class EngineOrder { ByBytes, Other };

/// What a database was like at a moment, to tell later whether rows read then still stand.
struct ChangeMark {
    qint64 others = 0; ///< counts what other connections wrote
    qint64 own = 0;    ///< counts what this connection wrote
    std::chrono::steady_clock::time_point taken;
};

/// What came of a statement.
struct Outcome {
    int touched = 0;      ///< rows that a write changed
    bool complete = true; ///< false: there are more rows than were asked for
    qint64 counter = 0;   ///< the number that the engine gave the last row of an INSERT
};

/// A select and where its rows go.
struct Read {
    PreparedPtr statement;
    Arguments arguments;
    Rows* rows = nullptr;
    int limit = -1; ///< -1: all rows
    Outcome outcome = {};
};

/// A statement that was given to an engine to be sent with a later one.
struct Deferred {
    enum class State { Waiting, Done, Failed };
    State state = State::Waiting;
    Outcome outcome;
    Rows rows;                  ///< of a select
    std::optional<Error> error; ///< of a select
};
using DeferredPtr = std::shared_ptr<Deferred>;

/// One connection to one database, in the engine's own SQL. No read stays open behind a call, and a
/// statement that fails in run() leaves an open transaction as it was before it.
class Engine {
  public:
    /// MustTouch: a write that fails with Error(rowDeleted) where it meets no row.
    enum class Access { Reads, Writes, MustTouch };

    virtual ~Engine() = default;

    virtual Dialect dialect() const = 0;
    virtual QString name() const = 0;

    virtual PreparedPtr prepare(const QByteArray& sql, Access access) = 0;
    /// A select of which run() will take no more than `limit` rows.
    virtual PreparedPtr prepareFirst(const QByteArray& sql, int limit) = 0;
    /// Runs a statement, appending up to `limit` of its rows (-1: all) to `rows`.
    virtual Outcome run(const PreparedPtr& statement, const Arguments& arguments,
                        Rows* rows = nullptr, int limit = -1) = 0;
    /// Shows each row of a select without parameters, for as long as the call to `look` lasts; it
    /// must not use the engine.
    using Look = std::function<void(const std::vector<Cell>& cells)>;
    virtual void each(const PreparedPtr& statement, const Look& look);
    /// The same for a select of plain columns over very many rows, its list and what follows that.
    virtual void sweep(const QByteArray& columns, const QByteArray& from, const Look& look);
    /// Runs selects that don't hang on each other; on a server in one round trip.
    virtual void runTogether(std::vector<Read>& reads);
    /// Runs a statement without parameters once, such as a definition.
    virtual void execute(const QByteArray& sql) = 0;

    virtual EngineOrder order() const = 0;

    /// Whether writeLater() and readLater() may be called: statements have far to go.
    virtual bool defers() const { return false; }
    /// A write of the open transaction that goes with the next statement or the commit. If it fails
    /// there, the transaction is undone, and the error tells the step in which it was given.
    virtual DeferredPtr writeLater(const PreparedPtr& statement, const Arguments& arguments,
                                   const QString& step);
    /// A select, outside a transaction, that goes with the next statement. Its error is kept.
    virtual DeferredPtr readLater(const PreparedPtr& statement, const Arguments& arguments,
                                  int limit);
    /// Sends what waits.
    virtual void sendWaiting() {}

    /// Opens a transaction, or at `depth` 1 and beyond one within it. An engine that defers does it
    /// with the next statement.
    virtual void begin(int depth, const QString& step) = 0;
    virtual void commit(int depth) = 0;
    virtual void rollback(int depth) = 0;
    /// False: the engine has given up the open transaction by itself.
    virtual bool inTransaction() const = 0;

    /// Whose writes they are from now on, for triggers that ask; empty: nobody's. They find it in
    /// the table Writer of a file that has one, as long as a transaction is open, and on a server
    /// in the setting mirsa.who. A write without a transaction gets one of its own.
    virtual void setWriter(const QString& who) = 0;

    /// Gives back what deleted rows took, as far as other stations may go on working.
    virtual void tidy() {}

    virtual Schema readSchema() = 0;
    /// Whether the tables may have been changed from elsewhere since readSchema().
    virtual bool schemaMayHaveChanged() = 0;

    /// What the database was like when the last read ended.
    virtual ChangeMark mark() = 0;
    /// Whether rows that were read at the mark need not be read again to be shown.
    virtual bool stillStands(const ChangeMark& mark) = 0;

    /// How often a server was waited for since this object was made.
    virtual quint64 waits() const { return 0; }
};

} // namespace jet
