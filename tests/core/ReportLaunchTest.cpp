#include "core/ReportLaunch.h"
#include "core/MirsaMain.h"
#include "core/ReportErrors.h"
#include "platform/report/Report.h"
#include "support/ShopFixture.h"

#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>

namespace {

class ReportLaunch : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        core::shared().ProgramFolder = folder.path();
        for (const auto* name : {"Customers.rpt", "Job_Traveler.rpt", "Job_Traveler_Notes.rpt"})
            QFile::copy(QStringLiteral(MIRSA_SOURCE_DIR "/reports/") + QLatin1String(name),
                        folder.filePath(QLatin1String(name)));
        report::setPreviewer([this](auto document, const auto& where) {
            shown = document;
            placing = where;
        });
        database().execute(QStringLiteral("INSERT INTO Customer (company) VALUES ('Zeta Gears')"));
        database().execute(QStringLiteral("INSERT INTO Customer (company) VALUES ('Alpha Molds')"));
    }
    void TearDown() override {
        report::setPreviewer({});
        ShopTest::TearDown();
    }
    void expectCritical(const QString& text, const QString& title) {
        expectBox(text, screen::Answer::Ok, title, screen::Buttons::Ok, screen::Icon::Critical);
    }

    QTemporaryDir folder;
    std::shared_ptr<const report::Document> shown;
    report::WindowPlacing placing;
};

} // namespace

TEST_P(ReportLaunch, printsTheDefaultOfAModuleAboveTheCentre) {
    core::launchDefaultReport(QStringLiteral("Customer"), QString(),
                              QStringLiteral("Full Customer Report"), &shell());
    ASSERT_NE(shown, nullptr);
    const QString text = shown->page(0).text();
    EXPECT_LT(text.indexOf(QStringLiteral("Alpha Molds")),
              text.indexOf(QStringLiteral("Zeta Gears")));
    EXPECT_EQ(placing.title, QStringLiteral("Full Customer Report"));
    EXPECT_EQ(placing.parent, &shell());
    const QRect screen = shell().screen()->geometry();
    EXPECT_EQ(placing.width, qRound(screen.width() * 0.8));
    EXPECT_EQ(placing.height, qRound(screen.height() * 0.8));
    EXPECT_EQ(placing.left - screen.left(), qRound(screen.width() * 0.1));
    EXPECT_EQ(placing.top - screen.top(), qRound(screen.height() * 0.1 * 0.65));

    const auto key = database().lookup(
        QStringLiteral("SELECT Custid FROM Customer WHERE company = 'Zeta Gears'"));
    core::launchDefaultReport(QStringLiteral("Customer"),
                              QStringLiteral("{Customer.Custid} = ") + key.toText(),
                              QStringLiteral("Customer Report"), &shell());
    EXPECT_TRUE(shown->page(0).text().contains(QStringLiteral("Zeta Gears")));
    EXPECT_FALSE(shown->page(0).text().contains(QStringLiteral("Alpha Molds")));
}

TEST_P(ReportLaunch, tellsWhatIsMissing) {
    database().execute(
        QStringLiteral("UPDATE Reports SET Default = False WHERE Module = 'Customer'"));
    expectCritical(
        QStringLiteral("You do not have a Default Report specified for this Module or the "
                       "Default Report is missing!"),
        QStringLiteral("No Default Report"));
    core::launchDefaultReport(QStringLiteral("Customer"), QString(), QString(), &shell());
    expectCritical(
        QStringLiteral("20504:  Report Not Found.  You have specified a report that does "
                       "not exist."),
        QStringLiteral("Crystal Reports Error"));
    core::launchReportFile(QStringLiteral("\\bCommands.rpt"), QString(),
                           QStringLiteral("Barcode Commands"), &shell());
    expectBoxContaining(QStringLiteral("20515:  Error In Formula.  "));
    core::launchReportFile(QStringLiteral("\\customers.rpt"), QStringLiteral("{Job.JobNo} = 1"),
                           QString(), &shell());
    database().execute(QStringLiteral("DELETE * FROM Reports"));
    expectCritical(QStringLiteral("The Job Traveler Report is missing!"),
                   QStringLiteral("No Job Traveler Report"));
    core::launchTraveler(1, true, &shell());
    EXPECT_EQ(shown, nullptr);
}

TEST_P(ReportLaunch, takesTheTravelerWithOrWithoutNotes) {
    database().execute(QStringLiteral("INSERT INTO Job (PartNo, Quantity) VALUES ('P-7', 3)"));
    const auto job = database().lookup(QStringLiteral("SELECT JobNo FROM Job")).toLong();
    core::launchTraveler(job, false, &shell());
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(shown->title, QStringLiteral("Job Traveler"));
    EXPECT_EQ(placing.title, QStringLiteral("Traveler Report"));
    EXPECT_TRUE(shown->page(0).text().contains(QStringLiteral("P-7")));
    core::launchTraveler(job, true, &shell());
    EXPECT_EQ(shown->title, QStringLiteral("Job Traveler with Notes"));
}

MIRSA_BOTH_ENGINES(ReportLaunch);

TEST(ReportErrors, aCodeWithoutARowIsUnknown) {
    EXPECT_EQ(core::reportErrorText(20516), QStringLiteral(":  Unknown Error!"));
    EXPECT_EQ(core::reportErrorText(20545),
              QStringLiteral(":  User Has Cancelled Operation - The user has Clicked the Cancel "
                             "button in a dialog box during the session."));
    for (int code = 20500; code <= 20557; ++code)
        EXPECT_TRUE(core::reportErrorText(code).startsWith(QStringLiteral(":  "))) << code;
}
