#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "support/DatabaseFixture.h"

#include <algorithm>
#include <set>

using namespace testsupport;

namespace {

/// Names as the letters of several languages make them awkward.
const QStringList names{u"Zebra"_s,
                        u"Österreich"_s,
                        u"österreich"_s,
                        u"Ostrau"_s,
                        u"Otto"_s,
                        u"Müller"_s,
                        u"Muller"_s,
                        u"MÜLLER"_s,
                        u"Straße"_s,
                        u"STRAßE"_s,
                        u"Strasse"_s,
                        u"STRASSE"_s,
                        u"ılıca"_s,
                        u"Ilıca"_s,
                        u"ilica"_s,
                        u"Łódź"_s,
                        u"ŁÓDŹ"_s,
                        u"Lodz"_s,
                        u"Ωmega"_s,
                        u"ωMEGA"_s,
                        u"ΟΔΟΣ"_s,
                        u"οδοσ"_s,
                        u"οδος"_s,
                        u"Иванов"_s,
                        u"ИВАНОВ"_s,
                        u"Ёлкин"_s,
                        u"Ежов"_s,
                        u"Еремин"_s,
                        u"Жуков"_s,
                        u"\u00c9tage"_s,
                        u"\u00e9tage"_s,
                        u"e\u0301tage"_s,
                        u"E\u0301TAGE"_s,
                        u"Etage"_s,
                        u"Etagf"_s,
                        u"10 mm Ø"_s,
                        u"10 mm ø"_s,
                        u"9 mm"_s,
                        u"A-1"_s,
                        u"A 1"_s,
                        u"A_1"_s,
                        u"a.1"_s,
                        u"A&Ä"_s,
                        u"a&ä"_s,
                        u" blank"_s,
                        u"O'Ähre"_s,
                        u"東京"_s,
                        u"😀"_s,
                        u"Ærø Værft"_s,
                        u"ÆRØ VÆRFT"_s,
                        u"Δημητριοσ Παπαδοπουλοσ"_s,
                        u"ΔΗΜΗΤΡΙΟΣ ΠΑΠΑΔΟΠΟΥΛΟΣ"_s};

class LettersTest : public DatabaseFixture {
  protected:
    void prepare() override {
        execute(u"CREATE TABLE Named (ID LONG PRIMARY KEY, Name TEXT(60), Half LONG)");
        execute(u"CREATE INDEX Named_Name ON Named (Name)");
        std::vector<std::vector<jet::Value>> rows;
        for (int i = 0; i < names.size(); ++i)
            rows.push_back({i, names[i], i % 2});
        db().insertRows(u"Named"_s, {u"ID"_s, u"Name"_s, u"Half"_s}, rows);
    }
    using Numbers = std::set<qint64>;
    Numbers found(const QString& condition) {
        Numbers numbers;
        jet::Recordset rows = db().openRecordset(u"SELECT ID FROM Named WHERE "_s + condition,
                                                 jet::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext())
            numbers.insert(rows[u"ID"].toLong());
        return numbers;
    }
    template <class Test>
    static Numbers expected(Test test) {
        Numbers numbers;
        for (int i = 0; i < names.size(); ++i)
            if (test(names[i]))
                numbers.insert(i);
        return numbers;
    }
    QStringList column(const QString& select,
                       jet::RecordsetType type = jet::RecordsetType::Snapshot) {
        QStringList texts;
        jet::Recordset rows = db().openRecordset(select, type);
        for (; !rows.eof(); rows.moveNext())
            texts << rows.field(0).toText();
        return texts;
    }
};
MIRSA_BOTH_ENGINES(LettersTest);

TEST_P(LettersTest, FindsANameInAnyCaseAndNoOther) {
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QString literal = u'\'' + values::quoted(name) + u'\'';
        const auto same = [&](const QString& one) { return values::sameText(one, name); };
        const auto other = [&](const QString& one) { return !same(one); };
        const auto listed = [&](const QString& one) { return same(one) || one == u"Zebra"; };
        EXPECT_EQ(found(u"Name = "_s + literal), expected(same));
        EXPECT_EQ(found(literal + u" = Name & ''"_s), expected(same));
        EXPECT_EQ(found(u"Name <> "_s + literal), expected(other));
        EXPECT_EQ(found(u"Name IN ("_s + literal + u", 'zebra')"_s), expected(listed));
        EXPECT_EQ(found(u"Name NOT IN ("_s + literal + u')'), expected(other));
        EXPECT_EQ(found(u"Name LIKE "_s + literal), expected(same));
        EXPECT_EQ(found(u"NOT (Name LIKE "_s + literal + u')'), expected(other));
        jet::Recordset rows = db().openRecordset(u"SELECT * FROM Named ORDER BY Half, ID"_s);
        rows.findFirst(u"Name = "_s + literal);
        EXPECT_TRUE(!rows.noMatch() && values::sameText(rows.text(u"Name"_s), name));
    }
    EXPECT_EQ(names[0], u"Zebra"_s); // the rows above mean something
    EXPECT_EQ(found(u"Name = 'müller'"_s), (Numbers{5, 7}));
    EXPECT_EQ(found(u"Name = 'MULLER'"_s), (Numbers{6}));
    EXPECT_EQ(found(u"Name = 'ΔΗΜΗΤΡΙΟΣ παπαδοπουλοσ'"_s), (Numbers{50, 51}));
}

TEST_P(LettersTest, SearchesForPartsInAnyCase) {
    for (const QString& part :
         {u"ÖST"_s, u"ller"_s, u"ß"_s, u"Ó"_s, u"ван"_s, u"ÉT"_s, u"ä"_s, u"æRØ"_s}) {
        SCOPED_TRACE(part.toStdString());
        EXPECT_EQ(found(u"Name LIKE '*"_s + part + u"*'"_s),
                  expected([&](const QString& one) { return values::containsText(one, part); }));
        EXPECT_EQ(found(u"Name LIKE '*' & '"_s + part + u"' & '*'"_s),
                  expected([&](const QString& one) { return values::containsText(one, part); }));
        EXPECT_EQ(found(u"Name LIKE '"_s + part + u"*'"_s),
                  expected([&](const QString& one) { return values::startsWithText(one, part); }));
        EXPECT_EQ(found(u"InStr(Name, '"_s + part + u"') > 0"_s),
                  expected([&](const QString& one) { return values::containsText(one, part); }));
    }
    EXPECT_EQ(found(u"Name LIKE 'M?LLER'"_s), (Numbers{5, 6, 7}));
    EXPECT_EQ(found(u"Name LIKE 'm[ü]ller'"_s), (Numbers{5, 7}));
    EXPECT_EQ(found(u"Name LIKE '[Ä-Ö]sterreich'"_s), (Numbers{1, 2}));
    EXPECT_EQ(found(u"LCase(Name) & UCase(Name) = 'łódźŁÓDŹ'"_s), (Numbers{15, 16}));
}

TEST_P(LettersTest, SortsNamesAsAPersonLooksThemUp) {
    QStringList sorted = names;
    std::stable_sort(sorted.begin(), sorted.end(), values::textLess);
    const auto same = [](const QStringList& a, const QStringList& b) {
        return std::equal(
            a.begin(), a.end(), b.begin(), b.end(),
            [](const QString& x, const QString& y) { return values::sameText(x, y); });
    };
    QStringList reversed = sorted;
    std::reverse(reversed.begin(), reversed.end());
    for (const auto type : {jet::RecordsetType::Snapshot, jet::RecordsetType::Dynaset}) {
        EXPECT_TRUE(same(column(u"SELECT Name FROM Named ORDER BY Name"_s, type), sorted));
        EXPECT_TRUE(same(column(u"SELECT Name, ID FROM Named ORDER BY 1 DESC"_s, type), reversed));
    }
    EXPECT_TRUE(same(column(u"SELECT TOP 9 Name FROM Named ORDER BY Name"_s), sorted.mid(0, 9)));
    EXPECT_TRUE(
        same(column(u"SELECT TOP 9 Name FROM Named ORDER BY Name DESC"_s), reversed.mid(0, 9)));
    EXPECT_TRUE(
        same(column(u"SELECT A.Name & '' AS N FROM Named A INNER JOIN Named B ON A.ID = B.ID "
                    "ORDER BY A.Name & ''"_s),
             sorted));

    // By a term that isn't shown, behind a number that goes down.
    const QStringList numbers =
        column(u"SELECT ID FROM Named ORDER BY Half DESC, Name"_s, jet::RecordsetType::Dynaset);
    QStringList halves;
    for (const int half : {1, 0})
        for (const QString& name : sorted)
            for (int i = half; i < names.size(); i += 2)
                if (names[i] == name)
                    halves << name;
    QStringList shown;
    for (const QString& number : numbers)
        shown << names[number.toInt()];
    EXPECT_TRUE(same(shown, halves));

    const QStringList some = sorted.filter(QRegularExpression(u"^[OÖöZ]"_s));
    EXPECT_EQ(some.first(), u"O'Ähre"_s);
    EXPECT_EQ(some.mid(1, 3).join(u' ').toLower(), u"österreich österreich ostrau"_s);
    EXPECT_EQ(some.last(), u"Zebra"_s);
}

TEST_P(LettersTest, RangesFollowTheOrderOfTheList) {
    for (const auto& [first, last] : {std::pair(u"M"_s, u"P"_s),
                                      {u"Österreich"_s, u"Zebra"_s},
                                      {u"étage"_s, u"étage"_s},
                                      {u"Е"_s, u"И"_s}}) {
        const QString from = first, to = last;
        const auto key = [](const QString& text) { return values::folded(text).toUtf8(); };
        EXPECT_EQ(found(u"Name BETWEEN '"_s + from + u"' AND '"_s + to + u'\''),
                  expected([&](const QString& one) {
                      return key(one) >= key(from) && key(one) <= key(to);
                  }));
        EXPECT_EQ(found(u"Name & '' < '"_s + to + u"' AND Name >= '"_s + from + u'\''),
                  expected([&](const QString& one) {
                      return key(one) >= key(from) && key(one) < key(to);
                  }));
    }
}

TEST_P(LettersTest, TakesTheCasesOfANameAsOne) {
    std::set<QString> different;
    for (const QString& name : names)
        different.insert(values::lowered(name));
    const auto count = static_cast<qsizetype>(different.size());
    EXPECT_EQ(column(u"SELECT DISTINCT Name FROM Named"_s).size(), count);
    EXPECT_EQ(column(u"SELECT DISTINCT Name FROM Named ORDER BY Name"_s).size(), count);
    EXPECT_EQ(column(u"SELECT Name FROM Named UNION SELECT Name FROM Named"_s).size(), count);
    EXPECT_EQ(column(u"SELECT Name FROM Named UNION ALL SELECT Name FROM Named"_s).size(),
              2 * names.size());
    EXPECT_EQ(column(u"SELECT COUNT(*) AS N FROM Named GROUP BY Name"_s).size(), count);
    EXPECT_EQ(column(u"SELECT COUNT(*) AS N FROM Named GROUP BY Name HAVING Name = 'ŁÓDŹ'"_s),
              QStringList(u"2"_s));
}

} // namespace
