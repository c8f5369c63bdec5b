#pragma once

#include "jobs/JobStore.h"

namespace jobs {

/// What other stations have written to the rows of a job since `before` was read from it goes into
/// the draft; what was typed here stays. Both belong into the transaction of the save.

/// The floor's status, place and hours of an operation. Tells why the two can't be joined: the
/// job's operations are no longer those of `before`, so that notes would go to the wrong ones, or
/// time has been booked on an operation that was removed here.
std::optional<estimating::Complaint> mergeOperations(jet::Database& database, qint64 jobNo,
                                                     const std::vector<estimating::OperRow>& before,
                                                     std::vector<estimating::OperRow>& rows);

/// What inventory has issued to a fixed cost or taken back from it. Throws values::Overflow.
void mergeFixedCosts(jet::Database& database, qint64 jobNo,
                     const std::vector<estimating::MiscRow>& before,
                     std::vector<estimating::MiscRow>& rows);

} // namespace jobs
