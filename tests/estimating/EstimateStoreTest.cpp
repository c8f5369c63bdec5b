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
    void prepare() override {
        m_customer = customer(db(), u"O'Brien & Sons"_s);
        m_mill = operation(db(), u"Mill"_s);
        m_plate = operation(db(), u"Plating"_s, u'C', 0);
        m_steel = item(db(), u"Steel"_s, u"LB"_s, 2.5);
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
        return saveEstimate(db(), estNo, made).key;
    }

    /// Everything that an estimate's save may touch.
    QStringList all() {
        return rows(db(), u"SELECT * FROM Estimate ORDER BY EstNo"_s) +
               rows(db(), u"SELECT * FROM EstOper ORDER BY ID"_s) +
               rows(db(), u"SELECT * FROM EstMiscCost ORDER BY EstNo, ItemNo"_s);
    }

    qint64 m_customer = 0, m_mill = 0, m_plate = 0, m_steel = 0;
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
    const auto operations = loadOperRows(db(), estimateRouting(), estNo);
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
    EXPECT_EQ(*loadOperRows(db(), estimateRouting(), estNo)[0].time, 0.0);
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
    station()->execute(u"DELETE FROM Estimate WHERE EstNo = %1"_s.arg(gone));
    EXPECT_EQ(errorOf([&] { save(draft(u"changed"_s), gone); }), jet::errors::rowDeleted);
    EXPECT_EQ(rows(db(), u"SELECT EstNo, RFQNo FROM Estimate"_s),
              QStringList({u"%1|R-2"_s.arg(neighbour)}));
}

TEST_P(EstimateStoreTest, RowsThatStayKeepTheirIdentityAndTheirNotes) {
    const qint64 turn = operation(db(), u"Turn"_s), grind = operation(db(), u"Grind"_s);
    EstimateDraft made = draft();
    made.operations.insert(made.operations.begin() + 1, row(turn, u"Turn"_s, 1));
    const qint64 estNo = save(made);
    NoteStaging(db(), estimateRouting(), estNo).write(3, u"thin"_s);
    NoteStaging(db(), estimateRouting(), estNo).adopt(estNo);
    const EstimateDraft before = *loadEstimate(db(), estNo);

    // The first goes, a new one comes in front, the last one's amount changes.
    EstimateDraft after = before;
    after.operations[0] = row(grind, u"Grind"_s, 4);
    after.operations[2].time = 120;
    after.fixedCosts[0].quantity = Currency::fromInteger(2);
    after.fixedCosts[0].retotal();
    ASSERT_EQ(saveEstimate(db(), estNo, after, &before).key, estNo);
    const EstimateDraft stored = *loadEstimate(db(), estNo);
    ASSERT_EQ(stored.operations.size(), 3u);
    EXPECT_EQ(stored.operations[0].operNo, grind);
    EXPECT_NE(stored.operations[0].id, before.operations[0].id);
    for (std::size_t i : {1u, 2u})
        EXPECT_EQ(stored.operations[i].id, before.operations[i].id);
    EXPECT_EQ(*stored.operations[2].time, 120);
    EXPECT_EQ(stored.fixedCosts[0].total, Currency::fromDouble(5.5));
    EXPECT_EQ(rows(db(), u"SELECT ID, SeqNo, OperNotes FROM EstOperNote"_s),
              QStringList(u"%1|3|thin"_s.arg(before.operations[2].id)));
}

TEST_P(EstimateStoreTest, WhatTwoOfficesChangeIsJoinedAndPricedAnew) {
    const qint64 bolts = item(db(), u"Bolts"_s, u"EA"_s, 1),
                 nuts = item(db(), u"Nuts"_s, u"EA"_s, 1);
    EstimateDraft made = draft();
    for (const qint64 one : {bolts, nuts}) {
        made.fixedCosts.push_back({one,
                                   {},
                                   u"EA"_s,
                                   Currency::fromInteger(1),
                                   Currency::fromInteger(2),
                                   Currency::fromInteger(2)});
    }
    const qint64 estNo = save(made);
    const EstimateDraft before = *loadEstimate(db(), estNo);
    EstimateDraft theirs = before, mine = before;
    theirs.header.description = u"Theirs"_s;
    theirs.operations[0].rate = Currency::fromInteger(60);
    theirs.fixedCosts.erase(theirs.fixedCosts.begin() + 1); // the bolts
    theirs.fixedCosts[1].unit = u"BOX"_s;
    mine.header.material = u"Mine"_s;
    mine.header.oneShopRate = false;
    mine.operations[0].time = 3;
    mine.fixedCosts[2].price = Currency::fromInteger(4);
    mine.fixedCosts[2].retotal();
    ASSERT_NE(saveEstimate(db(), estNo, theirs, &before).key, 0);
    ASSERT_NE(saveEstimate(db(), estNo, mine, &before).key, 0);
    // 3 h at 60, 100 outside, 9.625 of steel and 8 of nuts, by 10.
    EXPECT_EQ(rows(db(), u"SELECT Description, Material, QtyPriceA FROM Estimate"_s),
              QStringList({"Theirs|Mine|29.7625"}));
    EXPECT_EQ(rows(db(), u"SELECT UnitofMeasure, UnitPrice, CostAmount FROM EstMiscCost ORDER BY "
                         "ItemNo"_s),
              QStringList({"ft'|2.75|9.625", "BOX|4|8"}));

    // The same thing changed by both: both values are told, and nothing is written.
    const QStringList stored = all();
    const auto told = [&](const EstimateDraft& one) {
        EstimateDraft copy = one;
        const auto outcome = saveEstimate(db(), estNo, copy, &before);
        EXPECT_EQ(outcome.key, 0);
        EXPECT_EQ(all(), stored);
        return outcome.conflict ? QStringList{outcome.conflict->what, outcome.conflict->theirs,
                                              outcome.conflict->mine}
                                : QStringList();
    };
    EstimateDraft both = before;
    both.header.description = u"Also mine"_s;
    EXPECT_EQ(told(both), QStringList({"Description", "Theirs", "Also mine"}));
    both = before;
    both.operations[0].rate = Currency::fromInteger(70);
    EXPECT_EQ(told(both), QStringList({"The rate of the operation Mill", "60.00", "70.00"}));
    both = before;
    both.fixedCosts[1].quantity = Currency::fromInteger(7);
    EXPECT_EQ(told(both), QStringList({"The fixed cost Bolts", "removed", "7.00 EA, 1.00"}));
    both = before;
    both.operations.erase(both.operations.begin());
    EXPECT_EQ(told(both), QStringList({"The operation Mill", "3.00, 60.00", "removed"}));
}

TEST_P(EstimateStoreTest, NotesOfAnRfqAreSharedAndGoWithItsLastEstimate) {
    const auto stored = [&] {
        return rows(db(), u"SELECT RFQNo, rfqnotes FROM RfqNotes ORDER BY RFQNo"_s);
    };
    const auto save = [&](qint64 estNo, const QString& rfqNo, const RfqNotesEntry& entry,
                          const QStringList& settled = {}) {
        EstimateDraft made = draft(rfqNo);
        const auto before = loadEstimate(db(), estNo);
        return saveEstimate(db(), estNo, made, before ? &*before : nullptr, entry, settled);
    };
    const qint64 first = save(0, u"Q'1"_s, {{}, u"don't"_s}).key;
    const qint64 second = save(0, u"Q'1"_s, {u"don't"_s, u"don't"_s}).key;
    EXPECT_EQ(stored(), QStringList({"Q'1|don't"}));
    // Another station's text stays where none was typed here, and is told where one was.
    db().execute(u"UPDATE RfqNotes SET rfqnotes = 'theirs'"_s);
    EXPECT_NE(save(second, u"Q'1"_s, {u"don't"_s, u"don't"_s}).key, 0);
    EXPECT_EQ(stored(), QStringList({"Q'1|theirs"}));
    const auto refused = save(second, u"Q'1"_s, {u"don't"_s, u"mine"_s});
    ASSERT_TRUE(refused.conflict);
    EXPECT_EQ(refused.conflict->theirs, u"theirs"_s);
    EXPECT_EQ(stored(), QStringList({"Q'1|theirs"}));
    save(second, u"Q'1"_s, {u"don't"_s, u"mine"_s}, {refused.conflict->column});
    EXPECT_EQ(stored(), QStringList({"Q'1|mine"}));

    save(first, u"Q2"_s, {{}, u"two"_s});
    EXPECT_EQ(stored(), QStringList({"Q'1|mine", "Q2|two"})) << "another estimate is on the pair";
    save(second, u"Q2"_s, {u"two"_s, u"both"_s});
    EXPECT_EQ(stored(), QStringList({"Q2|both"}));
    deleteEstimate(db(), first);
    EXPECT_EQ(stored(), QStringList({"Q2|both"}));
    deleteEstimate(db(), second);
    EXPECT_EQ(stored(), QStringList());
}

TEST_P(EstimateStoreTest, DeletingTakesTheRowsAndLeavesTheJob) {
    const qint64 estNo = save(draft());
    const qint64 other = save(draft());
    const qint64 jobNo = job(db(), m_customer, estNo);
    NoteStaging(db(), estimateRouting(), estNo).write(1, u"note"_s);
    NoteStaging(db(), estimateRouting(), other).write(1, u"kept"_s);
    deleteEstimate(db(), estNo);
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
    const auto made = draftFromJob(db(), jobNo);
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
    EXPECT_FALSE(draftFromJob(db(), jobNo + 1));
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
