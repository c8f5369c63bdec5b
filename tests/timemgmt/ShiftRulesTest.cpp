#include "timemgmt/ShiftRules.h"
#include "platform/values/Literals.h"

#include "support/DatabaseFixture.h"

#include <QFile>
#include <QTime>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace timemgmt;

namespace {

QString clock(int seconds) {
    return QTime(0, 0).addSecs(seconds).toString(u"HH:mm:ss"_s);
}

bool rises(const std::vector<int>& times, size_t from, size_t to) {
    return std::is_sorted(times.begin() + static_cast<long>(from),
                          times.begin() + static_cast<long>(to));
}

/// Whether midnight can be put somewhere: either nowhere, or so that the times rise before and
/// behind it and none behind it passes an end of the shift.
bool expectedValid(const std::vector<int>& times) {
    const int bound = std::min(times.front(), times.back());
    for (size_t midnight = 1; midnight < times.size(); ++midnight) {
        if (rises(times, 0, midnight) && rises(times, midnight, times.size()) &&
            *std::max_element(times.begin() + static_cast<long>(midnight), times.end()) <= bound)
            return true;
    }
    return rises(times, 0, times.size());
}

} // namespace

TEST(TimeSeries, AgreesWithEveryPlaceOfMidnight) {
    std::mt19937 random(53); // NOLINT(cert-msc51-cpp): the same series each time
    // Few moments, so that many are equal, and neighbours that differ in each place of the text.
    const int moments[] = {0,          1,         59,        9 * 3600 + 3599, 10 * 3600,
                           36001,      12 * 3600, 13 * 3600, 20 * 3600 - 1,   20 * 3600,
                           86400 - 60, 86400 - 1};
    int valid = 0;
    for (int n = 0; n < 100000; ++n) {
        std::vector<int> times(1 + random() % 7);
        for (int& time : times)
            time = moments[random() % std::size(moments)];
        // A quarter as they are likely to be entered: rising, from somewhere on.
        if (random() % 4 == 0) {
            std::sort(times.begin(), times.end());
            std::rotate(times.begin(), times.begin() + static_cast<long>(random() % times.size()),
                        times.end());
        }
        QStringList series;
        for (const int time : times)
            series << clock(time);
        ASSERT_EQ(IsValidTimeSeries(series), expectedValid(times))
            << series.join(u' ').toStdString();
        valid += expectedValid(times) ? 1 : 0;
    }
    EXPECT_GT(valid, 10000);
    EXPECT_LT(valid, 90000);
}

TEST(TimeSeries, NightAndDayShifts) {
    const auto series = [](std::initializer_list<int> hours) {
        QStringList texts;
        for (const int hour : hours)
            texts << clock(hour * 3600);
        return IsValidTimeSeries(texts);
    };
    EXPECT_TRUE(series({22, 23, 2, 6}));
    EXPECT_FALSE(series({22, 2, 23, 6}));
    EXPECT_FALSE(series({7, 6, 15}));
    EXPECT_TRUE(series({7, 7, 15, 15}));
    EXPECT_TRUE(series({22, 22, 6, 6}));
}

TEST(TimerTime, HourAndMarkerDecide) {
    for (const char* good : {"12:59 PM", "01:00 AM", "07:75 AM", "1:30 PM"})
        EXPECT_TRUE(isTimerTime(QString::fromLatin1(good))) << good;
    for (const char* bad : {"13:00 PM", "00:30 AM", "07:00", "", "07:00 am"})
        EXPECT_FALSE(isTimerTime(QString::fromLatin1(bad))) << bad;
}

/// The lock has to be another process's: one's own record locks never stand in one's own way.
class Marker : public ::testing::TestWithParam<bool> {};

TEST_P(Marker, HoldsChangesUpWhileTheCompanionHasItLocked) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"AutoMirsaOn.txt"_s);
    EXPECT_TRUE(canChangeShifts(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    const QByteArray name = QFile::encodeName(path);
    std::array<int, 2> ready{}, end{};
    ASSERT_EQ(::pipe(ready.data()) + ::pipe(end.data()), 0);
    const pid_t companion = ::fork();
    if (companion == 0) {
        ::close(end[1]);
        const int handle = ::open(name.constData(), O_RDWR);
        struct flock range = {};
        range.l_type = F_WRLCK;
        range.l_whence = SEEK_SET;
        char byte = GetParam() ? (::flock(handle, LOCK_EX) == 0 ? 'y' : 'n')
                               : (::fcntl(handle, F_SETLK, &range) == 0 ? 'y' : 'n');
        (void)!::write(ready[1], &byte, 1);
        (void)!::read(end[0], &byte, 1);
        ::_exit(0);
    }
    char byte = 'n';
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_EQ(byte, 'y');
    EXPECT_FALSE(canChangeShifts(path));
    EXPECT_TRUE(QFile::exists(path));
    ::close(end[1]);
    int status = 0;
    ASSERT_EQ(::waitpid(companion, &status, 0), companion);
    EXPECT_TRUE(canChangeShifts(path));
    EXPECT_FALSE(QFile::exists(path)) << "what a crashed companion left goes";
    for (const int handle : {ready[0], ready[1], end[0]})
        ::close(handle);
}

INSTANTIATE_TEST_SUITE_P(Locks, Marker, ::testing::Bool(),
                         [](const auto& which) { return which.param ? "WholeFile" : "Record"; });

class ShiftRows : public testsupport::ShopDatabaseFixture {
  protected:
    qint64 day() {
        return db().lookup(u"SELECT id FROM shifts WHERE description='Day'"_s).toLong();
    }
    QStringList timer() { return rows(u"SELECT shiftsid, runtime, runtype FROM shiftstimer"_s); }
};
MIRSA_BOTH_ENGINES(ShiftRows);

TEST_P(ShiftRows, TimerGoesWithTheRangeAndStaysWithTheName) {
    const QString id = QString::number(day());
    saveTimer(db(), day(), {QString(), u"10:00 AM"_s}, {u"05:00 PM"_s, QString()});
    const QStringList both{id + u"|10:00 AM|Suspend"_s, id + u"|05:00 PM|Signout"_s};
    EXPECT_EQ(timer(), both);
    changeShift(db(), day(), {u"Day"_s, u"06:00 AM"_s, QString()}, false);
    EXPECT_EQ(timer(), both);
    EXPECT_EQ(rows(u"SELECT earliestsignin, latestsignout FROM shifts"_s),
              QStringList(u"6:00:00 AM|"_s));
    const Shift shift{u"Day"_s, u"07:00 AM"_s, u"03:00 PM"_s};
    EXPECT_TRUE(changeShift(db(), day(), shift, true));
    EXPECT_EQ(timer(), QStringList());
    EXPECT_FALSE(changeShift(db(), 99, shift, true));
    EXPECT_FALSE(saveTimer(db(), 99, {u"10:00 AM"_s}, {}));
    EXPECT_EQ(timer(), QStringList()) << "no times of a shift that has gone";
}

TEST_P(ShiftRows, DeletingTakesTheTimerAlong) {
    saveTimer(db(), day(), {u"10:00 AM"_s}, {});
    addShift(db(), {u"O'Neil"_s, u"10:00 PM"_s, u"06:00 AM"_s});
    EXPECT_FALSE(isShiftInUse(db(), day()));
    execute(u"INSERT INTO Employee (lastname, shiftsid, signedin) VALUES('Hall', 1, False)");
    EXPECT_TRUE(isShiftInUse(db(), 1));
    EXPECT_FALSE(isShiftSignedIn(db(), 1));
    execute(u"UPDATE Employee SET signedin=True");
    EXPECT_TRUE(isShiftSignedIn(db(), 1));
    deleteShift(db(), day());
    EXPECT_EQ(timer(), QStringList());
    EXPECT_EQ(rows(u"SELECT description, earliestsignin, latestsignout FROM shifts"_s),
              QStringList(u"O'Neil|10:00:00 PM|6:00:00 AM"_s));
}
