#include "core/MirsaMain.h"
#include "platform/controls/ListView.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"
#include "timemgmt/Screens.h"

#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using screen::Answer;

class ShiftScreens : public testsupport::ShopTest {
  protected:
    void prepare() override {
        timemgmt::registerScreens();
        core::shared().ProgramFolder = m_folder.path();
        open(u"frmShifts"_s);
    }
    QStringList shifts() {
        return rows(u"SELECT description, earliestsignin, latestsignout FROM shifts "
                    "ORDER BY id"_s);
    }
    QStringList timer() {
        return rows(u"SELECT runtime, runtype FROM shiftstimer WHERE shiftsid=1"_s);
    }
    void timerRows() {
        database().execute(u"INSERT INTO shiftstimer (shiftsid, runtime, runtype) "
                           "VALUES(1,'10:00 AM','Suspend')"_s);
    }
    void employee(bool signedIn) {
        database().execute(
            u"INSERT INTO Employee (lastname, shiftsid, signedin) VALUES('Hall',1,%1)"_s.arg(
                signedIn ? u"True"_s : u"False"_s));
    }
    QTemporaryDir m_folder;
    void another(const char16_t* description) {
        database().execute(u"INSERT INTO shifts (description, earliestsignin, "
                           "latestsignout) VALUES('%1',#10:00 PM#,#6:00 AM#)"_s.arg(
                               QString::fromUtf16(description)));
        form().unload();
        open(u"frmShifts"_s);
    }
    const QString addEdit = u"frmShiftsAddEdit"_s;
    const QString timerForm = u"frmShiftsTimer"_s;
    const QString noTime = u"This isn't a time."_s;
    const QString resetText =
        u"Note that the AutoMirsa Suspend and Sign-Out Times for this Shift will be reset. You "
        u"will "
        "have to enter the new times based on the new Earliest and Latest Sign-In Time Range."_s;
    const QString signedInText =
        u"An employee belonging to this shift is currently signed in. Please sign "
        "out everyone in the shift before changing this record."_s;
};
MIRSA_BOTH_ENGINES(ShiftScreens);

TEST_P(ShiftScreens, AddsShiftsAndRefusesWhatIsNone) {
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    whenShown(addEdit, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), u"New Shift"_s);
        expectBox(u"Description may not be blank!"_s);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"Day"_s);
        expectBox(u"Day already exists!"_s);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"N'i|g[h]#t\""_s);
        EXPECT_EQ(text(u"txtDescription"_s), u"Night"_s);
        expectBox(u"Earliest Sign-In Time may not be equal to Latest Sign-Out Time!"_s);
        press(u"cmdOK"_s);
        type(u"fpEarliestSI"_s, u"10p"_s);
        type(u"fpLatestSO"_s, u"99"_s);
        expectBox(noTime);
        press(u"cmdOK"_s);
        type(u"fpLatestSO"_s, u"6:00"_s);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(text(u"txtDescription"_s), QString());
        EXPECT_EQ(text(u"fpEarliestSI"_s), u"10:00 PM"_s);
        press(u"cmdCancel"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(shifts(),
              (QStringList{u"Day|6:00:00 AM|6:00:00 PM"_s, u"Night|10:00:00 PM|6:00:00 AM"_s}));
    EXPECT_EQ(rowCount(u"lvwItems"_s), 2);
}

TEST_P(ShiftScreens, AnotherRangeResetsTheTimerAnotherNameDoesNot) {
    timerRows();
    whenShown(addEdit, [this] {
        EXPECT_FALSE(isEnabled(u"cmdOKNew"_s));
        type(u"txtDescription"_s, u"Early"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(timer(), QStringList(u"10:00 AM|Suspend"_s));
    whenShown(addEdit, [this] {
        expectBox(resetText, Answer::Ok, {}, {}, screen::Icon::Information);
        type(u"fpEarliestSI"_s, u"7"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(timer(), QStringList());
    EXPECT_EQ(shifts(), QStringList(u"Early|7:00:00 AM|6:00:00 PM"_s));
}

TEST_P(ShiftScreens, TouchingTheRangeResetsEvenWhereItStaysTheSame) {
    timerRows();
    whenShown(addEdit, [this] {
        for (int change = 0; change < 4; ++change)
            expectBox(resetText);
        type(u"fpLatestSO"_s, u"6:00"_s);
        expectNothingLeft();
        for (int change = 0; change < 2; ++change)
            expectBox(resetText);
        typeOn(u"pm"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(timer(), QStringList());
    EXPECT_EQ(shifts(), QStringList(u"Day|6:00:00 AM|6:00:00 PM"_s));
}

TEST_P(ShiftScreens, WithoutARangeThereIsNoTimer) {
    whenShown(addEdit, [this] {
        type(u"fpLatestSO"_s, QString());
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(shifts(), QStringList(u"Day|6:00:00 AM|"_s));
    expectBox(u"Please enter the Shift's Earliest Sign-In and Latest Sign-Out Times first!"_s,
              Answer::Ok, {}, {}, screen::Icon::Exclamation);
    press(u"cmdShiftAuto"_s);
}

TEST_P(ShiftScreens, AShiftThatAnotherStationDeletedIsSaidToBeMissing) {
    another(u"Night");
    const auto station = anotherStation();
    const QString addEditGone = u"1 item no. not found! Shifts table may need to be fixed!"_s;
    const QString timerGone = u"1 record id not found! Shifts table may need to be fixed!"_s;
    const auto expectGone = [this](const QString& gone) {
        expectBox(gone, Answer::Ok, {}, {}, screen::Icon::Critical);
    };
    whenShown(timerForm, [&] {
        type(u"fpRunSuspend(0)"_s, u"10"_s);
        station->execute(u"DELETE FROM shifts WHERE id=1"_s);
        expectGone(timerGone);
        press(u"cmdOK"_s);
        EXPECT_EQ(text(u"fpRunSuspend(0)"_s), u"10:00 AM"_s);
        press(u"cmdCancel"_s);
    });
    press(u"cmdShiftAuto"_s);
    EXPECT_EQ(timer(), QStringList());
    expectGone(timerGone);
    press(u"cmdShiftAuto"_s);
    EXPECT_EQ(rowCount(u"lvwItems"_s), 2);
    expectGone(addEditGone);
    press(u"cmdEdit"_s);
    EXPECT_EQ(cells(u"lvwItems"_s), QStringList(u"2|Night"_s));

    whenShown(addEdit, [&] {
        type(u"txtDescription"_s, u"Late"_s);
        station->execute(u"DELETE FROM shifts"_s);
        expectGone(u"2 item no. not found! Shifts table may need to be fixed!"_s);
        press(u"cmdOK"_s);
        EXPECT_EQ(text(u"txtDescription"_s), u"Late"_s);
        press(u"cmdCancel"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(rowCount(u"lvwItems"_s), 0);
    for (const char* button : {"cmdEdit", "cmdDelete", "cmdShiftAuto"})
        press(QString::fromLatin1(button)); // nothing to act on
}

TEST_P(ShiftScreens, TimerShowsFiveOfEachKindInTheirOrder) {
    for (int hour = 7; hour < 13; ++hour)
        database().execute(u"INSERT INTO shiftstimer (shiftsid, runtime, runtype) "
                           "VALUES(1,'%1:00 %2','%3')"_s.arg(hour, 2, 10, QLatin1Char('0'))
                               .arg(hour < 12 ? u"AM"_s : u"PM"_s, u"suspend"_s));
    database().execute(
        u"INSERT INTO shiftstimer (shiftsid, runtime, runtype) VALUES(1,'05:30:15 PM','Lunch')"_s);
    const QStringList before = timer();
    const QString last = u"fpRunSuspend(4)"_s;
    whenShown(timerForm, [&] {
        EXPECT_EQ(text(u"fpRunSuspend(0)"_s), u"07:00 AM"_s);
        EXPECT_EQ(text(last), u"11:00 AM"_s);
        EXPECT_EQ(text(u"fpRunSignout(0)"_s), u"05:30:15 PM"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdShiftAuto"_s);
    EXPECT_EQ(timer(), before) << "nothing was changed, so nothing is written";
    whenShown(timerForm, [&] {
        type(last, u"25"_s);
        expectBox(noTime);
        press(u"cmdOK"_s);
        EXPECT_EQ(focusName(), last);
        EXPECT_EQ(text(last), QString());
        press(u"cmdOK"_s);
    });
    press(u"cmdShiftAuto"_s);
    QStringList four;
    for (const char16_t* time : {u"07", u"08", u"09", u"10"})
        four << QString::fromUtf16(time) + u":00 AM|Suspend"_s;
    EXPECT_EQ(timer(), four << u"05:30:15 PM|Signout"_s);
}

TEST_P(ShiftScreens, TimerTakesRisingTimesOnly) {
    timerRows();
    whenShown(timerForm, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), u"Auto Timer: Day"_s);
        EXPECT_EQ(text(u"lblLatestSO"_s), u"06:00 PM"_s);
        EXPECT_EQ(text(u"fpRunSuspend(0)"_s), u"10:00 AM"_s);
        type(u"fpRunSuspend(0)"_s, QString());
        leave();
        expectBox(u"Please enter at least one Suspend or one Signout time!"_s);
        press(u"cmdOK"_s);
        type(u"fpRunSuspend(1)"_s, u"5a"_s);
        expectBox(u"You have entered an invalid Auto Suspend Time Series. Please check."_s);
        press(u"cmdOK"_s);
        type(u"fpRunSuspend(1)"_s, u"12:15p"_s);
        type(u"fpRunSignout(4)"_s, u"25"_s);
        leave();
        EXPECT_EQ(text(u"fpRunSignout(4)"_s), QString());
        type(u"fpRunSignout(4)"_s, u"1800"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdShiftAuto"_s);
    EXPECT_EQ(timer(), (QStringList{u"12:15 PM|Suspend"_s, u"06:00 PM|Signout"_s}));
}

TEST_P(ShiftScreens, ShiftsInUseStay) {
    employee(false);
    expectBox(u"This shift item has been referenced in the employee table. It cannot "
              "be deleted!"_s,
              Answer::Ok, u"Delete"_s);
    press(u"cmdDelete"_s);
    employee(true);
    for (const char* button : {"cmdEdit", "cmdDelete"}) {
        expectBox(signedInText);
        press(QString::fromLatin1(button));
    }
    expectBox(signedInText);
    whenShown(timerForm, [this] {
        for (int i = 0; i < 5; ++i) {
            EXPECT_FALSE(isEnabled(u"fpRunSuspend(%1)"_s.arg(i)));
            EXPECT_FALSE(isEnabled(u"fpRunSignout(%1)"_s.arg(i)));
        }
        press(u"cmdOK"_s);
    });
    press(u"cmdShiftAuto"_s);
    database().execute(u"DELETE FROM Employee"_s);
    another(u"Night");
    selectRow(u"lvwItems"_s, 1);
    const auto ask = [this](Answer answer) {
        expectBox(u"Delete this item?"_s, answer, u"Delete"_s, screen::Buttons::YesNo);
        press(u"cmdDelete"_s);
    };
    ask(Answer::No);
    EXPECT_EQ(rowCount(u"lvwItems"_s), 2);
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList(u"Day|6:00:00 AM|6:00:00 PM"_s));
    // The last row is selected instead. Sorted otherwise, the place counts and not the number.
    another(u"Extra");
    control<controls::ListView>(u"lvwItems"_s)->sortByColumn(1, Qt::DescendingOrder);
    selectRow(u"lvwItems"_s, 0);
    whenShown(addEdit, [this] {
        EXPECT_EQ(text(u"txtDescription"_s), u"Extra"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList(u"Day|6:00:00 AM|6:00:00 PM"_s));
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList());
}

TEST_P(ShiftScreens, NothingChangesWhileTheCompanionRuns) {
    const QByteArray path = QFile::encodeName(core::programFile(u"AutoMirsaOn.txt"_s));
    const int companion = ::open(path.constData(), O_CREAT | O_RDWR, 0600);
    ASSERT_EQ(::flock(companion, LOCK_EX), 0);
    for (const char* button : {"cmdNew", "cmdEdit", "cmdDelete", "cmdShiftAuto"}) {
        expectBox(u"You may not change any Shift records while the AutoMirsa "
                  "application is running."_s,
                  Answer::Ok, u"Work Shifts"_s);
        press(QString::fromLatin1(button));
    }
    ::close(companion);
    whenShown(addEdit, [this] { press(u"cmdCancel"_s); });
    press(u"cmdEdit"_s);
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path)));
}
