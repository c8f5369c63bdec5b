#pragma once

#include "estimating/EstimateStore.h"
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

/// A job as it stands on the screen.
struct JobDraft {
    JobHeader header;
    std::vector<estimating::OperRow> operations;
    std::vector<estimating::MiscRow> fixedCosts;
};

/// The rows that the module browses: all jobs, or those that are not shipped.
QString jobRows(bool activeOnly);

/// First fault of a draft in the order of the checks; nothing if it can be saved. `jobNo` is 0 for
/// a new job, `wasShipped` tells what is stored.
std::optional<estimating::Complaint> checkJob(jet::Database& database, qint64 jobNo,
                                              bool wasShipped, const JobDraft& draft);

/// Writes the draft as a new job with its routing and fixed costs in one transaction; returns its
/// number. Throws jet::Error with number and failed step in its text; nothing is changed then.
qint64 addJob(jet::Database& database, JobDraft& draft);

/// Writes the draft over job `jobNo` and replaces its routing and fixed costs whole, in one
/// transaction. `before` is the job as it was shown when its editing began: columns that are still
/// the same aren't written, and what other stations wrote to the rows meanwhile goes into the
/// draft (JobMerge.h). Tells why the two can't be joined, with nothing changed. Throws as addJob
/// does.
std::optional<estimating::Complaint> changeJob(jet::Database& database, qint64 jobNo,
                                               const JobDraft& before, JobDraft& draft);

/// Whether time was booked on the job, or on one operation of it.
bool hasTimeRecords(jet::Database& database, qint64 jobNo);
bool hasTimeRecords(jet::Database& database, qint64 jobNo, qint64 operNo);

/// Deletes a job with its routing, notes and fixed costs in one transaction; shipments and schedule
/// rows stay. Throws as addJob does.
void deleteJob(jet::Database& database, qint64 jobNo);

/// The rows of a copy: actual figures go (in-house 0, contractors' amounts too), status and place
/// start anew; the estimated figures stay if wanted, else become 0.
void makeCopy(std::vector<estimating::OperRow>& rows, bool keepEstimated);

} // namespace jobs
