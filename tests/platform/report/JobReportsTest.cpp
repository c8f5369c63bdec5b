#include "platform/report/Layout.h"
#include "platform/report/ReportError.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "sample/Sample.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"

#include <gtest/gtest.h>

namespace {

QString shown(double value, QStringView mask = u"#,##0.00") {
    return values::format(value, mask);
}

/// The lists and costs of jobs as printed on the sample shop, against sums of the test's own.
class JobReports : public testsupport::ShopDatabaseFixture {
  protected:
    void prepare() override { sample::fill(db(), {1, 60, QDate(2026, 3, 2)}); }
    double number(const QString& select) { return db().lookup(select).toDouble(); }
    void execute(const QString& statement) { db().execute(statement); }

    /// The printed lines of all pages, their fields parted by tabs.
    QStringList print(const QString& name, const QString& formula = {}) {
        report::DatabaseRowSource source(db());
        try {
            const auto file = report::readReportFile(testsupport::sourceFile(u"reports/"_s) + name);
            const auto document = report::layOut(file, source, formula);
            QString text;
            for (int page = 0; page < document->pageCount(); ++page)
                text += document->page(page).text();
            return text.split(u'\n', Qt::SkipEmptyParts);
        } catch (const report::ReportError& error) {
            ADD_FAILURE() << name.toStdString() << ": " << error.code() << ' '
                          << error.detail().toStdString();
            return {};
        }
    }
    static QStringList starting(const QStringList& lines, const QString& with) {
        QStringList found;
        for (const auto& line : lines) {
            if (line.startsWith(with))
                found.append(line);
        }
        return found;
    }
};

constexpr auto inHouse = u"FROM JobOper INNER JOIN Operation ON JobOper.OperNo = Operation.OperNo "
                         u"WHERE OperType = 'I' AND JobNo = ";

} // namespace

TEST_P(JobReports, ListHasEachChosenJobOnceWithItsHoursAndTotals) {
    const auto some = rows(u"SELECT TOP 3 JobNo FROM Job ORDER BY JobNo DESC"_s).join(u',');
    for (const auto& [formula, where] :
         {std::pair{QString(), u"JobNo > 0"_s},
          std::pair{u"{Job.Shipped} = false"_s, u"Shipped = False"_s},
          std::pair{u"{Job.JobNo} in [%1]"_s.arg(some), u"JobNo IN (%1)"_s.arg(some)}}) {
        SCOPED_TRACE(formula.toStdString());
        const auto lines = print(u"Jobs_List.rpt"_s, formula);
        const auto jobs =
            rows(u"SELECT JobNo, PONo, PartNo, Quantity, TotalHours, Shipped FROM Job "
                 "WHERE "_s +
                 where);
        ASSERT_GT(jobs.size(), 0);
        double planned = 0;
        for (const auto& job : jobs) {
            const auto fields = job.split(u'|');
            const double estimate =
                number(u"SELECT SUM(EstOper) "_s + QString::fromUtf16(inHouse) + fields[0]);
            planned += estimate;
            const auto found =
                starting(lines, fields[0] + u'\t' + fields[1] + u'\t' + fields[2] + u'\t' +
                                    shown(fields[3].toDouble(), u"#,##0") + u'\t');
            ASSERT_EQ(found.size(), 1) << job.toStdString();
            EXPECT_TRUE(found[0].contains(u'\t' + shown(estimate) + u'\t' +
                                          shown(fields[4].toDouble()) +
                                          (number(u"SELECT COUNT(*) FROM Job WHERE Shipped "
                                                  "= True AND JobNo = "_s +
                                                  fields[0]) > 0
                                               ? u"\tShipped"_s
                                               : u"\tActive"_s)))
                << found[0].toStdString();
        }
        const auto all = starting(lines, u"All: "_s);
        ASSERT_EQ(all.size(), 1);
        EXPECT_EQ(all[0],
                  u"All: %1 jobs\t"_s.arg(jobs.size()) +
                      shown(number(u"SELECT SUM(Quantity) FROM Job WHERE "_s + where), u"#,##0") +
                      u'\t' + shown(planned) + u'\t' +
                      shown(number(u"SELECT SUM(TotalHours) FROM Job WHERE "_s + where)) +
                      u"\t%1 active"_s.arg(number(u"SELECT COUNT(*) FROM Job WHERE Shipped = False "
                                                  "AND "_s +
                                                  where)));
    }
    EXPECT_TRUE(print(u"Jobs_List.rpt"_s, u"{Job.JobNo} = 999999"_s)
                    .contains(u"There are no jobs to list."_s));
}

TEST_P(JobReports, EveryJobReportAgreesWithTheCostsOfItsRows) {
    // One job without a quantity, one whose operations have a rate each, one of many operations.
    const auto first = rows(u"SELECT TOP 2 JobNo FROM Job ORDER BY JobNo"_s);
    execute(u"UPDATE Job SET Quantity = 0 WHERE JobNo = "_s + first.at(0));
    execute(u"UPDATE Job SET OneShopRate = False WHERE JobNo = "_s + first.at(1));
    for (int seq = 30; seq < 90; ++seq)
        execute(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                "OperShopRate, EstOper) SELECT TOP 1 %2, %1, OperNo, 1.37, 61.15, "
                "Null FROM Operation WHERE OperType = 'I' ORDER BY OperNo"_s.arg(seq)
                    .arg(first.at(1)));
    // A cost whose item was deleted keeps its number.
    execute(u"INSERT INTO JobMiscCost (JobNo, ItemNo, Quantity, UnitPrice, "
            "CostAmount) VALUES(%1, 77777, 1, 4.25, 4.25)"_s.arg(first.at(1)));
    EXPECT_EQ(starting(print(u"Job_Report.rpt"_s, u"{Job.JobNo} = "_s + first.at(1)),
                       u"Item 77777\t1.00\t"_s)
                  .size(),
              1);
    for (const auto& job : rows(u"SELECT JobNo FROM Job ORDER BY JobNo"_s)) {
        SCOPED_TRACE(job.toStdString());
        const bool oneRate =
            db().lookup(u"SELECT OneShopRate FROM Job WHERE JobNo = "_s + job).toBool();
        const QString rate =
            oneRate ? QString::number(number(u"SELECT JobShopRate FROM Job WHERE JobNo = "_s + job))
                    : u"JobOper.OperShopRate"_s;
        const auto sum = [&](const QString& what, const QString& type) {
            return number(u"SELECT SUM(%1) FROM JobOper INNER JOIN Operation ON "
                          "JobOper.OperNo = Operation.OperNo WHERE JobNo = %2 AND "
                          "OperType = '%3'"_s.arg(what, job, type));
        };
        const QString worked = u"OperTime_Amount"_s;
        const QString planned = u"EstOper"_s;
        const QString i = u"I"_s;
        const QString c = u"C"_s;
        const double actual = sum(worked + u'*' + rate, i) + sum(worked, c);
        const double estimate = sum(planned + u'*' + rate, i) + sum(planned, c);
        const double fixed =
            number(u"SELECT SUM(CostAmount) FROM JobMiscCost WHERE JobNo = "_s + job);
        const double quantity = number(u"SELECT Quantity FROM Job WHERE JobNo = "_s + job);
        const auto lines = print(u"Job_Report.rpt"_s, u"{Job.JobNo} = "_s + job);
        const auto totals = starting(lines, u"Total\t"_s);
        ASSERT_GE(totals.size(), 1);
        EXPECT_EQ(totals[0], u"Total\t"_s + shown(sum(planned, i)) + u'\t' + shown(sum(worked, i)) +
                                 u'\t' + shown(sum(worked, i) - sum(planned, i)) + u'\t' +
                                 shown(estimate) + u'\t' + shown(actual) + u'\t' +
                                 shown(actual - estimate));
        EXPECT_EQ(starting(lines, u"Total cost\t$"_s + shown(actual + fixed)).size(), 1)
            << actual + fixed;
        EXPECT_EQ(starting(lines, u"Cost each\t$"_s +
                                      shown((actual + fixed) / (quantity > 0 ? quantity : 1),
                                            u"#,##0.0000"))
                      .size(),
                  1);
    }
}

TEST_P(JobReports, ShippingRunsUpToTheJobsQuantityAndForgetsNoConsignment) {
    const auto job = rows(u"SELECT TOP 1 JobNo FROM Job ORDER BY JobNo DESC"_s).at(0);
    execute(u"DELETE FROM JobShip WHERE JobNo = "_s + job);
    execute(u"UPDATE Job SET Quantity = 1500 WHERE JobNo = "_s + job);
    const auto consignment = [&](const QString& jobNo, const char* day, int quantity, qint64 by) {
        execute(u"INSERT INTO JobShip (JobNo, ShippedDate, Quantity, ShippedByEmpID) "
                "VALUES(%1, #%2#, %3, %4)"_s.arg(jobNo, QLatin1String(day))
                    .arg(quantity)
                    .arg(by));
    };
    const auto employee =
        rows(u"SELECT TOP 1 EmpID, lastname, firstname FROM Employee ORDER BY EmpID"_s)
            .at(0)
            .split(u'|');
    consignment(job, "03/05/2026", 700, 987654); // of somebody who has gone
    consignment(job, "03/01/2026", 500, employee[0].toLongLong());
    consignment(job, "03/09/2026", 400, employee[0].toLongLong());
    consignment(u"888888"_s, "03/02/2026", 12, 987654);
    const QString formula = u"{Job.JobNo} = "_s + job;
    const QString who = u'\t' + employee[1] + u", "_s + employee[2];
    const auto lines = print(u"Shipping_History.rpt"_s, formula);
    QStringList consignments;
    for (const auto& line : lines) {
        if (line.contains(u"2026\t"_s) && line.at(0).isDigit())
            consignments.append(line);
    }
    const auto day = [](int of) { return values::format(QDate(2026, 3, of), u"Short Date"); };
    EXPECT_EQ(consignments,
              (QStringList{day(1) + who + u"\t500\t500\t1,000"_s, day(5) + u"\t700\t1,200\t300"_s,
                           day(9) + who + u"\t400\t1,600\t0"_s}))
        << lines.join(u'\n').toStdString();
    EXPECT_TRUE(lines.join(u'\n').contains(u"\t1,600\t100 more than ordered"_s));

    const auto all = print(u"Shipping_History.rpt"_s);
    EXPECT_TRUE(all.contains(u"Job 888888\tThis job was deleted"_s));
    EXPECT_EQ(
        starting(all, u"All: "_s),
        QStringList{u"All: %1 consignments\t"_s.arg(number(u"SELECT COUNT(*) FROM JobShip"_s)) +
                    shown(number(u"SELECT SUM(Quantity) FROM JobShip"_s), u"#,##0")});
    for (const auto& sum : rows(u"SELECT SUM(Quantity) FROM JobShip GROUP BY JobNo"_s)) {
        EXPECT_TRUE(all.join(u'\n').contains(u'\t' + shown(sum.toDouble(), u"#,##0") + u'\t'));
    }
    EXPECT_TRUE(print(u"Shipping_History.rpt"_s, u"{Employee.EmpID} = 987654"_s)
                    .contains(u"Nothing has been shipped."_s));
}

TEST_P(JobReports, BillsOfMaterialGoDownTheAssemblies) {
    struct Bill {
        QString file, table, key, costs, parent, heading, deeper;
    };
    const QString item =
        rows(u"SELECT TOP 1 ItemNo, Description FROM MiscItems ORDER BY ItemNo"_s).at(0);
    for (const auto& bill :
         {Bill{u"job_bom.rpt"_s, u"Job"_s, u"JobNo"_s, u"JobMiscCost"_s, u"AssemblyJobNo"_s,
               u"Job"_s, u"job"_s},
          Bill{u"estimate_bom.rpt"_s, u"Estimate"_s, u"EstNo"_s, u"EstMiscCost"_s,
               u"AssemblyEstno"_s, u"Estimate"_s, u"estimate"_s}}) {
        SCOPED_TRACE(bill.file.toStdString());
        execute(u"UPDATE %1 SET %2 = 0"_s.arg(bill.table, bill.parent));
        const auto made = rows(u"SELECT TOP 10 %1 FROM %2 ORDER BY %1"_s.arg(bill.key, bill.table));
        ASSERT_EQ(made.size(), 10);
        const auto childOf = [&](int child, int parent) {
            execute(u"UPDATE %1 SET %2 = %3 WHERE %4 = %5"_s.arg(
                bill.table, bill.parent, made[parent], bill.key, made[child]));
        };
        // Each has quantities of its own, an item of the catalogue and one deleted there.
        for (int index = 0; index < made.size(); ++index) {
            execute(u"UPDATE %1 SET PartNo = 'Part %2', Description = 'Made %2', "
                    "Material = Null, Quantity = %3 WHERE %4 = %5"_s.arg(bill.table)
                        .arg(index)
                        .arg(37 + 1300 * index)
                        .arg(bill.key, made[index]));
            execute(u"DELETE FROM %1 WHERE %2 = %3"_s.arg(bill.costs, bill.key, made[index]));
            for (const auto& [number, needed] :
                 {std::pair{u"77777"_s, 2.25 + 31 * index},
                  std::pair{item.section(u'|', 0, 0), 5.5 + 470 * index}})
                execute(u"INSERT INTO %1 (%2, ItemNo, Quantity, UnitofMeasure) "
                        "VALUES(%3, %4, %5, 'u%6')"_s.arg(bill.costs, bill.key, made[index], number)
                            .arg(needed)
                            .arg(index));
        }
        // The chain is longer than the bill goes down; 8 is built into 1 beside 2, 9 into itself.
        for (int index = 1; index <= 7; ++index)
            childOf(index, index - 1);
        childOf(8, 1);
        childOf(9, 9);

        const auto quantity = [&](int index) {
            return number(
                u"SELECT Quantity FROM %1 WHERE %2 = %3"_s.arg(bill.table, bill.key, made[index]));
        };
        const auto perPart = [&](double all, int top) {
            return quantity(top) > 0 ? u'\t' + shown(all / quantity(top), u"#,##0.0000")
                                     : QString();
        };
        const auto items = [&](int index, int top, const QString& before) {
            QStringList lines;
            for (const auto& row : {u"77777|Item 77777"_s, item}) {
                const auto fields = row.split(u'|');
                const double needed =
                    number(u"SELECT SUM(Quantity) FROM %1 WHERE %2 = %3 AND ItemNo "
                           "= %4"_s.arg(bill.costs, bill.key, made[index], fields[0]));
                lines += before + fields[0] + u'\t' + fields[1] + u'\t' + shown(needed) +
                         u"\tu%1"_s.arg(index) + perPart(needed, top);
            }
            return lines;
        };
        const auto expected = [&](int top, const QList<int>& below) {
            auto lines = items(top, top, {});
            if (!below.isEmpty())
                lines += bill.heading +
                         u"\tParts made for it\tDescription\tQuantity\tUnit\tFor one part"_s;
            for (const int index : below) {
                lines += made[index] + u"\tPart %1\tMade %1\t"_s.arg(index) +
                         shown(quantity(index), u"#,##0") + perPart(quantity(index), top);
                lines += items(index, top, u"Item "_s);
                if (index == top + 5 && top < 2)
                    lines += u"1 more below %1 %2: see its own bill of material."_s.arg(
                        bill.deeper, made[index]);
            }
            return lines;
        };
        const auto printed = [&](int top) {
            const auto lines =
                print(bill.file, u"{%1.%2} = %3"_s.arg(bill.table, bill.key, made[top]));
            const auto heading =
                lines.indexOf(u"Item\tMaterial and fixed cost items\tQuantity\tUnit\tFor one "
                              "part"_s);
            QStringList found;
            for (auto at = heading + 1; at < lines.size(); ++at) {
                if (lines[at].startsWith(u"Printed "_s))
                    break;
                found += lines[at];
            }
            return found;
        };
        const auto check = [&](int top, const QList<int>& below) {
            EXPECT_EQ(printed(top).join(u'\n').toStdString(),
                      expected(top, below).join(u'\n').toStdString());
        };
        check(0, {1, 2, 3, 4, 5, 8});
        check(1, {2, 3, 4, 5, 6, 8});
        check(2, {3, 4, 5, 6, 7});
        check(9, {});
        execute(u"UPDATE %1 SET Quantity = 0 WHERE %2 = %3"_s.arg(bill.table, bill.key, made[2]));
        check(2, {3, 4, 5, 6, 7});
        // A ring of six ends before it comes round, and nothing points back to the top.
        childOf(2, 7);
        check(2, {3, 4, 5, 6, 7});
        // Pages that begin within an assembly are still the top's.
        for (int row = 0; row < 150; ++row)
            execute(u"INSERT INTO %1 (%2, ItemNo, Quantity) VALUES(%3, 77777, 1)"_s.arg(
                bill.costs, bill.key, made[5]));
        QStringList heads;
        for (const QString& line :
             print(bill.file, u"{%1.%2} = %3"_s.arg(bill.table, bill.key, made[2]))) {
            for (const QString& field : line.split(u'\t')) {
                const QStringList words = field.split(u' ');
                if (words.size() == 2 && words[0] == bill.heading && words[1].toInt() > 0)
                    heads += words[1];
            }
        }
        EXPECT_GT(heads.size(), 2);
        EXPECT_EQ(heads.count(made[2]), heads.size()) << heads.join(u' ').toStdString();
    }
}

TEST_P(JobReports, EveryRegisteredReportIsThereAndEachModuleHasOneDefault) {
    const auto registered = rows(u"SELECT FileName FROM Reports WHERE OEM = 1"_s);
    EXPECT_TRUE(registered.contains(u"Jobs_List.rpt"_s));
    for (const auto& file : registered)
        EXPECT_GT(print(file).size(), 0) << file.toStdString();
    EXPECT_EQ(rows(u"SELECT [Module] FROM Reports WHERE [Default] = True ORDER BY [Module]"_s),
              rows(u"SELECT DISTINCT [Module] FROM Reports WHERE NOT [Module] LIKE 'Inventory ?*' "
                   "ORDER BY [Module]"_s));
}

MIRSA_BOTH_ENGINES(JobReports);
