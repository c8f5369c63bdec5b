#include "jobs/JobCosting.h"
#include "timemgmt/SignInEntry.h"
#include "timemgmt/TimeDeletion.h"
#include "timemgmt/TimeEntry.h"

#include "timemgmt/Floor.h"
#include "timemgmt/TimeRows.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>

using namespace timemgmt;

namespace {

constexpr int people = 3, kinds = 4;

/// A shop kept by the words of the rules alone: whole seconds and hundredths of hours, no SQL.
struct Shop {
    struct Attendance {
        qint64 employee = 0;
        int in = 0;
        std::optional<int> out;
    };
    struct Work {
        qint64 employee = 0, job = 0; ///< job 0: overhead; -1: overhead that knows no job
        int operation = 0;            ///< 1, 2 in house, 3 overhead, 4 of a contractor
        qint64 sign = 0;
        char status = 'A';
        int start = 0;
        std::optional<int> susp, finish;
        std::optional<int> hundredths;
        int parts = 0;
        bool inHouse() const { return operation <= 2; }
    };
    std::map<qint64, Attendance> attendance;
    std::map<qint64, Work> work;
    std::map<std::pair<qint64, int>, char> status; ///< of the jobs' operations
    std::array<bool, people + 1> signedIn{};

    bool conflicts(qint64 employee, int in, int out, qint64 butFor) const {
        return std::any_of(attendance.begin(), attendance.end(), [&](const auto& row) {
            const auto& [id, other] = row;
            if (other.employee != employee || id == butFor)
                return false;
            const auto within = [&](int moment) { return moment >= in && moment <= out; };
            return within(other.in) || (other.out && within(*other.out)) ||
                   (other.out && other.in<in&& * other.out> out);
        });
    }
    /// Stretches that the floor booked on a row, of the two kinds of operation that count.
    std::vector<qint64> stretches(qint64 sign) const {
        std::vector<qint64> ids;
        for (const auto& [id, row] : work) {
            if (row.sign == sign && row.status != '0' && row.operation <= 3)
                ids.push_back(id);
        }
        return ids;
    }
    bool holds(qint64 sign, int in, int out) const {
        const auto ids = stretches(sign);
        return std::all_of(ids.begin(), ids.end(), [&](qint64 id) {
            const Work& row = work.at(id);
            const auto& end = row.inHouse() ? row.susp : row.finish;
            return row.start >= in && end.value_or(row.start) <= out;
        });
    }
    int close(qint64 sign, int out) {
        int closed = 0;
        for (const qint64 id : stretches(sign)) {
            Work& row = work[id];
            auto& end = row.inHouse() ? row.susp : row.finish;
            if (end)
                continue;
            ++closed;
            end = out;
            row.hundredths = ((out - row.start) * 100 + 1800) / 3600;
            row.status = row.inHouse() ? 'D' : 'F';
            const auto routed = status.find({row.job, row.operation});
            if (row.inHouse() && routed != status.end() && routed->second != 'F')
                routed->second = 'D';
        }
        return closed;
    }
    bool isLatest(qint64 sign) const {
        const Attendance& row = attendance.at(sign);
        return std::none_of(attendance.begin(), attendance.end(), [&](const auto& other) {
            return other.second.employee == row.employee && other.second.in > row.in;
        });
    }
};

class Corrections : public testsupport::TimeRows {
  protected:
    void prepare() override {
        for (const char16_t* type : {u"I", u"I", u"O", u"C"})
            operation(QString::fromUtf16(type));
        for (int employee = 1; employee <= people; ++employee)
            execute(u"INSERT INTO Employee (lastname, SignedIn) VALUES('Hall', False)");
        for (const qint64 quantity : {4, 1, 25}) {
            const qint64 job = insert(u"Job"_s, u"Quantity, OneShopRate"_s,
                                      QString::number(quantity) + u", False"_s);
            for (const int operNo : {1, 2, 4}) {
                if (job == 2 && operNo == 2)
                    continue; // work on it is on no routing
                insert(u"JobOper"_s, u"JobNo, OperNo, OperShopRate, OperTime_Amount, Status"_s,
                       u"%1,%2,%3,%4,' '"_s.arg(job)
                           .arg(operNo)
                           .arg(40 + operNo)
                           .arg(operNo == 4 ? 12 : 0));
                m_shop.status[{job, operNo}] = ' ';
            }
        }
        for (int job = 1; job <= 3; ++job)
            jobs::UpdateJobCost(db(), job); // what it begins with, the contractor's amount
    }

    int upTo(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    /// A moment of one of four days, on a grid of 6 minutes and sometimes a second beside it.
    int someTime() { return upTo(960) * 360 + (upTo(5) == 0 ? 1 : 0); }
    template <class Map>
    qint64 one(const Map& of) {
        return of.empty() ? 0 : std::next(of.begin(), upTo(static_cast<int>(of.size())))->first;
    }
    template <class Map>
    std::vector<qint64> some(const Map& of) {
        std::set<qint64> ids;
        for (int n = upTo(4); n >= 0; --n)
            ids.insert(one(of));
        ids.erase(0);
        return {ids.begin(), ids.end()};
    }
    static QString number(const std::optional<int>& hundredths) {
        return hundredths ? jet::Value(*hundredths / 100.0).toText() : u"NULL"_s;
    }

    // --- the floor
    void floorSignsIn() {
        const qint64 employee = 1 + upTo(people);
        if (m_shop.signedIn[static_cast<size_t>(employee)])
            return;
        const int in = someTime();
        m_shop.attendance[TimeRows::attendance(employee, in, {})] = {employee, in, {}};
        execute(u"UPDATE Employee SET SignedIn = True WHERE EmpID = "_s +
                QString::number(employee));
        m_shop.signedIn[static_cast<size_t>(employee)] = true;
    }
    void floorBegins() {
        const qint64 sign = one(m_shop.attendance);
        if (sign == 0)
            return;
        const auto& row = m_shop.attendance[sign];
        Shop::Work work{row.employee, 0, 1 + upTo(kinds), sign, 'A', 0, {}, {}, {}, 0};
        work.job = work.operation == 3 ? 0 : 1 + upTo(3);
        work.start = row.in + upTo(30) * 360;
        if (row.out)
            work.start = std::min(work.start, *row.out);
        m_shop.work[TimeRows::work({.sign = sign,
                                    .job = work.job,
                                    .operation = work.operation,
                                    .start = work.start,
                                    .employee = row.employee})] = work;
    }
    void floorEnds() {
        const qint64 id = one(m_shop.work);
        if (id == 0 || m_shop.work[id].status != 'A')
            return;
        auto& row = m_shop.work[id];
        const int end = row.start + upTo(20) * 360;
        (row.operation == 3 ? row.finish : row.susp) = end;
        row.status = row.operation == 3 ? 'F' : 'D';
        row.hundredths = (end - row.start) / 36;
        execute(u"UPDATE Timelog SET %1 = %2, Status = '%3', AccumTime = %4 WHERE ID = %5"_s.arg(
            row.operation == 3 ? u"FinishDate"_s : u"SuspDate"_s, sql(end),
            QString(QChar::fromLatin1(row.status)), number(row.hundredths), QString::number(id)));
        m_unrolled.insert(row.job); // the floor doesn't roll the job up
        if (upTo(3) == 0 && m_shop.status.contains({row.job, row.operation})) {
            m_shop.status[{row.job, row.operation}] = 'F';
            execute(
                u"UPDATE JobOper SET Status = 'F' WHERE JobNo = %1 AND OperNo = %2"_s.arg(row.job)
                    .arg(row.operation));
        }
    }

    // --- the office
    void officeSigns() {
        const qint64 id = upTo(2) == 0 ? 0 : one(m_shop.attendance);
        const auto row =
            id == 0 ? Shop::Attendance{1 + upTo(people), someTime(), {}} : m_shop.attendance[id];
        // Often near what stands there, so that its work fits or misses it narrowly.
        const int in = row.in + (upTo(4) - 2) * 180;
        const int out =
            std::max(in + 1, row.out.value_or(row.in + upTo(100) * 360) + (upTo(4) - 1) * 180);
        SignInEntry entry{row.employee, id, moment(in), moment(out), {}};
        if (id != 0)
            entry.loaded = {moment(row.in),
                            row.out ? std::optional(moment(*row.out)) : std::nullopt};
        const SignInSaved saved = SaveSignIn(db(), entry);
        ASSERT_FALSE(saved.changed);
        const bool allowed =
            !m_shop.conflicts(row.employee, in, out, id) && (id == 0 || m_shop.holds(id, in, out));
        ASSERT_EQ(allowed, !saved.refusal)
            << (saved.refusal ? saved.refusal->text : QString()).toStdString();
        if (!allowed)
            return;
        ++m_done;
        m_shop.attendance[saved.id] = {row.employee, in, out};
        if (id != 0) {
            for (const qint64 open : m_shop.stretches(id)) {
                const auto& work = m_shop.work[open];
                if (work.inHouse() && !work.susp &&
                    m_shop.status.contains({work.job, work.operation}))
                    m_unrolled.erase(work.job);
            }
            if (m_shop.isLatest(id))
                m_shop.signedIn[static_cast<size_t>(row.employee)] = false;
        }
        EXPECT_EQ(saved.closed, m_shop.close(saved.id, out));
    }
    void officeDeletesWork() {
        const auto ids = some(m_shop.work);
        const WorkDeleted deleted = DeleteWork(db(), ids);
        qsizetype active = 0;
        std::set<std::pair<qint64, int>> operations;
        for (const qint64 id : ids) {
            const auto row = m_shop.work[id];
            if (row.status == 'A') {
                ++active;
                continue;
            }
            ++m_done;
            m_shop.work.erase(id);
            if (row.job > 0) {
                operations.insert({row.job, row.operation});
                m_unrolled.erase(row.job);
            }
        }
        std::size_t unfinished = 0;
        for (const auto& operation : operations) {
            const bool remain =
                std::any_of(m_shop.work.begin(), m_shop.work.end(), [&](const auto& row) {
                    return std::pair(row.second.job, row.second.operation) == operation;
                });
            const auto routed = m_shop.status.find(operation);
            if (remain || routed == m_shop.status.end())
                continue;
            unfinished += routed->second == 'F' ? 1 : 0;
            routed->second = ' ';
        }
        EXPECT_EQ(deleted.refusals.size(), active);
        EXPECT_EQ(deleted.notices.size(), unfinished);
    }
    void officeDeletesAttendance() {
        const auto ids = some(m_shop.attendance);
        const QStringList refusals = DeleteAttendance(db(), ids);
        qsizetype staying = 0;
        for (const qint64 id : ids) {
            const bool worked = std::any_of(m_shop.work.begin(), m_shop.work.end(),
                                            [&](const auto& row) { return row.second.sign == id; });
            if (!m_shop.attendance[id].out || worked)
                ++staying;
            else
                m_done += static_cast<int>(m_shop.attendance.erase(id));
        }
        EXPECT_EQ(refusals.size(), staying);
    }
    void officeAddsHours() {
        const qint64 sign = one(m_shop.attendance);
        if (sign == 0)
            return;
        const auto& row = m_shop.attendance[sign];
        Shop::Work work{row.employee, 0, 1 + upTo(3), sign, '0', 0, {}, {}, 1 + upTo(900), 0};
        work.job = work.operation < 3 ? 1 + upTo(3) : upTo(2) - 1;
        work.start = row.in - ((row.in % 86400) + 86400) % 86400; // midnight
        const bool sequential = work.job > 0 && upTo(4) == 0;
        if (sequential)
            execute(u"UPDATE Job SET OrderRequired = True");
        ManualTime time{row.employee,
                        work.job < 0 ? std::nullopt : std::optional(work.job),
                        work.operation,
                        sign,
                        *work.hundredths / 100.0,
                        moment(row.in).date(),
                        false};
        const bool routed = work.job < 1 || m_shop.status.contains({work.job, work.operation});
        ManualAnswer answer = AddManualTime(db(), time);
        EXPECT_EQ(answer.sequential, sequential && routed);
        if (answer.sequential) {
            time.endsSequence = true;
            answer = AddManualTime(db(), time);
        }
        if (sequential)
            execute(u"UPDATE Job SET OrderRequired = False");
        EXPECT_EQ(!routed, answer.complaint.has_value());
        if (!routed)
            return;
        ++m_done;
        m_shop.work[db().lookup(u"SELECT MAX(ID) FROM Timelog"_s).toLong()] = work;
        m_unrolled.erase(work.job);
    }
    void officeCountsParts() {
        const qint64 id = one(m_shop.work);
        if (id == 0)
            return;
        auto& row = m_shop.work[id];
        const auto shown = partsOf(db(), id);
        ASSERT_TRUE(shown);
        EXPECT_EQ(shown->done.toLong(), row.parts);
        row.parts = upTo(100);
        bool gone = true;
        EXPECT_FALSE(SaveParts(db(), id, row.parts, 0, *shown, gone) || gone);
        ++m_done;
    }
    void step() {
        // A shop that stays small, however long it is corrected.
        const bool full = m_shop.work.size() > 120 || m_shop.attendance.size() > 60;
        switch (full ? 3 + upTo(4) : upTo(9)) {
        case 0:
            return floorSignsIn();
        case 1:
        case 2:
            return floorBegins();
        case 3:
            return floorEnds();
        case 4:
        case 5:
            return officeSigns();
        case 6:
            return upTo(3) == 0 ? officeDeletesWork() : officeDeletesAttendance();
        case 7:
            return officeAddsHours();
        default:
            return officeCountsParts();
        }
    }

    // --- both beside each other
    QStringList kept() const {
        QStringList texts;
        const auto text = [](const std::optional<int>& seconds) {
            return seconds ? jet::Value(moment(*seconds)).toText() : QString();
        };
        for (const auto& [id, row] : m_shop.attendance)
            texts << u"%1|%2|%3|%4"_s.arg(id).arg(row.employee).arg(text(row.in), text(row.out));
        for (const auto& [id, row] : m_shop.work) {
            texts << u"%1|%2|%3|%4|%5|%6|%7|%8|%9|%10"_s.arg(id)
                         .arg(row.employee)
                         .arg(row.job < 0 ? QString() : QString::number(row.job))
                         .arg(row.operation)
                         .arg(row.sign)
                         .arg(QChar::fromLatin1(row.status))
                         .arg(text(row.start), text(row.susp), text(row.finish),
                              row.hundredths ? jet::Value(*row.hundredths / 100.0).toText()
                                             : QString());
        }
        for (const auto& [operation, status] : m_shop.status)
            texts << QString(QChar::fromLatin1(status));
        for (int employee = 1; employee <= people; ++employee)
            texts << (m_shop.signedIn[static_cast<size_t>(employee)] ? u"True"_s : u"False"_s);
        return texts;
    }
    QStringList stored() {
        return rows(u"SELECT ID, EmpID, Sign_in, Sign_out FROM Sign_in ORDER BY ID"_s) +
               rows(u"SELECT ID, EmpID, JobNo, OperNo, SignID, Status, StartDate, SuspDate, "
                    "FinishDate, AccumTime FROM Timelog ORDER BY ID"_s) +
               rows(u"SELECT Status FROM JobOper ORDER BY JobNo, OperNo"_s) +
               rows(u"SELECT SignedIn FROM Employee ORDER BY EmpID"_s);
    }
    /// The figures of the jobs are one select over time log and routing; those of jobs on which
    /// the floor booked alone since are the floor's.
    void expectCosts() {
        for (const QString& row :
             rows(u"SELECT Job.JobNo, Job.TotalHours, Job.JobShopCost, Job.Quantity, "
                  "Nz(Sum(Booked.Hours), 0), Nz(Sum(Booked.Hours * JobOper.OperShopRate), 0) FROM "
                  "(Job INNER JOIN JobOper ON Job.JobNo = JobOper.JobNo) LEFT JOIN (SELECT JobNo, "
                  "OperNo, Sum(AccumTime) AS Hours FROM Timelog WHERE OperNo < 3 GROUP BY JobNo, "
                  "OperNo) AS Booked ON (JobOper.JobNo = Booked.JobNo) AND (JobOper.OperNo = "
                  "Booked.OperNo) GROUP BY Job.JobNo, Job.TotalHours, Job.JobShopCost, "
                  "Job.Quantity"_s)) {
            const QStringList fields = row.split(u'|');
            if (m_unrolled.contains(fields[0].toLongLong()))
                continue;
            EXPECT_NEAR(fields[1].toDouble(), fields[4].toDouble(), 0.0051) << row.toStdString();
            EXPECT_NEAR(fields[2].toDouble(), (fields[5].toDouble() + 12) / fields[3].toDouble(),
                        0.00006)
                << row.toStdString();
        }
    }
    int execute(const QString& statement) { return db().execute(statement); }
    using TimeRows::execute;

    Shop m_shop;
    std::set<qint64> m_unrolled;
    int m_done = 0;
    std::mt19937 m_random{1910}; // NOLINT(cert-msc51-cpp): the same cases each time
};
MIRSA_BOTH_ENGINES(Corrections);

} // namespace

/// MIRSA_CORRECTIONS says how many steps; some thousand by itself.
TEST_P(Corrections, DoWhatTheRulesSay) {
    const int wanted = qEnvironmentVariableIntValue("MIRSA_CORRECTIONS");
    const int steps = wanted > 0 ? wanted : 1500;
    for (int n = 0; n < steps; ++n) {
        step();
        if (n % 5 != 0 && n > 200)
            continue;
        SCOPED_TRACE(testing::Message() << "step " << n);
        ASSERT_EQ(stored(), kept());
        expectCosts();
        if (HasFailure())
            break;
    }
    EXPECT_GT(m_done, steps / 5) << "enough that was allowed";
}

/// Two offices correct one employee's day while the floor works on it: what each was told was done
/// stands there once, and nothing else.
TEST_P(Corrections, TwoOfficesAndTheFloorLoseNothing) {
    constexpr int rounds = 40;
    const qint64 open = attendance(1, 0, {});
    for (int n = 0; n < rounds; ++n)
        work({.sign = open, .job = 1, .operation = 1, .start = 0});
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    struct Done {
        int added = 0, deleted = 0, hours = 0, closed = 0;
    };
    // Both offices want the same ranges and correct the same row; the hours by hand add up.
    const auto office = [&](jet::Database& database, int which) {
        Done done;
        for (int n = 0; n < rounds; ++n) {
            const int in = 86400 + n * 3600;
            const SignInSaved saved =
                SaveSignIn(database, {1, 0, moment(in), moment(in + 1800), {}});
            done.added += saved.refusal ? 0 : 1;
            AddManualTime(database, {1, 1, 1, open, 0.25, moment(0).date(), false});
            ++done.hours;
            if (!saved.refusal && n % 3 == which) {
                done.deleted += DeleteAttendance(database, {saved.id}).isEmpty() ? 1 : 0;
            }
            if (n % 8 == 7) {
                const auto loaded = signInRow(database, open);
                const SignInSaved edited = SaveSignIn(
                    database, {1, open, moment(0), moment(40000 + n * 10 + which), *loaded});
                done.closed += edited.closed;
            }
        }
        return done;
    };
    const pid_t second = ::fork();
    if (second == 0) {
        const auto database = station();
        const Done done = office(*database, 1);
        (void)!::write(pipe[1], &done, sizeof done);
        ::_exit(0);
    }
    const QString location = testDatabase().location();
    const pid_t terminal = ::fork();
    if (terminal == 0) {
        testsupport::Floor floor(location);
        bool well = true;
        for (int id = 1; id <= rounds; id += 2) {
            floor.begin();
            well = floor.run("UPDATE timelog SET suspdate = '2026-03-02 00:30:00', accumtime = "
                             "0.5, status = 'D' WHERE suspdate IS NULL AND id = " +
                             QByteArray::number(id)) >= 0 &&
                   well;
            floor.commit();
            ::usleep(3000);
        }
        ::_exit(well ? 0 : 1);
    }
    const Done first = office(db(), 0);
    Done other;
    ASSERT_EQ(::read(pipe[0], &other, sizeof other), static_cast<ssize_t>(sizeof other));
    for (const pid_t child : {second, terminal}) {
        int status = 1;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    ::close(pipe[0]);
    ::close(pipe[1]);

    const auto count = [&](const char16_t* of) {
        return db().lookup(u"SELECT COUNT(*) FROM "_s + QString::fromUtf16(of)).toLong();
    };
    EXPECT_GT(first.added, 0);
    EXPECT_GT(other.added, 0);
    EXPECT_EQ(count(u"Sign_in"), 1 + first.added + other.added - first.deleted - other.deleted);
    EXPECT_EQ(db().lookup(u"SELECT COUNT(*) FROM Sign_in AS a INNER JOIN Sign_in AS b ON a.EmpID = "
                          "b.EmpID WHERE a.ID < b.ID AND a.Sign_in <= b.Sign_out AND a.Sign_out >= "
                          "b.Sign_in"_s)
                  .toLong(),
              0)
        << "two attendances share a moment";
    EXPECT_EQ(count(u"Timelog WHERE Status = '0'"), first.hours + other.hours);
    const auto byFloor = count(u"Timelog WHERE AccumTime = 0.5");
    EXPECT_EQ(count(u"Timelog WHERE Status = 'D'"), rounds);
    EXPECT_EQ(byFloor + first.closed + other.closed, rounds) << "each stretch was ended once";
    AddManualTime(db(), {1, 1, 1, open, 0.25, moment(0).date(), false});
    expectCosts();
}
