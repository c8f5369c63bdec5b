#pragma once

#include "platform/jet/Database.h"

#include <QString>

namespace sample {

/// Puts a company to practise on into the program folder, with the names of the sample shop but a
/// few, and the file that makes it the program's QuickBooks. Those names are marked as sent. Leaves
/// alone what is there already; false if it can't be written.
bool makePracticeCompany(jet::Database& database, const QString& folder);

} // namespace sample
