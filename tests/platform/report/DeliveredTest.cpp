#include "platform/report/Layout.h"
#include "platform/report/Painting.h"
#include "platform/report/ReportError.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "sample/Sample.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

#include <algorithm>

using report::PageItem;

namespace {

QString money(double value) {
    return values::format(value, u"#,##0.00");
}

/// The delivered report files on the sample shop. Figures come from statements of the test's own.
class Delivered : public ::testing::TestWithParam<testsupport::EngineKind> {
  protected:
    /// One shop for all tests of an engine: they change no row that another one looks at.
    static jet::Database& db() {
        auto& shop = shops()[GetParam()];
        if (!shop) {
            shop = std::make_unique<testsupport::TestDatabase>(
                GetParam(), testsupport::TestDatabase::Contents::Shop);
            sample::fill(shop->database(), {1, 60, QDate(2026, 3, 2)});
        }
        return shop->database();
    }
    void SetUp() override { MIRSA_NEEDS_ENGINE(GetParam()); }
    static void TearDownTestSuite() { shops().clear(); }
    struct Access : testsupport::DatabaseFixture {
        using DatabaseFixture::rows;
    };
    static QStringList rows(const QString& select) { return Access::rows(db(), select); }

    std::unique_ptr<report::Document> print(const QString& name, const QString& formula = {}) {
        report::DatabaseRowSource source(db());
        try {
            const auto file = report::readReportFile(testsupport::sourceFile(u"reports/"_s) + name);
            auto document = report::layOut(file, source, formula);
            checkPages(*document, name);
            return document;
        } catch (const report::ReportError& error) {
            ADD_FAILURE() << name.toStdString() << ": " << error.code() << ' '
                          << error.detail().toStdString();
            return std::make_unique<report::Document>();
        }
    }

    /// Nothing stands outside the margins, no text lies on another, and the pages say which they
    /// are. The first pages are saved as pictures.
    static void checkPages(const report::Document& document, const QString& name) {
        ASSERT_GT(document.pageCount(), 0) << name.toStdString();
        const auto& paper = document.paper;
        for (int index = 0; index < document.pageCount(); ++index) {
            const auto page = document.page(index);
            std::vector<QRectF> texts;
            for (const auto& item : page.items) {
                EXPECT_GE(item.x, paper.left - 0.01);
                EXPECT_LE(item.x + item.w, paper.size.width() - paper.right + 0.02)
                    << name.toStdString() << ' ' << item.text.toStdString();
                EXPECT_LE(item.y + item.h, paper.size.height() - paper.bottom + 0.02)
                    << name.toStdString() << " page " << index << ' ' << item.text.toStdString();
                if (item.kind != PageItem::Kind::Text)
                    continue;
                const QRectF place =
                    QRectF(item.x, item.y, item.w, item.h).adjusted(0.05, 0.4, -0.05, -0.4);
                for (const auto& other : texts)
                    EXPECT_FALSE(place.intersects(other)) << name.toStdString() << " page " << index
                                                          << ' ' << item.text.toStdString();
                texts.push_back(place);
            }
            EXPECT_TRUE(
                page.text().contains(u"Page %1 of %2"_s.arg(index + 1).arg(document.pageCount())));
            if (index < 2)
                savePicture(document, page, name, index);
        }
    }

    static void savePicture(const report::Document& document, const report::Page& page,
                            const QString& name, int index) {
        constexpr int dotsPerMm = 5;
        QImage image((document.paper.size * dotsPerMm).toSize(), QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        report::PagePainter(document).paint(painter, page, dotsPerMm);
        QDir().mkpath(testsupport::builtFile(u"gallery"_s));
        image.save(testsupport::builtFile(u"gallery/%1-%2.png"_s).arg(name).arg(index + 1));
    }

    static QString allText(const report::Document& document) {
        QString text;
        for (int page = 0; page < document.pageCount(); ++page)
            text += document.page(page).text();
        return text;
    }

    static QStringList barTexts(const report::Document& document) {
        QStringList texts;
        for (int page = 0; page < document.pageCount(); ++page) {
            for (const auto& item : document.page(page).items) {
                if (item.kind == PageItem::Kind::Bars)
                    texts.append(item.text);
            }
        }
        return texts;
    }

    static std::map<testsupport::EngineKind, std::unique_ptr<testsupport::TestDatabase>>& shops() {
        static std::map<testsupport::EngineKind, std::unique_ptr<testsupport::TestDatabase>> made;
        return made;
    }

    static double number(const QString& select) { return db().lookup(select).toDouble(); }
};

} // namespace

TEST_P(Delivered, TravelerCarriesTheRoutingWithItsBarCodes) {
    const qint64 job = db().lookup(u"SELECT TOP 1 JobNo FROM JobOper GROUP BY JobNo ORDER BY "
                                   "COUNT(*) DESC, JobNo"_s)
                           .toLong();
    const auto document = print(u"Job_Traveler.rpt"_s, u"{Job.jobno} = %1"_s.arg(job));
    QStringList codes{QString::number(job)};
    codes += rows(u"SELECT OperNo FROM JobOper WHERE JobNo = %1 ORDER BY SeqNo"_s.arg(job));
    EXPECT_EQ(barTexts(*document), codes);
    const QString text = allText(*document);
    for (const auto& row : rows(u"SELECT PartNo FROM Job WHERE JobNo = %1"_s.arg(job)))
        EXPECT_TRUE(text.contains(row)) << row.toStdString();
    const auto contractors =
        number(u"SELECT COUNT(*) FROM JobOper INNER JOIN Operation ON JobOper.OperNo = "
               "Operation.OperNo WHERE JobNo = %1 AND OperType = 'C'"_s.arg(job));
    EXPECT_EQ(text.count(u"OUTSIDE CONTRACTOR"_s), contractors);
}

TEST_P(Delivered, EveryJobBeginsItsOwnTraveler) {
    const auto jobs = rows(u"SELECT JobNo FROM Job ORDER BY JobNo"_s);
    const auto document = print(u"Job_Traveler.rpt"_s);
    ASSERT_GE(document->pageCount(), jobs.size());
    QStringList starts;
    for (int page = 0; page < document->pageCount(); ++page) {
        const QString text = document->page(page).text();
        if (text.contains(u"Customer\t"_s))
            starts.append(text.section(u"Job "_s, 1, 1).section(u'\n', 0, 0));
    }
    EXPECT_EQ(starts, jobs);
}

TEST_P(Delivered, TravelerWithNotesHasEachNoteBeneathItsOperation) {
    const qint64 job =
        db().lookup(u"SELECT TOP 1 JobNo FROM JobOperNote WHERE JobNo > 0 AND SeqNo > 0 "
                    "ORDER BY JobNo"_s)
            .toLong();
    ASSERT_GT(job, 0);
    const QString longNote =
        u"Deburr with care and measure again. "_s.repeated(150) + u"END OF NOTE"_s;
    db().execute(
        u"UPDATE JobOperNote SET OperNotes = '%1' WHERE JobNo = %2"_s.arg(longNote).arg(job));
    const auto document = print(u"Job_Traveler_Notes.rpt"_s, u"{Job.JobNo} = %1"_s.arg(job));
    QString text = allText(*document).simplified();
    EXPECT_EQ(text.count(u"END OF NOTE"_s),
              number(u"SELECT COUNT(*) FROM JobOperNote INNER JOIN JobOper ON "
                     "(JobOperNote.JobNo = JobOper.JobNo) AND (JobOperNote.SeqNo = "
                     "JobOper.SeqNo) WHERE JobOper.JobNo = %1"_s.arg(job)));
    EXPECT_EQ(text.count(u"Deburr"_s) % 150, 0);
}

TEST_P(Delivered, QuoteShowsBreaksThatHaveAQuantity) {
    const qint64 estimate =
        db().lookup(u"SELECT TOP 1 EstNo FROM Estimate WHERE QtyBreakA > 0 AND QtyBreakC > 0 "
                    "ORDER BY EstNo"_s)
            .toLong();
    ASSERT_GT(estimate, 0);
    db().execute(u"UPDATE Estimate SET QtyBreakB = 0, QtyQPB = 98.7654, QtyQPC = 1234.5, "
                 "QtyTotalC = 24690 WHERE EstNo = %1"_s.arg(estimate));
    const auto document = print(u"Estimate_Quote.rpt"_s, u"{Estimate.Estno} = %1"_s.arg(estimate));
    const QString text = allText(*document);
    EXPECT_TRUE(text.contains(u"No. %1\n"_s.arg(estimate)));
    EXPECT_TRUE(text.contains(u"\t$1,234.5000\t$24,690.00"_s)) << text.toStdString();
    EXPECT_FALSE(text.contains(u"98.7654"_s));
    const auto rest = rows(u"SELECT company, RFQNo, PartNo FROM Estimate INNER JOIN Customer ON "
                           "Estimate.CustID = Customer.Custid WHERE EstNo = %1"_s.arg(estimate));
    ASSERT_EQ(rest.size(), 1);
    for (const auto& part : rest.front().split(u'|'))
        EXPECT_TRUE(text.contains(part)) << part.toStdString();
    EXPECT_TRUE(text.contains(db().lookup(u"SELECT CompanyName FROM SystemSettings"_s).toText()));
}

TEST_P(Delivered, CustomerListHasEveryCustomerOnceInOrder) {
    const auto document = print(u"Customers.rpt"_s);
    const QString text = allText(*document);
    const auto count = rows(u"SELECT Custid FROM Customer"_s).size();
    EXPECT_TRUE(text.contains(u"%1 customers"_s.arg(count))) << text.right(300).toStdString();
    for (const auto& name : rows(u"SELECT company FROM Customer WHERE State = 'OH'"_s))
        EXPECT_TRUE(text.contains(name.section(u' ', 0, 0))) << name.toStdString();
    const auto some = print(u"Customers.rpt"_s, u"{customer.company} in 'A' to 'Czz'"_s);
    const auto between = rows(u"SELECT Custid FROM Customer WHERE company BETWEEN 'A' AND 'Czz'"_s);
    ASSERT_GT(between.size(), 0);
    EXPECT_TRUE(allText(*some).contains(u"%1 customers"_s.arg(between.size())));
}

TEST_P(Delivered, ListsOfVendorsAndEmployeesCountThemAll) {
    const auto vendors = rows(u"SELECT VendID FROM Vendor"_s).size();
    EXPECT_TRUE(allText(*print(u"Vendors.rpt"_s)).contains(u"%1 vendors"_s.arg(vendors)));
    const auto employees = rows(u"SELECT EmpID FROM Employee"_s).size();
    EXPECT_TRUE(allText(*print(u"Employees.rpt"_s)).contains(u"%1 employees"_s.arg(employees)));
    EXPECT_TRUE(
        allText(*print(u"Vendors.rpt"_s, u"{Vendor.Vendid} = 1"_s)).contains(u"1 vendors"_s));
}

TEST_P(Delivered, BadgesAreOfActivePeopleAndCarryTheSecurityCharactersWhenTheseAreOn) {
    const QStringList active = rows(u"SELECT EmpID FROM Employee WHERE EmpStatus = 'Active'"_s);
    ASSERT_GT(active.size(), 1);
    for (const bool on : {false, true}) {
        db().execute(u"UPDATE SystemSettings SET SecurityCode = 'K7', Securityon = "_s +
                     (on ? u"True"_s : u"False"_s));
        const QString text = allText(*print(u"Employee_ID_Badges.rpt"_s));
        EXPECT_EQ(text.count(u"K7"_s), on ? active.size() : 0) << text.left(400).toStdString();
        for (const QString& name :
             rows(u"SELECT lastname FROM Employee WHERE EmpStatus = 'Active'"_s))
            EXPECT_TRUE(text.contains(name)) << name.toStdString();
    }
    EXPECT_TRUE(allText(*print(u"bCommands.rpt"_s)).contains(u"SUSPEND"_s));
}

TEST_P(Delivered, JobReportAddsUpWhatTheJobCost) {
    const qint64 job =
        db().lookup(u"SELECT TOP 1 Job.JobNo FROM Job INNER JOIN JobMiscCost ON Job.JobNo = "
                    "JobMiscCost.JobNo WHERE Job.TotalHours > 0 ORDER BY Job.JobNo"_s)
            .toLong();
    ASSERT_GT(job, 0);
    const bool oneRate =
        db().lookup(u"SELECT OneShopRate FROM Job WHERE JobNo = %1"_s.arg(job)).toBool();
    const QString join =
        u" FROM (JobOper INNER JOIN Operation ON JobOper.OperNo = Operation.OperNo) "
        "INNER JOIN Job ON "
        "JobOper.JobNo = Job.JobNo WHERE JobOper.JobNo = %1 AND OperType = '%2'"_s;
    const QString rate = oneRate ? u"JobShopRate"_s : u"OperShopRate"_s;
    const double hours = number(u"SELECT SUM(OperTime_Amount)"_s + join.arg(job).arg(u"I"_s));
    const double inHouse =
        number(u"SELECT SUM(OperTime_Amount * "_s + rate + u')' + join.arg(job).arg(u"I"_s));
    const double outside = number(u"SELECT SUM(OperTime_Amount)"_s + join.arg(job).arg(u"C"_s));
    const double fixed =
        number(u"SELECT SUM(CostAmount) FROM JobMiscCost WHERE JobNo = %1"_s.arg(job));
    const auto document = print(u"Job_Report.rpt"_s, u"{Job.JobNo} = %1"_s.arg(job));
    const QString text = allText(*document);
    EXPECT_TRUE(text.contains(u'\t' + values::format(hours, u"#,##0.00") + u'\t')) << hours;
    EXPECT_TRUE(text.contains(u"Operations\t$"_s + money(inHouse + outside)))
        << inHouse << ' ' << outside << '\n'
        << text.toStdString();
    EXPECT_TRUE(text.contains(u"Fixed costs and material\t$"_s + money(fixed)));
    EXPECT_TRUE(text.contains(u"Total cost\t$"_s + money(inHouse + outside + fixed)));
}

TEST_P(Delivered, BillsOfMaterialListItemsAndAssemblies) {
    for (const auto& [file, table, key, costs, parent] :
         {std::array{"estimate_bom.rpt", "Estimate", "EstNo", "EstMiscCost", "AssemblyEstno"},
          std::array{"job_bom.rpt", "Job", "JobNo", "JobMiscCost", "AssemblyJobNo"}}) {
        const QString from = QLatin1String(costs);
        const QString number = QLatin1String(key);
        const auto top =
            db().lookup(u"SELECT TOP 1 %1 FROM %2 ORDER BY %1"_s.arg(number, from)).toLong();
        ASSERT_GT(top, 0) << costs;
        // Another record of the table becomes an assembly of the first with costs.
        const auto child =
            db().lookup(u"SELECT MAX(%1) FROM %2"_s.arg(number, QLatin1String(table))).toLong();
        ASSERT_NE(child, top);
        db().execute(u"UPDATE %1 SET %2 = %3 WHERE %4 = %5"_s
                         .arg(QLatin1String(table), QLatin1String(parent))
                         .arg(top)
                         .arg(number)
                         .arg(child));
        const auto document = print(QLatin1String(file),
                                    u"{%1.%2} = %3"_s.arg(QLatin1String(table), number).arg(top));
        const QString text = allText(*document);
        for (const auto& row :
             rows(u"SELECT ItemNo, Quantity FROM %1 WHERE %2 = %3"_s.arg(from, number).arg(top))) {
            const auto parts = row.split(u'|');
            EXPECT_TRUE(text.contains(u'\n' + parts[0] + u'\t'));
            EXPECT_TRUE(text.contains(u'\t' + money(parts[1].toDouble()) + u'\t'))
                << row.toStdString();
        }
        for (const auto& row : rows(u"SELECT %1, PartNo FROM %2 WHERE %3 = %4"_s
                                        .arg(number, QLatin1String(table), QLatin1String(parent))
                                        .arg(top)))
            EXPECT_TRUE(text.contains(u'\n' + QString(row).replace(u'|', u'\t') + u'\t'))
                << text.toStdString();
    }
}

TEST_P(Delivered, ListsOfJobsKeepTheirPlacesWithLongTextsAndWithNone) {
    const QString words = u"Bracket, left hand, anodized and masked "_s.repeated(5);
    db().execute(u"INSERT INTO Job (CustID, PONo, PartNo, Description, Material, "
                 "Quantity, Shipped) VALUES(1, '%1', '%2', '%3', '%3', 123456789, "
                 "False)"_s.arg(QString(40, u'W'), QString(60, u'M'), words));
    const qint64 wordy = db().lastCounter();
    db().execute(u"INSERT INTO Job (Quantity) VALUES(Null)"_s);
    const qint64 bare = db().lastCounter();
    for (int day = 1; day <= 28; ++day) {
        for (const qint64 job : {wordy, bare})
            db().execute(u"INSERT INTO JobShip (JobNo, ShippedDate, Quantity, "
                         "ShippedByEmpID) VALUES(%1, #03/%2/2026#, 4000000, 0)"_s.arg(job)
                             .arg(day));
    }
    for (const auto* name :
         {"Jobs_List.rpt", "Shipping_History.rpt", "Job_Report.rpt", "job_bom.rpt"}) {
        const auto all = print(QLatin1String(name));
        EXPECT_TRUE(allText(*all).contains(u"anodized"_s)) << name;
        print(QLatin1String(name), u"{Job.JobNo} = 999999"_s);
        print(QLatin1String(name), u"{Job.JobNo} in [%1, %2]"_s.arg(wordy).arg(bare));
    }
    for (const auto* table : {"JobShip", "Job"})
        db().execute(u"DELETE FROM %1 WHERE JobNo IN (%2, %3)"_s.arg(QLatin1String(table))
                         .arg(wordy)
                         .arg(bare));
}

TEST_P(Delivered, TheScheduleIsDrawnToScaleAndTheLoadAddsUp) {
    const QString job =
        rows(u"SELECT MAX(JobNo) FROM JobOperSchedule WHERE JobNo IN (SELECT JobNo FROM Job WHERE "
             "JobDueDate > JobDateIn)"_s)
            .front();
    const auto schedule = print(u"Job_Schedule.rpt"_s, u"{Job.JobNo} = "_s + job);
    // Each entry's bar begins and ends where its days lie within the job's.
    std::vector<report::PageItem> bars;
    const auto page = schedule->page(0);
    for (const auto& item : page.items) {
        if (item.kind == PageItem::Kind::Box && item.thickness > 0)
            bars.push_back(item);
    }
    const auto spans = rows(u"SELECT DateDiff('d', JobDateIn, StartDate), DateDiff('d', JobDateIn, "
                            "EndDate), DateDiff('d', JobDateIn, JobDueDate) + 1 FROM "
                            "JobOperSchedule INNER JOIN Job ON Job.JobNo = JobOperSchedule.JobNo "
                            "WHERE Job.JobNo = %1 ORDER BY SeqNo, StartDate, ID"_s.arg(job));
    ASSERT_EQ(bars.size(), static_cast<std::size_t>(spans.size()));
    for (qsizetype i = 0; i < spans.size(); ++i) {
        const QStringList days = spans[i].split(u'|');
        const double range = days[2].toDouble();
        const auto& bar = bars[static_cast<std::size_t>(i)];
        const double left = schedule->paper.left + 146;
        // 7:00 AM to 3:30 PM.
        EXPECT_NEAR(bar.x, left + 108 * (days[0].toDouble() + 7 / 24.0) / range, 0.05);
        EXPECT_NEAR(bar.x + bar.w,
                    left + 108 * std::min(1.0, (days[1].toDouble() + 15.5 / 24) / range), 0.05);
    }
    const QString load = allText(*print(u"Schedule_Load.rpt"_s));
    const auto sums =
        rows(u"SELECT Department, SUM(EstOper) FROM (JobOper INNER JOIN Operation ON "
             "JobOper.OperNo = Operation.OperNo) INNER JOIN OperDepartment ON OperDepartment.ID = "
             "Operation.operdepartment_id WHERE EXISTS (SELECT ID FROM JobOperSchedule WHERE "
             "JobOperSchedule.JobNo = JobOper.JobNo AND JobOperSchedule.SeqNo = JobOper.SeqNo) AND "
             "JobOper.JobNo IN (SELECT JobNo FROM Job WHERE Shipped = False) GROUP BY "
             "Department"_s);
    ASSERT_GT(sums.size(), 1);
    for (const QString& sum : sums) {
        const QString hours = values::format(sum.section(u'|', 1).toDouble(), u"#,##0.0");
        EXPECT_TRUE(load.contains(hours + u" hours"_s)) << sum.toStdString();
    }
}

TEST_P(Delivered, HoursOfATimeAddUpByWeekByJobAndInAttendance) {
    const QString of = u"%1.EmpID = 2 AND %1.%2 >= #06/01/2025# AND %1.%2 < #02/03/2026#"_s;
    const QString formula = u"{TimeLog.EmpID} = 2 and {Timelog.Startdate} in date(2025,06,01) to "
                            "date(2026,02,02) and {TimeLog.status} like '*'"_s;
    const QString work =
        u" FROM TimeLog INNER JOIN Operation ON TimeLog.OperNo = Operation.OperNo WHERE "_s +
        of.arg(u"TimeLog"_s, u"StartDate"_s);
    std::map<QDate, double> weeks;
    for (const QString& row : rows(u"SELECT StartDate, AccumTime"_s + work)) {
        const QDate day = values::dateFromText(row.section(u'|', 0, 0).section(u' ', 0, 0));
        weeks[day.addDays(1 - day.dayOfWeek())] += row.section(u'|', 1).toDouble();
    }
    ASSERT_GT(weeks.size(), 3U);
    const QString byWeek = allText(*print(u"Time_by_Week.rpt"_s, formula));
    for (const auto& [monday, hours] : weeks)
        EXPECT_TRUE(byWeek.contains(money(hours))) << hours;
    const QString byJob = allText(*print(u"Time_by_Job.rpt"_s, formula));
    for (const QString& row :
         rows(u"SELECT JobNo, SUM(AccumTime)"_s + work + u" AND JobNo > 0 GROUP BY JobNo"_s)) {
        EXPECT_TRUE(byJob.contains(u"Job "_s + row.section(u'|', 0, 0)));
        EXPECT_TRUE(byJob.contains(money(row.section(u'|', 1).toDouble()))) << row.toStdString();
    }
    const QString all = money(number(u"SELECT SUM(AccumTime)"_s + work));
    EXPECT_TRUE(byWeek.contains(all));
    EXPECT_TRUE(byJob.contains(all + u" hours in all"_s));
    EXPECT_TRUE(allText(*print(u"Time_Log.rpt"_s, formula)).contains(all + u" hours in all"_s));

    const QString attendance = u" FROM Sign_in WHERE "_s + of.arg(u"Sign_in"_s, u"Sign_in"_s);
    const double present =
        number(u"SELECT SUM(DateDiff('s', Sign_in, Sign_out))"_s + attendance) / 3600;
    const double booked = number(
        u"SELECT SUM(AccumTime) FROM TimeLog WHERE SignID IN (SELECT ID"_s + attendance + u")"_s);
    const QString in = allText(
        *print(u"Sign_In.rpt"_s, u"{Sign_In.EmpID} = 2 and {Sign_In.Sign_in} in date(2025,06,01) "
                                 "to date(2026,02,02)"_s));
    EXPECT_TRUE(
        in.contains(u"%1 hours in all, %2 of them booked"_s.arg(money(present), money(booked))))
        << present << ' ' << booked;
    EXPECT_TRUE(allText(*print(u"Sign_In.rpt"_s)).contains(u"still in"_s));
    for (const auto* file : {u"Time_by_Week.rpt", u"Time_by_Job.rpt"})
        print(QString::fromUtf16(file));
}

TEST_P(Delivered, FormulasOfTheQueryFormsRun) {
    for (const auto* formula :
         {u"{customer.company} in 'A' to 'M'", u"{Job.JobNo} in 1 to 20",
          u"{Job.PartNo} = 'O''Hara'", u"{Job.JobDateIn} in date(2025,06,01) to date(2026,03,02)",
          u"{Job.PoNo} in '1' to '9' and {Job.JobDueDate} = date(2026,03,02)",
          u"{Job.JobNo} = 3 OR {Job.JobNo} = 5", u"not {Job.Shipped} and {Job.PartNo} like '*1*'",
          u"{JobOper.OperNo} in [1, 2, 3]", u"isnull({Job.PONo}) or {Job.Quantity} >= 10"}) {
        const QString text = QString::fromUtf16(formula);
        SCOPED_TRACE(text.toStdString());
        print(u"Job_Report.rpt"_s, text);
    }
    const auto some =
        print(u"Job_Report.rpt"_s, u"{Job.JobNo} in 40 to 60 and not {Job.Shipped}"_s);
    QStringList shown;
    for (int page = 0; page < some->pageCount(); ++page)
        shown.append(some->page(page).text().section(u"Job "_s, 1, 1).section(u'\n', 0, 0));
    shown.removeDuplicates();
    EXPECT_EQ(shown, rows(u"SELECT JobNo FROM Job WHERE JobNo BETWEEN 40 AND 60 AND "
                          "Shipped = False ORDER BY JobNo"_s));
}

TEST_P(Delivered, TheManualsExamplePrints) {
    QFile manual(testsupport::sourceFile(u"docs/reports.md"_s));
    ASSERT_TRUE(manual.open(QIODevice::ReadOnly));
    const QByteArray content = manual.readAll();
    const auto start = content.indexOf("<?xml");
    const QByteArray example = content.mid(start, content.indexOf("```", start) - start);
    report::DatabaseRowSource source(db());
    const auto file = report::readReportText(example, u"Example.rpt"_s);
    const auto document = report::layOut(file, source, u"{Job.Quantity} > 0"_s);
    checkPages(*document, u"Example"_s);
    const QString text = allText(*document);
    const auto open = rows(u"SELECT JobNo FROM Job INNER JOIN Customer ON Job.CustID = "
                           "Customer.Custid WHERE Shipped = False AND Quantity > 0 ORDER BY "
                           "company, JobDueDate, JobNo"_s);
    ASSERT_GT(open.size(), 0);
    EXPECT_EQ(barTexts(*document), open);
    EXPECT_TRUE(text.contains(u"%1 open jobs in all"_s.arg(open.size())));
    const double left =
        number(u"SELECT SUM(EstOper - OperTime_Amount) FROM JobOper INNER JOIN "
               "Operation ON JobOper.OperNo = Operation.OperNo WHERE JobNo = %1 AND "
               "OperType = 'I' AND EstOper > OperTime_Amount"_s.arg(open.front()));
    EXPECT_TRUE(text.contains(u'\n' + money(left) + u" h left\n"_s)) << left;
}

TEST_P(Delivered, RequestsAndOrdersCarryTheirLinesAndTotals) {
    const QString group =
        db().lookup(u"SELECT TOP 1 OrderNumber FROM RFQVendor GROUP BY OrderNumber ORDER BY "
                    "COUNT(*) DESC, OrderNumber"_s)
            .toText();
    auto document = print(u"RFQ.rpt"_s, u"{rfq.ponumber} = "_s + group);
    const auto vendors = rows(u"SELECT VOrderKey FROM RFQVendor WHERE OrderNumber = "_s + group);
    EXPECT_GE(document->pageCount(), vendors.size()) << "each vendor begins a page";
    for (const QString& key : vendors) {
        document =
            print(u"RFQ.rpt"_s,
                  u"({rfq.ponumber} = %1) and ({RFQVendor.vorderkey} = '%2')"_s.arg(group, key));
        const QString text = allText(*document);
        for (const auto& part :
             rows(u"SELECT PartNumber FROM RFQItem WHERE VOrderKey = '%1'"_s.arg(key)))
            EXPECT_TRUE(text.contains(part)) << part.toStdString();
    }
    const QString order = db().lookup(u"SELECT MAX(PONumber) FROM PO"_s).toText();
    document = print(u"Purchase_Order.rpt"_s, u"({po.ponumber} = %1)"_s.arg(order));
    const QString text = allText(*document);
    for (const QString& select : {u"SELECT PartNumber FROM POItem WHERE PONumber = "_s,
                                  u"SELECT Company FROM POVendor WHERE OrderNumber = "_s}) {
        for (const auto& shown : rows(select + order))
            EXPECT_TRUE(text.contains(shown)) << shown.toStdString();
    }
    EXPECT_TRUE(text.contains(
        money(number(u"SELECT SUM(ItemTotal) FROM POItem WHERE PONumber = "_s + order))));
}

TEST_P(Delivered, OpenOrdersAndReceiptsAddUp) {
    const QString open = u" FROM POItem WHERE ReceivedQuantity < Quantity"_s;
    const QString value =
        money(number(u"SELECT SUM((Quantity - ReceivedQuantity) * UnitPrice)"_s + open));
    const QString lines = rows(u"SELECT COUNT(*) AS N"_s + open).value(0) + u" line"_s;
    for (const char16_t* name : {u"PO_Open_by_Vendor.rpt", u"PO_Open_by_Date.rpt"}) {
        const QString text = allText(*print(QString::fromUtf16(name)));
        EXPECT_TRUE(text.contains(value)) << value.toStdString();
        EXPECT_TRUE(text.contains(lines)) << lines.toStdString();
    }
    const QString order = db().lookup(u"SELECT MIN(PONumber) FROM POReceived"_s).toText();
    const QString text = allText(*print(u"PO_Receipts.rpt"_s, u"{PO.PONumber} = "_s + order));
    EXPECT_TRUE(text.contains(values::format(
        number(u"SELECT SUM(QtyRecvd) FROM POReceived WHERE PONumber = "_s + order), u"#,##0")));
}

TEST_P(Delivered, StockReportsAddUpAndLabelsCarryTheirCodes) {
    const QString worth =
        money(number(u"SELECT SUM(Items.Quantity * Items.PricePer) FROM Items"_s));
    EXPECT_TRUE(allText(*print(u"Inventory_List.rpt"_s)).contains(worth)) << worth.toStdString();
    const QString item = db().lookup(u"SELECT MAX(ItemID) FROM ItemIssue"_s).toText();
    const QString part = db().lookup(u"SELECT PartNumber FROM Items WHERE ID = "_s + item).toText();
    const QString one = u"({Items.ID} = "_s + item + u")"_s;
    EXPECT_EQ(barTexts(*print(u"Inventory_Labels.rpt"_s, one)), QStringList(part));
    EXPECT_TRUE(allText(*print(u"Inventory_Count.rpt"_s, one)).contains(item + u'\t'));
    for (const auto& [name, table] : {std::pair(u"Inventory_Issues.rpt"_s, u"ItemIssue"_s),
                                      std::pair(u"Inventory_Receipts.rpt"_s, u"ItemReStock"_s)}) {
        const QString all = allText(*print(name));
        EXPECT_TRUE(
            all.contains(rows(u"SELECT COUNT(*) FROM "_s + table).value(0) + u" records in all"_s));
        EXPECT_TRUE(
            all.contains(money(number(u"SELECT SUM(m.Quantity * Items.PricePer) FROM "_s + table +
                                      u" AS m INNER JOIN Items ON m.ItemID = Items.ID"_s))));
        // Of the day that was asked for only.
        const QString day =
            values::sqlDate(db().lookup(u"SELECT MAX([Date]) FROM "_s + table).toDate().value());
        const auto count =
            rows(u"SELECT COUNT(*) FROM "_s + table + u" WHERE [Date] = #"_s + day + u"#"_s);
        EXPECT_TRUE(allText(*print(name, u"({Items.ID} > 0) AND {"_s + table + u".Date} = #"_s +
                                             day + u"#"_s))
                        .contains(count.value(0) + u" record"_s));
    }
}

MIRSA_BOTH_ENGINES(Delivered);
