#include "core/MirsaMain.h"
#include "platform/report/Report.h"
#include "reporting/Screens.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include <QFile>
#include <QTemporaryDir>

using screen::Answer;

namespace {

/// The catalogue of reports on a delivered shop, with a program folder of its own.
class ConfigReports : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        reporting::registerScreens();
        core::shared().ProgramFolder = m_folder.path();
        copyReport(QStringLiteral("Customers.rpt"), QStringLiteral("Our customers.rpt"));
    }
    void copyReport(const QString& from, const QString& to) {
        ASSERT_TRUE(QFile::copy(QStringLiteral(MIRSA_SOURCE_DIR "/reports/") + from,
                                m_folder.filePath(to)));
    }
    void chooseFile(int row) {
        whenShown(QStringLiteral("frmNewReport"), [this, row] {
            selectRow(QStringLiteral("filReport"), row);
            press(QStringLiteral("cmdSelect"));
        });
    }
    QStringList catalogue(const QString& module) {
        return rows(QStringLiteral("SELECT Name, OEM, Default FROM Reports WHERE Module = '") +
                    module + QStringLiteral("' ORDER BY Name"));
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_P(ConfigReports, AReportIsImportedAfterItsChecksMadeTheDefaultAndRemoved) {
    open(QStringLiteral("frmConfigReports"));
    EXPECT_EQ(cells(QStringLiteral("sprReport")).size(), 1);
    chooseFile(0);
    whenShown(QStringLiteral("frmImportSelected"), [this] {
        EXPECT_EQ(text(QStringLiteral("lblRpt")), u"Our customers.rpt");
        expectBox(QStringLiteral("You must enter a Name!"), Answer::Ok, QStringLiteral("Error!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtName"), QStringLiteral("Customer List"));
        expectBox(QStringLiteral("You must enter a Description!"), Answer::Ok,
                  QStringLiteral("Error!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDesc"), QStringLiteral("O'Neil's own"));
        expectBox(QStringLiteral("Customer List already exists!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtName"), QStringLiteral("Bob's list"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdAdd"));
    EXPECT_EQ(catalogue(QStringLiteral("Customer")),
              (QStringList{QStringLiteral("Bob's list|0|False"),
                           QStringLiteral("Customer List|1|True")}));

    const QStringList shown = cells(QStringLiteral("sprReport"));
    const int own = shown.front().startsWith(u"Bob") ? 0 : 1;
    selectRow(QStringLiteral("sprReport"), own);
    expectBox(QStringLiteral("Set Bob's list As Default for Customer?"), Answer::Cancel);
    press(QStringLiteral("cmdDefault"));
    EXPECT_TRUE(
        catalogue(QStringLiteral("Customer")).contains(QStringLiteral("Bob's list|0|False")));
    expectBox(QStringLiteral("Set Bob's list As Default for Customer?"), Answer::Ok);
    press(QStringLiteral("cmdDefault"));
    EXPECT_EQ(catalogue(QStringLiteral("Customer")),
              (QStringList{QStringLiteral("Bob's list|0|True"),
                           QStringLiteral("Customer List|1|False")}));
    EXPECT_TRUE(catalogue(QStringLiteral("Vendor")).contains(QStringLiteral("Vendor List|1|True")))
        << "another type keeps its default";

    const auto select = [&](const QString& name) {
        const QStringList all = cells(QStringLiteral("sprReport"));
        for (int row = 0; row < all.size(); ++row) {
            if (all[row].startsWith(name))
                selectRow(QStringLiteral("sprReport"), row);
        }
    };
    select(QStringLiteral("Customer List"));
    expectBox(QStringLiteral("You Cannot Delete OEM Reports!."), Answer::Ok,
              QStringLiteral("Delete Error"));
    press(QStringLiteral("cmdRemove"));
    select(QStringLiteral("Bob's list"));
    expectBox(QStringLiteral("Delete This Record?"), Answer::Ok);
    press(QStringLiteral("cmdRemove"));
    EXPECT_EQ(catalogue(QStringLiteral("Customer")),
              QStringList{QStringLiteral("Customer List|1|False")});
    EXPECT_TRUE(QFile::exists(m_folder.filePath(QStringLiteral("Our customers.rpt"))))
        << "the file stays";
}

TEST_P(ConfigReports, AFileThatIsNoReportIsRefusedAndNothingSelectedSaysSo) {
    QFile broken(m_folder.filePath(QStringLiteral("A broken one.rpt")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("<report><page></report>");
    broken.close();
    open(QStringLiteral("frmConfigReports"));
    const QStringList before = rows(QStringLiteral("SELECT Name FROM Reports ORDER BY Name"));
    chooseFile(0);
    whenShown(QStringLiteral("frmImportSelected"), [this] {
        type(QStringLiteral("txtName"), QStringLiteral("Broken"));
        type(QStringLiteral("txtDesc"), QStringLiteral("Broken"));
        expectBoxContaining(QStringLiteral("A broken one.rpt can't be used as a report."));
        press(QStringLiteral("cmdOK"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("cmdAdd"));
    EXPECT_EQ(rows(QStringLiteral("SELECT Name FROM Reports ORDER BY Name")), before);

    choose(QStringLiteral("dbcRtype"), QStringLiteral("RFQ")); // no reports
    expectBox(QStringLiteral("Nothing Selected!."), Answer::Ok, QStringLiteral("Error"));
    press(QStringLiteral("cmdDefault"));
    expectBox(QStringLiteral("Nothing Selected to Remove!."), Answer::Ok,
              QStringLiteral("Selection Error"));
    press(QStringLiteral("cmdRemove"));
}

TEST_P(ConfigReports, BenchlineReportsStandUnderTheModulesThatBeginWithTools) {
    database().execute(QStringLiteral(
        "INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) "
        "VALUES ('Cutters', 'd', 'Tools Cutters', 'x.rpt', 0, True)"));
    database().execute(QStringLiteral(
        "INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) "
        "VALUES ('Holders', 'd', 'Tools Holders', 'y.rpt', 0, False)"));
    open(QStringLiteral("frmConfigReports"));
    choose(QStringLiteral("dbcRtype"), QStringLiteral("Benchline"));
    ASSERT_EQ(rowCount(QStringLiteral("sprReport")), 2);
    selectRow(QStringLiteral("sprReport"),
              cells(QStringLiteral("sprReport")).front().startsWith(u"Cutters") ? 1 : 0);
    expectBox(QStringLiteral("Set Holders As Default for Benchline?"), Answer::Ok);
    press(QStringLiteral("cmdDefault"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT Name, Default FROM Reports WHERE Module LIKE 'Tools*' ORDER BY Name")),
              (QStringList{QStringLiteral("Cutters|False"), QStringLiteral("Holders|True")}));
}

TEST_P(ConfigReports, CommonReportsGoStraightToTheirFiles) {
    copyReport(QStringLiteral("bCommands.rpt"), QStringLiteral("bCommands.rpt"));
    copyReport(QStringLiteral("Employee_ID_Badges.rpt"), QStringLiteral("Employee_ID_Badges.rpt"));
    QStringList titles;
    report::setPreviewer([&](const std::shared_ptr<const report::Document>&,
                             const report::WindowPlacing& placing) { titles += placing.title; });
    open(QStringLiteral("frmCreports"));
    press(QStringLiteral("cmdPrint(0)"));
    press(QStringLiteral("cmdPrint(1)"));
    report::setPreviewer({});
    EXPECT_EQ(titles, (QStringList{QStringLiteral("Barcode Commands"),
                                   QStringLiteral("Employee ID Badges")}));
}

MIRSA_BOTH_ENGINES(ConfigReports);
