#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/records/RecordScreen.h"
#include "estimating/AssemblyTree.h"
#include "inventory/InventoryDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"
#include "support/SampleFixture.h"

#include <QDir>
#include <QTabWidget>
#include <QTemporaryDir>

#include <functional>

namespace {

using screen::Answer;
using screen::Forms;

/// What the steps of the screens cost on a server, in waits for it. A step that exceeds its budget
/// is slow for everybody who sits at the far end of a line.
class WaitsTest : public testsupport::SampleTest {
  protected:
    void prepare() override {
        SampleTest::prepare();
        core::shared().ProgramFolder = m_folder.path();
        std::vector<std::vector<jet::Value>> names;
        for (int i = 1; i <= 1500; ++i)
            names.push_back({u"Company %1"_s.arg(i)});
        const auto other = anotherStation();
        other->insertRows(u"Customer"_s, {u"company"_s}, names);
        other->insertRows(u"Vendor"_s, {u"company"_s}, names);
    }
    void within(quint64 budget, const char* step, const std::function<void()>& work) {
        // After a write, nothing that was read before is at hand.
        core::MainDatabase().execute(u"UPDATE SystemSettings SET FOB = 'Dock'"_s);
        const quint64 before = core::MainDatabase().waits();
        work();
        const quint64 took = core::MainDatabase().waits() - before;
        EXPECT_LE(took, budget) << step;
    }

    /// What begins with a text, of a combo's list.
    void typeSome(const QString& combo, const QString& beginning) {
        auto* field = control<controls::DataCombo>(combo);
        for (int i = 0; i < field->count(); ++i) {
            if (field->itemText(i).startsWith(beginning)) {
                type(combo, field->itemText(i));
                return;
            }
        }
        ADD_FAILURE() << "nothing begins with " << beginning.toStdString();
    }

    QTemporaryDir m_folder;
};

TEST_P(WaitsTest, RecordModulesStayWithinTheirBudgets) {
    const struct {
        const char* screen;
        const char* field; ///< that is changed before the save
    } modules[] = {
        {"frmCustomer", "txtCustomer"}, {"frmVendor", "txtVendor"},
        {"frmEmployee", "txtLastName"}, {"frmEstimate", "txtDescription"},
        {"frmJob", "txtDescription"},   {"frmRFQ", "txtTitle"},
        {"frmPO", "txtTitle"},
    };
    for (const auto& module : modules) {
        SCOPED_TRACE(module.screen);
        const QString name = QString::fromLatin1(module.screen);
        within(2, "open", [&] { ASSERT_TRUE(open(name)); });
        auto* records = Forms::find<core::RecordScreen>(name);
        ASSERT_TRUE(records);
        within(1, "previous", [&] { key(Qt::Key_Left, Qt::AltModifier); });
        const qint64 there = records->currentKey();
        within(1, "next", [&] { key(Qt::Key_Right, Qt::AltModifier); });
        ASSERT_NE(records->currentKey(), there);
        within(1, "go to", [&] { EXPECT_TRUE(records->goToRecord(there)); });
        within(1, "return", [&] { Forms::find<screen::Form>(name)->Form_Activate(); });
        within(2, "edit", [&] { press(u"cmdEdit"_s); });
        expectBoxContaining(u"Are you sure you want to cancel"_s, Answer::Yes);
        within(3, "cancel", [&] { press(u"cmdCancel"_s); });
        press(u"cmdEdit"_s);
        type(QString::fromLatin1(module.field), u"Changed"_s);
        within(4, "save", [&] { press(u"cmdSave"_s); });
        EXPECT_EQ(records->currentKey(), there);
        EXPECT_EQ(records->mode(), u"Browse"_s);
        Forms::find<screen::Form>(name)->unload();
    }
}

TEST_P(WaitsTest, TheScheduleOfAJobStaysWithinItsBudgets) {
    jet::Database& shop = core::MainDatabase();
    const qint64 job = shop.lookup(u"SELECT MAX(Job.JobNo) FROM Job INNER JOIN JobOperSchedule ON "
                                   "Job.JobNo = JobOperSchedule.JobNo WHERE Shipped = False"_s)
                           .toLong();
    shop.execute(u"UPDATE JobOper SET Status = ' ' WHERE JobNo = %1"_s.arg(job));
    open(u"frmJob"_s);
    ASSERT_TRUE(Forms::find<core::RecordScreen>(u"frmJob"_s)->goToRecord(job));
    within(2, "open from the job", [&] { press(u"cmdSchedule"_s); });
    use(Forms::find(u"frmSchedule"_s));
    EXPECT_EQ(text(u"dbcJobNo"_s), QString::number(job));
    within(1, "edit", [&] { press(u"cmdEdit"_s); });
    go(u"ctSchedule"_s);
    key(Qt::Key_Home, Qt::ControlModifier);
    whenShown(u"frmScheduleAdd"_s, [&] { press(u"cmdOK"_s); });
    within(2, "add an entry", [&] { press(u"cmdAddEntry"_s); });
    use(Forms::find(u"frmSchedule"_s));
    within(4, "save", [&] { press(u"cmdSave"_s); });
    ASSERT_FALSE(isVisible(u"cmdSave"_s));
    press(u"cmdViewer"_s);
    use(Forms::find(u"frmScheduleView"_s));
    within(1, "by department", [&] { check(u"chkGroup"_s); });
    within(2, "another range", [&] { press(u"cmdRefresh"_s); });
    press(u"cmdDone"_s);
}

TEST_P(WaitsTest, StockAndTimeStayWithinTheirBudgets) {
    const auto lookup = [](const QString& select) {
        return core::MainDatabase().lookup(select).toText();
    };
    /// What a press opens a dialog with, and what is done in it.
    const auto dialog = [this](const QString& button, const QString& name, quint64 budget,
                               const std::function<void()>& work) {
        SCOPED_TRACE(name.toStdString());
        core::MainDatabase().execute(u"UPDATE SystemSettings SET FOB = 'Dock'"_s);
        const quint64 before = core::MainDatabase().waits();
        bool shown = false;
        whenShown(name, [&, before] {
            shown = true;
            EXPECT_LE(core::MainDatabase().waits() - before, budget) << "open";
            work();
        });
        press(button);
        EXPECT_TRUE(shown);
    };
    const auto ok = [this] { within(4, "OK", [this] { press(u"cmdOK"_s); }); };
    const auto cancel = [this] { press(u"cmdCancel"_s); };

    screen::Form* stock = nullptr;
    within(2, "open", [&] { stock = open(u"frmInventory"_s); });
    ASSERT_TRUE(stock);
    const QString item =
        lookup(u"SELECT TOP 1 ItemID FROM ItemIssue INNER JOIN Items ON ItemIssue.ItemID = "
               "Items.ID WHERE Items.Quantity > 2 AND PartNumber <> ''"_s);
    const QString employee = lookup(u"SELECT TOP 1 LastName FROM Employee WHERE EmpStatus = "
                                    "'Active' ORDER BY LastName, FirstName"_s);
    auto* explorer = dynamic_cast<inventory::Explorer*>(stock);
    within(2, "go to an item", [&] { explorer->goToItem(item.toLongLong()); });
    within(2, "change the view", [&] { press(u"Toolbar1"_s); });
    within(2, "change it back", [&] { press(u"Toolbar1"_s); });
    dialog(u"cmdEdit"_s, u"frmItemNewEdit"_s, 2, [&] {
        type(u"fpCost"_s, u"7.25"_s);
        ok();
    });
    use(stock);
    dialog(u"cmdIssue"_s, u"frmItemIssueInv"_s, 2, [&] {
        typeSome(u"dbcEmployee"_s, employee);
        choose(u"cboIssueType"_s, u"Job"_s);
        type(u"dbcInfo"_s, lookup(u"SELECT MAX(JobNo) FROM Job WHERE Shipped = False"_s));
        type(u"txtQuantity"_s, u"1"_s);
        ok();
    });
    use(stock);
    dialog(u"cmdReStock"_s, u"frmItemReStock"_s, 2, [&] {
        screen::Form* first = &form();
        typeSome(u"dbcEmployee"_s, employee);
        dialog(u"cmdOK"_s, u"frmItemReStockSelected"_s, 2, [&] {
            type(u"dbcVendor"_s, u"Company 1"_s);
            type(u"txtQuantity"_s, u"3"_s);
            ok();
        });
        use(first);
    });
    use(stock);
    dialog(u"cmdOrder"_s, u"frmItemOrder"_s, 2, [&] {
        type(u"dbcVendor"_s, u"Company 1"_s);
        type(u"txtQuantity"_s, u"3"_s);
        choose(u"cboType"_s, u"Stock"_s);
        ok();
    });
    use(stock);
    dialog(u"cmdActivity"_s, u"frmItemActivity"_s, 2, [&] {
        selectRow(u"sprIssue"_s, 0);
        press(u"cmdDelete"_s);
        check(u"chkQuantity"_s);
        check(u"chkFixed"_s);
        within(4, "Save", [this] { press(u"cmdSave"_s); });
    });
    stock->unload();

    screen::Form* time = nullptr;
    within(2, "open", [&] { time = open(u"frmTM"_s); });
    ASSERT_TRUE(time);
    type(u"dbcEmpNum"_s, lookup(u"SELECT TOP 1 EmpID FROM Timelog WHERE Status = 'D' AND JobNo > 0 "
                                "ORDER BY ID DESC"_s));
    type(u"dbcDate1"_s, u"1/1/2025"_s);
    check(u"chkTO"_s);
    type(u"dbcDate2"_s, u"3/1/2026"_s);
    within(1, "show", [&] { check(u"chkShow"_s); });
    dialog(u"cmdNew"_s, u"frmNewTime"_s, 2, [&] {
        const QString job = lookup(u"SELECT MAX(JobNo) FROM JobOper"_s);
        within(1, "a job", [&] {
            type(u"dbcJobNo"_s, job);
            leave();
        });
        cancel();
    });
    use(time);
    selectRow(u"sprMain"_s, 0);
    dialog(u"cmdEditParts"_s, u"frmTimeEdit"_s, 2, [&] {
        type(u"txtPartsQty"_s, u"17"_s);
        ok();
    });
    use(time);
    control<QTabWidget>(u"tab1"_s)->setCurrentIndex(1);
    selectRow(u"sprMain2"_s, 0);
    dialog(u"cmdEdit"_s, u"frmSignAddEdit"_s, 2, [&] {
        type(u"fpSignoutTime"_s, u"11:59p"_s);
        ok();
    });
    use(time);
}

TEST_P(WaitsTest, DeletionsPapersAndTheAssemblyTreeStayWithinTheirBudgets) {
    jet::Database& shop = core::MainDatabase();
    ASSERT_TRUE(open(u"frmEstimate"_s));
    expectBoxContaining(u"delete"_s, Answer::Yes);
    within(3, "delete", [&] { press(u"cmdDelete"_s); });
    Forms::find(u"frmEstimate"_s)->unload();

    const qint64 job = shop.lookup(u"SELECT MAX(JobNo) FROM Job WHERE Shipped = False"_s).toLong();
    const jet::Recordset row = shop.openRecordset(
        u"SELECT CustID, PONo FROM Job WHERE JobNo = %1"_s.arg(job), jet::RecordsetType::Snapshot);
    bool shown = false;
    const quint64 before = shop.waits();
    whenShown(u"frmAssemblyInfo"_s, [&] {
        shown = true;
        EXPECT_LE(shop.waits() - before, 1U);
        press(u"cmdClose"_s);
    });
    Forms::dialog<estimating::AssemblyTree>(u"frmAssemblyInfo"_s)
        ->showTree(row[u"CustID"].toLong(), row.text(u"PONo"), job, u"Job"_s);
    EXPECT_TRUE(shown);

    int pages = 0;
    core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
    report::setPreviewer([&](const std::shared_ptr<const report::Document>& document,
                             const report::WindowPlacing&) { pages += document->pageCount(); });
    within(3, "traveler", [&] { core::launchTraveler(job, true, nullptr); });
    EXPECT_GT(pages, 0);
}

TEST_P(WaitsTest, ScreensOpenWithinTwoWaits) {
    QStringList names = Forms::known();
    names.sort();
    for (const QString& name : std::as_const(names)) {
        SCOPED_TRACE(name.toStdString());
        if (name.startsWith(u"frmImport") || name == u"frmAP" || name == u"frmInvoice")
            continue; // they wait for the accounting program
        const auto form = Forms::make(name);
        // The stock's tree is opened at a folder.
        within(name == u"frmInventory" ? 3 : 2, "open", [&] {
            EXPECT_TRUE(form->load());
            showInShell(*form);
        });
        form->hide();
    }
}

INSTANTIATE_TEST_SUITE_P(ServerAlone, WaitsTest,
                         ::testing::Values(testsupport::EngineKind::Server));

} // namespace
