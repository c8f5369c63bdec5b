#include "platform/values/Text.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

namespace {

using values::validKey;

TEST(Keys, AllowedDeniedAndBackspace) {
    const QString all = u"*"_s;
    EXPECT_EQ(validKey(u'a', all, true, {}), u'a');
    EXPECT_EQ(validKey(u'|', all, true, u"|'"_s), 0);
    EXPECT_EQ(validKey(u'x', all, true, u"X"_s), 0); // no way round in lower case
    EXPECT_EQ(validKey(u'7', u"0123456789"_s, true, {}), u'7');
    EXPECT_EQ(validKey(u'a', u"ABC"_s, true, {}), u'a');
    EXPECT_EQ(validKey(u'd', u"ABC"_s, true, {}), 0);
    EXPECT_EQ(validKey(8, u"123"_s, true, {}), 8);
    EXPECT_EQ(validKey(8, u"123"_s, false, {}), 0);
    EXPECT_EQ(validKey(u'1', u"123"_s, true, u"1"_s), 0); // denied wins
}

TEST(Keys, PastedTextGoesThroughTheSameFilter) {
    EXPECT_EQ(values::filtered(u"O'Neil [12]#"_s, values::keys::description()), u"ONeil 12");
    EXPECT_EQ(values::filtered(u"$1,250.75 "_s, values::keys::decimal()), u"1250.75");
    EXPECT_EQ(values::filtered(u"a\\b'c\"d"_s, values::keys::treeName()), u"abcd");
    EXPECT_EQ(values::filtered(u"#[ok]"_s, values::keys::name()), u"#[ok]");
}

TEST(Text, Padding) {
    QString point = u"."_s;
    EXPECT_EQ(values::padText(u"ab"_s, 5, point), u"...ab");
    EXPECT_EQ(values::padText(u" abcdef "_s, 3, point), u"abc");
    QString wrong = u"xy"_s;
    EXPECT_EQ(values::padText(u"ab"_s, 4, wrong), u"  ab");
    EXPECT_EQ(wrong, u" "); // the caller's fill too
}

TEST(Text, NullEndsATextAndItsAbsenceIsNothing) {
    EXPECT_EQ(values::stripNull(u"$"_s + QChar(0) + u"rest"_s), u"$");
    EXPECT_TRUE(values::stripNull(u"$"_s).isEmpty());
    EXPECT_EQ(values::quoted(u"D'Arcy's"_s), u"D''Arcy''s");
    EXPECT_EQ(values::findListIndex({u"a"_s, u"b"_s}, u"c"_s), -1);
}

TEST(Text, FieldsAreReformattedWhenLeft) {
    EXPECT_EQ(values::numberField(u"12.3"_s, u"#####0.00"), u"12.30");
    EXPECT_EQ(values::numberField(u"1,234"_s, u"#####0"), u"1234");
    EXPECT_EQ(values::numberField(u"abc"_s, u"#####0.00"), u"0");
    EXPECT_EQ(values::numberField({}, u"#####0.00"), u"0");
    EXPECT_EQ(values::dateField(u"3/2/26"_s), u"3/2/2026");
    EXPECT_EQ(values::dateField(u"soon"_s), QString::fromUtf16(values::blankDate));
    EXPECT_EQ(values::dateField(QString::fromUtf16(values::blankDate)),
              QString::fromUtf16(values::blankDate));
}

} // namespace
