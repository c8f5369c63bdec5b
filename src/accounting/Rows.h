#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace accounting {

/// A text as a literal of SQL, cut to the width of its column so that no row is refused for it.
QString literal(const QString& text, int width = 0);

/// Inserts rows of literals in one statement for many rows. The caller holds the transaction.
void insertRows(jet::Database& database, const QString& table, const QStringList& columns,
                const std::vector<QStringList>& rows);

/// "3,17,20" for an IN.
QString numberList(const std::vector<qint64>& numbers);

} // namespace accounting
