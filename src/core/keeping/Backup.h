#pragma once

#include "core/keeping/PaperStore.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <vector>

namespace keeping {

/// How backups are made and kept: the file Mirsa.backup of the program folder, lines "name=value".
/// What it doesn't say is as here.
struct BackupSettings {
    QString folder;          ///< "folder": where backups go; the program folder's Backups
    bool daily = true;       ///< "daily": one by itself at the first start of a day
    int keepAllDays = 7;     ///< "keepAllDays": every backup is kept for so long
    int keepWeeklyDays = 92; ///< "keepWeeklyDays": then one of each week; later one of each month
    int warnAfterDays = 3;   ///< "warnAfterDays": older than this the administrator is told
};
BackupSettings backupSettings(const QString& programFolder);

/// A backup that was checked and found good.
struct BackupFile {
    QString path;
    QDateTime made;
    qint64 bytes = 0;
    int papers = 0;             ///< stored files that it has
    int papersMissing = 0;      ///< that records name and weren't there as they were stored
    QString papersFailure = {}; ///< why they could not be copied; empty if they could
};
/// The good backups of a folder, the newest first. What has no side file that names it as good is
/// none.
std::vector<BackupFile> backupsIn(const QString& folder);

/// Those of the backups that the settings let go at a moment. The newest always stays.
QStringList outdated(const std::vector<BackupFile>& backups, const QDateTime& now,
                     const BackupSettings& settings);

/// What there is to tell an administrator about the age of the last good backup; empty where all is
/// well.
QString backupWarning(const QString& programFolder, const QDateTime& now);
/// Whether a day's backup by itself is still to be made.
bool isBackupDue(const QString& programFolder, const QDateTime& now);

/// Copies the program folder's database into a folder while stations work: a file as a file, a
/// server's by pg_dump. The copy is opened again and checked (the engine's own check, the rows of
/// each table against the moment of the copy), and only then named; its side file tells date, size
/// and check. The papers that the folder's earlier backups haven't got are copied into its Papers;
/// where that fails the database's copy is good all the same, and says so. Then the outdated ones
/// go. Throws Refusal and jet::Error, with nothing new left.
BackupFile backUp(const QString& programFolder, const QString& targetFolder,
                  const Progress& progress = {}, bool withPapers = true);

/// What a restoration did.
struct Restored {
    QString kept;   ///< where the database that was there is now; empty if there was none
    QString papers; ///< what there is to tell of the papers; empty if the backup has none
};
/// Puts a backup in place of the program folder's database, which is put aside first, and its
/// papers where any are missing or changed. Refused while anybody has the database open.
Restored restore(const QString& backup, const QString& programFolder);

} // namespace keeping
