#pragma once

#include "estimating/Costing.h"
#include "estimating/NoteStaging.h"
#include "estimating/Routing.h"
#include "platform/jet/Database.h"

#include <QDate>
#include <QString>

#include <array>
#include <exception>
#include <optional>
#include <vector>

namespace estimating {

/// One of the five price breaks of an estimate.
struct PriceBreak {
    double quantity = 0;
    double discount = 0;     ///< percent
    values::Currency price;  ///< computed, each
    values::Currency quoted; ///< typed, each
    values::Currency total;  ///< quoted times quantity
};

/// The row of table Estimate.
struct EstimateHeader {
    qint64 custId = 0;
    QString rfqNo;
    QString description;
    QString partNo;
    QString material;
    qint64 quantity = 0;
    std::optional<QDate> estDate;
    values::Currency shopRate;
    bool oneShopRate = true;
    std::array<PriceBreak, breakCount> breaks;
    QString estNotes;
    QString travelerNotes;
    QString jobNotes;
    qint64 assemblyEstNo = 0; ///< the parent estimate; 0 for none
};

/// An estimate as it stands on the screen.
struct EstimateDraft {
    EstimateHeader header;
    QString rfqNotes; ///< shared by all estimates of the customer and RFQ number
    std::vector<OperRow> operations;
    std::vector<MiscRow> fixedCosts;
};

/// Why a draft can't be saved, and the field that needs care.
struct Complaint {
    QString text;
    QString field; ///< a control's name; empty where it is the routing
};

/// The recordset that the module browses.
QString estimateRows();

/// First fault of a draft in the order of the fields; nothing if it can be saved.
std::optional<Complaint> checkDraft(const EstimateDraft& draft);

/// What the prices of a stored estimate are made of: quantities, rates and quoted prices, routing,
/// and fixed costs. Two readings differ if somebody has changed one of them.
struct CostingBasis {
    QStringList header, operations, fixedCosts;
};
CostingBasis costingBasis(jet::Database& database, qint64 estNo);

/// An estimate as it was when its editing began.
struct EstimateBefore {
    CostingBasis basis;
    EstimateHeader header;
};

/// Thrown where another station has changed the basis of the prices since the editing began.
struct ChangedElsewhere : std::exception {};

/// Writes the draft as a new row (`estNo` 0) or over the recordset's current row, and replaces its
/// routing and fixed costs whole, in one transaction. With `before`, columns that are still the
/// same aren't written, but the prices always are. Returns the estimate's number. Throws jet::Error
/// with the failed step on a line of its own, or ChangedElsewhere; nothing is changed then, but the
/// recordset has to be read again.
qint64 saveEstimate(jet::Database& database, jet::Recordset& rows, qint64 estNo,
                    EstimateDraft& draft, const EstimateBefore* before = nullptr);

/// Deletes the recordset's current row, estimate `estNo`, with its routing, fixed costs and
/// operation notes, in one transaction. Jobs that were made from it keep its number. Throws as
/// saveEstimate does.
void deleteEstimate(jet::Database& database, jet::Recordset& rows, qint64 estNo);

QString rfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo);
bool hasRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo);
/// Writes the notes of a customer's RFQ number, new or changed.
void writeRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo,
                   const QString& notes);
/// Removes the notes of a pair that no estimate names any more.
void dropUnusedRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo);
/// RFQ notes of a saved estimate, in one transaction. `oldRfqNo` is what it named before; empty for
/// a new estimate.
void saveRfqNotes(jet::Database& database, const EstimateHeader& saved, const QString& oldRfqNo,
                  const QString& notes);

/// What a new estimate takes from a job: header fields (the customer among them) and rows, the
/// time being the job's current one; notes aside. Nothing if there is no such job.
std::optional<EstimateDraft> draftFromJob(jet::Database& database, qint64 jobNo,
                                          const QString& currencySymbol);

} // namespace estimating
