#include "core/RecordScreen.h"
#include "masters/Screens.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

namespace {

using screen::Answer;
using screen::Buttons;
using screen::Icon;

/// Stands for a neighbour that shows vendors.
class Buyer : public screen::Form, public core::LookupUser {
  public:
    explicit Buyer(const QString& name) : Form(name, name) {}
    void refreshLookup(const QString& table) override { refreshed << table; }
    QStringList refreshed;
};

class Vendor : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        masters::registerScreens();
    }
    void addTwo() {
        sql("INSERT INTO Vendor (company) VALUES ('Apex Supply')");
        sql("INSERT INTO Vendor (company) VALUES ('Borel Steel')");
    }
    void sql(const char* statement) { database().execute(QString::fromLatin1(statement)); }
    bool openModule() { return open(QStringLiteral("frmVendor")) != nullptr; }
    QString company() const { return text(QStringLiteral("txtVendor")); }
    QString mode() const { return text(QStringLiteral("lblVendorMode")); }
};

TEST_P(Vendor, AddTakesThePurchasingDefaultsAndWritesEveryColumn) {
    sql("UPDATE SystemSettings SET vShipping = 'Rail', vTerms = 'Net 45', vFOB = 'Mill', "
        "Shipping = 'Truck', Terms = 'Net 10', FOB = 'Dock'");
    addTwo();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(company(), QStringLiteral("Borel Steel"));
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(text(QStringLiteral("txtVendID")), QStringLiteral("???"));
    EXPECT_EQ(text(QStringLiteral("txtShip")), QStringLiteral("Rail"));
    EXPECT_EQ(text(QStringLiteral("txtTerms")), QStringLiteral("Net 45"));
    EXPECT_EQ(text(QStringLiteral("txtFOB")), QStringLiteral("Mill"));
    expectBox(QStringLiteral("Vendor Name must be Present!"), Answer::Ok,
              QStringLiteral("Need Vendor Name!"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(focusName(), QStringLiteral("txtVendor"));

    typeOn(QStringLiteral("D'Arcy Coating"));
    check(QStringLiteral("chkCotr"));
    for (const auto& [field, value] :
         {std::pair{"txtAdd1", "1 Mill Rd"}, std::pair{"txtAdd2", "Bay 2"},
          std::pair{"txtAdd3", "Rear"}, std::pair{"txtContact", "Kim"},
          std::pair{"etxtPhone", "555"}, std::pair{"etxtFax", "556"},
          std::pair{"txtEmail", "kim@x"}, std::pair{"txtAltContact", "Lee"}})
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    press(QStringLiteral("cmdSendtoBill"));
    press(QStringLiteral("Command3"));
    EXPECT_EQ(text(QStringLiteral("txtBillAddress3")), QStringLiteral("Rear"));
    expectBox(QStringLiteral("This will overwrite the bill address information in the Bill To "
                             "tab. Continue?"),
              Answer::Cancel, QStringLiteral("Overwrite Information?"), Buttons::OkCancel);
    press(QStringLiteral("cmdSendtoBill"));
    type(QStringLiteral("txtContact"), QStringLiteral("Max"));
    expectBox(QStringLiteral("This will overwrite the contact information in the Bill To tab. "
                             "Continue?"),
              Answer::Ok, QStringLiteral("Overwrite Information?"), Buttons::OkCancel);
    press(QStringLiteral("Command3"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT company, BillAddress1, BillAddress2, BillAddress3, BillContact, "
                  "BillPhone, BillFax, BillEmail, AltContact, Terms, QBSent FROM Vendor "
                  "WHERE cotr <> 0")),
              QStringList(QStringLiteral("D'Arcy Coating|1 Mill Rd|Bay 2|Rear|Max|555|556|kim@x|"
                                         "Lee|Net 45|0")));
}

TEST_P(Vendor, ANewNameReachesOrdersAndRequestsAndTheirScreens) {
    addTwo();
    for (const char* table : {"POVendor", "RFQVendor"}) {
        for (int vendor = 1; vendor <= 2; ++vendor) {
            const QString key = QLatin1String(table) == QLatin1String("RFQVendor")
                                    ? QStringLiteral("VOrderKey, ")
                                    : QString();
            database().execute(
                QStringLiteral("INSERT INTO %1 (%2OrderNumber, VendorID, Company) VALUES "
                               "(%3%4, %4, 'Old')")
                    .arg(QString::fromLatin1(table), key,
                         key.isEmpty() ? QString() : QStringLiteral("'1-%1', ").arg(vendor),
                         QString::number(vendor)));
        }
    }
    for (const char* name : {"frmPO", "frmRFQ"}) {
        const QString form = QString::fromLatin1(name);
        screen::Forms::add(form, [form] { return std::make_unique<Buyer>(form); });
        ASSERT_TRUE(open(form));
    }
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtVendor"), QStringLiteral("Borel's Steel"));
    press(QStringLiteral("cmdSave"));
    const QStringList renamed{QStringLiteral("1|Old"), QStringLiteral("2|Borel's Steel")};
    EXPECT_EQ(rows(QStringLiteral("SELECT VendorID, Company FROM POVendor ORDER BY VendorID")),
              renamed);
    EXPECT_EQ(rows(QStringLiteral("SELECT VendorID, Company FROM RFQVendor ORDER BY VendorID")),
              renamed);
    for (const char* name : {"frmPO", "frmRFQ"})
        EXPECT_EQ(screen::Forms::find<Buyer>(QString::fromLatin1(name))->refreshed,
                  QStringList(QStringLiteral("Vendor")));
}

TEST_P(Vendor, OneThatSomethingNamesStaysAndTheLastOneLeavesTheQuestion) {
    addTwo();
    ASSERT_TRUE(openModule());
    const QString related = QStringLiteral(
        "This Vendor has related records in one of the following: RFQ; Job; Timelog. It cannot be "
        "deleted!");
    for (const auto& [insert, remove] :
         {std::pair{"INSERT INTO Timelog (CotrNo) VALUES (2)", "DELETE FROM Timelog"},
          std::pair{"INSERT INTO POVendor (VendorID) VALUES (2)", "DELETE FROM POVendor"},
          std::pair{"INSERT INTO RFQVendor (VOrderKey, VendorID) VALUES ('1-2', 2)",
                    "DELETE FROM RFQVendor"}}) {
        sql(insert);
        expectBox(related);
        press(QStringLiteral("cmdDelete"));
        expectNothingLeft();
        sql(remove);
    }
    const QString question =
        QStringLiteral("Once Deleted, Vendor data will be unrecoverable.  Continue?");
    expectBox(question, Answer::No, QStringLiteral("Delete"), Buttons::YesNo, Icon::Question);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(company(), QStringLiteral("Borel Steel"));
    expectBox(question, Answer::Yes);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(company(), QStringLiteral("Apex Supply"));
    expectBox(question, Answer::Yes);
    expectBox(QStringLiteral("There are no records in the database. Before you can use the Vendor "
                             "module you must add at least one Vendor. Would you like to do so "
                             "now?"),
              Answer::Yes, QStringLiteral("No Records!"));
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(mode(), QStringLiteral("ADD"));
    EXPECT_TRUE(rows(QStringLiteral("SELECT * FROM Vendor")).isEmpty());
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
}

TEST_P(Vendor, IsFoundByNameNumberAndList) {
    addTwo();
    ASSERT_TRUE(openModule());
    whenShown(QStringLiteral("frmVendFind"), [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        type(QStringLiteral("txtData"), QStringLiteral("ap"));
        whenShown(QStringLiteral("frmVendFound"), [this] {
            EXPECT_EQ(cells(QStringLiteral("sprVendFound")),
                      QStringList(QStringLiteral("1|Apex Supply")));
            key(Qt::Key_Return);
        });
        key(Qt::Key_Return);
    });
    key(Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(company(), QStringLiteral("Apex Supply"));
    expectInput(QStringLiteral("Please enter Vendor Number to go to:"), QStringLiteral("9"));
    expectBox(QStringLiteral("Vendor Number 9 not found!"));
    key(Qt::Key_G, Qt::ControlModifier);
    choose(QStringLiteral("dbcVendor"), QStringLiteral("Borel Steel"));
    EXPECT_EQ(text(QStringLiteral("txtVendID")), QStringLiteral("2"));
}

TEST_P(Vendor, NothingIsClippedUnnamedOrClashing) {
    addTwo();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
}

MIRSA_BOTH_ENGINES(Vendor);

} // namespace
