#include "core/records/RecordScreen.h"
#include "masters/EmployeeChecks.h"
#include "masters/Screens.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

namespace {

using masters::EmployeeEntry;
using masters::SalaryEntry;
using screen::Answer;
using screen::Buttons;
using screen::Icon;

TEST(EmployeeChecks, TellTheFirstThingThatIsWrong) {
    EmployeeEntry entry;
    entry.status = u"Terminated"_s;
    entry.ssn = u"12345"_s;
    entry.exemptState = entry.exemptFederal = entry.exemptOther = u"two"_s;
    const auto told = [&entry] {
        const auto wrong = masters::checkEmployee(entry);
        return wrong ? wrong->title + QLatin1Char('|') + wrong->text : QString();
    };
    const QString name = u"Full name required|Both Name fields must be filled out!"_s;
    EXPECT_EQ(told(), name);
    entry.firstName = u"Ann"_s;
    entry.lastName = u"  "_s;
    EXPECT_EQ(told(), name);
    entry.lastName = u"Baker"_s;
    EXPECT_EQ(told(), u"Termination Date required|A terminated employee must have a "
                      "Termination Date!"_s);
    entry.terminationDate = true;
    EXPECT_EQ(told(), u"Work Shift required|Work shift must be filled out!"_s);
    entry.shift = true;
    EXPECT_EQ(told(), u"Erroneous S.S.N.|The S.S.N. field must be blank or "
                      "completely filled out!"_s);
    entry.ssn.clear();
    const QString state = u"State Exemption Error|"_s;
    EXPECT_EQ(told(), state + u"The State exemptions must be a number!"_s);
    entry.exemptState = u"2"_s;
    EXPECT_EQ(told(), u"Federal Exemption Error|The Federal exemptions must be a "
                      "number!"_s);
    entry.exemptFederal = u"1,000"_s;
    EXPECT_EQ(masters::exemptions(entry.exemptFederal), 1000);
    EXPECT_EQ(told(), state + u"The \"Other\" exemptions must be a number!"_s);
    entry.exemptOther = u"40000"_s;
    EXPECT_EQ(told(), state + u"The \"Other\" exemptions must be a number!"_s)
        << "beyond what the column holds";
    entry.exemptOther.clear();
    entry.ssn = u"123456789"_s;
    EXPECT_EQ(told(), QString());
}

TEST(SalaryChecks, TellTheFirstThingThatIsWrong) {
    const QDate today(2026, 3, 2);
    SalaryEntry entry;
    const auto told = [&] {
        const auto wrong = masters::checkSalary(entry, today);
        return wrong ? wrong->title + QLatin1Char('|') + wrong->text : QString();
    };
    EXPECT_EQ(told(), u"|You must enter a Date!"_s);
    entry.date = today.addDays(1);
    EXPECT_EQ(told(), u"Data Missing!|You must enter a Dollar Amount!"_s);
    for (const char* amount : {"ten", "1e300"}) {
        entry.amount = QString::fromLatin1(amount);
        EXPECT_EQ(told(), u"|You must enter a Decimal Dollar value for Amount!"_s);
    }
    entry.amount = u"1,250.50"_s;
    EXPECT_EQ(told(), u"Data Missing!|You must enter a Frequency!"_s);
    entry.frequency = u"Weekly"_s;
    EXPECT_EQ(told(), u"Date Error!|You cannot enter a future date!"_s);
    entry.date = today;
    EXPECT_EQ(told(), QString());
}

/// Stands for the time management screen.
class TimeManagement : public screen::Form, public core::LookupUser {
  public:
    TimeManagement() : Form(u"frmTM"_s, u"Time Management"_s) {}
    void refreshLookup(const QString& table) override { refreshed << table; }
    QStringList refreshed;
};

class Employee : public testsupport::ShopTest {
  protected:
    void prepare() override {
        masters::registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(8, 0)));
        sql("INSERT INTO Shifts (Description) VALUES ('Night')");
    }
    void sql(const char* statement) { database().execute(QString::fromLatin1(statement)); }
    void addThree() {
        sql("INSERT INTO Employee (firstname, lastname, EmpStatus, shiftsid) "
            "VALUES ('Zoe', 'Young', 'Active', 1)");
        sql("INSERT INTO Employee (firstname, lastname, EmpStatus, shiftsid) "
            "VALUES ('Cy', 'O''Neil', 'Terminated', 1)");
        sql("INSERT INTO Employee (firstname, lastname, EmpStatus, shiftsid) "
            "VALUES ('Ann', 'Baker', 'Active', 2)");
    }
    bool openModule() { return open(u"frmEmployee"_s) != nullptr; }
    QString last() const { return text(u"txtLastName"_s); }
    QString mode() const { return text(u"lblEmployeeMode"_s); }
    /// The last names from the row shown back to the first one.
    QStringList back() {
        QStringList names{last()};
        for (int i = 0; i < 2; ++i) {
            key(Qt::Key_Left, Qt::AltModifier);
            names << last();
        }
        return names;
    }
    QStringList pay() const {
        return rows(u"SELECT StartPay, StartFrq, CurrPay, CurrFrq FROM Employee "
                    "WHERE lastname = 'Baker'"_s);
    }
    void fillSalary(const char* date, const char* amount, const char* frequency) {
        type(u"etxtDate"_s, QString::fromLatin1(date));
        type(u"txtAmount"_s, QString::fromLatin1(amount));
        choose(u"cboFrequency"_s, QString::fromLatin1(frequency));
    }
    void addSalary(const char* date, const char* amount, const char* frequency) {
        whenShown(u"frmSalaryAdd"_s, [=, this] {
            fillSalary(date, amount, frequency);
            press(u"cmdSave"_s);
        });
        press(u"cmdAdd"_s);
    }
};

TEST_P(Employee, ANewOneIsActiveAndBeginsHisSalaryHistory) {
    addThree();
    screen::Forms::add(u"frmTM"_s, [] { return std::make_unique<TimeManagement>(); });
    ASSERT_TRUE(open(u"frmTM"_s));
    ASSERT_TRUE(openModule());
    EXPECT_TRUE(isLocked(u"txtNewSalary"_s));
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"txtEmpid"_s), u"???"_s);
    EXPECT_EQ(text(u"cboStatus"_s), u"Active"_s);
    EXPECT_FALSE(isEnabled(u"cboDisplay"_s));
    type(u"txtFirstName"_s, u"Pat"_s);
    type(u"txtLastName"_s, u"D'Or"_s);
    type(u"mskSSN"_s, u"123456789"_s);
    EXPECT_EQ(text(u"mskSSN"_s), u"123-45-6789"_s);
    choose(u"cboMarried"_s, u"Married"_s);
    expectBox(u"Work shift must be filled out!"_s, Answer::Ok, u"Work Shift required"_s, {},
              Icon::Exclamation);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"dbcShift"_s);
    EXPECT_TRUE(control<QWidget>(u"dbcShift"_s)->isVisible()) << "its tab is in front";
    choose(u"dbcShift"_s, u"Night"_s);
    type(u"txtPosition"_s, u"Supervisor"_s);
    EXPECT_TRUE(isChecked(u"chkMJob"_s));
    EXPECT_FALSE(isEnabled(u"chkMJob"_s));
    type(u"etxtHDate"_s, u"2/1/2026"_s);
    type(u"txtNewSalary"_s, u"1.8.5"_s);
    expectBox(u"You must enter a Decimal Dollar value for Amount!"_s);
    press(u"cmdSave"_s);
    type(u"txtNewSalary"_s, u"18.5"_s);
    choose(u"cboNewFreq"_s, u"Hourly"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(last(), u"D'Or"_s);
    EXPECT_EQ(text(u"dbcEmployee"_s), u"D'Or , Pat"_s);
    EXPECT_EQ(text(u"txtNewSalary"_s), QString());
    EXPECT_EQ(text(u"txtCurrFreq"_s), u"Hourly"_s);
    EXPECT_EQ(rows(u"SELECT SSN, MaritalStatus, shiftsid, multijobs, birthdate, StartPay, CurrPay, "
                   "StartFrq, ExempState, ExempFed, QBSent FROM Employee WHERE EmpID = 4"_s),
              QStringList(u"123456789|Married|2|True||18.5|18.5|Hourly|0|0|0"_s));
    EXPECT_EQ(rows(u"SELECT EmpID, SalaryDate, SalaryAmount, SalaryFrequency "
                   "FROM EmployeeSalary"_s),
              QStringList(u"4|2/1/2026|18.5|Hourly"_s));
    EXPECT_EQ(screen::Forms::find<TimeManagement>(u"frmTM"_s)->refreshed,
              QStringList(u"Employee"_s));
}

TEST_P(Employee, TheDisplayNarrowsTheRowsAndSortsAsItWasAskedFor) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(back(), QStringList({u"Baker"_s, u"O'Neil"_s, u"Young"_s})) << "by number";
    choose(u"cboDisplay"_s, u"Active"_s);
    EXPECT_EQ(back(), QStringList({u"Young"_s, u"Baker"_s, u"Baker"_s}))
        << "chosen: by name, the person shown stays";
    type(u"cboDisplay"_s, u"All"_s);
    EXPECT_EQ(last(), u"Baker"_s);
    leave();
    EXPECT_EQ(back(), QStringList({u"Baker"_s, u"O'Neil"_s, u"Young"_s})) << "typed: by number";
    expectBox(u"No Records Available"_s, Answer::Ok, u"No Records"_s);
    choose(u"cboDisplay"_s, u"Suspended"_s);
    EXPECT_EQ(text(u"cboDisplay"_s), u"All"_s);
    EXPECT_EQ(last(), u"Young"_s);
    type(u"cboDisplay"_s, QString());
    expectBox(u"No Records Available"_s);
    leave();
    EXPECT_EQ(text(u"cboDisplay"_s), u"All"_s);
}

TEST_P(Employee, OneWhoLeavesNeedsADateAndStaysShownUntilTheDisplayIsChosenAgain) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(form().control(u"cmdDelete"_s));
    choose(u"cboDisplay"_s, u"Active"_s);
    press(u"cmdEdit"_s);
    choose(u"cboStatus"_s, u"Terminated"_s);
    expectBox(u"A terminated employee must have a Termination Date!"_s, Answer::Ok,
              u"Termination Date required"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"etxtTDate"_s);
    typeOn(u"3/1/2026"_s);
    choose(u"cboStatus"_s, u"Suspended"_s);
    EXPECT_EQ(text(u"etxtTDate"_s), QString());
    choose(u"cboStatus"_s, u"Terminated"_s);
    type(u"etxtTDate"_s, u"3/1/2026"_s);
    type(u"etxtBday"_s, u"2/30/1980"_s);
    expectBoxContaining(u"date"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"etxtBday"_s);
    type(u"etxtBday"_s, u"2/28/1980"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(last(), u"Baker"_s);
    EXPECT_EQ(text(u"cboStatus"_s), u"Terminated"_s);
    choose(u"cboDisplay"_s, u"Active"_s);
    EXPECT_EQ(last(), u"Young"_s);

    whenShown(u"frmEmpFind"_s, [this] {
        type(u"txtData"_s, u"Bak"_s);
        whenShown(u"frmEmpFound"_s, [this] {
            EXPECT_EQ(cells(u"sprEmpFound"_s), QStringList(u"3|Ann|Baker"_s));
            press(u"cmdSelect"_s);
        });
        expectBoxContaining(u"among those shown"_s);
        press(u"cmdFind"_s);
        check(u"optFind2"_s);
        type(u"txtData"_s, u"z"_s);
        whenShown(u"frmEmpFound"_s, [this] { press(u"cmdSelect"_s); });
        press(u"cmdFind"_s);
    });
    press(u"cmdFind"_s);
    EXPECT_EQ(last(), u"Young"_s);
}

TEST_P(Employee, EditKeepsWhatTheFloorAndTheHistoryOwnAndASupervisorHasSeveralJobs) {
    addThree();
    sql("UPDATE Employee SET SignedIn = True, QBSent = 1, CurrPay = 20, CurrFrq = 'Weekly', "
        "SSN = '987654321', [Position] = 'Supervisor', multijobs = False");
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(isChecked(u"chkMJob"_s));
    press(u"cmdEdit"_s);
    EXPECT_TRUE(isChecked(u"chkMJob"_s));
    EXPECT_FALSE(isEnabled(u"chkMJob"_s));
    type(u"mskSSN"_s, u"12345"_s);
    expectBox(u"The S.S.N. field must be blank or completely filled out!"_s, Answer::Ok,
              u"Erroneous S.S.N."_s);
    press(u"cmdSave"_s);
    type(u"mskSSN"_s, QString());
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT SSN, multijobs, SignedIn, QBSent, CurrPay, CurrFrq "
                   "FROM Employee WHERE EmpID = 3"_s),
              QStringList(u"|True|True|1|20|Weekly"_s));
    press(u"cmdEdit"_s);
    type(u"txtPosition"_s, u"Employee"_s);
    EXPECT_TRUE(isEnabled(u"chkMJob"_s));
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);

    sql("UPDATE Shifts SET Description = 'Graveyard' WHERE ID = 2");
    core::refreshNeighbours({u"frmEmployee"_s}, u"Shifts"_s);
    EXPECT_EQ(text(u"dbcShift"_s), u"Graveyard"_s);
}

TEST_P(Employee, TheSalaryHistoryDrivesThePay) {
    addThree();
    ASSERT_TRUE(openModule());
    whenShown(u"frmEmpSalary"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        for (const auto& [button, what] :
             {std::pair{"cmdEdit", "edit"}, std::pair{"cmdDelete", "delete"}}) {
            expectBox(u"You have not selected a record to %1!"_s.arg(QString::fromLatin1(what)),
                      Answer::Ok, u"Nothing Selected"_s);
            press(QString::fromLatin1(button));
        }
        addSalary("2/1/2026", "21.75", "Weekly");
        EXPECT_EQ(pay(), QStringList(u"21.75|Weekly|21.75|Weekly"_s));

        const QString early = u"The date you have entered is earlier than the last Salary date "
                              "currently in the database!  Continue?"_s;
        whenShown(u"frmSalaryAdd"_s, [&] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            expectBox(u"You must enter a Date!"_s);
            press(u"cmdSave"_s);
            fillSalary("1/5/2026", "1,018.505", "Hourly");
            expectBox(early, Answer::Cancel, u"Date Warning!"_s, Buttons::OkCancel);
            press(u"cmdSave"_s);
            expectBox(early, Answer::Ok);
            press(u"cmdSave"_s);
        });
        press(u"cmdAdd"_s);
        EXPECT_EQ(pay(), QStringList(u"1018.51|Hourly|21.75|Weekly"_s))
            << "two decimals reach the employee";
        EXPECT_EQ(cells(u"sprSalary"_s),
                  QStringList({u"1/5/2026|$1,018.51|Hourly"_s, u"2/1/2026|$21.75|Weekly"_s}));
        addSalary("2/1/2026", "30", "Monthly");
        EXPECT_EQ(pay(), QStringList(u"1018.51|Hourly|30|Monthly"_s))
            << "of one day the one entered later";

        clickCell(u"sprSalary"_s, 1, 0);
        whenShown(u"frmSalaryEdit"_s, [this] {
            EXPECT_EQ(text(u"txtAmount"_s), u"21.75"_s);
            EXPECT_EQ(text(u"cboFrequency"_s), u"Weekly"_s);
            type(u"etxtDate"_s, u"1/1/2026"_s);
            press(u"cmdSave"_s);
        });
        press(u"cmdEdit"_s);
        EXPECT_EQ(pay(), QStringList(u"21.75|Weekly|30|Monthly"_s))
            << "an edit doesn't warn of the date";

        for (int left = 3; left > 0; --left) {
            expectBox(u"Once Deleted, Salary data will be unrecoverable. Continue?"_s, Answer::Yes,
                      u"Warning!"_s);
            press(u"cmdDelete"_s);
        }
        EXPECT_EQ(pay(), QStringList(u"0||0|"_s));
        addSalary("3/2/2026", "19", "Hourly");
        key(Qt::Key_Escape);
    });
    press(u"cmdHistory"_s);
    EXPECT_EQ(text(u"txtCurrPay"_s), u"$19.00"_s);
    EXPECT_EQ(text(u"txtStartFreq"_s), u"Hourly"_s);
    EXPECT_EQ(rows(u"SELECT StartPay FROM Employee WHERE lastname <> 'Baker'"_s),
              QStringList({QString(), QString()}));
}

TEST_P(Employee, IsEnteredByKeyboardAlone) {
    expectBoxContaining(u"use the Employee module"_s, Answer::Yes);
    ASSERT_TRUE(openModule());
    EXPECT_EQ(focusName(), u"txtFirstName"_s);
    typeOn(u"Ann"_s);
    key(Qt::Key_Tab);
    typeOn(u"Baker"_s);
    for (int i = 0; i < 8; ++i)
        key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), u"etxtPhone"_s);
    typeOn(u"555"_s);
    key(Qt::Key_M, Qt::AltModifier);
    key(Qt::Key_K, Qt::AltModifier);
    EXPECT_EQ(focusName(), u"dbcShift"_s);
    typeOn(u"n"_s);
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(rows(u"SELECT firstname, lastname, Phone, shiftsid, EmpStatus FROM "
                   "Employee"_s),
              QStringList(u"Ann|Baker|555|2|Active"_s));
}

TEST_P(Employee, NothingIsClippedUnnamedOrClashing) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    press(u"cmdNew"_s);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

MIRSA_BOTH_ENGINES(Employee);

} // namespace
