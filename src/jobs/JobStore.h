#pragma once

#include "core/records/DocumentColumns.h"
#include "estimating/RoutedSave.h"
#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace jobs {

/// The row of table Job.
struct JobHeader {
    qint64 custId = 0;
    QString poNo;
    QString description;
    QString partNo;
    QString material;
    QString travelerNotes;
    QString jobNotes;
    qint64 quantity = 0;
    values::Currency shopRate;
    bool oneShopRate = true;
    bool inOrder = false;         ///< operations are done in their sequence
    values::Currency quotedPrice; ///< each
    std::optional<QDate> dateIn;
    std::optional<QDate> dueDate;
    double totalHours = 0;
    values::Currency shopCost; ///< each
    values::Currency invoiceEach;
    values::Currency invoiceTotal;
    bool shipped = false; ///< completed and shipped: an inactive job
    std::optional<QDate> shipDate;
    qint64 estNo = 0;         ///< the estimate that it came from; 0 for none
    qint64 assemblyJobNo = 0; ///< the parent job; 0 for none
};

/// The columns of table Job and the controls of frmJob that show them.
const core::DocumentColumns<JobHeader>& jobColumns();

/// A job with its lines.
struct JobDraft : estimating::RoutedLines {
    JobHeader header;
};

/// The rows that the module browses: all jobs, or those that are not shipped.
QString jobRows(bool activeOnly);

/// A job as it is stored; nothing if there is none of that number.
std::optional<JobDraft> loadJob(jet::Database& database, qint64 jobNo);

/// First fault of a draft in the order of the checks; nothing if it can be saved. `jobNo` is 0 for
/// a new job, `wasShipped` tells what is stored.
std::optional<estimating::Complaint> checkJob(jet::Database& database, qint64 jobNo,
                                              bool wasShipped, const JobDraft& draft);

/// Writes the draft as a new job (`jobNo` 0) or over the stored one, with its rows and the notes of
/// its operations, and rolls its cost up, in one transaction. See saveRouted for `before` and what
/// is thrown. Refuses where time has been booked on an operation that was removed here.
estimating::SaveOutcome saveJob(jet::Database& database, qint64 jobNo, JobDraft& draft,
                                const JobDraft* before = nullptr, const QStringList& settled = {});

/// Whether time was booked on the job, or on one operation of it.
bool hasTimeRecords(jet::Database& database, qint64 jobNo);
bool hasTimeRecords(jet::Database& database, qint64 jobNo, qint64 operNo);

/// Deletes a job with its routing, notes and fixed costs in one transaction; shipments and schedule
/// rows stay. Throws as saveJob does.
void deleteJob(jet::Database& database, qint64 jobNo);

/// The rows of a copy: actual figures go (in-house 0, contractors' amounts too), status and place
/// start anew; the estimated figures stay if wanted, else become 0.
void makeCopy(std::vector<estimating::OperRow>& rows, bool keepEstimated);

} // namespace jobs
