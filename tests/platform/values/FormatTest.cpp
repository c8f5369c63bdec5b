#include "platform/values/Format.h"

#include <gtest/gtest.h>

namespace {

std::string shown(double value, QStringView mask) {
    return values::format(value, mask).toStdString();
}

TEST(Format, NumbersThroughTheMasksInUse) {
    EXPECT_EQ(shown(5, u"#####0"), "5");
    EXPECT_EQ(shown(0, u"#####0"), "0");
    EXPECT_EQ(shown(2.5, u"#####0"), "3"); // half away from zero, unlike money
    EXPECT_EQ(shown(-2.5, u"#####0"), "-3");
    EXPECT_EQ(shown(1234567, u"#####0"), "1234567");
    EXPECT_EQ(shown(12.345, u"#####0.00"), "12.35");
    EXPECT_EQ(shown(1.005, u"#0.00"), "1.01"); // as the number prints, not as it is stored
    EXPECT_EQ(shown(0.5, u"######0.0000"), "0.5000");
    EXPECT_EQ(shown(0, u"##,###.00"), ".00");
    EXPECT_EQ(shown(1234.5, u"##,###.00"), "1,234.50");
    EXPECT_EQ(shown(1234567.891, u"###,##0.00"), "1,234,567.89");
    EXPECT_EQ(shown(12.5, u"$#,###.00"), "$12.50");
    EXPECT_EQ(shown(-12.5, u"$#,###.00"), "-$12.50");
    EXPECT_EQ(shown(1234.5, u"kr.#,0.00"), "kr.1,234.50"); // the symbol's own point
    EXPECT_EQ(shown(999.9999, u"#,0.0000"), "999.9999");
    EXPECT_EQ(shown(999.99995, u"#,0.0000"), "1,000.0000");
    EXPECT_EQ(shown(0, u"##########"), "");
    EXPECT_EQ(shown(-0.001, u"#0.00"), "0.00"); // no minus in front of nothing
    EXPECT_EQ(shown(12.5, u"0.####"), "12.5");
    EXPECT_EQ(values::format(values::Currency::fromText(u"-3.00005"), u"#0.0000").toStdString(),
              "-3.0000");
}

TEST(Format, DatesAndTimes) {
    const QDate date(2026, 3, 2);
    EXPECT_EQ(values::format(date, u"Short Date").toStdString(), "3/2/2026");
    EXPECT_EQ(values::format(date, u"long date").toStdString(), "Monday, March 2, 2026");
    EXPECT_EQ(values::format(date, u"yyyymmdd").toStdString(), "20260302");
    EXPECT_EQ(values::format(date, u"yyyy,mm,dd").toStdString(), "2026,03,02");
    EXPECT_EQ(values::sqlDate(date).toStdString(), "03/02/2026");
    const QDateTime moment(date, QTime(15, 4, 5), Qt::UTC);
    EXPECT_EQ(values::format(moment, u"mm/dd/yyyy hh:nn:ss AM/PM").toStdString(),
              "03/02/2026 03:04:05 PM");
    EXPECT_EQ(values::format(moment, u"h:mm").toStdString(), "15:04"); // m behind h is minutes
    EXPECT_EQ(values::format(QDateTime(date, QTime(0, 30), Qt::UTC), u"hh:nn AM/PM").toStdString(),
              "12:30 AM");
    EXPECT_TRUE(values::format(QDate(), u"Short Date").isEmpty());
}

TEST(Format, DatesAsPeopleTypeThem) {
    const QDate date(2026, 3, 2);
    for (const auto* text :
         {u"3/2/2026", u"03/02/26", u" 3/2/26 ", u"20260302", u"2026-03-02", u"3-2-2026"})
        EXPECT_EQ(values::dateFromText(text), date) << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(values::dateFromText(u"1/1/30").year(), 1930);
    EXPECT_EQ(values::dateFromText(u"2/29/2024"), QDate(2024, 2, 29));
    for (const auto* text : {u"", u"2/30/2026", u"2/29/2026", u"13/1/2026", u"3/2", u"tomorrow",
                             u"3/2/202", u"  /  /    "})
        EXPECT_FALSE(values::dateFromText(text).isValid())
            << QString::fromUtf16(text).toStdString();
}

} // namespace
