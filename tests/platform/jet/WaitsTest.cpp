#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <functional>

using namespace testsupport;

namespace {

/// What steps cost on a server, in waits for it; and that they end in the same rows on a file.
class WaitsTest : public DatabaseFixture {
  protected:
    void prepare() override {
        execute(u"CREATE TABLE Part (PartID COUNTER PRIMARY KEY, Name TEXT(20),"
                u" Stock LONG, Price CURRENCY, Made DATETIME, Active YESNO, Note MEMO)");
        execute(u"CREATE UNIQUE INDEX PartName ON Part (Name)");
        execute(u"INSERT INTO Part (Name, Stock) VALUES ('Bolt', 5)");
        execute(u"INSERT INTO Part (Name, Stock) VALUES ('Nut', 7)");
        db().schema(); // reads it again, since it has changed
    }

    /// Runs a step and says how often it waited; 0 on a file.
    template <class Work>
    quint64 waitsOf(Work work) {
        const quint64 before = db().waits();
        work();
        return db().waits() - before;
    }
    /// What is expected of a server, and 0 of a file.
    quint64 server(quint64 waits) { return db().isServer() ? waits : 0; }
};

TEST_P(WaitsTest, WhatIsExpectedComesWithWhatIsReadNext) {
    const QString nuts = u"SELECT Stock FROM Part WHERE Name = 'Nut'"_s;
    const QString all = u"SELECT * FROM Part ORDER BY PartID"_s;
    const QString none = u"SELECT * FROM Part WHERE Stock > 99"_s;
    const auto read = [&] {
        jet::Recordset parts = db().openRecordset(u"SELECT * FROM Part"_s);
        EXPECT_EQ(parts.text(u"Name"), u"Bolt");
        EXPECT_EQ(db().lookup(nuts).toLong(), 7);
        EXPECT_EQ(db().openRecordset(all, jet::RecordsetType::Snapshot).recordCount(), 2);
        EXPECT_FALSE(db().hasRows(none));
    };
    EXPECT_EQ(waitsOf([&] {
                  db().expect({nuts, all, none});
                  read();
              }),
              server(1));
    EXPECT_EQ(waitsOf([&] { // nothing was written, so its end isn't waited for
                  jet::Transaction transaction(db());
                  db().expect({nuts, all, none});
                  read();
                  transaction.commit();
              }),
              server(1));
    // Each serves once, and not beyond a write of our own.
    EXPECT_EQ(waitsOf(read), server(4));
    db().expect({nuts});
    EXPECT_TRUE(db().hasRows(all));
    db().execute(u"UPDATE Part SET Stock = 8 WHERE Name = 'Nut'"_s);
    EXPECT_EQ(db().lookup(nuts).toLong(), 8);
    // What can't be read fails where it is opened, and nothing else with it.
    db().expect({u"SELECT * FROM Nowhere"_s, u"SELECT 1 / (Stock - Stock) FROM Part"_s, nuts});
    EXPECT_EQ(db().openRecordset(all, jet::RecordsetType::Snapshot).recordCount(), 2);
    EXPECT_EQ(db().lookup(nuts).toLong(), 8);
    EXPECT_THROW(db().openRecordset(u"SELECT * FROM Nowhere"_s), jet::Error);
}

TEST_P(WaitsTest, AChangeOfManyStatementsIsOneTrip) {
    EXPECT_EQ(waitsOf([&] {
                  jet::Transaction transaction(db());
                  db().execute(u"DELETE FROM Part WHERE Name = 'Nut'"_s);
                  for (int i = 0; i < 30; ++i)
                      db().execute(u"INSERT INTO Part (Name) VALUES ('P%1')"_s.arg(i));
                  {
                      jet::Transaction inner(db());
                      db().execute(u"UPDATE Part SET Stock = 1"_s);
                  }
                  transaction.commit();
              }),
              server(1));
    EXPECT_EQ(rows(u"SELECT Count(*), Sum(Stock) FROM Part"_s), QStringList(u"31|5"_s));
    EXPECT_EQ(waitsOf([&] {
                  jet::Transaction transaction(db());
                  jet::Recordset row = db().openRecordset(u"SELECT * FROM Part WHERE PartID = 1"_s);
                  row.edit();
                  row.set(u"Stock", row[u"Stock"].toLong() + 1);
                  row.update();
                  db().execute(u"UPDATE Part SET Note = 'x' WHERE PartID > 5"_s);
                  transaction.commit();
              }),
              server(2));
    EXPECT_EQ(waitsOf([&] { jet::Transaction nothing(db()); }), 0U);
}

TEST_P(WaitsTest, WhoAsksForANumberGetsIt) {
    jet::Transaction transaction(db());
    const auto changed = db().execute(u"UPDATE Part SET Active = True"_s);
    db().execute(u"INSERT INTO Part (Name) VALUES ('Pin')"_s);
    EXPECT_EQ(db().lastCounter(), 3);
    EXPECT_EQ(changed, 2);
    EXPECT_EQ(db().execute(u"DELETE FROM Part WHERE Name = 'none'"_s), 0);
    transaction.commit();
    EXPECT_EQ(rows(u"SELECT Name, Active FROM Part ORDER BY PartID"_s),
              (QStringList{u"Bolt|True"_s, u"Nut|True"_s, u"Pin|False"_s}));
}

TEST_P(WaitsTest, AFailureTellsItsStepAndLeavesNothing) {
    QString told;
    try {
        jet::Transaction transaction(db());
        jet::step(db(), u"First"_s,
                  [&] { db().execute(u"UPDATE Part SET Stock = 99 WHERE PartID = 1"_s); });
        jet::step(db(), u"Second"_s,
                  [&] { db().execute(u"INSERT INTO Part (Name) VALUES ('Nut')"_s); });
        jet::step(db(), u"Third"_s, [&] {
            jet::Transaction inner(db());
            db().execute(u"UPDATE Part SET Stock = 98 WHERE PartID = 2"_s);
            inner.commit();
        });
        jet::step(db(), u"Commit"_s, [&] { transaction.commit(); });
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.number(), jet::errors::duplicate);
        told = error.step().value_or(u"none"_s);
    }
    EXPECT_EQ(told, u"Second");
    EXPECT_EQ(rows(u"SELECT Stock FROM Part ORDER BY PartID"_s), (QStringList{u"5"_s, u"7"_s}));
    // A statement that was waited for leaves the transaction as it was before it.
    jet::Transaction transaction(db());
    db().execute(u"UPDATE Part SET Stock = 6 WHERE PartID = 1"_s);
    EXPECT_EQ(
        errorOf([&] { EXPECT_EQ(db().execute(u"INSERT INTO Part (Name) VALUES ('Nut')"_s), 1); }),
        jet::errors::duplicate);
    EXPECT_EQ(errorOf([&] { db().lookup(u"SELECT (SELECT Stock FROM Part) FROM Part"_s); }),
              db().isServer() ? jet::errors::severalRows : 0);
    transaction.commit();
    EXPECT_EQ(rows(u"SELECT Stock FROM Part ORDER BY PartID"_s), (QStringList{u"6"_s, u"7"_s}));
}

TEST_P(WaitsTest, AnEditOfADeletedRowFailsTheSaveWhenItIsSent) {
    jet::Recordset row = db().openRecordset(u"SELECT * FROM Part WHERE PartID = 2"_s);
    EXPECT_EQ(errorOf([&] {
                  jet::Transaction transaction(db());
                  row.edit();
                  row.set(u"Stock", 1);
                  db().execute(u"DELETE FROM Part WHERE PartID = 2"_s);
                  row.update();
                  db().execute(u"INSERT INTO Part (Name) VALUES ('with it')"_s);
                  transaction.commit();
              }),
              jet::errors::rowDeleted);
    EXPECT_FALSE(db().hasRows(u"SELECT * FROM Part WHERE Name = 'with it'"_s));
}

TEST_P(WaitsTest, SelectsGoTogether) {
    std::vector<jet::Recordset> sets;
    EXPECT_EQ(waitsOf([&] {
                  sets = db().together({u"SELECT Name FROM Part ORDER BY Name"_s,
                                        {u"SELECT * FROM Part"_s, jet::RecordsetType::Dynaset},
                                        u"SELECT Name FROM Part WHERE Stock > 100"_s});
                  EXPECT_EQ(sets[0].text(u"Name"), u"Bolt");
              }),
              server(1));
    EXPECT_EQ(sets[1].recordCount(), 2);
    EXPECT_TRUE(sets[2].isEmpty());
    EXPECT_EQ(errorOf([&] {
                  db().together({u"SELECT Name FROM Part"_s, u"SELECT x FROM"_s});
              }),
              jet::errors::syntax);

    jet::Recordset names, counts;
    EXPECT_EQ(waitsOf([&] {
                  names = db().openLater(u"SELECT Name FROM Part ORDER BY Name"_s);
                  counts = db().openLater(u"SELECT (SELECT Stock FROM Part) FROM Part"_s);
                  EXPECT_TRUE(db().hasRows(u"SELECT * FROM Part WHERE Stock = 7 ORDER BY Name"_s));
                  EXPECT_EQ(names.text(u"Name"), u"Bolt");
              }),
              server(1));
    if (db().isServer()) {
        EXPECT_EQ(errorOf([&] { counts.isEmpty(); }), jet::errors::severalRows);
    }
    names = db().openLater(u"SELECT Name FROM Part ORDER BY Name DESC"_s);
    jet::Transaction transaction(db());
    db().execute(u"DELETE FROM Part"_s);
    EXPECT_EQ(names.recordCount(), 2) << "asked for before the rows went";
}

TEST_P(WaitsTest, ManyRowsAreOneStatement) {
    const QDateTime noon(QDate(2025, 3, 1), QTime(12, 0), Qt::UTC);
    std::vector<std::vector<jet::Value>> given;
    for (int i = 0; i < 60; ++i)
        given.push_back(
            {u"P%1"_s.arg(i), i, values::Currency::fromDouble(i + 0.25), noon, i % 2 == 0, {}});
    given[3][5] = u"a \"quote\", a \\ and {braces},\n and 'ö'"_s;
    EXPECT_EQ(waitsOf([&] {
                  EXPECT_EQ(db().insertRows(u"part"_s,
                                            {u"Name"_s, u"Stock"_s, u"Price"_s, u"made"_s,
                                             u"Active"_s, u"Note"_s},
                                            given),
                            60);
              }),
              server(1));
    EXPECT_EQ(db().lastCounter(), 62);
    EXPECT_EQ(
        rows(u"SELECT PartID, Stock, Price, Made, Active, Note FROM Part WHERE Name = 'P3'"_s),
        QStringList(u"6|3|3.25|3/1/2025 12:00:00 PM|False|"_s + given[3][5].toText()));
    EXPECT_EQ(db().updateRows(u"Part"_s, {u"PartID"_s, u"Stock"_s, u"Note"_s}, 1,
                              {{1, 50, u"n"_s}, {2, 70, {}}, {4000, 1, u"none"_s}}),
              2);
    EXPECT_EQ(rows(u"SELECT Stock, Note FROM Part WHERE PartID < 3 ORDER BY PartID"_s),
              (QStringList{u"50|n"_s, u"70|"_s}));
    // All or none, and the same errors as row by row.
    EXPECT_EQ(errorOf([&] {
                  EXPECT_EQ(db().insertRows(u"Part"_s, {u"Name"_s}, {{u"new"_s}, {u"Nut"_s}}), 2);
              }),
              jet::errors::duplicate);
    EXPECT_FALSE(db().hasRows(u"SELECT * FROM Part WHERE Name = 'new'"_s));
    EXPECT_EQ(errorOf([&] { db().insertRows(u"Part"_s, {u"Name"_s}, {{QString(21, u'x')}}); }),
              jet::errors::fieldTooSmall);
    EXPECT_EQ(errorOf([&] { db().insertRows(u"Part"_s, {u"Nome"_s}, {{u"x"_s}}); }),
              jet::errors::unknownField);
    // Numbers that are given are not given out again.
    db().insertRows(u"Part"_s, {u"PartID"_s, u"Name"_s}, {{500, u"given"_s}});
    db().execute(u"INSERT INTO Part (Name) VALUES ('next')"_s);
    EXPECT_EQ(db().lastCounter(), 501);
    EXPECT_EQ(db().insertRows(u"Part"_s, {u"Name"_s}, {}), 0);
}

/// A step of a person costs the same few waits however many rows there are.
TEST_P(WaitsTest, StepsOverALargeSetDoNotGrowWithIt) {
    for (const int rows : {3000, 30000}) {
        std::vector<std::vector<jet::Value>> given;
        for (int i = 0; i < rows; ++i)
            given.push_back({u"L%1.%2"_s.arg(rows).arg(i), i});
        db().insertRows(u"Part"_s, {u"Name"_s, u"Stock"_s}, given);
        jet::Recordset names, set;
        EXPECT_EQ(waitsOf([&] {
                      names = db().openLater(u"SELECT TOP 9 Name FROM Part"_s);
                      set = db().openLater(u"SELECT * FROM Part"_s, jet::RecordsetType::Dynaset);
                      set.moveLast();
                      EXPECT_FALSE(set.text(u"Name").isEmpty() || names.isEmpty());
                  }),
                  server(1));
        EXPECT_EQ(waitsOf([&] {
                      for (int i = 0; i < 20; ++i)
                          set.movePrevious();
                      EXPECT_FALSE(set.isFirst() || set.isLast() || set.text(u"Name").isEmpty());
                  }),
                  0U);
        for (const auto& step : std::initializer_list<std::function<void()>>{
                 [&] { set.findFirst(u"PartID = 900"_s); }, [&] { set.moveFirst(); },
                 [&] { set.moveLast(); }, [&] { set.requeryAt(900); }, [&] { set.refreshRow(); },
                 [&] { EXPECT_TRUE(db().hasRows(u"SELECT * FROM Part ORDER BY Name"_s)); }}) {
            db().execute(u"UPDATE Part SET Stock = 0 WHERE PartID = 1"_s); // so that rows are stale
            EXPECT_LE(waitsOf([&] {
                          step();
                          EXPECT_FALSE(set.text(u"Name").isEmpty());
                      }),
                      server(1));
        }
    }
}

MIRSA_BOTH_ENGINES(WaitsTest);

} // namespace
