#pragma once

#include "platform/values/Currency.h"

#include <QDate>
#include <QString>
#include <QStringView>

namespace values {

/// A number through a mask of '#', '0', ',', '.', with literal text in front ("$#,###.00"):
/// digits are rounded half away from zero as shown, '0' forces a digit, '#' shows one only where
/// there is one, a comma groups thousands. "##0.00" of 5 is "5.00"; "##,###.00" of 0 is ".00".
QString format(double value, QStringView mask);
QString format(Currency value, QStringView mask);

/// Whole dates and times through "Short Date" (m/d/yyyy), "long date" (Monday, March 2, 2026),
/// or a pattern of yyyy, yy, mmmm, mmm, mm, m, dddd, ddd, dd, d, hh, h, nn, ss, AM/PM.
QString format(const QDate& date, QStringView mask);
QString format(const QDateTime& moment, QStringView mask);

/// A date as a person types it: m/d/yyyy, m/d/yy, yyyymmdd, yyyy-mm-dd; invalid for anything else,
/// and for dates that don't exist. Two-digit years 0 to 29 are 2000 to 2029, 30 to 99 are 1930 to
/// 1999.
QDate dateFromText(QStringView text);

/// A date as a list shows it, in the short or the long form; invalid for any other text.
QDate dateFromShown(QStringView text);

/// The text of an empty masked date field.
inline constexpr char16_t blankDate[] = u"  /  /    ";

/// "mm/dd/yyyy", for dates between '#' in SQL.
QString sqlDate(const QDate& date);

} // namespace values
