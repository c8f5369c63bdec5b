#pragma once

#include <QString>
#include <QStringView>

#include <compare>
#include <cstdint>

namespace values {

/// Money: a fixed-point number of ten-thousandths in 64 bits. Everything that becomes a Currency is
/// rounded to the nearest ten-thousandth, ties to even. Sums and products that leave the range
/// (about +-922 million million) throw values::Overflow.
class Currency {
  public:
    constexpr Currency() = default;
    static constexpr Currency fromTenThousandths(std::int64_t n) {
        Currency c;
        c.m_units = n;
        return c;
    }
    /// Nearest ten-thousandth, ties to even, of the decimal text that the double prints as (15
    /// significant digits), so that 2.00005 counts as a tie as a person reads it.
    static Currency fromDouble(double value);
    static Currency fromInteger(std::int64_t value);
    /// The leading number of the text as Val reads it; no number is 0.
    static Currency fromText(QStringView text);

    constexpr std::int64_t tenThousandths() const { return m_units; }
    double toDouble() const { return static_cast<double>(m_units) / 10000.0; }
    float toFloat() const { return static_cast<float>(toDouble()); }
    /// Shortest decimal text with a full stop and no trailing zeros: "12.5", "0", "-3.0001".
    QString toText() const;

    // NOLINTNEXTLINE(modernize-use-nullptr): the linter trips over the default
    friend constexpr auto operator<=>(Currency, Currency) = default;
    Currency operator-() const;
    friend Currency operator+(Currency a, Currency b);
    friend Currency operator-(Currency a, Currency b);
    /// Exact product rounded once, ties to even.
    friend Currency operator*(Currency a, Currency b);
    Currency& operator+=(Currency other) { return *this = *this + other; }
    Currency& operator-=(Currency other) { return *this = *this - other; }

  private:
    std::int64_t m_units = 0;
};

} // namespace values
