#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <stdexcept>

namespace values {

/// Run-time error 6: a number left the range of the type it was meant for.
struct Overflow : std::runtime_error {
    Overflow() : std::runtime_error("Overflow") {}
};

/// The number at the start of the text, blanks passed over, full stop as decimal point; 0 where
/// there is none. "12abc" is 12, " 1 2" is 12, "abc" is 0, "1e3" is 1000.
double val(QStringView text);

/// Whether the whole text reads as a number: sign, digits, thousands commas, one point, exponent,
/// CurrencySymbol-free; empty and blank text are not numbers.
bool isNumeric(QStringView text);

/// Rounds to the nearest whole number, ties to even, and throws Overflow outside 16 or 32 bits.
std::int16_t cInt(double value);
std::int16_t cInt(QStringView text);
std::int32_t cLng(double value);

/// Shortest decimal text that reads back as the same double, full stop, no exponent for everyday
/// sizes: what `&` makes of a number and what goes into SQL text.
QString numberText(double value);

} // namespace values
