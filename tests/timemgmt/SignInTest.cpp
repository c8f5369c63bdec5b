#include "timemgmt/modCheckSignIn.h"

#include "support/DatabaseFixture.h"

#include <algorithm>
#include <random>

using namespace timemgmt;

namespace {

constexpr int none = -1; ///< no moment: Null

QDateTime moment(int minutes) {
    return QDateTime(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC).addSecs(minutes * 60);
}

QString sql(int minutes) {
    return minutes == none
               ? QStringLiteral("NULL")
               : QStringLiteral("#") + jet::Value(moment(minutes)).toText() + QStringLiteral("#");
}

struct Work {
    bool inHouse = true;
    bool ownSupervisor = false;
    int start = 0, susp = none, finish = none;

    /// The latest end that binds.
    int end() const { return inHouse ? std::max(susp, ownSupervisor ? finish : none) : finish; }
};

struct Attendance {
    qint64 id = 0;
    int employee = 0, in = 0, out = none;
    std::vector<Work> work;

    bool touches(int from, int to) const {
        if (out == none)
            return in >= from && in <= to;
        return in <= to && out >= from;
    }
    bool holdsWork(int from, int to) const {
        return std::all_of(work.begin(), work.end(),
                           [&](const Work& w) { return w.start >= from && w.end() <= to; });
    }
};

} // namespace

class SignIn : public testsupport::ShopDatabaseFixture {
  protected:
    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        db().execute(QStringLiteral("INSERT INTO %1 (%2) VALUES(%3)").arg(table, columns, values));
        return db().lastCounter();
    }
    qint64 attendance(int employee, int in, int out) {
        return insert(QStringLiteral("Sign_in"), QStringLiteral("EmpID, Sign_in, Sign_out"),
                      QStringLiteral("%1,%2,%3").arg(employee).arg(sql(in), sql(out)));
    }
    qint64 operation(const QString& type) {
        return insert(QStringLiteral("Operation"),
                      QStringLiteral("Description, OperType, OperShopRate"),
                      QStringLiteral("'%1','%1',50").arg(type));
    }
    qint64 work(qint64 sign, qint64 jobNo, qint64 operNo, const QString& status, int start,
                int susp = none, int finish = none, int supervisor = 0) {
        return insert(
            QStringLiteral("Timelog"),
            QStringLiteral("SignID, JobNo, OperNo, EmpID, Status, StartDate, SuspDate, FinishDate, "
                           "SupervID"),
            QStringLiteral("%1,%2,%3,1,'%4',%5,%6,%7,%8")
                .arg(sign)
                .arg(jobNo)
                .arg(operNo)
                .arg(status, sql(start), sql(susp), sql(finish))
                .arg(supervisor));
    }
    std::optional<Refusal> check(const char16_t* action, int employee, int in, int out,
                                 qint64 id = 0) {
        return CheckSignIn(db(), QString::fromUtf16(action), employee, moment(in), moment(out), id);
    }
};
MIRSA_BOTH_ENGINES(SignIn);

TEST_P(SignIn, RangesAgreeWithBruteForce) {
    std::mt19937 random(51); // NOLINT(cert-msc51-cpp): the same cases each time
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const qint64 inHouse = operation(QStringLiteral("I")),
                 overhead = operation(QStringLiteral("O"));
    std::vector<Attendance> all(18);
    for (Attendance& a : all) {
        a.employee = 1 + upTo(6);
        a.in = 1 + upTo(60);
        a.out = upTo(4) == 0 ? none : a.in + upTo(8);
        a.id = attendance(a.employee, a.in, a.out);
        for (int n = upTo(3); n > 0; --n) {
            Work w{upTo(2) == 0, upTo(2) == 0, a.in + upTo(3)};
            w.susp = upTo(3) == 0 ? none : w.start + upTo(3);
            w.finish = upTo(3) == 0 ? none : w.start + upTo(3);
            // The rows' own employee is 1.
            work(a.id, 0, w.inHouse ? inHouse : overhead, QStringLiteral("D"), w.start, w.susp,
                 w.finish, w.ownSupervisor ? 1 : 2);
            a.work.push_back(w);
        }
    }
    const int cases = GetParam() == testsupport::EngineKind::File ? 100000 : 5000;
    int refused = 0;
    for (int n = 0; n < cases; ++n) {
        const Attendance& edited = all[static_cast<size_t>(upTo(18))];
        const bool isNew = upTo(2) == 0;
        const int from = std::max(1, edited.in - 3 + upTo(6));
        const int to = from + upTo(12);
        bool expected = isNew || edited.holdsWork(from, to);
        for (const Attendance& other : all) {
            if (other.employee == edited.employee && (isNew || other.id != edited.id))
                expected = expected && !other.touches(from, to);
        }
        const auto refusal = check(isNew ? u"New" : u"Edit", edited.employee, from, to, edited.id);
        ASSERT_EQ(!refusal, expected)
            << (isNew ? "new " : "edit ") << edited.id << ": " << from << " to " << to;
        refused += refusal ? 1 : 0;
    }
    EXPECT_GT(refused, cases / 10);
    EXPECT_LT(refused, cases * 95 / 100);
}

TEST_P(SignIn, SaysWhyNot) {
    const qint64 row = attendance(1, 8 * 60, 16 * 60);
    const QString range = QStringLiteral("Invalid Sign In and Sign Out Range. ");
    const auto conflict = check(u"New", 1, 16 * 60, 17 * 60);
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->text,
              range + QStringLiteral("An existing record with Sign In=3/2/2026 8:00:00 AM and Sign "
                                     "Out=3/2/2026 4:00:00 PM conflicts with your entered data!"));
    EXPECT_FALSE(conflict->stop);
    EXPECT_FALSE(check(u"Delete", 1, 0, 0, row));

    const qint64 outside = operation(QStringLiteral("C"));
    work(row, 0, outside, QStringLiteral("D"), 1, 2000);
    work(row, 0, operation(QStringLiteral("I")), QStringLiteral("0"), 1);
    EXPECT_FALSE(check(u"Edit", 1, 9 * 60, 10 * 60, row)) << "neither kind counts";
    work(row, 0, operation(QStringLiteral("O")), QStringLiteral("A"), 8 * 60);
    const auto early = check(u"Edit", 1, 9 * 60, 10 * 60, row);
    ASSERT_TRUE(early);
    EXPECT_EQ(early->text,
              range + QStringLiteral("Based on employee's Timelog records, Sign In should be "
                                     "earlier than or equal to 3/2/2026 8:00:00 AM, and Sign Out "
                                     "should be later than or equal to 12:00:00 AM!"));
    const auto posted = check(u"Delete", 1, 0, 0, row);
    ASSERT_TRUE(posted);
    EXPECT_EQ(posted->text,
              QStringLiteral("Time has already been posted for this date and time. You may delete "
                             "this ONLY after all of its activities have been deleted from Time "
                             "Management."));
    for (const char16_t* action : {u"Edit", u"Delete"}) {
        const auto missing = check(action, 1, 0, 1, 99);
        ASSERT_TRUE(missing);
        EXPECT_EQ(missing->text,
                  QStringLiteral("99 record id not found! Sign_in table may need to be fixed!"));
        EXPECT_TRUE(missing->stop);
    }
}

TEST_P(SignIn, HandEnteredSignOutEndsOpenWork) {
    const qint64 inHouse = operation(QStringLiteral("I")),
                 overhead = operation(QStringLiteral("O"));
    const qint64 job =
        insert(QStringLiteral("Job"), QStringLiteral("Quantity, TotalHours, JobShopCost"),
               QStringLiteral("4,1,2"));
    insert(QStringLiteral("JobOper"),
           QStringLiteral("JobNo, OperNo, OperTime_Amount, OperShopRate, Status"),
           QStringLiteral("%1,%2,1,50,' '").arg(job).arg(inHouse));
    attendance(1, 0, 60);
    const qint64 row = attendance(1, 480, 570);
    work(row, job, inHouse, QStringLiteral("A"), 480);
    work(row, job, inHouse, QStringLiteral("D"), 480, 500);
    work(row, 0, overhead, QStringLiteral("A"), 570);
    work(row, job, inHouse, QStringLiteral("0"), 480);
    EXPECT_EQ(CloseOpenTimelogs(db(), QStringLiteral("New"), 1, moment(570), 0), 2);
    EXPECT_EQ(rows(QStringLiteral("SELECT Status, AccumTime, SuspDate, FinishDate FROM Timelog "
                                  "ORDER BY ID")),
              (QStringList{QStringLiteral("D|1.5|3/2/2026 9:30:00 AM|"),
                           QStringLiteral("D||3/2/2026 8:20:00 AM|"),
                           QStringLiteral("F|0||3/2/2026 9:30:00 AM"), QStringLiteral("0|||")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT OperTime_Amount, Status FROM JobOper")),
              QStringList(QStringLiteral("2.5|D")));
    // 1.5 hours at 50 over 4 pieces.
    EXPECT_EQ(rows(QStringLiteral("SELECT TotalHours, JobShopCost FROM Job")),
              QStringList(QStringLiteral("2.5|20.75")));
    EXPECT_EQ(CloseOpenTimelogs(db(), QStringLiteral("Edit"), 1, moment(600), row), 0);
    EXPECT_EQ(CloseOpenTimelogs(db(), QStringLiteral("New"), 7, moment(600), 0), 0);

    execute(u"UPDATE JobOper SET Status='F'");
    PostTimeToJob(db(), job, inHouse, 0.25);
    EXPECT_EQ(rows(QStringLiteral("SELECT OperTime_Amount, Status FROM JobOper")),
              QStringList(QStringLiteral("2.75|F")));
}

TEST_P(SignIn, AJobOfNoPiecesLeavesEverythingOpen) {
    const qint64 inHouse = operation(QStringLiteral("I"));
    const qint64 job =
        insert(QStringLiteral("Job"), QStringLiteral("Quantity"), QStringLiteral("0"));
    insert(QStringLiteral("JobOper"),
           QStringLiteral("JobNo, OperNo, OperTime_Amount, OperShopRate"),
           QStringLiteral("%1,%2,1,50").arg(job).arg(inHouse));
    const qint64 row = attendance(1, 480, 570);
    work(row, job, inHouse, QStringLiteral("A"), 480);
    EXPECT_EQ(
        errorOf([&] { CloseOpenTimelogs(db(), QStringLiteral("Edit"), 1, moment(570), row); }),
        jet::errors::divisionByZero);
    EXPECT_EQ(rows(QStringLiteral("SELECT Status, SuspDate FROM Timelog")),
              QStringList(QStringLiteral("A|")));
    EXPECT_EQ(rows(QStringLiteral("SELECT OperTime_Amount FROM JobOper")),
              QStringList(QStringLiteral("1")));
}

TEST_P(SignIn, OnlyEditingTheLatestSignsOut) {
    execute(u"INSERT INTO Employee (lastname, SignedIn) VALUES('Hall', True)");
    const qint64 employee = db().lastCounter();
    const qint64 late = attendance(static_cast<int>(employee), 900, 960);
    const qint64 early = attendance(static_cast<int>(employee), 480, 570);
    const QString signedIn = QStringLiteral("SELECT SignedIn FROM Employee");
    SignOutIfLatest(db(), employee, early);
    EXPECT_EQ(rows(signedIn), QStringList(QStringLiteral("True")));
    SignOutIfLatest(db(), employee, late);
    EXPECT_EQ(rows(signedIn), QStringList(QStringLiteral("False")));
}
