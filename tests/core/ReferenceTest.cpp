#include "core/Screens.h"
#include "core/records/RecordScreen.h"
#include "core/reference/ReferenceForms.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

namespace {

using screen::Answer;

/// A record screen that writes down which lists it read again.
class Neighbour : public screen::Form, public core::LookupUser {
  public:
    explicit Neighbour(const QString& name) : Form(name, name) {}
    void refreshLookup(const QString& table) override { told += name() + u':' + table.toLower(); }
    static inline QStringList told;
};

class Reference : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::registerScreens();
        Neighbour::told.clear();
    }
    void run(const char* statement) { database().execute(QString::fromLatin1(statement)); }
    QStringList list(const char* select) { return rows(QString::fromLatin1(select)); }
    void openList(const char* name) { ASSERT_TRUE(open(QString::fromLatin1(name))); }
    /// Selects the row that begins with a text.
    void go(const QString& first) {
        const QStringList shown = cells(u"lvwMI"_s);
        for (int row = 0; row < shown.size(); ++row) {
            if (shown[row].section(u'|', 0, 0) == first) {
                selectRow(u"lvwMI"_s, row);
                return;
            }
        }
        ADD_FAILURE() << "not listed: " << first.toStdString();
    }
    void inDialog(const char* button, const char* dialog, std::function<void()> driver) {
        whenShown(QString::fromLatin1(dialog), std::move(driver));
        press(QString::fromLatin1(button));
    }
    void enter(const char* field, const char* value) {
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    }
    void ok() { press(u"cmdOK"_s); }
    void refused(const char* message, const char* field) {
        expectBox(QString::fromLatin1(message));
        ok();
        EXPECT_EQ(focusName(), QString::fromLatin1(field)) << message;
    }
    void deleteSelected(Answer answer = Answer::Yes) {
        expectBox(u"Delete this item?"_s, answer, u"Delete"_s, screen::Buttons::YesNo);
        press(u"cmdDelete"_s);
    }
};

TEST_P(Reference, AUnitIsCheckedInOrderAndListedByItsCode) {
    openList("frmUnitOfMeasure");
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    inDialog("cmdNew", "frmUMAddEdit", [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), u"New Unit Of Measure"_s);
        refused("Unit may not be blank!", "txtCode");
        enter("txtCode", "e'a#[]|\"");
        EXPECT_EQ(text(u"txtCode"_s), u"ea"_s);
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "Each");
        refused("ea already exists!", "txtCode");
        enter("txtCode", "BX");
        enter("txtDescription", "Box");
        press(u"cmdOKNew"_s);
        EXPECT_EQ(text(u"txtCode"_s), QString());
        EXPECT_EQ(focusName(), u"txtCode"_s);
        enter("txtCode", "AA");
        enter("txtDescription", "Each");
        ok();
    });
    EXPECT_EQ(cells(u"lvwMI"_s).first(), u"AA|Each"_s);
    go(u"BX"_s);
    inDialog("cmdEdit", "frmUMAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), u"Edit Unit Of Measure"_s);
        EXPECT_FALSE(isEnabled(u"cmdOKNew"_s));
        enter("txtCode", "aa");
        refused("aa already exists!", "txtCode");
        enter("txtCode", "bx");
        ok();
    });
    EXPECT_EQ(list("SELECT code, description FROM UnitOfMeasure WHERE description='Box'"),
              QStringList(u"bx|Box"_s));
    go(u"bx"_s);
    deleteSelected(Answer::No);
    EXPECT_EQ(list("SELECT code FROM UnitOfMeasure WHERE code='bx'").size(), 1);
    deleteSelected();
    EXPECT_EQ(list("SELECT code FROM UnitOfMeasure WHERE code='bx'"), QStringList());
}

TEST_P(Reference, ARowThatHasGoneIsToldByTheTablesName) {
    struct Case {
        const char* dialog;
        const char* message;
    };
    const Case cases[] = {
        {"frmUMAddEdit", "9999 item no. not found! MiscItems table may need to be fixed!"},
        {"frmLineAddEdit", "9999 not found! Line Item Type table may need to be fixed!"},
        {"frmTermsAddEdit", "9999 not found! Terms table may need to be fixed!"},
        {"frmScrapReasonsAddEdit", "9999 not found! Scrap Reasons table may need to be fixed!"},
        {"frmCountryAddEdit", "9999 ID not found! Country table may need to be fixed!"},
        {"frmStateAddEdit", "9999 ID not found! States table may need to be fixed!"}};
    for (const Case& each : cases) {
        expectBox(QString::fromLatin1(each.message), Answer::Ok, {}, {}, screen::Icon::Critical);
        EXPECT_FALSE(screen::Forms::dialog<core::ReferenceDialog>(QString::fromLatin1(each.dialog))
                         ->ShowForm(9999));
    }
}

TEST_P(Reference, TheFourFixedLineItemTypesStayAndOthersGo) {
    run("INSERT INTO LineItemType (Code) VALUES('Tooling')");
    openList("frmLine");
    for (const char* fixed : {"Overhead", "Estimate", "Job", "Stock"}) {
        go(QString::fromLatin1(fixed));
        expectBox(u"You cannot delete Overhead, Estimate, Job, or Stock from Line "
                  "Item Types!"_s,
                  Answer::Ok, u"Error"_s);
        press(u"cmdDelete"_s);
        expectBox(u"You cannot edit Overhead, Estimate, Job, or Stock in Line Item "
                  "Types!"_s,
                  Answer::Ok, u"Error"_s);
        press(u"cmdEdit"_s);
    }
    go(u"Tooling"_s);
    inDialog("cmdEdit", "frmLineAddEdit", [this] {
        enter("txtDescription", "");
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "stock");
        refused("stock already exists!", "txtDescription");
        enter("txtDescription", "Tools");
        ok();
    });
    go(u"Tools"_s);
    deleteSelected();
    EXPECT_EQ(list("SELECT Code FROM LineItemType ORDER BY Code"),
              QStringList({u"Estimate"_s, u"Job"_s, u"Overhead"_s, u"Stock"_s}));
}

TEST_P(Reference, AManufacturerInUseStaysWhereverItIsUsed) {
    for (const char* name : {"Free", "On an item", "On an order"})
        database().execute(u"INSERT INTO Manufacturer (Company) VALUES ('"_s +
                           QString::fromLatin1(name) + u"')"_s);
    run("INSERT INTO Items (Manufacturer) VALUES ('On an item')");
    run("INSERT INTO POItem (Manufacturer) VALUES ('On an order')");
    openList("frmManufacturer");
    for (const char* used : {"On an item", "On an order"}) {
        go(QString::fromLatin1(used));
        expectBox(u"This manufacturer has been used on an Inventory, PO, or RFQ "
                  "item. It cannot be deleted!"_s);
        press(u"cmdDelete"_s);
    }
    go(u"Free"_s);
    inDialog("cmdEdit", "frmManuAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), u"Edit Manufacturer"_s);
        enter("txtCompany", "ON AN ITEM");
        refused("A Manufacturer already exists with that company name.", "txtCompany");
        enter("txtCompany", "O'Free");
        ok();
    });
    go(u"O'Free"_s);
    deleteSelected();
    EXPECT_EQ(list("SELECT Company FROM Manufacturer ORDER BY Company"),
              QStringList({u"On an item"_s, u"On an order"_s}));
}

TEST_P(Reference, TermsTakeDigitsOnlyAndTellTheOpenScreens) {
    for (const char* name : {"frmCustomer", "frmVendor", "frmEmployee"}) {
        const QString form = QString::fromLatin1(name);
        screen::Forms::add(form, [form] { return std::make_unique<Neighbour>(form); });
        open(form);
    }
    openList("frmTerms");
    inDialog("cmdNew", "frmTermsAddEdit", [this] {
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "Net 7");
        enter("txtNetDue", "7 days");
        EXPECT_EQ(text(u"txtNetDue"_s), u"7"_s);
        ok();
    });
    EXPECT_EQ(list("SELECT description, netdue, QBSent FROM Terms WHERE description='Net 7'"),
              QStringList(u"Net 7|7|0"_s));
    const QStringList both{u"frmCustomer:terms"_s, u"frmVendor:terms"_s};
    EXPECT_EQ(std::exchange(Neighbour::told, {}), both) << "the employee has no terms";
    go(u"Net 7"_s);
    inDialog("cmdEdit", "frmTermsAddEdit", [this] { press(u"cmdCancel"_s); });
    EXPECT_EQ(Neighbour::told, QStringList()) << "nothing was saved";
    deleteSelected();
    EXPECT_EQ(Neighbour::told, both);
}

TEST_P(Reference, CountriesAndStatesHaveTwoUniqueTextsAndGoByTheirCode) {
    screen::Forms::add(u"frmEmployee"_s,
                       [] { return std::make_unique<Neighbour>(u"frmEmployee"_s); });
    open(u"frmEmployee"_s);
    openList("frmCountry");
    inDialog("cmdNew", "frmCountryAddEdit", [this] {
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "canada");
        refused("Postal Abbreviation may not be blank!", "txtCode");
        enter("txtCode", "CA");
        refused("canada already exists!", "txtDescription");
        enter("txtDescription", "Kanada");
        refused("CA already exists!", "txtCode");
        enter("txtCode", "KA");
        ok();
    });
    EXPECT_EQ(std::exchange(Neighbour::told, {}), QStringList(u"frmEmployee:country"_s));
    go(u"Kanada"_s);
    inDialog("cmdEdit", "frmCountryAddEdit", [this] {
        enter("txtCode", "ca");
        refused("ca already exists!", "txtCode");
        enter("txtCode", "KN");
        ok();
    });
    // Rows of the same code, as an import may leave them, go together.
    run("INSERT INTO country (country, code) VALUES('Kanada II','KN')");
    go(u"Kanada"_s);
    deleteSelected();
    EXPECT_EQ(list("SELECT country FROM country WHERE code='KN'"), QStringList());
    EXPECT_EQ(list("SELECT country FROM country WHERE code='CA'").size(), 1);

    openList("frmStates");
    go(u"Ohio"_s);
    inDialog("cmdEdit", "frmStateAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), u"Edit State/Province"_s);
        enter("txtDescription", "Iowa");
        refused("Iowa already exists!", "txtDescription");
        enter("txtDescription", "Ohio!");
        ok();
    });
    EXPECT_EQ(list("SELECT description FROM states WHERE code='OH'"), QStringList(u"Ohio!"_s));
    go(u"Ohio!"_s);
    deleteSelected();
    EXPECT_EQ(list("SELECT description FROM states WHERE code='OH'"), QStringList());
}

MIRSA_BOTH_ENGINES(Reference);

} // namespace
