#pragma once

#include "platform/jet/Error.h"
#include "platform/jet/Recordset.h"
#include "platform/jet/Schema.h"

#include <QString>

#include <memory>
#include <vector>

namespace jet {

class Connection;
struct Deferred;

/// The number of rows that a write touched. Who doesn't ask for it needn't wait: on a server, the
/// writes of a transaction travel with the next statement whose outcome is asked for, or with the
/// commit. The error of one that fails then comes from there, tells the step in which the write was
/// given (see step()), and the transaction is undone.
class Touched {
  public:
    explicit Touched(int rows = 0) : m_rows(rows) {}
    operator int() const;

  private:
    friend class Connection;
    int m_rows;
    std::shared_ptr<Deferred> m_deferred;
    Connection* m_connection = nullptr;
};

/// A select for Database::together(), by itself as a snapshot.
struct WantedSet {
    QString select;
    RecordsetType type = RecordsetType::Snapshot;

    WantedSet(QString text, RecordsetType as = RecordsetType::Snapshot)
        : select(std::move(text)), type(as) {}
};

/// One open database: a file (SQLite) or a server (PostgreSQL). All statements are in the dialect;
/// see Translate.h. Not thread-safe: it belongs to the thread of the user interface.
class Database {
  public:
    /// Opens a database file, shared, read and write. Throws cannotOpenFile, unrecognizedFormat.
    static std::unique_ptr<Database> openFile(const QString& path);
    /// Makes a new, empty database file; throws other if it exists.
    static std::unique_ptr<Database> createFile(const QString& path);
    /// Opens a server's database by its postgresql:// URI. Throws connectionFailed.
    static std::unique_ptr<Database> openServer(const QString& uri);
    /// Writes a compacted, repaired copy of a database file to a path where nothing stands. The
    /// file itself keeps its rows. Throws locked while anybody has it open, and as openFile.
    static void compactFile(const QString& from, const QString& to);

    ~Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    Recordset openRecordset(const QString& select, RecordsetType type = RecordsetType::Dynaset);
    /// Opens sets that don't hang on each other, in one wait on a server. If one fails, all do.
    std::vector<Recordset> together(const std::vector<WantedSet>& wanted);
    /// A set that nobody waits for: it comes with the next statement, at the latest when one of its
    /// rows is asked for, and its error with it. Within a transaction as openRecordset.
    Recordset openLater(const QString& select, RecordsetType type = RecordsetType::Snapshot);
    /// Says which selects will be asked for next: on a server they travel with the next select, and
    /// openRecordset(), together(), lookup() or hasRows() with the same words find their rows at
    /// hand. Each serves once. A write, the begin or end of a transaction, another expect() or the
    /// passing of a second lets go of what is left. Where they aren't asked for after all, nothing
    /// is lost but the reading.
    void expect(const std::vector<WantedSet>& wanted);
    /// Runs a statement that is no select; returns the number of rows it touched.
    Touched execute(const QString& statement);
    /// Inserts rows as one statement: one wait, however many they are. Each row has a value for
    /// each of the columns. The values are taken as Recordset::set takes them.
    Touched insertRows(const QString& table, const QStringList& columns,
                       const std::vector<std::vector<Value>>& rows);
    /// Updates rows as one statement. The first `keys` of the columns tell which row a row of
    /// values is for; the others are written.
    Touched updateRows(const QString& table, const QStringList& columns, int keys,
                       const std::vector<std::vector<Value>>& rows);
    /// Numbers of a table's counter, rising, which no other row will be given: for rows that are to
    /// be numbered anew. Within a transaction; one wait.
    std::vector<qint64> takeNumbers(const QString& table, int count);
    /// First field of the first row of a select; Null where there is no row.
    Value lookup(const QString& select);
    bool hasRows(const QString& select);

    /// The counter that this connection's last INSERT was given.
    qint64 lastCounter() const;

    /// How often this object has waited for a server since it was opened; 0 on a file. What a step
    /// of a person costs over a wire is this number before and after it.
    quint64 waits() const;

    /// On a server: lets it reuse what deleted rows took. Nothing on a file; see compactFile.
    void tidy();

    const Schema& schema() const;
    /// The width of a text column; 0 where it has none. For the length limits of fields.
    int width(QStringView table, QStringView column) const;
    bool isServer() const;
    /// The file's path or the server's URI.
    QString name() const;

  private:
    friend class Workspace;
    friend class Recordset;
    friend class RecordsetData;
    friend class Step;
    explicit Database(std::unique_ptr<Connection> connection);
    std::unique_ptr<Connection> m_connection;
};

/// Transactions of a database. They nest: an inner commit keeps, an inner rollback undoes to its
/// begin. A transaction is begun for writing, so that two stations wait for each other and neither
/// fails.
class Workspace {
  public:
    explicit Workspace(Database& database) : m_database(database) {}
    void beginTrans();
    void commitTrans();
    void rollback();
    int depth() const;

  private:
    Database& m_database;
};

/// A transaction for a scope: rolled back on the way out unless it was committed.
class Transaction {
  public:
    explicit Transaction(Database& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void commit();
    void rollback();

  private:
    Workspace m_workspace;
    bool m_open = true;
};

/// Gives the statements of a scope a name, which the error of one of them tells wherever it comes
/// out: Error::step().
class Step {
  public:
    Step(Database& database, const QString& name);
    ~Step();
    Step(const Step&) = delete;
    Step& operator=(const Step&) = delete;

  private:
    Connection& m_connection;
    QString m_before;
};

/// Runs a step of a change. Errors that leave it, and those of its writes that are sent later, tell
/// its name.
template <class Work>
auto step(Database& database, const QString& name, Work work) {
    const Step scope(database, name);
    try {
        return work();
    } catch (const Error& error) {
        if (error.step())
            throw;
        throw error.withStep(name);
    }
}

} // namespace jet
