#pragma once

#include "platform/jet/Database.h"

namespace inventory {

/// A job, or an estimate, that makes the same again: header, routing with its notes, fixed costs,
/// dated today. Its number; 0, and nothing written, if the source has gone.
qint64 copyJob(jet::Database& database, qint64 jobNo);
qint64 copyEstimate(jet::Database& database, qint64 estNo);

} // namespace inventory
