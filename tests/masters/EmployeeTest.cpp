#include "core/RecordScreen.h"
#include "masters/EmployeeChecks.h"
#include "masters/Screens.h"
#include "platform/values/Clock.h"
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
    entry.status = QStringLiteral("Terminated");
    entry.ssn = QStringLiteral("12345");
    entry.exemptState = entry.exemptFederal = entry.exemptOther = QStringLiteral("two");
    const auto told = [&entry] {
        const auto wrong = masters::checkEmployee(entry);
        return wrong ? wrong->title + QLatin1Char('|') + wrong->text : QString();
    };
    const QString name = QStringLiteral("Full name required|Both Name fields must be filled out!");
    EXPECT_EQ(told(), name);
    entry.firstName = QStringLiteral("Ann");
    entry.lastName = QStringLiteral("  ");
    EXPECT_EQ(told(), name);
    entry.lastName = QStringLiteral("Baker");
    EXPECT_EQ(told(), QStringLiteral("Termination Date required|A terminated employee must have a "
                                     "Termination Date!"));
    entry.terminationDate = true;
    EXPECT_EQ(told(), QStringLiteral("Work Shift required|Work shift must be filled out!"));
    entry.shift = true;
    EXPECT_EQ(told(), QStringLiteral("Erroneous S.S.N.|The S.S.N. field must be blank or "
                                     "completely filled out!"));
    entry.ssn.clear();
    const QString state = QStringLiteral("State Exemption Error|");
    EXPECT_EQ(told(), state + QStringLiteral("The State exemptions must be a number!"));
    entry.exemptState = QStringLiteral("2");
    EXPECT_EQ(told(), QStringLiteral("Federal Exemption Error|The Federal exemptions must be a "
                                     "number!"));
    entry.exemptFederal = QStringLiteral("1,000");
    EXPECT_EQ(masters::exemptions(entry.exemptFederal), 1000);
    EXPECT_EQ(told(), state + QStringLiteral("The \"Other\" exemptions must be a number!"));
    entry.exemptOther = QStringLiteral("40000");
    EXPECT_EQ(told(), state + QStringLiteral("The \"Other\" exemptions must be a number!"))
        << "beyond what the column holds";
    entry.exemptOther.clear();
    entry.ssn = QStringLiteral("123456789");
    EXPECT_EQ(told(), QString());
}

TEST(SalaryChecks, TellTheFirstThingThatIsWrong) {
    const QDate today(2026, 3, 2);
    SalaryEntry entry;
    const auto told = [&] {
        const auto wrong = masters::checkSalary(entry, today);
        return wrong ? wrong->title + QLatin1Char('|') + wrong->text : QString();
    };
    EXPECT_EQ(told(), QStringLiteral("|You must enter a Date!"));
    entry.date = today.addDays(1);
    EXPECT_EQ(told(), QStringLiteral("Data Missing!|You must enter a Dollar Amount!"));
    for (const char* amount : {"ten", "1e300"}) {
        entry.amount = QString::fromLatin1(amount);
        EXPECT_EQ(told(), QStringLiteral("|You must enter a Decimal Dollar value for Amount!"));
    }
    entry.amount = QStringLiteral("1,250.50");
    EXPECT_EQ(told(), QStringLiteral("Data Missing!|You must enter a Frequency!"));
    entry.frequency = QStringLiteral("Weekly");
    EXPECT_EQ(told(), QStringLiteral("Date Error!|You cannot enter a future date!"));
    entry.date = today;
    EXPECT_EQ(told(), QString());
}

/// Stands for the time management screen.
class TimeManagement : public screen::Form, public core::LookupUser {
  public:
    TimeManagement() : Form(QStringLiteral("frmTM"), QStringLiteral("Time Management")) {}
    void refreshLookup(const QString& table) override { refreshed << table; }
    QStringList refreshed;
};

class Employee : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        masters::registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(8, 0)));
        sql("INSERT INTO Shifts (Description) VALUES ('Night')");
    }
    void TearDown() override {
        values::setNow(std::nullopt);
        ShopTest::TearDown();
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
    bool openModule() { return open(QStringLiteral("frmEmployee")) != nullptr; }
    QString last() const { return text(QStringLiteral("txtLastName")); }
    QString mode() const { return text(QStringLiteral("lblEmployeeMode")); }
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
        return rows(QStringLiteral("SELECT StartPay, StartFrq, CurrPay, CurrFrq FROM Employee "
                                   "WHERE lastname = 'Baker'"));
    }
    void fillSalary(const char* date, const char* amount, const char* frequency) {
        type(QStringLiteral("etxtDate"), QString::fromLatin1(date));
        type(QStringLiteral("txtAmount"), QString::fromLatin1(amount));
        choose(QStringLiteral("cboFrequency"), QString::fromLatin1(frequency));
    }
    void addSalary(const char* date, const char* amount, const char* frequency) {
        whenShown(QStringLiteral("frmSalaryAdd"), [=, this] {
            fillSalary(date, amount, frequency);
            press(QStringLiteral("cmdSave"));
        });
        press(QStringLiteral("cmdAdd"));
    }
};

TEST_P(Employee, ANewOneIsActiveAndBeginsHisSalaryHistory) {
    addThree();
    screen::Forms::add(QStringLiteral("frmTM"), [] { return std::make_unique<TimeManagement>(); });
    ASSERT_TRUE(open(QStringLiteral("frmTM")));
    ASSERT_TRUE(openModule());
    EXPECT_TRUE(isLocked(QStringLiteral("txtNewSalary")));
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("txtEmpid")), QStringLiteral("???"));
    EXPECT_EQ(text(QStringLiteral("cboStatus")), QStringLiteral("Active"));
    EXPECT_FALSE(isEnabled(QStringLiteral("cboDisplay")));
    type(QStringLiteral("txtFirstName"), QStringLiteral("Pat"));
    type(QStringLiteral("txtLastName"), QStringLiteral("D'Or"));
    type(QStringLiteral("mskSSN"), QStringLiteral("123456789"));
    EXPECT_EQ(text(QStringLiteral("mskSSN")), QStringLiteral("123-45-6789"));
    choose(QStringLiteral("cboMarried"), QStringLiteral("Married"));
    expectBox(QStringLiteral("Work shift must be filled out!"), Answer::Ok,
              QStringLiteral("Work Shift required"), {}, Icon::Exclamation);
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("dbcShift"));
    EXPECT_TRUE(control<QWidget>(QStringLiteral("dbcShift"))->isVisible()) << "its tab is in front";
    choose(QStringLiteral("dbcShift"), QStringLiteral("Night"));
    type(QStringLiteral("txtPosition"), QStringLiteral("Supervisor"));
    EXPECT_TRUE(isChecked(QStringLiteral("chkMJob")));
    EXPECT_FALSE(isEnabled(QStringLiteral("chkMJob")));
    type(QStringLiteral("etxtHDate"), QStringLiteral("2/1/2026"));
    type(QStringLiteral("txtNewSalary"), QStringLiteral("1.8.5"));
    expectBox(QStringLiteral("You must enter a Decimal Dollar value for Amount!"));
    press(QStringLiteral("cmdSave"));
    type(QStringLiteral("txtNewSalary"), QStringLiteral("18.5"));
    choose(QStringLiteral("cboNewFreq"), QStringLiteral("Hourly"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(last(), QStringLiteral("D'Or"));
    EXPECT_EQ(text(QStringLiteral("dbcEmployee")), QStringLiteral("D'Or , Pat"));
    EXPECT_EQ(text(QStringLiteral("txtNewSalary")), QString());
    EXPECT_EQ(text(QStringLiteral("txtCurrFreq")), QStringLiteral("Hourly"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT SSN, MaritalStatus, shiftsid, multijobs, birthdate, StartPay, CurrPay, "
                  "StartFrq, ExempState, ExempFed, QBSent FROM Employee WHERE EmpID = 4")),
              QStringList(QStringLiteral("123456789|Married|2|True||18.5|18.5|Hourly|0|0|0")));
    EXPECT_EQ(rows(QStringLiteral("SELECT EmpID, SalaryDate, SalaryAmount, SalaryFrequency "
                                  "FROM EmployeeSalary")),
              QStringList(QStringLiteral("4|2/1/2026|18.5|Hourly")));
    EXPECT_EQ(screen::Forms::find<TimeManagement>(QStringLiteral("frmTM"))->refreshed,
              QStringList(QStringLiteral("Employee")));
}

TEST_P(Employee, TheDisplayNarrowsTheRowsAndSortsAsItWasAskedFor) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(back(), QStringList({QStringLiteral("Baker"), QStringLiteral("O'Neil"),
                                   QStringLiteral("Young")}))
        << "by number";
    choose(QStringLiteral("cboDisplay"), QStringLiteral("Active"));
    EXPECT_EQ(back(), QStringList({QStringLiteral("Young"), QStringLiteral("Baker"),
                                   QStringLiteral("Baker")}))
        << "chosen: by name, the person shown stays";
    type(QStringLiteral("cboDisplay"), QStringLiteral("All"));
    EXPECT_EQ(last(), QStringLiteral("Baker"));
    leave();
    EXPECT_EQ(back(), QStringList({QStringLiteral("Baker"), QStringLiteral("O'Neil"),
                                   QStringLiteral("Young")}))
        << "typed: by number";
    expectBox(QStringLiteral("No Records Available"), Answer::Ok, QStringLiteral("No Records"));
    choose(QStringLiteral("cboDisplay"), QStringLiteral("Suspended"));
    EXPECT_EQ(text(QStringLiteral("cboDisplay")), QStringLiteral("All"));
    EXPECT_EQ(last(), QStringLiteral("Young"));
    type(QStringLiteral("cboDisplay"), QString());
    expectBox(QStringLiteral("No Records Available"));
    leave();
    EXPECT_EQ(text(QStringLiteral("cboDisplay")), QStringLiteral("All"));
}

TEST_P(Employee, OneWhoLeavesNeedsADateAndStaysShownUntilTheDisplayIsChosenAgain) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(form().control(QStringLiteral("cmdDelete")));
    choose(QStringLiteral("cboDisplay"), QStringLiteral("Active"));
    press(QStringLiteral("cmdEdit"));
    choose(QStringLiteral("cboStatus"), QStringLiteral("Terminated"));
    expectBox(QStringLiteral("A terminated employee must have a Termination Date!"), Answer::Ok,
              QStringLiteral("Termination Date required"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("etxtTDate"));
    typeOn(QStringLiteral("3/1/2026"));
    choose(QStringLiteral("cboStatus"), QStringLiteral("Suspended"));
    EXPECT_EQ(text(QStringLiteral("etxtTDate")), QString());
    choose(QStringLiteral("cboStatus"), QStringLiteral("Terminated"));
    type(QStringLiteral("etxtTDate"), QStringLiteral("3/1/2026"));
    type(QStringLiteral("etxtBday"), QStringLiteral("2/30/1980"));
    expectBoxContaining(QStringLiteral("date"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("etxtBday"));
    type(QStringLiteral("etxtBday"), QStringLiteral("2/28/1980"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(last(), QStringLiteral("Baker"));
    EXPECT_EQ(text(QStringLiteral("cboStatus")), QStringLiteral("Terminated"));
    choose(QStringLiteral("cboDisplay"), QStringLiteral("Active"));
    EXPECT_EQ(last(), QStringLiteral("Young"));

    whenShown(QStringLiteral("frmEmpFind"), [this] {
        type(QStringLiteral("txtData"), QStringLiteral("Bak"));
        whenShown(QStringLiteral("frmEmpFound"), [this] {
            EXPECT_EQ(cells(QStringLiteral("sprEmpFound")),
                      QStringList(QStringLiteral("3|Ann|Baker")));
            press(QStringLiteral("cmdSelect"));
        });
        expectBoxContaining(QStringLiteral("among those shown"));
        press(QStringLiteral("cmdFind"));
        check(QStringLiteral("optFind2"));
        type(QStringLiteral("txtData"), QStringLiteral("z"));
        whenShown(QStringLiteral("frmEmpFound"), [this] { press(QStringLiteral("cmdSelect")); });
        press(QStringLiteral("cmdFind"));
    });
    press(QStringLiteral("cmdFind"));
    EXPECT_EQ(last(), QStringLiteral("Young"));
}

TEST_P(Employee, EditKeepsWhatTheFloorAndTheHistoryOwnAndASupervisorHasSeveralJobs) {
    addThree();
    sql("UPDATE Employee SET SignedIn = True, QBSent = 1, CurrPay = 20, CurrFrq = 'Weekly', "
        "SSN = '987654321', [Position] = 'Supervisor', multijobs = False");
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(isChecked(QStringLiteral("chkMJob")));
    press(QStringLiteral("cmdEdit"));
    EXPECT_TRUE(isChecked(QStringLiteral("chkMJob")));
    EXPECT_FALSE(isEnabled(QStringLiteral("chkMJob")));
    type(QStringLiteral("mskSSN"), QStringLiteral("12345"));
    expectBox(QStringLiteral("The S.S.N. field must be blank or completely filled out!"),
              Answer::Ok, QStringLiteral("Erroneous S.S.N."));
    press(QStringLiteral("cmdSave"));
    type(QStringLiteral("mskSSN"), QString());
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT SSN, multijobs, SignedIn, QBSent, CurrPay, CurrFrq "
                                  "FROM Employee WHERE EmpID = 3")),
              QStringList(QStringLiteral("|True|True|1|20|Weekly")));
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtPosition"), QStringLiteral("Employee"));
    EXPECT_TRUE(isEnabled(QStringLiteral("chkMJob")));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));

    sql("UPDATE Shifts SET Description = 'Graveyard' WHERE ID = 2");
    core::refreshNeighbours({QStringLiteral("frmEmployee")}, QStringLiteral("Shifts"));
    EXPECT_EQ(text(QStringLiteral("dbcShift")), QStringLiteral("Graveyard"));
}

TEST_P(Employee, TheSalaryHistoryDrivesThePay) {
    addThree();
    ASSERT_TRUE(openModule());
    whenShown(QStringLiteral("frmEmpSalary"), [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        for (const auto& [button, what] :
             {std::pair{"cmdEdit", "edit"}, std::pair{"cmdDelete", "delete"}}) {
            expectBox(QStringLiteral("You have not selected a record to %1!")
                          .arg(QString::fromLatin1(what)),
                      Answer::Ok, QStringLiteral("Nothing Selected"));
            press(QString::fromLatin1(button));
        }
        addSalary("2/1/2026", "21.75", "Weekly");
        EXPECT_EQ(pay(), QStringList(QStringLiteral("21.75|Weekly|21.75|Weekly")));

        const QString early =
            QStringLiteral("The date you have entered is earlier than the last Salary date "
                           "currently in the database!  Continue?");
        whenShown(QStringLiteral("frmSalaryAdd"), [&] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            expectBox(QStringLiteral("You must enter a Date!"));
            press(QStringLiteral("cmdSave"));
            fillSalary("1/5/2026", "1,018.505", "Hourly");
            expectBox(early, Answer::Cancel, QStringLiteral("Date Warning!"), Buttons::OkCancel);
            press(QStringLiteral("cmdSave"));
            expectBox(early, Answer::Ok);
            press(QStringLiteral("cmdSave"));
        });
        press(QStringLiteral("cmdAdd"));
        EXPECT_EQ(pay(), QStringList(QStringLiteral("1018.51|Hourly|21.75|Weekly")))
            << "two decimals reach the employee";
        EXPECT_EQ(cells(QStringLiteral("sprSalary")),
                  QStringList({QStringLiteral("1/5/2026|$1,018.51|Hourly"),
                               QStringLiteral("2/1/2026|$21.75|Weekly")}));
        addSalary("2/1/2026", "30", "Monthly");
        EXPECT_EQ(pay(), QStringList(QStringLiteral("1018.51|Hourly|30|Monthly")))
            << "of one day the one entered later";

        clickCell(QStringLiteral("sprSalary"), 1, 0);
        whenShown(QStringLiteral("frmSalaryEdit"), [this] {
            EXPECT_EQ(text(QStringLiteral("txtAmount")), QStringLiteral("21.75"));
            EXPECT_EQ(text(QStringLiteral("cboFrequency")), QStringLiteral("Weekly"));
            type(QStringLiteral("etxtDate"), QStringLiteral("1/1/2026"));
            press(QStringLiteral("cmdSave"));
        });
        press(QStringLiteral("cmdEdit"));
        EXPECT_EQ(pay(), QStringList(QStringLiteral("21.75|Weekly|30|Monthly")))
            << "an edit doesn't warn of the date";

        for (int left = 3; left > 0; --left) {
            expectBox(QStringLiteral("Once Deleted, Salary data will be unrecoverable. Continue?"),
                      Answer::Yes, QStringLiteral("Warning!"));
            press(QStringLiteral("cmdDelete"));
        }
        EXPECT_EQ(pay(), QStringList(QStringLiteral("0||0|")));
        addSalary("3/2/2026", "19", "Hourly");
        key(Qt::Key_Escape);
    });
    press(QStringLiteral("cmdHistory"));
    EXPECT_EQ(text(QStringLiteral("txtCurrPay")), QStringLiteral("$19.00"));
    EXPECT_EQ(text(QStringLiteral("txtStartFreq")), QStringLiteral("Hourly"));
    EXPECT_EQ(rows(QStringLiteral("SELECT StartPay FROM Employee WHERE lastname <> 'Baker'")),
              QStringList({QString(), QString()}));
}

TEST_P(Employee, IsEnteredByKeyboardAlone) {
    expectBoxContaining(QStringLiteral("use the Employee module"), Answer::Yes);
    ASSERT_TRUE(openModule());
    EXPECT_EQ(focusName(), QStringLiteral("txtFirstName"));
    typeOn(QStringLiteral("Ann"));
    key(Qt::Key_Tab);
    typeOn(QStringLiteral("Baker"));
    for (int i = 0; i < 8; ++i)
        key(Qt::Key_Tab);
    EXPECT_EQ(focusName(), QStringLiteral("etxtPhone"));
    typeOn(QStringLiteral("555"));
    key(Qt::Key_M, Qt::AltModifier);
    key(Qt::Key_K, Qt::AltModifier);
    EXPECT_EQ(focusName(), QStringLiteral("dbcShift"));
    typeOn(QStringLiteral("n"));
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(rows(QStringLiteral("SELECT firstname, lastname, Phone, shiftsid, EmpStatus FROM "
                                  "Employee")),
              QStringList(QStringLiteral("Ann|Baker|555|2|Active")));
}

TEST_P(Employee, NothingIsClippedUnnamedOrClashing) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
}

MIRSA_BOTH_ENGINES(Employee);

} // namespace
