#pragma once

#include <QByteArray>
#include <QString>

#include <libpq-fe.h>
#include <sqlite3.h>

namespace testsupport {

/// A floor terminal: another program, which knows the tables and nothing of how ours take turns.
/// Its statements are those that both engines understand.
class Floor {
  public:
    explicit Floor(const QString& location) {
        const QByteArray place = location.toUtf8();
        if (place.startsWith("postgres")) {
            m_server = PQconnectdb(place.constData());
        } else {
            sqlite3_open_v2(place.constData(), &m_file, SQLITE_OPEN_READWRITE, nullptr);
            sqlite3_busy_timeout(m_file, 20000);
        }
    }
    ~Floor() {
        PQfinish(m_server);
        sqlite3_close(m_file);
    }
    Floor(const Floor&) = delete;
    Floor& operator=(const Floor&) = delete;

    void begin() { run(m_server ? "BEGIN" : "BEGIN IMMEDIATE"); }
    void commit() { run("COMMIT"); }
    /// Rows touched; -1 for an error.
    int run(const QByteArray& statement) {
        if (!m_server) {
            if (sqlite3_exec(m_file, statement.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
                return -1;
            return sqlite3_changes(m_file);
        }
        PGresult* result = PQexec(m_server, statement.constData());
        const bool done = PQresultStatus(result) == PGRES_COMMAND_OK;
        const int touched = done ? QByteArray(PQcmdTuples(result)).toInt() : -1;
        PQclear(result);
        return touched;
    }
    /// Adds to the one operation and the one job of a shop.
    bool book(double hours) {
        return run("UPDATE joboper SET opertime_amount = opertime_amount + " +
                   QByteArray::number(hours)) == 1 &&
               run("UPDATE job SET totalhours = totalhours + " + QByteArray::number(hours)) == 1;
    }

  private:
    PGconn* m_server = nullptr;
    sqlite3* m_file = nullptr;
};

} // namespace testsupport
