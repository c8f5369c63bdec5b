#include "estimating/EstimatingShop.h"
#include "estimating/NoteStaging.h"
#include "platform/values/Literals.h"

using namespace shoprows;
using screen::Answer;

namespace {

/// The estimate module on a shop with two customers, three operations and two fixed cost items.
class EstimateScreenTest : public EstimatingShop {
  protected:
    void prepare() override {
        EstimatingShop::prepare();
        jet::Database& db = database();
        m_bolt = customer(db, u"Bolt & Nut"_s);
        operationNote(db, m_mill, u"Use coolant"_s);
        item(db, u"Bar"_s, u"FT"_s, 12.5);
        item(db, u"Sheet"_s, u"EA"_s, 4);
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
        draft.operations = {row(m_mill, u"Mill"_s, 2.5), row(m_turn, u"Turn"_s, 1),
                            row(m_plate, u"Plating"_s, 100, false)};
        draft.operations[1].rate = values::Currency::fromInteger(35);
        return saveEstimate(core::MainDatabase(), 0, draft).key;
    }
    void note(qint64 estNo, int seqNo, const QString& text) {
        estimating::NoteStaging staging(core::MainDatabase(), estimating::estimateRouting(), estNo);
        staging.write(seqNo, text);
        staging.adopt(estNo);
    }
    QStringList notes() {
        return rows(u"SELECT EstNo, SeqNo, OperNotes FROM EstOperNote "
                    "ORDER BY EstNo, SeqNo"_s);
    }

    qint64 m_bolt = 0;
};

enum OperColumn { Seq, Note, Description, Time, Unit, Rate };
enum MiscColumn { MiscDescription, MiscUnit, MiscPrice, MiscQuantity, MiscTotal };

} // namespace

TEST_P(EstimateScreenTest, AnEmptyShopStartsWithAnEstimateToAdd) {
    expectBox(u"There are no records in the database. Before you can use the "
              "Estimate module you must add at least one Estimate. Would you like "
              "to do so now?"_s,
              Answer::Yes, u"No Records!"_s);
    open(u"frmEstimate"_s);
    EXPECT_EQ(text(u"lblEstno"_s), u"New"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"ADD"_s);
    EXPECT_EQ(text(u"txtEstShopRate"_s), u"60.00"_s);

    expectBox(u"Please enter Rfq No."_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"txtRfqno"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"ADD"_s);
}

TEST_P(EstimateScreenTest, OperationsAndCostsArePickedAndReckonedAsTheyCome) {
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    whenShown(u"frmEstNew"_s, [this] {
        check(u"Option2"_s);
        check(u"chkCarryCus"_s);
        press(u"cmdOK"_s);
    });
    whenShown(u"frmSelOper"_s, [this] {
        selectRow(u"lvwAvail"_s, 0); // Mill, with a note
        press(u"cmdAddRemove(0)"_s);
        selectRow(u"lvwAvail"_s, 0); // Plating
        press(u"cmdAddRemove(0)"_s);
        EXPECT_EQ(cells(u"lvwSel"_s), QStringList({u"Mill|yes"_s, u"Plating  *oc|no"_s}));
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"dbcCustomer"_s), u"Acme"_s);
    EXPECT_EQ(text(u"txtRfqno"_s), u"R1"_s);
    EXPECT_EQ(rowCount(u"sprOper"_s), 2);
    EXPECT_EQ(notes(), QStringList({u"0|1|Use coolant"_s}));

    type(u"txtPartno"_s, u"P-9"_s);
    type(u"txtQuantity"_s, u"10"_s);
    leave();
    setCell(u"sprOper"_s, 0, Time, u"2.5"_s);
    setCell(u"sprOper"_s, 1, Time, u"100"_s);
    whenShown(u"frmInsItem"_s, [this] {
        EXPECT_EQ(rowCount(u"lstItems"_s), 2);
        selectRow(u"lstItems"_s, 0);
        EXPECT_EQ(text(u"txtUnitPrice"_s), u"12.5000"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdMisc(0)"_s);
    setCell(u"sprMisc"_s, 0, MiscQuantity, u"4"_s);
    EXPECT_EQ(cell(u"sprMisc"_s, 0, MiscTotal), u"50.00"_s);
    type(u"txtQtyDiscount(1)"_s, u"10"_s);
    leave();
    type(u"fpQtyQP(0)"_s, u"40"_s);
    leave();
    // The record on screen kept the rate of each row: 2.5 h at 40, 100 outside, 50 of material.
    EXPECT_EQ(text(u"fpOutContr"_s), u"100.00"_s);
    EXPECT_EQ(text(u"fpFixed"_s), u"50.00"_s);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"25.0000"_s);
    EXPECT_EQ(text(u"fpQtyPrice(1)"_s), u"22.5000"_s);
    EXPECT_EQ(text(u"fpQtyTotal(0)"_s), u"400.00"_s);

    expectBox(u"You are about to recalculate the Pricing for Inhouse Operations. "
              "Are you sure?"_s,
              Answer::Yes);
    press(u"cmdOperRate(0)"_s);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"30.0000"_s); // at 60
    press(u"cmdSave"_s);

    EXPECT_EQ(text(u"lblEstimateMode"_s), u"BROWSE"_s);
    EXPECT_EQ(rows(u"SELECT EstNo, PartNo, Quantity, QtyPriceA, QtyQPA, QtyTotalA, "
                   "OneShopRate FROM Estimate WHERE PartNo = 'P-9'"_s),
              QStringList({u"2|P-9|10|30|40|400|True"_s}));
    EXPECT_EQ(rows(u"SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate FROM "
                   "EstOper WHERE EstNo = 2 ORDER BY SeqNo"_s),
              QStringList({u"1|%1|2.5|40"_s.arg(m_mill), u"2|%1|100|0"_s.arg(m_plate)}));
    EXPECT_EQ(notes(), QStringList({u"2|1|Use coolant"_s}));
    EXPECT_EQ(text(u"lblEstno"_s), u"2"_s);
}

TEST_P(EstimateScreenTest, CancelPutsRowsNotesAndFieldsBack) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 2, u"two"_s);
    note(estNo, 3, u"three"_s);
    const QStringList before = notes();
    open(u"frmEstimate"_s);
    const QStringList shown = cells(u"sprOper"_s);
    press(u"cmdEdit"_s);
    type(u"txtPartno"_s, u"other"_s);
    clickCell(u"sprOper"_s, 1, Description);
    expectBox(u"Delete operation Turn?"_s, Answer::Yes);
    press(u"cmdOper(1)"_s);
    EXPECT_EQ(rowCount(u"sprOper"_s), 2);
    // The removed operation is offered again, and goes in front of the first.
    clickCell(u"sprOper"_s, 0, Description);
    whenShown(u"frmInsOper"_s, [this] {
        EXPECT_EQ(rowCount(u"lstOper"_s), 1);
        selectRow(u"lstOper"_s, 0);
        EXPECT_EQ(text(u"lblOperShopRate"_s), u"Hourly Rate: $35.00"_s);
        check(u"optPosition(0)"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdOper(0)"_s);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Description), u"Turn"_s);
    EXPECT_EQ(notes(), QStringList({u"1|0|two"_s, u"1|3|three"_s}));

    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(notes(), before);
    EXPECT_EQ(cells(u"sprOper"_s), shown);
    EXPECT_EQ(text(u"txtPartno"_s), u"P1"_s);
}

TEST_P(EstimateScreenTest, TabGoesThroughTheEstimateAsItReads) {
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    press(u"cmdEdit"_s);
    QString breaks;
    for (const QString& name :
         {u" txtQtyBreak(%1)"_s, u" txtQtyDiscount(%1)"_s, u" fpQtyQP(%1)"_s}) {
        for (int i = name.startsWith(u" fp") ? 0 : 1; i < 5; ++i)
            breaks += name.arg(i);
    }
    EXPECT_EQ(
        tabOrder().join(u' '),
        u"dbcCustomer txtRfqno cmdRfqno txtPartno cmdPartno txtEstDate txtQuantity "
        "txtEstShopRate txtDescription txtMaterial qt_tabwidget_tabbar txtNotes(0) sprOper "
        "cmdOper(0) cmdOper(1) cmdOperRate(0) cmdOperRate(1) sprMisc cmdMisc(0) cmdMisc(1)"_s +
            breaks + u" cmdSave cmdCancel dbcJobsCreated cmdMemory"_s)
        << "figures that are only shown are passed over";
}

TEST_P(EstimateScreenTest, NotesAreReadInBrowseAndWrittenInEdit) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 1, u"first"_s);
    open(u"frmEstimate"_s);
    whenShown(u"frmEstOperNote"_s, [this] {
        EXPECT_EQ(text(u"Text1"_s), u"first"_s);
        EXPECT_TRUE(isLocked(u"Text1"_s));
        EXPECT_FALSE(isVisible(u"cmdCancel"_s));
        press(u"cmdOK"_s);
    });
    clickCell(u"sprOper"_s, 0, Note);
    press(u"cmdEdit"_s);
    whenShown(u"frmEstOperNote"_s, [this] {
        type(u"Text1"_s, QString());
        press(u"cmdOK"_s);
    });
    clickCell(u"sprOper"_s, 0, Note);
    EXPECT_EQ(notes(), QStringList());
    auto* grid = control<controls::Grid>(u"sprOper"_s);
    EXPECT_FALSE(grid->hasPicture(0, Note));
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"BROWSE"_s);
}

TEST_P(EstimateScreenTest, ACopyTakesTheRowsAndTheWantedNotes) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 1, u"mine"_s);
    note(estNo, 3, u"third"_s);
    open(u"frmEstimate"_s);
    whenShown(u"frmEstNew"_s, [this] {
        check(u"Option3"_s);
        check(u"chkNotes"_s);
        check(u"chkDefault"_s);
        press(u"cmdOK"_s);
    });
    expectBox(u"You are about to copy the current Estimate into a new Estimate. Are "
              "you sure?"_s,
              Answer::Yes);
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"COPYEST"_s);
    EXPECT_EQ(text(u"lblCustID"_s), QString());
    EXPECT_EQ(text(u"txtRfqno"_s), QString());
    EXPECT_EQ(text(u"txtPartno"_s), u"P1"_s);
    EXPECT_EQ(notes(), QStringList({u"0|1|Use coolant\r\nmine"_s, u"0|3|third"_s, u"1|1|mine"_s,
                                    u"1|3|third"_s}));
    type(u"txtRfqno"_s, u"R2"_s);
    expectBox(u"Please select a Customer"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"dbcCustomer"_s);
    choose(u"dbcCustomer"_s, u"Bolt & Nut"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(
        rows(u"SELECT EstNo, CustID, RFQNo, EstDate FROM Estimate ORDER BY "
             "EstNo"_s),
        QStringList({u"1|%1|R1|1/5/2026"_s.arg(m_acme), u"2|%1|R2|11/22/2026"_s.arg(m_bolt)}));
    EXPECT_EQ(notes(), QStringList({u"1|1|mine"_s, u"1|3|third"_s, u"2|1|Use coolant\r\nmine"_s,
                                    u"2|3|third"_s}));
}

TEST_P(EstimateScreenTest, GoingToEstimatesAndParts) {
    estimate(u"R1"_s, u"12A34"_s);
    estimate(u"R1"_s, u"99"_s);
    open(u"frmEstimate"_s);
    EXPECT_EQ(text(u"lblEstno"_s), u"2"_s);
    whenShown(u"frmEstFind"_s, [this] {
        type(u"txtNo"_s, u"x77"_s);
        key(Qt::Key_Return);
    });
    expectBox(u"Estimate No. 77 does not exist!"_s);
    press(u"cmdFind"_s);
    EXPECT_EQ(text(u"lblEstno"_s), u"2"_s);
    whenShown(u"frmEstFind"_s, [this] {
        type(u"txtNo"_s, u"2-3"_s);
        press(u"cmdOK"_s);
    });
    whenShown(u"frmEstFound"_s, [this] {
        EXPECT_EQ(cells(u"sprFound"_s), QStringList({u"1|%1|R1|12A34|1/5/2026"_s.arg(m_acme)}));
        press(u"cmdSelect"_s);
    });
    press(u"cmdGotoPart"_s);
    EXPECT_EQ(text(u"lblEstno"_s), u"1"_s);
    whenShown(u"frmEstFind"_s, [this] {
        type(u"txtNo"_s, u"none"_s);
        press(u"cmdOK"_s);
    });
    expectBox(u"Part(s) not found!"_s, Answer::Ok, u"System Message"_s);
    press(u"cmdGotoPart"_s);
}

TEST_P(EstimateScreenTest, AFailedSaveKeepsWhatWasTyped) {
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    press(u"cmdEdit"_s);
    type(u"txtPartno"_s, u"typed"_s);
    core::MainDatabase().execute(u"DROP TABLE EstMiscCost"_s);
    expectBoxContaining(u"Delete EstMiscCost"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"EDIT"_s);
    EXPECT_EQ(text(u"txtPartno"_s), u"typed"_s);
    EXPECT_EQ(rows(u"SELECT PartNo FROM Estimate"_s), QStringList({u"P1"_s}));
    EXPECT_EQ(rows(u"SELECT SeqNo FROM EstOper"_s).size(), 3);
    expectBox(u"Would you like to save the current record before closing?"_s, Answer::Cancel,
              u"Save & Exit?"_s);
    EXPECT_FALSE(form().unload());
}

TEST_P(EstimateScreenTest, TwoStationsOnOneEstimate) {
    estimate(u"R1"_s, u"P1"_s);
    const auto other = anotherStation();
    open(u"frmEstimate"_s);
    press(u"cmdEdit"_s);
    type(u"txtDescription"_s, u"Bracket"_s);
    other->execute(u"UPDATE Estimate SET EstNotes = 'Ask Ray', AssemblyEstno = 9"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Description, EstNotes, AssemblyEstno FROM Estimate"_s),
              QStringList(u"Bracket|Ask Ray|9"_s));

    // Both on the same time: the lines are loaded again, the header stays as typed.
    press(u"cmdEdit"_s);
    type(u"txtDescription"_s, u"Bracket, left"_s);
    setCell(u"sprOper"_s, 1, Time, u"5"_s);
    other->execute(u"UPDATE EstOper SET OperTime_Amount = 7 WHERE SeqNo = 2"_s);
    expectBoxContaining(u"The time of the operation Turn has been changed at another station since "
                        "you opened this record.\r\nThere: 7.00\r\nHere: 5.00"_s,
                        Answer::Yes);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"EDIT"_s);
    EXPECT_EQ(text(u"txtDescription"_s), u"Bracket, left"_s);
    EXPECT_EQ(cell(u"sprOper"_s, 1, Time), u"7.00"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Description FROM Estimate"_s), QStringList(u"Bracket, left"_s));
    EXPECT_EQ(rows(u"SELECT OperTime_Amount FROM EstOper ORDER BY SeqNo"_s),
              (QStringList{u"2.5"_s, u"7"_s, u"100"_s}));

    // Both on the same field of the header: whoever is asked says which one stands.
    press(u"cmdEdit"_s);
    type(u"txtDescription"_s, u"Mine"_s);
    other->execute(u"UPDATE Estimate SET Description = 'Theirs'"_s);
    expectBoxContaining(u"There: Theirs\r\nHere: Mine"_s, Answer::No);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"txtDescription"_s);
    expectBoxContaining(u"Do you want to save yours?"_s, Answer::Yes);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT Description FROM Estimate"_s), QStringList(u"Mine"_s));

    press(u"cmdEdit"_s);
    other->execute(u"DELETE FROM Estimate"_s);
    expectBoxContaining(u"Record is deleted."_s);
    press(u"cmdSave"_s);
}

TEST_P(EstimateScreenTest, RfqNotesFollowCustomerAndNumber) {
    database().execute(
        u"INSERT INTO RfqNotes (CustID, RFQNo, rfqnotes) VALUES(%1,'R1','Acme one')"_s.arg(m_acme));
    database().execute(
        u"INSERT INTO RfqNotes (CustID, RFQNo, rfqnotes) VALUES(%1,'R1','Bolt one')"_s.arg(m_bolt));
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    EXPECT_EQ(text(u"txtNotes(2)"_s), u"Acme one"_s);
    press(u"cmdEdit"_s);
    type(u"txtNotes(2)"_s, u"typed"_s);
    go(u"txtRfqno"_s);
    leave();
    EXPECT_EQ(text(u"txtNotes(2)"_s), u"typed"_s) << "the pair is the same";
    choose(u"dbcCustomer"_s, u"Bolt & Nut"_s);
    leave();
    EXPECT_EQ(text(u"txtNotes(2)"_s), u"Bolt one\r\ntyped"_s);
    type(u"txtNotes(2)"_s, u"Bolt one"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT CustID, rfqnotes FROM RfqNotes"_s),
              QStringList(u"%1|Bolt one"_s.arg(m_bolt)));
}

TEST_P(EstimateScreenTest, ACopyIsMadeOfWhatIsStored) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 2, u"for turning"_s);
    open(u"frmEstimate"_s);
    // While the screen stands, another station takes the first operation out.
    const auto other = anotherStation();
    const auto before = *estimating::loadEstimate(*other, estNo);
    auto after = before;
    after.operations.erase(after.operations.begin());
    estimating::NoteStaging(*other, estimating::estimateRouting(), estNo).rowRemoved(1, 3);
    estimating::saveEstimate(*other, estNo, after, &before);
    whenShown(u"frmEstNew"_s, [this] {
        check(u"Option3"_s);
        check(u"chkCarryCus"_s);
        check(u"chkNotes"_s);
        press(u"cmdOK"_s);
    });
    expectBoxContaining(u"You are about to copy"_s, Answer::Yes);
    press(u"cmdNew"_s);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Description), u"Turn"_s);
    EXPECT_EQ(notes(), QStringList({u"0|1|for turning"_s, u"1|1|for turning"_s}));
    expectBoxContaining(u"Are you sure"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

TEST_P(EstimateScreenTest, NotesThatAnEndedEditLeftElsewhereAreBackInTheNextOne) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 2, u"two"_s);
    note(estNo, 3, u"three"_s);
    // A station removes the first row and ends before it saves.
    estimating::NoteStaging(database(), estimating::estimateRouting(), estNo).rowRemoved(1, 3);
    open(u"frmEstimate"_s);
    press(u"cmdEdit"_s);
    EXPECT_FALSE(control<controls::Grid>(u"sprOper"_s)->hasPicture(0, Note));
    press(u"cmdSave"_s);
    EXPECT_EQ(notes(), QStringList({u"1|2|two"_s, u"1|3|three"_s}));
}

TEST_P(EstimateScreenTest, DeletingTheLastOneGoesToAdd) {
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    const QString question = u"You are about to delete the current Estimate. Are you sure?"_s;
    expectBox(question, Answer::No, u"Delete Estimate"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(text(u"lblEstno"_s), u"1"_s);
    expectBox(question, Answer::Yes, u"Delete Estimate"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"ADD"_s);
    EXPECT_EQ(rows(u"SELECT EstNo FROM EstOper"_s), QStringList());
}

TEST_P(EstimateScreenTest, WhoMayNotSeeMoneySeesNone) {
    estimate(u"R1"_s, u"P1"_s);
    core::shared().CurrentUserName = u"Guest"_s;
    open(u"frmEstimate"_s);
    for (const char16_t* name : {u"fpQtyPrice(0)", u"fpQtyQP(4)", u"fpQtyTotal(2)", u"fpOutContr",
                                 u"fpFixed", u"txtEstShopRate"})
        EXPECT_FALSE(isVisible(QString::fromUtf16(name))) << QString::fromUtf16(name).toStdString();
    EXPECT_FALSE(isEnabled(u"cmdCreateJob"_s));
    auto* grid = control<controls::Grid>(u"sprOper"_s);
    const auto hidden = [&](int row, int column) {
        return grid->model()->index(row, column).data(Qt::AccessibleTextRole).toString().isEmpty();
    };
    EXPECT_TRUE(hidden(0, Rate));
    EXPECT_FALSE(hidden(0, Time));
    EXPECT_TRUE(hidden(2, Time));
    // A contractor's amount can be typed all the same, and stays where nothing is.
    press(u"cmdEdit"_s);
    setCell(u"sprOper"_s, 2, Time, QString());
    EXPECT_TRUE(grid->isCellLocked(0, Rate));
    press(u"cmdSave"_s);
    const QString amounts = u"SELECT OperTime_Amount FROM EstOper WHERE OperNo = %1"_s.arg(m_plate);
    EXPECT_EQ(rows(amounts), QStringList{u"100"_s});
    press(u"cmdEdit"_s);
    setCell(u"sprOper"_s, 2, Time, u"75"_s);
    EXPECT_TRUE(hidden(2, Time));
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(amounts), QStringList{u"75"_s});
}

TEST_P(EstimateScreenTest, RowsMoveWithTheirNotesAndComeBackWithThem) {
    const qint64 estNo = estimate(u"R1"_s, u"P1"_s);
    note(estNo, 2, u"two"_s);
    note(estNo, 3, u"three"_s);
    open(u"frmEstimate"_s);
    EXPECT_EQ(control<controls::Grid>(u"sprOper"_s)->activeRow(), 0);
    press(u"cmdEdit"_s);
    clickCell(u"sprOper"_s, 1, Description);
    key(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Description), u"Turn"_s);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Seq), u"1"_s);
    EXPECT_EQ(notes(), QStringList({u"1|1|two"_s, u"1|3|three"_s}));
    expectBox(u"Delete operation Turn?"_s, Answer::Yes);
    press(u"cmdOper(1)"_s);
    EXPECT_EQ(notes(), QStringList({u"1|0|two"_s, u"1|2|three"_s}));
    go(u"sprOper"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Description), u"Turn"_s);
    EXPECT_TRUE(control<controls::Grid>(u"sprOper"_s)->hasPicture(0, Note));
    EXPECT_EQ(notes(), QStringList({u"1|1|two"_s, u"1|3|three"_s}));

    go(u"sprOper"_s);
    setCell(u"sprOper"_s, 0, Time, u"1.5"_s);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"25.2500"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"23.5000"_s);
    clickCell(u"sprOper"_s, 0, Time);
    typeOn(u"1.2.3"_s);
    expectBox(u"\"1.2.3\" is not a number."_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"EDIT"_s);
    key(Qt::Key_Escape);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"BROWSE"_s);
    EXPECT_EQ(
        rows(u"SELECT OperNo FROM EstOper ORDER BY SeqNo"_s),
        QStringList({QString::number(m_turn), QString::number(m_mill), QString::number(m_plate)}));
    EXPECT_EQ(notes(), QStringList({u"1|1|two"_s, u"1|3|three"_s}));
}

TEST_P(EstimateScreenTest, ADefaultSetIsMadeChangedAndStartsAnEstimate) {
    estimate(u"R1"_s, u"P1"_s);
    open(u"frmEstimate"_s);
    whenShown(u"frmEstNew"_s, [this] {
        check(u"Option1"_s);
        check(u"chkDefault"_s);
        press(u"cmdOK"_s);
    });
    whenShown(u"frmDefSet"_s, [this] {
        EXPECT_FALSE(isEnabled(u"cmdSelect"_s));
        whenShown(u"frmDefNew"_s, [this] {
            type(u"txtDescription"_s, u"Shaft"_s);
            for (int i = 0; i < 2; ++i) { // Mill, Plating
                selectRow(u"lvwAvail"_s, 0);
                press(u"cmdAddRemove(0)"_s);
            }
            press(u"cmdUpDown(0)"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdNew"_s);
        EXPECT_EQ(cells(u"sprDef"_s), QStringList({u"Plating|Yes"_s, u"Mill|No"_s}));
        expectInput(u"Please enter the new Default Set Name:"_s, u"Axle"_s);
        press(u"cmdSaveAs"_s);
        whenShown(u"frmDefNew"_s, [this] {
            selectRow(u"lvwSel"_s, 0);
            press(u"cmdAddRemove(1)"_s);
            type(u"txtDescription"_s, u"shaft"_s);
            expectBox(u"Set Description already exists. Duplicate is not allowed."_s);
            press(u"cmdOK"_s);
            type(u"txtDescription"_s, u"Pin"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdEdit"_s);
        EXPECT_EQ(cells(u"sprDef"_s), QStringList({u"Mill|No"_s}));
        choose(u"dbcDef"_s, u"Shaft"_s);
        press(u"cmdSelect"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(rowCount(u"sprOper"_s), 2);
    EXPECT_EQ(cell(u"sprOper"_s, 0, Description), u"Plating"_s);
    EXPECT_EQ(notes(), QStringList({u"0|2|Use coolant"_s}));
    EXPECT_EQ(rows(u"SELECT SetDescription, SeqNo, OperNo FROM DefaultSet INNER JOIN "
                   "DefaultSetOper ON DefaultSet.SetNo = DefaultSetOper.SetNo "
                   "ORDER BY SetDescription, SeqNo"_s),
              QStringList({u"Pin|1|%1"_s.arg(m_mill), u"Shaft|1|%1"_s.arg(m_plate),
                           u"Shaft|2|%1"_s.arg(m_mill)}));
    expectBox(u"Would you like to save the current record before closing?"_s, Answer::No);
    EXPECT_TRUE(form().unload());
    // What was staged stays, for the next save to take over.
    EXPECT_EQ(notes().size(), 1);
}

TEST_P(EstimateScreenTest, AJobsRoutingBecomesAnEstimate) {
    estimate(u"R1"_s, u"P1"_s);
    const qint64 jobNo = job(database(), m_bolt);
    database().execute(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                       "OperShopRate) VALUES(%1,1,%2,1.25,44)"_s.arg(jobNo)
                           .arg(m_mill));
    estimating::NoteStaging(database(), estimating::jobRouting(), jobNo).write(1, u"job's own"_s);
    open(u"frmEstimate"_s);
    const auto start = [&](const QString& number) {
        whenShown(u"frmEstNew"_s, [this, number] {
            check(u"Option4"_s);
            check(u"chkCarryCus"_s);
            check(u"chkNotes"_s);
            check(u"chkDefault"_s);
            type(u"txtJobno"_s, number);
            press(u"cmdOK"_s);
        });
    };
    start(u"99"_s);
    expectBox(u"Job No. 99 does not exist!"_s);
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"lblEstimateMode"_s), u"BROWSE"_s);

    start(QString::number(jobNo));
    expectBox(u"You are about to copy Job No. %1 into a new Estimate. Are you sure?"_s.arg(jobNo),
              Answer::Yes);
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"dbcCustomer"_s), u"Bolt & Nut"_s);
    EXPECT_EQ(text(u"txtRfqno"_s), u"R1"_s);
    EXPECT_EQ(text(u"txtPartno"_s), u"JP-1"_s);
    EXPECT_EQ(text(u"txtQtyBreak(0)"_s), u"12"_s);
    EXPECT_EQ(text(u"fpQtyQP(0)"_s), u"3.2500"_s);
    EXPECT_EQ(text(u"fpQtyTotal(0)"_s), u"39.00"_s);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"4.5833"_s); // 55 by 12
    EXPECT_EQ(notes(), QStringList({u"0|1|Use coolant\r\njob's own"_s}));
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(notes(), QStringList());
    EXPECT_EQ(text(u"txtPartno"_s), u"P1"_s);
}

TEST_P(EstimateScreenTest, FixedCostItemsAreKeptAndGuarded) {
    open(u"frmMiscItems"_s);
    whenShown(u"frmMIAddEdit"_s, [this] {
        expectBox(u"Description may not be blank!"_s);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"bar|'#[]\""_s);
        expectBox(u"Units may not be blank!"_s);
        press(u"cmdOK"_s);
        type(u"cboUnitofMeasure"_s, u"barrels and more"_s);
        expectBox(u"bar already exists!"_s);
        press(u"cmdOK"_s);
        EXPECT_EQ(focusName(), u"txtDescription"_s);
        type(u"txtDescription"_s, u"Oil"_s);
        type(u"txtUnitPrice"_s, u"1.23456"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(cells(u"lvwMI"_s), QStringList({u"Bar|FT|$12.5000|1"_s, u"Oil|BARRELS AN|$1.2346|3"_s,
                                              u"Sheet|EA|$4.0000|2"_s}));
    selectRow(u"lvwMI"_s, 2);
    whenShown(u"frmMIAddEdit"_s, [this] {
        EXPECT_FALSE(isEnabled(u"cmdOKNew"_s));
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    // An edit writes one blank behind the unit.
    EXPECT_EQ(rows(u"SELECT UnitOfMeasure FROM MiscItems WHERE ItemNo = 2"_s),
              QStringList({u"EA "_s}));

    database().execute(u"INSERT INTO EstMiscCost (EstNo, ItemNo) VALUES(1, 2)"_s);
    expectBox(u"This fixed cost item has been included in either an estimate or a "
              "job. It cannot be deleted!"_s,
              Answer::Ok, u"Delete"_s);
    press(u"cmdDelete"_s);
    selectRow(u"lvwMI"_s, 1);
    expectBox(u"Delete this item?"_s, Answer::Yes, u"Delete"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(rowCount(u"lvwMI"_s), 2);
}

MIRSA_BOTH_ENGINES(EstimateScreenTest);
