#include "core/RecordScreen.h"
#include "core/Screens.h"
#include "core/reference/ReferenceForms.h"
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
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        core::registerScreens();
        Neighbour::told.clear();
    }
    void run(const char* statement) { database().execute(QString::fromLatin1(statement)); }
    QStringList list(const char* select) { return rows(QString::fromLatin1(select)); }
    void openList(const char* name) { ASSERT_TRUE(open(QString::fromLatin1(name))); }
    /// Selects the row that begins with a text.
    void go(const QString& first) {
        const QStringList shown = cells(QStringLiteral("lvwMI"));
        for (int row = 0; row < shown.size(); ++row) {
            if (shown[row].section(u'|', 0, 0) == first) {
                selectRow(QStringLiteral("lvwMI"), row);
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
    void ok() { press(QStringLiteral("cmdOK")); }
    void refused(const char* message, const char* field) {
        expectBox(QString::fromLatin1(message));
        ok();
        EXPECT_EQ(focusName(), QString::fromLatin1(field)) << message;
    }
    void deleteSelected(Answer answer = Answer::Yes) {
        expectBox(QStringLiteral("Delete this item?"), answer, QStringLiteral("Delete"),
                  screen::Buttons::YesNo);
        press(QStringLiteral("cmdDelete"));
    }
};

TEST_P(Reference, AUnitIsCheckedInOrderAndListedByItsCode) {
    openList("frmUnitOfMeasure");
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    inDialog("cmdNew", "frmUMAddEdit", [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(form().windowTitle(), QStringLiteral("New Unit Of Measure"));
        refused("Unit may not be blank!", "txtCode");
        enter("txtCode", "e'a#[]|\"");
        EXPECT_EQ(text(QStringLiteral("txtCode")), QStringLiteral("ea"));
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "Each");
        refused("ea already exists!", "txtCode");
        enter("txtCode", "BX");
        enter("txtDescription", "Box");
        press(QStringLiteral("cmdOKNew"));
        EXPECT_EQ(text(QStringLiteral("txtCode")), QString());
        EXPECT_EQ(focusName(), QStringLiteral("txtCode"));
        enter("txtCode", "AA");
        enter("txtDescription", "Each");
        ok();
    });
    EXPECT_EQ(cells(QStringLiteral("lvwMI")).first(), QStringLiteral("AA|Each"));
    go(QStringLiteral("BX"));
    inDialog("cmdEdit", "frmUMAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), QStringLiteral("Edit Unit Of Measure"));
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdOKNew")));
        enter("txtCode", "aa");
        refused("aa already exists!", "txtCode");
        enter("txtCode", "bx");
        ok();
    });
    EXPECT_EQ(list("SELECT code, description FROM UnitOfMeasure WHERE description='Box'"),
              QStringList(QStringLiteral("bx|Box")));
    go(QStringLiteral("bx"));
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
        expectBox(QStringLiteral("You cannot delete Overhead, Estimate, Job, or Stock from Line "
                                 "Item Types!"),
                  Answer::Ok, QStringLiteral("Error"));
        press(QStringLiteral("cmdDelete"));
        expectBox(QStringLiteral("You cannot edit Overhead, Estimate, Job, or Stock in Line Item "
                                 "Types!"),
                  Answer::Ok, QStringLiteral("Error"));
        press(QStringLiteral("cmdEdit"));
    }
    go(QStringLiteral("Tooling"));
    inDialog("cmdEdit", "frmLineAddEdit", [this] {
        enter("txtDescription", "");
        refused("Description may not be blank!", "txtDescription");
        enter("txtDescription", "stock");
        refused("stock already exists!", "txtDescription");
        enter("txtDescription", "Tools");
        ok();
    });
    go(QStringLiteral("Tools"));
    deleteSelected();
    EXPECT_EQ(list("SELECT Code FROM LineItemType ORDER BY Code"),
              QStringList({QStringLiteral("Estimate"), QStringLiteral("Job"),
                           QStringLiteral("Overhead"), QStringLiteral("Stock")}));
}

TEST_P(Reference, AManufacturerInUseStaysWhereverItIsUsed) {
    for (const char* name : {"Free", "On an item", "On an order"})
        database().execute(QStringLiteral("INSERT INTO Manufacturer (Company) VALUES ('") +
                           QString::fromLatin1(name) + QStringLiteral("')"));
    run("INSERT INTO Items (Manufacturer) VALUES ('On an item')");
    run("INSERT INTO POItem (Manufacturer) VALUES ('On an order')");
    openList("frmManufacturer");
    for (const char* used : {"On an item", "On an order"}) {
        go(QString::fromLatin1(used));
        expectBox(QStringLiteral("This manufacturer has been used on an Inventory, PO, or RFQ "
                                 "item. It cannot be deleted!"));
        press(QStringLiteral("cmdDelete"));
    }
    go(QStringLiteral("Free"));
    inDialog("cmdEdit", "frmManuAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), QStringLiteral("Edit Manufacturer"));
        enter("txtCompany", "ON AN ITEM");
        refused("A Manufacturer already exists with that company name.", "txtCompany");
        enter("txtCompany", "O'Free");
        ok();
    });
    go(QStringLiteral("O'Free"));
    deleteSelected();
    EXPECT_EQ(list("SELECT Company FROM Manufacturer ORDER BY Company"),
              QStringList({QStringLiteral("On an item"), QStringLiteral("On an order")}));
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
        EXPECT_EQ(text(QStringLiteral("txtNetDue")), QStringLiteral("7"));
        ok();
    });
    EXPECT_EQ(list("SELECT description, netdue, QBSent FROM Terms WHERE description='Net 7'"),
              QStringList(QStringLiteral("Net 7|7|0")));
    const QStringList both{QStringLiteral("frmCustomer:terms"), QStringLiteral("frmVendor:terms")};
    EXPECT_EQ(std::exchange(Neighbour::told, {}), both) << "the employee has no terms";
    go(QStringLiteral("Net 7"));
    inDialog("cmdEdit", "frmTermsAddEdit", [this] { press(QStringLiteral("cmdCancel")); });
    EXPECT_EQ(Neighbour::told, QStringList()) << "nothing was saved";
    deleteSelected();
    EXPECT_EQ(Neighbour::told, both);
}

TEST_P(Reference, CountriesAndStatesHaveTwoUniqueTextsAndGoByTheirCode) {
    screen::Forms::add(QStringLiteral("frmEmployee"),
                       [] { return std::make_unique<Neighbour>(QStringLiteral("frmEmployee")); });
    open(QStringLiteral("frmEmployee"));
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
    EXPECT_EQ(std::exchange(Neighbour::told, {}),
              QStringList(QStringLiteral("frmEmployee:country")));
    go(QStringLiteral("Kanada"));
    inDialog("cmdEdit", "frmCountryAddEdit", [this] {
        enter("txtCode", "ca");
        refused("ca already exists!", "txtCode");
        enter("txtCode", "KN");
        ok();
    });
    // Rows of the same code, as an import may leave them, go together.
    run("INSERT INTO country (country, code) VALUES('Kanada II','KN')");
    go(QStringLiteral("Kanada"));
    deleteSelected();
    EXPECT_EQ(list("SELECT country FROM country WHERE code='KN'"), QStringList());
    EXPECT_EQ(list("SELECT country FROM country WHERE code='CA'").size(), 1);

    openList("frmStates");
    go(QStringLiteral("Ohio"));
    inDialog("cmdEdit", "frmStateAddEdit", [this] {
        EXPECT_EQ(form().windowTitle(), QStringLiteral("Edit State/Province"));
        enter("txtDescription", "Iowa");
        refused("Iowa already exists!", "txtDescription");
        enter("txtDescription", "Ohio!");
        ok();
    });
    EXPECT_EQ(list("SELECT description FROM states WHERE code='OH'"),
              QStringList(QStringLiteral("Ohio!")));
    go(QStringLiteral("Ohio!"));
    deleteSelected();
    EXPECT_EQ(list("SELECT description FROM states WHERE code='OH'"), QStringList());
}

MIRSA_BOTH_ENGINES(Reference);

} // namespace
