#pragma once

#include "platform/jet/Database.h"
#include "platform/screen/Complaint.h"

#include <QDate>

#include <optional>

namespace timemgmt {

/// Hours put on an operation by hand.
struct ManualTime {
    qint64 empId = 0;
    std::optional<qint64> jobNo; ///< 0 or nothing (Null in the row) for overhead
    qint64 operNo = 0;
    qint64 signId = 0; ///< the attendance that they belong to
    double hours = 0;
    QDate date;
    bool endsSequence = false; ///< the job's operations may be done in any order from now on
};

/// Why they were not written; nothing of it if they were.
struct ManualAnswer {
    std::optional<screen::Complaint> complaint = {};
    bool sequential = false; ///< the job's operations have an order, which hours by hand would end
};

/// Adds the row and rolls up its job, in one transaction. Nothing is written where the attendance,
/// the job or its operation has gone meanwhile, or where the job is sequential and isn't to lose
/// its order.
ManualAnswer AddManualTime(jet::Database& database, const ManualTime& time);

/// Parts of a row of `Timelog`; Null where nobody counted.
struct Parts {
    jet::Value done, scrap;
    bool operator==(const Parts&) const = default;
};

/// The row's parts; nothing if it has gone.
std::optional<Parts> partsOf(jet::Database& database, qint64 timeId);

/// First thing that is wrong with what was typed; empty counts as 0.
std::optional<screen::Complaint> checkParts(const QString& done, const QString& scrap);

/// Writes the parts if the row still has those that were shown. Otherwise returns what it has;
/// `gone` is set, and nothing returned, where there is no such row any more.
std::optional<Parts> SaveParts(jet::Database& database, qint64 timeId, double done, double scrap,
                               const Parts& shown, bool& gone);

} // namespace timemgmt
