#include "platform/values/Text.h"
#include "platform/values/Format.h"

#include <gtest/gtest.h>

namespace {

using values::validKey;

TEST(Keys, AllowedDeniedAndBackspace) {
    const QString all = QStringLiteral("*");
    EXPECT_EQ(validKey(u'a', all, true, {}), u'a');
    EXPECT_EQ(validKey(u'|', all, true, QStringLiteral("|'")), 0);
    EXPECT_EQ(validKey(u'x', all, true, QStringLiteral("X")), 0); // no way round in lower case
    EXPECT_EQ(validKey(u'7', QStringLiteral("0123456789"), true, {}), u'7');
    EXPECT_EQ(validKey(u'a', QStringLiteral("ABC"), true, {}), u'a');
    EXPECT_EQ(validKey(u'd', QStringLiteral("ABC"), true, {}), 0);
    EXPECT_EQ(validKey(8, QStringLiteral("123"), true, {}), 8);
    EXPECT_EQ(validKey(8, QStringLiteral("123"), false, {}), 0);
    EXPECT_EQ(validKey(u'1', QStringLiteral("123"), true, QStringLiteral("1")), 0); // denied wins
}

TEST(Keys, PastedTextGoesThroughTheSameFilter) {
    EXPECT_EQ(values::filtered(QStringLiteral("O'Neil [12]#"), values::keys::description()),
              u"ONeil 12");
    EXPECT_EQ(values::filtered(QStringLiteral("$1,250.75 "), values::keys::decimal()), u"1250.75");
    EXPECT_EQ(values::filtered(QStringLiteral("a\\b'c\"d"), values::keys::treeName()), u"abcd");
    EXPECT_EQ(values::filtered(QStringLiteral("#[ok]"), values::keys::name()), u"#[ok]");
}

TEST(Text, Padding) {
    QString point = QStringLiteral(".");
    EXPECT_EQ(values::padText(QStringLiteral("ab"), 5, point), u"...ab");
    EXPECT_EQ(values::padText(QStringLiteral(" abcdef "), 3, point), u"abc");
    QString wrong = QStringLiteral("xy");
    EXPECT_EQ(values::padText(QStringLiteral("ab"), 4, wrong), u"  ab");
    EXPECT_EQ(wrong, u" "); // the caller's fill too
}

TEST(Text, NullEndsATextAndItsAbsenceIsNothing) {
    EXPECT_EQ(values::stripNull(QStringLiteral("$") + QChar(0) + QStringLiteral("rest")), u"$");
    EXPECT_TRUE(values::stripNull(QStringLiteral("$")).isEmpty());
    EXPECT_EQ(values::quoted(QStringLiteral("D'Arcy's")), u"D''Arcy''s");
    EXPECT_EQ(
        values::findListIndex({QStringLiteral("a"), QStringLiteral("b")}, QStringLiteral("c")), -1);
}

TEST(Text, FieldsAreReformattedWhenLeft) {
    EXPECT_EQ(values::numberField(QStringLiteral("12.3"), u"#####0.00"), u"12.30");
    EXPECT_EQ(values::numberField(QStringLiteral("1,234"), u"#####0"), u"1234");
    EXPECT_EQ(values::numberField(QStringLiteral("abc"), u"#####0.00"), u"0");
    EXPECT_EQ(values::numberField({}, u"#####0.00"), u"0");
    EXPECT_EQ(values::dateField(QStringLiteral("3/2/26")), u"3/2/2026");
    EXPECT_EQ(values::dateField(QStringLiteral("soon")), QString::fromUtf16(values::blankDate));
    EXPECT_EQ(values::dateField(QString::fromUtf16(values::blankDate)),
              QString::fromUtf16(values::blankDate));
}

} // namespace
