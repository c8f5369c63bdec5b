#include "core/MirsaMain.h"
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
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        timemgmt::registerScreens();
        core::shared().ProgramFolder = m_folder.path();
        open(QStringLiteral("frmShifts"));
    }
    QStringList shifts() {
        return rows(QStringLiteral("SELECT description, earliestsignin, latestsignout FROM shifts "
                                   "ORDER BY id"));
    }
    QStringList timer() {
        return rows(QStringLiteral("SELECT runtime, runtype FROM shiftstimer WHERE shiftsid=1"));
    }
    void timerRows() {
        database().execute(QStringLiteral("INSERT INTO shiftstimer (shiftsid, runtime, runtype) "
                                          "VALUES(1,'10:00 AM','Suspend')"));
    }
    void employee(bool signedIn) {
        database().execute(
            QStringLiteral(
                "INSERT INTO Employee (lastname, shiftsid, signedin) VALUES('Hall',1,%1)")
                .arg(signedIn ? QStringLiteral("True") : QStringLiteral("False")));
    }
    QTemporaryDir m_folder;
    void another(const char16_t* description) {
        database().execute(QStringLiteral("INSERT INTO shifts (description, earliestsignin, "
                                          "latestsignout) VALUES('%1',#10:00 PM#,#6:00 AM#)")
                               .arg(QString::fromUtf16(description)));
        form().unload();
        open(QStringLiteral("frmShifts"));
    }
    const QString addEdit = QStringLiteral("frmShiftsAddEdit");
    const QString timerForm = QStringLiteral("frmShiftsTimer");
    const QString noTime = QStringLiteral("This isn't a time.");
    const QString resetText = QStringLiteral(
        "Note that the AutoMirsa Suspend and Sign-Out Times for this Shift will be reset. You will "
        "have to enter the new times based on the new Earliest and Latest Sign-In Time Range.");
    const QString signedInText =
        QStringLiteral("An employee belonging to this shift is currently signed in. Please sign "
                       "out everyone in the shift before changing this record.");
};
MIRSA_BOTH_ENGINES(ShiftScreens);

TEST_P(ShiftScreens, AddsShiftsAndRefusesWhatIsNone) {
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    whenShown(addEdit, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), QStringLiteral("New Shift"));
        expectBox(QStringLiteral("Description may not be blank!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDescription"), QStringLiteral("Day"));
        expectBox(QStringLiteral("Day already exists!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDescription"), QStringLiteral("N'i|g[h]#t\""));
        EXPECT_EQ(text(QStringLiteral("txtDescription")), QStringLiteral("Night"));
        expectBox(
            QStringLiteral("Earliest Sign-In Time may not be equal to Latest Sign-Out Time!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("fpEarliestSI"), QStringLiteral("10p"));
        type(QStringLiteral("fpLatestSO"), QStringLiteral("99"));
        expectBox(noTime);
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("fpLatestSO"), QStringLiteral("6:00"));
        press(QStringLiteral("cmdOKNew"));
        EXPECT_EQ(text(QStringLiteral("txtDescription")), QString());
        EXPECT_EQ(text(QStringLiteral("fpEarliestSI")), QStringLiteral("10:00 PM"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(shifts(), (QStringList{QStringLiteral("Day|6:00:00 AM|6:00:00 PM"),
                                     QStringLiteral("Night|10:00:00 PM|6:00:00 AM")}));
    EXPECT_EQ(rowCount(QStringLiteral("lvwItems")), 2);
}

TEST_P(ShiftScreens, AnotherRangeResetsTheTimerAnotherNameDoesNot) {
    timerRows();
    whenShown(addEdit, [this] {
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdOKNew")));
        type(QStringLiteral("txtDescription"), QStringLiteral("Early"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(timer(), QStringList(QStringLiteral("10:00 AM|Suspend")));
    whenShown(addEdit, [this] {
        expectBox(resetText, Answer::Ok, {}, {}, screen::Icon::Information);
        type(QStringLiteral("fpEarliestSI"), QStringLiteral("7"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(timer(), QStringList());
    EXPECT_EQ(shifts(), QStringList(QStringLiteral("Early|7:00:00 AM|6:00:00 PM")));
}

TEST_P(ShiftScreens, TouchingTheRangeResetsEvenWhereItStaysTheSame) {
    timerRows();
    whenShown(addEdit, [this] {
        for (int change = 0; change < 4; ++change)
            expectBox(resetText);
        type(QStringLiteral("fpLatestSO"), QStringLiteral("6:00"));
        expectNothingLeft();
        for (int change = 0; change < 2; ++change)
            expectBox(resetText);
        typeOn(QStringLiteral("pm"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(timer(), QStringList());
    EXPECT_EQ(shifts(), QStringList(QStringLiteral("Day|6:00:00 AM|6:00:00 PM")));
}

TEST_P(ShiftScreens, WithoutARangeThereIsNoTimer) {
    whenShown(addEdit, [this] {
        type(QStringLiteral("fpLatestSO"), QString());
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(shifts(), QStringList(QStringLiteral("Day|6:00:00 AM|")));
    expectBox(QStringLiteral(
                  "Please enter the Shift's Earliest Sign-In and Latest Sign-Out Times first!"),
              Answer::Ok, {}, {}, screen::Icon::Exclamation);
    press(QStringLiteral("cmdShiftAuto"));
}

TEST_P(ShiftScreens, AShiftThatAnotherStationDeletedIsSaidToBeMissing) {
    another(u"Night");
    const auto station = anotherStation();
    const QString addEditGone =
        QStringLiteral("1 item no. not found! Shifts table may need to be fixed!");
    const QString timerGone =
        QStringLiteral("1 record id not found! Shifts table may need to be fixed!");
    const auto expectGone = [this](const QString& gone) {
        expectBox(gone, Answer::Ok, {}, {}, screen::Icon::Critical);
    };
    whenShown(timerForm, [&] {
        type(QStringLiteral("fpRunSuspend(0)"), QStringLiteral("10"));
        station->execute(QStringLiteral("DELETE FROM shifts WHERE id=1"));
        expectGone(timerGone);
        press(QStringLiteral("cmdOK"));
        EXPECT_EQ(text(QStringLiteral("fpRunSuspend(0)")), QStringLiteral("10:00 AM"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("cmdShiftAuto"));
    EXPECT_EQ(timer(), QStringList());
    expectGone(timerGone);
    press(QStringLiteral("cmdShiftAuto"));
    EXPECT_EQ(rowCount(QStringLiteral("lvwItems")), 2);
    expectGone(addEditGone);
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(cells(QStringLiteral("lvwItems")), QStringList(QStringLiteral("2|Night")));

    whenShown(addEdit, [&] {
        type(QStringLiteral("txtDescription"), QStringLiteral("Late"));
        station->execute(QStringLiteral("DELETE FROM shifts"));
        expectGone(QStringLiteral("2 item no. not found! Shifts table may need to be fixed!"));
        press(QStringLiteral("cmdOK"));
        EXPECT_EQ(text(QStringLiteral("txtDescription")), QStringLiteral("Late"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(rowCount(QStringLiteral("lvwItems")), 0);
    for (const char* button : {"cmdEdit", "cmdDelete", "cmdShiftAuto"})
        press(QString::fromLatin1(button)); // nothing to act on
}

TEST_P(ShiftScreens, TimerShowsFiveOfEachKindInTheirOrder) {
    for (int hour = 7; hour < 13; ++hour)
        database().execute(QStringLiteral("INSERT INTO shiftstimer (shiftsid, runtime, runtype) "
                                          "VALUES(1,'%1:00 %2','%3')")
                               .arg(hour, 2, 10, QLatin1Char('0'))
                               .arg(hour < 12 ? QStringLiteral("AM") : QStringLiteral("PM"),
                                    QStringLiteral("suspend")));
    database().execute(QStringLiteral(
        "INSERT INTO shiftstimer (shiftsid, runtime, runtype) VALUES(1,'05:30:15 PM','Lunch')"));
    const QStringList before = timer();
    const QString last = QStringLiteral("fpRunSuspend(4)");
    whenShown(timerForm, [&] {
        EXPECT_EQ(text(QStringLiteral("fpRunSuspend(0)")), QStringLiteral("07:00 AM"));
        EXPECT_EQ(text(last), QStringLiteral("11:00 AM"));
        EXPECT_EQ(text(QStringLiteral("fpRunSignout(0)")), QStringLiteral("05:30:15 PM"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdShiftAuto"));
    EXPECT_EQ(timer(), before) << "nothing was changed, so nothing is written";
    whenShown(timerForm, [&] {
        type(last, QStringLiteral("25"));
        expectBox(noTime);
        press(QStringLiteral("cmdOK"));
        EXPECT_EQ(focusName(), last);
        EXPECT_EQ(text(last), QString());
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdShiftAuto"));
    QStringList four;
    for (const char16_t* time : {u"07", u"08", u"09", u"10"})
        four << QString::fromUtf16(time) + QStringLiteral(":00 AM|Suspend");
    EXPECT_EQ(timer(), four << QStringLiteral("05:30:15 PM|Signout"));
}

TEST_P(ShiftScreens, TimerTakesRisingTimesOnly) {
    timerRows();
    whenShown(timerForm, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), QStringLiteral("Auto Timer: Day"));
        EXPECT_EQ(text(QStringLiteral("lblLatestSO")), QStringLiteral("06:00 PM"));
        EXPECT_EQ(text(QStringLiteral("fpRunSuspend(0)")), QStringLiteral("10:00 AM"));
        type(QStringLiteral("fpRunSuspend(0)"), QString());
        leave();
        expectBox(QStringLiteral("Please enter at least one Suspend or one Signout time!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("fpRunSuspend(1)"), QStringLiteral("5a"));
        expectBox(
            QStringLiteral("You have entered an invalid Auto Suspend Time Series. Please check."));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("fpRunSuspend(1)"), QStringLiteral("12:15p"));
        type(QStringLiteral("fpRunSignout(4)"), QStringLiteral("25"));
        leave();
        EXPECT_EQ(text(QStringLiteral("fpRunSignout(4)")), QString());
        type(QStringLiteral("fpRunSignout(4)"), QStringLiteral("1800"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdShiftAuto"));
    EXPECT_EQ(timer(), (QStringList{QStringLiteral("12:15 PM|Suspend"),
                                    QStringLiteral("06:00 PM|Signout")}));
}

TEST_P(ShiftScreens, ShiftsInUseStay) {
    employee(false);
    expectBox(QStringLiteral("This shift item has been referenced in the employee table. It cannot "
                             "be deleted!"),
              Answer::Ok, QStringLiteral("Delete"));
    press(QStringLiteral("cmdDelete"));
    employee(true);
    for (const char* button : {"cmdEdit", "cmdDelete"}) {
        expectBox(signedInText);
        press(QString::fromLatin1(button));
    }
    expectBox(signedInText);
    whenShown(timerForm, [this] {
        for (int i = 0; i < 5; ++i) {
            EXPECT_FALSE(isEnabled(QStringLiteral("fpRunSuspend(%1)").arg(i)));
            EXPECT_FALSE(isEnabled(QStringLiteral("fpRunSignout(%1)").arg(i)));
        }
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdShiftAuto"));
    database().execute(QStringLiteral("DELETE FROM Employee"));
    another(u"Night");
    selectRow(QStringLiteral("lvwItems"), 1);
    const auto ask = [this](Answer answer) {
        expectBox(QStringLiteral("Delete this item?"), answer, QStringLiteral("Delete"),
                  screen::Buttons::YesNo);
        press(QStringLiteral("cmdDelete"));
    };
    ask(Answer::No);
    EXPECT_EQ(rowCount(QStringLiteral("lvwItems")), 2);
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList(QStringLiteral("Day|6:00:00 AM|6:00:00 PM")));
    // The last row is selected instead. Sorted otherwise, the place counts and not the number.
    another(u"Extra");
    control<controls::ListView>(QStringLiteral("lvwItems"))->sortByColumn(1, Qt::DescendingOrder);
    selectRow(QStringLiteral("lvwItems"), 0);
    whenShown(addEdit, [this] {
        EXPECT_EQ(text(QStringLiteral("txtDescription")), QStringLiteral("Extra"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList(QStringLiteral("Day|6:00:00 AM|6:00:00 PM")));
    ask(Answer::Yes);
    EXPECT_EQ(shifts(), QStringList());
}

TEST_P(ShiftScreens, NothingChangesWhileTheCompanionRuns) {
    const QByteArray path = QFile::encodeName(core::programFile(QStringLiteral("AutoMirsaOn.txt")));
    const int companion = ::open(path.constData(), O_CREAT | O_RDWR, 0600);
    ASSERT_EQ(::flock(companion, LOCK_EX), 0);
    for (const char* button : {"cmdNew", "cmdEdit", "cmdDelete", "cmdShiftAuto"}) {
        expectBox(QStringLiteral("You may not change any Shift records while the AutoMirsa "
                                 "application is running."),
                  Answer::Ok, QStringLiteral("Work Shifts"));
        press(QString::fromLatin1(button));
    }
    ::close(companion);
    whenShown(addEdit, [this] { press(QStringLiteral("cmdCancel")); });
    press(QStringLiteral("cmdEdit"));
    EXPECT_FALSE(QFile::exists(QFile::decodeName(path)));
}
