#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

namespace setup {

/// The statements of a text, parted at semicolons outside quotes.
QStringList statementsOf(const QString& text);

/// All statements that make the tables and indexes, in order.
QStringList definitions();

/// Makes all tables and indexes in an empty database and fills in the rows of a delivered one, in
/// one transaction.
void install(jet::Database& database);

/// Only the tables and indexes.
void createTables(jet::Database& database);

/// Adds the tables, columns and indexes that an older database lacks, and the security objects and
/// reports that its delivered rows lack. Loses and changes nothing that is there. Returns what was
/// added, a line each.
QStringList upgrade(jet::Database& database);

} // namespace setup
