#pragma once

#include "platform/jet/Database.h"

namespace core {

/// Makes the triggers by which the papers of a record go with it, whoever deletes it: its number
/// may be given again. Those that stand there are made anew. Part of the caller's transaction.
void installPaperTriggers(jet::Database& database);

/// Whether a database has all of them.
bool hasPaperTriggers(jet::Database& database);

} // namespace core
