#include "platform/values/Currency.h"
#include "platform/values/Numbers.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using values::Currency;

std::string text(Currency amount) {
    return amount.toText().toStdString();
}
std::string money(double value) {
    return text(Currency::fromDouble(value));
}

TEST(Currency, RoundsTiesToEvenAsAPersonReadsTheNumber) {
    EXPECT_EQ(money(2.00005), "2");      // in binary a little above the tie
    EXPECT_EQ(money(2.00015), "2.0002"); // odd goes up
    EXPECT_EQ(money(-2.00015), "-2.0002");
    EXPECT_EQ(money(25.12345), "25.1234");
    EXPECT_EQ(money(0.00004999), "0");
    EXPECT_EQ(money(0.00005001), "0.0001");
    EXPECT_EQ(money(123456789012.34565), "123456789012.346"); // 15 digits are what it holds
    EXPECT_EQ(money(1e-30), "0");
}

TEST(Currency, ProductsAreExactAndRoundedOnce) {
    const auto product = [](const char16_t* a, const char16_t* b) {
        return text(Currency::fromText(a) * Currency::fromText(b));
    };
    EXPECT_EQ(product(u"0.0001", u"0.5"), "0");      // 0.00005: tie, down to even
    EXPECT_EQ(product(u"0.0003", u"0.5"), "0.0002"); // 0.00015: tie, up to even
    EXPECT_EQ(product(u"-0.0003", u"0.5"), "-0.0002");
    EXPECT_EQ(product(u"3.9575", u"17"), "67.2775");
    EXPECT_EQ(product(u"30000000", u"30000000"), "900000000000000");
    EXPECT_THROW(product(u"40000000", u"40000000"), values::Overflow);
    EXPECT_THROW(Currency::fromDouble(1e16), values::Overflow);
    EXPECT_THROW(Currency::fromDouble(std::nan("")), values::Overflow);
}

TEST(Currency, SumsDontDriftAndTextReadsBack) {
    std::mt19937 random(7);
    Currency sum;
    std::int64_t units = 0;
    for (int i = 0; i < 2000; ++i) {
        const auto n = static_cast<std::int64_t>(random()) - 2147483648LL;
        const Currency amount = Currency::fromTenThousandths(n);
        EXPECT_EQ(Currency::fromText(amount.toText()), amount);
        EXPECT_EQ(Currency::fromDouble(amount.toDouble()), amount);
        sum += amount;
        units += n;
    }
    EXPECT_EQ(sum.tenThousandths(), units);
    EXPECT_EQ(text(Currency::fromText(u"0.1") + Currency::fromText(u"0.2")), "0.3");
}

TEST(Numbers, ValReadsWhatStandsInFront) {
    EXPECT_EQ(values::val(u"12abc"), 12);
    EXPECT_EQ(values::val(u" 1 2.5"), 12.5);
    EXPECT_EQ(values::val(u"-3.25x"), -3.25);
    EXPECT_EQ(values::val(u"1e3"), 1000);
    EXPECT_EQ(values::val(u"2e"), 2);
    EXPECT_EQ(values::val(u".5"), 0.5);
    EXPECT_EQ(values::val(u"5."), 5);
    EXPECT_EQ(values::val(u"1,234"), 1); // the comma ends it
    EXPECT_EQ(values::val(u"abc"), 0);
    EXPECT_EQ(values::val(u""), 0);
    EXPECT_EQ(values::val(u"."), 0);
}

TEST(Numbers, NumericMeansTheWholeText) {
    for (const auto* good : {u"1", u" -2.5 ", u"1,234.50", u".5", u"5.", u"+3", u"1e3", u"1E-3"})
        EXPECT_TRUE(values::isNumeric(good)) << QString::fromUtf16(good).toStdString();
    for (const auto* bad : {u"", u" ", u"abc", u"1a", u"1..2", u".", u"-", u"1e", u"1 2", u"--1"})
        EXPECT_FALSE(values::isNumeric(bad)) << QString::fromUtf16(bad).toStdString();
}

TEST(Numbers, WholeNumbersOverflowAtTheirWidth) {
    EXPECT_EQ(values::cInt(2.5), 2);
    EXPECT_EQ(values::cInt(3.5), 4);
    EXPECT_EQ(values::cInt(-2.5), -2);
    EXPECT_EQ(values::cInt(u"32767"), 32767);
    EXPECT_THROW(values::cInt(u"32768"), values::Overflow);
    EXPECT_THROW(values::cInt(32767.5), values::Overflow); // the tie goes to the even 32768
    EXPECT_THROW(values::cLng(2147483648.0), values::Overflow);
}

TEST(Numbers, TextOfANumberIsPlainSql) {
    EXPECT_EQ(values::numberText(2.5), u"2.5");
    EXPECT_EQ(values::numberText(-0.0), u"0");
    EXPECT_EQ(values::numberText(1e6), u"1000000");
    EXPECT_EQ(values::numberText(0.1 + 0.2).toDouble(), 0.1 + 0.2);
    EXPECT_FALSE(values::numberText(0.00001234).contains(u'e'));
}

} // namespace
