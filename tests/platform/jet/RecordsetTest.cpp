#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

using namespace testsupport;

namespace {

class RecordsetTest : public DatabaseFixture {
  protected:
    void prepare() override {
        execute(u"CREATE TABLE Part (PartNo COUNTER PRIMARY KEY, Name TEXT(12), Price CURRENCY, "
                u"Stock LONG, Shelf INTEGER, Weight DOUBLE, Active YESNO, Made DATETIME, "
                u"Note MEMO, Unit TEXT(5) DEFAULT 'EA')");
        execute(u"CREATE TABLE State (Code TEXT(2) PRIMARY KEY, Name TEXT(20))");
        execute(u"CREATE TABLE Receipt (PartNo LONG, Quantity LONG)");
    }
    void addParts(int count) {
        jet::Transaction transaction(db());
        for (int i = 1; i <= count; ++i)
            db().execute(
                u"INSERT INTO Part (Name, Stock) VALUES ('Part %1', %2)"_s.arg(i).arg(count - i));
        transaction.commit();
    }
    jet::Recordset open(const char16_t* select) {
        return db().openRecordset(QString::fromUtf16(select));
    }
};

TEST_P(RecordsetTest, WalksBothWaysAndStopsAtItsEnds) {
    jet::Recordset empty = open(u"SELECT * FROM Part");
    EXPECT_TRUE(empty.bof() && empty.eof());
    EXPECT_EQ(empty.recordCount(), 0);
    EXPECT_EQ(errorOf([&] { empty[u"Name"]; }), jet::errors::noCurrentRecord);
    EXPECT_EQ(errorOf([&] { empty.moveNext(); }), jet::errors::noCurrentRecord);

    addParts(3);
    jet::Recordset rs = open(u"SELECT * FROM Part ORDER BY Stock");
    EXPECT_EQ(rs.recordCount(), 3);
    QStringList names;
    for (; !rs.eof(); rs.moveNext())
        names << rs.text(u"NAME");
    EXPECT_EQ(names.join(u','), u"Part 3,Part 2,Part 1");
    EXPECT_EQ(errorOf([&] { rs.moveNext(); }), jet::errors::noCurrentRecord);
    EXPECT_EQ(rs.absolutePosition(), -1);
    rs.movePrevious();
    EXPECT_EQ(rs.text(u"Name"), u"Part 1");
    rs.moveFirst();
    rs.movePrevious();
    EXPECT_TRUE(rs.bof() && !rs.eof());
    EXPECT_EQ(errorOf([&] { rs.movePrevious(); }), jet::errors::noCurrentRecord);
    rs.moveNext();
    EXPECT_EQ(rs.text(u"Name"), u"Part 3");
    rs.moveTo(1);
    EXPECT_EQ(rs.text(u"Part.Name"), u"Part 2");
    EXPECT_EQ(errorOf([&] { rs[u"Colour"]; }), jet::errors::itemNotFound);
    EXPECT_EQ(open(u"Part").recordCount(), 3);
}

TEST_P(RecordsetTest, HoldsLongSetsByTheirKeys) {
    addParts(450);
    jet::Recordset rs = open(u"SELECT Name FROM Part ORDER BY Stock DESC");
    EXPECT_EQ(rs.recordCount(), 450);
    rs.moveLast();
    EXPECT_EQ(rs.text(u"Name"), u"Part 450");
    rs.findFirst(u"PartNo = 321"_s);
    EXPECT_FALSE(rs.noMatch());
    EXPECT_EQ(rs.text(u"Name"), u"Part 321");
    rs.findFirst(u"name = 'PART 77' and Stock > 5"_s);
    EXPECT_EQ(rs.text(u"Name"), u"Part 77");
    rs.findFirst(u"Stock > 9000"_s);
    EXPECT_TRUE(rs.noMatch());
    EXPECT_EQ(rs.text(u"Name"), u"Part 77") << "no match must keep the current row";
    int count = 0;
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        count += rs.text(u"Name") == u"Part %1"_s.arg(count + 1) ? 1 : 0;
    EXPECT_EQ(count, 450);
}

TEST_P(RecordsetTest, ALongSetThatIsOnlyAddedToReadsItsKeysWhenAsked) {
    addParts(300);
    const auto add = [](jet::Recordset& rs, const char16_t* name) {
        rs.addNew();
        rs.set(u"Name", QString::fromUtf16(name));
        rs.set(u"Stock", -1);
        rs.update();
        return rs.lastAddedKey();
    };
    jet::Recordset rs = open(u"SELECT * FROM Part ORDER BY Stock");
    EXPECT_EQ(add(rs, u"First").toLong(), 301);
    EXPECT_FALSE(rs.bof() || rs.eof());
    add(rs, u"Second");
    execute(u"DELETE FROM Part WHERE Stock = 0");
    EXPECT_EQ(rs.text(u"Name"), u"Part 299") << "what was added stands at the end";
    EXPECT_EQ(rs.recordCount(), 301);
    rs.moveLast();
    EXPECT_EQ(rs.text(u"Name"), u"Second");
    rs.movePrevious();
    EXPECT_EQ(rs.text(u"Name"), u"First");
    add(rs, u"Third");
    rs.moveLast();
    EXPECT_EQ(rs.text(u"Name"), u"Third");
    rs.requery();
    EXPECT_EQ(rs.text(u"Stock"), u"-1");
    rs.requery();
    execute(u"DELETE FROM Part");
    EXPECT_EQ(errorOf([&] { rs[u"Name"]; }), jet::errors::rowDeleted);
    rs.requery();
    EXPECT_TRUE(rs.bof() && rs.eof());
}

TEST_P(RecordsetTest, WritesEveryTypeAndReadsItBack) {
    jet::Recordset rs = open(u"SELECT * FROM Part");
    rs.addNew();
    EXPECT_EQ(rs.text(u"Unit"), u"EA");
    rs.set(u"name", u"Müller's"_s);
    rs.set(u"Price", u"2.00005"_s);
    rs.set(u"Stock", 2.5);
    rs.set(u"Shelf", u"-7"_s);
    rs.set(u"Weight", u"0.125"_s);
    rs.set(u"Active", true);
    rs.set(u"Made", u"3/2/2026 4:05 PM"_s);
    rs.set(u"Note", u"first\r\nsecond \u20ac \U0001F600"_s);
    rs.update();
    const jet::Value added = rs.lastAddedKey();
    EXPECT_EQ(added.toLong(), db().lastCounter());
    EXPECT_EQ(rs.recordCount(), 1);
    rs.setBookmark(added);
    EXPECT_EQ(rs.text(u"Name"), u"Müller's"_s);
    EXPECT_EQ(rs[u"Price"].kind(), jet::Value::Kind::Money);
    EXPECT_EQ(rs.text(u"Price"), u"2") << "money is rounded ties to even";
    EXPECT_EQ(rs.text(u"Stock"), u"2") << "whole numbers are rounded ties to even";
    EXPECT_EQ(rs.text(u"Shelf"), u"-7");
    EXPECT_EQ(rs.text(u"Weight"), u"0.125");
    EXPECT_EQ(rs.text(u"Active"), u"True");
    EXPECT_EQ(rs.text(u"Made"), u"3/2/2026 4:05:00 PM");
    EXPECT_EQ(rs.text(u"Note"), u"first\r\nsecond \u20ac \U0001F600"_s);
    EXPECT_EQ(rs.text(u"Unit"), u"EA");
    EXPECT_EQ(rows(u"SELECT Name FROM Part WHERE Active = True AND Made > "
                   "#3/2/2026# AND Price = 2 AND Unit = 'ea'"_s)
                  .size(),
              1);

    rs.edit();
    rs.set(u"Price", 12.12345);
    rs.set(u"Made", u"  /  /    "_s);
    rs.set(u"Name", jet::Value());
    EXPECT_EQ(rs.text(u"Price"), u"12.1234") << "the row being edited shows what was set";
    rs.update();
    EXPECT_EQ(rs.text(u"Price"), u"12.1234");
    EXPECT_TRUE(rs[u"Made"].isNull());
    EXPECT_TRUE(rs[u"Name"].isNull());
    EXPECT_EQ(rs.text(u"Stock"), u"2") << "fields that weren't set stay";
}

TEST_P(RecordsetTest, RefusesWhatAColumnCannotHold) {
    addParts(1);
    jet::Recordset rs = open(u"SELECT * FROM Part");
    EXPECT_EQ(errorOf([&] { rs.set(u"Name", 1); }), jet::errors::needsEdit);
    EXPECT_EQ(errorOf([&] { rs.update(); }), jet::errors::needsEdit);
    rs.edit();
    EXPECT_EQ(errorOf([&] { rs.set(u"Name", QString(13, u'x')); }), jet::errors::fieldTooSmall);
    EXPECT_EQ(errorOf([&] { rs.set(u"Shelf", 40000); }), jet::errors::overflow);
    EXPECT_EQ(errorOf([&] { rs.set(u"Stock", 3e9); }), jet::errors::overflow);
    EXPECT_EQ(errorOf([&] { rs.set(u"Stock", u"many"_s); }), jet::errors::typeMismatch);
    EXPECT_EQ(errorOf([&] { rs.set(u"Made", u"13/32/2026"_s); }), jet::errors::typeMismatch);
    rs.set(u"Stock", QString());
    rs.update();
    EXPECT_EQ(rows(u"SELECT Name, Stock, Made FROM Part"_s), QStringList(u"Part 1|0|"_s));

    jet::Recordset fixed =
        db().openRecordset(u"SELECT * FROM Part"_s, jet::RecordsetType::Snapshot);
    EXPECT_EQ(errorOf([&] { fixed.edit(); }), jet::errors::notUpdatable);
    jet::Recordset grouped = open(u"SELECT Unit, COUNT(*) AS Parts FROM Part GROUP BY Unit");
    EXPECT_EQ(errorOf([&] { grouped.addNew(); }), jet::errors::notUpdatable);
}

TEST_P(RecordsetTest, DeletesTheCurrentRowAndGoesOnFromThere) {
    addParts(4);
    jet::Recordset rs = open(u"SELECT * FROM Part ORDER BY PartNo");
    rs.moveNext();
    rs.remove();
    EXPECT_EQ(rs.recordCount(), 3);
    EXPECT_EQ(errorOf([&] { rs[u"Name"]; }), jet::errors::rowDeleted);
    rs.moveNext();
    EXPECT_EQ(rs.text(u"Name"), u"Part 3");
    rs.remove();
    rs.movePrevious();
    EXPECT_EQ(rs.text(u"Name"), u"Part 1");
    rs.moveLast();
    rs.remove();
    rs.moveNext();
    EXPECT_TRUE(rs.eof());
    rs.moveFirst();
    rs.remove();
    rs.moveNext();
    EXPECT_TRUE(rs.isEmpty());
    EXPECT_TRUE(rows(u"SELECT * FROM Part"_s).isEmpty());
}

TEST_P(RecordsetTest, KeepsAnAddedRowAtItsEnd) {
    addParts(2);
    jet::Recordset rs = open(u"SELECT Name, Stock FROM Part WHERE Stock < 50 ORDER BY PartNo");
    rs.addNew();
    rs.set(u"Name", u"New"_s);
    rs.set(u"Stock", 99);
    rs.update();
    EXPECT_EQ(rs.text(u"Name"), u"Part 1") << "the current row stays";
    rs.moveLast();
    EXPECT_EQ(rs.text(u"Name"), u"New");
    rs.requery();
    EXPECT_EQ(rs.recordCount(), 2);
    EXPECT_EQ(rs.text(u"Name"), u"Part 1");
    rs.addNew();
    rs.set(u"Name", u"Never"_s);
    rs.cancelUpdate();
    EXPECT_EQ(rs.text(u"Name"), u"Part 1");
    EXPECT_EQ(rows(u"SELECT * FROM Part"_s).size(), 3);
}

TEST_P(RecordsetTest, MarksMeanTheSameRowAfterRequery) {
    addParts(5);
    jet::Recordset rs = open(u"SELECT * FROM Part ORDER BY Stock");
    rs.moveTo(1);
    const jet::Value mark = rs.bookmark();
    execute(u"UPDATE Part SET Stock = 100 - PartNo");
    execute(u"DELETE FROM Part WHERE PartNo = 5");
    rs.requery();
    rs.setBookmark(mark);
    EXPECT_EQ(rs.text(u"Name"), u"Part 4");
    EXPECT_EQ(rs.absolutePosition(), 0);
    execute(u"DELETE FROM Part WHERE PartNo = 4");
    EXPECT_EQ(errorOf([&] { rs.setBookmark(mark); }), jet::errors::rowDeleted);

    execute(u"INSERT INTO State VALUES ('CA', 'California')");
    execute(u"INSERT INTO State VALUES ('NY', 'New York')");
    jet::Recordset states = open(u"SELECT Name FROM State ORDER BY Code DESC");
    states.findFirst(u"Code = 'ca'"_s);
    EXPECT_EQ(states.text(u"Name"), u"California");
    EXPECT_EQ(states.bookmark().toText(), u"CA");
    states.edit();
    states.set(u"Name", u"Golden"_s);
    states.update();
    EXPECT_EQ(states.text(u"Name"), u"Golden");
}

TEST_P(RecordsetTest, EditsTheFirstTableOfAJoinAndTableWithoutKeys) {
    addParts(2);
    for (const char16_t* values : {u"(1, 5)", u"(1, 5)", u"(2, 7)"})
        db().execute(u"INSERT INTO Receipt VALUES "_s + QString::fromUtf16(values));
    jet::Recordset rs =
        open(u"SELECT Receipt.*, Part.Name, Part.PartNo FROM Receipt LEFT JOIN Part "
             u"ON Receipt.PartNo = Part.PartNo ORDER BY Receipt.PartNo");
    ASSERT_EQ(rs.recordCount(), 3);
    EXPECT_EQ(rs.text(u"Part.PartNo"), u"1");
    EXPECT_EQ(errorOf([&] {
                  rs.edit();
                  rs.set(u"Name", u"x"_s);
              }),
              jet::errors::notUpdatable);
    rs.cancelUpdate();
    rs.remove();
    EXPECT_EQ(rows(u"SELECT * FROM Receipt"_s).size(), 2)
        << "two equal rows without a key must stay two";
    rs.moveNext();
    EXPECT_EQ(rs.text(u"Quantity"), u"5");
    rs.edit();
    rs.set(u"Quantity", 6);
    rs.update();
    EXPECT_EQ(rs.text(u"Quantity"), u"6");
    rs.findFirst(u"Name = 'part 2'"_s);
    EXPECT_EQ(rs.text(u"Quantity"), u"7");
    EXPECT_EQ(rows(u"SELECT * FROM Receipt ORDER BY PartNo"_s), (QStringList{u"1|6"_s, u"2|7"_s}));
    EXPECT_EQ(db().lastCounter(), 2) << "a hidden identity is no counter";
}

MIRSA_BOTH_ENGINES(RecordsetTest);

} // namespace
