#include "estimating/Costing.h"
#include "platform/values/Numbers.h"

#include <gtest/gtest.h>

#include <random>

using namespace estimating;
using values::Currency;

namespace {

Currency money(double amount) {
    return Currency::fromDouble(amount);
}

OperRow inhouse(double hours, double rate) {
    OperRow row;
    row.time = hours;
    row.rate = money(rate);
    return row;
}

OperRow contractor(double amount) {
    OperRow row;
    row.inhouse = false;
    row.time = amount;
    return row;
}

MiscRow fixed(double total) {
    MiscRow row;
    row.total = money(total);
    return row;
}

constexpr std::array<double, breakCount> noDiscount{};

/// The same figures in whole ten-thousandths, with the float narrowing spelled out.
struct Reference {
    using Wide = __int128;

    static Wide halfEven(Wide value, Wide by) {
        Wide quotient = value / by;
        Wide rest = value % by;
        if (rest < 0) {
            rest += by;
            --quotient;
        }
        if (rest * 2 > by || (rest * 2 == by && quotient % 2 != 0))
            ++quotient;
        return quotient;
    }
    static Wide units(float value) {
        // Fifteen digits, as a number is read off before it becomes money.
        char text[64];
        std::snprintf(text, sizeof text, "%.14e", static_cast<double>(value));
        return static_cast<Wide>(std::nearbyintl(std::strtold(text, nullptr) * 10000.0L));
    }
    static float narrow(Wide tenThousandths) {
        return static_cast<float>(static_cast<double>(tenThousandths) / 10000.0);
    }
    static float times(float sum, Wide time, Wide rate) {
        const Wide product = halfEven(time * rate, 10000);
        return static_cast<float>(static_cast<double>(sum) +
                                  static_cast<double>(product) / 10000.0);
    }
    static float plus(float sum, Wide amount) { return narrow(units(sum) + amount); }
};

} // namespace

TEST(Costing, PricesTheTextbookEstimate) {
    const std::vector<OperRow> routing{inhouse(2.5, 40), contractor(100)};
    const std::vector<MiscRow> costs{fixed(50)};
    const auto cost = CalcEstimate(routing, costs, false, money(50), 10, {0, 10, 0, 0, 100});
    EXPECT_EQ(cost.outContr, 100.0f);
    EXPECT_EQ(cost.fixed, 50.0f);
    EXPECT_DOUBLE_EQ(cost.priceEach[0], 25.0);
    EXPECT_DOUBLE_EQ(cost.priceEach[1], 22.5);
    EXPECT_DOUBLE_EQ(cost.priceEach[2], 25.0);
    EXPECT_DOUBLE_EQ(cost.priceEach[4], 0.0);

    const auto oneRate = CalcEstimate(routing, costs, true, money(50), 10, noDiscount);
    EXPECT_DOUBLE_EQ(oneRate.priceEach[0], 27.5);
}

TEST(Costing, DividesByOneWithoutAQuantityAndCostsNothingWithoutRows) {
    const auto cost = CalcEstimate({contractor(80)}, {}, true, money(50), 0, noDiscount);
    EXPECT_DOUBLE_EQ(cost.priceEach[0], 80.0);
    EXPECT_DOUBLE_EQ(CalcEstimate({contractor(80)}, {}, true, {}, -4, noDiscount).priceEach[0],
                     80.0);
    OperRow untimed = inhouse(0, 40);
    untimed.time.reset();
    const auto nothing = CalcEstimate({untimed}, {}, false, money(50), 3, noDiscount);
    EXPECT_DOUBLE_EQ(nothing.priceEach[0], 0.0);
}

TEST(Costing, KeepsItsSumsAsNarrowAsTheShopKnowsThem) {
    // Beyond seven digits the cents go, and an amount too small for the sum is lost whole.
    const auto cost =
        CalcEstimate({contractor(16777216), contractor(1)}, {}, true, {}, 1, noDiscount);
    EXPECT_EQ(cost.outContr, 16777216.0f);
    const auto cents = CalcEstimate({}, {fixed(1234567.89)}, true, {}, 1, noDiscount);
    EXPECT_EQ(cents.priceEach[0], static_cast<double>(1234567.89f));
    EXPECT_NE(cents.priceEach[0], 1234567.89);
}

TEST(Costing, RoundsTimeAndProductsToTenThousandthsTiesToEven) {
    // 0.00005 hours are a tie and go to zero; 0.00015 go to 0.0002.
    EXPECT_EQ(CalcEstimate({inhouse(0.00005, 1000)}, {}, false, {}, 1, noDiscount).priceEach[0],
              0.0);
    EXPECT_FLOAT_EQ(
        CalcEstimate({inhouse(0.00015, 1000)}, {}, false, {}, 1, noDiscount).priceEach[0], 0.2f);
    // 0.0001 h at 2.5 is 0.00025: to 0.0002.
    EXPECT_FLOAT_EQ(CalcEstimate({inhouse(0.0001, 2.5)}, {}, false, {}, 1, noDiscount).priceEach[0],
                    0.0002f);
}

TEST(Costing, AgreesWithWholeNumbersOnThousandsOfEstimates) {
    std::mt19937 random(20261122);
    const auto pick = [&](std::int64_t low, std::int64_t high) {
        return std::uniform_int_distribution<std::int64_t>(low, high)(random);
    };
    for (int round = 0; round < 10000; ++round) {
        // Small shops and large sums: up to about 10 million, where the float is coarse.
        const std::int64_t scale = round % 3 == 0 ? 1000000000 : 5000000;
        const bool oneRate = pick(0, 1) == 1;
        const std::int64_t shopRate = pick(0, 2000000);
        std::vector<OperRow> routing;
        std::vector<MiscRow> costs;
        float all = 0;
        float out = 0;
        float misc = 0;
        for (int i = static_cast<int>(pick(0, 12)); i > 0; --i) {
            OperRow row;
            row.inhouse = pick(0, 2) != 0;
            const std::int64_t time = row.inhouse ? pick(0, 800000) : pick(0, scale);
            const std::int64_t rate = pick(0, 2000000);
            row.time = static_cast<double>(time) / 10000.0;
            row.rate = Currency::fromTenThousandths(rate);
            routing.push_back(row);
            if (row.inhouse) {
                all = Reference::times(all, time, oneRate ? shopRate : rate);
            } else {
                all = Reference::plus(all, time);
                out = Reference::plus(out, time);
            }
        }
        for (int i = static_cast<int>(pick(0, 6)); i > 0; --i) {
            MiscRow row;
            row.price = Currency::fromTenThousandths(pick(0, 4000000));
            row.quantity = Currency::fromTenThousandths(pick(0, 400000));
            row.retotal();
            const auto total = Reference::halfEven(
                Reference::Wide(row.price.tenThousandths()) * row.quantity.tenThousandths(), 10000);
            ASSERT_EQ(row.total.tenThousandths(), static_cast<std::int64_t>(total));
            costs.push_back(row);
            misc = Reference::plus(misc, total);
        }
        all = misc + all;
        const auto quantity = static_cast<double>(pick(0, 500));
        std::array<double, breakCount> discounts{};
        for (double& discount : discounts)
            discount = static_cast<double>(pick(0, 10000)) / 100.0;

        const auto cost = CalcEstimate(routing, costs, oneRate,
                                       Currency::fromTenThousandths(shopRate), quantity, discounts);
        ASSERT_EQ(cost.outContr, out) << "round " << round;
        ASSERT_EQ(cost.fixed, misc) << "round " << round;
        const double each = static_cast<double>(all) / (quantity > 0 ? quantity : 1.0);
        ASSERT_EQ(cost.priceEach[0], each) << "round " << round;
        // The later breaks start from what the first one shows.
        const double shown = Currency::fromDouble(each).toDouble();
        for (std::size_t i = 1; i < breakCount; ++i)
            ASSERT_NEAR(cost.priceEach[i], shown - shown * discounts[i] / 100.0, shown * 1e-12);
    }
}

TEST(Costing, LaterBreaksAreDiscountedFromThePriceThatTheFirstOneShows) {
    // 10 by 3 shows 3.3333.
    const auto cost = CalcEstimate({inhouse(1, 10)}, {}, false, {}, 3, {0, 0, 50, 0, 0});
    EXPECT_DOUBLE_EQ(cost.priceEach[0], 10.0 / 3);
    EXPECT_DOUBLE_EQ(cost.priceEach[1], 3.3333);
    EXPECT_DOUBLE_EQ(cost.priceEach[2], 1.66665);
}

TEST(Costing, StopsWhereMoneyEnds) {
    EXPECT_THROW(CalcEstimate({inhouse(9e11, 9e11)}, {}, false, {}, 1, noDiscount),
                 values::Overflow);
}

TEST(Costing, MultipliesTheQuotedPricesOut) {
    const auto totals = CalcQuoteTotals({25, 22.5, 0, 1.2345, 9}, {10, 20, 30, 1000, 0});
    EXPECT_EQ(totals, (std::array<double, breakCount>{250, 450, 0, 1234.5, 0}));
}

TEST(Costing, ReadsADiscountAsThePersonMeantIt) {
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"10", u"10.00"},   {u"1005", u"100.00"}, {u"100.5", u"100.00"},
        {u"", u"0.00"},      {u"abc", u"0.00"},    {u"0", u"0.00"},
        {u"2.346", u"2.35"}, {u"150", u"150.00"},  {u"100.00", u"100.00"},
    };
    for (const auto& [typed, text] : cases) {
        EXPECT_EQ(discountText(QString::fromUtf16(typed)), QString::fromUtf16(text))
            << QString::fromUtf16(typed).toStdString();
    }
}
