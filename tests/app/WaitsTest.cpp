#include "app/Screens.h"
#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "sample/Sample.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"
#include "support/ScreenFixture.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>

namespace {

using screen::Answer;
using screen::Forms;

/// What the steps of the screens cost on a server, in waits for it. A step that exceeds its budget
/// is slow for everybody who sits at the far end of a line.
class WaitsTest : public testsupport::ScreenFixture {
  protected:
    void SetUp() override {
        MIRSA_NEEDS_ENGINE(testsupport::EngineKind::Server);
        m_test = std::make_unique<testsupport::TestDatabase>(
            testsupport::EngineKind::Server, testsupport::TestDatabase::Contents::Shop);
        app::registerAllScreens();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        core::SharedState& state = core::shared();
        state.MainDatabase = m_test->station();
        state.CurrentUserName = u"Admin"_s;
        state.CurrentUserNo = 1;
        state.CurrencySymbol = u"$"_s;
        state.ProgramFolder = m_folder.path();
        sample::fill(core::MainDatabase(), {.years = 1, .jobs = 60});
        useDatabase(core::MainDatabase());
        std::vector<std::vector<jet::Value>> names;
        for (int i = 1; i <= 1500; ++i)
            names.push_back({u"Company %1"_s.arg(i)});
        m_test->database().insertRows(u"Customer"_s, {u"company"_s}, names);
        m_test->database().insertRows(u"Vendor"_s, {u"company"_s}, names);
    }
    void TearDown() override {
        ScreenFixture::TearDown();
        core::shared().MainDatabase.reset();
        values::setNow(std::nullopt);
    }
    void within(quint64 budget, const char* step, const std::function<void()>& work) {
        // After a write, nothing that was read before is at hand.
        core::MainDatabase().execute(u"UPDATE SystemSettings SET FOB = 'Dock'"_s);
        const quint64 before = core::MainDatabase().waits();
        work();
        const quint64 took = core::MainDatabase().waits() - before;
        EXPECT_LE(took, budget) << step;
    }

    std::unique_ptr<testsupport::TestDatabase> m_test;
    QTemporaryDir m_folder;
};

TEST_F(WaitsTest, RecordModulesStayWithinTheirBudgets) {
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

TEST_F(WaitsTest, TheScheduleOfAJobStaysWithinItsBudgets) {
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

TEST_F(WaitsTest, ScreensOpenWithinTwoWaits) {
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

} // namespace
