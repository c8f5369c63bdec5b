#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace values {

/// A text as one field of a CSV line (RFC 4180): quoted where it holds a comma, a quote or a line
/// break. What a spreadsheet would take for a formula (a text that begins with = + - @, a tab or a
/// carriage return, apostrophes in front passed over) gets one apostrophe in front, so that a
/// reader who takes one off such texts has them back exactly.
void appendCsvText(QString& line, QStringView text);

/// A number as shown ("$1,234.50", "-$12", "kr.99") as a plain one ("1234.50"); empty where the
/// text shows no number.
QString plainNumber(QStringView shown);

/// A number that grows with a date as shown and the time behind it; nothing where the text isn't
/// such a date.
std::optional<double> dayNumber(QStringView shown);

/// A date as shown (m/d/yyyy with or without a time behind it, or "Monday, March 2, 2026") as an
/// ISO one ("2026-03-02", "2026-03-02 14:05:00"); empty where the text isn't such a date.
QString isoDate(QStringView shown);

} // namespace values
