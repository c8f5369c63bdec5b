#include "core/JobModule.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "support/ShopFixture.h"

#include <QAction>

namespace {

using screen::Answer;

using coretest::JobModule;

class JournalScreen : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::registerScreens();
        screen::Forms::add(u"frmJob"_s, [] { return std::make_unique<JobModule>(); });
        jet::Native(database()).setWriter(u"Anna"_s);
        database().execute(u"INSERT INTO Job (PartNo, QtyQuotedPrice) VALUES ('AX', 12.5)"_s);
        database().execute(u"INSERT INTO Job (PartNo) VALUES ('BX')"_s);
        jet::Native(database()).setWriter(u"Bob"_s);
        database().execute(u"UPDATE Job SET QtyQuotedPrice = 13 WHERE JobNo = 1"_s);
        database().execute(u"INSERT INTO Customer (company) VALUES ('Acme')"_s);
    }
    /// Without the time.
    QStringList shown() const {
        QStringList all;
        for (const QString& row : cells(u"sprJournal"_s))
            all += row.section(u'|', 1, 4);
        return all;
    }
    void signIn(const QString& rights) {
        core::shared().CurrentUserName = u"carl"_s;
        core::shared().CurrentUserNo = 7;
        database().execute(
            u"INSERT INTO SecurityUsers (id, objectID) SELECT 7 AS id, objectid FROM "
            "SecurityObjects WHERE securitycode IN ('%1')"_s.arg(rights));
    }
};
MIRSA_BOTH_ENGINES(JournalScreen);

} // namespace

TEST_P(JournalScreen, SearchesByPersonTableAndRecord) {
    ASSERT_TRUE(open(u"frmJournal"_s));
    EXPECT_EQ(shown(), (QStringList{u"Bob|Customers|1|Added"_s, u"Bob|Jobs|1|Changed"_s,
                                    u"Anna|Jobs|2|Added"_s, u"Anna|Jobs|1|Added"_s}));
    type(u"txtWho"_s, u"anna"_s);
    type(u"txtRecord"_s, u"2"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(shown(), QStringList{u"Anna|Jobs|2|Added"_s});
    type(u"txtWho"_s, u"nobody"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(text(u"lblShown"_s), u"No change was found."_s);
    expectBox(u"There are no Records Displayed to Print!"_s, Answer::Ok, u"Error!"_s);
    press(u"cmdPrint"_s);
}

TEST_P(JournalScreen, TellsNobodyWhatHisModulesWouldNot) {
    signIn(u"mnuUtilitiesJournal', 'mnuFileJob"_s);
    ASSERT_TRUE(open(u"frmJournal"_s));
    EXPECT_EQ(shown(), (QStringList{u"Bob|Jobs|1|Changed"_s, u"Anna|Jobs|2|Added"_s,
                                    u"Anna|Jobs|1|Added"_s}));
    EXPECT_FALSE(cells(u"sprJournal"_s).join(u' ').contains(u"12.5"));
}

TEST_P(JournalScreen, ShowsTheHistoryOfTheRecordInFront) {
    core::MDIMain shell;
    shell.show();
    QAction* history = shell.menuAction(u"mnuUtilitiesRecordHistory"_s);
    expectBoxContaining(u"Open a record first"_s);
    history->trigger();
    auto* job = dynamic_cast<JobModule*>(screen::Forms::show(u"frmJob"_s));
    ASSERT_TRUE(job);
    EXPECT_TRUE(job->actions().contains(history)) << "its right button offers it";
    history->trigger();
    use(screen::Forms::find(u"frmRecordHistory"_s));
    EXPECT_EQ(shown(), (QStringList{u"Bob|Jobs|1|Changed"_s, u"Anna|Jobs|1|Added"_s}));
    EXPECT_EQ(form().windowTitle(), u"History of Jobs 1"_s);
}
