#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

namespace setup {

/// The statements of a text, parted at semicolons outside quotes.
QStringList statementsOf(const QString& text);

/// All statements that make the tables and indexes, in order.
QStringList definitions();

/// The indexes that earlier releases made and others have replaced ("DROP INDEX Name" in the
/// texts).
QStringList replacedIndexes();

/// The statements that make a table's rows of a delivered database.
QStringList deliveredRows(const QString& table);

/// Makes all tables and indexes in an empty database, fills in the rows of a delivered one and lets
/// its journal of changes begin, in one transaction.
void install(jet::Database& database);

/// Only the tables and indexes.
void createTables(jet::Database& database);

/// The tables and columns that a database of today has and this one lacks, a line each ("table
/// Terms", "column Job.PONo"); nothing in a database of today. One that has none of the tables
/// belongs to another program: `foreign` says so.
QStringList lacking(const jet::Schema& schema, bool& foreign);

/// Adds the tables, columns and indexes that an older database lacks, and the security objects and
/// reports that its delivered rows lack, lets its journal of changes be kept as it is today, and
/// drops the indexes that others have replaced. Loses and changes no row that is there. Returns
/// what was done, a line each ("added table Terms").
QStringList upgrade(jet::Database& database);

/// The last number that a table's counter has given, also where that row was deleted since.
qint64 lastGiven(jet::Database& database, const QString& table, const QString& counter);
/// Lets a counter go on behind a number.
void setLastGiven(jet::Database& database, const QString& table, const QString& counter,
                  qint64 number);

} // namespace setup
