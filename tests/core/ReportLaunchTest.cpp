#include "core/ReportLaunch.h"
#include "core/MirsaMain.h"
#include "core/ReportErrors.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"

#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>

namespace {

class ReportLaunch : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::shared().ProgramFolder = folder.path();
        for (const auto* name : {"Customers.rpt", "Job_Traveler.rpt", "Job_Traveler_Notes.rpt",
                                 "Job_Report.rpt", "Estimate_Quote.rpt"})
            QFile::copy(testsupport::sourceFile(u"reports/"_s) + QLatin1String(name),
                        folder.filePath(QLatin1String(name)));
        report::setPreviewer([this](auto document, const auto& where) {
            shown = document;
            placing = where;
        });
        database().execute(u"INSERT INTO Customer (company) VALUES ('Zeta Gears')"_s);
        database().execute(u"INSERT INTO Customer (company) VALUES ('Alpha Molds')"_s);
    }
    void expectCritical(const QString& text, const QString& title) {
        expectBox(text, screen::Answer::Ok, title, screen::Buttons::Ok, screen::Icon::Critical);
    }

    QTemporaryDir folder;
    std::shared_ptr<const report::Document> shown;
    report::WindowPlacing placing;
};

} // namespace

TEST_P(ReportLaunch, PrintsTheDefaultOfAModuleAboveTheCentre) {
    core::launchDefaultReport(u"Customer"_s, QString(), u"Full Customer Report"_s, &shell());
    ASSERT_NE(shown, nullptr);
    const QString text = shown->page(0).text();
    EXPECT_LT(text.indexOf(u"Alpha Molds"_s), text.indexOf(u"Zeta Gears"_s));
    EXPECT_EQ(placing.title, u"Full Customer Report"_s);
    EXPECT_EQ(placing.parent, &shell());
    const QRect screen = shell().screen()->geometry();
    EXPECT_EQ(placing.width, qRound(screen.width() * 0.8));
    EXPECT_EQ(placing.height, qRound(screen.height() * 0.8));
    EXPECT_EQ(placing.left - screen.left(), qRound(screen.width() * 0.1));
    EXPECT_EQ(placing.top - screen.top(), qRound(screen.height() * 0.1 * 0.65));

    const auto key =
        database().lookup(u"SELECT Custid FROM Customer WHERE company = 'Zeta Gears'"_s);
    core::launchDefaultReport(u"Customer"_s, u"{Customer.Custid} = "_s + key.toText(),
                              u"Customer Report"_s, &shell());
    EXPECT_TRUE(shown->page(0).text().contains(u"Zeta Gears"_s));
    EXPECT_FALSE(shown->page(0).text().contains(u"Alpha Molds"_s));
}

TEST_P(ReportLaunch, TellsWhatIsMissing) {
    database().execute(u"UPDATE Reports SET Default = False WHERE Module = 'Customer'"_s);
    expectCritical(u"You do not have a Default Report specified for this Module or the "
                   "Default Report is missing!"_s,
                   u"No Default Report"_s);
    core::launchDefaultReport(u"Customer"_s, QString(), QString(), &shell());
    expectCritical(u"20504:  Report Not Found.  You have specified a report that does "
                   "not exist."_s,
                   u"Crystal Reports Error"_s);
    core::launchReportFile(u"\\bCommands.rpt"_s, QString(), u"Barcode Commands"_s, &shell());
    expectBoxContaining(u"20515:  Error In Formula.  "_s);
    core::launchReportFile(u"\\customers.rpt"_s, u"{Job.JobNo} = 1"_s, QString(), &shell());
    database().execute(u"DELETE * FROM Reports"_s);
    expectCritical(u"The Job Traveler Report is missing!"_s, u"No Job Traveler Report"_s);
    core::launchTraveler(1, true, &shell());
    EXPECT_EQ(shown, nullptr);
}

TEST_P(ReportLaunch, TakesTheTravelerWithOrWithoutNotes) {
    database().execute(u"INSERT INTO Job (PartNo, Quantity) VALUES ('P-7', 3)"_s);
    const auto job = database().lookup(u"SELECT JobNo FROM Job"_s).toLong();
    core::launchTraveler(job, false, &shell());
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->title, u"Job Traveler"_s);
    EXPECT_EQ(placing.title, u"Traveler Report"_s);
    EXPECT_TRUE(shown->page(0).text().contains(u"P-7"_s));
    core::launchTraveler(job, true, &shell());
    EXPECT_EQ(shown->title, u"Job Traveler with Notes"_s);
}

TEST_P(ReportLaunch, LeavesMoneyOutForWhoeverMayNotSeeIt) {
    database().execute(
        u"INSERT INTO Job (PartNo, Quantity, JobShopRate, OneShopRate, QtyQuotedPrice, InvoiceEach)"
        " VALUES ('P-7', 3, 71.5, True, 8.25, 8.5)"_s);
    database().execute(u"INSERT INTO Estimate (PartNo, QtyBreakA, QtyQPA, QtyTotalA, QtyBreakB)"
                       " VALUES ('P-7', 3, 8.25, 24.75, 40)"_s);
    const auto money = [&](const QString& file) {
        core::launchReportFile(file, {}, {}, &shell());
        const QString text = shown->page(0).text();
        EXPECT_TRUE(text.contains(u"P-7"_s));
        return text.contains(core::shared().CurrencySymbol) || text.contains(u"71.50"_s) ||
               text.contains(u"Cost"_s) || text.contains(u"Price each"_s);
    };
    for (const QString& file : {u"Job_Report.rpt"_s, u"Estimate_Quote.rpt"_s})
        EXPECT_TRUE(money(file));
    // A quantity for which nothing is quoted stands there without a price.
    EXPECT_TRUE(shown->page(0).text().contains(u"40"_s));
    EXPECT_FALSE(shown->page(0).text().contains(u"0.0000"_s));
    core::shared().CurrentUserName = u"planner"_s;
    core::shared().CurrentUserNo = 4711;
    for (const QString& file : {u"Job_Report.rpt"_s, u"Estimate_Quote.rpt"_s})
        EXPECT_FALSE(money(file));
}

MIRSA_BOTH_ENGINES(ReportLaunch);

TEST(ReportErrors, ACodeWithoutARowIsUnknown) {
    EXPECT_EQ(core::reportErrorText(20516), u":  Unknown Error!"_s);
    EXPECT_EQ(core::reportErrorText(20545),
              u":  User Has Cancelled Operation - The user has Clicked the Cancel "
              "button in a dialog box during the session."_s);
    for (int code = 20500; code <= 20557; ++code)
        EXPECT_TRUE(core::reportErrorText(code).startsWith(u":  "_s)) << code;
}
