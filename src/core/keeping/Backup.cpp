#include "core/keeping/Backup.h"

#include "core/keeping/Files.h"
#include "core/keeping/PaperBackup.h"
#include "core/keeping/ServerDump.h"
#include "core/keeping/SideFile.h"
#include "platform/jet/Location.h"
#include "platform/jet/engines/SqliteCopy.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace keeping {

namespace {

constexpr char16_t sideEnding[] = u".txt";

QString sumOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        throw Refusal(path + u" can't be read."_s);
    return QString::fromLatin1(hash.result().toHex());
}

QString sideOf(const QString& backup) {
    return backup.left(backup.lastIndexOf(u'.')) + QString::fromUtf16(sideEnding);
}

/// Where the rows that were counted in the copy aren't those of the moment of the copy.
void compareRows(const QMap<QString, qint64>& wanted, const QMap<QString, qint64>& found) {
    for (auto table = wanted.cbegin(); table != wanted.cend(); ++table)
        if (found.value(table.key(), -1) != table.value())
            throw Refusal(
                u"The copy isn't good: "_s + table.key() +
                u" had %1 rows and has %2."_s.arg(table.value()).arg(found.value(table.key(), -1)));
}

void checkFile(const QString& path, const QMap<QString, qint64>& wanted) {
    QMap<QString, qint64> found;
    const QStringList findings = jet::checkDatabaseFile(path, found);
    if (!findings.isEmpty())
        throw Refusal(u"The copy isn't good: "_s + findings.first());
    compareRows(wanted, found);
}

/// Of runs that were killed.
void removeRests(const QDir& folder) {
    const QStringList rests = folder.entryList({u"Mirsa-*.unfinished*"_s}, QDir::Files);
    for (const QString& name : rests)
        QFile::remove(folder.filePath(name));
}

void writeSide(const QString& backup, const QDateTime& made, const QMap<QString, qint64>& rows,
               const QString& source, const PapersTaken& papers) {
    QString text = u"# A backup of Mirsa's database. mirsa-setup restore puts it back.\n"
                   "file=%1\nmade=%2\nsize=%3\nsha256=%4\nof=%5\n"_s
                       .arg(QFileInfo(backup).fileName(), made.toString(Qt::ISODate))
                       .arg(QFileInfo(backup).size())
                       .arg(sumOf(backup), source);
    for (auto table = rows.cbegin(); table != rows.cend(); ++table)
        text += u"rows %1=%2\n"_s.arg(table.key()).arg(table.value());
    text += u"papers=%1\n"_s.arg(papers.count);
    if (papers.missing > 0)
        text += u"papers missing=%1\n"_s.arg(papers.missing);
    if (!papers.failure.isEmpty())
        text += u"papers failed="_s + papers.failure.simplified() + u'\n';
    writeWhole(sideOf(backup), (text + u"check=good\n"_s).toUtf8());
}

/// What the side file says against what there is. Without one the check is the file's own.
QMap<QString, qint64> proven(const QString& backup) {
    const QMap<QString, QString> lines = readLines(sideOf(backup));
    QMap<QString, qint64> rows;
    if (lines.isEmpty())
        return rows;
    if (lines.value(u"check"_s) != u"good" ||
        lines.value(u"size"_s).toLongLong() != QFileInfo(backup).size() ||
        lines.value(u"sha256"_s) != sumOf(backup))
        throw Refusal(backup + u" isn't what was once found good: it was changed or damaged. "
                               "Nothing was changed."_s);
    for (auto line = lines.cbegin(); line != lines.cend(); ++line)
        if (line.key().startsWith(u"rows "_s))
            rows[line.key().mid(5)] = line.value().toLongLong();
    return rows;
}

QString restoreFile(const QString& backup, const QString& programFolder) {
    const QMap<QString, qint64> rows = proven(backup);
    const QDir folder(programFolder);
    const QString path = folder.filePath(u"Mirsa.mdb"_s);
    const QString unfinished = unfinishedName(path);
    removeDatabase(unfinished);
    try {
        if (!QFile::copy(backup, unfinished))
            throw Refusal(unfinished + u" can't be written; the disk may be full."_s);
        QFile::setPermissions(unfinished, QFile::permissions(unfinished) | QFileDevice::WriteOwner |
                                              QFileDevice::ReadOwner);
        checkFile(unfinished, rows);
        if (!QFileInfo::exists(path)) {
            putInPlace(unfinished, path);
            return {};
        }
        QString kept;
        QDateTime moment = values::now();
        do { // two within a second have two names
            kept = folder.filePath(
                u"Mirsa-before-restore-%1.mdb"_s.arg(moment.toString(u"yyyyMMdd-HHmmss"_s)));
            moment = moment.addSecs(1);
        } while (QFileInfo::exists(kept));
        try {
            jet::closeLogOfFile(path);
        } catch (const jet::Error& error) {
            if (error.number() == jet::errors::locked)
                throw Refusal(path + u" is in use: end Mirsa on all stations first. Nothing was "
                                     "changed."_s);
            // A database that can't be read any more is what backups are for. Its log belongs to it
            // and must not come to stand beside the new one.
            for (const auto* ending : {u"-wal", u"-shm", u"-journal"})
                QFile::rename(path + QString::fromUtf16(ending), kept + QString::fromUtf16(ending));
        }
        replaceKeeping(unfinished, path, kept);
        return kept;
    } catch (...) {
        removeDatabase(unfinished);
        throw;
    }
}

} // namespace

BackupFile backUp(const QString& programFolder, const QString& targetFolder,
                  const Progress& progress, bool withPapers) {
    const FolderLock lock(targetFolder);
    const QDir folder(targetFolder);
    removeRests(folder);
    const QString uri = jet::serverOfFolder(programFolder);
    const bool server = !uri.isEmpty();
    const QString source = server ? uri : QDir(programFolder).absoluteFilePath(u"Mirsa.mdb"_s);
    QDateTime made = values::now();
    const QString ending = server ? u".dump"_s : u".mdb"_s;
    QString path;
    do { // two within a second have two names
        path = folder.filePath(u"Mirsa-"_s + made.toString(u"yyyyMMdd-HHmmss"_s) + ending);
        if (QFileInfo::exists(path))
            made = made.addSecs(1);
    } while (QFileInfo::exists(path));
    const QString unfinished = unfinishedName(path);
    if (!server && !QFileInfo(source).isFile())
        throw Refusal(source + u" isn't there."_s);
    if (!server && freeSpace(unfinished) < QFileInfo(source).size())
        throw Refusal(u"There is no room for a backup in "_s + targetFolder + u'.');
    PapersTaken papers;
    try {
        QMap<QString, qint64> rows;
        if (server) {
            rows = dumpServer(uri, unfinished, progress);
            compareRows(rows, rowsOfDump(unfinished));
        } else {
            rows = jet::copyDatabaseFile(source, unfinished, progress);
            checkFile(unfinished, rows);
        }
        putInPlace(unfinished, path);
        if (withPapers)
            papers =
                takePapers(*jet::openProgramFolder(programFolder), programFolder, path, progress);
        writeSide(path, made, rows, jet::withoutPassword(source), papers);
    } catch (...) {
        removeDatabase(unfinished);
        if (!QFileInfo::exists(sideOf(path))) {
            QFile::remove(path);
            QFile::remove(paperListOf(path));
        }
        throw;
    }
    for (const QString& old :
         outdated(backupsIn(targetFolder), values::now(), backupSettings(programFolder))) {
        QFile::remove(sideOf(old)); // first: without it the other counts as none
        QFile::remove(old);
        QFile::remove(paperListOf(old));
    }
    trimPapers(targetFolder);
    if (withPapers && papers.failure.isEmpty()) {
        try {
            removeForsaken(*jet::openProgramFolder(programFolder), programFolder, targetFolder,
                           QDateTime::currentDateTime());
        } catch (const jet::Error&) {
            // The backup is good. What is left over goes after the next one.
        }
    }
    return {path, made, QFileInfo(path).size(), papers.count, papers.missing, papers.failure};
}

namespace {

Restored withPapers(const QString& kept, const QString& backup, const QString& programFolder) {
    const auto database = jet::openProgramFolder(programFolder);
    return {kept, restorePapers(backup, *database, programFolder)};
}

} // namespace

Restored restore(const QString& backup, const QString& programFolder) {
    if (!QFileInfo(backup).isFile())
        throw Refusal(backup + u" isn't there."_s);
    const FolderLock lock(programFolder);
    const QString uri = jet::serverOfFolder(programFolder);
    const bool dump = !backup.endsWith(u".mdb"_s, Qt::CaseInsensitive);
    if (uri.isEmpty()) {
        if (dump)
            throw Refusal(u"This is the backup of a server's database, and the folder has none. "
                          "Nothing was changed."_s);
        return withPapers(restoreFile(backup, programFolder), backup, programFolder);
    }
    if (!dump)
        throw Refusal(u"This is the backup of a database file, and the folder's database is on a "
                      "server. Nothing was changed."_s);
    if (const QMap<QString, qint64> rows = proven(backup); !rows.isEmpty())
        compareRows(rows, rowsOfDump(backup));
    refuseWhileInUse(uri);
    const BackupFile kept =
        backUp(programFolder, QDir(programFolder).filePath(u"Before restore"_s), {}, false);
    restoreDump(backup, uri);
    return withPapers(kept.path, backup, programFolder);
}

} // namespace keeping
