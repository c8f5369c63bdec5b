#pragma once

#include "platform/jet/Database.h"

namespace core {

/// Makes the triggers that keep the journal, in the engine's own plain SQL, so that what other
/// programs write is in it too. Those that stand there are made anew: a table may have got columns.
/// Part of the caller's transaction.
void installJournal(jet::Database& database);

/// Takes them away, for filling a database with rows that nobody entered.
void removeJournal(jet::Database& database);

/// Whether a database has all of them as installJournal() would make them.
bool isJournalKept(jet::Database& database);

} // namespace core
