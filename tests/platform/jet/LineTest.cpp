#include "platform/jet/Waiting.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"
#include "support/DelayingLine.h"

#include <thread>

using namespace testsupport;
using namespace std::chrono_literals;

namespace {

/// A server at the other end of a line: what it costs, and what happens when it is cut or silent.
class LineTest : public testing::Test {
  protected:
    void SetUp() override {
        MIRSA_NEEDS_ENGINE(EngineKind::Server);
        m_test = std::make_unique<TestDatabase>(EngineKind::Server);
        m_test->database().execute(
            u"CREATE TABLE Note (NoteID COUNTER PRIMARY KEY, Body TEXT(20))"_s);
        m_test->database().execute(u"INSERT INTO Note (Body) VALUES ('first')"_s);
    }
    void TearDown() override { jet::setWhileWaiting({}); }

    static jet::Failure failureOf(const std::function<void()>& action) {
        try {
            action();
        } catch (const jet::Error& error) {
            return error.failure();
        }
        return jet::Failure::Statement;
    }

    std::unique_ptr<TestDatabase> m_test;
};

TEST_F(LineTest, TheCounterCountsTheTripsOfTheLine) {
    const DelayingLine line(m_test->location(), 20ms);
    const auto database = jet::Database::openServer(line.uri());
    const int before = line.trips();
    const quint64 counted = database->waits();
    const auto began = std::chrono::steady_clock::now();
    {
        jet::Transaction transaction(*database);
        jet::Recordset row = database->openRecordset(u"SELECT * FROM Note"_s);
        for (int i = 0; i < 50; ++i)
            database->execute(u"INSERT INTO Note (Body) VALUES ('%1')"_s.arg(i));
        transaction.commit();
    }
    EXPECT_EQ(database->lookup(u"SELECT Count(*) FROM Note"_s).toLong(), 51);
    const auto took = std::chrono::steady_clock::now() - began;
    EXPECT_EQ(database->waits() - counted, 3U);
    EXPECT_EQ(line.trips() - before, 3);
    EXPECT_GE(took, 60ms);
}

TEST_F(LineTest, ACutBetweenTwoStepsIsNotSeen) {
    DelayingLine line(m_test->location());
    const auto database = jet::Database::openServer(line.uri());
    jet::Recordset row = database->openRecordset(u"SELECT * FROM Note"_s);
    line.cut();
    std::this_thread::sleep_for(50ms);
    row.requery();
    EXPECT_EQ(row.text(u"Body"), u"first");
    line.cut();
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(database->execute(u"UPDATE Note SET Body = 'second'"_s), 1);
}

TEST_F(LineTest, ASilentServerIsGivenUpWhenSomebodySaysSo) {
    DelayingLine line(m_test->location());
    const auto database = jet::Database::openServer(line.uri());
    int asked = 0, ended = 0;
    jet::setWhileWaiting(
        [&](std::chrono::milliseconds waited) {
            ++asked;
            EXPECT_GE(waited, 200ms);
            EXPECT_EQ(failureOf([&] { database->lookup(u"SELECT 1 FROM Note"_s); }),
                      jet::Failure::LockNotHad)
                << "nothing else may use the line meanwhile";
            return waited < 400ms;
        },
        [&] { ++ended; });
    line.setSilent(true);
    EXPECT_EQ(failureOf([&] { database->lookup(u"SELECT Body FROM Note"_s); }),
              jet::Failure::ConnectionLost);
    EXPECT_GT(asked, 1);
    EXPECT_EQ(ended, 1);
    // A new line, too, is one that takes the call and says nothing.
    EXPECT_EQ(failureOf([&] { jet::Database::openServer(line.uri()); }),
              jet::Failure::ConnectionLost);
    line.setSilent(false);
    EXPECT_EQ(database->lookup(u"SELECT Body FROM Note"_s).toText(), u"first");
}

TEST_F(LineTest, AStationThatFallsSilentInASaveLetsTheOthersGoOn) {
    DelayingLine line(m_test->location());
    const auto silent = jet::Database::openServer(line.uri());
    jet::Transaction save(*silent);
    EXPECT_EQ(silent->execute(u"UPDATE Note SET Body = 'half'"_s), 1);
    line.setSilent(true);
    EXPECT_EQ(m_test->database().execute(u"UPDATE Note SET Body = 'other'"_s), 1);
    line.setSilent(false);
    EXPECT_EQ(failureOf([&] { save.commit(); }), jet::Failure::ConnectionLost);
    EXPECT_EQ(m_test->database().lookup(u"SELECT Body FROM Note"_s).toText(), u"other");
}

} // namespace
