#include "platform/report/Layout.h"
#include "platform/report/ReportError.h"
#include "platform/values/Format.h"
#include "sample/Sample.h"
#include "support/DatabaseFixture.h"

#include <gtest/gtest.h>

namespace {

QString shown(double value, QStringView mask = u"#,##0.00") {
    return values::format(value, mask);
}

/// The lists and costs of jobs as printed on the sample shop, against sums of the test's own.
class JobReports : public ::testing::TestWithParam<testsupport::EngineKind> {
  protected:
    void SetUp() override {
        MIRSA_NEEDS_ENGINE(GetParam());
        m_shop = std::make_unique<testsupport::TestDatabase>(
            GetParam(), testsupport::TestDatabase::Contents::Shop);
        sample::fill(m_shop->database(), {1, 60, QDate(2026, 3, 2)});
    }
    jet::Database& db() { return m_shop->database(); }
    struct Access : testsupport::DatabaseFixture {
        using DatabaseFixture::rows;
    };
    QStringList rows(const QString& select) { return Access::rows(db(), select); }
    double number(const QString& select) { return db().lookup(select).toDouble(); }
    void execute(const QString& statement) { db().execute(statement); }

    /// The printed lines of all pages, their fields parted by tabs.
    QStringList print(const QString& name, const QString& formula = {}) {
        report::DatabaseRowSource source(db());
        try {
            const auto file =
                report::readReportFile(QStringLiteral(MIRSA_SOURCE_DIR "/reports/") + name);
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

    std::unique_ptr<testsupport::TestDatabase> m_shop;
};

constexpr auto inHouse = u"FROM JobOper INNER JOIN Operation ON JobOper.OperNo = Operation.OperNo "
                         u"WHERE OperType = 'I' AND JobNo = ";

} // namespace

TEST_P(JobReports, listHasEachChosenJobOnceWithItsHoursAndTotals) {
    const auto some =
        rows(QStringLiteral("SELECT TOP 3 JobNo FROM Job ORDER BY JobNo DESC")).join(u',');
    for (const auto& [formula, where] :
         {std::pair{QString(), QStringLiteral("JobNo > 0")},
          std::pair{QStringLiteral("{Job.Shipped} = false"), QStringLiteral("Shipped = False")},
          std::pair{QStringLiteral("{Job.JobNo} in [%1]").arg(some),
                    QStringLiteral("JobNo IN (%1)").arg(some)}}) {
        SCOPED_TRACE(formula.toStdString());
        const auto lines = print(QStringLiteral("Jobs_List.rpt"), formula);
        const auto jobs = rows(
            QStringLiteral("SELECT JobNo, PONo, PartNo, Quantity, TotalHours, Shipped FROM Job "
                           "WHERE ") +
            where);
        ASSERT_GT(jobs.size(), 0);
        double planned = 0;
        for (const auto& job : jobs) {
            const auto fields = job.split(u'|');
            const double estimate = number(QStringLiteral("SELECT SUM(EstOper) ") +
                                           QString::fromUtf16(inHouse) + fields[0]);
            planned += estimate;
            const auto found =
                starting(lines, fields[0] + u'\t' + fields[1] + u'\t' + fields[2] + u'\t' +
                                    shown(fields[3].toDouble(), u"#,##0") + u'\t');
            ASSERT_EQ(found.size(), 1) << job.toStdString();
            EXPECT_TRUE(
                found[0].contains(u'\t' + shown(estimate) + u'\t' + shown(fields[4].toDouble()) +
                                  (number(QStringLiteral("SELECT COUNT(*) FROM Job WHERE Shipped "
                                                         "= True AND JobNo = ") +
                                          fields[0]) > 0
                                       ? QStringLiteral("\tShipped")
                                       : QStringLiteral("\tActive"))))
                << found[0].toStdString();
        }
        const auto all = starting(lines, QStringLiteral("All: "));
        ASSERT_EQ(all.size(), 1);
        EXPECT_EQ(
            all[0],
            QStringLiteral("All: %1 jobs\t").arg(jobs.size()) +
                shown(number(QStringLiteral("SELECT SUM(Quantity) FROM Job WHERE ") + where),
                      u"#,##0") +
                u'\t' + shown(planned) + u'\t' +
                shown(number(QStringLiteral("SELECT SUM(TotalHours) FROM Job WHERE ") + where)) +
                QStringLiteral("\t%1 active")
                    .arg(number(QStringLiteral("SELECT COUNT(*) FROM Job WHERE Shipped = False "
                                               "AND ") +
                                where)));
    }
    EXPECT_TRUE(print(QStringLiteral("Jobs_List.rpt"), QStringLiteral("{Job.JobNo} = 999999"))
                    .contains(QStringLiteral("There are no jobs to list.")));
}

TEST_P(JobReports, everyJobReportAgreesWithTheCostsOfItsRows) {
    // One job without a quantity, one whose operations have a rate each, one of many operations.
    const auto first = rows(QStringLiteral("SELECT TOP 2 JobNo FROM Job ORDER BY JobNo"));
    execute(QStringLiteral("UPDATE Job SET Quantity = 0 WHERE JobNo = ") + first.at(0));
    execute(QStringLiteral("UPDATE Job SET OneShopRate = False WHERE JobNo = ") + first.at(1));
    for (int seq = 30; seq < 90; ++seq)
        execute(QStringLiteral("INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                               "OperShopRate, EstOper) SELECT TOP 1 %2, %1, OperNo, 1.37, 61.15, "
                               "Null FROM Operation WHERE OperType = 'I' ORDER BY OperNo")
                    .arg(seq)
                    .arg(first.at(1)));
    // A cost whose item was deleted keeps its number.
    execute(QStringLiteral("INSERT INTO JobMiscCost (JobNo, ItemNo, Quantity, UnitPrice, "
                           "CostAmount) VALUES(%1, 77777, 1, 4.25, 4.25)")
                .arg(first.at(1)));
    EXPECT_EQ(starting(print(QStringLiteral("Job_Report.rpt"),
                             QStringLiteral("{Job.JobNo} = ") + first.at(1)),
                       QStringLiteral("Item 77777\t1.00\t"))
                  .size(),
              1);
    for (const auto& job : rows(QStringLiteral("SELECT JobNo FROM Job ORDER BY JobNo"))) {
        SCOPED_TRACE(job.toStdString());
        const bool oneRate =
            db().lookup(QStringLiteral("SELECT OneShopRate FROM Job WHERE JobNo = ") + job)
                .toBool();
        const QString rate =
            oneRate ? QString::number(number(
                          QStringLiteral("SELECT JobShopRate FROM Job WHERE JobNo = ") + job))
                    : QStringLiteral("JobOper.OperShopRate");
        const auto sum = [&](const QString& what, const QString& type) {
            return number(QStringLiteral("SELECT SUM(%1) FROM JobOper INNER JOIN Operation ON "
                                         "JobOper.OperNo = Operation.OperNo WHERE JobNo = %2 AND "
                                         "OperType = '%3'")
                              .arg(what, job, type));
        };
        const QString worked = QStringLiteral("OperTime_Amount");
        const QString planned = QStringLiteral("EstOper");
        const QString i = QStringLiteral("I");
        const QString c = QStringLiteral("C");
        const double actual = sum(worked + u'*' + rate, i) + sum(worked, c);
        const double estimate = sum(planned + u'*' + rate, i) + sum(planned, c);
        const double fixed =
            number(QStringLiteral("SELECT SUM(CostAmount) FROM JobMiscCost WHERE JobNo = ") + job);
        const double quantity =
            number(QStringLiteral("SELECT Quantity FROM Job WHERE JobNo = ") + job);
        const auto lines =
            print(QStringLiteral("Job_Report.rpt"), QStringLiteral("{Job.JobNo} = ") + job);
        const auto totals = starting(lines, QStringLiteral("Total\t"));
        ASSERT_GE(totals.size(), 1);
        EXPECT_EQ(totals[0], QStringLiteral("Total\t") + shown(sum(planned, i)) + u'\t' +
                                 shown(sum(worked, i)) + u'\t' +
                                 shown(sum(worked, i) - sum(planned, i)) + u'\t' + shown(estimate) +
                                 u'\t' + shown(actual) + u'\t' + shown(actual - estimate));
        EXPECT_EQ(starting(lines, QStringLiteral("Total cost\t$") + shown(actual + fixed)).size(),
                  1)
            << actual + fixed;
        EXPECT_EQ(starting(lines, QStringLiteral("Cost each\t$") +
                                      shown((actual + fixed) / (quantity > 0 ? quantity : 1),
                                            u"#,##0.0000"))
                      .size(),
                  1);
    }
}

TEST_P(JobReports, shippingRunsUpToTheJobsQuantityAndForgetsNoConsignment) {
    const auto job = rows(QStringLiteral("SELECT TOP 1 JobNo FROM Job ORDER BY JobNo DESC")).at(0);
    execute(QStringLiteral("DELETE FROM JobShip WHERE JobNo = ") + job);
    execute(QStringLiteral("UPDATE Job SET Quantity = 1500 WHERE JobNo = ") + job);
    const auto consignment = [&](const QString& jobNo, const char* day, int quantity, qint64 by) {
        execute(QStringLiteral("INSERT INTO JobShip (JobNo, ShippedDate, Quantity, ShippedByEmpID) "
                               "VALUES(%1, #%2#, %3, %4)")
                    .arg(jobNo, QLatin1String(day))
                    .arg(quantity)
                    .arg(by));
    };
    const auto employee =
        rows(QStringLiteral("SELECT TOP 1 EmpID, lastname, firstname FROM Employee ORDER BY EmpID"))
            .at(0)
            .split(u'|');
    consignment(job, "03/05/2026", 700, 987654); // of somebody who has gone
    consignment(job, "03/01/2026", 500, employee[0].toLongLong());
    consignment(job, "03/09/2026", 400, employee[0].toLongLong());
    consignment(QStringLiteral("888888"), "03/02/2026", 12, 987654);
    const QString formula = QStringLiteral("{Job.JobNo} = ") + job;
    const QString who = u'\t' + employee[1] + QStringLiteral(", ") + employee[2];
    const auto lines = print(QStringLiteral("Shipping_History.rpt"), formula);
    QStringList consignments;
    for (const auto& line : lines) {
        if (line.contains(QStringLiteral("2026\t")) && line.at(0).isDigit())
            consignments.append(line);
    }
    const auto day = [](int of) { return values::format(QDate(2026, 3, of), u"Short Date"); };
    EXPECT_EQ(consignments, (QStringList{day(1) + who + QStringLiteral("\t500\t500\t1,000"),
                                         day(5) + QStringLiteral("\t700\t1,200\t300"),
                                         day(9) + who + QStringLiteral("\t400\t1,600\t0")}))
        << lines.join(u'\n').toStdString();
    EXPECT_TRUE(lines.join(u'\n').contains(QStringLiteral("\t1,600\t100 more than ordered")));

    const auto all = print(QStringLiteral("Shipping_History.rpt"));
    EXPECT_TRUE(all.contains(QStringLiteral("Job 888888\tThis job was deleted")));
    EXPECT_EQ(
        starting(all, QStringLiteral("All: ")),
        QStringList{QStringLiteral("All: %1 consignments\t")
                        .arg(number(QStringLiteral("SELECT COUNT(*) FROM JobShip"))) +
                    shown(number(QStringLiteral("SELECT SUM(Quantity) FROM JobShip")), u"#,##0")});
    for (const auto& sum :
         rows(QStringLiteral("SELECT SUM(Quantity) FROM JobShip GROUP BY JobNo"))) {
        EXPECT_TRUE(all.join(u'\n').contains(u'\t' + shown(sum.toDouble(), u"#,##0") + u'\t'));
    }
    EXPECT_TRUE(
        print(QStringLiteral("Shipping_History.rpt"), QStringLiteral("{Employee.EmpID} = 987654"))
            .contains(QStringLiteral("Nothing has been shipped.")));
}

TEST_P(JobReports, billsOfMaterialGoDownTheAssemblies) {
    struct Bill {
        QString file, table, key, costs, parent, heading, deeper;
    };
    const QString item =
        rows(QStringLiteral("SELECT TOP 1 ItemNo, Description FROM MiscItems ORDER BY ItemNo"))
            .at(0);
    for (const auto& bill :
         {Bill{QStringLiteral("job_bom.rpt"), QStringLiteral("Job"), QStringLiteral("JobNo"),
               QStringLiteral("JobMiscCost"), QStringLiteral("AssemblyJobNo"),
               QStringLiteral("Job"), QStringLiteral("job")},
          Bill{QStringLiteral("estimate_bom.rpt"), QStringLiteral("Estimate"),
               QStringLiteral("EstNo"), QStringLiteral("EstMiscCost"),
               QStringLiteral("AssemblyEstno"), QStringLiteral("Estimate"),
               QStringLiteral("estimate")}}) {
        SCOPED_TRACE(bill.file.toStdString());
        execute(QStringLiteral("UPDATE %1 SET %2 = 0").arg(bill.table, bill.parent));
        const auto made =
            rows(QStringLiteral("SELECT TOP 10 %1 FROM %2 ORDER BY %1").arg(bill.key, bill.table));
        ASSERT_EQ(made.size(), 10);
        const auto childOf = [&](int child, int parent) {
            execute(QStringLiteral("UPDATE %1 SET %2 = %3 WHERE %4 = %5")
                        .arg(bill.table, bill.parent, made[parent], bill.key, made[child]));
        };
        // Each has quantities of its own, an item of the catalogue and one deleted there.
        for (int index = 0; index < made.size(); ++index) {
            execute(QStringLiteral("UPDATE %1 SET PartNo = 'Part %2', Description = 'Made %2', "
                                   "Material = Null, Quantity = %3 WHERE %4 = %5")
                        .arg(bill.table)
                        .arg(index)
                        .arg(37 + 1300 * index)
                        .arg(bill.key, made[index]));
            execute(QStringLiteral("DELETE FROM %1 WHERE %2 = %3")
                        .arg(bill.costs, bill.key, made[index]));
            for (const auto& [number, needed] :
                 {std::pair{QStringLiteral("77777"), 2.25 + 31 * index},
                  std::pair{item.section(u'|', 0, 0), 5.5 + 470 * index}})
                execute(QStringLiteral("INSERT INTO %1 (%2, ItemNo, Quantity, UnitofMeasure) "
                                       "VALUES(%3, %4, %5, 'u%6')")
                            .arg(bill.costs, bill.key, made[index], number)
                            .arg(needed)
                            .arg(index));
        }
        // The chain is longer than the bill goes down; 8 is built into 1 beside 2, 9 into itself.
        for (int index = 1; index <= 7; ++index)
            childOf(index, index - 1);
        childOf(8, 1);
        childOf(9, 9);

        const auto quantity = [&](int index) {
            return number(QStringLiteral("SELECT Quantity FROM %1 WHERE %2 = %3")
                              .arg(bill.table, bill.key, made[index]));
        };
        const auto perPart = [&](double all, int top) {
            return quantity(top) > 0 ? u'\t' + shown(all / quantity(top), u"#,##0.0000")
                                     : QString();
        };
        const auto items = [&](int index, int top, const QString& before) {
            QStringList lines;
            for (const auto& row : {QStringLiteral("77777|Item 77777"), item}) {
                const auto fields = row.split(u'|');
                const double needed =
                    number(QStringLiteral("SELECT SUM(Quantity) FROM %1 WHERE %2 = %3 AND ItemNo "
                                          "= %4")
                               .arg(bill.costs, bill.key, made[index], fields[0]));
                lines += before + fields[0] + u'\t' + fields[1] + u'\t' + shown(needed) +
                         QStringLiteral("\tu%1").arg(index) + perPart(needed, top);
            }
            return lines;
        };
        const auto expected = [&](int top, const QList<int>& below) {
            auto lines = items(top, top, {});
            if (!below.isEmpty())
                lines += bill.heading +
                         QStringLiteral(
                             "\tParts made for it\tDescription\tQuantity\tUnit\tFor one part");
            for (const int index : below) {
                lines += made[index] + QStringLiteral("\tPart %1\tMade %1\t").arg(index) +
                         shown(quantity(index), u"#,##0") + perPart(quantity(index), top);
                lines += items(index, top, QStringLiteral("Item "));
                if (index == top + 5 && top < 2)
                    lines += QStringLiteral("1 more below %1 %2: see its own bill of material.")
                                 .arg(bill.deeper, made[index]);
            }
            return lines;
        };
        const auto printed = [&](int top) {
            const auto lines = print(
                bill.file, QStringLiteral("{%1.%2} = %3").arg(bill.table, bill.key, made[top]));
            const auto heading = lines.indexOf(
                QStringLiteral("Item\tMaterial and fixed cost items\tQuantity\tUnit\tFor one "
                               "part"));
            QStringList found;
            for (auto at = heading + 1; at < lines.size(); ++at) {
                if (lines[at].startsWith(QStringLiteral("Printed ")))
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
        execute(QStringLiteral("UPDATE %1 SET Quantity = 0 WHERE %2 = %3")
                    .arg(bill.table, bill.key, made[2]));
        check(2, {3, 4, 5, 6, 7});
        // A ring of six ends before it comes round, and nothing points back to the top.
        childOf(2, 7);
        check(2, {3, 4, 5, 6, 7});
        // Pages that begin within an assembly are still the top's.
        for (int row = 0; row < 150; ++row)
            execute(QStringLiteral("INSERT INTO %1 (%2, ItemNo, Quantity) VALUES(%3, 77777, 1)")
                        .arg(bill.costs, bill.key, made[5]));
        QStringList heads;
        for (const QString& line :
             print(bill.file, QStringLiteral("{%1.%2} = %3").arg(bill.table, bill.key, made[2]))) {
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

TEST_P(JobReports, everyRegisteredReportIsThereAndEachModuleHasOneDefault) {
    const auto registered = rows(QStringLiteral("SELECT FileName FROM Reports WHERE OEM = 1"));
    EXPECT_TRUE(registered.contains(QStringLiteral("Jobs_List.rpt")));
    for (const auto& file : registered)
        EXPECT_GT(print(file).size(), 0) << file.toStdString();
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT [Module] FROM Reports WHERE [Default] = True ORDER BY [Module]")),
              rows(QStringLiteral("SELECT DISTINCT [Module] FROM Reports ORDER BY [Module]")));
}

MIRSA_BOTH_ENGINES(JobReports);
