#include "core/records/RecordScreen.h"
#include "masters/Screens.h"
#include "platform/values/Literals.h"
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
    void prepare() override { masters::registerScreens(); }
    void addTwo() {
        sql("INSERT INTO Vendor (company) VALUES ('Apex Supply')");
        sql("INSERT INTO Vendor (company) VALUES ('Borel Steel')");
    }
    void sql(const char* statement) { database().execute(QString::fromLatin1(statement)); }
    bool openModule() { return open(u"frmVendor"_s) != nullptr; }
    QString company() const { return text(u"txtVendor"_s); }
    QString mode() const { return text(u"lblVendorMode"_s); }
};

TEST_P(Vendor, AddTakesThePurchasingDefaultsAndWritesEveryColumn) {
    sql("UPDATE SystemSettings SET vShipping = 'Rail', vTerms = 'Net 45', vFOB = 'Mill', "
        "Shipping = 'Truck', Terms = 'Net 10', FOB = 'Dock'");
    addTwo();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(company(), u"Borel Steel"_s);
    press(u"cmdNew"_s);
    EXPECT_EQ(text(u"txtVendID"_s), u"???"_s);
    EXPECT_EQ(text(u"txtShip"_s), u"Rail"_s);
    EXPECT_EQ(text(u"txtTerms"_s), u"Net 45"_s);
    EXPECT_EQ(text(u"txtFOB"_s), u"Mill"_s);
    expectBox(u"Vendor Name must be Present!"_s, Answer::Ok, u"Need Vendor Name!"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(focusName(), u"txtVendor"_s);

    typeOn(u"D'Arcy Coating"_s);
    check(u"chkCotr"_s);
    for (const auto& [field, value] :
         {std::pair{"txtAdd1", "1 Mill Rd"}, std::pair{"txtAdd2", "Bay 2"},
          std::pair{"txtAdd3", "Rear"}, std::pair{"txtContact", "Kim"},
          std::pair{"etxtPhone", "555"}, std::pair{"etxtFax", "556"},
          std::pair{"txtEmail", "kim@x"}, std::pair{"txtAltContact", "Lee"}})
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    press(u"cmdSendtoBill"_s);
    press(u"Command3"_s);
    EXPECT_EQ(text(u"txtBillAddress3"_s), u"Rear"_s);
    expectBox(u"This will overwrite the bill address information in the Bill To "
              "tab. Continue?"_s,
              Answer::Cancel, u"Overwrite Information?"_s, Buttons::OkCancel);
    press(u"cmdSendtoBill"_s);
    type(u"txtContact"_s, u"Max"_s);
    expectBox(u"This will overwrite the contact information in the Bill To tab. "
              "Continue?"_s,
              Answer::Ok, u"Overwrite Information?"_s, Buttons::OkCancel);
    press(u"Command3"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(rows(u"SELECT company, BillAddress1, BillAddress2, BillAddress3, BillContact, "
                   "BillPhone, BillFax, BillEmail, AltContact, Terms, QBSent FROM Vendor "
                   "WHERE cotr <> 0"_s),
              QStringList(u"D'Arcy Coating|1 Mill Rd|Bay 2|Rear|Max|555|556|kim@x|"
                          "Lee|Net 45|0"_s));
}

TEST_P(Vendor, ANewNameReachesOrdersAndRequestsAndTheirScreens) {
    addTwo();
    for (const char* table : {"POVendor", "RFQVendor"}) {
        for (int vendor = 1; vendor <= 2; ++vendor) {
            const QString key =
                QLatin1String(table) == QLatin1String("RFQVendor") ? u"VOrderKey, "_s : QString();
            database().execute(
                u"INSERT INTO %1 (%2OrderNumber, VendorID, Company) VALUES "
                "(%3%4, %4, 'Old')"_s.arg(QString::fromLatin1(table), key,
                                          key.isEmpty() ? QString() : u"'1-%1', "_s.arg(vendor),
                                          QString::number(vendor)));
        }
    }
    for (const char* name : {"frmPO", "frmRFQ"}) {
        const QString form = QString::fromLatin1(name);
        screen::Forms::add(form, [form] { return std::make_unique<Buyer>(form); });
        ASSERT_TRUE(open(form));
    }
    ASSERT_TRUE(openModule());
    press(u"cmdEdit"_s);
    type(u"txtVendor"_s, u"Borel's Steel"_s);
    press(u"cmdSave"_s);
    const QStringList renamed{u"1|Old"_s, u"2|Borel's Steel"_s};
    EXPECT_EQ(rows(u"SELECT VendorID, Company FROM POVendor ORDER BY VendorID"_s), renamed);
    EXPECT_EQ(rows(u"SELECT VendorID, Company FROM RFQVendor ORDER BY VendorID"_s), renamed);
    for (const char* name : {"frmPO", "frmRFQ"})
        EXPECT_EQ(screen::Forms::find<Buyer>(QString::fromLatin1(name))->refreshed,
                  QStringList(u"Vendor"_s));
}

TEST_P(Vendor, OneThatSomethingNamesStaysAndTheLastOneLeavesTheQuestion) {
    addTwo();
    ASSERT_TRUE(openModule());
    const QString related =
        u"This Vendor has related records in one of the following: RFQ; Job; Timelog. It cannot be "
        "deleted!"_s;
    for (const auto& [insert, remove] :
         {std::pair{"INSERT INTO Timelog (CotrNo) VALUES (2)", "DELETE FROM Timelog"},
          std::pair{"INSERT INTO POVendor (VendorID) VALUES (2)", "DELETE FROM POVendor"},
          std::pair{"INSERT INTO RFQVendor (VOrderKey, VendorID) VALUES ('1-2', 2)",
                    "DELETE FROM RFQVendor"}}) {
        sql(insert);
        expectBox(related);
        press(u"cmdDelete"_s);
        expectNothingLeft();
        sql(remove);
    }
    const QString question = u"Once Deleted, Vendor data will be unrecoverable.  Continue?"_s;
    expectBox(question, Answer::No, u"Delete"_s, Buttons::YesNo, Icon::Question);
    press(u"cmdDelete"_s);
    EXPECT_EQ(company(), u"Borel Steel"_s);
    expectBox(question, Answer::Yes);
    press(u"cmdDelete"_s);
    EXPECT_EQ(company(), u"Apex Supply"_s);
    expectBox(question, Answer::Yes);
    expectBox(u"There are no records in the database. Before you can use the Vendor "
              "module you must add at least one Vendor. Would you like to do so "
              "now?"_s,
              Answer::Yes, u"No Records!"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(mode(), u"ADD"_s);
    EXPECT_TRUE(rows(u"SELECT * FROM Vendor"_s).isEmpty());
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

TEST_P(Vendor, IsFoundByNameNumberAndList) {
    addTwo();
    ASSERT_TRUE(openModule());
    whenShown(u"frmVendFind"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        type(u"txtData"_s, u"ap"_s);
        whenShown(u"frmVendFound"_s, [this] {
            EXPECT_EQ(cells(u"sprVendFound"_s), QStringList(u"1|Apex Supply"_s));
            key(Qt::Key_Return);
        });
        key(Qt::Key_Return);
    });
    key(Qt::Key_G, Qt::AltModifier);
    EXPECT_EQ(company(), u"Apex Supply"_s);
    expectInput(u"Please enter Vendor Number to go to:"_s, u"9"_s);
    expectBox(u"Vendor Number 9 not found!"_s);
    key(Qt::Key_G, Qt::ControlModifier);
    choose(u"dbcVendor"_s, u"Borel Steel"_s);
    EXPECT_EQ(text(u"txtVendID"_s), u"2"_s);
}

TEST_P(Vendor, NothingIsClippedUnnamedOrClashing) {
    addTwo();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
}

MIRSA_BOTH_ENGINES(Vendor);

} // namespace
