#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <sys/wait.h>
#include <unistd.h>

#include <thread>

using namespace testsupport;

namespace {

/// Several stations at one database, as connections and as processes.
class StationsTest : public DatabaseFixture {
  protected:
    void prepare() override {
        execute(u"CREATE TABLE Item (ItemID COUNTER PRIMARY KEY, Name TEXT(20), Stock LONG)");
        execute(u"INSERT INTO Item (Name, Stock) VALUES ('Bolt', 0)");
    }

    /// Runs `action` on a station in a process of its own; its process id.
    template <class Action>
    pid_t inProcess(Action action) {
        testDatabase().close(); // a connection must not be taken into the child
        const pid_t child = fork();
        if (child == 0) {
            int status = 1;
            try {
                const auto own = station();
                action(*own);
                status = 0;
            } catch (const std::exception& error) {
                fprintf(stderr, "station: %s\n", error.what());
            }
            _exit(status);
        }
        return child;
    }
    /// A server doesn't tell what others wrote, so rows that were read a moment ago are shown.
    void letRowsAge() {
        if (db().isServer())
            std::this_thread::sleep_for(std::chrono::milliseconds(1100));
    }
    static int statusOf(pid_t child) {
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    }
};

TEST_P(StationsTest, LoseNoUpdateOfEachOther) {
    const auto work = [](jet::Database& own) {
        for (int i = 0; i < 60; ++i) {
            jet::Transaction transaction(own);
            jet::Recordset rs = own.openRecordset(u"SELECT * FROM Item"_s);
            rs.edit();
            rs.set(u"Stock", rs[u"Stock"].toLong() + 1);
            rs.update();
            own.execute(u"INSERT INTO Item (Name) VALUES ('row')"_s);
            transaction.commit();
            own.execute(u"UPDATE Item SET Stock = Stock + 1 WHERE ItemID = 1"_s);
        }
    };
    const pid_t children[] = {inProcess(work), inProcess(work), inProcess(work)};
    for (const pid_t child : children)
        EXPECT_EQ(statusOf(child), 0);
    const auto own = station();
    EXPECT_EQ(rows(*own, u"SELECT Stock FROM Item WHERE ItemID = 1"_s), QStringList(u"360"_s));
    EXPECT_EQ(own->lookup(u"SELECT COUNT(*) FROM Item"_s).toLong(), 181);
}

TEST_P(StationsTest, LeaveNothingOfATransactionThatWasKilled) {
    const pid_t child = inProcess([](jet::Database& own) {
        own.execute(u"INSERT INTO Item (Name) VALUES ('whole')"_s);
        jet::Workspace(own).beginTrans();
        own.execute(u"UPDATE Item SET Stock = 99"_s);
        own.execute(u"DELETE FROM Item WHERE ItemID = 2"_s);
        kill(getpid(), SIGKILL);
    });
    EXPECT_EQ(WTERMSIG(statusOf(child)), SIGKILL);
    const auto own = station();
    EXPECT_EQ(rows(*own, u"SELECT Name, Stock FROM Item ORDER BY ItemID"_s),
              (QStringList{u"Bolt|0"_s, u"whole|"_s}));
    EXPECT_EQ(own->execute(u"UPDATE Item SET Stock = 1"_s), 2);
}

TEST_P(StationsTest, SeeEachOthersRowsWhenTheyReadAgain) {
    const auto other = station();
    jet::Recordset rs = db().openRecordset(u"SELECT * FROM Item ORDER BY ItemID"_s);
    other->execute(u"INSERT INTO Item (Name) VALUES ('Nut')"_s);
    other->execute(u"UPDATE Item SET Stock = 5 WHERE ItemID = 1"_s);
    EXPECT_EQ(rs.recordCount(), 1);
    rs.refreshRow();
    EXPECT_EQ(rs.text(u"Stock"), u"5");
    rs.requery();
    EXPECT_EQ(rs.recordCount(), 2);
    rs.edit();
    other->execute(u"UPDATE Item SET Name = 'Screw' WHERE ItemID = 1"_s);
    rs.set(u"Stock", 6);
    rs.update();
    EXPECT_EQ(rs.text(u"Name"), u"Screw") << "an edit writes only what was set";
}

TEST_P(StationsTest, PassOverRowsThatAnotherDeleted) {
    const auto other = station();
    {
        jet::Transaction transaction(db());
        for (int i = 2; i <= 300; ++i) // more than are read at once
            db().execute(u"INSERT INTO Item (Stock) VALUES (%1)"_s.arg(i));
        transaction.commit();
    }
    jet::Recordset rs = db().openRecordset(u"SELECT * FROM Item ORDER BY ItemID"_s);
    EXPECT_EQ(rs.recordCount(), 300);
    other->execute(u"DELETE FROM Item WHERE ItemID BETWEEN 2 AND 4"_s);
    other->execute(u"DELETE FROM Item WHERE ItemID > 298"_s);
    EXPECT_EQ(rs.recordCount(), 300);
    letRowsAge();
    rs.moveNext();
    EXPECT_EQ(rs[u"ItemID"].toLong(), 5);
    rs.moveLast();
    EXPECT_EQ(rs[u"ItemID"].toLong(), 298);
    rs.moveTo(2);
    const jet::Value mark = rs.bookmark();
    other->execute(u"DELETE FROM Item WHERE ItemID = "_s + mark.toText());
    letRowsAge();
    EXPECT_EQ(errorOf([&] { rs[u"Stock"]; }), jet::errors::rowDeleted);
    EXPECT_EQ(errorOf([&] { rs.edit(); }), jet::errors::rowDeleted);
    EXPECT_EQ(errorOf([&] { rs.setBookmark(mark); }), jet::errors::rowDeleted);
    rs.moveFirst();
    rs.edit();
    rs.set(u"Stock", 7);
    other->execute(u"DELETE FROM Item WHERE ItemID = 1"_s);
    EXPECT_EQ(errorOf([&] { rs.update(); }), jet::errors::rowDeleted);
    EXPECT_EQ(errorOf([&] { rs[u"Stock"]; }), jet::errors::rowDeleted);
    rs.moveNext();
    EXPECT_EQ(rs[u"ItemID"].toLong(), 5);
}

TEST_P(StationsTest, HoldALargeSetInPartAndFindWhatOthersAdd) {
    const auto other = station();
    std::vector<std::vector<jet::Value>> many;
    for (int i = 2; i <= 5000; ++i)
        many.push_back({i * 2, i % 3});
    db().insertRows(u"Item"_s, {u"ItemID"_s, u"Stock"_s}, many);
    const auto shows = [](const jet::Recordset& set) { return set[u"ItemID"].toLong(); };

    jet::Recordset rs =
        db().openLater(u"SELECT * FROM Item WHERE Stock < 2"_s, jet::RecordsetType::Dynaset);
    rs.findFirst(u"ItemID = 9004"_s);
    EXPECT_TRUE(rs.noMatch());
    rs.moveLast();
    EXPECT_EQ(shows(rs), 9998);
    EXPECT_TRUE(rs.isLast());
    EXPECT_FALSE(rs.knowsPlace());
    EXPECT_EQ(rs.absolutePosition() + 1, rs.recordCount());
    EXPECT_EQ(rs.recordCount(), 3333);
    // All the way down and up again, with rows that come and go.
    int seen = 1;
    for (; !rs.isFirst(); ++seen)
        rs.movePrevious();
    EXPECT_EQ(seen, 3333);
    EXPECT_EQ(shows(rs), 1);
    EXPECT_EQ(rs.absolutePosition(), 0);
    other->execute(u"DELETE FROM Item WHERE ItemID BETWEEN 5000 AND 6000"_s);
    other->execute(u"INSERT INTO Item (ItemID, Stock) VALUES (9001, 1)"_s);
    letRowsAge();
    for (seen = 1; !rs.isLast(); ++seen)
        rs.moveNext();
    EXPECT_EQ(seen, 3000);
    rs.moveNext();
    EXPECT_TRUE(rs.eof());

    rs.findFirst(u"ItemID = 9001"_s);
    EXPECT_FALSE(rs.noMatch()) << "another station's row is there without reading all again";
    rs.movePrevious();
    EXPECT_EQ(shows(rs), 9000);
    rs.findFirst(u"ItemID = 9004"_s); // not among the selected
    EXPECT_TRUE(rs.noMatch());
    EXPECT_EQ(shows(rs), 9000);
    rs.findFirst(u"Stock = 1 AND ItemID > 200"_s);
    EXPECT_EQ(shows(rs), 206);
    rs.moveTo(2);
    EXPECT_EQ(shows(rs), 8);
    EXPECT_EQ(rs.absolutePosition(), 2);

    other->execute(u"DELETE FROM Item WHERE ItemID = 8"_s);
    EXPECT_FALSE(rs.requeryAt(rs.bookmark()));
    EXPECT_EQ(shows(rs), 12) << "what moved up into its place";
    EXPECT_TRUE(rs.requeryAt(rs.bookmark()));
    EXPECT_EQ(rs.absolutePosition(), 2);
    rs.remove();
    EXPECT_EQ(errorOf([&] { rs.bookmark(); }), jet::errors::rowDeleted);
    EXPECT_FALSE(rs.requeryAt({}));
    EXPECT_EQ(shows(rs), 14);

    rs.addNew();
    rs.set(u"Stock", 2); // not one of those that are selected, and yet in the set
    rs.update();
    rs.moveLast();
    EXPECT_EQ(shows(rs), 10001);
    EXPECT_EQ(rs[u"Stock"].toLong(), 2);
    rs.movePrevious();
    EXPECT_EQ(shows(rs), 9998);
    rs.edit();
    rs.set(u"ItemID", 20000);
    rs.update();
    EXPECT_EQ(shows(rs), 20000);
    rs.moveFirst();
    EXPECT_EQ(shows(rs), 1);
}

MIRSA_BOTH_ENGINES(StationsTest);

} // namespace
