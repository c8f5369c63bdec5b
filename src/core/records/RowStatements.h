#pragma once

#include "platform/jet/Database.h"

#include <QStringList>

#include <vector>

namespace core {

/// Inserts rows into a table, as few statements as can be: each row has a value for each of the
/// columns.
void insertRows(jet::Database& database, const QString& table, const QStringList& columns,
                const std::vector<std::vector<jet::Value>>& rows);
/// Updates rows in the same way. The first `keys` of the columns tell which row a row of values is
/// for, the others are written. No value may be Null.
void updateRows(jet::Database& database, const QString& table, const QStringList& columns, int keys,
                const std::vector<std::vector<jet::Value>>& rows);

} // namespace core
