#include "platform/values/Literals.h"
#include "timemgmt/OpenWork.h"
#include "timemgmt/modCheckSignIn.h"

#include "timemgmt/Floor.h"
#include "timemgmt/TimeRows.h"

#include <algorithm>
#include <random>

using namespace timemgmt;

class SignIn : public testsupport::TimeRows {
  protected:
    std::optional<Refusal> check(const char16_t* action, qint64 employee, int in, int out,
                                 qint64 id = 0) {
        return CheckSignIn(db(), QString::fromUtf16(action), employee, moment(in), moment(out), id);
    }
};
MIRSA_BOTH_ENGINES(SignIn);

namespace {

/// Rows of chance and what may be done with them, by one rule at a time and without any SQL.
class SignInByChance : public SignIn {
  protected:
    struct Attendance {
        qint64 id = 0, employee = 0;
        Moment in, out;
        std::vector<int> starts, ends; ///< of the work that binds
    };

    int upTo(int n) { return static_cast<int>(m_random() % static_cast<unsigned>(n)); }
    /// Around a few minutes, so that ends often meet or miss each other by a second.
    int near(int minute) { return minute * 60 + (upTo(2) == 0 ? 0 : upTo(3) - 1); }

    void fill() {
        for (const char16_t* table : {u"Sign_in", u"Timelog"})
            db().execute(u"DELETE FROM "_s + QString::fromUtf16(table));
        m_all.assign(18, {});
        for (Attendance& a : m_all) {
            a.employee = 1 + upTo(6);
            const int in = 4 + upTo(20);
            a.in = near(in);
            a.out = upTo(4) == 0 ? Moment() : near(in + 1 + upTo(6));
            if (upTo(12) == 0)
                a.in = {};
            a.id = attendance(a.employee, a.in, a.out);
            for (int n = upTo(4); n > 0; --n)
                addWork(a, in);
        }
    }

    void addWork(Attendance& a, int in) {
        Work w;
        w.sign = a.id;
        w.employee = a.employee;
        const int type = upTo(8); // 0: contractor, 1: deleted since, then overhead and in house
        const bool overhead = type < 4;
        w.operation = type == 0   ? m_contractor
                      : type == 1 ? qint64{9999}
                      : overhead  ? m_overhead
                                  : m_inHouse;
        const int status = upTo(8);
        static const char16_t* const codes[] = {u"A", u"D", u"F", u"x"};
        if (status == 0)
            w.status = {};
        else
            w.status = status == 1 ? u"0"_s : QString::fromUtf16(codes[upTo(4)]);
        if (upTo(10) != 0)
            w.start = near(in + upTo(3));
        if (upTo(3) != 0)
            w.susp = near(in + 1 + upTo(4));
        if (upTo(3) != 0)
            w.finish = near(in + 1 + upTo(4));
        const int supervisor = upTo(3);
        if (supervisor != 0)
            w.supervisor = supervisor == 1 ? a.employee : a.employee + 1;
        work(w);

        if (type < 2 || status < 2)
            return;
        if (w.start)
            a.starts.push_back(*w.start);
        if (w.susp && !overhead)
            a.ends.push_back(*w.susp);
        if (w.finish && (overhead || supervisor == 1))
            a.ends.push_back(*w.finish);
    }

    /// Whether a row and a range have a second in common, counted out; of an open row only its
    /// beginning counts, of one without a beginning only its end.
    static bool meet(const Attendance& a, int from, int to) {
        if (!a.in && !a.out)
            return false;
        const int begin = a.in.value_or(a.out.value_or(0)), end = a.out.value_or(begin);
        for (int second = from; second <= to; ++second) {
            if (second >= begin && second <= end)
                return true;
        }
        return false;
    }

    bool mayBe(const Attendance& edited, bool isNew, int from, int to) const {
        for (const Attendance& other : m_all) {
            const bool concerns =
                other.employee == edited.employee && (isNew || other.id != edited.id);
            if (concerns && meet(other, from, to))
                return false;
        }
        if (isNew)
            return true;
        return std::all_of(edited.starts.begin(), edited.starts.end(),
                           [&](int start) { return start >= from; }) &&
               std::all_of(edited.ends.begin(), edited.ends.end(),
                           [&](int end) { return end <= to; });
    }

    std::mt19937 m_random{51}; // NOLINT(cert-msc51-cpp): the same cases each time
    std::vector<Attendance> m_all;
    qint64 m_inHouse = 0, m_overhead = 0, m_contractor = 0;
};
MIRSA_BOTH_ENGINES(SignInByChance);

} // namespace

TEST_P(SignInByChance, RangesAgreeWithBruteForce) {
    m_inHouse = operation(u"I"_s);
    m_overhead = operation(u"O"_s);
    m_contractor = operation(u"C"_s);
    const int rounds = 20;
    const int cases = GetParam() == testsupport::EngineKind::File ? 5000 : 250;
    int refused[2] = {0, 0};
    for (int round = 0; round < rounds; ++round) {
        fill();
        for (int n = 0; n < cases; ++n) {
            const Attendance& edited = m_all[static_cast<size_t>(upTo(18))];
            const bool isNew = upTo(2) == 0;
            const int minute = edited.in.value_or(600) / 60 - 3 + upTo(6);
            const int from = near(minute);
            const int to = std::max(from, near(minute + upTo(12)));
            const auto refusal =
                check(isNew ? u"New" : u"Edit", edited.employee, from, to, edited.id);
            ASSERT_EQ(!refusal, mayBe(edited, isNew, from, to))
                << "round " << round << (isNew ? ", new " : ", edit ") << edited.id << ": " << from
                << " to " << to;
            refused[isNew] += refusal ? 1 : 0;
        }
    }
    for (const int count : refused) {
        EXPECT_GT(count, rounds * cases / 20);
        EXPECT_LT(count, rounds * cases * 19 / 40);
    }
}

TEST_P(SignIn, SaysWhyNot) {
    const int hour = 3600;
    const qint64 row = attendance(1, 8 * hour, 16 * hour);
    const QString range = u"Invalid Sign In and Sign Out Range. "_s;
    const auto conflict = check(u"New", 1, 16 * hour, 17 * hour);
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->text, range +
                                  u"An existing record with Sign In=3/2/2026 8:00:00 AM and Sign "
                                  "Out=3/2/2026 4:00:00 PM conflicts with your entered data!"_s);
    EXPECT_FALSE(conflict->stop);
    EXPECT_FALSE(check(u"Delete", 1, 0, 0, row));

    work({.sign = row, .operation = operation(u"C"_s), .start = 1, .susp = 2000});
    const qint64 inHouse = operation(u"I"_s);
    work({.sign = row, .operation = inHouse, .status = u"0"_s, .start = 1});
    EXPECT_FALSE(check(u"Edit", 1, 9 * hour, 10 * hour, row)) << "neither kind counts";
    // One entry has lost its start; the other tells when the work began.
    work({.sign = row, .operation = inHouse});
    work({.sign = row, .operation = operation(u"O"_s), .start = 8 * hour});
    const auto early = check(u"Edit", 1, 9 * hour, 10 * hour, row);
    ASSERT_TRUE(early);
    EXPECT_FALSE(early->stop);
    EXPECT_EQ(early->text, range + u"Based on employee's Timelog records, Sign In should be "
                                   "earlier than or equal to 3/2/2026 8:00:00 AM, and Sign Out "
                                   "should be later than or equal to 12:00:00 AM!"_s);
    const auto posted = check(u"Delete", 1, 0, 0, row);
    ASSERT_TRUE(posted);
    EXPECT_EQ(posted->text, u"Time has already been posted for this date and time. You may delete "
                            "this ONLY after all of its activities have been deleted from Time "
                            "Management."_s);
    for (const char16_t* action : {u"Edit", u"Delete"}) {
        const auto missing = check(action, 1, 0, 1, 99);
        ASSERT_TRUE(missing);
        EXPECT_EQ(missing->text, u"99 record id not found! Sign_in table may need to be fixed!"_s);
        EXPECT_TRUE(missing->stop);
    }
}

/// Midnight, years that two digits would move to another century, and the zero date, whose texts
/// leave something out.
TEST_P(SignIn, OddMomentsMeanThemselves) {
    const QTime midnight(0, 0), late(23, 59, 59);
    const struct {
        QDateTime at;
        const char16_t* text;
    } cases[] = {
        {{QDate(2026, 3, 2), midnight, Qt::UTC}, u"3/2/2026"},
        {{QDate(2026, 12, 31), late, Qt::UTC}, u"12/31/2026 11:59:59 PM"},
        {{QDate(1929, 12, 31), QTime(12, 0), Qt::UTC}, u"12/31/1929 12:00:00 PM"},
        {{QDate(2030, 1, 2), QTime(0, 0, 1), Qt::UTC}, u"1/2/2030 12:00:01 AM"},
        {{QDate(1899, 12, 30), QTime(7, 5), Qt::UTC}, u"7:05:00 AM"},
        {{QDate(1899, 12, 30), midnight, Qt::UTC}, u"12/30/1899"},
        {{QDate(203, 4, 5), midnight, Qt::UTC}, u"4/5/203"},
    };
    const qint64 overhead = operation(u"O"_s);
    for (const auto& c : cases) {
        const QString shown = QString::fromUtf16(c.text);
        const qint64 row = attendance(1, {}, {});
        work({.sign = row, .operation = overhead, .start = 0});
        ASSERT_EQ(CloseOpenTimelogs(db(), row, c.at), 1);
        db().execute(u"UPDATE Sign_in SET Sign_in=(SELECT FinishDate FROM Timelog "
                     "WHERE SignID=%1) WHERE ID=%1"_s.arg(row));
        EXPECT_EQ(db().lookup(u"SELECT Sign_in FROM Sign_in WHERE ID=%1"_s.arg(row)),
                  jet::Value(c.at))
            << shown.toStdString();
        const auto met = [&](int from, int to) {
            return CheckSignIn(db(), u"New"_s, 1, c.at.addSecs(from), c.at.addSecs(to), 0);
        };
        const auto conflict = met(0, 0);
        ASSERT_TRUE(conflict) << shown.toStdString();
        EXPECT_TRUE(conflict->text.contains(u"Sign In="_s + shown + u" and Sign Out= conflicts"_s))
            << conflict->text.toStdString();
        EXPECT_FALSE(met(1, 60)) << shown.toStdString();
        EXPECT_FALSE(met(-60, -1)) << shown.toStdString();
        execute(u"DELETE FROM Sign_in");
    }
}

TEST_P(SignIn, MomentsCountAsTheyShow) {
    const qint64 row = attendance(1, 28800, 57600);
    work({.sign = row, .operation = operation(u"O"_s), .start = 28800});
    const auto elsewhere = [](int hour) {
        return QDateTime(QDate(2026, 3, 2), QTime(hour, 0), Qt::OffsetFromUTC, -5 * 3600);
    };
    EXPECT_FALSE(CheckSignIn(db(), u"Edit"_s, 1, elsewhere(8), elsewhere(16), row));
    EXPECT_TRUE(CheckSignIn(db(), u"Edit"_s, 1, elsewhere(9), elsewhere(16), row));
    EXPECT_EQ(CloseOpenTimelogs(db(), row, elsewhere(10)), 1);
    EXPECT_EQ(rows(u"SELECT AccumTime, FinishDate FROM Timelog"_s),
              QStringList(u"2|3/2/2026 10:00:00 AM"_s));
}

/// What other programs store may be finer than what is shown and typed.
TEST_P(SignIn, FractionsOfASecondDontBind) {
    const qint64 row = attendance(1, 28800, 57600);
    const qint64 overhead = operation(u"O"_s);
    work({.sign = row, .operation = overhead, .start = 30000, .finish = 40000});
    work({.sign = row, .operation = overhead, .start = 31000, .finish = 39000});
    testsupport::Floor floor(testDatabase().location());
    if (db().isServer()) {
        ASSERT_GE(floor.run("ALTER TABLE timelog ALTER startdate TYPE timestamp(3), "
                            "ALTER finishdate TYPE timestamp(3)"),
                  0);
    }
    ASSERT_EQ(floor.run("UPDATE timelog SET startdate = '2026-03-02 08:20:00.700', "
                        "finishdate = '2026-03-02 11:06:40.700'"),
              2);
    EXPECT_FALSE(check(u"Edit", 1, 30000, 40000, row));
    const auto late = check(u"Edit", 1, 30001, 40000, row);
    ASSERT_TRUE(late);
    EXPECT_TRUE(late->text.contains(u"equal to 3/2/2026 8:20:00 AM, and Sign Out "
                                    "should be later than or equal to 3/2/2026 "
                                    "11:06:40 AM!"_s))
        << late->text.toStdString();
    EXPECT_TRUE(check(u"Edit", 1, 30000, 39999, row));
}

TEST_P(SignIn, OnlyEditingTheLatestSignsOut) {
    execute(u"INSERT INTO Employee (lastname, SignedIn) VALUES('Hall', True)");
    const qint64 employee = db().lastCounter();
    const qint64 late = attendance(employee, 900, 960);
    const qint64 early = attendance(employee, 480, 570);
    const QString signedIn = u"SELECT SignedIn FROM Employee"_s;
    SignOutIfLatest(db(), employee, early);
    EXPECT_EQ(rows(signedIn), QStringList(u"True"_s));
    SignOutIfLatest(db(), employee, late);
    EXPECT_EQ(rows(signedIn), QStringList(u"False"_s));
}
