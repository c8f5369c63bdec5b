#include "platform/jet/Value.h"
#include "platform/values/Numbers.h"
#include "support/Print.h"

#include <gtest/gtest.h>

namespace {

using jet::Value;

QDateTime moment(int year, int month, int day, int hour = 0, int minute = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute), Qt::UTC);
}

TEST(Values, BecomeTextAsConcatenationMakesIt) {
    EXPECT_EQ(Value().toText(), QString());
    EXPECT_EQ(Value(true).toText(), u"True");
    EXPECT_EQ(Value(0.5).toText(), u"0.5");
    EXPECT_EQ(Value(3.0).toText(), u"3");
    EXPECT_EQ(Value(values::Currency::fromTenThousandths(125000)).toText(), u"12.5");
    EXPECT_EQ(Value(QDate(2026, 3, 2)).toText(), u"3/2/2026");
    EXPECT_EQ(Value(moment(2026, 11, 21, 0, 5)).toText(), u"11/21/2026 12:05:00 AM");
    EXPECT_EQ(Value(moment(1899, 12, 30, 13, 30)).toText(), u"1:30:00 PM");
}

TEST(Values, BecomeNumbersTruthAndMoments) {
    EXPECT_EQ(Value(u"12abc").toDouble(), 12);
    EXPECT_EQ(Value(true).toDouble(), -1);
    EXPECT_EQ(Value().toLong(), 0);
    EXPECT_EQ(Value(2.5).toLong(), 2);
    EXPECT_EQ(Value(u"3.5").toLong(), 4);
    EXPECT_THROW(Value(3e9).toLong(), values::Overflow);
    EXPECT_TRUE(Value(-1).toBool());
    EXPECT_TRUE(Value(u"true").toBool());
    EXPECT_FALSE(Value(u"0").toBool());
    EXPECT_FALSE(Value().toBool());
    EXPECT_EQ(Value(u"3/2/2026 4:05 PM").toDateTime(), moment(2026, 3, 2, 16, 5));
    EXPECT_FALSE(Value(u"soon").toDateTime());
    const QDateTime local(QDate(2026, 7, 1), QTime(9, 0), Qt::LocalTime);
    EXPECT_EQ(Value(local).toDateTime(), moment(2026, 7, 1, 9)) << "no zone arithmetic";
}

TEST(Values, CompareAsTheDatabaseDoes) {
    EXPECT_EQ(Value(u"Ab"), Value(u"aB"));
    EXPECT_FALSE(Value(u"a") == Value(u"a "));
    EXPECT_EQ(Value(2), Value(2.0));
    EXPECT_EQ(Value(2), Value(u"2"));
    EXPECT_FALSE(Value(0) == Value(u"abc"));
    EXPECT_EQ(Value(), Value());
    EXPECT_FALSE(Value() == Value(0));
    EXPECT_FALSE(Value() == Value(u""));
    EXPECT_EQ(Value(QDate(2026, 3, 2)), Value(moment(2026, 3, 2)));
}

} // namespace
