#include "core/Beside.h"
#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "core/history/HistoryTargets.h"
#include "platform/values/Literals.h"
#include "support/ShopFixture.h"

#include <QAction>
#include <QFileInfo>

namespace {

using screen::Answer;

/// A module that only notes where it was sent.
class Module : public screen::Form, public core::RecordScreen, public core::PartScreen {
  public:
    explicit Module(const QString& name) : Form(name, name) {}
    QString mode() const override { return m_mode; }
    qint64 currentKey() const override { return m_key; }
    bool goToRecord(qint64 key) override {
        m_key = key;
        return key < 100;
    }
    bool goToPart(const QString& key) override {
        m_part = key;
        return true;
    }
    QString m_mode = u"Browse"_s;
    QString m_part;
    qint64 m_key = 0;
};

class History : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::registerScreens();
        for (const char16_t* name : {u"frmJob", u"frmEstimate", u"frmRFQ", u"frmPO"}) {
            const QString form = QString::fromUtf16(name);
            screen::Forms::add(form, [form] { return std::make_unique<Module>(form); });
        }
        for (const char16_t* statement :
             {u"INSERT INTO Customer (company) VALUES ('Acme')",
              u"INSERT INTO Customer (company) VALUES ('Baker''s Molds')",
              u"INSERT INTO Job (CustID, PartNo, Quantity, JobShopCost, JobDateIn) VALUES "
              u"(1, 'AX-10', 5, 12.5, #6/13/2007#)",
              u"INSERT INTO Job (CustID, PartNo) VALUES (2, 'AX-100')",
              u"INSERT INTO Job (CustID, PartNo) VALUES (1, 'BX-1')",
              u"INSERT INTO Estimate (CustID, PartNo, QtyBreakA, QtyPriceA) VALUES "
              u"(1, 'ax-10', 5, 20)",
              u"INSERT INTO RFQitem (ItemKey, VOrderKey, OrderNumber, ItemNumber, PartNumber, Job, "
              u"Estimate) VALUES ('7-3-1', '7-3', 7, 1, 'STEEL', 1, 1)",
              u"INSERT INTO POItem (ItemKey, PONumber, ItemNumber, PartNumber, Job) VALUES "
              u"('9-1', 9, 1, 'STEEL', 3)"})
            database().execute(QString::fromUtf16(statement));
        ASSERT_TRUE(open(u"frmHistory"_s));
    }
    QStringList shown(const char* grid) {
        QStringList all;
        for (const QString& row : cells(QString::fromLatin1(grid)))
            all += row.section(u'|', 1, 1);
        return all;
    }
    Module* sentTo(const char16_t* name) {
        return screen::Forms::find<Module>(QString::fromUtf16(name));
    }
};
MIRSA_BOTH_ENGINES(History);

} // namespace

TEST_P(History, ListsWhatTouchedACustomerAPartOrBoth) {
    expectBox(u"You must select some criteria before displaying records!"_s, Answer::Ok,
              u"System Message"_s);
    press(u"cmdShow"_s);
    type(u"dbcPart"_s, u"ax-10"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(shown("sprJob"), (QStringList{u"1"_s, u"2"_s}));
    EXPECT_EQ(shown("sprEstimate"), QStringList{u"1"_s});
    EXPECT_EQ(shown("sprRFQ"), (QStringList{u"7-3"_s, u"7-3"_s})) << "for its job and its estimate";
    EXPECT_EQ(shown("sprPO"), QStringList());
    EXPECT_EQ(
        rows(u"SELECT Type, Job, Est, RFQ FROM History ORDER BY ID"_s),
        (QStringList{u"job|1||"_s, u"job|2||"_s, u"est||1|"_s, u"rfq|||7-3"_s, u"rfq|||7-3"_s}));

    choose(u"dbcCustomer"_s, u"Acme"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(shown("sprJob"), QStringList{u"1"_s});
    EXPECT_TRUE(cells(u"sprJob"_s).first().contains(u"6/13/2007"_s));
    press(u"cmdClear"_s);
    choose(u"dbcCustomer"_s, u"Acme"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(shown("sprJob"), (QStringList{u"1"_s, u"3"_s}));
    EXPECT_EQ(shown("sprPO"), QStringList{u"9"_s});
    EXPECT_EQ(rows(u"SELECT PO FROM History WHERE Type = 'po'"_s), QStringList{u"9-1"_s});

    database().execute(u"DELETE FROM Job WHERE JobNo = 3"_s);
    core::RefreshHistoryIfOpen(u"Job"_s);
    EXPECT_EQ(shown("sprJob"), QStringList{u"1"_s}) << "after a delete in another module";
    EXPECT_EQ(shown("sprPO"), QStringList());

    type(u"dbcCustomer"_s, u"Baker's Mo"_s);
    type(u"dbcPart"_s, u"nothing's like it"_s);
    choose(u"dbcCustomer"_s, u"Baker's Molds"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM History"_s), QStringList());
    expectBox(u"There are no Records Displayed to Print!"_s, Answer::Ok, u"Error!"_s);
    press(u"cmdHistoryPrint"_s);
}

TEST_P(History, ADoubleClickGoesToTheRecordOfAModuleInBrowse) {
    choose(u"dbcCustomer"_s, u"Acme"_s);
    press(u"cmdShow"_s);
    screen::Form* const history = &form();
    doubleClickRow(u"sprRFQ"_s, 0);
    ASSERT_TRUE(sentTo(u"frmRFQ"));
    EXPECT_EQ(sentTo(u"frmRFQ")->m_key, 7);
    EXPECT_EQ(sentTo(u"frmRFQ")->m_part, u"7-3"_s) << "the vendor's request of the group";
    use(history);
    doubleClickRow(u"sprJob"_s, 1);
    EXPECT_EQ(sentTo(u"frmJob")->m_key, 3);
    sentTo(u"frmJob")->m_mode = u"Edit"_s;
    use(history);
    expectBox(u"The Job Module is currently in 'Edit' or 'Add' mode.  You cannot goto a record "
              "unless the Job module is in 'Browse' mode"_s,
              Answer::Ok, u"Estimate Module Locked!"_s);
    doubleClickRow(u"sprJob"_s, 0);
    EXPECT_EQ(sentTo(u"frmJob")->m_key, 3);
}

TEST_P(History, ReportsOfTheActiveListOnItsTickedRows) {
    choose(u"dbcCustomer"_s, u"Acme"_s);
    press(u"cmdShow"_s);
    clickCell(u"sprEstimate"_s, 0, 3);
    choose(u"dbcReport"_s, u"Estimate Quote"_s);
    expectBox(u"No Records Selected!"_s, Answer::Ok, u"Error"_s);
    press(u"cmdPrint"_s);
    auto* jobs = control<controls::Grid>(u"sprJob"_s);
    jobs->setFocus();
    jobs->setCurrentIndex(jobs->model()->index(0, 0));
    key(Qt::Key_Space);
    EXPECT_EQ(text(u"dbcReport"_s), QString()) << "the reports of jobs now";
    expectBox(u"Choose a report for the selected records."_s);
    press(u"cmdPrint"_s);
}

TEST_P(History, PricesAreHiddenFromThoseWhoMayNotSeeThem) {
    form().unload();
    core::shared().CurrentUserName = u"anna"_s;
    ASSERT_TRUE(open(u"frmHistory"_s));
    choose(u"dbcCustomer"_s, u"Acme"_s);
    press(u"cmdShow"_s);
    EXPECT_EQ(control<controls::Grid>(u"sprJob"_s)->model()->index(0, 6).data().toString(),
              QString());
    EXPECT_EQ(cell(u"sprJob"_s, 0, 1), u"1"_s);
}

// A database of its own: the file has to be free.
TEST_P(History, MaintenanceKeepsEveryRowAndTheFileAsItWas) {
    form().unload();
    core::shared().MainDatabase.reset();
    testsupport::TestDatabase shop(GetParam(), testsupport::TestDatabase::Contents::Shop);
    shop.close();
    core::shared().MainDatabase = shop.station();
    core::shared().DatabasePath = shop.location();
    const bool server = database().isServer();
    if (!server)
        core::shared().ProgramFolder = QFileInfo(shop.location()).path();
    database().execute(u"INSERT INTO Job (PartNo) VALUES ('AX-10')"_s);
    ASSERT_TRUE(open(u"frmDBMaint"_s));
    EXPECT_EQ(form().windowTitle(), u"Compact Database"_s);
    const QString question = u"START?\r\n\r\nMake sure that everyone is off the system."_s;
    expectBox(question, Answer::No, u"Compact Database"_s, screen::Buttons::YesNo,
              screen::Icon::Question);
    press(u"cmdRun"_s);
    if (!server) { // another workstation is on the system
        const auto station = shop.station();
        station->lookup(u"SELECT COUNT(*) FROM Job"_s);
        expectBox(question, Answer::Yes);
        expectBoxContaining(u"Unable to Compact the Database at this time. Please report to the "
                            "supervisor the following errors:"_s);
        press(u"cmdRun"_s);
        EXPECT_EQ(database().lookup(u"SELECT COUNT(*) FROM Job"_s).toLong(), 1);
    }
    // So are the program's own readers, which let go and come back.
    std::unique_ptr<jet::Database> reader;
    const auto begin = [&] {
        reader = shop.station();
        reader->lookup(u"SELECT COUNT(*) FROM Job"_s);
    };
    core::addBeside({[&reader] { reader.reset(); }, begin});
    begin();
    form().findChild<QAction*>(u"mnuRepair"_s)->trigger();
    EXPECT_EQ(form().windowTitle(), u"Repair Database"_s);
    for (int run = 0; run < 2; ++run) { // the second replaces the kept file
        expectBox(question, Answer::Yes, u"Repair Database"_s);
        expectBox(u"Process Completed!"_s, Answer::Ok, {}, {}, screen::Icon::Information);
        press(u"cmdRun"_s);
        EXPECT_EQ(database().lookup(u"SELECT COUNT(*) FROM Job"_s).toLong(), 1);
        if (server)
            continue;
        EXPECT_EQ(reader->lookup(u"SELECT COUNT(*) FROM Job"_s).toLong(), 1);
        EXPECT_TRUE(QFile::exists(core::programFile(u"MIRSAOLD.MDB"_s)));
        EXPECT_FALSE(QFile::exists(core::programFile(u"MTEMP.MDB"_s)));
    }
    form().unload();
    core::shared().MainDatabase.reset();
}
