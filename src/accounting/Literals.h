#pragma once

#include <QString>

#include <vector>

namespace accounting {

/// A text as a literal of SQL.
QString literal(const QString& text);

/// "3,17,20" for an IN.
QString numberList(const std::vector<qint64>& numbers);

} // namespace accounting
