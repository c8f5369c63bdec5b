#include "platform/jet/engines/SqliteCopy.h"

#include "platform/jet/Error.h"
#include "platform/values/Literals.h"

#include <sqlite3.h>

#include <cerrno>

namespace jet {

namespace {

constexpr int pagesAtOnce = 512;

/// A connection of its own, for the time of a copy.
class File {
  public:
    File(const QString& path, int flags) : m_path(path) {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, flags | SQLITE_OPEN_NOMUTEX,
                            nullptr) != SQLITE_OK) {
            const Error error = failure();
            sqlite3_close(m_db);
            throw error;
        }
        sqlite3_busy_timeout(m_db, 20000);
    }
    ~File() { sqlite3_close(m_db); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    sqlite3* handle() const { return m_db; }

    Error failure() const {
        const int code = sqlite3_extended_errcode(m_db);
        const QString text = QString::fromUtf8(sqlite3_errmsg(m_db));
        switch (code & 0xff) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return lockedError();
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return {errors::unrecognizedFormat,
                    u"Unrecognized database format '%1'."_s.arg(m_path)};
        case SQLITE_CANTOPEN:
            return {errors::cannotOpenFile, u"Could not find file '%1'."_s.arg(m_path)};
        default:
            if (isFull(code))
                return {errors::other, m_path + u" can't be written: the disk is full."_s,
                        Failure::DiskFull};
            return {errors::other, m_path + u": "_s + text};
        }
    }

    /// The first column of each row of a select.
    QStringList column(const QByteArray& sql) const {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(m_db, sql.constData(), -1, &statement, nullptr) != SQLITE_OK)
            throw failure();
        QStringList values;
        int code;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            values +=
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 0)));
        sqlite3_finalize(statement);
        if (code != SQLITE_DONE)
            throw failure();
        return values;
    }

    QMap<QString, qint64> rowsOfTables() const {
        QMap<QString, qint64> rows;
        for (const QString& table :
             column("SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE "
                    "'sqlite\\_%' ESCAPE '\\'")) {
            QString quoted = table;
            rows[table] =
                column("SELECT COUNT(*) FROM \"" + quoted.replace(u'"', u"\"\""_s).toUtf8() + '"')
                    .value(0)
                    .toLongLong();
        }
        return rows;
    }

  private:
    bool isFull(int code) const {
        const int reason = sqlite3_system_errno(m_db);
        return (code & 0xff) == SQLITE_FULL ||
               ((code & 0xff) == SQLITE_IOERR &&
                (reason == ENOSPC || reason == EDQUOT || reason == EFBIG));
    }

    QString m_path;
    sqlite3* m_db = nullptr;
};

} // namespace

QMap<QString, qint64> copyDatabaseFile(const QString& from, const QString& to,
                                       const CopyProgress& progress) {
    const File source(from, SQLITE_OPEN_READWRITE);
    const File target(to, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
    // What is counted and what is copied is read within one transaction: the same moment.
    source.column("BEGIN");
    QMap<QString, qint64> rows = source.rowsOfTables();
    sqlite3_backup* backup = sqlite3_backup_init(target.handle(), "main", source.handle(), "main");
    if (!backup)
        throw target.failure();
    int code;
    bool goOn = true;
    do {
        code = sqlite3_backup_step(backup, pagesAtOnce);
        const int all = std::max(1, sqlite3_backup_pagecount(backup));
        goOn = !progress || progress(100 * (all - sqlite3_backup_remaining(backup)) / all);
        if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
            sqlite3_sleep(50);
    } while (goOn && (code == SQLITE_OK || code == SQLITE_BUSY || code == SQLITE_LOCKED));
    sqlite3_backup_finish(backup);
    if (code != SQLITE_DONE) {
        if (!goOn)
            throw Error(errors::other, u"The copy was broken off."_s);
        throw target.failure();
    }
    source.column("COMMIT");
    target.column("PRAGMA journal_mode = DELETE"); // the copy is this one file
    return rows;
}

QStringList checkDatabaseFile(const QString& path, QMap<QString, qint64>& rows) {
    const File file(path, SQLITE_OPEN_READWRITE);
    QStringList findings = file.column("PRAGMA integrity_check");
    if (findings == QStringList{u"ok"_s})
        findings.clear();
    rows = file.rowsOfTables();
    return findings;
}

void closeLogOfFile(const QString& path) {
    const File file(path, SQLITE_OPEN_READWRITE);
    sqlite3_busy_timeout(file.handle(), 500);
    file.column("PRAGMA wal_checkpoint(TRUNCATE)");
    if (file.column("PRAGMA journal_mode = DELETE").value(0) != u"delete")
        throw lockedError();
    file.column("BEGIN EXCLUSIVE"); // others without a log have the file open too
    file.column("COMMIT");
}

} // namespace jet
