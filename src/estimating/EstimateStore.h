#pragma once

#include "core/records/DocumentColumns.h"
#include "estimating/Costing.h"
#include "estimating/RfqNotes.h"
#include "estimating/RoutedSave.h"
#include "estimating/Routing.h"
#include "platform/jet/Database.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>

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

/// The columns of table Estimate and the controls of frmEstimate that show them.
const core::DocumentColumns<EstimateHeader>& estimateColumns();

/// An estimate with its lines.
struct EstimateDraft : RoutedLines {
    EstimateHeader header;
};

/// The recordset that the module browses.
QString estimateRows();

/// An estimate as it is stored; nothing if there is none of that number.
std::optional<EstimateDraft> loadEstimate(jet::Database& database, qint64 estNo);

/// First fault of a draft in the order of the fields; nothing if it can be saved.
std::optional<Complaint> checkDraft(const EstimateDraft& draft);

/// Puts the estimated prices of the breaks into the header, the quantity of break A being the
/// estimate's; and the quoted totals. Throw values::Overflow.
EstimateCost reckonPrices(EstimateHeader& header, const RoutedLines& lines);
void reckonTotals(EstimateHeader& header);

/// Writes the draft as a new estimate (`estNo` 0) or over the stored one, with its rows, the notes
/// of its operations and those of its RFQ number, in one transaction. See saveRouted for `before`
/// and what is thrown; where something of another station came in, the prices are computed anew.
SaveOutcome saveEstimate(jet::Database& database, qint64 estNo, EstimateDraft& draft,
                         const EstimateDraft* before = nullptr, const RfqNotesEntry& rfq = {},
                         const QStringList& settled = {});

/// Deletes an estimate with its rows and notes, and the notes of its RFQ number if no other names
/// it. Jobs that were made from it keep its number. Throws as saveEstimate does.
void deleteEstimate(jet::Database& database, qint64 estNo);

/// What a new estimate takes from a job as it is stored: header fields (the customer among them)
/// and rows, the time being the job's current one; notes aside. Nothing if there is no such job.
std::optional<EstimateDraft> draftFromJob(jet::Database& database, qint64 jobNo);

} // namespace estimating
