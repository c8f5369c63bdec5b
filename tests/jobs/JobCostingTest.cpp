#include "jobs/JobCosting.h"
#include "platform/values/Literals.h"

#include "JobShop.h"
#include "platform/values/Format.h"

#include <random>

using namespace jobs;
using estimating::MiscRow;
using estimating::OperRow;
using values::Currency;

namespace {

/// Whole numbers only: hundredths of hours and of rates, ten-thousandths of money.
struct MadeJob {
    struct Row {
        qint64 operNo = 0;
        bool inhouse = true;
        qint64 rate = 0;    ///< hundredths
        qint64 planned = 0; ///< hundredths
        qint64 hours = 0;   ///< booked, hundredths
        qint64 amount = 0;  ///< of a contractor, hundredths
    };
    qint64 jobNo = 0;
    bool oneRate = true;
    qint64 shopRate = 0; ///< hundredths
    qint64 quantity = 0;
    qint64 invoiceEach = 0; ///< ten-thousandths
    qint64 fixed = 0;       ///< ten-thousandths
    std::vector<Row> rows;

    qint64 hours() const {
        qint64 sum = 0;
        for (const Row& row : rows)
            sum += row.hours;
        return sum;
    }
    /// Exact cost in ten-thousandths.
    qint64 cost() const {
        qint64 sum = fixed;
        for (const Row& row : rows)
            sum += row.inhouse ? row.hours * (oneRate ? shopRate : row.rate) : row.amount * 100;
        return sum;
    }
    Currency costEach() const {
        const qint64 parts = quantity > 0 ? quantity : 1;
        qint64 each = cost() / parts;
        const qint64 twiceRest = (cost() % parts) * 2;
        if (twiceRest > parts || (twiceRest == parts && each % 2 != 0))
            ++each;
        return Currency::fromTenThousandths(each);
    }
};

QString hundredths(qint64 n) {
    return QString::number(n / 100) + u"."_s +
           QString::number(n % 100).rightJustified(2, QLatin1Char('0'));
}

QString tenThousandths(qint64 n) {
    return Currency::fromTenThousandths(n).toText();
}

class JobCosting : public JobShop {
  protected:
    void prepare() override {
        for (int i = 0; i < 4; ++i) {
            const QString number = QString::number(i);
            m_inhouse.push_back(operation(u"In "_s + number, u"I"_s, u"40"_s));
            m_contractors.push_back(operation(u"Out "_s + number, u"C"_s, u"0"_s));
        }
        m_overhead = operation(u"Sweeping"_s, u"O"_s, u"0"_s);
        m_item = item(u"Bar stock"_s);
    }

    qint64 upTo(qint64 most) { return std::uniform_int_distribution<qint64>(0, most)(m_random); }

    MadeJob make() {
        MadeJob made;
        made.oneRate = upTo(1) == 1;
        made.shopRate = upTo(9999);
        made.quantity = upTo(4) == 0 ? 0 : upTo(300);
        made.invoiceEach = upTo(9'999'999);
        made.jobNo =
            insert(u"Job"_s,
                   u"CustID, Quantity, JobShopRate, OneShopRate, "
                   "InvoiceEach, Shipped"_s,
                   u"1,%1,%2,%3,%4,False"_s.arg(made.quantity)
                       .arg(hundredths(made.shopRate), made.oneRate ? u"True"_s : u"False"_s,
                            tenThousandths(made.invoiceEach)));
        int seqNo = 0;
        const auto put = [&](qint64 operNo, bool inhouse) {
            MadeJob::Row row;
            row.operNo = operNo;
            row.inhouse = inhouse;
            row.rate = inhouse ? upTo(9999) : 0;
            row.planned = upTo(2000);
            row.amount = inhouse ? 0 : upTo(50000);
            // An in-house row starts with a figure that its bookings replace.
            jobOper(made.jobNo, ++seqNo, operNo, inhouse ? u"7.77"_s : hundredths(row.amount),
                    hundredths(row.rate), u" "_s, hundredths(row.planned));
            for (qint64 i = upTo(3); i > 0; --i) {
                const qint64 booked = upTo(999);
                time(made.jobNo, operNo, hundredths(booked));
                row.hours += inhouse ? booked : 0;
            }
            if (upTo(3) == 0)
                time(made.jobNo, operNo, u"NULL"_s);
            made.rows.push_back(row);
        };
        for (const qint64 operNo : m_inhouse) {
            if (upTo(3) != 0)
                put(operNo, true);
            else
                time(made.jobNo, operNo, u"5"_s); // not on the routing
        }
        for (const qint64 operNo : m_contractors) {
            if (upTo(1) == 0)
                put(operNo, false);
        }
        time(made.jobNo, m_overhead, u"3.25"_s);
        for (qint64 i = upTo(3); i > 0; --i) {
            const qint64 total = upTo(5'000'000);
            jobCost(made.jobNo, m_item, tenThousandths(total));
            made.fixed += total;
        }
        return made;
    }

    void expectFigures(const MadeJob& made) {
        SCOPED_TRACE(testing::Message() << "job " << made.jobNo);
        const QString of = u" WHERE JobNo = "_s + QString::number(made.jobNo);
        const jet::Recordset job =
            database().openRecordset(u"SELECT * FROM Job"_s + of, jet::RecordsetType::Snapshot);
        EXPECT_EQ(job[u"JobShopCost"].toCurrency().toText(), made.costEach().toText());
        EXPECT_EQ(values::format(job[u"TotalHours"].toDouble(), u"#0.00"),
                  values::format(static_cast<double>(made.hours()) / 100, u"#0.00"));
        EXPECT_EQ(job[u"InvoiceTotal"].toCurrency().tenThousandths(),
                  made.invoiceEach * made.quantity);
        QStringList expected;
        for (const MadeJob::Row& row : made.rows) {
            expected << u"%1|%2|%3"_s.arg(row.operNo)
                            .arg(
                                jet::Value(
                                    static_cast<double>(row.inhouse ? row.hours : row.amount) / 100)
                                    .toText(),
                                jet::Value(static_cast<double>(row.planned) / 100).toText());
        }
        QStringList actual;
        jet::Recordset rows = database().openRecordset(
            u"SELECT * FROM JobOper"_s + of + u" ORDER BY SeqNo"_s, jet::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext()) {
            // A sum of hundredths in doubles may miss by a hair.
            actual << u"%1|%2|%3"_s.arg(
                rows.text(u"OperNo"),
                jet::Value(std::round(rows[u"OperTime_Amount"].toDouble() * 1e6) / 1e6).toText(),
                rows.text(u"EstOper"));
        }
        EXPECT_EQ(actual, expected);
    }

    std::mt19937 m_random{20260302};
    std::vector<qint64> m_inhouse;
    std::vector<qint64> m_contractors;
    qint64 m_overhead = 0;
    qint64 m_item = 0;
};

TEST_P(JobCosting, RollsUpBookingsAmountsAndFixedCosts) {
    std::vector<MadeJob> shop;
    for (int i = 0; i < 12; ++i)
        shop.push_back(make());
    // The job before and after stay as they are while one is rolled up.
    UpdateJobCost(database(), shop[1].jobNo);
    expectFigures(shop[1]);
    EXPECT_EQ(rows(u"SELECT JobShopCost FROM Job WHERE JobNo = %1"_s.arg(shop[0].jobNo)),
              QStringList(QString()));
    std::vector<qint64> all{shop.back().jobNo + 1000, shop[0].jobNo};
    for (const MadeJob& made : shop)
        all.push_back(made.jobNo);
    UpdateJobCost(database(), all);
    for (const MadeJob& made : shop)
        expectFigures(made);
    UpdateJobCost(database(), shop.back().jobNo + 1000);
}

TEST_P(JobCosting, HoursAddUpWithoutNoise) {
    const qint64 made = job(customer(u"Acme"_s), u"noise"_s, 1);
    const qint64 turning = operation(u"Fine turning"_s, u"I"_s, u"40"_s);
    jobOper(made, 1, turning);
    // Ten tenths are less than one in binary fractions.
    for (int i = 0; i < 10; ++i)
        time(made, turning, u"0.1"_s);
    UpdateJobCost(database(), made);
    EXPECT_EQ(
        rows(u"SELECT OperNo FROM JobOper WHERE JobNo = %1 AND OperTime_Amount = 1"_s.arg(made)),
        QStringList(QString::number(turning)));
}

TEST_P(JobCosting, FollowsTheFloor) {
    MadeJob made = make();
    while (made.rows.empty() || !made.rows[0].inhouse)
        made = make();
    UpdateJobCost(database(), made.jobNo);
    expectFigures(made);

    MadeJob::Row& row = made.rows[0];
    time(made.jobNo, row.operNo, u"2.35"_s);
    row.hours += 235;
    UpdateJobCost(database(), made.jobNo);
    expectFigures(made);

    database().execute(u"DELETE * FROM Timelog WHERE JobNo = %1 AND OperNo = %2"_s.arg(made.jobNo)
                           .arg(row.operNo));
    row.hours = 0;
    UpdateJobCost(database(), made.jobNo);
    expectFigures(made);
}

TEST_P(JobCosting, TheScreenShowsWhatIsStored) {
    for (int i = 0; i < 12; ++i) {
        const MadeJob made = make();
        SCOPED_TRACE(testing::Message() << "job " << made.jobNo);
        UpdateJobCost(database(), made.jobNo);
        const JobFigures figures = CalcJob(
            estimating::loadOperRows(database(), estimating::jobRouting(), made.jobNo),
            estimating::loadMiscRows(database(), estimating::jobRouting(), made.jobNo),
            made.oneRate, Currency::fromTenThousandths(made.shopRate * 100),
            static_cast<double>(made.quantity), Currency::fromTenThousandths(made.invoiceEach));
        // Seven digits are what a 32-bit sum holds.
        EXPECT_NEAR(figures.costEach, made.costEach().toDouble(),
                    made.costEach().toDouble() * 2e-7 + 0.00006);
        EXPECT_NEAR(figures.hours, static_cast<double>(made.hours()) / 100, 0.001);
        EXPECT_NEAR(figures.fixed, static_cast<double>(made.fixed) / 10000, 0.001);
        EXPECT_EQ(figures.invoiceTotal.tenThousandths(), made.invoiceEach * made.quantity);
    }
}

TEST_P(JobCosting, TheLastTimeRecordTakesTheStatusAlong) {
    const qint64 jobNo = job(1, u"A-1"_s, 5);
    const QString fine = u"F"_s;
    jobOper(jobNo, 1, m_inhouse[0], u"0"_s, u"0"_s, fine);
    jobOper(jobNo, 2, m_inhouse[1], u"0"_s, u"0"_s, u"D"_s);
    time(jobNo, m_inhouse[0], u"1"_s);
    time(jobNo + 1, m_inhouse[1], u"1"_s);
    const QString statuses =
        u"SELECT Status FROM JobOper WHERE JobNo = %1 ORDER BY SeqNo"_s.arg(jobNo);

    const std::vector<JobOperation> all{{jobNo, m_inhouse[0]},
                                        {jobNo, m_inhouse[1]},
                                        {jobNo, m_inhouse[0]},
                                        {jobNo, m_inhouse[2]},
                                        {9999, m_inhouse[0]}};
    EXPECT_TRUE(AdjustJobTimeDeleted(database(), {all[0]}).empty());
    EXPECT_EQ(rows(statuses), QStringList({fine, u"D"_s}));
    EXPECT_TRUE(AdjustJobTimeDeleted(database(), {all[1], all[3]}).empty());
    EXPECT_EQ(rows(statuses), QStringList({fine, u" "_s}));
    EXPECT_EQ(rows(u"SELECT TotalHours FROM Job WHERE JobNo = %1"_s.arg(jobNo)),
              QStringList(u"1"_s));

    database().execute(u"DELETE * FROM Timelog WHERE JobNo = %1"_s.arg(jobNo));
    const auto notices = AdjustJobTimeDeleted(database(), all);
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].text,
              u"You have deleted the All Timelog Records for Operation %1.  The "
              "Operation will no longer be marked as finished!"_s.arg(m_inhouse[0]));
    EXPECT_EQ(notices[0].title, u"Notice!"_s);
    EXPECT_EQ(rows(statuses), QStringList({u" "_s, u" "_s}));
    EXPECT_EQ(rows(u"SELECT TotalHours FROM Job WHERE JobNo = %1"_s.arg(jobNo)),
              QStringList(u"0"_s));
    EXPECT_TRUE(AdjustJobTimeDeleted(database(), all).empty());
}

MIRSA_BOTH_ENGINES(JobCosting);

OperRow contractor(double amount) {
    OperRow row;
    row.inhouse = false;
    row.time = amount;
    return row;
}

TEST(CalcJob, SumsLoseCentsBeyondSevenDigits) {
    const JobFigures figures =
        CalcJob({contractor(99'999'999.99), contractor(0.01)}, {}, true, {}, 0, {});
    EXPECT_EQ(figures.outContr, 100'000'000.0f);
    EXPECT_EQ(figures.costEach, 100'000'000.0);
}

TEST(CalcJob, RatesAreTheJobsOrTheRows) {
    OperRow turning;
    turning.time = 2.5;
    turning.rate = Currency::fromInteger(40);
    OperRow untimed;
    untimed.rate = Currency::fromInteger(90);
    MiscRow stock;
    stock.total = Currency::fromInteger(50);
    const std::vector<OperRow> rows{turning, contractor(100), untimed};
    const Currency fifty = Currency::fromInteger(50);
    EXPECT_EQ(CalcJob(rows, {stock}, false, fifty, 10, {}).costEach, 25);
    EXPECT_EQ(CalcJob(rows, {stock}, true, fifty, 10, {}).costEach, 27.5);
    EXPECT_EQ(CalcJob(rows, {stock}, true, fifty, 0, {}).costEach, 275);
    EXPECT_EQ(CalcJob(rows, {stock}, true, fifty, 10, {}).hours, 2.5f);
}

} // namespace
