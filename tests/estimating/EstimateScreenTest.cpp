#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "estimating/NoteStaging.h"
#include "estimating/Screens.h"
#include "estimating/ShopRows.h"
#include "platform/values/Clock.h"
#include "support/ShopFixture.h"

using namespace shoprows;
using screen::Answer;

namespace {

/// The estimate module on a shop with two customers, three operations and two fixed cost items.
class EstimateScreenTest : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        core::registerScreens();
        estimating::registerScreens();
        core::shared().CurrencySymbol = QStringLiteral("$");
        values::setNow(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        jet::Database& db = database();
        m_acme = customer(db, QStringLiteral("Acme"));
        m_bolt = customer(db, QStringLiteral("Bolt & Nut"));
        m_mill = operation(db, QStringLiteral("Mill"));
        m_turn = operation(db, QStringLiteral("Turn"), u'I', 35);
        m_plate = operation(db, QStringLiteral("Plating"), u'C', 0);
        operationNote(db, m_mill, QStringLiteral("Use coolant"));
        item(db, QStringLiteral("Bar"), QStringLiteral("FT"), 12.5);
        item(db, QStringLiteral("Sheet"), QStringLiteral("EA"), 4);
    }
    void TearDown() override {
        ShopTest::TearDown();
        values::setNow(std::nullopt);
    }

    /// Saves an estimate of Mill (2.5 h at 40), Turn (1 h at 35) and Plating (100) behind the
    /// screen's back.
    qint64 estimate(const QString& rfqNo, const QString& partNo) {
        using namespace estimating;
        EstimateDraft draft;
        draft.header.custId = m_acme;
        draft.header.rfqNo = rfqNo;
        draft.header.partNo = partNo;
        draft.header.quantity = 10;
        draft.header.estDate = QDate(2026, 1, 5);
        draft.header.oneShopRate = false;
        draft.operations = {row(m_mill, QStringLiteral("Mill"), 2.5),
                            row(m_turn, QStringLiteral("Turn"), 1),
                            row(m_plate, QStringLiteral("Plating"), 100, false)};
        draft.operations[1].rate = values::Currency::fromInteger(35);
        jet::Recordset rows = core::MainDatabase().openRecordset(estimateRows());
        return saveEstimate(core::MainDatabase(), rows, 0, draft);
    }
    void note(qint64 estNo, int seqNo, const QString& text) {
        estimating::NoteStaging staging(core::MainDatabase(), estimating::estimateRouting(), estNo);
        staging.write(seqNo, text);
        staging.adopt(estNo, 3);
    }
    QStringList notes() {
        return rows(QStringLiteral("SELECT EstNo, SeqNo, OperNotes FROM EstOperNote "
                                   "ORDER BY EstNo, SeqNo"));
    }

    qint64 m_acme = 0, m_bolt = 0, m_mill = 0, m_turn = 0, m_plate = 0;
};

enum OperColumn { Seq, Note, Description, Time, Unit, Rate };
enum MiscColumn { MiscDescription, MiscUnit, MiscPrice, MiscQuantity, MiscTotal };

} // namespace

TEST_P(EstimateScreenTest, AnEmptyShopStartsWithAnEstimateToAdd) {
    expectBox(QStringLiteral("There are no records in the database. Before you can use the "
                             "Estimate module you must add at least one Estimate. Would you like "
                             "to do so now?"),
              Answer::Yes, QStringLiteral("No Records!"));
    open(QStringLiteral("frmEstimate"));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("New"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("ADD"));
    EXPECT_EQ(text(QStringLiteral("txtEstShopRate")), QStringLiteral("60.00"));

    expectBox(QStringLiteral("Please enter Rfq No."));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("txtRfqno"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("ADD"));
}

TEST_P(EstimateScreenTest, OperationsAndCostsArePickedAndReckonedAsTheyCome) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    open(QStringLiteral("frmEstimate"));
    whenShown(QStringLiteral("frmEstNew"), [this] {
        check(QStringLiteral("Option2"));
        check(QStringLiteral("chkCarryCus"));
        press(QStringLiteral("cmdOK"));
    });
    whenShown(QStringLiteral("frmSelOper"), [this] {
        selectRow(QStringLiteral("lvwAvail"), 0); // Mill, with a note
        press(QStringLiteral("cmdAddRemove(0)"));
        selectRow(QStringLiteral("lvwAvail"), 0); // Plating
        press(QStringLiteral("cmdAddRemove(0)"));
        EXPECT_EQ(cells(QStringLiteral("lvwSel")),
                  QStringList({QStringLiteral("Mill|yes"), QStringLiteral("Plating  *oc|no")}));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("dbcCustomer")), QStringLiteral("Acme"));
    EXPECT_EQ(text(QStringLiteral("txtRfqno")), QStringLiteral("R1"));
    EXPECT_EQ(rowCount(QStringLiteral("sprOper")), 2);
    EXPECT_EQ(notes(), QStringList({QStringLiteral("0|1|Use coolant")}));

    type(QStringLiteral("txtPartno"), QStringLiteral("P-9"));
    type(QStringLiteral("txtQuantity"), QStringLiteral("10"));
    leave();
    setCell(QStringLiteral("sprOper"), 0, Time, QStringLiteral("2.5"));
    setCell(QStringLiteral("sprOper"), 1, Time, QStringLiteral("100"));
    whenShown(QStringLiteral("frmInsItem"), [this] {
        EXPECT_EQ(rowCount(QStringLiteral("lstItems")), 2);
        selectRow(QStringLiteral("lstItems"), 0);
        EXPECT_EQ(text(QStringLiteral("txtUnitPrice")), QStringLiteral("12.5000"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdMisc(0)"));
    setCell(QStringLiteral("sprMisc"), 0, MiscQuantity, QStringLiteral("4"));
    EXPECT_EQ(cell(QStringLiteral("sprMisc"), 0, MiscTotal), QStringLiteral("50.00"));
    type(QStringLiteral("txtQtyDiscount(1)"), QStringLiteral("10"));
    leave();
    type(QStringLiteral("fpQtyQP(0)"), QStringLiteral("40"));
    leave();
    // The record on screen kept the rate of each row: 2.5 h at 40, 100 outside, 50 of material.
    EXPECT_EQ(text(QStringLiteral("fpOutContr")), QStringLiteral("100.00"));
    EXPECT_EQ(text(QStringLiteral("fpFixed")), QStringLiteral("50.00"));
    EXPECT_EQ(text(QStringLiteral("fpQtyPrice(0)")), QStringLiteral("25.0000"));
    EXPECT_EQ(text(QStringLiteral("fpQtyPrice(1)")), QStringLiteral("22.5000"));
    EXPECT_EQ(text(QStringLiteral("fpQtyTotal(0)")), QStringLiteral("400.00"));

    expectBox(QStringLiteral("You are about to recalculate the Pricing for Inhouse Operations. "
                             "Are you sure?"),
              Answer::Yes);
    press(QStringLiteral("cmdOperRate(0)"));
    EXPECT_EQ(text(QStringLiteral("fpQtyPrice(0)")), QStringLiteral("30.0000")); // at 60
    press(QStringLiteral("cmdSave"));

    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("BROWSE"));
    EXPECT_EQ(rows(QStringLiteral("SELECT EstNo, PartNo, Quantity, QtyPriceA, QtyQPA, QtyTotalA, "
                                  "OneShopRate FROM Estimate WHERE PartNo = 'P-9'")),
              QStringList({QStringLiteral("2|P-9|10|30|40|400|True")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate FROM "
                                  "EstOper WHERE EstNo = 2 ORDER BY SeqNo")),
              QStringList({QStringLiteral("1|%1|2.5|40").arg(m_mill),
                           QStringLiteral("2|%1|100|0").arg(m_plate)}));
    EXPECT_EQ(notes(), QStringList({QStringLiteral("2|1|Use coolant")}));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("2"));
}

TEST_P(EstimateScreenTest, CancelPutsRowsNotesAndFieldsBack) {
    const qint64 estNo = estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    note(estNo, 2, QStringLiteral("two"));
    note(estNo, 3, QStringLiteral("three"));
    const QStringList before = notes();
    open(QStringLiteral("frmEstimate"));
    const QStringList shown = cells(QStringLiteral("sprOper"));
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtPartno"), QStringLiteral("other"));
    clickCell(QStringLiteral("sprOper"), 1, Description);
    expectBox(QStringLiteral("Delete operation Turn?"), Answer::Yes);
    press(QStringLiteral("cmdOper(1)"));
    EXPECT_EQ(rowCount(QStringLiteral("sprOper")), 2);
    // The removed operation is offered again, and goes in front of the first.
    clickCell(QStringLiteral("sprOper"), 0, Description);
    whenShown(QStringLiteral("frmInsOper"), [this] {
        EXPECT_EQ(rowCount(QStringLiteral("lstOper")), 1);
        selectRow(QStringLiteral("lstOper"), 0);
        EXPECT_EQ(text(QStringLiteral("lblOperShopRate")), QStringLiteral("Hourly Rate: $35.00"));
        check(QStringLiteral("optPosition(0)"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdOper(0)"));
    EXPECT_EQ(cell(QStringLiteral("sprOper"), 0, Description), QStringLiteral("Turn"));
    EXPECT_EQ(notes(), QStringList({QStringLiteral("1|0|two"), QStringLiteral("1|3|three")}));

    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    EXPECT_EQ(notes(), before);
    EXPECT_EQ(cells(QStringLiteral("sprOper")), shown);
    EXPECT_EQ(text(QStringLiteral("txtPartno")), QStringLiteral("P1"));
}

TEST_P(EstimateScreenTest, NotesAreReadInBrowseAndWrittenInEdit) {
    const qint64 estNo = estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    note(estNo, 1, QStringLiteral("first"));
    open(QStringLiteral("frmEstimate"));
    whenShown(QStringLiteral("frmEstOperNote"), [this] {
        EXPECT_EQ(text(QStringLiteral("Text1")), QStringLiteral("first"));
        EXPECT_TRUE(isLocked(QStringLiteral("Text1")));
        EXPECT_FALSE(isVisible(QStringLiteral("cmdCancel")));
        press(QStringLiteral("cmdOK"));
    });
    clickCell(QStringLiteral("sprOper"), 0, Note);
    press(QStringLiteral("cmdEdit"));
    whenShown(QStringLiteral("frmEstOperNote"), [this] {
        type(QStringLiteral("Text1"), QString());
        press(QStringLiteral("cmdOK"));
    });
    clickCell(QStringLiteral("sprOper"), 0, Note);
    EXPECT_EQ(notes(), QStringList());
    auto* grid = control<controls::Grid>(QStringLiteral("sprOper"));
    EXPECT_FALSE(grid->hasPicture(0, Note));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("BROWSE"));
}

TEST_P(EstimateScreenTest, ACopyTakesTheRowsAndTheWantedNotes) {
    const qint64 estNo = estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    note(estNo, 1, QStringLiteral("mine"));
    note(estNo, 3, QStringLiteral("third"));
    open(QStringLiteral("frmEstimate"));
    whenShown(QStringLiteral("frmEstNew"), [this] {
        check(QStringLiteral("Option3"));
        check(QStringLiteral("chkNotes"));
        check(QStringLiteral("chkDefault"));
        press(QStringLiteral("cmdOK"));
    });
    expectBox(QStringLiteral("You are about to copy the current Estimate into a new Estimate. Are "
                             "you sure?"),
              Answer::Yes);
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("COPYEST"));
    EXPECT_EQ(text(QStringLiteral("lblCustID")), QString());
    EXPECT_EQ(text(QStringLiteral("txtRfqno")), QString());
    EXPECT_EQ(text(QStringLiteral("txtPartno")), QStringLiteral("P1"));
    EXPECT_EQ(notes(),
              QStringList({QStringLiteral("0|1|Use coolant\r\nmine"), QStringLiteral("0|3|third"),
                           QStringLiteral("1|1|mine"), QStringLiteral("1|3|third")}));
    type(QStringLiteral("txtRfqno"), QStringLiteral("R2"));
    expectBox(QStringLiteral("Please select a Customer"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("dbcCustomer"));
    choose(QStringLiteral("dbcCustomer"), QStringLiteral("Bolt & Nut"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT EstNo, CustID, RFQNo, EstDate FROM Estimate ORDER BY "
                                  "EstNo")),
              QStringList({QStringLiteral("1|%1|R1|1/5/2026").arg(m_acme),
                           QStringLiteral("2|%1|R2|11/22/2026").arg(m_bolt)}));
    EXPECT_EQ(notes(), QStringList({QStringLiteral("1|1|mine"), QStringLiteral("1|3|third"),
                                    QStringLiteral("2|1|Use coolant\r\nmine"),
                                    QStringLiteral("2|3|third")}));
}

TEST_P(EstimateScreenTest, GoingToEstimatesAndParts) {
    estimate(QStringLiteral("R1"), QStringLiteral("12A34"));
    estimate(QStringLiteral("R1"), QStringLiteral("99"));
    open(QStringLiteral("frmEstimate"));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("2"));
    whenShown(QStringLiteral("frmEstFind"), [this] {
        type(QStringLiteral("txtNo"), QStringLiteral("x77"));
        key(Qt::Key_Return);
    });
    expectBox(QStringLiteral("Estimate No. 77 does not exist!"));
    press(QStringLiteral("cmdFind"));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("2"));
    whenShown(QStringLiteral("frmEstFind"), [this] {
        type(QStringLiteral("txtNo"), QStringLiteral("2-3"));
        press(QStringLiteral("cmdOK"));
    });
    whenShown(QStringLiteral("frmEstFound"), [this] {
        EXPECT_EQ(cells(QStringLiteral("sprFound")),
                  QStringList({QStringLiteral("1|%1|R1|12A34|1/5/2026").arg(m_acme)}));
        press(QStringLiteral("cmdSelect"));
    });
    press(QStringLiteral("cmdGotoPart"));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("1"));
    whenShown(QStringLiteral("frmEstFind"), [this] {
        type(QStringLiteral("txtNo"), QStringLiteral("none"));
        press(QStringLiteral("cmdOK"));
    });
    expectBox(QStringLiteral("Part(s) not found!"), Answer::Ok, QStringLiteral("System Message"));
    press(QStringLiteral("cmdGotoPart"));
}

TEST_P(EstimateScreenTest, AFailedSaveKeepsWhatWasTyped) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    open(QStringLiteral("frmEstimate"));
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtPartno"), QStringLiteral("typed"));
    core::MainDatabase().execute(QStringLiteral("DROP TABLE EstMiscCost"));
    expectBoxContaining(QStringLiteral("Delete EstMiscCost"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("EDIT"));
    EXPECT_EQ(text(QStringLiteral("txtPartno")), QStringLiteral("typed"));
    EXPECT_EQ(rows(QStringLiteral("SELECT PartNo FROM Estimate")),
              QStringList({QStringLiteral("P1")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT SeqNo FROM EstOper")).size(), 3);
    expectBox(QStringLiteral("Would you like to save the current record before closing?"),
              Answer::Cancel, QStringLiteral("Save & Exit?"));
    EXPECT_FALSE(form().unload());
}

TEST_P(EstimateScreenTest, TwoStationsOnOneEstimate) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    const auto other = anotherStation();
    open(QStringLiteral("frmEstimate"));
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtDescription"), QStringLiteral("Bracket"));
    other->execute(QStringLiteral("UPDATE Estimate SET EstNotes = 'Ask Ray', AssemblyEstno = 9"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT Description, EstNotes, AssemblyEstno FROM Estimate")),
              QStringList(QStringLiteral("Bracket|Ask Ray|9")));

    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtDescription"), QStringLiteral("Bracket, left"));
    other->execute(QStringLiteral("UPDATE EstOper SET OperTime_Amount = 7 WHERE SeqNo = 2"));
    expectBoxContaining(QStringLiteral("has been changed at another station"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("EDIT"));
    EXPECT_EQ(text(QStringLiteral("txtDescription")), QStringLiteral("Bracket, left"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(cell(QStringLiteral("sprOper"), 1, Time), QStringLiteral("7.00"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT OperTime_Amount FROM EstOper ORDER BY SeqNo")),
              (QStringList{QStringLiteral("2.5"), QStringLiteral("7"), QStringLiteral("100")}));

    press(QStringLiteral("cmdEdit"));
    other->execute(QStringLiteral("DELETE FROM Estimate"));
    expectBoxContaining(QStringLiteral("Record is deleted."));
    press(QStringLiteral("cmdSave"));
}

TEST_P(EstimateScreenTest, DeletingTheLastOneGoesToAdd) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    open(QStringLiteral("frmEstimate"));
    const QString question =
        QStringLiteral("You are about to delete the current Estimate. Are you sure?");
    expectBox(question, Answer::No, QStringLiteral("Delete Estimate"));
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(text(QStringLiteral("lblEstno")), QStringLiteral("1"));
    expectBox(question, Answer::Yes, QStringLiteral("Delete Estimate"));
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("ADD"));
    EXPECT_EQ(rows(QStringLiteral("SELECT EstNo FROM EstOper")), QStringList());
}

TEST_P(EstimateScreenTest, WhoMayNotSeeMoneySeesNone) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    core::shared().CurrentUserName = QStringLiteral("Guest");
    open(QStringLiteral("frmEstimate"));
    for (const char16_t* name : {u"fpQtyPrice(0)", u"fpQtyQP(4)", u"fpQtyTotal(2)", u"fpOutContr",
                                 u"fpFixed", u"txtEstShopRate"})
        EXPECT_FALSE(isVisible(QString::fromUtf16(name))) << QString::fromUtf16(name).toStdString();
    EXPECT_FALSE(isEnabled(QStringLiteral("cmdCreateJob")));
    auto* grid = control<controls::Grid>(QStringLiteral("sprOper"));
    const auto hidden = [&](int row, int column) {
        return grid->model()->index(row, column).data(Qt::AccessibleTextRole).toString().isEmpty();
    };
    EXPECT_TRUE(hidden(0, Rate));
    EXPECT_FALSE(hidden(0, Time));
    EXPECT_TRUE(hidden(2, Time));
}

TEST_P(EstimateScreenTest, ADefaultSetIsMadeChangedAndStartsAnEstimate) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    open(QStringLiteral("frmEstimate"));
    whenShown(QStringLiteral("frmEstNew"), [this] {
        check(QStringLiteral("Option1"));
        check(QStringLiteral("chkDefault"));
        press(QStringLiteral("cmdOK"));
    });
    whenShown(QStringLiteral("frmDefSet"), [this] {
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdSelect")));
        whenShown(QStringLiteral("frmDefNew"), [this] {
            type(QStringLiteral("txtDescription"), QStringLiteral("Shaft"));
            for (int i = 0; i < 2; ++i) { // Mill, Plating
                selectRow(QStringLiteral("lvwAvail"), 0);
                press(QStringLiteral("cmdAddRemove(0)"));
            }
            press(QStringLiteral("cmdUpDown(0)"));
            press(QStringLiteral("cmdOK"));
        });
        press(QStringLiteral("cmdNew"));
        EXPECT_EQ(cells(QStringLiteral("sprDef")),
                  QStringList({QStringLiteral("Plating|Yes"), QStringLiteral("Mill|No")}));
        expectInput(QStringLiteral("Please enter the new Default Set Name:"),
                    QStringLiteral("Axle"));
        press(QStringLiteral("cmdSaveAs"));
        whenShown(QStringLiteral("frmDefNew"), [this] {
            selectRow(QStringLiteral("lvwSel"), 0);
            press(QStringLiteral("cmdAddRemove(1)"));
            type(QStringLiteral("txtDescription"), QStringLiteral("shaft"));
            expectBox(QStringLiteral("Set Description already exists. Duplicate is not allowed."));
            press(QStringLiteral("cmdOK"));
            type(QStringLiteral("txtDescription"), QStringLiteral("Pin"));
            press(QStringLiteral("cmdOK"));
        });
        press(QStringLiteral("cmdEdit"));
        EXPECT_EQ(cells(QStringLiteral("sprDef")), QStringList({QStringLiteral("Mill|No")}));
        choose(QStringLiteral("dbcDef"), QStringLiteral("Shaft"));
        press(QStringLiteral("cmdSelect"));
    });
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(rowCount(QStringLiteral("sprOper")), 2);
    EXPECT_EQ(cell(QStringLiteral("sprOper"), 0, Description), QStringLiteral("Plating"));
    EXPECT_EQ(notes(), QStringList({QStringLiteral("0|2|Use coolant")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT SetDescription, SeqNo, OperNo FROM DefaultSet INNER JOIN "
                                  "DefaultSetOper ON DefaultSet.SetNo = DefaultSetOper.SetNo "
                                  "ORDER BY SetDescription, SeqNo")),
              QStringList({QStringLiteral("Pin|1|%1").arg(m_mill),
                           QStringLiteral("Shaft|1|%1").arg(m_plate),
                           QStringLiteral("Shaft|2|%1").arg(m_mill)}));
    expectBox(QStringLiteral("Would you like to save the current record before closing?"),
              Answer::No);
    EXPECT_TRUE(form().unload());
    // What was staged stays, for the next save to take over.
    EXPECT_EQ(notes().size(), 1);
}

TEST_P(EstimateScreenTest, AJobsRoutingBecomesAnEstimate) {
    estimate(QStringLiteral("R1"), QStringLiteral("P1"));
    const qint64 jobNo = job(database(), m_bolt);
    database().execute(QStringLiteral("INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                                      "OperShopRate) VALUES(%1,1,%2,1.25,44)")
                           .arg(jobNo)
                           .arg(m_mill));
    estimating::NoteStaging(database(), estimating::jobRouting(), jobNo)
        .write(1, QStringLiteral("job's own"));
    open(QStringLiteral("frmEstimate"));
    const auto start = [&](const QString& number) {
        whenShown(QStringLiteral("frmEstNew"), [this, number] {
            check(QStringLiteral("Option4"));
            check(QStringLiteral("chkCarryCus"));
            check(QStringLiteral("chkNotes"));
            check(QStringLiteral("chkDefault"));
            type(QStringLiteral("txtJobno"), number);
            press(QStringLiteral("cmdOK"));
        });
    };
    start(QStringLiteral("99"));
    expectBox(QStringLiteral("Job No. 99 does not exist!"));
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("lblEstimateMode")), QStringLiteral("BROWSE"));

    start(QString::number(jobNo));
    expectBox(QStringLiteral("You are about to copy Job No. %1 into a new Estimate. Are you sure?")
                  .arg(jobNo),
              Answer::Yes);
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("dbcCustomer")), QStringLiteral("Bolt & Nut"));
    EXPECT_EQ(text(QStringLiteral("txtRfqno")), QStringLiteral("R1"));
    EXPECT_EQ(text(QStringLiteral("txtPartno")), QStringLiteral("JP-1"));
    EXPECT_EQ(text(QStringLiteral("txtQtyBreak(0)")), QStringLiteral("12"));
    EXPECT_EQ(text(QStringLiteral("fpQtyQP(0)")), QStringLiteral("3.2500"));
    EXPECT_EQ(text(QStringLiteral("fpQtyTotal(0)")), QStringLiteral("39.00"));
    EXPECT_EQ(text(QStringLiteral("fpQtyPrice(0)")), QStringLiteral("4.5833")); // 55 by 12
    EXPECT_EQ(notes(), QStringList({QStringLiteral("0|1|Use coolant\r\njob's own")}));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(text(QStringLiteral("txtPartno")), QStringLiteral("P1"));
}

TEST_P(EstimateScreenTest, FixedCostItemsAreKeptAndGuarded) {
    open(QStringLiteral("frmMiscItems"));
    whenShown(QStringLiteral("frmMIAddEdit"), [this] {
        expectBox(QStringLiteral("Description may not be blank!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDescription"), QStringLiteral("bar|'#[]\""));
        expectBox(QStringLiteral("Units may not be blank!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("cboUnitofMeasure"), QStringLiteral("barrels and more"));
        expectBox(QStringLiteral("bar already exists!"));
        press(QStringLiteral("cmdOK"));
        EXPECT_EQ(focusName(), QStringLiteral("txtDescription"));
        type(QStringLiteral("txtDescription"), QStringLiteral("Oil"));
        type(QStringLiteral("txtUnitPrice"), QStringLiteral("1.23456"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(cells(QStringLiteral("lvwMI")),
              QStringList({QStringLiteral("Bar|FT|$12.5000|1"),
                           QStringLiteral("Oil|BARRELS AN|$1.2346|3"),
                           QStringLiteral("Sheet|EA|$4.0000|2")}));
    selectRow(QStringLiteral("lvwMI"), 2);
    whenShown(QStringLiteral("frmMIAddEdit"), [this] {
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdOKNew")));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdEdit"));
    // An edit writes one blank behind the unit.
    EXPECT_EQ(rows(QStringLiteral("SELECT UnitOfMeasure FROM MiscItems WHERE ItemNo = 2")),
              QStringList({QStringLiteral("EA ")}));

    database().execute(QStringLiteral("INSERT INTO EstMiscCost (EstNo, ItemNo) VALUES(1, 2)"));
    expectBox(QStringLiteral("This fixed cost item has been included in either an estimate or a "
                             "job. It cannot be deleted!"),
              Answer::Ok, QStringLiteral("Delete"));
    press(QStringLiteral("cmdDelete"));
    selectRow(QStringLiteral("lvwMI"), 1);
    expectBox(QStringLiteral("Delete this item?"), Answer::Yes, QStringLiteral("Delete"));
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(rowCount(QStringLiteral("lvwMI")), 2);
}

MIRSA_BOTH_ENGINES(EstimateScreenTest);
