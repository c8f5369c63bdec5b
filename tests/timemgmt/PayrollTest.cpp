#include "core/MirsaMain.h"
#include "platform/report/Report.h"
#include "platform/values/Clock.h"
#include "support/CsvReader.h"
#include "support/Gallery.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"
#include "timemgmt/Screens.h"
#include "timemgmt/payroll/PayrollHours.h"

#include <QFile>

#include <random>

using namespace timemgmt;

namespace {

constexpr int minutesPerDay = 1440;
const QDate first(2026, 3, 2);

/// What the rules say, minute by minute: in minutes from the first day's midnight.
struct Oracle {
    struct Span {
        int from = 0, to = 0; ///< to < 0: no end
    };
    bool hasRange = true;
    int start = 0, length = 0; ///< of the range
    std::vector<int> suspends; ///< minutes after midnight
    std::vector<Span> attendance, work;

    bool isOpen(int minute, int day) const {
        const int begin = day * minutesPerDay + start;
        return minute >= begin && minute < begin + length;
    }
    /// The day whose range is nearest.
    int dayOf(int minute) const {
        int best = 0, least = 1 << 30;
        for (int day = -2; day < 20; ++day) {
            const int begin = day * minutesPerDay + start, end = begin + length;
            // From the middle of a minute, in halves.
            const int middle = 2 * minute + 1;
            const int away = isOpen(minute, day) ? 0
                             : minute < begin    ? 2 * begin - middle
                                                 : middle - 2 * end;
            if (away < least) {
                least = away;
                best = day;
            }
        }
        return best;
    }
    bool isBreak(int minute, const Span& present, int day) const {
        const int begin = day * minutesPerDay + start;
        for (const int suspend : suspends) {
            const int at = suspend < start ? (day + 1) * minutesPerDay + suspend
                                           : day * minutesPerDay + suspend;
            const int from = std::max(present.from, begin);
            const int to = std::min(present.to, begin + length);
            if (at <= from || at >= to || minute < at)
                continue;
            int next = to;
            bool runsOn = false;
            for (const Span& stretch : work) {
                if (stretch.from >= at)
                    next = std::min(next, stretch.from);
                else
                    runsOn = runsOn || stretch.to < 0 || stretch.to > at;
            }
            if (!runsOn && next < to && minute < next)
                return true;
        }
        return false;
    }
    std::map<int, std::array<int, 4>> days() const { ///< outside, break, paid, open
        std::map<int, std::array<int, 4>> sums;
        std::set<int> counted;
        int latest = 0;
        for (const Span& span : attendance) {
            if (span.to < 0) {
                ++sums[hasRange ? dayOf(span.from) : span.from / minutesPerDay][3];
                continue;
            }
            const Span own{std::max(span.from, latest), span.to};
            latest = std::max(latest, span.to);
            for (int minute = own.from; minute < own.to; ++minute) {
                if (!hasRange) {
                    ++sums[own.from / minutesPerDay][2];
                    continue;
                }
                const int day = dayOf(minute);
                ++sums[day][!isOpen(minute, day) ? 0 : isBreak(minute, own, day) ? 1 : 2];
            }
        }
        return sums;
    }
};

} // namespace

TEST(Payroll, AgreesWithTheRulesMinuteByMinute) {
    std::mt19937 random(5);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    const Seconds zero = secondsOf(first.startOfDay(Qt::UTC));
    int breaks = 0, outside = 0;
    for (int round = 0; round < 400; ++round) {
        Oracle oracle;
        oracle.hasRange = below(8) > 0;
        oracle.start = below(96) * 15;
        oracle.length = 240 + below(35) * 30; // days part between two minutes
        EmployeeTimes times;
        times.shift = {u"Any"_s, oracle.hasRange, oracle.start * 60, oracle.length * 60, {}};
        if (!oracle.hasRange)
            times.shift = {};
        for (int i = below(4); i > 0 && oracle.hasRange; --i) {
            const int after = 1 + below(oracle.length - 1);
            oracle.suspends.push_back((oracle.start + after) % minutesPerDay);
            times.shift.breaks.push_back(after * 60);
        }
        std::sort(times.shift.breaks.begin(), times.shift.breaks.end());
        const auto make = [&](int count, int length, std::vector<Oracle::Span>& spans,
                              std::vector<TimeSpan>& given) {
            for (int i = 0; i < count; ++i) {
                const int from = minutesPerDay + below(5 * minutesPerDay);
                spans.push_back({from, below(12) == 0 ? -1 : from + below(length)});
            }
            std::sort(spans.begin(), spans.end(),
                      [](const auto& a, const auto& b) { return a.from < b.from; });
            for (const auto& span : spans)
                given.push_back({zero + span.from * 60,
                                 span.to < 0 ? std::nullopt : std::optional(zero + span.to * 60)});
        };
        make(1 + below(12), 900, oracle.attendance, times.attendance);
        make(below(20), 200, oracle.work, times.work);
        // One that never ended counts for a day.
        for (auto& stretch : oracle.work)
            stretch.to = stretch.to < 0 ? stretch.from + minutesPerDay : stretch.to;

        std::vector<PayrollLine> expected;
        for (const auto& [day, sums] : oracle.days()) {
            const auto rounded = [&sums = sums](int i) {
                return std::llround(sums[static_cast<std::size_t>(i)] * 100 / 60.0);
            };
            PayrollLine line;
            line.day = first.addDays(day);
            line.outside = rounded(0);
            line.breaks = rounded(1);
            line.paid = rounded(2);
            line.open = sums[3];
            expected.push_back(line);
            breaks += line.breaks > 0;
            outside += line.outside > 0;
        }
        ASSERT_EQ(payrollDays(times, first.addDays(-9), first.addDays(30)), expected)
            << "round " << round;
    }
    EXPECT_GT(breaks, 50);
    EXPECT_GT(outside, 200);
}

class PayrollScreen : public testsupport::ShopTest {
  protected:
    void prepare() override {
        registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 17), QTime(10, 0)));
        core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
        for (const auto* statement :
             {u"INSERT INTO Shifts (Description, EarliestSignIn, LatestSignOut) VALUES('Night', "
              "#10:00 PM#, #6:00 AM#)",
              u"INSERT INTO ShiftsTimer (ShiftsID, RunTime, RunType) VALUES(1, '12:00 PM', "
              "'Suspend')",
              u"INSERT INTO ShiftsTimer (ShiftsID, RunTime, RunType) VALUES(1, '05:30 PM', "
              "'Signout')",
              u"INSERT INTO Employee (lastname, firstname, shiftsid) VALUES('Hall', 'Ann', 1)",
              u"INSERT INTO Employee (lastname, firstname, shiftsid) VALUES('Abel', 'Zoe', 2)",
              u"INSERT INTO Operation (Description, OperType) VALUES('Milling', 'I')",
              // By day: half an hour too early, half an hour's break; next day work runs on.
              u"INSERT INTO Sign_in (EmpID, Sign_in, Sign_out) VALUES(1, #3/9/2026 5:30 AM#, "
              "#3/9/2026 3:00 PM#)",
              u"INSERT INTO Timelog (EmpID, SignID, OperNo, Status, StartDate, SuspDate) VALUES(1, "
              "1, 1, 'D', #3/9/2026 6:00 AM#, #3/9/2026 12:00 PM#)",
              u"INSERT INTO Timelog (EmpID, SignID, OperNo, Status, StartDate, SuspDate) VALUES(1, "
              "1, 1, 'D', #3/9/2026 12:30 PM#, #3/9/2026 3:00 PM#)",
              u"INSERT INTO Sign_in (EmpID, Sign_in, Sign_out) VALUES(1, #3/10/2026 7:00 AM#, "
              "#3/10/2026 3:00 PM#)",
              u"INSERT INTO Timelog (EmpID, SignID, OperNo, Status, StartDate, SuspDate) VALUES(1, "
              "2, 1, 'D', #3/10/2026 7:00 AM#, #3/10/2026 2:00 PM#)",
              u"INSERT INTO Timelog (EmpID, SignID, OperNo, Status, StartDate) VALUES(1, 2, 1, "
              "'0', #3/10/2026#)",
              u"INSERT INTO Sign_in (EmpID, Sign_in) VALUES(1, #3/11/2026 7:00 AM#)",
              // By night, from Sunday before the week into Monday, and from Sunday at its end.
              u"INSERT INTO Sign_in (EmpID, Sign_in, Sign_out) VALUES(2, #3/8/2026 10:00 PM#, "
              "#3/9/2026 6:00 AM#)",
              u"INSERT INTO Sign_in (EmpID, Sign_in, Sign_out) VALUES(2, #3/15/2026 9:50 PM#, "
              "#3/16/2026 6:00 AM#)"})
            database().execute(QString::fromUtf16(statement));
        open(u"frmPayrollHours"_s);
    }
    const QString list = u"lvwHours"_s;
};

TEST_P(PayrollScreen, ShowsLastWeekByDayWeekAndEmployeePrintsItAndWritesIt) {
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    const QStringList days{u"Abel, Zoe|2|3/9/2026|3/15/2026|8.17|0.17|0.00|8.00|"_s,
                           u"Hall, Ann|1|3/9/2026|3/9/2026|9.50|0.50|0.50|8.50|"_s,
                           u"Hall, Ann|1|3/9/2026|3/10/2026|8.00|0.00|0.00|8.00|"_s,
                           u"Hall, Ann|1|3/9/2026|3/11/2026|0.00|0.00|0.00|0.00|1"_s};
    EXPECT_EQ(cells(list), days);
    EXPECT_EQ(text(u"lblPaid"_s), u"24.50"_s);
    choose(u"cboBy"_s, u"Week"_s);
    EXPECT_EQ(cells(list), (QStringList{u"Abel, Zoe|2|3/9/2026||8.17|0.17|0.00|8.00|"_s,
                                        u"Hall, Ann|1|3/9/2026||17.50|0.50|0.50|16.50|1"_s}));
    type(u"dbcEmployee"_s, u"Hall, Ann\n"_s);
    type(u"datTo"_s, u"3/10/2026"_s);
    press(u"cmdShow"_s);
    choose(u"cboBy"_s, u"Employee"_s);
    EXPECT_EQ(cells(list), QStringList{u"Hall, Ann|1|||17.50|0.50|0.50|16.50|"_s});

    QString page;
    report::setPreviewer([&](const std::shared_ptr<const report::Document>& document, const auto&) {
        for (int i = 0; i < document->pageCount(); ++i)
            page += document->page(i).text();
    });
    press(u"cmdPrint"_s);
    EXPECT_TRUE(page.contains(u"Payroll Hours 3/9/2026 to 3/10/2026"_s)) << page.toStdString();
    EXPECT_TRUE(page.contains(u"Tuesday, March 10, 2026"_s));
    EXPECT_EQ(page.count(u"16.50"_s), 3); // of the week, of the employee, of all
    EXPECT_FALSE(page.contains(u"Abel"_s));

    QTemporaryDir folder;
    const QString file = folder.filePath(u"hours.csv"_s);
    expectSaveFile(file);
    pickFromMenu(list, u"Save List as CSV..."_s);
    QFile csv(file);
    ASSERT_TRUE(csv.open(QFile::ReadOnly));
    const auto written = testsupport::readCsv(csv.readAll());
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[0].join(u'|'),
              u"Employee|No.|Week of|Day|Signed in|Outside shift|Breaks|Paid hours|Open"_s);
    EXPECT_EQ(written[1][7], u"16.50"_s);
}

TEST_P(PayrollScreen, AsksForDaysAndAnEmployeeThatMakeSense) {
    type(u"datFrom"_s, u"3/16/2026"_s);
    expectBox(u"The first day may not be later than the last."_s);
    press(u"cmdShow"_s);
    type(u"datFrom"_s, QString());
    expectBox(u"Please enter the first and the last day."_s);
    press(u"cmdShow"_s);
    type(u"datFrom"_s, u"3/9/2026"_s);
    type(u"dbcEmployee"_s, u"Nobody"_s);
    expectBox(u"There is no such employee."_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(rowCount(list), 4);
}

MIRSA_BOTH_ENGINES(PayrollScreen);
