#pragma once

#include "estimating/RoutingKind.h"
#include "platform/jet/Database.h"
#include "platform/values/Currency.h"
#include "platform/values/Literals.h"

#include <QString>

#include <optional>
#include <vector>

namespace estimating {

/// One line of a routing while a document is open. Its sequence number is its place from 1.
struct OperRow {
    qint64 id = 0; ///< of the stored row, which keeps it over a save; 0 until it is saved
    int place = 0; ///< its SeqNo as it is stored
    qint64 operNo = 0;
    QString description;
    bool inhouse = true;
    /// Hours of an in-house row, money of a contractor row; nothing until typed.
    std::optional<double> time;
    values::Currency rate; ///< per hour; means nothing on a contractor row
    bool hasNote = false;
    /// The note, where it was written in the entry that is open: it stands in no saved row yet.
    QString newNote;
    // Jobs only:
    int located = 0;
    QString status = u" "_s;
    std::optional<double> estimated; ///< estimated hours or money beside the actual in `time`
};

/// One fixed cost while a document is open. Unit and price are copies of the catalogue's.
struct MiscRow {
    qint64 itemNo = 0;
    QString description;
    QString unit;
    values::Currency price;
    values::Currency quantity;
    values::Currency total;

    void retotal() { total = price * quantity; } ///< throws values::Overflow
};

/// What stands under the header of an estimate or a job.
struct RoutedLines {
    qint64 documentNo = 0; ///< a save says here which number it writes, before it commits
    std::vector<OperRow> operations;
    std::vector<MiscRow> fixedCosts;
};

/// An operation of the catalogue, as it enters a routing.
struct CatalogueOperation {
    qint64 operNo = 0;
    QString description;
    bool inhouse = true;
    values::Currency rate;
};

/// An operation picked for a new routing.
struct ChosenOperation {
    qint64 operNo = 0;
    bool useNote = false;
};

/// A row as it is inserted from the catalogue: time empty, rate copied.
OperRow newRow(const CatalogueOperation& operation);

/// Where a row goes that is inserted before or after the active one: the first place of an empty
/// list; at the end where no row is active.
int insertPlace(int rows, int activeRow, bool before);

/// The selects that the three below open: to have a document's lines come with its row.
QStringList lineSelects(const RoutingKind& kind, qint64 documentNo);
/// The routing of a saved document in order, with its note marks.
std::vector<OperRow> loadOperRows(jet::Database& database, const RoutingKind& kind,
                                  qint64 documentNo);
std::vector<MiscRow> loadMiscRows(jet::Database& database, const RoutingKind& kind,
                                  qint64 documentNo);
RoutedLines loadLines(jet::Database& database, const RoutingKind& kind, qint64 documentNo);

/// Rows for a list of catalogue operations; those that have left the catalogue are passed over.
std::vector<OperRow> rowsFor(jet::Database& database,
                             const std::vector<ChosenOperation>& operations);
/// The operations of a default set in its order, their default notes wanted or not.
std::vector<ChosenOperation> operationsOfSet(jet::Database& database, qint64 setNo, bool useNotes);

/// Writes the routing of a document that has none. The rate of a contractor row becomes 0, in
/// `rows` too.
void insertOperRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    std::vector<OperRow>& rows);
void insertMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<MiscRow>& rows);
/// The same over what is `stored`: rows that stay keep their identity and are written only where
/// they differ, so that other programs' statements go on meeting them; all others go. Not `over`
/// anything, for a new document.
void replaceOperRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                     const std::vector<OperRow>& stored, std::vector<OperRow>& rows,
                     bool over = true);
void replaceMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                     const std::vector<MiscRow>& stored, const std::vector<MiscRow>& rows,
                     bool over = true);

/// The operation's default note; empty if it has none.
QString defaultNote(jet::Database& database, qint64 operNo);
/// The same by the operation's name.
QString defaultNote(jet::Database& database, const QString& description);

/// The pattern of a part search: each hyphen stands for any one character, anything may be around
/// it. The other signs of patterns (*, ?, # and closed brackets) mean what they do there.
QString partPattern(const QString& typed);

} // namespace estimating
