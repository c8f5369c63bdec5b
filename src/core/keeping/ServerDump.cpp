#include "core/keeping/ServerDump.h"

#include "core/keeping/Files.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <QUrl>

namespace keeping {

namespace {

/// Who has just ended his program may still have his session for a moment.
constexpr int leavingMilliseconds = 5000;

/// A program of the server's own tools, in the path or where Debian keeps its versions.
QString serverTool(const QString& name) {
    QStringList folders;
    const QDir versions(u"/usr/lib/postgresql"_s);
    QStringList names = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(names.begin(), names.end(),
              [](const QString& a, const QString& b) { return a.toDouble() > b.toDouble(); });
    for (const QString& version : names)
        folders += versions.filePath(version + u"/bin"_s);
    QString path = QStandardPaths::findExecutable(name, folders);
    if (path.isEmpty())
        path = QStandardPaths::findExecutable(name);
    if (path.isEmpty())
        throw Refusal(name + u" is missing on this machine: it comes with the package "
                             "postgresql-client."_s);
    return path;
}

/// The password goes by the environment: arguments are everybody's to see.
void prepare(QProcess& process, const QString& uri) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (const QString password = jet::passwordOf(uri); !password.isEmpty())
        environment.insert(u"PGPASSWORD"_s, QUrl::fromPercentEncoding(password.toUtf8()));
    process.setProcessEnvironment(environment);
}

QString complaintOf(QProcess& process, const QString& uri) {
    const QString text = QString::fromUtf8(process.readAllStandardError()).trimmed();
    return jet::withoutPassword(text.section(u'\n', 0, 0), uri);
}

} // namespace

QMap<QString, qint64> dumpServer(const QString& uri, const QString& to, const Progress& progress) {
    const QString tool = serverTool(u"pg_dump"_s);
    const auto database = jet::Database::openServer(uri);
    jet::Native native(*database);
    // Rows are counted and dumped from one snapshot; nobody waits for it.
    native.rows("SET default_transaction_isolation = 'repeatable read'");
    native.rows("BEGIN");
    const QString snapshot = native.value("SELECT pg_export_snapshot()").toText();
    QMap<QString, qint64> rows;
    for (const jet::Table& table : database->schema().tables())
        rows[table.name.toLower()] =
            native.value("SELECT COUNT(*) FROM " + native.quoted(table.name)).toInteger();
    QProcess dump;
    prepare(dump, uri);
    dump.start(tool, {u"--format=custom"_s, u"--no-owner"_s, u"--no-privileges"_s,
                      u"--snapshot="_s + snapshot, u"--file="_s + to,
                      u"--dbname="_s + jet::withoutPassword(uri)});
    dump.waitForStarted();
    while (!dump.waitForFinished(200) && dump.state() != QProcess::NotRunning) {
        if (progress && !progress(50)) {
            dump.kill();
            dump.waitForFinished();
            throw Refusal(u"The backup was broken off."_s);
        }
    }
    if (dump.exitStatus() != QProcess::NormalExit || dump.exitCode() != 0)
        throw Refusal(u"pg_dump failed: "_s + complaintOf(dump, uri));
    native.rows("COMMIT");
    return rows;
}

QMap<QString, qint64> rowsOfDump(const QString& path) {
    QProcess reading;
    reading.start(serverTool(u"pg_restore"_s), {u"--data-only"_s, u"--file=-"_s, path});
    QMap<QString, qint64> rows;
    QString table;
    const auto take = [&](const QByteArray& line) {
        if (!table.isEmpty()) {
            if (line == "\\.")
                table.clear();
            else
                ++rows[table];
            return;
        }
        if (!line.startsWith("COPY ") || !line.endsWith("FROM stdin;"))
            return;
        table = QString::fromUtf8(line.mid(5, line.indexOf(" (") - 5)).section(u'.', 1);
        table.remove(u'"');
        rows[table] += 0;
    };
    while (reading.waitForReadyRead(-1))
        while (reading.canReadLine())
            take(reading.readLine().chopped(1));
    reading.waitForFinished(-1);
    while (reading.canReadLine())
        take(reading.readLine().chopped(1));
    if (reading.exitStatus() != QProcess::NormalExit || reading.exitCode() != 0)
        throw Refusal(path + u" can't be read to its end: "_s + complaintOf(reading, {}));
    return rows;
}

void refuseWhileInUse(const QString& uri) {
    const auto database = jet::Database::openServer(uri);
    jet::Native native(*database);
    QElapsedTimer waited;
    waited.start();
    while (true) {
        const QString others =
            native
                .value("SELECT string_agg(DISTINCT coalesce(usename::text, '?') || ' at ' || "
                       "coalesce(host(client_addr), 'this machine'), ', ') FROM pg_stat_activity "
                       "WHERE datname = current_database() AND pid <> pg_backend_pid() AND "
                       "backend_type = 'client backend'")
                .toText();
        if (others.isEmpty())
            return;
        if (waited.hasExpired(leavingMilliseconds))
            throw Refusal(u"The database is in use ("_s + others +
                          u"): end Mirsa and the floor's programs on all stations first. Nothing "
                          "was changed."_s);
        QThread::msleep(100);
    }
}

void restoreDump(const QString& path, const QString& uri) {
    QProcess restoring;
    prepare(restoring, uri);
    restoring.start(serverTool(u"pg_restore"_s),
                    {u"--clean"_s, u"--if-exists"_s, u"--no-owner"_s, u"--no-privileges"_s,
                     u"--single-transaction"_s, u"--exit-on-error"_s,
                     u"--dbname="_s + jet::withoutPassword(uri), path});
    restoring.waitForStarted();
    restoring.waitForFinished(-1);
    if (restoring.exitStatus() != QProcess::NormalExit || restoring.exitCode() != 0)
        throw Refusal(u"pg_restore failed, and the database is as it was: "_s +
                      complaintOf(restoring, uri));
}

} // namespace keeping
