#include "platform/values/Literals.h"
#include "scheduling/Fit.h"
#include "scheduling/Load.h"
#include "scheduling/ScheduleChart.h"
#include "scheduling/ScheduleStore.h"
#include "support/DatabaseFixture.h"

#include <QProcess>
#include <QThread>

#include <random>

using gantt::minuteOf;
using gantt::Model;
using gantt::Span;
using gantt::State;
using namespace scheduling;

namespace {

const QDate in(2026, 3, 2); // a Monday
const QDate due(2026, 3, 20);

class Scheduling : public testsupport::ShopDatabaseFixture {
  protected:
    void prepare() override {
        run(u"INSERT INTO OperDepartment (department) VALUES('Mill')"_s);
        run(u"INSERT INTO OperDepartment (department) VALUES('Lathe')"_s);
        for (const char* text : {"Boring", "Milling", "O''Neil cut", "Turning"}) {
            run(u"INSERT INTO Operation (Description, OperType, operdepartment_id) "
                "VALUES('%1','I',%2)"_s.arg(QString::fromLatin1(text))
                    .arg(QByteArray(text) == "Turning" ? 2 : 1));
        }
        run(u"INSERT INTO Operation (Description, OperType, operdepartment_id) "
            "VALUES('Plating','C',0)"_s);
        m_job = job();
        for (int seq = 1; seq <= 3; ++seq)
            operation(m_job, seq, seq == 3 ? 4 : seq, seq == 1 ? u"F"_s : u" "_s, 4 * seq);
    }
    void run(const QString& statement) { db().execute(statement); }
    qint64 job(bool shipped = false) {
        run(u"INSERT INTO Job (CustID, PONo, PartNo, JobDateIn, JobDueDate, Shipped) "
            "VALUES(5,'PO''7','P',#03/02/2026#,#03/20/2026#,%1)"_s.arg(shipped ? u"True"_s
                                                                               : u"False"_s));
        return db().lastCounter();
    }
    void operation(qint64 jobNo, int seq, int operNo, const QString& status, double hours) {
        run(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, Status, OperLocated, EstOper) "
            "VALUES(%1,%2,%3,'%4',%5,%6)"_s.arg(jobNo)
                .arg(seq)
                .arg(operNo)
                .arg(status)
                .arg(seq == 2 ? 1 : 0)
                .arg(hours));
    }
    qint64 entry(qint64 jobNo, int seq, const QString& text, const QString& from = u"3/3/2026"_s,
                 const QString& start = u"07:00 AM"_s, const QString& to = u"3/3/2026"_s,
                 const QString& end = u"03:00 PM"_s, int operNo = 2) {
        run(u"INSERT INTO JobOperSchedule (JobNo, SeqNo, OperNo, Description, TextAlign, "
            u"StartDate, "
            "StartTime, EndDate, EndTime) VALUES(%1,%2,%3,'%4',0,'%5','%6','%7','%8')"_s.arg(jobNo)
                .arg(seq)
                .arg(operNo)
                .arg(text, from, start, to, end));
        return db().lastCounter();
    }
    QStringList entries() {
        return rows(u"SELECT JobNo, SeqNo, OperNo, Description, TextAlign, StartDate, StartTime, "
                    "EndDate, EndTime FROM JobOperSchedule ORDER BY JobNo, SeqNo, Description"_s);
    }
    /// One person from 7 to 15 in the mill, one in the lathes from 22 to 6.
    void people() {
        run(u"INSERT INTO Shifts (Description, EarliestSignIn, LatestSignOut) "
            "VALUES('Day',#07:00:00#,#15:00:00#)"_s);
        const qint64 day = db().lastCounter();
        run(u"INSERT INTO Shifts (Description, EarliestSignIn, LatestSignOut) "
            "VALUES('Night',#22:00:00#,#06:00:00#)"_s);
        const qint64 night = db().lastCounter();
        for (const auto& [shift, operNo] : {std::pair{day, 2}, std::pair{night, 4}}) {
            run(u"INSERT INTO Employee (firstname, lastname, EmpStatus, shiftsid) "
                "VALUES('A','B','Active',%1)"_s.arg(shift));
            run(u"INSERT INTO Timelog (EmpID, OperNo, AccumTime, StartDate) "
                "VALUES(%1,%2,6,#02/20/2026#)"_s.arg(db().lastCounter())
                    .arg(operNo));
        }
        run(u"INSERT INTO Employee (firstname, lastname, EmpStatus, shiftsid) "
            "VALUES('Gone','G','Terminated',%1)"_s.arg(day));
    }
    qint64 m_job = 0;
};

/// A job on a chart, ready to be changed and saved.
struct Chart {
    explicit Chart(jet::Database& database, qint64 jobNo) : chart(model) {
        const auto job = *loadJob(database, jobNo);
        model.addColumn(u"Operation"_s);
        model.setViewRange(*job.limits.dateIn, *job.limits.dueDate);
        chart.showJob(job);
    }
    explicit Chart(jet::Database& database, const QString& order) : chart(model) {
        model.addColumn(u"Operation"_s);
        model.setViewRange(in, due);
        chart.showOrder(loadOrder(database, order, 5));
    }
    std::optional<QString> save(jet::Database& database) {
        std::optional<JobDates> dates;
        if (!chart.isOrder())
            dates = JobDates{chart.jobs().front(), in, due, 1, 2};
        return saveEntries(database, chart.jobs(), chart.changes(), dates);
    }
    Model model;
    ScheduleChart chart;
};

} // namespace

TEST(ScheduleTimes, TheHourAfterMidnightReachesTheChartAsNought) {
    EXPECT_EQ(chartTime(u"12:05 AM"_s), u"00:05 AM"_s);
    EXPECT_EQ(chartTime(u"12:05 PM"_s), u"12:05 pm"_s);
    EXPECT_EQ(chartTime(u"07:00 AM"_s), u"07:00 am"_s);
    for (int minute = 0; minute < 1440; ++minute)
        ASSERT_EQ(minutesOfTime(storedTime(minute)), minute);
    EXPECT_EQ(minutesOfTime(QString()), 0);
    EXPECT_EQ(storedTime(30), u"12:30 AM"_s);
}

TEST(ScheduleTimes, LimitsAreWholeDays) {
    const Limits limits{in, due};
    EXPECT_EQ(outOfRange({minuteOf(in), minuteOf(due, 1439)}, limits), OutOfRange::No);
    EXPECT_EQ(outOfRange({minuteOf(in, -1), minuteOf(due)}, limits), OutOfRange::TooEarly);
    EXPECT_EQ(outOfRange({minuteOf(in), minuteOf(due, 1440)}, limits), OutOfRange::TooLate);
    EXPECT_EQ(entryComplaint(in, QTime(0, 0), in, QTime(0, 0)), QString());
    EXPECT_EQ(entryComplaint(in, QTime(1, 0), in, QTime(0, 0)),
              u"Start time cannot be after the end time."_s);
    EXPECT_EQ(entryComplaint(due, QTime(0, 0), in, QTime(1, 0)),
              u"Start date cannot be after end date."_s);
    EXPECT_EQ(entryComplaint(in, std::nullopt, due, QTime(0, 0)),
              u"Schedule entries must have a start and end date/time."_s);
}

TEST_P(Scheduling, AJobIsShownWithItsStatesAndWhatHasLostItsRow) {
    entry(m_job, 1, u"done"_s);
    entry(m_job, 2, u"here"_s);
    entry(m_job, 7, u"lost"_s);
    entry(m_job, 0, u"parked"_s);
    Chart c(db(), m_job);
    ASSERT_EQ(c.model.rowCount(), 4);
    EXPECT_EQ(c.model.cellText(2, 2), u"8.00"_s);
    EXPECT_EQ(c.model.bar(1, 1).state, State::Locked);
    EXPECT_EQ(c.model.bar(2, 1).colour, green);
    EXPECT_EQ(c.model.rowColour(2), green);
    EXPECT_EQ(c.model.cellText(4, 1), u"Without operation"_s);
    EXPECT_EQ(c.model.barCount(4), 2);
    EXPECT_FALSE(c.chart.isOperation(4));
    EXPECT_FALSE(c.chart.isChanged());
    EXPECT_FALSE(c.model.canUndo());
    const QStringList before = entries();
    EXPECT_EQ(c.save(db()), std::nullopt);
    // All but OperNo, which the row's text gives.
    EXPECT_EQ(entries().size(), before.size());
    EXPECT_EQ(rows(u"SELECT Description, SeqNo FROM JobOperSchedule ORDER BY Description"_s),
              QStringList({"done|1", "here|2", "lost|7", "parked|0"}));
    EXPECT_EQ(rows(u"SELECT ScheduleZoom, SchedulePeriod FROM Job"_s), QStringList(u"1|2"_s));
}

TEST_P(Scheduling, ASaveWritesEveryEntryAnewAndDropsTheDeleted) {
    const qint64 first = entry(m_job, 2, u"first"_s);
    entry(m_job, 2, u"second"_s);
    entry(m_job, 3, u"it''s third"_s);
    Chart c(db(), m_job);
    c.model.moveBar(2, 1, {minuteOf(in, 30), minuteOf(in.addDays(1), 1450)});
    c.chart.deleteEntry(2, 2);
    Entry added;
    added.description = u"new"_s;
    added.textAlign = 3;
    added.span = {minuteOf(due, 0), minuteOf(due, 0)};
    c.chart.addEntry(1, added);
    ASSERT_EQ(c.chart.firstOutOfRange({{m_job, Limits{in, due}}}), QString());
    EXPECT_EQ(c.save(db()), std::nullopt);
    EXPECT_EQ(
        entries(),
        QStringList({u"%1|1|1|new|3|3/20/2026|12:00 AM|3/20/2026|12:00 AM"_s.arg(m_job),
                     u"%1|2|2|first|0|3/2/2026|12:30 AM|3/4/2026|12:10 AM"_s.arg(m_job),
                     u"%1|3|4|it's third|0|3/3/2026|07:00 AM|3/3/2026|03:00 PM"_s.arg(m_job)}));
    EXPECT_FALSE(db().hasRows(u"SELECT ID FROM JobOperSchedule WHERE ID <= %1"_s.arg(first)));

    Chart outside(db(), m_job);
    outside.model.moveBar(2, 1, {minuteOf(in, -1), minuteOf(in, 5)});
    EXPECT_EQ(
        outside.chart.firstOutOfRange({{m_job, Limits{in, due}}}),
        u"Schedule entry 1 in operation 2 on Job %1 cannot start before the job date in."_s.arg(
            m_job));
}

TEST_P(Scheduling, AnOperationsTextGoesIntoAJobsSaveAsItStands) {
    operation(m_job, 4, 3, u" "_s, 1); // O'Neil cut
    entry(m_job, 4, u"x"_s);
    const QStringList before = entries();
    Chart c(db(), m_job);
    EXPECT_EQ(errorOf([&] { c.save(db()); }), jet::errors::syntax);
    EXPECT_EQ(entries(), before);
    Chart order(db(), u"PO'7"_s);
    EXPECT_EQ(order.save(db()), std::nullopt);
    EXPECT_EQ(rows(u"SELECT OperNo FROM JobOperSchedule"_s), QStringList(u"3"_s));
    EXPECT_EQ(rows(u"SELECT ScheduleZoom FROM Job"_s), QStringList(QString()))
        << "an order writes nothing into its jobs";
}

TEST_P(Scheduling, AnOrderShowsItsJobsWithBlocksAndSavesEachUnderItsOwnNumbers) {
    const qint64 second = job();
    operation(second, 1, 4, u" "_s, 2);
    run(u"UPDATE Job SET JobDateIn = #03/05/2026#, JobDueDate = #03/10/2026# WHERE JobNo = %1"_s
            .arg(second));
    entry(second, 1, u"lathe"_s, u"3/6/2026"_s, u"07:00 AM"_s, u"3/6/2026"_s, u"08:00 AM"_s, 4);
    entry(m_job, 2, u"mill"_s);
    Chart c(db(), u"PO'7"_s);
    ASSERT_EQ(c.model.rowCount(), 6);
    EXPECT_EQ(c.model.cellText(1, 1), u"Job No.: %1"_s.arg(second)) << "the newest first";
    ASSERT_EQ(c.model.barCount(2), 3);
    EXPECT_EQ(c.model.bar(2, 2).span, (Span{minuteOf(in), minuteOf(QDate(2026, 3, 5))}));
    EXPECT_EQ(c.model.bar(2, 3).span, (Span{minuteOf(QDate(2026, 3, 11)), minuteOf(due, 1440)}));
    EXPECT_EQ(c.chart.firstOutOfRange(
                  {{m_job, Limits{in, due}}, {second, Limits{QDate(2026, 3, 7), due}}}),
              u"Schedule entry 1 in operation 2 on Job %1 cannot be placed outside the date in/due "
              "date range."_s.arg(second));
    c.model.setViewRange(QDate(2026, 3, 5), QDate(2026, 3, 10));
    c.chart.redrawBlocks({{second, Limits{QDate(2026, 3, 5), QDate(2026, 3, 10)}}});
    EXPECT_EQ(c.model.barCount(2), 1) << "empty blocks go";
    EXPECT_EQ(c.save(db()), std::nullopt);
    EXPECT_EQ(
        rows(u"SELECT JobNo, SeqNo, OperNo, Description FROM JobOperSchedule ORDER BY JobNo"_s),
        QStringList({u"%1|2|2|mill"_s.arg(m_job), u"%1|1|4|lathe"_s.arg(second)}));
}

TEST_P(Scheduling, TwoStationsOnOneOrderKeepEachOthersWork) {
    const qint64 second = job();
    operation(second, 1, 4, u" "_s, 2);
    entry(m_job, 2, u"a"_s);
    entry(m_job, 3, u"b"_s);
    entry(second, 1, u"c"_s);
    const auto elsewhere = station();
    Chart here(db(), u"PO'7"_s);
    Chart there(*elsewhere, u"PO'7"_s);
    // Rows: header, c, header, 1, 2 (a), 3 (b).
    there.model.moveBar(2, 1, {minuteOf(QDate(2026, 3, 9), 420), minuteOf(QDate(2026, 3, 9), 480)});
    there.chart.addEntry(
        4, Entry{.description = u"d"_s, .span = {minuteOf(in, 420), minuteOf(in, 480)}});
    EXPECT_EQ(there.save(*elsewhere), std::nullopt);
    here.model.moveBar(5, 1, {minuteOf(QDate(2026, 3, 4), 420), minuteOf(QDate(2026, 3, 4), 480)});
    EXPECT_EQ(here.save(db()), std::nullopt);
    EXPECT_EQ(rows(u"SELECT Description, StartDate FROM JobOperSchedule ORDER BY Description"_s),
              QStringList({"a|3/4/2026", "b|3/3/2026", "c|3/9/2026", "d|3/2/2026"}));

    Chart late(db(), u"PO'7"_s);
    Chart early(*elsewhere, u"PO'7"_s);
    early.chart.deleteEntry(5, 1);
    EXPECT_EQ(early.save(*elsewhere), std::nullopt);
    late.model.moveBar(5, 1, {minuteOf(in), minuteOf(in, 60)});
    late.model.moveBar(6, 1, {minuteOf(in), minuteOf(in, 60)});
    const QStringList before = entries();
    const auto refusal = late.save(db());
    ASSERT_TRUE(refusal);
    EXPECT_TRUE(refusal->contains(u"another station")) << refusal->toStdString();
    EXPECT_EQ(entries(), before) << "nothing of it is written";
}

TEST_P(Scheduling, AStationKilledInASaveLeavesTheOldEntriesOrTheNewOnes) {
    for (int i = 0; i < 12; ++i)
        entry(m_job, 1 + i % 3, u"0"_s);
    for (int round = 0; round < 8; ++round) {
        QProcess saver;
        saver.start(QStringLiteral(MIRSA_SCHEDULE_SAVER),
                    {testDatabase().location(), QString::number(m_job)});
        ASSERT_TRUE(saver.waitForReadyRead(20000)) << saver.readAllStandardError().toStdString();
        QThread::msleep(static_cast<unsigned long>(10 + 13 * round % 40));
        saver.kill();
        ASSERT_TRUE(saver.waitForFinished());
        EXPECT_EQ(rows(u"SELECT COUNT(*) FROM JobOperSchedule"_s), QStringList(u"12"_s));
        const QStringList texts = rows(u"SELECT DISTINCT Description FROM JobOperSchedule"_s);
        ASSERT_EQ(texts.size(), 1) << texts.join(u',').toStdString();
        EXPECT_EQ(rows(u"SELECT ScheduleZoom FROM Job"_s),
                  QStringList(QString::number(texts.front().toInt() % 4)));
    }
}

TEST_P(Scheduling, LoadIsWhatFallsIntoWorkingTimesAgainstWhatPeopleGive) {
    people();
    const Capacity capacity = loadCapacity(db(), in);
    EXPECT_EQ(capacity.hoursOn(1, in), 8);
    EXPECT_EQ(capacity.hoursOn(2, in), 2) << "a night shift's first day";
    EXPECT_EQ(capacity.hoursOn(2, in.addDays(1)), 8);
    EXPECT_EQ(capacity.hoursOn(2, in.addDays(5)), 6) << "Saturday until six";
    EXPECT_EQ(capacity.hoursOn(1, in.addDays(5)), 0);

    const Span overNight{minuteOf(in, 13 * 60), minuteOf(in.addDays(1), 8 * 60)};
    LoadTable two(capacity, {1, 2}, in, in.addDays(1));
    two.add({1, 7, u"Milling"_s, overNight});
    two.add({1, 7, u"Milling"_s, overNight});
    EXPECT_EQ(two.days(1)[0].planned, 4) << "13 to 15";
    EXPECT_EQ(two.workOf(1, 0, 2), QStringList(u"Job 7 Milling: 6 h"_s));
    EXPECT_EQ(plannedHours(capacity, 1, overNight), 2 + 1);
    EXPECT_EQ(plannedHours(capacity, 2, overNight), 2 + 6) << "22 to 6";
    const QDate sunday = in.addDays(6);
    EXPECT_EQ(plannedHours(capacity, 1, {minuteOf(sunday, 600), minuteOf(sunday, 690)}), 1.5)
        << "work at no working time still counts";

    // Against the database's own sums: entries of single days within the day shift.
    std::mt19937 random(3);
    for (int i = 0; i < 40; ++i) {
        const int start = 7 + static_cast<int>(random() % 4);
        const int end = start + 1 + static_cast<int>(random() % 4);
        const QDate day = in.addDays(static_cast<int>(random() % 5));
        entry(m_job, 2, QString::number(end - start), day.toString(u"M/d/yyyy"_s),
              storedTime(start * 60), day.toString(u"M/d/yyyy"_s), storedTime(end * 60),
              random() % 2 == 0 ? 2 : 4);
    }
    entry(job(true), 1, u"8"_s); // shipped: no load any more
    LoadTable table(capacity, {1, 2}, in, due);
    for (const PlannedWork& work : loadPlanned(db(), in, due, {}))
        table.add(work);
    for (const qint64 department : {1, 2}) {
        for (int day = 0; day < 5; ++day) {
            const double sum =
                db().lookup(u"SELECT SUM(Val(JobOperSchedule.Description)) FROM (JobOperSchedule "
                            "INNER JOIN Operation ON JobOperSchedule.OperNo = Operation.OperNo) "
                            "INNER JOIN Job ON Job.JobNo = JobOperSchedule.JobNo WHERE "
                            "operdepartment_id = %1 AND Shipped = False AND StartDate = #%2#"_s
                                .arg(department)
                                .arg(in.addDays(day).toString(u"MM/dd/yyyy"_s)))
                    .toDouble();
            EXPECT_NEAR(table.days(department)[static_cast<size_t>(day)].planned, sum, 1e-9);
        }
    }
    EXPECT_TRUE(loadPlanned(db(), in, due, {m_job}).empty());
}

TEST_P(Scheduling, FitPutsTheOperationsIntoFreeHoursOneAfterAnother) {
    people();
    // 8 hours of milling, then 12 of turning; the mill is half taken on the first day.
    run(u"UPDATE JobOper SET Status = ' ' WHERE SeqNo = 1"_s);
    entry(m_job, 2, u"milling"_s);
    Chart c(db(), m_job);
    LoadTable load(loadCapacity(db(), in), {1, 2}, in, due);
    load.add({1, 99, u"x"_s, {minuteOf(in, 420), minuteOf(in, 660)}});
    EXPECT_EQ(fit(c.model, c.chart, m_job, Limits{in, due}, load), QString());
    // Boring takes the mill's 4 free hours, milling the whole next day, turning two nights.
    ASSERT_EQ(c.model.barCount(1), 1);
    EXPECT_EQ(c.model.bar(1, 1).span, (Span{minuteOf(in, 420), minuteOf(in, 660)}));
    EXPECT_EQ(c.model.bar(2, 1).span,
              (Span{minuteOf(in.addDays(1), 420), minuteOf(in.addDays(1), 900)}));
    EXPECT_EQ(c.model.bar(3, 1).span.start, minuteOf(in.addDays(1), 22 * 60));
    double turning = 0;
    for (int bar = 1; bar <= c.model.barCount(3); ++bar)
        turning += plannedHours(load.capacity(), 2, c.model.bar(3, bar).span);
    EXPECT_NEAR(turning, 12, 1e-9);
    c.model.undo();
    EXPECT_FALSE(c.chart.isChanged()) << "one step back";

    const QString refusal = fit(c.model, c.chart, m_job, Limits{in, in.addDays(1)}, load);
    EXPECT_EQ(refusal, u"Turning (operation 3 of Job %1) doesn't fit: 10 of its 12 hours are left "
                       "over at the due date."_s.arg(m_job));
    EXPECT_FALSE(c.chart.isChanged());
}

MIRSA_BOTH_ENGINES(Scheduling);
