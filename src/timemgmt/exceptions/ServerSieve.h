#pragma once

#include "platform/jet/Database.h"

#include <vector>

namespace timemgmt {

/// What RecordSieve is to a file, by a server's own means: the numbers of all records that the
/// rules have to look at closely. Work that is running or was entered by hand is left out: the
/// rules find it by its status. A server with several processors shares each statement among them.
std::vector<qint64> workInQuestion(jet::Database& database);
std::vector<qint64> attendanceInQuestion(jet::Database& database);

} // namespace timemgmt
