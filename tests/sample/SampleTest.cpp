#include "sample/Sample.h"
#include "platform/values/Literals.h"

#include "jobs/JobCosting.h"
#include "platform/values/Numbers.h"
#include "support/DatabaseFixture.h"

#include <cmath>

namespace {

const sample::Options smallShop{1, 150, QDate(2026, 3, 2)};

/// One filled shop for all tests of an engine.
class Sample : public ::testing::TestWithParam<testsupport::EngineKind> {
  protected:
    void SetUp() override { MIRSA_NEEDS_ENGINE(GetParam()); }
    static void TearDownTestSuite() { shops().clear(); }
    static jet::Database& db() {
        auto& shop = shops()[GetParam()];
        if (!shop) {
            shop = std::make_unique<testsupport::TestDatabase>(
                GetParam(), testsupport::TestDatabase::Contents::Shop);
            sample::fill(shop->database(), smallShop);
        }
        return shop->database();
    }
    struct Access : testsupport::DatabaseFixture {
        using DatabaseFixture::rows;
    };
    static QStringList rows(const QString& select) { return Access::rows(db(), select); }
    static qint64 count(const char16_t* from) {
        return db().lookup(u"SELECT COUNT(*) FROM "_s + QString::fromUtf16(from)).toLong();
    }

  private:
    using Shops = std::map<testsupport::EngineKind, std::unique_ptr<testsupport::TestDatabase>>;
    static Shops& shops() {
        static Shops all;
        return all;
    }
};
MIRSA_BOTH_ENGINES(Sample);

double number(const QString& text) {
    return values::val(text);
}

QDateTime moment(const jet::Value& value) {
    return value.toDateTime().value_or(QDateTime());
}

QStringList everything(jet::Database& database) {
    struct Access : testsupport::DatabaseFixture {
        using DatabaseFixture::rows;
    };
    QStringList lines;
    for (const jet::Table& table : database.schema().tables()) {
        QStringList rows = Access::rows(database, u"SELECT * FROM [%1]"_s.arg(table.name));
        rows.sort();
        lines << table.name << rows;
    }
    return lines;
}

} // namespace

TEST_P(Sample, ChildrenHaveTheirParents) {
    struct Link {
        const char16_t *child, *column, *parent, *key;
        const char16_t* where = u"";
    };
    const std::vector<Link> links = {
        {u"Estimate", u"CustID", u"Customer", u"Custid"},
        {u"EstOper", u"EstNo", u"Estimate", u"EstNo"},
        {u"EstOper", u"OperNo", u"Operation", u"OperNo"},
        {u"EstOperNote", u"ID", u"EstOper", u"ID"},
        {u"EstMiscCost", u"EstNo", u"Estimate", u"EstNo"},
        {u"EstMiscCost", u"ItemNo", u"MiscItems", u"ItemNo"},
        {u"Job", u"CustID", u"Customer", u"Custid"},
        {u"Job", u"EstNo", u"Estimate", u"EstNo", u"Job.EstNo > 0"},
        {u"Job", u"AssemblyJobNo", u"Job", u"JobNo", u"Job.AssemblyJobNo > 0"},
        {u"JobOper", u"JobNo", u"Job", u"JobNo"},
        {u"JobOperNote", u"ID", u"JobOper", u"ID"},
        {u"JobMiscCost", u"JobNo", u"Job", u"JobNo"},
        {u"Timelog", u"JobNo", u"Job", u"JobNo", u"Timelog.JobNo > 0"},
        {u"Timelog", u"SignID", u"Sign_in", u"ID"},
        {u"Timelog", u"EmpID", u"Employee", u"EmpID"},
        {u"RFQVendor", u"OrderNumber", u"RFQ", u"PONumber"},
        {u"RFQItem", u"VOrderKey", u"RFQVendor", u"VOrderKey"},
        {u"POVendor", u"OrderNumber", u"PO", u"PONumber"},
        {u"POVendor", u"VendorID", u"Vendor", u"VendID"},
        {u"POItem", u"PONumber", u"PO", u"PONumber"},
        {u"POItem", u"Job", u"Job", u"JobNo", u"POItem.Job > 0"},
        {u"POReceived", u"ItemID", u"POItem", u"ID"},
        {u"Items", u"Type", u"ItemTypes", u"ID"},
        {u"Items", u"Location", u"ItemLocations", u"ID"},
        {u"ItemIssue", u"ItemID", u"Items", u"ID"},
        {u"SpareParts", u"SJobNo", u"Job", u"JobNo"},
        {u"EmployeeSalary", u"EmpID", u"Employee", u"EmpID"},
    };
    for (const Link& link : links) {
        const QString child = QString::fromUtf16(link.child);
        const QString where = QString::fromUtf16(link.where);
        const QString condition = where.isEmpty() ? QString() : where + u" AND "_s;
        ASSERT_GT(count(link.child), 0) << child.toStdString();
        EXPECT_EQ(rows(u"SELECT %1.%2 FROM %1 WHERE %5%1.%2 NOT IN (SELECT p.%4 "
                       "FROM %3 AS p WHERE p.%4 IS NOT NULL)"_s.arg(
                           child, QString::fromUtf16(link.column), QString::fromUtf16(link.parent),
                           QString::fromUtf16(link.key), condition)),
                  QStringList())
            << child.toStdString();
    }
}

// The figures on the rows are those that the roll-up gives.
TEST_P(Sample, RollingUpCostsChangesNothing) {
    const QString jobs =
        u"SELECT JobNo, JobShopCost, TotalHours, InvoiceTotal FROM Job ORDER BY JobNo"_s;
    const QString hours = u"SELECT JobNo, OperNo, OperTime_Amount FROM JobOper ORDER BY ID"_s;
    const QStringList jobsBefore = rows(jobs), hoursBefore = rows(hours);
    for (const QString& row : jobsBefore)
        jobs::UpdateJobCost(db(), row.section(u'|', 0, 0).toLongLong());
    const QStringList jobsAfter = rows(jobs), hoursAfter = rows(hours);
    ASSERT_EQ(jobsAfter.size(), jobsBefore.size());
    double total = 0;
    for (qsizetype i = 0; i < jobsBefore.size(); ++i) {
        const QStringList was = jobsBefore[i].split(u'|'), is = jobsAfter[i].split(u'|');
        EXPECT_NEAR(number(is[1]), number(was[1]), 0.00015) << was[0].toStdString();
        EXPECT_NEAR(number(is[2]), number(was[2]), 0.0001) << was[0].toStdString();
        EXPECT_EQ(is[3], was[3]);
        total += number(is[2]);
    }
    EXPECT_GT(total, 1000);
    ASSERT_EQ(hoursAfter.size(), hoursBefore.size());
    for (qsizetype i = 0; i < hoursBefore.size(); ++i)
        EXPECT_NEAR(number(hoursAfter[i].section(u'|', 2)), number(hoursBefore[i].section(u'|', 2)),
                    1e-6)
            << hoursBefore[i].toStdString();
}

// Of every job: what the roll-up stores, what the job screen computes from its rows, and what one
// select finds in the time log and the routing.
TEST_P(Sample, JobsAreWhatTheirRowsCost) {
    const QString booked =
        u" FROM (Timelog AS t INNER JOIN JobOper AS o ON (t.JobNo = o.JobNo) AND (t.OperNo = "
        "o.OperNo)) INNER JOIN Operation AS p ON t.OperNo = p.OperNo WHERE p.OperType = 'I' AND "
        "t.JobNo = j.JobNo)"_s;
    jet::Recordset jobs = db().openRecordset(
        u"SELECT j.*, (SELECT SUM(t.AccumTime * IIf(j.OneShopRate, j.JobShopRate, "
        "o.OperShopRate))%1 AS inhouse, (SELECT SUM(t.AccumTime)%1 AS hours, "
        "(SELECT SUM(o.OperTime_Amount) FROM JobOper AS o INNER JOIN Operation AS p "
        "ON o.OperNo = p.OperNo WHERE p.OperType = 'C' AND o.JobNo = j.JobNo) AS "
        "outside, (SELECT SUM(m.CostAmount) FROM JobMiscCost AS m WHERE m.JobNo = "
        "j.JobNo) AS fixed FROM Job AS j ORDER BY j.JobNo"_s.arg(booked),
        jet::RecordsetType::Snapshot);
    int worked = 0;
    for (; !jobs.eof(); jobs.moveNext()) {
        const qint64 jobNo = jobs[u"JobNo"].toLong();
        SCOPED_TRACE(testing::Message() << "job " << jobNo);
        jobs::UpdateJobCost(db(), jobNo);
        const jet::Recordset stored = db().openRecordset(
            u"SELECT * FROM Job WHERE JobNo = %1"_s.arg(jobNo), jet::RecordsetType::Snapshot);
        const qint64 quantity = jobs[u"Quantity"].toLong();
        const double hours = jobs[u"hours"].toDouble();
        const double each = (jobs[u"inhouse"].toDouble() + jobs[u"outside"].toDouble() +
                             jobs[u"fixed"].toDouble()) /
                            static_cast<double>(quantity > 0 ? quantity : 1);
        EXPECT_NEAR(stored[u"JobShopCost"].toDouble(), each, 0.00015);
        EXPECT_NEAR(stored[u"TotalHours"].toDouble(), hours, 0.0051);
        EXPECT_NEAR(stored[u"InvoiceTotal"].toDouble(),
                    jobs[u"InvoiceEach"].toDouble() * static_cast<double>(quantity), 0.0001);

        const auto& kind = estimating::jobRouting();
        const jobs::JobFigures shown =
            jobs::CalcJob(estimating::loadOperRows(db(), kind, jobNo),
                          estimating::loadMiscRows(db(), kind, jobNo),
                          jobs[u"OneShopRate"].toBool(), jobs[u"JobShopRate"].toCurrency(),
                          static_cast<double>(quantity), jobs[u"InvoiceEach"].toCurrency());
        // The screen's sums are 32-bit floats.
        EXPECT_NEAR(shown.costEach, each, each * 1e-6 + 0.0001);
        EXPECT_NEAR(static_cast<double>(shown.hours), hours, hours * 1e-6 + 0.0001);
        EXPECT_EQ(shown.invoiceTotal.toText(), stored[u"InvoiceTotal"].toCurrency().toText());
        worked += hours > 0 && each > 0 ? 1 : 0;
    }
    EXPECT_GT(worked, 50);
}

TEST_P(Sample, EstimatesAreWhatTheirRowsCost) {
    QHash<QString, double> cost;
    for (const QString& row :
         rows(u"SELECT e.EstNo, o.OperTime_Amount, o.OperShopRate, e.EstShopRate, "
              "IIf(e.OneShopRate = true, 1, 0) AS one, p.OperType FROM (Estimate AS e INNER JOIN "
              "EstOper AS o ON e.EstNo = o.EstNo) INNER JOIN Operation AS p ON o.OperNo = "
              "p.OperNo"_s)) {
        const QStringList f = row.split(u'|');
        cost[f[0]] +=
            f[5] == u"I" ? number(f[1]) * number(f[4] == u"1" ? f[3] : f[2]) : number(f[1]);
    }
    for (const QString& row :
         rows(u"SELECT EstNo, UnitPrice, Quantity, CostAmount FROM EstMiscCost"_s)) {
        const QStringList f = row.split(u'|');
        EXPECT_NEAR(number(f[3]), number(f[1]) * number(f[2]), 0.00006) << row.toStdString();
        cost[f[0]] += number(f[3]);
    }
    const QStringList estimates = rows(u"SELECT EstNo, Quantity, QtyPriceA, QtyPriceB, "
                                       u"QtyDiscountB, QtyQPB, QtyBreakB, QtyTotalB, "
                                       "QtyBreakA FROM Estimate"_s);
    ASSERT_GT(estimates.size(), 100);
    for (const QString& row : estimates) {
        const QStringList f = row.split(u'|');
        const double each = cost[f[0]] / number(f[1]);
        EXPECT_NEAR(number(f[2]), each, each * 1e-6 + 0.0001) << row.toStdString();
        EXPECT_NEAR(number(f[3]), number(f[2]) * (1 - number(f[4]) / 100), each * 1e-6 + 0.0001);
        EXPECT_NEAR(number(f[7]), number(f[5]) * number(f[6]), 0.0001) << row.toStdString();
        EXPECT_EQ(number(f[8]), number(f[1]));
    }
}

TEST_P(Sample, TheFloorsRowsKeepItsRules) {
    struct Stretch {
        QDateTime begin, end;
    };
    std::map<QString, std::vector<Stretch>> byEmployee;
    const jet::Recordset rs = [] {
        return db().openRecordset(
            u"SELECT t.EmpID, t.JobNo, t.AccumTime, t.Status, t.StartDate, "
            "t.SuspDate, t.FinishDate, t.PartsQty, s.EmpID AS SignEmp, s.Sign_in, "
            "s.Sign_out, o.OperType FROM (Timelog AS t INNER JOIN Sign_in AS s ON "
            "t.SignID = s.ID) INNER JOIN Operation AS o ON t.OperNo = o.OperNo"_s,
            jet::RecordsetType::Snapshot);
    }();
    ASSERT_EQ(rs.recordCount(), count(u"Timelog"));
    std::map<QString, int> statuses;
    for (jet::Recordset row = rs; !row.eof(); row.moveNext()) {
        const QString status = row.text(u"Status");
        ++statuses[status];
        const bool inhouse = row.text(u"OperType") == u"I";
        const jet::Value end = inhouse ? row[u"SuspDate"] : row[u"FinishDate"];
        EXPECT_EQ(row.text(u"EmpID"), row.text(u"SignEmp"));
        EXPECT_EQ(inhouse, row[u"JobNo"].toLong() > 0);
        if (status == u"A") {
            EXPECT_TRUE(end.isNull() && row[u"Sign_out"].isNull());
            continue;
        }
        const double hours = row[u"AccumTime"].toDouble();
        EXPECT_GT(hours, 0);
        const QDateTime begin = moment(row[u"StartDate"]);
        if (status == u"0") {
            EXPECT_TRUE(end.isNull());
            EXPECT_EQ(begin.time(), QTime(0, 0));
            EXPECT_EQ(begin.date(), moment(row[u"Sign_in"]).date());
            continue;
        }
        const Stretch stretch{begin, moment(end)};
        EXPECT_NEAR(hours, static_cast<double>(stretch.begin.secsTo(stretch.end)) / 3600, 0.0051);
        EXPECT_GE(stretch.begin, moment(row[u"Sign_in"]));
        EXPECT_LE(stretch.end, moment(row[u"Sign_out"]));
        byEmployee[row.text(u"EmpID")].push_back(stretch);
    }
    EXPECT_EQ(statuses.size(), 4u); // running, suspended, finished, typed in
    for (auto& [employee, stretches] : byEmployee) {
        std::sort(stretches.begin(), stretches.end(),
                  [](const Stretch& a, const Stretch& b) { return a.begin < b.begin; });
        for (std::size_t i = 1; i < stretches.size(); ++i)
            EXPECT_LE(stretches[i - 1].end, stretches[i].begin) << employee.toStdString();
    }
    EXPECT_EQ(rows(u"SELECT EmpID FROM Sign_in WHERE Sign_out IS NULL ORDER BY EmpID"_s),
              rows(u"SELECT EmpID FROM Employee WHERE SignedIn = True ORDER BY EmpID"_s));
    EXPECT_EQ(count(u"JobOper WHERE Status = 'F' AND OperTime_Amount = 0"), 0);
    EXPECT_EQ(count(u"JobOper WHERE JobNo IN (SELECT JobNo FROM Job WHERE Shipped = True) AND "
                    u"Status = 'D'"),
              0);
}

TEST_P(Sample, PurchasesAgreeWithTheirReceipts) {
    EXPECT_EQ(rows(u"SELECT POItem.ID FROM POItem LEFT JOIN POReceived ON POItem.ID = "
                   "POReceived.ItemID GROUP BY POItem.ID, POItem.ReceivedQuantity "
                   "HAVING POItem.ReceivedQuantity > 0 AND "
                   "SUM(POReceived.QtyRecvd) <> POItem.ReceivedQuantity"_s),
              QStringList());
    EXPECT_EQ(count(u"POItem WHERE ReceivedQuantity > Quantity"), 0);
    EXPECT_EQ(count(u"PO WHERE Active = False AND PONumber IN (SELECT PONumber FROM POItem WHERE "
                    u"ReceivedQuantity < Quantity)"),
              0);
    EXPECT_EQ(count(u"PO WHERE Active = True AND PONumber NOT IN (SELECT PONumber FROM POItem "
                    u"WHERE ReceivedQuantity < Quantity)"),
              0);
    EXPECT_EQ(count(u"JobShip") > 0, true);
    EXPECT_EQ(rows(u"SELECT Job.JobNo FROM Job INNER JOIN JobShip ON Job.JobNo = "
                   "JobShip.JobNo GROUP BY Job.JobNo, Job.Quantity HAVING "
                   "SUM(JobShip.Quantity) <> Job.Quantity"_s),
              QStringList());
}

TEST_P(Sample, AwkwardCasesAreInIt) {
    const QString today = u"#03/02/2026#"_s;
    const std::vector<QString> wanted = {
        u"Job WHERE Shipped = False AND JobDueDate < "_s + today,
        u"Job WHERE Shipped = True"_s,
        u"Job WHERE EstNo = 0"_s,
        u"Job WHERE EstNo IS NULL"_s,
        u"Job WHERE AssemblyJobNo > 0"_s,
        u"JobOper WHERE Status = 'D'"_s,
        u"JobOper WHERE Status = ' '"_s,
        u"JobShip WHERE JobNo NOT IN (SELECT JobNo FROM Job)"_s,
        u"JobOperSchedule WHERE JobNo NOT IN (SELECT JobNo FROM Job)"_s,
        u"Timelog WHERE JobNo IS NULL"_s,
        u"Timelog WHERE JobNo = 0"_s,
        u"Customer WHERE company LIKE '*''*'"_s,
        u"Customer WHERE company = 'd''amico präzision'"_s,
        u"Customer WHERE Custid NOT IN (SELECT CustID FROM Job) AND Custid NOT IN "
        "(SELECT CustID FROM Estimate)"_s,
        u"Estimate WHERE EstNo NOT IN (SELECT EstNo FROM Job WHERE EstNo IS NOT "
        "NULL)"_s,
        u"POItem WHERE ReceivedQuantity > 0 AND ReceivedQuantity < Quantity"_s,
        u"PO WHERE Active = True"_s,
        u"Employee WHERE EmpStatus = 'Terminated'"_s,
        u"Vendor WHERE cotr = True"_s,
    };
    for (const QString& from : wanted)
        EXPECT_GT(db().lookup(u"SELECT COUNT(*) FROM "_s + from).toLong(), 0) << from.toStdString();
    EXPECT_FALSE(rows(u"SELECT EstNo FROM Job WHERE EstNo > 0 GROUP BY EstNo HAVING "
                      "COUNT(*) > 1"_s)
                     .isEmpty());
    for (const auto* numbered :
         {u"JobNo) FROM Job", u"EstNo) FROM Estimate", u"Custid) FROM Customer"}) {
        const QString text = QString::fromUtf16(numbered);
        EXPECT_GT(db().lookup(u"SELECT MAX("_s + text).toLong(),
                  db().lookup(u"SELECT COUNT("_s + text).toLong())
            << text.toStdString();
    }
    qsizetype longest = 0;
    for (const QString& note : rows(u"SELECT JobNotes FROM Job"_s))
        longest = std::max(longest, note.size());
    EXPECT_GT(longest, 4000);
    EXPECT_EQ(count(u"Job WHERE Quantity < 1 OR JobDateIn > #03/02/2026#"), 0);
    // Rights: the office sees prices through its group, the floor doesn't.
    const auto seesMoney = [](const char16_t* user) {
        return db().hasRows(
            u"SELECT a.securitycode FROM (securityobjects a INNER JOIN "
            "securitygroups b ON a.objectid = b.objectid) INNER JOIN "
            "Users u ON b.groupid = u.usergroupid WHERE u.UserID = "
            "'%1' AND a.securitycode = 'ShowDollar'"_s.arg(QString::fromUtf16(user)));
    };
    EXPECT_TRUE(seesMoney(u"planner"));
    EXPECT_FALSE(seesMoney(u"floor"));
}

TEST(SampleRuns, TheSameOptionsGiveTheSameRows) {
    using testsupport::TestDatabase;
    const auto made = [](const sample::Options& options) {
        TestDatabase shop(testsupport::EngineKind::File, TestDatabase::Contents::Shop);
        sample::fill(shop.database(), options);
        return everything(shop.database());
    };
    const sample::Options options{1, 40, QDate(2026, 3, 2)};
    const QStringList first = made(options);
    EXPECT_TRUE(first == made(options));
    EXPECT_FALSE(first == made({1, 40, QDate(2026, 3, 3)}));
}

TEST(SampleRuns, AFailureLeavesNothingBehind) {
    testsupport::TestDatabase shop(testsupport::EngineKind::File,
                                   testsupport::TestDatabase::Contents::Shop);
    shop.database().execute(u"DROP TABLE SpareParts"_s);
    EXPECT_THROW(sample::fill(shop.database(), {1, 10, QDate(2026, 3, 2)}), jet::Error);
    EXPECT_FALSE(shop.database().hasRows(u"SELECT JobNo FROM Job"_s));
    EXPECT_FALSE(shop.database().hasRows(u"SELECT OperNo FROM Operation"_s));
}
