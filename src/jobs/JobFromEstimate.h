#pragma once

#include "platform/jet/Database.h"
#include "platform/screen/Complaint.h"
#include "platform/values/Currency.h"

#include <QDate>
#include <QString>

#include <optional>

namespace jobs {

/// What a job made from an estimate adds to it.
struct JobOrder {
    qint64 quantity = 0;
    values::Currency price; ///< quoted, each
    std::optional<QDate> dateIn;
    std::optional<QDate> dueDate;
    QString poNo; ///< cut to its column's width
    bool inOrder = false;
    bool useNotes = false; ///< operation notes go with their rows
    QString travelerNotes;
    QString jobNotes;
};

/// First fault in the order of the dialog's fields; nothing if the job can be made.
std::optional<screen::Complaint> checkOrder(const JobOrder& order);

/// Whether a job points back at the estimate.
bool estimateHasJob(jet::Database& database, qint64 estNo);

/// Makes the job from the estimate as it is stored, with routing, notes and fixed costs in one
/// transaction, and rolls its figures up. In-house rows start without hours, contractor rows with
/// their amount; the estimated figure of both is kept beside. Returns the job's number. Throws
/// jet::Error (rowDeleted where the estimate has gone) with nothing left behind.
qint64 createJob(jet::Database& database, qint64 estNo, const JobOrder& order);

} // namespace jobs
