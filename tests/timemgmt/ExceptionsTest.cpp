#include "TimeShop.h"
#include "timemgmt/exceptions/ExceptionList.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <random>
#include <thread>

using timemgmt::ExceptionKind;
using timemgmt::ExceptionList;
using Record = timemgmt::TimeException::Record;

class TimeExceptions : public testsupport::TimeShop {
  protected:
    using Key = timemgmt::TimeException::Key;

    void prepare() override { makeShop(); }
    std::set<Key> keys(const ExceptionList& list) {
        std::set<Key> all;
        for (const auto& line : list.lines()) {
            EXPECT_TRUE(all.insert(line.key()).second) << line.text.toStdString();
            EXPECT_FALSE(line.text.isEmpty());
        }
        return all;
    }
    std::set<Key> readAnew() {
        ExceptionList fresh;
        EXPECT_TRUE(fresh.readAll(db(), now, [this] { return station(); }));
        return keys(fresh);
    }
};

TEST_P(TimeExceptions, NoneIsInventedAndEveryInjectedFaultIsFoundAndGoesWhenItIsPutRight) {
    ExceptionList list;
    ASSERT_TRUE(list.readAll(db(), now));
    for (const auto& line : list.lines())
        ADD_FAILURE() << line.employee.toStdString() << ": " << line.text.toStdString();
    ASSERT_EQ(list.count(), 0U);

    struct Fault {
        ExceptionKind kind;
        Record record;
        qint64 id;
        QString repair;
    };
    std::vector<Fault> faults;
    const auto fault = [&](ExceptionKind kind, Record record, qint64 id, const QString& repair) {
        faults.push_back({kind, record, id, repair});
    };
    const auto remove = [](const QString& table, qint64 id) {
        return u"DELETE FROM %1 WHERE ID = %2"_s.arg(table).arg(id);
    };
    const auto attendanceFault = [&](ExceptionKind kind, qint64 id) {
        fault(kind, Record::Attendance, id, remove(u"Sign_in"_s, id));
    };
    const auto workFault = [&](ExceptionKind kind, qint64 id) {
        fault(kind, Record::Work, id, remove(u"Timelog"_s, id));
    };
    const qint64 wednesday = // of day2, in the morning
        db().lookup(u"SELECT ID FROM Sign_in WHERE EmpID = 2 AND Sign_in = #3/11/2026 7:00 AM#"_s)
            .toLong();

    const qint64 forgotten = attendance(free, at(12, 23, 30), {});
    db().execute(
        u"UPDATE Sign_in SET Sign_in = #3/11/2026 11:30 PM# WHERE ID = %1"_s.arg(forgotten));
    fault(ExceptionKind::NeverSignedOut, Record::Attendance, forgotten,
          u"UPDATE Sign_in SET Sign_out = #3/12/2026 3:00 AM# WHERE ID = %1"_s.arg(forgotten));
    // The night shift ends at six; its next one hasn't begun at ten.
    const qint64 longNight = attendance(night, at(13, 6, 30), {});
    db().execute(
        u"UPDATE Sign_in SET Sign_in = #3/13/2026 1:59 AM# WHERE ID = %1"_s.arg(longNight));
    db().execute(u"UPDATE Sign_in SET Sign_out = #3/13/2026 1:58 AM# WHERE EmpID = 3 AND Sign_in = "
                 "#3/12/2026 9:50 PM#"_s);
    db().execute(u"UPDATE Timelog SET SuspDate = #3/13/2026 1:58 AM# WHERE EmpID = 3 AND "
                 "StartDate = #3/12/2026 11:00 PM#"_s);
    attendanceFault(ExceptionKind::OpenTooLong, longNight);
    workFault(ExceptionKind::OpenTooLong, work(night, longNight, 0, overhead, at(13, 1, 59), {}));

    workFault(ExceptionKind::OutsideAttendance,
              work(day2, wednesday, open, 3, at(11, 19), at(11, 20)));
    workFault(ExceptionKind::OutsideAttendance,
              work(day2, wednesday, 0, overhead, at(11, 6, 59), at(11, 8)));
    workFault(ExceptionKind::OutsideAttendance, work(day, 99999, open, 3, at(8, 19), at(8, 20)));
    workFault(ExceptionKind::OutsideAttendance,
              work(free, wednesday, open, 3, at(11, 7), at(11, 8)));
    attendanceFault(ExceptionKind::OverlappingAttendance,
                    attendance(day2, at(11, 11, 59), at(11, 11, 59)));

    const qint64 late =
        db().lookup(u"SELECT ID FROM Sign_in WHERE EmpID = 1 AND Sign_in = #3/6/2026 7:00 AM#"_s)
            .toLong();
    workFault(ExceptionKind::ClosedJob, work(day, late, shipped, 1, at(6, 7), at(6, 8)));
    const qint64 deleted = work(day, late, 77777, 1, at(6, 7), at(6, 8));
    workFault(ExceptionKind::ClosedJob, deleted);

    const qint64 tooMuch = work(day, late, open, 1, at(6, 7), at(6, 8), 0.01);
    fault(ExceptionKind::OverEstimate, Record::Operation, operationOf(open, 1),
          u"UPDATE Timelog SET AccumTime = 0 WHERE ID = %1"_s.arg(tooMuch));
    workFault(ExceptionKind::Manual, manual(day, late, open, at(6, 0)));
    db().execute(
        u"UPDATE JobOper SET Status = ' ' WHERE JobNo = %1 AND OperNo = 1"_s.arg(sequential));
    fault(ExceptionKind::OutOfOrder, Record::Operation, operationOf(sequential, 2),
          u"UPDATE JobOper SET Status = 'F' WHERE JobNo = %1 AND OperNo = 1"_s.arg(sequential));

    const qint64 ghost = attendance(gone, at(9, 7), at(9, 9));
    attendanceFault(ExceptionKind::LeftEmployee, ghost);
    workFault(ExceptionKind::LeftEmployee, work(gone, ghost, open, 3, at(9, 7), at(9, 8)));
    const qint64 nobody = attendance(123, at(9, 7), at(9, 9));
    attendanceFault(ExceptionKind::LeftEmployee, nobody);
    workFault(ExceptionKind::LeftEmployee, work(123, nobody, open, 3, at(9, 7), at(9, 8)));

    std::set<Key> expected;
    for (const Fault& each : faults)
        expected.insert({each.kind, {each.record, each.id}});
    list.refresh(db(), now);
    EXPECT_EQ(keys(list), expected);
    EXPECT_EQ(readAnew(), expected);
    for (const Fault& each : faults) {
        SCOPED_TRACE(each.repair.toStdString());
        EXPECT_EQ(db().execute(each.repair), 1);
        // Work that hangs on an attendance that has gone is outside attendance until it goes too.
        std::erase_if(expected, [&](const Key& key) {
            return key == Key{each.kind, {each.record, each.id}};
        });
        list.refresh(db(), now);
        EXPECT_EQ(keys(list), readAnew());
        for (const Key& key : expected)
            EXPECT_TRUE(keys(list).contains(key));
    }
    EXPECT_EQ(list.count(), 0U);
}

TEST_P(TimeExceptions, TheSettingSaysWhichShareOverTheEstimatePasses) {
    db().execute(u"UPDATE SystemSettings SET HoursOverPercent = 24"_s);
    EXPECT_EQ(readAnew(), (std::set<Key>{{ExceptionKind::OverEstimate,
                                          {Record::Operation, operationOf(open, 1)}}}));
}

TEST_P(TimeExceptions, WhateverOthersChangeTheListIsAsIfReadAnew) {
    ExceptionList list;
    ASSERT_TRUE(list.readAll(db(), now));
    std::mt19937 random(17);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const auto some = [&](const QString& table) {
        return db()
            .lookup(u"SELECT MIN(ID) FROM %1 WHERE ID >= %2"_s.arg(table).arg(
                below(db().lookup(u"SELECT MAX(ID) FROM "_s + table).toLong()) + 1))
            .toText();
    };
    const auto moment = [&] { return at(1 + below(12), below(24), below(60)); };
    std::size_t most = 0;
    for (int round = 0; round < 25; ++round) {
        for (int i = 0; i < 4; ++i) {
            const qint64 employee = 1 + below(6);
            switch (below(9)) {
            case 0:
                attendance(employee, moment(), moment());
                break;
            case 1:
                work(employee, below(80), 1 + below(4), 1 + below(5), moment(), moment(), below(9));
                break;
            case 2:
                manual(employee, below(80), 1 + below(4), at(1 + below(12), 0));
                break;
            case 3:
                db().execute(u"DELETE FROM Timelog WHERE ID = "_s + some(u"Timelog"_s));
                break;
            case 4:
                db().execute(u"DELETE FROM Sign_in WHERE ID = "_s + some(u"Sign_in"_s));
                break;
            case 5:
                db().execute(u"UPDATE Sign_in SET Sign_out = %1 WHERE ID = "_s.arg(
                                 below(2) ? literal(moment()) : u"NULL"_s) +
                             some(u"Sign_in"_s));
                break;
            case 6:
                db().execute(u"UPDATE Timelog SET StartDate = %1, Status = '%2' WHERE ID = "_s.arg(
                                 literal(moment()), QString(u"ADF"_s[below(3)])) +
                             some(u"Timelog"_s));
                break;
            case 7:
                db().execute(u"UPDATE Job SET Shipped = %1, ShipDate = %2 WHERE JobNo = %3"_s
                                 .arg(below(2) ? u"True"_s : u"False"_s, literal(moment()))
                                 .arg(1 + below(3)));
                break;
            default:
                db().execute(
                    u"UPDATE Employee SET EmpStatus = '%1', [Terminate] = %2 WHERE EmpID "
                    "= %3"_s.arg(below(2) ? u"Active"_s : u"Terminated"_s, literal(moment()))
                        .arg(employee));
            }
        }
        list.refresh(db(), now);
        ASSERT_EQ(keys(list), readAnew()) << "round " << round;
        most = std::max(most, list.count());
    }
    EXPECT_GT(most, 10U);
}

TEST_P(TimeExceptions, AreReadBesideTheProgramsWork) {
    manual(day, 1, sequential, at(6, 0));
    timemgmt::ExceptionWatch watch(testDatabase().location());
    const auto wait = [&] {
        for (int i = 0; i < 1000 && watch.isReading(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    };
    watch.check(now);
    wait();
    EXPECT_EQ(watch.failure(), QString());
    ASSERT_TRUE(watch.lines());
    ASSERT_EQ(watch.lines()->size(), 1U);
    EXPECT_EQ(watch.lines()->front().employee, u"Day, A"_s);
    EXPECT_EQ(watch.lines()->front().text, u"Job 2 Step: 2.50 hours were entered by hand."_s);
    db().execute(u"DELETE FROM Timelog WHERE Status = '0'"_s);
    watch.check(now);
    wait();
    EXPECT_TRUE(watch.lines()->empty());
}

TEST_P(TimeExceptions, WhatIsKnownServesTheNextRunIfItIsOfThisDatabase) {
    manual(day, 1, sequential, at(6, 0));
    work(free, attendance(free, at(12, 13), at(12, 14)), open, 3, at(12, 13), at(12, 14));
    const QTemporaryDir folder;
    const auto run = [&](const QDateTime& when) {
        timemgmt::ExceptionWatch watch(testDatabase().location(), folder.path());
        watch.check(when);
        for (int i = 0; i < 1000 && watch.isReading(); ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return watch.lines() ? watch.lines()->size() : 0;
    };
    EXPECT_EQ(run(now), 1U);
    const QStringList files = QDir(folder.path()).entryList(QDir::Files);
    ASSERT_EQ(files.size(), 1);
    QFile file(folder.filePath(files[0]));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray kept = file.readAll();
    const auto recalls = [&](const QByteArray& content, const QDateTime& when) {
        return ExceptionList().recall(db(), content, when);
    };
    EXPECT_TRUE(recalls(kept, now));

    // What others did meanwhile, also to records that were recent when it was read last.
    const QDateTime later = now.addDays(20);
    db().execute(u"UPDATE Sign_in SET Sign_out = #3/13/2026 11:00 AM# WHERE Sign_out IS NULL"_s);
    db().execute(u"UPDATE Timelog SET Status = 'D', SuspDate = #3/13/2026 11:30 AM# WHERE "
                 "Status = 'A'"_s);
    db().execute(u"DELETE FROM Timelog WHERE Status = '0'"_s);
    ExceptionList list;
    ASSERT_TRUE(list.recall(db(), kept, later));
    list.refresh(db(), later);
    EXPECT_EQ(list.count(), 2U);
    EXPECT_EQ(keys(list), readAnew());
    EXPECT_EQ(run(later), 2U);

    QByteArray damaged = kept;
    damaged[damaged.size() / 2] = static_cast<char>(damaged.at(damaged.size() / 2) ^ 1);
    EXPECT_FALSE(recalls(damaged, now));
    EXPECT_FALSE(recalls(kept.left(kept.size() - 1), now));
    EXPECT_FALSE(recalls({}, now));
    EXPECT_FALSE(recalls(kept, now.addDays(31)));
    // A database of the same place with other records.
    db().execute(u"UPDATE Timelog SET EmpID = 2 WHERE ID IN (SELECT MAX(ID) FROM Timelog)"_s);
    EXPECT_FALSE(recalls(kept, now));
}

MIRSA_BOTH_ENGINES(TimeExceptions);
