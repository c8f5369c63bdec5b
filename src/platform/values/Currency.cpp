#include "platform/values/Currency.h"

#include "platform/values/Numbers.h"

#include <limits>

namespace values {

namespace {

constexpr std::int64_t scale = 10000;
using Wide = __int128;

std::int64_t narrowed(Wide units) {
    if (units > std::numeric_limits<std::int64_t>::max() ||
        units < std::numeric_limits<std::int64_t>::min())
        throw Overflow();
    return static_cast<std::int64_t>(units);
}

/// Division rounded to nearest, ties to even; the divisor is above 0.
Wide dividedToEven(Wide dividend, Wide divisor) {
    Wide quotient = dividend / divisor;
    Wide rest = dividend % divisor;
    const bool negative = rest < 0;
    if (negative)
        rest = -rest;
    if (2 * rest > divisor || (2 * rest == divisor && quotient % 2 != 0))
        quotient += negative ? -1 : 1;
    return quotient;
}

} // namespace

Currency Currency::fromDouble(double value) {
    if (!std::isfinite(value) || std::abs(value) >= 9.3e14)
        throw Overflow();
    // The 15 digits that the number prints as decide, so that 2.00005 is the tie that it looks
    // like.
    const QByteArray digits = QByteArray::number(std::abs(value), 'e', 14); // d.dddddddddddddde+xx
    const auto e = digits.indexOf('e');
    const int exponent = digits.mid(e + 1).toInt();
    Wide mantissa = digits[0] - '0';
    for (qsizetype i = 2; i < e; ++i)
        mantissa = mantissa * 10 + (digits[i] - '0');
    const int shift = exponent - 14 + 4; // power of ten from the mantissa to ten-thousandths
    if (shift < -28)
        return {};
    Wide power = 1;
    for (int i = 0; i < std::abs(shift); ++i)
        power *= 10;
    Wide units = shift >= 0 ? mantissa * power : dividedToEven(mantissa, power);
    if (value < 0)
        units = -units;
    return fromTenThousandths(narrowed(units));
}

Currency Currency::fromInteger(std::int64_t value) {
    return fromTenThousandths(narrowed(static_cast<Wide>(value) * scale));
}

Currency Currency::fromText(QStringView text) {
    return fromDouble(val(text));
}

QString Currency::toText() const {
    const bool negative = m_units < 0;
    const auto magnitude =
        negative ? ~static_cast<std::uint64_t>(m_units) + 1 : static_cast<std::uint64_t>(m_units);
    QString text = QString::number(magnitude / scale);
    if (const auto fraction = magnitude % scale) {
        QString digits = QString::number(fraction).rightJustified(4, u'0');
        while (digits.endsWith(u'0'))
            digits.chop(1);
        text += u'.' + digits;
    }
    return negative ? u'-' + text : text;
}

Currency Currency::operator-() const {
    return fromTenThousandths(narrowed(-static_cast<Wide>(m_units)));
}

Currency operator+(Currency a, Currency b) {
    return Currency::fromTenThousandths(narrowed(static_cast<Wide>(a.m_units) + b.m_units));
}

Currency operator-(Currency a, Currency b) {
    return Currency::fromTenThousandths(narrowed(static_cast<Wide>(a.m_units) - b.m_units));
}

Currency operator*(Currency a, Currency b) {
    const Wide product = static_cast<Wide>(a.m_units) * b.m_units;
    return Currency::fromTenThousandths(narrowed(dividedToEven(product, scale)));
}

} // namespace values
