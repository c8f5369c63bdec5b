#pragma once

#include "estimating/Routing.h"
#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QString>

#include <compare>
#include <vector>

namespace jobs {

/// Rolls a job's figures up from the database, in one transaction: hours booked in house become the
/// actual times of its routing, and with contractor amounts and fixed costs the job's `JobShopCost`
/// (money each; by 1 where the quantity isn't above 0), `TotalHours` (two decimals) and
/// `InvoiceTotal`. Estimated figures and contractor amounts stay; overhead counts nowhere. Nothing
/// happens where there is no such job. Throws values::Overflow where a figure leaves the range of
/// money, with nothing written.
void UpdateJobCost(jet::Database& database, qint64 jobNo);

/// The same for several jobs, in as many waits as for one.
void UpdateJobCost(jet::Database& database, const std::vector<qint64>& jobNos);

/// What the user has to be told.
struct Notice {
    QString text;
    QString title;
};

/// An operation of a job, by their numbers.
struct JobOperation {
    qint64 jobNo = 0;
    qint64 operNo = 0;
    auto operator<=>(const JobOperation&) const = default;
};

/// After time records of these operations were deleted: rolls the figures of their jobs up as
/// UpdateJobCost does, and an operation of which none remain loses its status. Says so where it
/// was marked as finished. All in one transaction.
std::vector<Notice> AdjustJobTimeDeleted(jet::Database& database,
                                         const std::vector<JobOperation>& deleted);

/// Figures of a job on the screen. Sums are 32-bit floats, so beyond about seven digits they lose
/// cents, as an estimate's do.
struct JobFigures {
    float outContr = 0;  ///< money to contractors
    float fixed = 0;     ///< fixed costs
    double costEach = 0; ///< all cost by the quantity, by 1 where that isn't above 0
    float hours = 0;     ///< in house
    values::Currency invoiceTotal;
};

/// The same figures as UpdateJobCost over the rows on the screen. `shopRate` prices in-house rows
/// where `oneShopRate` is true, else their own rate. Throws values::Overflow as there.
JobFigures CalcJob(const std::vector<estimating::OperRow>& operations,
                   const std::vector<estimating::MiscRow>& fixedCosts, bool oneShopRate,
                   values::Currency shopRate, double quantity, values::Currency invoiceEach);

} // namespace jobs
