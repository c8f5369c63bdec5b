#include "estimating/EstimateStore.h"

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
        m_customer = customer(db(), QStringLiteral("O'Brien & Sons"));
        m_mill = operation(db(), QStringLiteral("Mill"));
        m_plate = operation(db(), QStringLiteral("Plating"), u'C', 0);
        m_steel = item(db(), QStringLiteral("Steel"), QStringLiteral("LB"), 2.5);
        m_rows = db().openRecordset(estimateRows());
    }

    EstimateDraft draft(const QString& rfqNo = QStringLiteral("R-1")) {
        EstimateDraft made;
        made.header.custId = m_customer;
        made.header.rfqNo = rfqNo;
        made.header.partNo = QStringLiteral("12A34");
        made.header.description = QStringLiteral("Farmer's bracket");
        made.header.quantity = 10;
        made.header.estDate = QDate(2026, 11, 22);
        made.header.shopRate = Currency::fromInteger(50);
        made.header.breaks[0] = {10, 0, Currency::fromDouble(25.125), Currency::fromInteger(30),
                                 Currency::fromInteger(300)};
        made.header.breaks[4] = {500, 12.5, {}, {}, {}};
        made.operations = {row(m_mill, QStringLiteral("Mill"), 2.5),
                           row(m_plate, QStringLiteral("Plating"), 100, false)};
        made.operations[0].rate = Currency::fromDouble(41.5);
        MiscRow steel{m_steel,
                      QStringLiteral("Steel"),
                      QStringLiteral("ft'"),
                      Currency::fromDouble(2.75),
                      Currency::fromDouble(3.5),
                      {}};
        steel.retotal();
        made.fixedCosts = {steel};
        return made;
    }

    qint64 save(EstimateDraft made, qint64 estNo = 0) {
        m_rows.requery();
        if (estNo != 0)
            m_rows.findFirst(QStringLiteral("EstNo = %1").arg(estNo));
        return saveEstimate(db(), m_rows, estNo, made);
    }

    /// Everything that an estimate's save may touch.
    QStringList all() {
        return rows(db(), QStringLiteral("SELECT * FROM Estimate ORDER BY EstNo")) +
               rows(db(), QStringLiteral("SELECT * FROM EstOper ORDER BY ID")) +
               rows(db(), QStringLiteral("SELECT * FROM EstMiscCost ORDER BY EstNo, ItemNo"));
    }

    qint64 m_customer = 0, m_mill = 0, m_plate = 0, m_steel = 0;
    jet::Recordset m_rows;
};

} // namespace

TEST_P(EstimateStoreTest, FaultsAreToldInTheOrderOfTheFields) {
    EstimateDraft made;
    made.header.rfqNo = QStringLiteral("  ");
    const auto fault = [&] {
        const auto complaint = checkDraft(made);
        return complaint ? complaint->text : QStringLiteral("none");
    };
    EXPECT_EQ(fault(), QStringLiteral("Please enter Rfq No."));
    made.header.rfqNo = QStringLiteral("R");
    EXPECT_EQ(fault(), QStringLiteral("Please enter Part No."));
    made.header.partNo = QStringLiteral("P");
    EXPECT_EQ(fault(), QStringLiteral("Please enter a Quantity greater than 0"));
    made.header.quantity = 1;
    EXPECT_EQ(fault(), QStringLiteral("Please select a Customer"));
    made.header.custId = 1;
    EXPECT_EQ(fault(), QStringLiteral("Please enter Estimate Date!"));
    made.header.estDate = QDate(2026, 1, 2);
    EXPECT_EQ(fault(), QStringLiteral("Please enter at least one operation"));
    made.operations.resize(1);
    EXPECT_EQ(fault(), QStringLiteral("none"));
}

TEST_P(EstimateStoreTest, ANewEstimateIsWrittenWholeAndReadBackAsItWas) {
    const qint64 estNo = save(draft());
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT CustID, RFQNo, PartNo, Description, Quantity, "
                                        "EstDate, EstShopRate, QtyPriceA, QtyQPA, QtyDiscountE, "
                                        "QtyBreakE FROM Estimate")),
              QStringList({QStringLiteral("%1|R-1|12A34|Farmer's bracket|10|11/22/2026|50|25.125|"
                                          "30|12.5|500")
                               .arg(m_customer)}));
    // A contractor's row has no rate.
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate FROM "
                                        "EstOper WHERE EstNo = %1 ORDER BY SeqNo")
                             .arg(estNo)),
              QStringList({QStringLiteral("1|%1|2.5|41.5").arg(m_mill),
                           QStringLiteral("2|%1|100|0").arg(m_plate)}));
    const auto operations = loadOperRows(db(), estimateRouting(), estNo, QStringLiteral("$"));
    ASSERT_EQ(operations.size(), 2u);
    EXPECT_TRUE(operations[0].inhouse);
    EXPECT_FALSE(operations[1].inhouse);
    EXPECT_EQ(operations[1].description, QStringLiteral("Plating"));
    const auto costs = loadMiscRows(db(), estimateRouting(), estNo);
    ASSERT_EQ(costs.size(), 1u);
    EXPECT_EQ(costs[0].unit, QStringLiteral("ft'"));
    EXPECT_EQ(costs[0].price, Currency::fromDouble(2.75));
    EXPECT_EQ(costs[0].total, Currency::fromDouble(9.625));

    // The row keeps its copy when the catalogue's price changes; an untimed row is written as 0.
    db().execute(QStringLiteral("UPDATE miscitems SET unitprice = 99"));
    EstimateDraft again = draft();
    again.operations[0].time.reset();
    again.fixedCosts = loadMiscRows(db(), estimateRouting(), estNo);
    save(again, estNo);
    EXPECT_EQ(loadMiscRows(db(), estimateRouting(), estNo)[0].price, Currency::fromDouble(2.75));
    EXPECT_EQ(*loadOperRows(db(), estimateRouting(), estNo, QStringLiteral("$"))[0].time, 0.0);
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT EstNo FROM Estimate")).size(), 1);
}

TEST_P(EstimateStoreTest, AFailureOnTheWayLeavesNothingBehind) {
    const qint64 first = save(draft());
    const QStringList before = all();
    EstimateDraft wide = draft();
    wide.header.partNo = QStringLiteral("changed");
    wide.operations.pop_back();
    wide.fixedCosts.push_back(wide.fixedCosts[0]);
    wide.fixedCosts[1].unit = QString(300, QLatin1Char('x'));
    for (const qint64 estNo : {qint64{0}, first}) {
        try {
            save(wide, estNo);
            FAIL() << "a unit of 300 letters was written";
        } catch (const jet::Error& error) {
            EXPECT_TRUE(error.text().endsWith(QStringLiteral("\r\nInsert EstMiscCost")))
                << error.text().toStdString();
        }
        EXPECT_EQ(all(), before);
    }
    // The set is of use again.
    EXPECT_GT(save(draft(QStringLiteral("R-2"))), first);
}

TEST_P(EstimateStoreTest, AnEstimateThatAnotherStationDeletedIsNotSavedOverItsNeighbour) {
    const qint64 gone = save(draft());
    const qint64 neighbour = save(draft(QStringLiteral("R-2")));
    m_rows.requery();
    m_rows.findFirst(QStringLiteral("EstNo = %1").arg(gone));
    const auto other = station();
    other->execute(QStringLiteral("DELETE FROM Estimate WHERE EstNo = %1").arg(gone));
    EstimateDraft changed = draft(QStringLiteral("changed"));
    EXPECT_EQ(errorOf([&] { saveEstimate(db(), m_rows, gone, changed); }), jet::errors::rowDeleted);
    m_rows.requery();
    EXPECT_EQ(errorOf([&] { saveEstimate(db(), m_rows, gone, changed); }), jet::errors::rowDeleted);
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT EstNo, RFQNo FROM Estimate")),
              QStringList({QStringLiteral("%1|R-2").arg(neighbour)}));
}

TEST_P(EstimateStoreTest, EverySaveGivesTheRowsNewIdentitiesAndTheNotesFollow) {
    const qint64 estNo = save(draft());
    NoteStaging notes(db(), estimateRouting(), estNo);
    notes.write(2, QStringLiteral("thin"));
    notes.adopt(estNo, 2);
    const QString bound = QStringLiteral("SELECT EstOper.ID FROM EstOper INNER JOIN EstOperNote ON "
                                         "EstOper.ID = EstOperNote.ID WHERE EstOper.SeqNo = 2");
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
        return rows(db(), QStringLiteral("SELECT RFQNo, rfqnotes FROM RfqNotes ORDER BY RFQNo"));
    };
    EstimateDraft one = draft(QStringLiteral("Q'1"));
    const qint64 first = save(one);
    saveRfqNotes(db(), one.header, {}, QStringLiteral("don't"));
    const qint64 second = save(one);
    saveRfqNotes(db(), one.header, {}, QStringLiteral("do"));
    EXPECT_EQ(stored(), QStringList({"Q'1|do"}));

    EstimateDraft moved = draft(QStringLiteral("Q2"));
    save(moved, first);
    saveRfqNotes(db(), moved.header, QStringLiteral("Q'1"), QStringLiteral("two"));
    EXPECT_EQ(stored(), QStringList({"Q'1|do", "Q2|two"})) << "another estimate is on the pair";
    save(moved, second);
    saveRfqNotes(db(), moved.header, QStringLiteral("Q'1"), QStringLiteral("both"));
    EXPECT_EQ(stored(), QStringList({"Q2|both"}));
}

TEST_P(EstimateStoreTest, DeletingTakesTheRowsAndLeavesTheJob) {
    const qint64 estNo = save(draft());
    const qint64 other = save(draft());
    const qint64 jobNo = job(db(), m_customer, estNo);
    NoteStaging(db(), estimateRouting(), estNo).write(1, QStringLiteral("note"));
    NoteStaging(db(), estimateRouting(), other).write(1, QStringLiteral("kept"));
    m_rows.requery();
    m_rows.findFirst(QStringLiteral("EstNo = %1").arg(estNo));
    deleteEstimate(db(), m_rows, estNo);
    const QString gone = QString::number(estNo);
    for (const char16_t* table : {u"Estimate", u"EstOper", u"EstMiscCost", u"EstOperNote"}) {
        EXPECT_FALSE(db().hasRows(QStringLiteral("SELECT * FROM %1 WHERE EstNo = %2")
                                      .arg(QString::fromUtf16(table), gone)));
        EXPECT_TRUE(db().hasRows(QStringLiteral("SELECT * FROM %1 WHERE EstNo = %2")
                                     .arg(QString::fromUtf16(table))
                                     .arg(other)));
    }
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT JobNo, EstNo FROM Job")),
              QStringList({QStringLiteral("%1|%2").arg(jobNo).arg(estNo)}));
}

TEST_P(EstimateStoreTest, AJobGivesItsPlanAndNotItsProgress) {
    const qint64 jobNo = job(db(), m_customer);
    db().execute(QStringLiteral("INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                                "OperShopRate, OperLocated, Status, EstOper) "
                                "VALUES(%1,1,%2,1.25,44,3,'F',9)")
                     .arg(jobNo)
                     .arg(m_mill));
    const auto made = draftFromJob(db(), jobNo, QStringLiteral("$"));
    ASSERT_TRUE(made);
    EXPECT_EQ(made->header.partNo, QStringLiteral("JP-1"));
    EXPECT_EQ(made->header.shopRate, Currency::fromDouble(55.5));
    EXPECT_FALSE(made->header.oneShopRate);
    EXPECT_EQ(made->header.breaks[0].quantity, 12);
    EXPECT_EQ(made->header.breaks[0].quoted, Currency::fromDouble(3.25));
    EXPECT_EQ(made->header.travelerNotes, QStringLiteral("go slow"));
    ASSERT_EQ(made->operations.size(), 1u);
    EXPECT_EQ(*made->operations[0].time, 1.25) << "the job's time, not its estimate";
    EXPECT_EQ(made->operations[0].rate, Currency::fromInteger(44));
    EXPECT_FALSE(draftFromJob(db(), jobNo + 1, QStringLiteral("$")));
}

TEST_P(EstimateStoreTest, AHyphenInAPartSearchStandsForAnyCharacter) {
    for (const char16_t* part : {u"12A34", u"12-34", u"X12-34/B", u"1234", u"12AB34"}) {
        EstimateDraft made = draft();
        made.header.partNo = QString::fromUtf16(part);
        save(made);
    }
    EXPECT_EQ(rows(db(), QStringLiteral("SELECT PartNo FROM Estimate WHERE PartNo LIKE '%1' "
                                        "ORDER BY EstNo")
                             .arg(partPattern(QStringLiteral("12-34")))),
              QStringList({"12A34", "12-34", "X12-34/B"}));
}

MIRSA_BOTH_ENGINES(EstimateStoreTest);
