#include "estimating/memory/Memory.h"
#include "core/MemoryScreen.h"
#include "estimating/EstimatingShop.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QTest>

#include <random>

using namespace shoprows;
using estimating::Memory;
using estimating::MemoryLine;

namespace {

/// A shop with some years of jobs of a few parts.
class MemoryTest : public EstimatingShop {
  protected:
    qint64 add(const QString& table, const QString& columns, const QString& values) {
        database().execute(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(table, columns, values));
        return database().lastCounter();
    }
    qint64 addJob(const QString& part, int pieces, bool shipped, qint64 estNo = 0) {
        return add(u"Job"_s,
                   u"CustID, PartNo, Quantity, Shipped, ShipDate, JobShopRate, OneShopRate, "
                   "JobShopCost, EstNo"_s,
                   u"%1, '%2', %3, %4, %5, 50, True, %6, %7"_s.arg(m_acme)
                       .arg(part)
                       .arg(pieces)
                       .arg(shipped ? u"True"_s : u"False"_s, shipped ? u"#5/1/2026#"_s : u"Null"_s)
                       .arg(pieces * 3 % 17)
                       .arg(estNo));
    }
    void addOperation(qint64 jobNo, qint64 operNo, double estimated, double amount,
                      const QString& status) {
        add(u"JobOper"_s, u"JobNo, OperNo, EstOper, OperTime_Amount, OperShopRate, Status"_s,
            u"%1, %2, %3, %4, 40, '%5'"_s.arg(jobNo).arg(operNo).arg(estimated).arg(amount).arg(
                status));
    }
    void book(qint64 jobNo, qint64 operNo, double hours, int scrap) {
        add(u"Timelog"_s, u"EmpID, JobNo, OperNo, AccumTime, PartsQty, PartsScrap, Status"_s,
            u"1, %1, %2, %3, 5, %4, 'D'"_s.arg(jobNo).arg(operNo).arg(hours).arg(scrap));
    }
    void makeYears() {
        std::mt19937 random(7);
        const auto below = [&](int limit) {
            return static_cast<int>(random() % static_cast<unsigned>(limit));
        };
        jet::Transaction transaction(database());
        for (int i = 0; i < 60; ++i) {
            const qint64 job =
                addJob(below(2) == 0 ? u"P-1"_s : u"p-2"_s, 1 + below(40), below(4) > 0);
            for (const qint64 oper : {m_mill, m_turn, m_plate}) {
                if (below(5) == 0)
                    continue;
                const bool plate = oper == m_plate;
                addOperation(job, oper, below(80) * 0.25, plate ? below(3) * 100 : 0,
                             below(2) == 0 ? u"F"_s : u"D"_s);
                for (int n = plate ? 0 : below(4); n > 0; --n)
                    book(job, oper, below(30) * 0.25, below(3));
            }
        }
        transaction.commit();
    }
    Memory recall(const QString& part, bool money = true) {
        return estimating::recall(
            database(),
            {0,
             part,
             {{m_mill, u"Mill"_s, true}, {m_turn, u"Turn"_s, true}, {m_plate, u"Plating"_s, false}},
             money},
            QDate(2026, 11, 22));
    }
    /// The figures of a select's first column, in order.
    std::vector<double> figures(const QString& select) {
        std::vector<double> found;
        jet::Recordset set = database().openRecordset(select, jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext())
            found.push_back(set.field(0).toDouble());
        std::sort(found.begin(), found.end());
        return found;
    }
    void expectLike(const estimating::Spread& spread, const std::vector<double>& sorted) {
        ASSERT_EQ(spread.count, static_cast<int>(sorted.size()));
        ASSERT_FALSE(sorted.empty());
        EXPECT_NEAR(spread.median,
                    (sorted[(sorted.size() - 1) / 2] + sorted[sorted.size() / 2]) / 2, 1e-9);
        const auto quarter = (sorted.size() - 1) / 4;
        EXPECT_GE(spread.low, sorted[quarter] - 1e-9);
        EXPECT_LE(spread.low, sorted[std::min(quarter + 1, sorted.size() - 1)] + 1e-9);
        EXPECT_GE(spread.high,
                  sorted[sorted.size() - 1 - std::min(quarter + 1, sorted.size() - 1)]);
        EXPECT_LE(spread.high, sorted[sorted.size() - 1 - quarter] + 1e-9);
    }
};

enum Column { Operation, Of, Jobs, Pieces, Estimated, Booked, BookedHalf, Each, EachHalf, ForLot };

} // namespace

TEST_P(MemoryTest, EachFigureIsThatOfASelectOfItsOwn) {
    makeYears();
    const Memory memory = recall(u"P-1"_s);
    ASSERT_EQ(memory.lines.size(), 7u);
    for (const MemoryLine& line : memory.lines) {
        SCOPED_TRACE(line.operation.description.toStdString() + (line.samePart ? " part" : ""));
        const QString part = line.samePart ? u" AND Job.PartNo = 'P-1'"_s : QString();
        if (line.operation.operNo == 0) {
            const QString done =
                u" FROM Job WHERE PartNo = 'P-1' AND Shipped = True AND (EXISTS (SELECT ID FROM "
                "Timelog t WHERE t.JobNo = Job.JobNo) OR EXISTS (SELECT ID FROM JobOper o WHERE "
                "o.JobNo = Job.JobNo AND o.OperNo = %1 AND o.OperTime_Amount <> 0))"_s.arg(m_plate);
            expectLike(line.booked, figures(u"SELECT Nz((SELECT SUM(AccumTime) FROM Timelog WHERE "
                                            "Timelog.JobNo = Job.JobNo), 0)"_s +
                                            done));
            expectLike(line.costEach, figures(u"SELECT JobShopCost"_s + done));
            EXPECT_EQ(line.pieces, figures(u"SELECT SUM(Quantity)"_s + done).at(0));
            continue;
        }
        const QString oper = QString::number(line.operation.operNo);
        if (line.operation.operNo == m_plate) {
            const QString done = u" FROM JobOper INNER JOIN Job ON JobOper.JobNo = Job.JobNo WHERE "
                                 "OperNo = %1 AND (Shipped = True OR Status = 'F') AND "
                                 "OperTime_Amount <> 0"_s.arg(oper) +
                                 part;
            expectLike(line.booked, figures(u"SELECT OperTime_Amount"_s + done));
            expectLike(line.costEach, figures(u"SELECT OperTime_Amount / Quantity"_s + done));
            continue;
        }
        const QString done =
            u" FROM (Timelog INNER JOIN Job ON Timelog.JobNo = Job.JobNo) INNER JOIN JobOper ON "
            "(JobOper.JobNo = Timelog.JobNo) AND (JobOper.OperNo = Timelog.OperNo) WHERE "
            "Timelog.OperNo = %1 AND (Job.Shipped = True OR JobOper.Status = 'F')"_s.arg(oper) +
            part;
        const QString byJob = done + u" GROUP BY Timelog.JobNo"_s;
        expectLike(line.booked, figures(u"SELECT SUM(AccumTime)"_s + byJob));
        expectLike(line.estimated, figures(u"SELECT MAX(EstOper)"_s + byJob));
        expectLike(line.bookedEach, figures(u"SELECT SUM(AccumTime) / MAX(Quantity)"_s + byJob));
        expectLike(line.costEach, figures(u"SELECT SUM(AccumTime) * 50 / MAX(Quantity)"_s + byJob));
        EXPECT_EQ(line.scrap, figures(u"SELECT SUM(PartsScrap)"_s + done).at(0));
        double pieces = 0;
        for (const double one : figures(u"SELECT MAX(Quantity)"_s + byJob))
            pieces += one;
        EXPECT_EQ(line.pieces, pieces);
    }
    EXPECT_EQ(recall(u"P-2"_s).lines[0].jobs.size(),
              figures(u"SELECT JobNo FROM Job WHERE PartNo = 'p-2'"_s).size())
        << "the case of a part number doesn't count";
    for (const MemoryLine& line : recall(u"P-1"_s, false).lines) {
        EXPECT_EQ(line.costEach.high, 0);
        EXPECT_TRUE(line.operation.inhouse || line.booked.high == 0);
    }
    if (database().isServer()) {
        const quint64 before = database().waits();
        recall(u"P-1"_s);
        EXPECT_EQ(database().waits() - before, 1u);
    }
}

TEST_P(MemoryTest, WhatWasQuotedIsWonLostOrOpen) {
    const auto quote = [this](const QString& date, const QString& price) {
        return add(u"Estimate"_s,
                   u"CustID, PartNo, Quantity, EstDate, QtyBreakA, QtyQPA, QtyBreakB, "
                   "QtyQPB"_s,
                   u"%1, 'P-1', 10, #%2#, 10, %3, 25, 7.5"_s.arg(m_acme).arg(date, price));
    };
    const qint64 won = quote(u"1/5/2026"_s, u"8"_s), lost = quote(u"2/5/2026"_s, u"9"_s);
    quote(u"11/1/2026"_s, u"9.5"_s);
    quote(u"1/5/2026"_s, u"0"_s);
    const qint64 job = addJob(u"P-1"_s, 10, false, won);
    using Outcome = estimating::QuotedBefore::Outcome;
    const auto quotes = recall(u"P-1"_s).quotes;
    ASSERT_EQ(quotes.size(), 4u);
    EXPECT_EQ(quotes[0].outcome, Outcome::NotQuoted);
    EXPECT_EQ(quotes[1].outcome, Outcome::Open);
    EXPECT_EQ(quotes[2].outcome, Outcome::Lost);
    EXPECT_EQ(quotes[2].estNo, lost);
    EXPECT_EQ(quotes[3].outcome, Outcome::Won);
    EXPECT_EQ(quotes[3].jobNo, job);
    EXPECT_EQ(quotes[3].company, u"Acme"_s);
    ASSERT_EQ(quotes[3].prices.size(), 2u);
    EXPECT_EQ(quotes[3].prices[1].quantity, 25);
    EXPECT_EQ(quotes[3].prices[1].each, values::Currency::fromDouble(7.5));
    EXPECT_EQ(recall(u"P-1"_s, false).quotes[3].prices[0].each, values::Currency());
}

TEST(SpreadTest, QuartilesLieBetweenTheirNeighbours) {
    const auto spread = estimating::spreadOf({5, 1, 4, 2, 3});
    EXPECT_EQ((std::vector{spread.low, spread.median, spread.high}), (std::vector{2.0, 3.0, 4.0}));
    const auto two = estimating::spreadOf({2, 1});
    EXPECT_EQ((std::vector{two.low, two.median, two.high}), (std::vector{1.25, 1.5, 1.75}));
    EXPECT_EQ(estimating::spreadOf({7}).count, 1);
    EXPECT_EQ(estimating::spreadOf({}).median, 0);
}

TEST_P(MemoryTest, AFigureGoesIntoTheCellByTheKeyboardAndComesOutAgain) {
    for (const auto& [pieces, hours] : {std::pair{10, 4.0}, {20, 10.0}, {5, 1.5}}) {
        const qint64 job = addJob(u"P-1"_s, pieces, true);
        addOperation(job, m_mill, 3, 0, u"F"_s);
        book(job, m_mill, hours, 1);
    }
    estimating::EstimateDraft draft;
    draft.header.custId = m_acme;
    draft.header.rfqNo = u"R1"_s;
    draft.header.partNo = u"P-1"_s;
    draft.header.quantity = 50;
    draft.header.oneShopRate = false;
    draft.operations = {row(m_mill, u"Mill"_s, 2.5), row(m_turn, u"Turn"_s, 1)};
    saveEstimate(database(), 0, draft);
    screen::Form* estimate = open(u"frmEstimate"_s);
    const auto memory = [&] { return screen::Forms::find(u"frmMemory"_s); };
    EXPECT_EQ(memory(), nullptr) << "it opens by itself for those who left it open";
    const quint64 waits = database().waits();
    press(u"cmdMemory"_s);
    ASSERT_NE(memory(), nullptr);
    use(memory());
    ASSERT_TRUE(QTest::qWaitFor([this] { return rowCount(u"sprMemory"_s) == 5; }));
    EXPECT_EQ(database().waits(), waits) << "nobody waits for it";
    // Mill is the active operation; of this part it is known.
    EXPECT_EQ(control<controls::Grid>(u"sprMemory"_s)->activeRow(), 1);
    EXPECT_EQ(cell(u"sprMemory"_s, 1, Jobs), u"3"_s);
    EXPECT_EQ(cell(u"sprMemory"_s, 1, Booked), u"4.00"_s);
    EXPECT_EQ(cell(u"sprMemory"_s, 1, Each), u"0.400"_s);
    EXPECT_EQ(cell(u"sprMemory"_s, 1, ForLot), u"20.00"_s);
    EXPECT_EQ(rowCount(u"sprJobs"_s), 3);
    EXPECT_FALSE(isEnabled(u"cmdBring"_s)) << "nothing is being entered";

    use(estimate);
    press(u"cmdEdit"_s);
    settle();
    use(memory());
    go(u"sprMemory"_s);
    key(Qt::Key_Return);
    use(estimate);
    EXPECT_EQ(cell(u"sprOper"_s, 0, 3), u"20.00"_s);
    EXPECT_EQ(focusName(), u"sprOper"_s);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"16.8000"_s) << "(20 h + 1 h) x 40 / 50";
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(cell(u"sprOper"_s, 0, 3), u"2.50"_s);
    key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(cell(u"sprOper"_s, 0, 3), u"20.00"_s);
    // A click on the figure of a job, and of another operation that nobody has made yet.
    use(memory());
    clickCell(u"sprJobs"_s, 0, 5);
    use(estimate);
    EXPECT_EQ(cell(u"sprOper"_s, 0, 3), u"1.50"_s);
    use(memory());
    clickCell(u"sprMemory"_s, 3, ForLot);
    use(estimate);
    EXPECT_EQ(cell(u"sprOper"_s, 1, 3), u"1.00"_s);
    // It follows the row, and another lot.
    control<controls::Grid>(u"sprOper"_s)->setActiveRow(1);
    type(u"txtQuantity"_s, u"100"_s);
    leave();
    settle();
    use(memory());
    EXPECT_EQ(control<controls::Grid>(u"sprMemory"_s)->activeRow(), 3);
    EXPECT_EQ(cell(u"sprMemory"_s, 1, ForLot), u"40.00"_s);
    press(u"cmdClose"_s);
    EXPECT_EQ(memory(), nullptr);
    use(estimate);
    press(u"cmdMemory"_s);
    expectBoxContaining(u"Would you like to save"_s, screen::Answer::No);
    estimate->unload();
    settle();
    EXPECT_EQ(memory(), nullptr);
    open(u"frmEstimate"_s);
    EXPECT_NE(memory(), nullptr) << "left open, it is there again";
}

MIRSA_BOTH_ENGINES(MemoryTest);
