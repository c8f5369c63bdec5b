#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "masters/Screens.h"
#include "platform/controls/DataControl.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

namespace {

using screen::Answer;
using screen::Buttons;
using screen::Icon;

const QString noRecords = QStringLiteral(
    "There are no records in the database. Before you can use the Customer module you must add at "
    "least one Customer. Would you like to do so now?");

/// Stands for a neighbour that shows customers.
class Neighbour : public screen::Form, public core::LookupUser {
  public:
    explicit Neighbour(const QString& name) : Form(name, name) {}
    void refreshLookup(const QString& table) override { refreshed << table; }
    QStringList refreshed;
};

class Customer : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        masters::registerScreens();
    }
    void add(const QString& name) {
        database().execute(QStringLiteral("INSERT INTO Customer (company) VALUES ('") +
                           QString(name).replace(QStringLiteral("'"), QStringLiteral("''")) +
                           QStringLiteral("')"));
    }
    void addThree() {
        for (const char* name : {"Acme Tools", "Baker Molds", "O'Brien Castings"})
            add(QString::fromLatin1(name));
    }
    bool openModule() { return open(QStringLiteral("frmCustomer")) != nullptr; }
    QString company() const { return text(QStringLiteral("txtCustomer")); }
    QString mode() const { return text(QStringLiteral("lblCustomerMode")); }
    core::RecordScreen* module() const {
        return screen::Forms::find<core::RecordScreen>(QStringLiteral("frmCustomer"));
    }
    qint64 numberOf(const char* name) {
        return database()
            .lookup(QStringLiteral("SELECT Custid FROM Customer WHERE company = '") +
                    QString::fromLatin1(name) + QStringLiteral("'"))
            .toLong();
    }
};

TEST_P(Customer, OpensOnTheNewestAndMovesWithArrowsAndKeys) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(company(), QStringLiteral("O'Brien Castings"));
    EXPECT_TRUE(isLocked(QStringLiteral("txtCustomer")));
    EXPECT_FALSE(isEnabled(QStringLiteral("cmdSave")));
    EXPECT_FALSE(isVisible(QStringLiteral("cmdCancel")));
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(company(), QStringLiteral("Baker Molds"));
    key(Qt::Key_Left, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(company(), QStringLiteral("Acme Tools"));
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(company(), QStringLiteral("Baker Molds"));
    type(QStringLiteral("dbcCustomer"), QStringLiteral("acme\n"));
    ASSERT_TRUE(module()) << "Return chose the name and pressed nothing";
    EXPECT_EQ(company(), QStringLiteral("Acme Tools"));
    EXPECT_EQ(text(QStringLiteral("txtCustid")), QString::number(numberOf("Acme Tools")));
}

TEST_P(Customer, AddTakesTheShopsDefaultsAndLandsOnTheNewRow) {
    database().execute(QStringLiteral(
        "UPDATE SystemSettings SET Shipping = 'Truck', Terms = 'Net 10', FOB = 'Dock', "
        "qteHeader = 'We quote', qtevmessage = '30 days'"));
    addThree();
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(mode(), QStringLiteral("ADD"));
    EXPECT_EQ(text(QStringLiteral("txtCustid")), QStringLiteral("???"));
    EXPECT_EQ(company(), QString());
    EXPECT_EQ(text(QStringLiteral("txtShip")), QStringLiteral("Truck"));
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 10"));
    EXPECT_EQ(text(QStringLiteral("txtValid")), QStringLiteral("30 days"));
    EXPECT_FALSE(isEnabled(QStringLiteral("datCustomer")));
    EXPECT_FALSE(isVisible(QStringLiteral("cmdClose")));
    const QString notes(10000, QLatin1Char('n'));
    type(QStringLiteral("txtCustomer"), QStringLiteral("Dunn's Dies"));
    type(QStringLiteral("txtBillCity"), QStringLiteral("Dayton"));
    type(QStringLiteral("dbcState"), QStringLiteral("Nowhere"));
    paste(QStringLiteral("txtNotes"), notes);
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(company(), QStringLiteral("Dunn's Dies"));
    EXPECT_EQ(rows(QStringLiteral("SELECT company, BillCity, State, FOB, qteHeader, QBSent "
                                  "FROM Customer WHERE City = '' ORDER BY Custid")),
              QStringList(QStringLiteral("Dunn's Dies|Dayton|Nowhere|Dock|We quote|0")));
    EXPECT_EQ(text(QStringLiteral("txtNotes")), notes);
    choose(QStringLiteral("dbcCustomer"), QStringLiteral("Acme Tools"));
    choose(QStringLiteral("dbcCustomer"), QStringLiteral("Dunn's Dies"));
    EXPECT_EQ(text(QStringLiteral("txtNotes")), notes);
}

TEST_P(Customer, EditKeepsTheAccountingFlagAndCancelGivesTheRowBack) {
    addThree();
    database().execute(QStringLiteral("UPDATE Customer SET QBSent = 1, City = 'Akron'"));
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(mode(), QStringLiteral("EDIT"));
    type(QStringLiteral("txtCity"), QStringLiteral("Toledo"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::No, {}, Buttons::YesNo);
    key(Qt::Key_Escape);
    EXPECT_EQ(mode(), QStringLiteral("EDIT"));
    EXPECT_EQ(text(QStringLiteral("txtCity")), QStringLiteral("Toledo"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(text(QStringLiteral("txtCity")), QStringLiteral("Akron"));

    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtCustomer"), QStringLiteral("O'Brien & Sons"));
    key(Qt::Key_Return);
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(text(QStringLiteral("dbcCustomer")), QStringLiteral("O'Brien & Sons"));
    EXPECT_EQ(
        rows(QStringLiteral("SELECT company, City, QBSent FROM Customer ORDER BY Custid")),
        QStringList({QStringLiteral("Acme Tools|Akron|1"), QStringLiteral("Baker Molds|Akron|1"),
                     QStringLiteral("O'Brien & Sons|Akron|1")}));
}

TEST_P(Customer, ANamelessCustomerIsNotSavedAndClosingAsks) {
    addThree();
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdNew"));
    type(QStringLiteral("txtInPhone"), QStringLiteral("555"));
    expectBox(QStringLiteral("Customer Name must be Present!"), Answer::Ok,
              QStringLiteral("Need Customer Name!"), Buttons::OkCancel);
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(mode(), QStringLiteral("ADD"));
    EXPECT_EQ(focusName(), QStringLiteral("txtCustomer"));
    EXPECT_EQ(text(QStringLiteral("txtInPhone")), QStringLiteral("555"));

    const QString question =
        QStringLiteral("Would you like to save the current record before closing?");
    expectBox(question, Answer::Cancel, QStringLiteral("Save & Exit?"), Buttons::YesNoCancel);
    form().unload();
    EXPECT_TRUE(module());
    expectBox(question, Answer::Yes);
    expectBox(QStringLiteral("Customer Name must be Present!"));
    form().unload();
    ASSERT_TRUE(module()) << "the save was refused";
    expectBox(question, Answer::No);
    form().unload();
    EXPECT_FALSE(module());
    EXPECT_EQ(rows(QStringLiteral("SELECT Custid FROM Customer")).size(), 3);
}

TEST_P(Customer, DeletingGoesToTheNeighbourAndFromTheLastRowToTheQuestion) {
    addThree();
    ASSERT_TRUE(openModule());
    key(Qt::Key_Left, Qt::AltModifier);
    const QString question =
        QStringLiteral("Once Deleted, Customer data will be unrecoverable.  Continue?");
    expectBox(question, Answer::Cancel, QStringLiteral("Deleting Customer"), Buttons::OkCancel,
              Icon::Question);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(rows(QStringLiteral("SELECT Custid FROM Customer")).size(), 3);
    expectBox(question, Answer::Ok);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(company(), QStringLiteral("O'Brien Castings")) << "the next row";
    expectBox(question, Answer::Ok);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(company(), QStringLiteral("Acme Tools")) << "at the end the one before";
    expectBox(question, Answer::Ok);
    expectBox(noRecords, Answer::No, QStringLiteral("No Records!"), Buttons::YesNo);
    press(QStringLiteral("cmdDelete"));
    EXPECT_TRUE(rows(QStringLiteral("SELECT Custid FROM Customer")).isEmpty());
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    EXPECT_EQ(company(), QString());
    EXPECT_EQ(module()->currentKey(), 0);
}

TEST_P(Customer, AnEmptyTableOffersAddAndCancelLeavesIt) {
    expectBox(noRecords, Answer::Yes, QStringLiteral("No Records!"));
    ASSERT_TRUE(openModule());
    EXPECT_EQ(mode(), QStringLiteral("ADD"));
    type(QStringLiteral("txtCustomer"), QStringLiteral("Acme"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    expectBox(noRecords, Answer::No);
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(mode(), QStringLiteral("BROWSE")) << "nothing to edit";
}

TEST_P(Customer, TheCopyButtonsAskOnlyWhereSomethingWouldBeLost) {
    add(QStringLiteral("Acme"));
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(isEnabled(QStringLiteral("cmdSendtoBill")));
    press(QStringLiteral("cmdEdit"));
    for (const auto& [field, value] :
         {std::pair{"txtAdd1", "1 Main St"}, std::pair{"txtAdd2", "Suite 2"},
          std::pair{"txtAdd3", "Dock 3"}, std::pair{"txtCity", "Akron"},
          std::pair{"dbcState", "OH"}, std::pair{"txtZip1", "44301"},
          std::pair{"dbcCountry", "United States"}, std::pair{"txtContact", "Kim"},
          std::pair{"txtEmail", "kim@acme"}, std::pair{"etxtPhone", "555"},
          std::pair{"txtInAltContact", "Lee"}})
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    press(QStringLiteral("cmdSendtoBill"));
    EXPECT_EQ(text(QStringLiteral("txtBillAddress1")), QStringLiteral("1 Main St"));
    EXPECT_EQ(text(QStringLiteral("dbcBillCountry")), QStringLiteral("United States"));
    type(QStringLiteral("txtAdd1"), QStringLiteral("9 Elm St"));
    expectBox(QStringLiteral("This will overwrite the bill address information in the invoice tab. "
                             "Continue?"),
              Answer::Cancel, QStringLiteral("Overwrite Information?"), Buttons::OkCancel);
    press(QStringLiteral("cmdSendtoBill"));
    EXPECT_EQ(text(QStringLiteral("txtBillAddress1")), QStringLiteral("1 Main St"));
    press(QStringLiteral("cmdSendtoShip"));
    press(QStringLiteral("Command3"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT BillAddress1, BillAddress2, BillCity, billState, BillZip, shipaddress1, "
                  "shipcity, shipzip, InContact, InAltContact, InEmail, InPhone FROM Customer")),
              QStringList(QStringLiteral("1 Main St|Suite 2|Akron|OH|44301|9 Elm St|Akron|44301|"
                                         "Kim|Lee|kim@acme|555")));
}

TEST_P(Customer, GoToListsByNameOrByTheBeginningOfTheNumber) {
    for (int i = 1; i <= 12; ++i)
        add(QStringLiteral("Shop %1").arg(i));
    ASSERT_TRUE(openModule());
    whenShown(QStringLiteral("frmCustFind"), [this] {
        expectBox(QStringLiteral("No Matching Records Found!"), Answer::Ok,
                  QStringLiteral("Empty Results!"), {}, Icon::Exclamation);
        type(QStringLiteral("txtData"), QStringLiteral("Zebra"));
        press(QStringLiteral("cmdFind"));
        check(QStringLiteral("optFind2"));
        type(QStringLiteral("txtData"), QStringLiteral("1"));
        whenShown(QStringLiteral("frmCustFound"), [this] {
            EXPECT_EQ(cells(QStringLiteral("sprCustFound")),
                      QStringList({QStringLiteral("1|Shop 1"), QStringLiteral("10|Shop 10"),
                                   QStringLiteral("11|Shop 11"), QStringLiteral("12|Shop 12")}));
            doubleClickRow(QStringLiteral("sprCustFound"), 2);
        });
        press(QStringLiteral("cmdFind"));
    });
    press(QStringLiteral("cmdFind"));
    EXPECT_FALSE(screen::Forms::isLoaded(QStringLiteral("frmCustFind"))) << "both are closed";
    EXPECT_EQ(module()->currentKey(), 11);
    EXPECT_EQ(company(), QStringLiteral("Shop 11"));

    // The text goes in as typed.
    expectRunTimeError(jet::errors::syntax);
    whenShown(QStringLiteral("frmCustFind"), [this] {
        type(QStringLiteral("txtData"), QStringLiteral("O'Brien"));
        press(QStringLiteral("cmdFind"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("cmdFind"));
    EXPECT_EQ(company(), QStringLiteral("Shop 11"));
}

TEST_P(Customer, GoToByNumberBeepsForANumberThatIsNotThere) {
    addThree();
    ASSERT_TRUE(openModule());
    const QString prompt = QStringLiteral("Please enter Customer Number to go to:");
    expectInput(prompt, QStringLiteral(" 1 "));
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(company(), QStringLiteral("Acme Tools"));
    for (const char* number : {"77", "abc", "1 or 1=1"}) {
        expectInput(prompt, QString::fromLatin1(number));
        expectBox(QStringLiteral("Customer Number %1 not found!").arg(QString::fromLatin1(number)));
        key(Qt::Key_G, Qt::ControlModifier);
        EXPECT_EQ(company(), QStringLiteral("Acme Tools")) << number;
    }
    EXPECT_EQ(beeps, 3);
    expectInput(prompt, QString());
    key(Qt::Key_G, Qt::ControlModifier);
}

TEST_P(Customer, AnotherStationsRowsShowOnActivation) {
    addThree();
    ASSERT_TRUE(openModule());
    key(Qt::Key_Left, Qt::AltModifier);
    screen::Forms::add(QStringLiteral("frmOther"),
                       [] { return std::make_unique<Neighbour>(QStringLiteral("frmOther")); });
    screen::Forms::show(QStringLiteral("frmOther"));
    auto station = anotherStation();
    station->execute(
        QStringLiteral("UPDATE Customer SET City = 'Erie' WHERE company LIKE 'Baker*'"));
    station->execute(QStringLiteral("INSERT INTO Customer (company) VALUES ('Zeta')"));
    use(screen::Forms::show(QStringLiteral("frmCustomer")));
    EXPECT_EQ(company(), QStringLiteral("Baker Molds")) << "the same row";
    EXPECT_EQ(text(QStringLiteral("txtCity")), QStringLiteral("Erie"));
    choose(QStringLiteral("dbcCustomer"), QStringLiteral("Zeta"));
    EXPECT_EQ(company(), QStringLiteral("Zeta"));
}

TEST_P(Customer, TwoStationsChangeDifferentFieldsOfOneCustomer) {
    addThree();
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdEdit"));
    const QString name = company();
    type(QStringLiteral("txtCity"), QStringLiteral("toledo"));
    anotherStation()->execute(
        QStringLiteral("UPDATE Customer SET Phone = '555-0199', City = 'Toledo'"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT City, Phone FROM Customer WHERE company = '") +
                   values::quoted(name) + QStringLiteral("'")),
              QStringList(QStringLiteral("toledo|555-0199")));
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtCity"), QStringLiteral("Toledo"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT City FROM Customer WHERE company = '") +
                   values::quoted(name) + QStringLiteral("'")),
              QStringList(QStringLiteral("Toledo")))
        << "letters' case alone is a change";
}

TEST_P(Customer, ARowThatAnotherStationDeletedIsToldAndNothingTypedIsLost) {
    addThree();
    ASSERT_TRUE(openModule());
    auto station = anotherStation();
    press(QStringLiteral("cmdEdit"));
    type(QStringLiteral("txtCity"), QStringLiteral("Toledo"));
    station->execute(QStringLiteral("DELETE * FROM Customer WHERE company LIKE 'O*'"));
    expectBoxContaining(QStringLiteral("deleted by another user"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(mode(), QStringLiteral("EDIT"));
    EXPECT_EQ(text(QStringLiteral("txtCity")), QStringLiteral("Toledo"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    EXPECT_EQ(company(), QStringLiteral("Baker Molds"));

    station->execute(QStringLiteral("DELETE * FROM Customer WHERE company LIKE 'A*'"));
    key(Qt::Key_Left, Qt::AltModifier);
    if (company() == QStringLiteral("Acme Tools")) {
        // A server's rows are looked at again when one is about to be edited.
        expectBoxContaining(QStringLiteral("deleted by another user"));
        press(QStringLiteral("cmdEdit"));
        EXPECT_EQ(mode(), QStringLiteral("BROWSE"));
    }
    EXPECT_EQ(company(), QStringLiteral("Baker Molds")) << "moved onto the deleted row";
    station->execute(QStringLiteral("DELETE * FROM Customer"));
    expectBox(QStringLiteral("Once Deleted, Customer data will be unrecoverable.  Continue?"),
              Answer::Ok);
    expectBox(noRecords, Answer::No);
    press(QStringLiteral("cmdDelete"));
    EXPECT_EQ(company(), QString());
}

TEST_P(Customer, OpenNeighboursReadTheirListsAgain) {
    addThree();
    for (const char* name : {"frmJob", "frmHistory", "frmVendor"}) {
        const QString form = QString::fromLatin1(name);
        screen::Forms::add(form, [form] { return std::make_unique<Neighbour>(form); });
        ASSERT_TRUE(open(form));
    }
    const auto refreshed = [](const char* name) {
        return screen::Forms::find<Neighbour>(QString::fromLatin1(name))->refreshed;
    };
    ASSERT_TRUE(openModule());
    press(QStringLiteral("cmdEdit"));
    press(QStringLiteral("cmdSave"));
    expectBox(QStringLiteral("Once Deleted, Customer data will be unrecoverable.  Continue?"),
              Answer::Ok);
    press(QStringLiteral("cmdDelete"));
    const QStringList twice{QStringLiteral("Customer"), QStringLiteral("Customer")};
    EXPECT_EQ(refreshed("frmJob"), twice);
    EXPECT_EQ(refreshed("frmHistory"), twice);
    EXPECT_TRUE(refreshed("frmVendor").isEmpty());
}

TEST_P(Customer, LongNotesAreEditedLargeAndOnlyWhileTheFieldTakesEntries) {
    add(QStringLiteral("Acme"));
    database().execute(QStringLiteral("UPDATE Customer SET QteRemark = 'old'"));
    ASSERT_TRUE(openModule());
    whenShown(QStringLiteral("frmQuoteRemarks"), [this] {
        EXPECT_TRUE(isLocked(QStringLiteral("txtRemarks")));
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdOK")));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("Command4"));
    press(QStringLiteral("cmdEdit"));
    whenShown(QStringLiteral("frmQuoteRemarks"), [this] {
        type(QStringLiteral("txtRemarks"), QStringLiteral("given up"));
        press(QStringLiteral("cmdCancel"));
    });
    press(QStringLiteral("Command4"));
    EXPECT_EQ(text(QStringLiteral("txtRemarks")), QStringLiteral("old"));
    whenShown(QStringLiteral("frmQuoteNotes"), [this] {
        type(QStringLiteral("txtNotes"), QStringLiteral("first\nsecond"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("Command5"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(rows(QStringLiteral("SELECT OurNotes FROM Customer")),
              QStringList(QStringLiteral("first\r\nsecond")));
}

TEST_P(Customer, QuickReportNeedsADefault) {
    addThree();
    database().execute(QStringLiteral("DELETE * FROM Reports"));
    ASSERT_TRUE(openModule());
    for (const char* button : {"cmdPrintScr", "cmdPrintAll"}) {
        expectBoxContaining(QStringLiteral("You do not have a Default Report specified"));
        press(QString::fromLatin1(button));
    }
    EXPECT_FALSE(isEnabled(QStringLiteral("cmdList"))) << "its screen is not installed";
}

TEST_P(Customer, NothingIsClippedUnnamedOrClashing) {
    addThree();
    ASSERT_TRUE(openModule());
    whenShown(QStringLiteral("frmCustFind"), [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        whenShown(QStringLiteral("frmCustFound"), [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            press(QStringLiteral("cmdSelect"));
        });
        press(QStringLiteral("cmdFind"));
    });
    press(QStringLiteral("cmdFind"));
    EXPECT_EQ(company(), QStringLiteral("Acme Tools")) << "the first found";
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    press(QStringLiteral("cmdEdit"));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
}

MIRSA_BOTH_ENGINES(Customer);

} // namespace
