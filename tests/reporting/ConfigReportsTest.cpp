#include "core/MirsaMain.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "reporting/Screens.h"
#include "support/Gallery.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"

#include <QFile>
#include <QTemporaryDir>

using screen::Answer;

namespace {

/// The catalogue of reports on a delivered shop, with a program folder of its own.
class ConfigReports : public testsupport::ShopTest {
  protected:
    void prepare() override {
        reporting::registerScreens();
        core::shared().ProgramFolder = m_folder.path();
        copyReport(u"Customers.rpt"_s, u"Our customers.rpt"_s);
    }
    void copyReport(const QString& from, const QString& to) {
        ASSERT_TRUE(
            QFile::copy(testsupport::sourceFile(u"reports/"_s) + from, m_folder.filePath(to)));
    }
    void chooseFile(int row) {
        whenShown(u"frmNewReport"_s, [this, row] {
            selectRow(u"filReport"_s, row);
            press(u"cmdSelect"_s);
        });
    }
    QStringList catalogue(const QString& module) {
        return rows(u"SELECT Name, OEM, Default FROM Reports WHERE Module = '"_s + module +
                    u"' ORDER BY Name"_s);
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_P(ConfigReports, AReportIsImportedAfterItsChecksMadeTheDefaultAndRemoved) {
    open(u"frmConfigReports"_s);
    EXPECT_EQ(cells(u"sprReport"_s).size(), 1);
    chooseFile(0);
    whenShown(u"frmImportSelected"_s, [this] {
        EXPECT_EQ(text(u"lblRpt"_s), u"Our customers.rpt");
        expectBox(u"You must enter a Name!"_s, Answer::Ok, u"Error!"_s);
        press(u"cmdOK"_s);
        type(u"txtName"_s, u"Customer List"_s);
        expectBox(u"You must enter a Description!"_s, Answer::Ok, u"Error!"_s);
        press(u"cmdOK"_s);
        type(u"txtDesc"_s, u"O'Neil's own"_s);
        expectBox(u"Customer List already exists!"_s);
        press(u"cmdOK"_s);
        type(u"txtName"_s, u"Bob's list"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdAdd"_s);
    EXPECT_EQ(catalogue(u"Customer"_s),
              (QStringList{u"Bob's list|0|False"_s, u"Customer List|1|True"_s}));

    const QStringList shown = cells(u"sprReport"_s);
    const int own = shown.front().startsWith(u"Bob") ? 0 : 1;
    selectRow(u"sprReport"_s, own);
    expectBox(u"Set Bob's list As Default for Customer?"_s, Answer::Cancel);
    press(u"cmdDefault"_s);
    EXPECT_TRUE(catalogue(u"Customer"_s).contains(u"Bob's list|0|False"_s));
    expectBox(u"Set Bob's list As Default for Customer?"_s, Answer::Ok);
    press(u"cmdDefault"_s);
    EXPECT_EQ(catalogue(u"Customer"_s),
              (QStringList{u"Bob's list|0|True"_s, u"Customer List|1|False"_s}));
    EXPECT_TRUE(catalogue(u"Vendor"_s).contains(u"Vendor List|1|True"_s))
        << "another type keeps its default";

    const auto select = [&](const QString& name) {
        const QStringList all = cells(u"sprReport"_s);
        for (int row = 0; row < all.size(); ++row) {
            if (all[row].startsWith(name))
                selectRow(u"sprReport"_s, row);
        }
    };
    select(u"Customer List"_s);
    expectBox(u"You Cannot Delete OEM Reports!."_s, Answer::Ok, u"Delete Error"_s);
    press(u"cmdRemove"_s);
    select(u"Bob's list"_s);
    expectBox(u"Delete This Record?"_s, Answer::Ok);
    press(u"cmdRemove"_s);
    EXPECT_EQ(catalogue(u"Customer"_s), QStringList{u"Customer List|1|False"_s});
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"Our customers.rpt"_s))) << "the file stays";
}

TEST_P(ConfigReports, AFileThatIsNoReportIsRefusedAndNothingSelectedSaysSo) {
    QFile broken(m_folder.filePath(u"A broken one.rpt"_s));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("<report><page></report>");
    broken.close();
    open(u"frmConfigReports"_s);
    const QStringList before = rows(u"SELECT Name FROM Reports ORDER BY Name"_s);
    chooseFile(0);
    whenShown(u"frmImportSelected"_s, [this] {
        type(u"txtName"_s, u"Broken"_s);
        type(u"txtDesc"_s, u"Broken"_s);
        expectBoxContaining(u"A broken one.rpt can't be used as a report."_s);
        press(u"cmdOK"_s);
        press(u"cmdCancel"_s);
    });
    press(u"cmdAdd"_s);
    EXPECT_EQ(rows(u"SELECT Name FROM Reports ORDER BY Name"_s), before);

    choose(u"dbcRtype"_s, u"Benchline"_s); // no reports
    expectBox(u"Nothing Selected!."_s, Answer::Ok, u"Error"_s);
    press(u"cmdDefault"_s);
    expectBox(u"Nothing Selected to Remove!."_s, Answer::Ok, u"Selection Error"_s);
    press(u"cmdRemove"_s);
}

TEST_P(ConfigReports, BenchlineReportsStandUnderTheModulesThatBeginWithTools) {
    database().execute(
        u"INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) "
        "VALUES ('Cutters', 'd', 'Tools Cutters', 'x.rpt', 0, True)"_s);
    database().execute(
        u"INSERT INTO Reports (Name, Description, [Module], FileName, OEM, [Default]) "
        "VALUES ('Holders', 'd', 'Tools Holders', 'y.rpt', 0, False)"_s);
    open(u"frmConfigReports"_s);
    choose(u"dbcRtype"_s, u"Benchline"_s);
    ASSERT_EQ(rowCount(u"sprReport"_s), 2);
    selectRow(u"sprReport"_s, cells(u"sprReport"_s).front().startsWith(u"Cutters") ? 1 : 0);
    expectBox(u"Set Holders As Default for Benchline?"_s, Answer::Ok);
    press(u"cmdDefault"_s);
    EXPECT_EQ(rows(u"SELECT Name, Default FROM Reports WHERE Module LIKE 'Tools*' ORDER BY Name"_s),
              (QStringList{u"Cutters|False"_s, u"Holders|True"_s}));
}

TEST_P(ConfigReports, CommonReportsGoStraightToTheirFiles) {
    copyReport(u"bCommands.rpt"_s, u"bCommands.rpt"_s);
    copyReport(u"Employee_ID_Badges.rpt"_s, u"Employee_ID_Badges.rpt"_s);
    QStringList titles;
    report::setPreviewer([&](const std::shared_ptr<const report::Document>&,
                             const report::WindowPlacing& placing) { titles += placing.title; });
    open(u"frmCreports"_s);
    press(u"cmdPrint(0)"_s);
    press(u"cmdPrint(1)"_s);
    EXPECT_EQ(titles, (QStringList{u"Barcode Commands"_s, u"Employee ID Badges"_s}));
}

MIRSA_BOTH_ENGINES(ConfigReports);
