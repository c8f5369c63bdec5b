#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "masters/Screens.h"
#include "platform/values/Literals.h"
#include "support/ShopFixture.h"

#include <functional>
#include <thread>

namespace {

using screen::Answer;

/// What the steps of a record module cost on a server, in waits for it. A step that exceeds its
/// budget is slow for everybody who sits at the far end of a line.
class MasterWaits : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        masters::registerScreens();
        std::vector<std::vector<jet::Value>> names;
        for (int i = 1; i <= 1500; ++i)
            names.push_back({u"Company %1"_s.arg(i)});
        database().insertRows(u"Customer"_s, {u"company"_s}, names);
        database().insertRows(u"Vendor"_s, {u"company"_s}, names);
        for (std::vector<jet::Value>& name : names)
            name.push_back(u"Ann"_s);
        database().insertRows(u"Employee"_s, {u"LastName"_s, u"FirstName"_s}, names);
    }
    void within(quint64 budget, const char* step, const std::function<void()>& work) {
        // What somebody has just written is not at hand.
        other()->execute(u"UPDATE SystemSettings SET FOB = 'Dock'"_s);
        std::this_thread::sleep_for(std::chrono::milliseconds(database().isServer() ? 1050 : 0));
        const quint64 before = database().waits();
        work();
        EXPECT_LE(database().waits() - before, budget) << step;
    }
    jet::Database* other() {
        if (!m_other)
            m_other = anotherStation();
        return m_other.get();
    }
    void TearDown() override {
        m_other.reset();
        ShopTest::TearDown();
    }

  private:
    std::unique_ptr<jet::Database> m_other;
};

TEST_P(MasterWaits, StayWithinTheirBudgets) {
    const struct {
        const char* screen;
        const char* word;
        const char* field;
        bool saves; ///< with no more than a name
    } modules[] = {{"frmCustomer", "Customer", "txtCustomer", true},
                   {"frmVendor", "Vendor", "txtVendor", true},
                   {"frmEmployee", "Employee", "txtLastName", false}};
    for (const auto& module : modules) {
        SCOPED_TRACE(module.screen);
        const QString name = QString::fromLatin1(module.screen);
        const QString field = QString::fromLatin1(module.field);
        within(2, "open", [&] { ASSERT_TRUE(open(name)); });
        within(1, "previous", [&] { key(Qt::Key_Left, Qt::AltModifier); });
        within(1, "next", [&] { key(Qt::Key_Right, Qt::AltModifier); });
        auto* records = screen::Forms::find<core::RecordScreen>(name);
        ASSERT_TRUE(records);
        within(1, "go to", [&] { EXPECT_TRUE(records->goToRecord(700)); });
        within(1, "return", [&] { screen::Forms::find<screen::Form>(name)->Form_Activate(); });
        within(2, "edit", [&] { press(u"cmdEdit"_s); });
        if (module.saves) {
            type(field, u" changed"_s);
            within(3, "save", [&] { press(u"cmdSave"_s); });
            press(u"cmdEdit"_s);
        }
        expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
        within(3, "cancel", [&] { press(u"cmdCancel"_s); });
        EXPECT_EQ(records->currentKey(), 700);
        screen::Forms::find<screen::Form>(name)->unload();
    }
}

MIRSA_BOTH_ENGINES(MasterWaits);

} // namespace
