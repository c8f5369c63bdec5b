#include "timemgmt/OpenWork.h"
#include "platform/values/Literals.h"

#include "jobs/JobCosting.h"
#include "timemgmt/Floor.h"
#include "timemgmt/TimeRows.h"

#include <chrono>
#include <thread>

using namespace timemgmt;
using testsupport::Floor;

class OpenWork : public testsupport::TimeRows {
  protected:
    void prepare() override {
        m_inHouse = operation(u"I"_s);
        m_overhead = operation(u"O"_s);
        m_job = job(m_inHouse);
    }
    qint64 start(qint64 sign, int seconds) {
        return work({.sign = sign, .job = m_job, .operation = m_inHouse, .start = seconds});
    }
    QString text(const char16_t* select) { return rows(QString::fromUtf16(select)).join(u"; "_s); }
    double number(const char16_t* select) {
        return db().lookup(QString::fromUtf16(select)).toDouble();
    }
    /// What is booked on the job is what its time records say, before and after rolling it up.
    void expectNoHourLost() {
        const double worked = number(u"SELECT SUM(AccumTime) FROM Timelog");
        // The hour that the job began with stands in no time record.
        EXPECT_NEAR(number(u"SELECT OperTime_Amount FROM JobOper"), 1 + worked, 1e-6);
        EXPECT_NEAR(number(u"SELECT TotalHours FROM Job"), 1 + worked, 1e-6);
        jobs::UpdateJobCost(db(), m_job);
        EXPECT_NEAR(number(u"SELECT OperTime_Amount FROM JobOper"), worked, 1e-6);
        EXPECT_NEAR(number(u"SELECT TotalHours FROM Job"), worked, 0.005);
    }
    /// Holds what `busy` has written for a moment from now on.
    static void holdFor(Floor& busy, std::thread& release) {
        release = std::thread([&busy] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            busy.commit();
        });
    }
    qint64 m_inHouse = 0, m_overhead = 0, m_job = 0;
};
MIRSA_BOTH_ENGINES(OpenWork);

TEST_P(OpenWork, ASignOutByHandEndsWhatIsOpen) {
    attendance(1, 0, 3600);
    const qint64 row = attendance(1, 28800, 34200);
    start(row, 28800);
    start(row, 33300); // a second one on the operation
    work({.sign = row,
          .job = m_job,
          .operation = m_inHouse,
          .status = u"D"_s,
          .start = 28800,
          .susp = 30000});
    work({.sign = row, .job = m_job, .operation = m_overhead, .start = 34200});
    // By hand, without a status, of a contractor, of an operation that was deleted: not touched.
    work({.sign = row, .job = m_job, .operation = m_inHouse, .status = u"0"_s});
    work({.sign = row, .job = m_job, .operation = m_inHouse, .status = {}, .start = 28800});
    work({.sign = row, .job = m_job, .operation = operation(u"C"_s), .start = 28800});
    work({.sign = row, .job = m_job, .operation = 9999, .start = 28800});
    // The job is gone, and the job has lost the operation: ended, and booked nowhere.
    work({.sign = row, .job = 9999, .operation = m_inHouse, .start = 28800});
    work({.sign = row, .job = m_job, .operation = operation(u"I"_s), .start = 28800});

    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(34200)), 5);
    const QString end = u"3/2/2026 9:30:00 AM"_s;
    EXPECT_EQ(
        rows(u"SELECT Status, AccumTime, SuspDate, FinishDate FROM Timelog "
             "ORDER BY ID"_s),
        (QStringList{u"D|1.5|"_s + end + u'|', u"D|0.25|"_s + end + u'|',
                     u"D||3/2/2026 8:20:00 AM|"_s, u"F|0||"_s + end, u"0|||"_s, u"|||"_s, u"A|||"_s,
                     u"A|||"_s, u"D|1.5|"_s + end + u'|', u"D|1.5|"_s + end + u'|'}));
    EXPECT_EQ(text(u"SELECT OperTime_Amount, Status FROM JobOper"), u"2.75|D"_s);
    // 1.75 hours at 50 over 4 pieces.
    EXPECT_EQ(text(u"SELECT TotalHours, JobShopCost FROM Job"), u"2.75|23.875"_s);
    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(36000)), 0);

    execute(u"UPDATE JobOper SET Status='f'");
    start(row, 28800);
    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(29700)), 1);
    EXPECT_EQ(text(u"SELECT OperTime_Amount, Status FROM JobOper"), u"3|f"_s);
}

/// Halves of a hundredth of an hour are 18 seconds, and not one of them is a binary fraction.
TEST_P(OpenWork, HoursAreRoundedAsTheyShow) {
    const qint64 row = attendance(1, 0, 40000);
    QStringList expected;
    qint64 sum = 0;
    for (int seconds = -90; seconds < 36000; seconds += seconds < 400 ? 9 : 1233) {
        start(row, 36000 - seconds);
        const qint64 hundredths =
            (seconds < 0 ? -1 : 1) * ((std::abs(seconds) * 100 + 1800) / 3600);
        expected << jet::Value(static_cast<double>(hundredths) / 100).toText();
        sum += hundredths;
    }
    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(36000)), expected.size());
    EXPECT_EQ(rows(u"SELECT AccumTime FROM Timelog ORDER BY ID"_s), expected);
    EXPECT_NEAR(number(u"SELECT TotalHours FROM Job"), 1 + static_cast<double>(sum) / 100, 1e-9);
    expectNoHourLost();
}

TEST_P(OpenWork, AJobOfNoPiecesLeavesEverythingOpen) {
    const qint64 row = attendance(1, 28800, 34200);
    work({.sign = row, .operation = m_overhead, .start = 28800});
    start(row, 28800);
    execute(u"UPDATE Job SET Quantity=0");
    EXPECT_EQ(errorOf([&] { CloseOpenTimelogs(db(), row, moment(34200)); }),
              jet::errors::divisionByZero);
    EXPECT_EQ(text(u"SELECT Status, SuspDate, FinishDate FROM Timelog"), u"A||; A||"_s);
    EXPECT_EQ(text(u"SELECT OperTime_Amount FROM JobOper"), u"1"_s);
}

TEST_P(OpenWork, WhatTheFloorIsEndingIsNotEndedAgain) {
    const qint64 row = attendance(1, 0, 3600);
    const qint64 theirs = start(row, 0);
    start(row, 1800);
    Floor floor(testDatabase().location());
    floor.begin();
    ASSERT_EQ(floor.run("UPDATE timelog SET suspdate = '2026-03-02 00:15:00', accumtime = 0.25, "
                        "status = 'D' WHERE id = " +
                        QByteArray::number(theirs)),
              1);
    ASSERT_TRUE(floor.book(0.25));
    std::thread release;
    holdFor(floor, release);
    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(3600)), 1);
    release.join();
    EXPECT_EQ(text(u"SELECT AccumTime, SuspDate FROM Timelog ORDER BY ID"),
              u"0.25|3/2/2026 12:15:00 AM; 0.5|3/2/2026 1:00:00 AM"_s);
    expectNoHourLost();
}

TEST_P(OpenWork, WhatTheFloorIsBookingIsNotOverwritten) {
    const qint64 row = attendance(1, 0, 3600);
    start(row, 0);
    Floor floor(testDatabase().location());
    floor.begin();
    ASSERT_EQ(floor.run("INSERT INTO timelog (empid, jobno, operno, accumtime, status) SELECT 2, "
                        "jobno, operno, 0.75, 'D' FROM joboper"),
              1);
    ASSERT_TRUE(floor.book(0.75));
    std::thread release;
    holdFor(floor, release);
    EXPECT_EQ(CloseOpenTimelogs(db(), row, moment(3600)), 1);
    release.join();
    expectNoHourLost();
}

TEST_P(OpenWork, RollingUpTakesInWhatTheFloorIsBooking) {
    const qint64 row = attendance(1, 0, 3600);
    start(row, 0);
    ASSERT_EQ(CloseOpenTimelogs(db(), row, moment(3600)), 1);
    Floor floor(testDatabase().location());
    floor.begin();
    ASSERT_EQ(floor.run("UPDATE timelog SET accumtime = accumtime + 0.75"), 1);
    ASSERT_TRUE(floor.book(0.75));
    std::thread release;
    holdFor(floor, release);
    jobs::UpdateJobCost(db(), m_job);
    release.join();
    EXPECT_EQ(text(u"SELECT OperTime_Amount FROM JobOper"), u"1.75"_s);
    EXPECT_EQ(text(u"SELECT TotalHours, JobShopCost FROM Job"), u"1.75|21.875"_s);
}

TEST_P(OpenWork, AnOperationThatTheFloorIsBeginningKeepsItsStatus) {
    execute(u"UPDATE JobOper SET Status='F'");
    Floor floor(testDatabase().location());
    floor.begin();
    ASSERT_EQ(floor.run("INSERT INTO timelog (empid, jobno, operno, status) SELECT 2, jobno, "
                        "operno, 'A' FROM joboper"),
              1);
    ASSERT_EQ(floor.run("UPDATE joboper SET status = 'A'"), 1);
    std::thread release;
    holdFor(floor, release);
    EXPECT_TRUE(jobs::AdjustJobTimeDeleted(db(), {{m_job, m_inHouse}}).empty());
    release.join();
    EXPECT_EQ(text(u"SELECT Status FROM JobOper"), u"A"_s);
}

TEST_P(OpenWork, WhoIsSigningInOnTheFloorStaysIn) {
    execute(u"INSERT INTO Employee (lastname, SignedIn) VALUES('Hall', False)");
    const qint64 employee = db().lastCounter();
    const qint64 edited = attendance(employee, 0, 3600);
    Floor floor(testDatabase().location());
    floor.begin();
    ASSERT_EQ(floor.run("INSERT INTO sign_in (empid, sign_in) SELECT empid, '2026-03-03 07:00:00' "
                        "FROM sign_in"),
              1);
    ASSERT_EQ(floor.run("UPDATE employee SET signedin = 1"), 1);
    std::thread release;
    holdFor(floor, release);
    SignOutIfLatest(db(), employee, edited);
    release.join();
    EXPECT_EQ(text(u"SELECT SignedIn FROM Employee"), u"True"_s);
}
