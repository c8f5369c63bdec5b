#pragma once

#include "core/keeping/PaperStore.h"
#include "platform/jet/Database.h"

namespace keeping {

/// The folder of a database's papers; empty where it keeps none, or none is named.
QString papersFolderOf(jet::Database& database, const QString& programFolder);

/// The store beside the backups of a folder. Each file is there once, however many backups have it.
PaperStore papersOfBackups(const QString& backupFolder);

/// What became of a shop's papers at a backup.
struct PapersTaken {
    int count = 0;   ///< that the backup has
    int missing = 0; ///< that the records name and aren't there as they were stored
    QString failure; ///< why they could not be copied; empty if they could
};
/// Copies what the backups haven't got yet and writes the list of all that this one has, beside it.
/// Where the shop's folder is out of reach, that is what earlier backups have of what records name.
/// Throws Refusal only where `progress` breaks it off.
PapersTaken takePapers(jet::Database& database, const QString& programFolder, const QString& backup,
                       const Progress& progress);

/// After a good backup: lets go what no record names any more, once the backups have it. What was
/// put there within the day stays: somebody may just be adding it.
void removeForsaken(jet::Database& database, const QString& programFolder,
                    const QString& backupFolder, const QDateTime& now);
/// Lets go what no backup's list has any more.
void trimPapers(const QString& backupFolder);
/// The file beside a backup that lists its papers.
QString paperListOf(const QString& backup);

/// Puts back what a backup lists and its database's folder hasn't got as it was. What there is to
/// tell of it; empty if the backup has no papers.
QString restorePapers(const QString& backup, jet::Database& database, const QString& programFolder);

/// A paper that is missing or was changed outside; or that the folder is out of reach, and then
/// there is no record and nothing else is told.
struct PaperFinding {
    QString record, text;
    bool mended = false;
};
/// Reads all papers. With `mend`, what the backups have is put back, into a folder in reach alone.
std::vector<PaperFinding> checkPapers(jet::Database& database, const QString& programFolder,
                                      bool mend);

} // namespace keeping
