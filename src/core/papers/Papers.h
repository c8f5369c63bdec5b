#pragma once

#include "core/keeping/PaperStore.h"
#include "core/papers/PaperKinds.h"
#include "platform/jet/Database.h"

#include <QDateTime>

#include <optional>
#include <vector>

namespace core {

/// A paper beside a record. What it holds is a file of the shop's PaperStore.
struct Paper {
    qint64 id = 0;
    QString kind;
    qint64 record = 0; ///< that it lies beside
    QString fileName;
    keeping::Content content;
    bool behind = false; ///< printed behind the traveler
    QDateTime added;
    QString addedBy;
};

/// Whether a database has the table: one that wasn't upgraded hasn't.
bool keepsPapers(jet::Database& database);

/// The select of all papers of a record: its own, and those of the records of the kinds in `others`
/// that have a part number in common with it.
QString papersSelect(const PaperKind& kind, qint64 record, const QStringList& others);
/// The papers of such a select: the record's own first, the latest of each kind first; of the same
/// file under the same name beside other records the latest alone, and none that is among its own.
std::vector<Paper> readPapers(jet::Recordset rows, const PaperKind& kind, qint64 record);
std::vector<Paper> readPapers(jet::Database& database, const QString& select, const PaperKind& kind,
                              qint64 record);

/// A file that was stored, under the name that it has for people.
struct NamedContent {
    QString fileName;
    keeping::Content content;
};
/// Puts papers beside a record, in one transaction. What lies there already, the same file under
/// the same name, is passed over, so that it can be tried again. Returns how many were added;
/// nothing where the record has gone, whose number may be given again.
std::optional<int> addPapers(jet::Database& database, const PaperKind& kind, qint64 record,
                             const std::vector<NamedContent>& files, const QString& by);
/// Takes them away. What they hold stays in the store until a backup has it.
void removePapers(jet::Database& database, const std::vector<qint64>& ids);
void printBehind(jet::Database& database, const std::vector<qint64>& ids, bool behind);

/// Lets the papers of one record lie beside another too, as part of the caller's transaction. No
/// wait.
void carryPapers(jet::Database& database, const QString& fromKind, qint64 from,
                 const QString& toKind, qint64 to);

/// The papers that are printed behind a job's traveler, in the order in which they came.
QString behindSelect(qint64 jobNo);

/// Whether the store's folder is gone though papers are stored in it: nothing may be added then,
/// since a folder made in its place is another one than that of the other stations.
bool isGone(jet::Database& database, const keeping::PaperStore& store);

/// The store of the open shop. Throws keeping::Refusal where the preferences name no folder and
/// there is none by itself. `programFolder` is that of this station.
keeping::PaperStore paperStore(jet::Database& database, const QString& programFolder);

/// "12 KB"
QString sizeInWords(qint64 bytes);

} // namespace core
