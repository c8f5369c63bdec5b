#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

using namespace values;

TEST(LettersTest, ComparesInAnyCaseAndKeepsAccentsApart) {
    for (const auto& [a, b] : {std::pair(u"Müller"_s, u"MÜLLER"_s),
                               {u"łódź"_s, u"ŁÓDŹ"_s},
                               {u"иванов"_s, u"ИВАНОВ"_s},
                               {u"straße"_s, u"STRAẞE"_s},
                               {u"𐐨x"_s, u"𐐀X"_s}})
        EXPECT_TRUE(sameText(a, b) && compareText(a, b) == 0 && containsText(a, b))
            << a.toStdString();
    for (const auto& [a, b] : {std::pair(u"Müller"_s, u"Muller"_s),
                               {u"straße"_s, u"strasse"_s},
                               {u"ı"_s, u"i"_s},
                               {u"İ"_s, u"i"_s},
                               {u"\u212a"_s, u"k"_s},
                               {u"é"_s, u"e\u0301"_s}})
        EXPECT_TRUE(!sameText(a, b) && compareText(a, b) != 0 && !containsText(a, b))
            << a.toStdString();
    EXPECT_EQ(indexOfText(u"Ein Österreicher"_s, u"ÖST"), 4);
    EXPECT_EQ(indexOfText(u"\u212ak"_s, u"K"_s), 1); // the first one is the sign of the kelvin
    EXPECT_TRUE(startsWithText(u"Österreich"_s, u"öst") && !startsWithText(u"Ost"_s, u"öst"));
}

TEST(LettersTest, SortsAccentsWithTheirLetters) {
    QStringList list{u"Zebra"_s, u"österreich"_s, u"Ostrau"_s, u"Äpfel"_s,    u"apfel"_s,
                     u"Łódź"_s,  u"Lodz"_s,       u"Straße"_s, u"Strassen"_s, u"Strasse"_s,
                     u"Öl"_s,    u"a-b"_s,        u"a b"_s,    u"9"_s,        u"Ежов"_s,
                     u"Ёж"_s,    u"Ель"_s};
    std::sort(list.begin(), list.end(), textLess);
    EXPECT_EQ(list.join(u','),
              u"9,a b,a-b,apfel,Äpfel,Lodz,Łódź,Öl,österreich,Ostrau,Strasse,Straße,"
              u"Strassen,Zebra,Ёж,Ежов,Ель");
}

TEST(LettersTest, ListsTheSpellingsThatAreTheSame) {
    EXPECT_EQ(spellingsOf(u"Muller 東京"), Spellings::One);
    EXPECT_EQ(spellingsOf(u"Müller"), Spellings::Few);
    EXPECT_EQ(spellingsOf(u"Константинов"), Spellings::Many);
    QStringList all = spellings(u"Łß"_s);
    all.sort();
    EXPECT_EQ(all, (QStringList{u"Łß"_s, u"Łẞ"_s, u"łß"_s, u"łẞ"_s}));
}
