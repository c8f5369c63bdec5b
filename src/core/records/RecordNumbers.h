#pragma once

#include "platform/jet/Database.h"

namespace core {

/// Programs beside this one may know no number above 32,767. While the preference that allows such
/// numbers is off, an operation that would pass one on ends here with an overflow, in words that
/// name the preference; a transaction that is open is undone by that.
void checkRecordNumber(jet::Database& database, qint64 number);

/// The column of the preference; a database that wasn't upgraded has none, and allows none.
bool keepsLargeNumbers(const jet::Database& database);

} // namespace core
