#pragma once

#include "platform/jet/Database.h"

namespace sample {

/// Puts a drawing, a customer's order and a photo beside the latest open jobs and an estimate of
/// the sample shop, into the folder Papers of its program folder.
void addPapers(jet::Database& database, const QString& programFolder);

} // namespace sample
