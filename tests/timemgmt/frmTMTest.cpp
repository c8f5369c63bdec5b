#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/ListView.h"
#include "platform/report/Report.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"
#include "timemgmt/Screens.h"
#include "timemgmt/TimeDialogs.h"

#include <QGroupBox>
#include <QPushButton>
#include <QTabWidget>

#include <chrono>
#include <thread>

using screen::Answer;
using screen::Icon;

namespace {

/// The office at its time records, on Tuesday, 3/10/2026. Hall (1) and Kerr (2) work; Moss (3) has
/// left. Operation 1 is in house at 50 an hour, 2 overhead, 3 a contractor's; job 1 has 4 pieces,
/// and operations 1 and 3.
class TimeScreens : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 10), QTime(9, 0)));
        timemgmt::registerScreens();
        core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
        report::setPreviewer([this](auto document, const auto& where) {
            printed << where.title + u": "_s + document->page(0).text();
        });
        for (const char16_t* person :
             {u"'Hall','Ann','Active'", u"'Kerr','Ben','Active'", u"'Moss','Cal','Terminated'"})
            run(u"INSERT INTO Employee (LastName, FirstName, EmpStatus) VALUES(%1)"_s.arg(
                QString::fromUtf16(person)));
        for (const char16_t* type : {u"I", u"O", u"C"})
            run(u"INSERT INTO Operation (Description, OperType, OperShopRate) VALUES('Op %1', "
                "'%1', 50)"_s.arg(QString::fromUtf16(type)));
        run(u"INSERT INTO Job (Quantity, OrderRequired) VALUES(4, False)"_s);
        run(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperShopRate, Status) VALUES(1,1,1,50,' ')"_s);
        run(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperShopRate, Status) VALUES(1,2,3,0,' ')"_s);
        attendance(u"#03/05/2026 7:00:00 AM#,#03/05/2026 3:00:00 PM#");
        attendance(u"#03/09/2026 7:00:00 AM#,NULL");
    }
    void run(const QString& statement) { database().execute(statement); }
    void attendance(const char16_t* range) {
        run(u"INSERT INTO Sign_in (EmpID, Sign_in, Sign_out) VALUES(1,%1)"_s.arg(
            QString::fromUtf16(range)));
    }
    /// A stretch of Hall's on job 1, operation 1.
    void work(const char16_t* sign, const char16_t* start, const char16_t* end,
              const char16_t* hours, const char16_t* status, const char16_t* job = u"1") {
        run(u"INSERT INTO Timelog (EmpID, OperNo, SignID, StartDate, SuspDate, AccumTime, Status, "
            "JobNo) VALUES(1,%6,%1,%2,%3,%4,'%5',%7)"_s.arg(
                QString::fromUtf16(sign), QString::fromUtf16(start), QString::fromUtf16(end),
                QString::fromUtf16(hours), QString::fromUtf16(status),
                job == QStringView(u"1") ? u"1"_s : u"2"_s, QString::fromUtf16(job)));
    }
    /// Hall's 5th: an hour that ended, ten minutes of overhead, two by hand; on the 9th a stretch
    /// that still runs.
    void someWork() {
        work(u"1", u"#03/05/2026 8:00:00 AM#", u"#03/05/2026 9:00:00 AM#", u"1", u"D");
        work(u"1", u"#03/05/2026#", u"NULL", u"2.5", u"0");
        work(u"1", u"#03/05/2026#", u"NULL", u"0.2", u"0", u"0");
        work(u"2", u"#03/09/2026 8:00:00 AM#", u"NULL", u"NULL", u"A");
    }
    void show(const QString& employee, const QString& from, const QString& to = {}) {
        if (!screen::Forms::isLoaded(u"frmTM"_s))
            open(u"frmTM"_s);
        type(u"dbcEmpNum"_s, employee);
        type(u"dbcDate1"_s, from);
        check(u"chkTO"_s, !to.isEmpty());
        if (!to.isEmpty())
            type(u"dbcDate2"_s, to);
        press(u"chkShow"_s);
    }
    QString counts() const { return control<QGroupBox>(u"fraMain"_s)->title(); }
    void page(int index) { control<QTabWidget>(u"tab1"_s)->setCurrentIndex(index); }
    QString job() const {
        return rows(u"SELECT TotalHours, JobShopCost FROM Job"_s).join(u"; "_s) + u"; "_s +
               rows(u"SELECT OperTime_Amount, Status FROM JobOper WHERE OperNo=1"_s).join(u"; "_s);
    }
    QStringList log() const {
        return rows(u"SELECT JobNo, OperNo, SignID, AccumTime, Status, StartDate FROM Timelog "
                    "ORDER BY ID"_s);
    }

    QStringList printed;
};
MIRSA_BOTH_ENGINES(TimeScreens);

} // namespace

TEST_P(TimeScreens, ShowWhatTheCriteriaSay) {
    someWork();
    open(u"frmTM"_s);
    const QString error = u"Error!"_s;
    expectBox(u"You have not selected an Employee!"_s, Answer::Ok, error);
    press(u"chkShow"_s);
    EXPECT_EQ(focusName(), u"dbcEmpNum"_s);
    type(u"txtEmpName"_s, u"hall , ann"_s);
    EXPECT_EQ(text(u"dbcEmpNum"_s), u"1"_s);
    expectBox(u"You have not supplied any dates!"_s, Answer::Ok, error);
    press(u"chkShow"_s);
    EXPECT_FALSE(control<QPushButton>(u"chkShow"_s)->isChecked());
    type(u"dbcDate1"_s, u"3/45"_s);
    expectBox(u"Please enter a date as month/day/year!"_s);
    press(u"chkShow"_s);
    type(u"dbcDate1"_s, QString());
    check(u"optDisplay(1)"_s);
    expectBox(u"You have not selected any Pre-Named Ranges!"_s, Answer::Ok, error);
    press(u"chkShow"_s);
    EXPECT_EQ(counts(), u"Display Criteria - None"_s);
    EXPECT_FALSE(isEnabled(u"cmdNew"_s));

    type(u"dbcDate1"_s, u"3/5/2026\n"_s); // Enter shows
    EXPECT_EQ(counts(), u"3 TimeLog Records and 1 Sign-In Records found matching criteria."_s);
    EXPECT_EQ(cells(u"sprMain"_s),
              (QStringList{u"1|0|1||2.50|3/5/2026||||"_s, u"0|0|2||0.20|3/5/2026||||"_s,
                           u"1|D|1||1.00|3/5/2026 8:00:00 AM|3/5/2026 9:00:00 AM|||"_s}));
    EXPECT_EQ(cells(u"sprMain2"_s), QStringList(u"3/5/2026 7:00:00 AM|3/5/2026 3:00:00 PM"_s));
    EXPECT_TRUE(isEnabled(u"cmdEditParts"_s));
    EXPECT_FALSE(isEnabled(u"cmdEdit"_s));

    choose(u"cboType"_s, u"Finished Records"_s);
    EXPECT_EQ(rowCount(u"sprMain"_s), 0) << "what is shown is what the criteria say";
    EXPECT_FALSE(isEnabled(u"cmdDelete"_s));
    press(u"chkShow"_s);
    EXPECT_EQ(counts(), u"0 TimeLog Records and 1 Sign-In Records found matching criteria."_s);
    choose(u"cboType"_s, u"Active Records"_s);
    const struct {
        const char16_t* name;
        int work, attendance;
    } ranges[] = {{u"Today", 0, 0},           {u"Yesterday", 1, 1},
                  {u"Previous 7 Days", 1, 2}, {u"Previous 14 Days", 1, 2},
                  {u"Current Month", 1, 2},   {u"Last Month", 0, 0}};
    for (const auto& range : ranges) {
        choose(u"cboCanned"_s, QString::fromUtf16(range.name));
        press(u"chkShow"_s);
        EXPECT_EQ(rowCount(u"sprMain"_s), range.work)
            << QString::fromUtf16(range.name).toStdString();
        EXPECT_EQ(rowCount(u"sprMain2"_s), range.attendance);
    }
    choose(u"cboType"_s, u"All Records"_s);
    show(u"1"_s, u"3/1/2026"_s, u"3/9/2026"_s);
    EXPECT_EQ(counts(), u"4 TimeLog Records and 2 Sign-In Records found matching criteria."_s);
    run(u"INSERT INTO Sign_in (EmpID, Sign_in) VALUES(1, #03/08/2026 11:59:59 PM#)"_s);
    form().Form_Activate();
    EXPECT_EQ(rowCount(u"sprMain2"_s), 3);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    press(u"chkShow"_s);
    EXPECT_EQ(counts() + text(u"chkShow"_s),
              u"Display Criteria - NoneClick &Here to Show Records"_s);

    auto* screen = screen::Forms::find<timemgmt::TimeScreen>(u"frmTM"_s);
    screen->showRecord(1, QDate(2026, 3, 9), timemgmt::TimePage::Attendance, 2);
    EXPECT_EQ(control<controls::ListView>(u"sprMain2"_s)->selectedKey(), u"T2"_s);
    EXPECT_EQ(rowCount(u"sprMain"_s), 1);
}

TEST_P(TimeScreens, PrintWhatThePageShows) {
    someWork();
    run(u"UPDATE Reports SET [Default] = False WHERE Module = 'Time Management'"_s);
    show(u"1"_s, u"3/5/2026"_s);
    const QString none =
        u"You do not have a Default Report specified for this Module or the Default Report is missing!"_s;
    expectBox(none, Answer::Ok, u"No Default Report"_s);
    press(u"cmdPrintAll"_s);
    run(u"UPDATE Reports SET [Default] = True WHERE FileName = 'Time_Log.rpt'"_s);
    press(u"cmdPrintScr"_s);
    page(1);
    press(u"cmdPrintScr"_s);
    press(u"cmdPrintAll"_s);
    ASSERT_EQ(printed.size(), 3);
    EXPECT_TRUE(printed[0].startsWith(u"Time Management - Report Shown Per TimeLog"_s));
    EXPECT_TRUE(printed[0].contains(u"3.70 hours in all"_s)) << printed[0].toStdString();
    EXPECT_TRUE(printed[1].startsWith(u"Time Management - Report Shown Per Sign-In/Out"_s));
    EXPECT_TRUE(printed[1].contains(u"8.00 hours in all, 3.70 of them booked"_s));
    EXPECT_TRUE(printed[2].startsWith(u"Full TimeLog Report"_s));
}

TEST_P(TimeScreens, DeleteAllButWhatRuns) {
    someWork();
    run(u"UPDATE JobOper SET Status='F' WHERE OperNo=1"_s);
    show(u"1"_s, u"3/1/2026"_s, u"3/10/2026"_s);
    const QString nothing = u"Nothing Selected."_s;
    expectBox(u"Nothing Selected To Delete!"_s, Answer::Ok, nothing);
    control<controls::ListView>(u"sprMain"_s)->clearSelection();
    press(u"cmdDelete"_s);
    go(u"sprMain"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    const QString sure = u"Once Deleted, data will be unrecoverable.  Continue?"_s;
    expectBox(sure, Answer::Cancel, u"Deleting Selected"_s, screen::Buttons::OkCancel);
    press(u"cmdDelete"_s);
    EXPECT_EQ(rowCount(u"sprMain"_s), 4);
    expectBox(sure);
    expectBox(u"Record Number 4 for Employee number 1 could not be deleted because it is active!"_s,
              Answer::Ok, u"Warning!"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(log(), QStringList(u"1|1|2||A|3/9/2026 8:00:00 AM"_s));
    EXPECT_EQ(job(), u"0|0; 0|F"_s) << "a record of it remains";

    page(1);
    go(u"sprMain2"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    run(u"UPDATE Sign_in SET Sign_out = #03/05/2026 3:00:00 PM# WHERE ID = 2"_s);
    expectBox(sure);
    expectBox(u"You cannot delete Sign-In record for Monday, March 9, 2026 7:00:00 AM! There is a "
              "related record in TimeLog!"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM Sign_in"_s), QStringList(u"2"_s));
    run(u"UPDATE Sign_in SET Sign_out = NULL"_s);
    expectBox(sure);
    expectBox(u"You Cannot Delete Record Number 2. This record is still active!"_s);
    selectRow(u"sprMain2"_s, 0);
    press(u"cmdDelete"_s);

    page(0);
    run(u"UPDATE Timelog SET Status = 'D'"_s);
    selectRow(u"sprMain"_s, 0);
    expectBox(sure);
    expectBox(u"You have deleted the All Timelog Records for Operation 1.  The Operation will no "
              "longer be marked as finished!"_s,
              Answer::Ok, u"Notice!"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(job(), u"0|0; 0| "_s);
    EXPECT_EQ(log(), QStringList());
}

TEST_P(TimeScreens, CountPartsAgain) {
    someWork();
    run(u"UPDATE Timelog SET JobNo = NULL WHERE ID = 2"_s);
    show(u"1"_s, u"3/5/2026"_s);
    control<controls::ListView>(u"sprMain"_s)->clearSelection();
    expectBox(u"A Timelog record has to be selected to edit parts qty!"_s, Answer::Ok,
              u"Nothing Selected."_s);
    press(u"cmdEditParts"_s);
    selectRow(u"sprMain"_s, 1); // overhead with job 0: without a word
    press(u"cmdEditParts"_s);
    const QString dialog = u"frmTimeEdit"_s;
    whenShown(dialog, [this] { press(u"cmdCancel"_s); }); // overhead without a job
    selectRow(u"sprMain"_s, 0);
    press(u"cmdEditParts"_s);

    const auto other = anotherStation();
    whenShown(dialog, [&] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), u"Edit Parts - Hall, Ann, 3/5/2026"_s);
        type(u"txtPartsQty"_s, u"-5|'\"x0"_s);
        expectBox(u"Parts Completed may not be negative!"_s);
        press(u"cmdOK"_s);
        type(u"txtPartsQty"_s, u"12345"_s);
        EXPECT_EQ(text(u"txtPartsQty"_s), u"1234"_s);
        type(u"txtPartsScrap"_s, u"-7"_s);
        other->execute(u"UPDATE Timelog SET PartsQty = 9, PartsScrap = 1 WHERE ID = 1"_s);
        const QString changed =
            u"This record has been changed by another user meanwhile: 9 parts completed, 1 "
            "scrapped. Replace them by your entries?"_s;
        expectBox(changed, Answer::No);
        press(u"cmdOK"_s);
        EXPECT_EQ(text(u"txtPartsScrap"_s), u"7"_s);
        expectBox(changed, Answer::Yes);
        press(u"cmdOK"_s);
    });
    doubleClickRow(u"sprMain"_s, 2);
    EXPECT_EQ(rows(u"SELECT PartsQty, PartsScrap FROM Timelog WHERE ID = 1"_s),
              QStringList(u"1234|7"_s));
    EXPECT_TRUE(cells(u"sprMain"_s)[2].endsWith(u"|1234|7"_s));
    other->execute(u"DELETE FROM Timelog WHERE ID = 1"_s);
    expectBox(u"Timelog record # 1  not found! Timelog table may need to be fixed!"_s, Answer::Ok,
              {}, {}, Icon::Critical);
    press(u"cmdEditParts"_s);
    EXPECT_EQ(rowCount(u"sprMain"_s), 2);
}

TEST_P(TimeScreens, CorrectAttendanceAndEndWhatWasLeftOpen) {
    someWork();
    run(u"UPDATE Employee SET SignedIn = True WHERE EmpID = 1"_s);
    show(u"1"_s, u"3/1/2026"_s, u"3/10/2026"_s);
    page(1);
    const QString dialog = u"frmSignAddEdit"_s;
    const QString valid = u"Valid Sign In/Out"_s;
    whenShown(dialog, [&] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle() + text(u"fpSigninDate"_s) + text(u"fpSignoutDate"_s),
                  u"New Sign In - Hall, Ann3/9/20263/9/2026"_s);
        const auto refused = [this](const char16_t* message, const char16_t* field) {
            expectBox(QString::fromUtf16(message), Answer::Ok, {}, {}, Icon::Exclamation);
            press(u"cmdOK"_s);
            EXPECT_EQ(focusName(), QString::fromUtf16(field));
        };
        type(u"fpSigninDate"_s, QString());
        refused(u"Sign In Date may not be blank!", u"fpSigninDate");
        type(u"fpSignoutDate"_s, QString());
        type(u"fpSigninDate"_s, u"3/10/2026"_s);
        refused(u"Sign In Time may not be blank!", u"fpSigninTime");
        EXPECT_EQ(text(u"fpSignoutDate"_s), u"3/10/2026"_s) << "an empty one follows";
        type(u"fpSigninTime"_s, u"7"_s);
        refused(u"Sign Out Time may not be blank!", u"fpSignoutTime");
        type(u"fpSignoutTime"_s, u"7:00a"_s);
        refused(u"Sign In may not be later than or equal to Sign Out!", u"fpSigninDate");
        type(u"fpSignoutTime"_s, u"3p"_s);
        refused(u"Sign In record may be added or changed for past dates only!", u"fpSigninDate");
        type(u"fpSigninDate"_s, u"3/5/2026"_s);
        refused(u"Sign In record may be added or changed for past dates only!", u"fpSignoutDate");
        type(u"fpSignoutDate"_s, u"3/5/2026"_s);
        expectBox(u"Invalid Sign In and Sign Out Range. An existing record with Sign In=3/5/2026 "
                  "7:00:00 AM and Sign Out=3/5/2026 3:00:00 PM conflicts with your entered data!"_s,
                  Answer::Ok, valid, {}, Icon::Exclamation);
        press(u"cmdOK"_s);
        type(u"fpSigninDate"_s, u"3/4/2026"_s);
        type(u"fpSignoutDate"_s, u"3/4/2026"_s);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(focusName() + text(u"fpSignoutDate"_s), u"fpSigninDate"_s);
        typeOn(u"3/3/2026"_s);
        leave();
        EXPECT_EQ(text(u"fpSignoutDate"_s), u"3/3/2026"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(cells(u"sprMain2"_s), (QStringList{u"3/3/2026 7:00:00 AM|3/3/2026 3:00:00 PM"_s,
                                                 u"3/4/2026 7:00:00 AM|3/4/2026 3:00:00 PM"_s,
                                                 u"3/5/2026 7:00:00 AM|3/5/2026 3:00:00 PM"_s,
                                                 u"3/9/2026 7:00:00 AM|"_s}));
    EXPECT_EQ(log()[3], u"1|1|2||A|3/9/2026 8:00:00 AM"_s);

    // The floor forgot to sign out on the 9th.
    const auto other = anotherStation();
    whenShown(dialog, [&] {
        EXPECT_EQ(form().windowTitle() + text(u"fpSigninTime"_s) + text(u"fpSignoutDate"_s),
                  u"Edit Sign In - Hall, Ann, 3/9/202607:00 AM"_s);
        EXPECT_FALSE(isEnabled(u"cmdOKNew"_s));
        type(u"fpSignoutDate"_s, u"3/9/2026"_s);
        type(u"fpSignoutTime"_s, u"2:30p"_s);
        type(u"fpSigninTime"_s, u"8:15"_s);
        expectBox(u"Invalid Sign In and Sign Out Range. Based on employee's Timelog records, Sign "
                  "In should be earlier than or equal to 3/9/2026 8:00:00 AM, and Sign Out should "
                  "be later than or equal to 12:00:00 AM!"_s,
                  Answer::Ok, valid);
        press(u"cmdOK"_s);
        type(u"fpSigninTime"_s, u"7:30"_s);
        other->execute(u"UPDATE Sign_in SET Sign_out = #03/09/2026 2:00:00 PM# WHERE ID = 2"_s);
        const QString changed =
            u"This record has been changed by another user meanwhile: Sign In 3/9/2026 7:00:00 AM, "
            "Sign Out 3/9/2026 2:00:00 PM. Replace it by your entries?"_s;
        expectBox(changed, Answer::No);
        press(u"cmdOK"_s);
        EXPECT_EQ(job(), u"|; 0| "_s);
        expectBox(changed, Answer::Yes);
        expectBox(u"1 record(s) updated in Timelog. Job cost and time have been adjusted!"_s,
                  Answer::Ok, u"Timelog Update"_s, {}, Icon::Information);
        press(u"cmdOK"_s);
    });
    selectRow(u"sprMain2"_s, 3);
    press(u"cmdEdit"_s);
    EXPECT_EQ(cells(u"sprMain2"_s)[3], u"3/9/2026 7:30:00 AM|3/9/2026 2:30:00 PM"_s);
    EXPECT_EQ(log()[3], u"1|1|2|6.5|D|3/9/2026 8:00:00 AM"_s);
    // 10 hours in all, of which the 2.5 by hand and the one of the 5th: at 50 for 4 pieces.
    EXPECT_EQ(job(), u"10|125; 10|D"_s);
    EXPECT_EQ(rows(u"SELECT SignedIn FROM Employee WHERE EmpID = 1"_s), QStringList(u"False"_s));

    // A job of no pieces has no cost each: nothing of the save stays.
    run(u"INSERT INTO Timelog (EmpID, JobNo, OperNo, SignID, StartDate, Status) VALUES(1,1,1,2, "
        "#03/09/2026 10:00:00 AM#,'A')"_s);
    run(u"UPDATE Job SET Quantity = 0"_s);
    whenShown(dialog, [&] {
        type(u"fpSignoutTime"_s, u"2:45p"_s);
        expectRunTimeError(11);
        press(u"cmdOK"_s);
        EXPECT_TRUE(lastRunTimeError.contains(u"quantity of job 1"_s));
        press(u"cmdCancel"_s);
    });
    press(u"cmdEdit"_s);
    EXPECT_EQ(cells(u"sprMain2"_s)[3], u"3/9/2026 7:30:00 AM|3/9/2026 2:30:00 PM"_s);
    other->execute(u"DELETE FROM Sign_in WHERE ID = 2"_s);
    expectBox(u"2 record id not found! Sign_in table may need to be fixed!"_s, Answer::Ok, {}, {},
              Icon::Critical);
    press(u"cmdEdit"_s);
    EXPECT_EQ(rowCount(u"sprMain2"_s), 3);
}

TEST_P(TimeScreens, PutHoursOnOperationsByHand) {
    show(u"3"_s, u"3/5/2026"_s);
    expectBox(u"This Employee is Suspended or Terminated! You cannot add time for This Employee."_s,
              Answer::Ok, u"Error"_s);
    press(u"cmdNew"_s);
    show(u"1"_s, u"3/5/2026"_s);
    whenShown(u"frmNewTime"_s, [&] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(text(u"txtEmpName"_s), u"Hall , Ann"_s);
        const auto refused = [this](const char16_t* message, const char16_t* field) {
            expectBox(QString::fromUtf16(message), Answer::Ok, u"Error"_s, {}, Icon::Critical);
            press(u"cmdOK"_s);
            EXPECT_EQ(focusName(), QString::fromUtf16(field));
        };
        type(u"dbcEmpNum"_s, u"3"_s); // has left: not on the list
        refused(u"You must enter an employee ID!", u"dbcEmpNum");
        type(u"dbcEmpNum"_s, u"1"_s);
        type(u"dbcJobNo"_s, u"77"_s);
        refused(u"You must enter a Job Number!", u"dbcJobNo");
        type(u"dbcJobNo"_s, u"1"_s);
        refused(u"You must enter an Operation!", u"dbcOp");
        type(u"dbcOp"_s, u"3"_s); // a contractor's gets no hours
        refused(u"You must enter an Operation!", u"dbcOp");
        type(u"dbcOpName"_s, u"op i"_s);
        EXPECT_EQ(text(u"dbcOp"_s) + text(u"lblType"_s), u"1In-House Operation"_s);
        refused(u"You must enter a Date!", u"dbcDate");
        choose(u"dbcDate"_s, u"3/5/2026 7:00:00 AM"_s);
        type(u"txtAccum"_s, u"0.004"_s);
        refused(u"You must enter a valid time amount!", u"txtAccum");
        type(u"txtAccum"_s, u"1.25"_s);
        run(u"UPDATE Job SET OrderRequired = True"_s);
        const QString sequential =
            u"Adding time manually to a Sequential Operation Job will convert the Job to "
            "Non-Sequential!   Are You sure you want to continue?"_s;
        expectBox(sequential, Answer::No, u"Warning!"_s, screen::Buttons::YesNo);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(log(), QStringList());
        expectBox(sequential, Answer::Yes);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(rows(u"SELECT OrderRequired FROM Job"_s), QStringList(u"False"_s));
        EXPECT_EQ(text(u"dbcJobNo"_s) + text(u"dbcOp"_s) + text(u"dbcOpName"_s) +
                      text(u"dbcDate"_s) + text(u"txtAccum"_s),
                  u"0.01"_s);

        check(u"chkOver"_s);
        EXPECT_FALSE(isEnabled(u"dbcJobNo"_s));
        choose(u"dbcOpName"_s, u"Op O"_s);
        EXPECT_EQ(text(u"lblType"_s), u"Overhead Operation"_s);
        choose(u"dbcDate"_s, u"3/9/2026 7:00:00 AM"_s);
        press(u"cmdOKNew"_s);
        EXPECT_FALSE(isChecked(u"chkOver"_s));
        check(u"chkOver"_s);
        choose(u"dbcOpName"_s, u"Op O"_s);
        choose(u"dbcDate"_s, u"3/5/2026 7:00:00 AM"_s);
        anotherStation()->execute(u"DELETE FROM Sign_in WHERE ID = 1"_s);
        expectBox(u"This sign-in record has been deleted by another user!"_s);
        press(u"cmdOK"_s);
        choose(u"dbcDate"_s, u"3/9/2026 7:00:00 AM"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(log(), (QStringList{u"1|1|1|1.25|0|3/5/2026"_s, u"|2|2|0.01|0|3/9/2026"_s,
                                  u"0|2|2|0.01|0|3/9/2026"_s}));
    EXPECT_EQ(rowCount(u"sprMain"_s), 1);
    EXPECT_EQ(job(), u"1.25|15.625; 1.25| "_s);
}

/// What the steps cost on a server, in waits for it.
TEST_P(TimeScreens, StayWithinTheirBudgets) {
    someWork();
    const auto other = anotherStation();
    const auto within = [&](quint64 budget, const char* step, const std::function<void()>& action) {
        other->execute(u"UPDATE SystemSettings SET FOB = 'Dock'"_s);
        std::this_thread::sleep_for(std::chrono::milliseconds(database().isServer() ? 1050 : 0));
        const quint64 before = database().waits();
        action();
        EXPECT_LE(database().waits() - before, budget) << step;
    };
    within(2, "open", [&] { open(u"frmTM"_s); });
    type(u"dbcEmpNum"_s, u"1"_s);
    choose(u"cboCanned"_s, u"Previous 14 Days"_s);
    within(1, "show", [&] { press(u"chkShow"_s); });
    within(1, "return", [&] { form().Form_Activate(); });
    const auto dialog = [&](const QString& name, const QString& button,
                            const std::function<void()>& steps) {
        quint64 before = database().waits();
        whenShown(name, [&, steps] {
            // The button of the module reads the employee's status first.
            EXPECT_LE(database().waits() - before, 3U) << name.toStdString();
            steps();
        });
        press(button);
    };
    dialog(u"frmNewTime"_s, u"cmdNew"_s, [&] {
        type(u"dbcJobNo"_s, u"1"_s);
        within(1, "choose a job", [&] { leave(); });
        choose(u"dbcOp"_s, u"1"_s);
        choose(u"dbcDate"_s, u"3/5/2026 7:00:00 AM"_s);
        within(4, "save hours", [&] { press(u"cmdOK"_s); });
    });
    page(1);
    for (int i = 0; i < 30; ++i)
        work(u"2", u"#03/09/2026 8:00:00 AM#", u"NULL", u"NULL", u"A");
    selectRow(u"sprMain2"_s, 1);
    dialog(u"frmSignAddEdit"_s, u"cmdEdit"_s, [&] {
        type(u"fpSignoutDate"_s, u"3/9/2026"_s);
        type(u"fpSignoutTime"_s, u"2p"_s);
        expectBoxContaining(u"31 record(s) updated in Timelog."_s);
        within(4, "save an attendance with open work", [&] { press(u"cmdOK"_s); });
    });
    page(0);
    go(u"sprMain"_s);
    key(Qt::Key_A, Qt::ControlModifier);
    expectBox(u"Once Deleted, data will be unrecoverable.  Continue?"_s);
    within(4, "delete 35 records and show the rest", [&] { press(u"cmdDelete"_s); });
    EXPECT_EQ(log(), QStringList());
    EXPECT_EQ(job(), u"0|0; 0| "_s);
}
