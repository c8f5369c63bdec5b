#include "estimating/EstimateStore.h"
#include "platform/values/Literals.h"

#include "estimating/ShopRows.h"
#include "support/DatabaseFixture.h"

using namespace estimating;
using namespace shoprows;
using values::Currency;

namespace {

class EstimateStoreTest : public testsupport::ShopDatabaseFixture {
  protected:
    void SetUp() override {
        ShopDatabaseFixture::SetUp();
        if (IsSkipped())
            return;
        m_customer = customer(db(), u"O'Brien & Sons"_s);
        m_mill = operation(db(), u"Mill"_s);
        m_plate = operation(db(), u"Plating"_s, u'C', 0);
        m_steel = item(db(), u"Steel"_s, u"LB"_s, 2.5);
        m_rows = db().openRecordset(estimateRows());
    }

    EstimateDraft draft(const QString& rfqNo = u"R-1"_s) {
        EstimateDraft made;
        made.header.custId = m_customer;
        made.header.rfqNo = rfqNo;
        made.header.partNo = u"12A34"_s;
        made.header.description = u"Farmer's bracket"_s;
        made.header.quantity = 10;
        made.header.estDate = QDate(2026, 11, 22);
        made.header.shopRate = Currency::fromInteger(50);
        made.header.breaks[0] = {10, 0, Currency::fromDouble(25.125), Currency::fromInteger(30),
                                 Currency::fromInteger(300)};
        made.header.breaks[4] = {500, 12.5, {}, {}, {}};
        made.operations = {row(m_mill, u"Mill"_s, 2.5), row(m_plate, u"Plating"_s, 100, false)};
        made.operations[0].rate = Currency::fromDouble(41.5);
        MiscRow steel{
            m_steel, u"Steel"_s, u"ft'"_s, Currency::fromDouble(2.75), Currency::fromDouble(3.5),
            {}};
        steel.retotal();
        made.fixedCosts = {steel};
        return made;
    }

    qint64 save(EstimateDraft made, qint64 estNo = 0) {
        m_rows.requery();
        if (estNo != 0)
            m_rows.findFirst(u"EstNo = %1"_s.arg(estNo));
        return saveEstimate(db(), m_rows, estNo, made);
    }

    /// Everything that an estimate's save may touch.
    QStringList all() {
        return rows(db(), u"SELECT * FROM Estimate ORDER BY EstNo"_s) +
               rows(db(), u"SELECT * FROM EstOper ORDER BY ID"_s) +
               rows(db(), u"SELECT * FROM EstMiscCost ORDER BY EstNo, ItemNo"_s);
    }

    qint64 m_customer = 0, m_mill = 0, m_plate = 0, m_steel = 0;
    jet::Recordset m_rows;
};

} // namespace

TEST_P(EstimateStoreTest, FaultsAreToldInTheOrderOfTheFields) {
    EstimateDraft made;
    made.header.rfqNo = u"  "_s;
    const auto fault = [&] {
        const auto complaint = checkDraft(made);
        return complaint ? complaint->text : u"none"_s;
    };
    EXPECT_EQ(fault(), u"Please enter Rfq No."_s);
    made.header.rfqNo = u"R"_s;
    EXPECT_EQ(fault(), u"Please enter Part No."_s);
    made.header.partNo = u"P"_s;
    EXPECT_EQ(fault(), u"Please enter a Quantity greater than 0"_s);
    made.header.quantity = 1;
    EXPECT_EQ(fault(), u"Please select a Customer"_s);
    made.header.custId = 1;
    EXPECT_EQ(fault(), u"Please enter Estimate Date!"_s);
    made.header.estDate = QDate(2026, 1, 2);
    EXPECT_EQ(fault(), u"Please enter at least one operation"_s);
    made.operations.resize(1);
    EXPECT_EQ(fault(), u"none"_s);
}

TEST_P(EstimateStoreTest, ANewEstimateIsWrittenWholeAndReadBackAsItWas) {
    const qint64 estNo = save(draft());
    EXPECT_EQ(rows(db(), u"SELECT CustID, RFQNo, PartNo, Description, Quantity, "
                         "EstDate, EstShopRate, QtyPriceA, QtyQPA, QtyDiscountE, "
                         "QtyBreakE FROM Estimate"_s),
              QStringList({u"%1|R-1|12A34|Farmer's bracket|10|11/22/2026|50|25.125|"
                           "30|12.5|500"_s.arg(m_customer)}));
    // A contractor's row has no rate.
    EXPECT_EQ(rows(db(), u"SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate FROM "
                         "EstOper WHERE EstNo = %1 ORDER BY SeqNo"_s.arg(estNo)),
              QStringList({u"1|%1|2.5|41.5"_s.arg(m_mill), u"2|%1|100|0"_s.arg(m_plate)}));
    const auto operations = loadOperRows(db(), estimateRouting(), estNo, u"$"_s);
    ASSERT_EQ(operations.size(), 2u);
    EXPECT_TRUE(operations[0].inhouse);
    EXPECT_FALSE(operations[1].inhouse);
    EXPECT_EQ(operations[1].description, u"Plating"_s);
    const auto costs = loadMiscRows(db(), estimateRouting(), estNo);
    ASSERT_EQ(costs.size(), 1u);
    EXPECT_EQ(costs[0].unit, u"ft'"_s);
    EXPECT_EQ(costs[0].price, Currency::fromDouble(2.75));
    EXPECT_EQ(costs[0].total, Currency::fromDouble(9.625));

    // The row keeps its copy when the catalogue's price changes; an untimed row is written as 0.
    db().execute(u"UPDATE miscitems SET unitprice = 99"_s);
    EstimateDraft again = draft();
    again.operations[0].time.reset();
    again.fixedCosts = loadMiscRows(db(), estimateRouting(), estNo);
    save(again, estNo);
    EXPECT_EQ(loadMiscRows(db(), estimateRouting(), estNo)[0].price, Currency::fromDouble(2.75));
    EXPECT_EQ(*loadOperRows(db(), estimateRouting(), estNo, u"$"_s)[0].time, 0.0);
    EXPECT_EQ(rows(db(), u"SELECT EstNo FROM Estimate"_s).size(), 1);
}

TEST_P(EstimateStoreTest, AFailureOnTheWayLeavesNothingBehind) {
    const qint64 first = save(draft());
    const QStringList before = all();
    EstimateDraft wide = draft();
    wide.header.partNo = u"changed"_s;
    wide.operations.pop_back();
    wide.fixedCosts.push_back(wide.fixedCosts[0]);
    wide.fixedCosts[1].unit = QString(300, QLatin1Char('x'));
    for (const qint64 estNo : {qint64{0}, first}) {
        try {
            save(wide, estNo);
            FAIL() << "a unit of 300 letters was written";
        } catch (const jet::Error& error) {
            EXPECT_TRUE(error.text().endsWith(u"\r\nInsert EstMiscCost"_s))
                << error.text().toStdString();
        }
        EXPECT_EQ(all(), before);
    }
    // The set is of use again.
    EXPECT_GT(save(draft(u"R-2"_s)), first);
}

TEST_P(EstimateStoreTest, AnEstimateThatAnotherStationDeletedIsNotSavedOverItsNeighbour) {
    const qint64 gone = save(draft());
    const qint64 neighbour = save(draft(u"R-2"_s));
    m_rows.requery();
    m_rows.findFirst(u"EstNo = %1"_s.arg(gone));
    const auto other = station();
    other->execute(u"DELETE FROM Estimate WHERE EstNo = %1"_s.arg(gone));
    EstimateDraft changed = draft(u"changed"_s);
    EXPECT_EQ(errorOf([&] { saveEstimate(db(), m_rows, gone, changed); }), jet::errors::rowDeleted);
    m_rows.requery();
    EXPECT_EQ(errorOf([&] { saveEstimate(db(), m_rows, gone, changed); }), jet::errors::rowDeleted);
    EXPECT_EQ(rows(db(), u"SELECT EstNo, RFQNo FROM Estimate"_s),
              QStringList({u"%1|R-2"_s.arg(neighbour)}));
}

TEST_P(EstimateStoreTest, EverySaveGivesTheRowsNewIdentitiesAndTheNotesFollow) {
    const qint64 estNo = save(draft());
    NoteStaging notes(db(), estimateRouting(), estNo);
    notes.write(2, u"thin"_s);
    notes.adopt(estNo, 2);
    const QString bound = u"SELECT EstOper.ID FROM EstOper INNER JOIN EstOperNote ON "
                          "EstOper.ID = EstOperNote.ID WHERE EstOper.SeqNo = 2"_s;
    const QStringList before = rows(db(), bound);
    save(draft(), estNo);
    notes.adopt(estNo, 2);
    EXPECT_EQ(rows(db(), bound).size(), 1);
    EXPECT_NE(rows(db(), bound), before);
    EXPECT_TRUE(loadOperRows(db(), estimateRouting(), estNo, {})[1].hasNote);
    EXPECT_FALSE(loadOperRows(db(), estimateRouting(), estNo, {})[0].hasNote);
}

TEST_P(EstimateStoreTest, NotesOfAnRfqAreSharedAndGoWithItsLastEstimate) {
    const auto stored = [&] {
        return rows(db(), u"SELECT RFQNo, rfqnotes FROM RfqNotes ORDER BY RFQNo"_s);
    };
    EstimateDraft one = draft(u"Q'1"_s);
    const qint64 first = save(one);
    saveRfqNotes(db(), one.header, {}, u"don't"_s);
    const qint64 second = save(one);
    saveRfqNotes(db(), one.header, {}, u"do"_s);
    EXPECT_EQ(stored(), QStringList({"Q'1|do"}));

    EstimateDraft moved = draft(u"Q2"_s);
    save(moved, first);
    saveRfqNotes(db(), moved.header, u"Q'1"_s, u"two"_s);
    EXPECT_EQ(stored(), QStringList({"Q'1|do", "Q2|two"})) << "another estimate is on the pair";
    save(moved, second);
    saveRfqNotes(db(), moved.header, u"Q'1"_s, u"both"_s);
    EXPECT_EQ(stored(), QStringList({"Q2|both"}));
}

TEST_P(EstimateStoreTest, DeletingTakesTheRowsAndLeavesTheJob) {
    const qint64 estNo = save(draft());
    const qint64 other = save(draft());
    const qint64 jobNo = job(db(), m_customer, estNo);
    NoteStaging(db(), estimateRouting(), estNo).write(1, u"note"_s);
    NoteStaging(db(), estimateRouting(), other).write(1, u"kept"_s);
    m_rows.requery();
    m_rows.findFirst(u"EstNo = %1"_s.arg(estNo));
    deleteEstimate(db(), m_rows, estNo);
    const QString gone = QString::number(estNo);
    for (const char16_t* table : {u"Estimate", u"EstOper", u"EstMiscCost", u"EstOperNote"}) {
        EXPECT_FALSE(db().hasRows(
            u"SELECT * FROM %1 WHERE EstNo = %2"_s.arg(QString::fromUtf16(table), gone)));
        EXPECT_TRUE(db().hasRows(
            u"SELECT * FROM %1 WHERE EstNo = %2"_s.arg(QString::fromUtf16(table)).arg(other)));
    }
    EXPECT_EQ(rows(db(), u"SELECT JobNo, EstNo FROM Job"_s),
              QStringList({u"%1|%2"_s.arg(jobNo).arg(estNo)}));
}

TEST_P(EstimateStoreTest, AJobGivesItsPlanAndNotItsProgress) {
    const qint64 jobNo = job(db(), m_customer);
    db().execute(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                 "OperShopRate, OperLocated, Status, EstOper) "
                 "VALUES(%1,1,%2,1.25,44,3,'F',9)"_s.arg(jobNo)
                     .arg(m_mill));
    const auto made = draftFromJob(db(), jobNo, u"$"_s);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->header.partNo, u"JP-1"_s);
    EXPECT_EQ(made->header.shopRate, Currency::fromDouble(55.5));
    EXPECT_FALSE(made->header.oneShopRate);
    EXPECT_EQ(made->header.breaks[0].quantity, 12);
    EXPECT_EQ(made->header.breaks[0].quoted, Currency::fromDouble(3.25));
    EXPECT_EQ(made->header.travelerNotes, u"go slow"_s);
    ASSERT_EQ(made->operations.size(), 1u);
    EXPECT_EQ(*made->operations[0].time, 1.25) << "the job's time, not its estimate";
    EXPECT_EQ(made->operations[0].rate, Currency::fromInteger(44));
    EXPECT_FALSE(draftFromJob(db(), jobNo + 1, u"$"_s));
}

TEST_P(EstimateStoreTest, AHyphenInAPartSearchStandsForAnyCharacter) {
    for (const char16_t* part : {u"12A34", u"12-34", u"X12-34/B", u"1234", u"12AB34"}) {
        EstimateDraft made = draft();
        made.header.partNo = QString::fromUtf16(part);
        save(made);
    }
    EXPECT_EQ(rows(db(), u"SELECT PartNo FROM Estimate WHERE PartNo LIKE '%1' "
                         "ORDER BY EstNo"_s.arg(partPattern(u"12-34"_s))),
              QStringList({"12A34", "12-34", "X12-34/B"}));
}

MIRSA_BOTH_ENGINES(EstimateStoreTest);
