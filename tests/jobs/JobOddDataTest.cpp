#include "JobScreen.h"
#include "platform/values/Literals.h"

#include "estimating/routing/Dialogs.h"
#include "platform/screen/Form.h"

#include <QLineEdit>

using screen::Answer;

namespace {

/// Picks the one set that there is.
class OneSet : public screen::Form, public estimating::DefaultSetDialog {
  public:
    OneSet() : Form(u"frmDefSet"_s, u"Sets"_s) {}
    std::optional<qint64> pickSet() override { return 1; }
};

/// What other programs wrote, what other stations do meanwhile, and what is beyond measure.
class JobsOdd : public JobScreen {
  protected:
    QString ofJob() const { return u" WHERE JobNo = "_s + QString::number(m_job); }
    void find(const char16_t* button, const QString& what) {
        whenShown(s(u"frmJobFind"), [this, what] {
            type(s(u"txtNo"), what);
            press(s(u"cmdOK"));
        });
        press(s(button));
    }
};

TEST_P(JobsOdd, NullsShowAsEmptyAndAreLeftAlone) {
    const qint64 bolts = item(s(u"Bolts"));
    jobCost(m_job, bolts, s(u"NULL"));
    database().execute(
        s(u"UPDATE Job SET CustID = NULL, PONo = NULL, Description = NULL, PartNo = NULL, "
          u"Material = NULL, TravelerNotes = NULL, JobNotes = NULL, Quantity = NULL, JobShopRate = "
          u"NULL, QtyQuotedPrice = NULL, JobDateIn = NULL, JobDueDate = NULL, TotalHours = NULL, "
          u"JobShopCost = NULL, InvoiceEach = NULL, InvoiceTotal = NULL, ShipDate = NULL, EstNo = "
          u"NULL, AssemblyJobNo = NULL"));
    database().execute(s(u"UPDATE JobOper SET Status = NULL, OperLocated = NULL, OperTime_Amount = "
                         u"NULL, OperShopRate = NULL, EstOper = NULL"));
    database().execute(s(u"UPDATE JobOperNote SET OperNotes = NULL WHERE SeqNo = 2"));
    openJobs();
    for (const char16_t* name : {u"txtPONo", u"txtPartno", u"txtMaterial", u"lblEstNo",
                                 u"lblAssembly", u"lblCustID", u"txtShipDate", u"txtJobDueDate"})
        EXPECT_EQ(text(s(name)), QString());
    EXPECT_EQ(text(s(u"txtQuantity")), s(u"0"));
    EXPECT_EQ(text(s(u"lblJobShopCost")), s(u"0.0000"));
    EXPECT_EQ(cell(s(u"sprOper"), 0, timeColumn), s(u"0.00"));
    edit();
    type(s(u"txtPONo"), s(u"PO-1"));
    type(s(u"txtPartno"), s(u"P-1"));
    type(s(u"txtQuantity"), s(u"2"));
    choose(s(u"dbcCustomer"), s(u"Acme"));
    expectBox(s(u"Please enter Date In!"));
    save();
    type(s(u"txtJobDateIn"), s(u"3/1/2026"));
    type(s(u"txtJobDueDate"), s(u"13/45/2026"));
    leave();
    expectBox(s(u"Please enter Due Date!"));
    save();
    EXPECT_EQ(control<QLineEdit>(s(u"txtJobDueDate"))->text(), s(u"13/45/2026"))
        << "what was typed badly stays to be mended";
    type(s(u"txtJobDueDate"), s(u"3/4/2026"));
    save();
    EXPECT_EQ(text(s(u"lblJobMode")), s(u"BROWSE"));
    EXPECT_EQ(rows(s(u"SELECT PONo, Quantity, JobDueDate FROM Job WHERE Material IS NULL AND "
                     u"InvoiceEach IS NULL AND EstNo IS NULL AND ShipDate IS NULL")),
              QStringList(s(u"PO-1|2|3/4/2026")));
    EXPECT_EQ(rows(s(u"SELECT OperTime_Amount, OperLocated, EstOper FROM JobOper")),
              QStringList({s(u"0|0|0"), s(u"0|0|0"), s(u"0|0|0")}));
}

TEST_P(JobsOdd, GoingToAJobAsksTheDatabaseAndNotTheScreen) {
    const qint64 other = job(m_acme, s(u"other"), 1);
    core::RecordScreen* screen = openJobs();
    ASSERT_EQ(screen->currentKey(), other);
    const auto station = anotherStation();
    station->execute(u"DELETE FROM Job"_s + ofJob());
    expectBox(u"Job No. %1 does not exist!"_s.arg(m_job));
    find(u"cmdFind", QString::number(m_job));
    EXPECT_EQ(screen->currentKey(), other);
    const qint64 added = job(m_acme, s(u"added"), 1);
    find(u"cmdFind", QString::number(added));
    EXPECT_EQ(screen->currentKey(), added);
    station->execute(u"UPDATE Job SET Shipped = True WHERE JobNo = %1"_s.arg(other));
    expectBox(u"Job No. %1 is an Inactive Job!"_s.arg(other));
    find(u"cmdFind", QString::number(other));
    EXPECT_EQ(screen->currentKey(), added);
    const qint64 newcomer = customer(s(u"Newcomer"));
    station->execute(u"UPDATE Job SET CustID = %1 WHERE JobNo = %2"_s.arg(newcomer).arg(added));
    form().Form_Activate();
    EXPECT_EQ(text(s(u"dbcCustomer")), s(u"Newcomer"));
    expectBox(s(u"Part(s) not found!"), Answer::Ok, s(u"System Message"));
    find(u"cmdGotoPart", s(u"oth"));
}

TEST_P(JobsOdd, TheLastActiveJobShippedElsewhereLeavesNoEmptyScreen) {
    core::RecordScreen* screen = openJobs();
    anotherStation()->execute(s(u"UPDATE Job SET Shipped = True"));
    form().Form_Activate();
    EXPECT_EQ(screen->currentKey(), m_job);
    EXPECT_TRUE(isChecked(s(u"optShow(1)")));
    edit();
    EXPECT_EQ(screen->mode(), s(u"Edit"));
    cancel();
    expectBox(s(u"There are no active jobs."));
    press(s(u"optShow(0)"));
    EXPECT_EQ(screen->currentKey(), m_job);
}

TEST_P(JobsOdd, FiguresBeyondMeasureAreRefusedBeforeAnythingIsWritten) {
    core::RecordScreen* screen = openJobs();
    edit();
    type(s(u"txtQuantity"), s(u"9999999999"));
    expectBox(s(u"Please enter a Quantity of 2147483647 at most"));
    save();
    EXPECT_EQ(focusName(), s(u"txtQuantity"));
    type(s(u"txtQuantity"), s(u"999999999"));
    type(s(u"txtInvoiceEach"), s(u"99999999999"));
    expectBoxContaining(s(u"too large to be computed"));
    leave();
    expectBoxContaining(s(u"too large to be computed"));
    save();
    EXPECT_EQ(screen->mode(), s(u"Edit"));
    EXPECT_EQ(rows(s(u"SELECT Quantity, InvoiceEach FROM Job")), QStringList(s(u"10|10")));
    type(s(u"txtInvoiceEach"), s(u"2"));
    save();
    EXPECT_EQ(rows(s(u"SELECT InvoiceTotal FROM Job")), QStringList(s(u"1999999998")));

    database().execute(s(u"UPDATE Job SET Quantity = 2000000000, InvoiceEach = 900000000"));
    form().Form_Activate();
    EXPECT_EQ(text(s(u"txtQuantity")), s(u"2000000000"));
    EXPECT_EQ(screen->currentKey(), m_job);
}

TEST_P(JobsOdd, AJobKeepsTheNumberOfACustomerWhoWasDeleted) {
    database().execute(s(u"DELETE FROM Customer"));
    customer(s(u"Bolt & Co"));
    openJobs();
    EXPECT_EQ(text(s(u"lblCustID")), QString::number(m_acme));
    edit();
    leave();
    type(s(u"txtDescription"), s(u"Bob's bracket"));
    save();
    EXPECT_EQ(rows(s(u"SELECT CustID, Description FROM Job")),
              QStringList(u"%1|Bob's bracket"_s.arg(m_acme)));
    edit();
    choose(s(u"dbcCustomer"), s(u"Bolt & Co"));
    type(s(u"dbcCustomer"), s(u"nobody"));
    leave();
    EXPECT_EQ(text(s(u"lblCustID")), QString());
    expectBox(s(u"Please select a Customer"));
    save();
    cancel();
}

TEST_P(JobsOdd, ASetBeginsAJobWithOrWithoutItsDefaultNotes) {
    screen::Forms::add(s(u"frmDefSet"), [] { return std::make_unique<OneSet>(); });
    defaultNote(m_operations[3], s(u"Mind the operator''s guard"));
    database().execute(s(u"INSERT INTO DefaultSet (SetDescription) VALUES('Set')"));
    for (int place = 1; place <= 2; ++place)
        database().execute(u"INSERT INTO DefaultSetOper (SetNo, OperNo, SeqNo) VALUES(1,%1,%2)"_s
                               .arg(m_operations[place == 1 ? 3 : 2])
                               .arg(place));
    core::RecordScreen* screen = openJobs();
    const auto begin = [this](bool carry, bool notes) {
        whenShown(s(u"frmJobNew"), [this, carry, notes] {
            press(s(u"Option1"));
            EXPECT_FALSE(isEnabled(s(u"chkNotes")));
            check(s(u"chkCarryCus"), carry);
            check(s(u"chkDefault"), notes);
            press(s(u"cmdOK"));
        });
        press(s(u"cmdNew"));
    };
    begin(false, false);
    EXPECT_EQ(notes(0), QStringList());
    EXPECT_EQ(text(s(u"txtPONo")), QString());
    EXPECT_EQ(text(s(u"dbcCustomer")), QString());
    cancel();
    EXPECT_EQ(screen->currentKey(), m_job);
    begin(true, true);
    EXPECT_EQ(notes(0), QStringList(s(u"1|Mind the operator's guard")));
    cancel();
    EXPECT_EQ(notes(0), QStringList());
    begin(true, true);
    EXPECT_EQ(cells(s(u"sprOper")).size(), 2);
    type(s(u"txtPartno"), s(u"P-9"));
    type(s(u"txtQuantity"), s(u"3"));
    type(s(u"txtJobDueDate"), s(u"4/1/2026"));
    check(s(u"chkShipped"));
    save();
    EXPECT_EQ(rows(s(u"SELECT CustID, PONo, JobDateIn, JobDueDate, ShipDate FROM Job WHERE PartNo "
                     u"= 'P-9'")),
              QStringList(u"%1|PO-7|3/9/2026|4/1/2026|3/9/2026"_s.arg(m_acme)));
    EXPECT_EQ(screen->currentKey(), m_job) << "the new job is inactive at once";
}

TEST_P(JobsOdd, ShippingAsksForADateAndAnOperationIsNeeded) {
    openJobs();
    edit();
    check(s(u"chkShipped"));
    type(s(u"txtShipDate"), s(u""));
    expectBox(s(u"Please enter Shipped Date!"));
    save();
    EXPECT_EQ(focusName(), s(u"txtShipDate"));
    check(s(u"chkShipped"), false);
    EXPECT_TRUE(isLocked(s(u"txtShipDate")));
    for (const char16_t* name : {u"Boring", u"Milling", u"Plating"})
        removeRow(0, name);
    check(s(u"chkShipped"));
    type(s(u"txtShipDate"), s(u"2/30/2026"));
    expectBox(s(u"Please enter at least one operation"));
    save();
    EXPECT_EQ(focusName(), s(u"sprOper"));
    cancel();
    EXPECT_EQ(notes(m_job), QStringList({s(u"1|note 1"), s(u"2|note 2"), s(u"3|note 3")}));
    EXPECT_EQ(text(s(u"txtShipDate")), QString());
}

TEST_P(JobsOdd, NotesOfAnAddThatWasClosedGoToTheNextJobSaved) {
    openJobs();
    whenShown(s(u"frmJobNew"), [this] {
        press(s(u"Option3"));
        check(s(u"chkNotes"));
        press(s(u"cmdOK"));
    });
    expectBoxContaining(s(u"You are about to copy"), Answer::Yes);
    press(s(u"cmdNew"));
    EXPECT_EQ(text(s(u"txtPONo")), QString()) << "goes with the customer";
    EXPECT_EQ(cell(s(u"sprOper"), 2, timeColumn), s(u"0.00")) << "a contractor's amount goes too";
    expectBox(s(u"Would you like to save the current record before closing?"), Answer::No,
              s(u"Save & Exit?"));
    form().unload();
    EXPECT_EQ(notes(0).size(), 3);
    openJobs();
    edit();
    save();
    EXPECT_EQ(notes(0).size(), 0);
    EXPECT_EQ(notes(m_job).size(), 6);
}

TEST_P(JobsOdd, DeletingShowsTheNextJobAndTheLastOneLeadsToANewOne) {
    const qint64 next = job(m_acme, s(u"next"), 1);
    const qint64 inactive = job(m_acme, s(u"inactive"), 1, true);
    core::RecordScreen* screen = openJobs();
    ASSERT_TRUE(screen->goToRecord(m_job));
    const auto remove = [this] {
        expectBox(s(u"You are about to delete the current Job. Are you sure?"), Answer::Yes,
                  s(u"Delete"));
        press(s(u"cmdDelete"));
    };
    remove();
    EXPECT_EQ(screen->currentKey(), next);
    remove();
    EXPECT_EQ(screen->currentKey(), inactive) << "where no job is active all are shown";
    remove();
    EXPECT_EQ(screen->mode(), s(u"Add"));
    EXPECT_EQ(text(s(u"lblJobNo")), s(u"New"));
    EXPECT_EQ(text(s(u"txtJobShopRate")), s(u"60.00"));
    cancel();
    EXPECT_EQ(text(s(u"lblJobNo")), QString());
    expectBox(s(u"There are no records in the database. Before you can use the Job module you must "
                u"add at least one Job. Would you like to do so now?"),
              Answer::No, s(u"No Records!"));
    press(s(u"cmdEdit"));
    EXPECT_FALSE(screen::Forms::isLoaded(s(u"frmJob")));
}

TEST_P(JobsOdd, AFailedDeletionTellsItsStepAndTakesNothing) {
    openJobs();
    database().execute(s(u"DROP TABLE JobMiscCost"));
    expectBox(s(u"You are about to delete the current Job. Are you sure?"), Answer::Yes);
    expectBoxContaining(s(u"\r\nDelete JobMiscCost"));
    press(s(u"cmdDelete"));
    EXPECT_EQ(bound(m_job).size(), 3);
    EXPECT_EQ(notes(m_job).size(), 3);
}

TEST_P(JobsOdd, APartIsFoundByAnyPieceOfItsNumber) {
    const qint64 odd = job(m_acme, s(u"B[8]%_''x"), 1);
    core::RecordScreen* screen = openJobs();
    ASSERT_TRUE(screen->goToRecord(m_job));
    for (const char16_t* typed : {u"8]%", u"b-8", u"%_", u"[", u"_'x"}) {
        whenShown(s(u"frmJobFound"), [this] { press(s(u"cmdSelect")); });
        find(u"cmdGotoPart", s(typed));
        EXPECT_EQ(screen->currentKey(), odd) << s(typed).toStdString();
        ASSERT_TRUE(screen->goToRecord(m_job));
    }
    whenShown(s(u"frmJobFound"), [this] {
        go(s(u"sprFound"));
        key(Qt::Key_End);
        press(s(u"cmdSelect"));
    });
    find(u"cmdGotoPart", s(u"-"));
    EXPECT_EQ(screen->currentKey(), odd) << "the last of all";
}

MIRSA_BOTH_ENGINES(JobsOdd);

} // namespace
