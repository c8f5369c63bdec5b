#pragma once

#include "platform/jet/Error.h"
#include "platform/jet/Recordset.h"
#include "platform/jet/Schema.h"

#include <QString>

#include <functional>
#include <memory>

namespace jet {

class Connection;

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
    /// Runs a statement that is no select; returns the number of rows it touched.
    int execute(const QString& statement);
    /// First field of the first row of a select; Null where there is no row.
    Value lookup(const QString& select);
    bool hasRows(const QString& select);

    /// The counter that this connection's last INSERT was given.
    qint64 lastCounter() const;

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

} // namespace jet
