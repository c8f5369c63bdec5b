#include "platform/jet/StatementEngines.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

/// What statements give back, by hand-made rows, the same on both engines.

namespace jet {
namespace {

class StatementRows : public testing::Test {
  protected:
    StatementRows() {
        m_engines.define(
            u"CREATE TABLE Part (ID COUNTER PRIMARY KEY, Name TEXT(20), Price CURRENCY, Qty LONG, "
            "Made DATETIME, Hours DOUBLE, Active YESNO, Notes MEMO, Small INTEGER DEFAULT 7)"_s);
        m_engines.define(u"CREATE TABLE Move (PartID LONG, Qty LONG)"_s);
        m_engines.define(u"CREATE INDEX byName ON Part (Name)"_s);
        for (const char16_t* row :
             {u"INSERT INTO Part (Name, Price, Qty, Made, Hours, Active, Notes) VALUES "
              u"('Bolt', 1.25, 3, #11/21/2025 2:30 PM#, 1.5, True, 'a')",
              u"INSERT INTO Part (Name, Price, Qty, Made, Hours, Active) VALUES "
              u"('bOLT', 0.1, 10, '3/5/2025', 40, False)",
              u"INSERT INTO Part (Name, Price, Active) VALUES (Null, 100, -1)",
              u"INSERT INTO Part (Name, Qty, Made) VALUES ('Rack #4', -3, #07:15 AM#)",
              u"INSERT INTO Move VALUES (1, 5)", u"INSERT INTO Move VALUES (1, 6)",
              u"INSERT INTO Move VALUES (2, Null)"})
            m_engines.execute(QString::fromUtf16(row));
    }

    void gives(const char16_t* statement, const char* rows) {
        for (Engine* engine : m_engines.all())
            EXPECT_EQ(shown(engine->run(QString::fromUtf16(statement), m_engines.schema)), rows)
                << QString::fromUtf16(statement).toStdString()
                << (engine == m_engines.sqlite.get() ? " on SQLite" : " on PostgreSQL");
    }
    void after(const char16_t* statement, const char16_t* select, const char* rows) {
        m_engines.execute(QString::fromUtf16(statement));
        gives(select, rows);
    }
    int errorOf(const char16_t* statement) {
        try {
            m_engines.sqlite->run(QString::fromUtf16(statement), m_engines.schema);
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    }

    Engines m_engines;
};

TEST_F(StatementRows, TextIsComparedWithoutCase) {
    gives(u"SELECT ID FROM Part WHERE Name = 'BOLT' ORDER BY ID", "1\n2\n");
    gives(u"SELECT DISTINCT Name FROM Part WHERE Name <> 'x' ORDER BY Name", "Bolt\nRack #4\n");
    gives(u"SELECT ID FROM Part WHERE Left(Name, 2) = 'BO' OR Name & '!' = 'rack #4!'",
          "1\n2\n4\n");
    gives(u"SELECT ID FROM Part WHERE Name + 'x' IN ('BOLTX') AND 'B' BETWEEN 'a' AND Name",
          "1\n2\n");
    gives(u"SELECT Count(*) AS N FROM Part GROUP BY Name & '' ORDER BY 1", "1\n1\n2\n");
    gives(u"SELECT (Name + '-' + Notes) AS K, ID FROM Part ORDER BY K DESC, ID",
          "Bolt-a|1\nNull|2\nNull|3\nNull|4\n");
    gives(u"SELECT Count(*) FROM (SELECT Name FROM Part WHERE ID < 3 UNION SELECT 'BOLT' FROM "
          u"Part) AS U",
          "1\n");
}

TEST_F(StatementRows, PatternsOfLike) {
    gives(u"SELECT ID FROM Part WHERE Name LIKE 'b?L*'", "1\n2\n");
    gives(u"SELECT ID FROM Part WHERE Name LIKE '*'", "1\n2\n4\n");
    gives(u"SELECT ID FROM Part WHERE Name LIKE '%'", "");
    gives(u"SELECT ID FROM Part WHERE Name LIKE 'Rack #4'", "");
    gives(u"SELECT ID FROM Part WHERE Name LIKE 'rack [#]#'", "4\n");
    gives(u"SELECT ID FROM Part WHERE Name LIKE '[!a-c]*'", "4\n");
    gives(u"SELECT ID FROM Part WHERE Name LIKE 'B' & '*' AND Name NOT LIKE '*[x-z]'", "1\n2\n");
    gives(u"SELECT ID FROM Part WHERE Qty LIKE '1*'", "2\n");
}

TEST_F(StatementRows, DatesInEveryForm) {
    gives(u"SELECT ID FROM Part WHERE datevalue(Made) = #11/21/2025#", "1\n");
    gives(u"SELECT ID FROM Part WHERE datevalue(Made) between #3/5/2025# and #11/21/2025# ORDER "
          u"BY ID",
          "1\n2\n");
    gives(u"SELECT ID FROM Part WHERE datevalue(Made) < #11/21/2025 1:00:00 AM# AND datevalue(Made)"
          u" > #3/4/2025 11:00:00 PM# AND NOT datevalue(Made) <> Made OR datevalue(Made) not "
          u"between #1/1/1900# and #11/21/2025# ORDER BY ID",
          "2\n4\n");
    gives(u"SELECT ID FROM Part WHERE Made BETWEEN #2025-11-21# AND '11/21/2025 11:59:59 PM'",
          "1\n");
    gives(u"SELECT Made FROM Part WHERE ID IN (2, 4) ORDER BY ID",
          "2025-03-05 00:00:00\n1899-12-30 07:15:00\n");
    gives(u"SELECT Made + 1.5, Made - #11/20/2025#, Year(Made), Month(Made), Day(Made), "
          u"Weekday(Made) "
          u"FROM Part WHERE ID = 1",
          "2025-11-23 02:30:00|1.60416666667|2025|11|21|6\n");
    gives(u"SELECT DateAdd('m', 1, Made), DateDiff('d', #11/20/2025#, Made), DateSerial(2025, 2, "
          u"31), "
          u"DatePart('h', Made) "
          u"FROM Part WHERE ID = 1",
          "2025-12-21 14:30:00|1|2025-03-03 00:00:00|14\n");
    gives(u"SELECT ID FROM Part WHERE Made < Date() AND Made > Date() - 120 AND Made < Now()",
          "1\n");
    gives(u"SELECT 'on ' & Made FROM Part WHERE ID = 2", "on 3/5/2025\n");
    EXPECT_EQ(errorOf(u"UPDATE Part SET Made = 'soon'"), errors::typeMismatch);
}

TEST_F(StatementRows, YesNoIsAnyNumberButZero) {
    for (Engine* engine : m_engines.all())
        engine->plain(m_engines.postgres.get() == engine
                          ? "UPDATE part SET active = -1 WHERE id = 1"
                          : "UPDATE Part SET Active = -1 WHERE ID = 1");
    gives(u"SELECT ID FROM Part WHERE Active = True", "1\n3\n");
    gives(u"SELECT ID FROM Part WHERE Active", "1\n3\n");
    gives(u"SELECT ID FROM Part WHERE Active <> 0", "1\n3\n");
    gives(u"SELECT ID FROM Part WHERE Active = 1", "1\n3\n");
    gives(u"SELECT ID FROM Part WHERE Active = False AND NOT Active", "2\n4\n");
    gives(u"SELECT Sum(Active), IIf(Sum(Active) < 0, 'some', 'none') FROM Part", "-2|some\n");
    after(u"UPDATE Part SET Active = (Qty > 5)", u"SELECT ID FROM Part WHERE Active", "2\n");
}

TEST_F(StatementRows, NumbersAreRoundedAsTheirColumnsAre) {
    after(u"UPDATE Part SET Qty = 2.5, Price = 1.00005 WHERE ID = 1",
          u"SELECT Qty, Price FROM Part WHERE ID = 1", "2|1\n");
    after(u"UPDATE Part SET Qty = Qty + 1.5, Price = Price * 1.5 WHERE ID = 1",
          u"SELECT Qty, Price FROM Part WHERE ID = 1", "4|1.5\n");
    after(u"UPDATE Part SET Qty = Hours * Price WHERE ID = 2", u"SELECT Qty FROM Part WHERE ID = 2",
          "4\n");
    after(u"UPDATE Part SET Price = Price / 3, Qty = '12' WHERE ID = 3",
          u"SELECT Price, Qty FROM Part WHERE ID = 3", "33.3333|12\n");
    gives(u"SELECT Qty / 8, Qty \\ 8, Qty Mod 5, 2 ^ 3, -Qty, CInt(2.5), CInt(3.5), Int(-1.5), "
          u"Fix(-1.5) "
          u"FROM Part WHERE ID = 3",
          "1.5|1|2|8|-12|2|4|-2|-1\n");
    gives(u"SELECT ID FROM Part WHERE Qty = '12' OR Qty = 3.5 OR Name = 12", "3\n");
    gives(u"SELECT Price & '/' & Hours FROM Part WHERE ID = 2", "0.1/40\n");
}

TEST_F(StatementRows, FunctionsOfText) {
    gives(u"SELECT Left(Name, 2), Right(Name, 2), Mid(Name, 2), Mid(Name, 2, 2), Len(Name), "
          u"UCase(Name), "
          u"LCase(Name), Trim(' x '), InStr(Name, 'L'), Val('12abc'), Nz(Notes, '-'), "
          u"Replace(Name, 'o', '0') FROM Part WHERE ID = 2",
          "bO|LT|OLT|OL|4|BOLT|bolt|x|3|12|-|bOLT\n");
    gives(u"SELECT IIf(IsNull(Name), 'none', Name), IIf(Qty > 5, Qty, 'few') FROM Part ORDER BY ID",
          "Bolt|few\nbOLT|10\nnone|few\nRack #4|few\n");
}

TEST_F(StatementRows, NullsComeFirstAndMeetNoTest) {
    gives(u"SELECT ID FROM Part ORDER BY Qty, ID", "3\n4\n1\n2\n");
    gives(u"SELECT ID FROM Part ORDER BY Qty DESC, ID", "2\n1\n4\n3\n");
    gives(u"SELECT ID FROM Part WHERE NOT Name = 'bolt'", "4\n");
    gives(u"SELECT Sum(Qty), Max(Qty), Avg(Hours), Count(Name) FROM Part WHERE ID > 9",
          "Null|Null|Null|0\n");
}

TEST_F(StatementRows, JoinsAndSubqueries) {
    gives(u"SELECT Part.ID, Move.Qty FROM Part LEFT JOIN Move ON Part.ID = Move.PartID "
          u"ORDER BY Part.ID, Move.Qty",
          "1|5\n1|6\n2|Null\n3|Null\n4|Null\n");
    // Qty is a column of both: the first table's counts.
    gives(u"SELECT Qty FROM Part INNER JOIN Move ON Part.ID = Move.PartID WHERE Qty = 3", "3\n3\n");
    gives(
        u"SELECT ID, (SELECT Sum(Qty) FROM Move WHERE PartID = P.ID) AS N FROM Part P WHERE EXISTS "
        u"(SELECT * FROM Move WHERE PartID = P.ID)",
        "1|11\n2|Null\n");
    gives(u"SELECT Q.N FROM (SELECT PartID, Sum(Qty) AS N FROM Move GROUP BY PartID) AS Q WHERE "
          u"Q.N > 5",
          "11\n");
    gives(u"SELECT TOP 1 ID FROM Part UNION ALL SELECT TOP 1 PartID FROM Move WHERE PartID = 2",
          "1\n2\n");
}

TEST_F(StatementRows, WritesOverJoinsAndByName) {
    after(
        u"UPDATE Part INNER JOIN Move ON Part.ID = Move.PartID SET Part.Qty = Move.Qty + Part.Qty, "
        u"Notes = 'joined' WHERE Move.Qty = 6",
        u"SELECT ID, Qty, Notes FROM Part WHERE Notes = 'joined'", "1|9|joined\n");
    after(u"DELETE Move.* FROM Move INNER JOIN Part ON Part.ID = Move.PartID WHERE Part.ID = 1",
          u"SELECT PartID FROM Move", "2\n");
    after(u"INSERT INTO Part SELECT 'Nut' AS Name, True AS Active, ID AS Qty, '1/2/2025' AS Made "
          u"FROM Part "
          u"WHERE ID = 4",
          u"SELECT ID, Name, Active, Qty, Made, Small FROM Part WHERE Name = 'nut'",
          "5|Nut|1|4|2025-01-02 00:00:00|7\n");
    // Both sides of an assignment see the old row.
    after(u"UPDATE Part SET Qty = Qty + 1, Hours = Qty WHERE ID = 2",
          u"SELECT Qty, Hours FROM Part WHERE ID = 2", "11|10\n");
    // A number that was given pushes the counter on.
    after(u"INSERT INTO Part (ID, Name) VALUES (40, 'given')", u"SELECT Max(ID) AS M FROM Part",
          "40\n");
    after(u"INSERT INTO Part (Name) VALUES ('next')", u"SELECT ID FROM Part WHERE Name = 'next'",
          "41\n");
}

TEST_F(StatementRows, RowsWithoutAKeyStayApart) {
    m_engines.execute(u"INSERT INTO Move VALUES (1, 5)"_s);
    const Normalized select = normalize(u"SELECT * FROM Move WHERE Qty = 5");
    for (Engine* engine : m_engines.all()) {
        const Translation translation = translate(select, m_engines.schema, engine->dialect());
        ASSERT_TRUE(translation.dynaset && translation.dynaset->singleTable);
        EXPECT_EQ(translation.columns.size(), 2U);
        const Rows keys =
            engine->run(translation.dynaset->keysSql, translation.parameters, select, {});
        ASSERT_EQ(keys.size(), 2U);
        EXPECT_NE(keys[0][0], keys[1][0]);
    }
}

TEST_F(StatementRows, FindAmongTheRowsOfASelect) {
    const auto finds = [&](const char16_t* select, const char16_t* criterion, const char* keys) {
        const Normalized first = normalize(select), second = normalize(criterion);
        Normalized both = first;
        both.literals.insert(both.literals.end(), second.literals.begin(), second.literals.end());
        for (Engine* engine : m_engines.all()) {
            const Translation find =
                translateFind(first, second, m_engines.schema, engine->dialect());
            EXPECT_EQ(shown(engine->run(find.sql, find.parameters, both, find.columns)), keys)
                << QString::fromUtf16(criterion).toStdString();
        }
    };
    finds(u"SELECT * FROM Part ORDER BY ID DESC", u"name = 'bolt'", "2\n1\n");
    finds(u"SELECT * FROM Part WHERE Qty = 3 OR Qty = 10", u"Name LIKE 'b*' and Active = true",
          "1\n");
    finds(u"SELECT TOP 2 * FROM Part ORDER BY ID", u"ID > 1", "2\n");
    // Names are those of the recordset: aliases too, and a literal of the list is no hindrance.
    finds(u"SELECT ID, Name + '!' AS Shout, 'x' AS Fixed FROM Part",
          u"Shout = 'BOLT!' and Fixed = 'X'", "1\n2\n");
    finds(u"SELECT Part.ID, Move.Qty AS Moved FROM Part INNER JOIN Move ON Part.ID = Move.PartID "
          u"ORDER BY Move.Qty",
          u"Moved > 5", "1\n");
    EXPECT_THROW(translateFind(normalize(u"SELECT DISTINCT Name FROM Part"),
                               normalize(u"Name = 'x'"), m_engines.schema, Dialect::sqlite()),
                 Error);
}

TEST(Criterion, IsMetByRowsInMemory) {
    const auto field = [](const QString& name) {
        if (name == u"name")
            return Value(u"Rack #4"_s);
        if (name == u"qty")
            return Value(12);
        if (name == u"active")
            return Value(true);
        if (name == u"made")
            return Value(QDate(2025, 11, 21));
        if (name == u"empty")
            return Value();
        throw Error(errors::itemNotFound, name);
    };
    const auto meets = [&](const char16_t* text) {
        return Criteria(normalize(text)).matches(field);
    };
    EXPECT_TRUE(meets(u"name = 'RACK #4' and qty = 12 and active = true"));
    EXPECT_TRUE(meets(u"made = #11/21/2025# and made > '11/20/2025' and qty between 5 and 12"));
    EXPECT_TRUE(meets(u"name like 'rack [#]#' and not name like '*[5-9]' and qty in (1, 12)"));
    EXPECT_TRUE(meets(u"qty = 5 or empty is null"));
    EXPECT_FALSE(meets(u"empty = 'x' or empty <> 'x' or not empty = 'x'"));
    EXPECT_FALSE(meets(u"qty = 12-7 or active = False"));
    EXPECT_THROW(meets(u"nix = 5"), Error);
    EXPECT_THROW(meets(u"qty = "), Error);
}

} // namespace
} // namespace jet
