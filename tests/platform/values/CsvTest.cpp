#include "platform/values/Csv.h"
#include "platform/values/Literals.h"
#include "support/CsvReader.h"
#include "support/Print.h"

#include <gtest/gtest.h>

using namespace values;

namespace {

QString field(const QString& text) {
    QString line;
    appendCsvText(line, text);
    return line;
}

TEST(Csv, TextsAreQuotedAndFormulasDefusedAndAllReadBack) {
    EXPECT_EQ(field(u"Plate, 3\""_s), u"\"Plate, 3\"\"\""_s);
    EXPECT_EQ(field(u"=HYPERLINK(1)"_s), u"'=HYPERLINK(1)"_s);
    EXPECT_EQ(field(u"'68 Ford"_s), u"'68 Ford"_s);
    const QStringList texts{u"a"_s,    {},          u"-5"_s,         u"@x"_s,  u"'=x"_s,
                            u"''"_s,   u"\"\""_s,   u"one\r\ntwo"_s, u"\tx"_s, u"\r"_s,
                            u"+1,2"_s, u"Łódź €"_s, u" blank "_s,    u"'-"_s};
    QString line;
    for (const QString& text : texts) {
        if (!line.isEmpty())
            line += u',';
        appendCsvText(line, text);
    }
    EXPECT_EQ(testsupport::readCsv((line + u"\r\n"_s).toUtf8()).front(), texts);
}

TEST(Csv, NumbersArePlainAndDatesIso) {
    const std::pair<const char16_t*, const char16_t*> numbers[] = {{u"$1,234.50", u"1234.50"},
                                                                   {u"-$12", u"-12"},
                                                                   {u"kr.99", u"99"},
                                                                   {u"$.50", u"0.50"},
                                                                   {u"€ 0.0000", u"0.0000"},
                                                                   {u"12 EA", u""},
                                                                   {u"n/a", u""},
                                                                   {u"1-2", u""},
                                                                   {u"", u""},
                                                                   {u" -7.", u"-7"},
                                                                   {u"kr.1.5", u"1.5"}};
    for (const auto& [shown, plain] : numbers)
        EXPECT_EQ(plainNumber(shown), QString::fromUtf16(plain))
            << QString::fromUtf16(shown).toStdString();
    const std::pair<const char16_t*, const char16_t*> dates[] = {
        {u"3/2/2026", u"2026-03-02"},
        {u"Monday, March 2, 2026", u"2026-03-02"},
        {u"3/2/2026 2:05:00 PM", u"2026-03-02 14:05:00"},
        {u"13/2/2026", u""},
        {u"3/2/2026 soon", u""},
        {u"Saw, Drill, Bend", u""},
        {u"2026", u""}};
    for (const auto& [shown, iso] : dates)
        EXPECT_EQ(isoDate(shown), QString::fromUtf16(iso))
            << QString::fromUtf16(shown).toStdString();
}

} // namespace
