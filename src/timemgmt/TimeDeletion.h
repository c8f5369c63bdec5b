#pragma once

#include "jobs/JobCosting.h"
#include "platform/jet/Database.h"

#include <QStringList>

#include <vector>

namespace timemgmt {

struct WorkDeleted {
    QStringList refusals; ///< why some of the rows stay, in the order in which they were given
    std::vector<jobs::Notice> notices; ///< operations that aren't finished any more
};

/// Deletes rows of `Timelog` but those that run, rolls up the jobs concerned, and takes the status
/// from operations that have no time left; in one transaction. Rows that have gone are passed over.
WorkDeleted DeleteWork(jet::Database& database, const std::vector<qint64>& ids);

/// Deletes rows of `Sign_in` that are closed and have no work on them. Returns why the others stay.
QStringList DeleteAttendance(jet::Database& database, const std::vector<qint64>& ids);

} // namespace timemgmt
