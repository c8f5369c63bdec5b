#include "platform/rows/Order.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using rows::Kind;

/// Company, hours, day, a choice.
std::shared_ptr<const rows::Store> fewRows() {
    auto store = std::make_shared<rows::Store>(
        std::vector<Kind>{Kind::Text, Kind::Hours, Kind::Date, Kind::Text});
    rows::Texts cities;
    cities.add("Łódź");
    cities.add("Straßburg");
    store->setChoices(3, cities);
    const struct {
        const char* company;
        double hours;
        QDate day;
        int city;
    } lines[] = {{"Müller Tools", 1234.5, {2026, 3, 2}, 0},
                 {"Acme", -3, {2026, 3, 9}, -1},
                 {"acme tools", 0.25, {}, 1},
                 {"", 12, {2025, 12, 31}, 0}};
    std::int64_t key = 40;
    for (const auto& line : lines) {
        store->beginRow(key--);
        store->addText(0, line.company);
        store->addNumber(1, line.hours);
        if (line.day.isValid())
            store->addNumber(2, static_cast<double>(line.day.toJulianDay()));
        else
            store->addEmpty(2);
        store->addChoice(3, line.city);
    }
    return store;
}

/// The keys that are shown, in order.
std::vector<std::int64_t> keys(const rows::Order& order) {
    std::vector<std::int64_t> made;
    for (int place = 0; place < order.count(); ++place)
        made.push_back(order.store()->key(order.row(place)));
    return made;
}

TEST(Order, FiltersTakeWordsValuesAndRanges) {
    values::setNow(QDateTime(QDate(2026, 3, 3), QTime(9, 0)));
    const struct {
        int column;
        const char16_t* typed;
        std::vector<std::int64_t> left;
    } cases[] = {
        {0, u"TOOLS", {40, 38}},   {0, u"tools mull", {40}},    {0, u"=acme", {39}},
        {0, u"=", {37}},           {1, u"1234", {40}},          {1, u"1,234.5", {40}},
        {1, u"> 0", {40, 38, 37}}, {1, u"<= -3", {39}},         {1, u"0..12", {38, 37}},
        {1, u"12..", {40, 37}},    {1, u">", {40, 39, 38, 37}}, {2, u"3/2", {40}},
        {2, u"<= +0", {40, 37}},   {2, u"today..+7", {39}},     {2, u"=12/31/2025", {37}},
        {2, u"=", {38}},           {3, u"lodz", {40, 37}},      {3, u"STRASS", {38}},
    };
    for (const auto& [column, typed, left] : cases) {
        rows::Order order;
        order.setStore(fewRows());
        order.setFilter(column, QString::fromUtf16(typed));
        EXPECT_EQ(keys(order), left) << QString::fromUtf16(typed).toStdString();
    }
    values::setNow(std::nullopt);
}

TEST(Order, ALetterMoreOrLessGivesWhatTheWholeFilterGives) {
    rows::Order typed;
    typed.setStore(fewRows());
    typed.sortBy(1, true);
    for (const char16_t* text : {u"a", u"ac", u"acm", u"acme t", u"acme", u"", u"m", u"> 2"}) {
        for (const int column : {0, 1}) {
            typed.setFilter(column, QString::fromUtf16(text));
            rows::Order whole;
            for (int each = 0; each < 2; ++each)
                whole.setFilter(each, typed.filter(each));
            whole.sortBy(1, true);
            whole.setStore(fewRows());
            EXPECT_EQ(keys(typed), keys(whole)) << QString::fromUtf16(text).toStdString();
        }
    }
}

TEST(Order, SortsByValueWithNothingFirstAndAddsUp) {
    rows::Order order;
    order.setStore(fewRows());
    order.sortBy(1, false);
    EXPECT_EQ(keys(order), (std::vector<std::int64_t>{39, 38, 37, 40}));
    order.sortBy(2, false);
    EXPECT_EQ(keys(order), (std::vector<std::int64_t>{38, 37, 40, 39}));
    order.sortBy(0, true);
    EXPECT_EQ(keys(order), (std::vector<std::int64_t>{40, 38, 39, 37}));
    EXPECT_EQ(order.sum(1, 0, 3), 1243.75);
    EXPECT_EQ(order.sum(1, 1, 2), -2.75);
    EXPECT_EQ(order.store()->rowOf(38), 2);
    EXPECT_EQ(order.store()->rowOf(41), -1);
    EXPECT_EQ(order.placeOf(2), 1);
}

/// What is typed is looked for in what is shown.
TEST(Order, WhatIsSearchedIsWhatIsShownWithoutCommas) {
    auto store =
        std::make_shared<rows::Store>(std::vector<Kind>{Kind::Number, Kind::Money, Kind::Date});
    std::int64_t key = 20;
    for (const double value : {0.0, 5.0, -3.0, 0.005, 0.004, -12.25, 1234567.125, 99.995, 1e9}) {
        store->beginRow(key--);
        store->addNumber(0, value);
        store->addNumber(1, value);
        store->addNumber(2, std::abs(std::floor(value / 1e5)) + 2460000);
    }
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < store->count(); ++row) {
            const auto searched = store->searched(column).at(store->searchedIndex(column, row));
            EXPECT_EQ(QString::fromUtf8(searched.data(), static_cast<qsizetype>(searched.size())),
                      store->shown(column, row).remove(u','))
                << column << ' ' << row;
        }
    }
}

} // namespace
