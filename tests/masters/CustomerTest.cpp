#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "masters/Screens.h"
#include "platform/controls/DataControl.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

namespace {

using screen::Answer;
using screen::Buttons;
using screen::Icon;

const QString noRecords =
    u"There are no records in the database. Before you can use the Customer module you must add at "
    "least one Customer. Would you like to do so now?"_s;

/// Stands for a neighbour that shows customers.
class Neighbour : public screen::Form, public core::LookupUser {
  public:
    explicit Neighbour(const QString& name) : Form(name, name) {}
    void refreshLookup(const QString& table) override { refreshed << table; }
    QStringList refreshed;
};

class Customer : public testsupport::ShopTest {
  protected:
    void prepare() override { masters::registerScreens(); }
    void add(const QString& name) {
        database().execute(u"INSERT INTO Customer (company) VALUES ('"_s +
                           QString(name).replace(u"'"_s, u"''"_s) + u"')"_s);
    }
    void addThree() {
        for (const char* name : {"Acme Tools", "Baker Molds", "O'Brien Castings"})
            add(QString::fromLatin1(name));
    }
    bool openModule() { return open(u"frmCustomer"_s) != nullptr; }
    QString company() const { return text(u"txtCustomer"_s); }
    QString mode() const { return text(u"lblCustomerMode"_s); }
    core::RecordScreen* module() const {
        return screen::Forms::find<core::RecordScreen>(u"frmCustomer"_s);
    }
    qint64 numberOf(const char* name) {
        return database()
            .lookup(u"SELECT Custid FROM Customer WHERE company = '"_s + QString::fromLatin1(name) +
                    u"'"_s)
            .toLong();
    }
};

TEST_P(Customer, OpensOnTheNewestAndMovesWithArrowsAndKeys) {
    addThree();
    ASSERT_TRUE(openModule());
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(company(), u"O'Brien Castings"_s);
    EXPECT_TRUE(isLocked(u"txtCustomer"_s));
    EXPECT_FALSE(isEnabled(u"cmdSave"_s));
    EXPECT_FALSE(isVisible(u"cmdCancel"_s));
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(company(), u"Baker Molds"_s);
    key(Qt::Key_Left, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(company(), u"Acme Tools"_s);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(company(), u"Baker Molds"_s);
    type(u"dbcCustomer"_s, u"acme\n"_s);
    ASSERT_TRUE(module()) << "Return chose the name and pressed nothing";
    EXPECT_EQ(company(), u"Acme Tools"_s);
    EXPECT_EQ(text(u"txtCustid"_s), QString::number(numberOf("Acme Tools")));
}

TEST_P(Customer, AddTakesTheShopsDefaultsAndLandsOnTheNewRow) {
    database().execute(
        u"UPDATE SystemSettings SET Shipping = 'Truck', Terms = 'Net 10', FOB = 'Dock', "
        "qteHeader = 'We quote', qtevmessage = '30 days'"_s);
    addThree();
    ASSERT_TRUE(openModule());
    press(u"cmdNew"_s);
    EXPECT_EQ(mode(), u"ADD"_s);
    EXPECT_EQ(text(u"txtCustid"_s), u"???"_s);
    EXPECT_EQ(company(), QString());
    EXPECT_EQ(text(u"txtShip"_s), u"Truck"_s);
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 10"_s);
    EXPECT_EQ(text(u"txtValid"_s), u"30 days"_s);
    EXPECT_FALSE(isEnabled(u"datCustomer"_s));
    EXPECT_FALSE(isVisible(u"cmdClose"_s));
    const QString notes(10000, QLatin1Char('n'));
    type(u"txtCustomer"_s, u"Dunn's Dies"_s);
    type(u"txtBillCity"_s, u"Dayton"_s);
    // What no table has is offered to be added, or kept as typed.
    expectBox(u"State/Province Nowhere does not exist in the Mirsa states table. Add?"_s,
              Answer::No, u"State/Province not Found"_s, Buttons::YesNo);
    type(u"dbcState"_s, u"Nowhere"_s);
    database().execute(u"INSERT INTO Country (country, code) VALUES ('Österreich', 'AT')"_s);
    type(u"dbcCountry"_s, u"österREICH"_s); // no second country
    expectBox(u"Country O'Land does not exist in the Mirsa country table. Add?"_s, Answer::Yes,
              u"Country not Found"_s, Buttons::YesNo);
    type(u"dbcCountry"_s, u"O'Land"_s);
    paste(u"txtNotes"_s, notes);
    press(u"cmdSave"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(company(), u"Dunn's Dies"_s);
    EXPECT_EQ(rows(u"SELECT company, BillCity, State, FOB, qteHeader, QBSent "
                   "FROM Customer WHERE City = '' ORDER BY Custid"_s),
              QStringList(u"Dunn's Dies|Dayton|Nowhere|Dock|We quote|0"_s));
    EXPECT_EQ(text(u"txtNotes"_s), notes);
    EXPECT_EQ(rows(u"SELECT country, code FROM Country WHERE country = 'O''Land'"_s),
              QStringList(u"O'Land|O'Land"_s));
    EXPECT_TRUE(form().windowTitle().endsWith(u", Dunn's Dies"_s));
    choose(u"dbcCustomer"_s, u"Acme Tools"_s);
    choose(u"dbcCustomer"_s, u"Dunn's Dies"_s);
    EXPECT_EQ(text(u"txtNotes"_s), notes);
}

TEST_P(Customer, EditKeepsTheAccountingFlagAndCancelGivesTheRowBack) {
    addThree();
    database().execute(u"UPDATE Customer SET QBSent = 1, City = 'Akron'"_s);
    ASSERT_TRUE(openModule());
    press(u"cmdEdit"_s);
    EXPECT_EQ(mode(), u"EDIT"_s);
    type(u"txtCity"_s, u"Toledo"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::No, {}, Buttons::YesNo);
    key(Qt::Key_Escape);
    EXPECT_EQ(mode(), u"EDIT"_s);
    EXPECT_EQ(text(u"txtCity"_s), u"Toledo"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(text(u"txtCity"_s), u"Akron"_s);

    press(u"cmdEdit"_s);
    type(u"txtCustomer"_s, u"O'Brien & Sons"_s);
    key(Qt::Key_Return);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(text(u"dbcCustomer"_s), u"O'Brien & Sons"_s);
    EXPECT_EQ(rows(u"SELECT company, City, QBSent FROM Customer ORDER BY Custid"_s),
              QStringList({u"Acme Tools|Akron|1"_s, u"Baker Molds|Akron|1"_s,
                           u"O'Brien & Sons|Akron|1"_s}));
}

TEST_P(Customer, ANamelessCustomerIsNotSavedAndClosingAsks) {
    addThree();
    ASSERT_TRUE(openModule());
    press(u"cmdNew"_s);
    type(u"txtInPhone"_s, u"555"_s);
    expectBox(u"Customer Name must be Present!"_s, Answer::Ok, u"Need Customer Name!"_s,
              Buttons::OkCancel);
    press(u"cmdSave"_s);
    EXPECT_EQ(mode(), u"ADD"_s);
    EXPECT_EQ(focusName(), u"txtCustomer"_s);
    EXPECT_EQ(text(u"txtInPhone"_s), u"555"_s);

    const QString question = u"Would you like to save the current record before closing?"_s;
    expectBox(question, Answer::Cancel, u"Save & Exit?"_s, Buttons::YesNoCancel);
    form().unload();
    EXPECT_TRUE(module());
    expectBox(question, Answer::Yes);
    expectBox(u"Customer Name must be Present!"_s);
    form().unload();
    ASSERT_TRUE(module()) << "the save was refused";
    expectBox(question, Answer::No);
    form().unload();
    EXPECT_FALSE(module());
    EXPECT_EQ(rows(u"SELECT Custid FROM Customer"_s).size(), 3);
}

TEST_P(Customer, DeletingGoesToTheNeighbourAndFromTheLastRowToTheQuestion) {
    addThree();
    ASSERT_TRUE(openModule());
    key(Qt::Key_Left, Qt::AltModifier);
    const QString question = u"Once Deleted, Customer data will be unrecoverable.  Continue?"_s;
    expectBox(question, Answer::Cancel, u"Deleting Customer"_s, Buttons::OkCancel, Icon::Question);
    press(u"cmdDelete"_s);
    EXPECT_EQ(rows(u"SELECT Custid FROM Customer"_s).size(), 3);
    expectBox(question, Answer::Ok);
    press(u"cmdDelete"_s);
    EXPECT_EQ(company(), u"O'Brien Castings"_s) << "the next row";
    expectBox(question, Answer::Ok);
    press(u"cmdDelete"_s);
    EXPECT_EQ(company(), u"Acme Tools"_s) << "at the end the one before";
    expectBox(question, Answer::Ok);
    expectBox(noRecords, Answer::No, u"No Records!"_s, Buttons::YesNo);
    press(u"cmdDelete"_s);
    EXPECT_TRUE(rows(u"SELECT Custid FROM Customer"_s).isEmpty());
    EXPECT_EQ(mode(), u"BROWSE"_s);
    EXPECT_EQ(company(), QString());
    EXPECT_EQ(module()->currentKey(), 0);
}

TEST_P(Customer, AnEmptyTableOffersAddAndCancelLeavesIt) {
    expectBox(noRecords, Answer::Yes, u"No Records!"_s);
    ASSERT_TRUE(openModule());
    EXPECT_EQ(mode(), u"ADD"_s);
    type(u"txtCustomer"_s, u"Acme"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s);
    expectBox(noRecords, Answer::No);
    press(u"cmdEdit"_s);
    EXPECT_EQ(mode(), u"BROWSE"_s) << "nothing to edit";
}

TEST_P(Customer, TheCopyButtonsAskOnlyWhereSomethingWouldBeLost) {
    add(u"Acme"_s);
    ASSERT_TRUE(openModule());
    EXPECT_FALSE(isEnabled(u"cmdSendtoBill"_s));
    press(u"cmdEdit"_s);
    for (const auto& [field, value] :
         {std::pair{"txtAdd1", "1 Main St"}, std::pair{"txtAdd2", "Suite 2"},
          std::pair{"txtAdd3", "Dock 3"}, std::pair{"txtCity", "Akron"},
          std::pair{"dbcState", "OH"}, std::pair{"txtZip1", "44301"},
          std::pair{"dbcCountry", "United States"}, std::pair{"txtContact", "Kim"},
          std::pair{"txtEmail", "kim@acme"}, std::pair{"etxtPhone", "555"},
          std::pair{"txtInAltContact", "Lee"}})
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    press(u"cmdSendtoBill"_s);
    EXPECT_EQ(text(u"txtBillAddress1"_s), u"1 Main St"_s);
    EXPECT_EQ(text(u"dbcBillCountry"_s), u"United States"_s);
    type(u"txtAdd1"_s, u"9 Elm St"_s);
    expectBox(u"This will overwrite the bill address information in the invoice tab. "
              "Continue?"_s,
              Answer::Cancel, u"Overwrite Information?"_s, Buttons::OkCancel);
    press(u"cmdSendtoBill"_s);
    EXPECT_EQ(text(u"txtBillAddress1"_s), u"1 Main St"_s);
    press(u"cmdSendtoShip"_s);
    press(u"Command3"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(
        rows(u"SELECT BillAddress1, BillAddress2, BillCity, billState, BillZip, shipaddress1, "
             "shipcity, shipzip, InContact, InAltContact, InEmail, InPhone FROM Customer"_s),
        QStringList(u"1 Main St|Suite 2|Akron|OH|44301|9 Elm St|Akron|44301|"
                    "Kim|Lee|kim@acme|555"_s));
}

TEST_P(Customer, GoToListsByNameOrByTheBeginningOfTheNumber) {
    for (int i = 1; i <= 12; ++i)
        add(u"Shop %1"_s.arg(i));
    ASSERT_TRUE(openModule());
    whenShown(u"frmCustFind"_s, [this] {
        expectBox(u"No Matching Records Found!"_s, Answer::Ok, u"Empty Results!"_s, {},
                  Icon::Exclamation);
        type(u"txtData"_s, u"Zebra"_s);
        press(u"cmdFind"_s);
        check(u"optFind2"_s);
        type(u"txtData"_s, u"1"_s);
        whenShown(u"frmCustFound"_s, [this] {
            EXPECT_EQ(cells(u"sprCustFound"_s), QStringList({u"1|Shop 1"_s, u"10|Shop 10"_s,
                                                             u"11|Shop 11"_s, u"12|Shop 12"_s}));
            doubleClickRow(u"sprCustFound"_s, 2);
        });
        press(u"cmdFind"_s);
    });
    press(u"cmdFind"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmCustFind"_s)) << "both are closed";
    EXPECT_EQ(module()->currentKey(), 11);
    EXPECT_EQ(company(), u"Shop 11"_s);

    // The text goes in as typed.
    expectRunTimeError(jet::errors::syntax);
    whenShown(u"frmCustFind"_s, [this] {
        type(u"txtData"_s, u"O'Brien"_s);
        press(u"cmdFind"_s);
        press(u"cmdCancel"_s);
    });
    press(u"cmdFind"_s);
    EXPECT_EQ(company(), u"Shop 11"_s);
}

TEST_P(Customer, EnterOnAnUnknownNameSaysSoAndTheModuleStays) {
    addThree();
    ASSERT_TRUE(openModule());
    const QString before = company();
    expectBox(u"Zebra not found!"_s);
    type(u"dbcCustomer"_s, u"Zebra"_s);
    key(Qt::Key_Return);
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmCustomer"_s));
    EXPECT_EQ(company(), before);
    typeOn(u"Acme Tools"_s);
    EXPECT_EQ(text(u"dbcCustomer"_s), u"Acme Tools"_s) << "what was typed is selected";
}

TEST_P(Customer, GoToByNumberBeepsForANumberThatIsNotThere) {
    addThree();
    ASSERT_TRUE(openModule());
    const QString prompt = u"Please enter Customer Number to go to:"_s;
    expectInput(prompt, u" 1 "_s);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(company(), u"Acme Tools"_s);
    for (const char* number : {"77", "abc", "1 or 1=1"}) {
        expectInput(prompt, QString::fromLatin1(number));
        expectBox(u"Customer Number %1 not found!"_s.arg(QString::fromLatin1(number)));
        key(Qt::Key_G, Qt::ControlModifier);
        EXPECT_EQ(company(), u"Acme Tools"_s) << number;
    }
    EXPECT_EQ(beeps, 3);
    database().execute(u"INSERT INTO Customer (CustID, Company) VALUES(1234,'Far down')"_s);
    form().Form_Activate();
    expectInput(prompt, u"1,234"_s);
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(company(), u"Far down"_s);
    expectInput(prompt, QString());
    key(Qt::Key_G, Qt::ControlModifier);
    // Another station's, which this one hasn't read yet.
    anotherStation()->execute(u"INSERT INTO Customer (company) VALUES ('Zeta')"_s);
    expectInput(prompt, rows(u"SELECT Custid FROM Customer WHERE company = 'Zeta'"_s).value(0));
    key(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(company(), u"Zeta"_s);
}

TEST_P(Customer, AnotherStationsRowsShowOnActivation) {
    addThree();
    ASSERT_TRUE(openModule());
    key(Qt::Key_Left, Qt::AltModifier);
    screen::Forms::add(u"frmOther"_s, [] { return std::make_unique<Neighbour>(u"frmOther"_s); });
    screen::Forms::show(u"frmOther"_s);
    auto station = anotherStation();
    station->execute(u"UPDATE Customer SET City = 'Erie' WHERE company LIKE 'Baker*'"_s);
    station->execute(u"INSERT INTO Customer (company) VALUES ('Zeta')"_s);
    use(screen::Forms::show(u"frmCustomer"_s));
    EXPECT_EQ(company(), u"Baker Molds"_s) << "the same row";
    EXPECT_EQ(text(u"txtCity"_s), u"Erie"_s);
    choose(u"dbcCustomer"_s, u"Zeta"_s);
    EXPECT_EQ(company(), u"Zeta"_s);
}

TEST_P(Customer, TwoStationsChangeDifferentFieldsOfOneCustomer) {
    addThree();
    ASSERT_TRUE(openModule());
    press(u"cmdEdit"_s);
    const QString name = company();
    type(u"txtCity"_s, u"toledo"_s);
    anotherStation()->execute(u"UPDATE Customer SET Phone = '555-0199', City = 'Toledo'"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT City, Phone FROM Customer WHERE company = '"_s + values::quoted(name) +
                   u"'"_s),
              QStringList(u"toledo|555-0199"_s));
    press(u"cmdEdit"_s);
    type(u"txtCity"_s, u"Toledo"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(
        rows(u"SELECT City FROM Customer WHERE company = '"_s + values::quoted(name) + u"'"_s),
        QStringList(u"Toledo"_s))
        << "letters' case alone is a change";
}

TEST_P(Customer, ARowThatAnotherStationDeletedIsToldAndNothingTypedIsLost) {
    addThree();
    ASSERT_TRUE(openModule());
    auto station = anotherStation();
    press(u"cmdEdit"_s);
    type(u"txtCity"_s, u"Toledo"_s);
    station->execute(u"DELETE * FROM Customer WHERE company LIKE 'O*'"_s);
    expectBoxContaining(u"deleted by another user"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(mode(), u"EDIT"_s);
    EXPECT_EQ(text(u"txtCity"_s), u"Toledo"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(company(), u"Baker Molds"_s);

    station->execute(u"DELETE * FROM Customer WHERE company LIKE 'A*'"_s);
    key(Qt::Key_Left, Qt::AltModifier);
    if (company() == u"Acme Tools"_s) {
        // A server's rows are looked at again when one is about to be edited.
        expectBoxContaining(u"deleted by another user"_s);
        press(u"cmdEdit"_s);
        EXPECT_EQ(mode(), u"BROWSE"_s);
    }
    EXPECT_EQ(company(), u"Baker Molds"_s) << "moved onto the deleted row";
    station->execute(u"DELETE * FROM Customer"_s);
    expectBox(u"Once Deleted, Customer data will be unrecoverable.  Continue?"_s, Answer::Ok);
    expectBox(noRecords, Answer::No);
    press(u"cmdDelete"_s);
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
    press(u"cmdEdit"_s);
    press(u"cmdSave"_s);
    expectBox(u"Once Deleted, Customer data will be unrecoverable.  Continue?"_s, Answer::Ok);
    press(u"cmdDelete"_s);
    const QStringList twice{u"Customer"_s, u"Customer"_s};
    EXPECT_EQ(refreshed("frmJob"), twice);
    EXPECT_EQ(refreshed("frmHistory"), twice);
    EXPECT_TRUE(refreshed("frmVendor").isEmpty());
}

TEST_P(Customer, LongNotesAreEditedLargeAndOnlyWhileTheFieldTakesEntries) {
    add(u"Acme"_s);
    database().execute(u"UPDATE Customer SET QteRemark = 'old'"_s);
    ASSERT_TRUE(openModule());
    whenShown(u"frmQuoteRemarks"_s, [this] {
        EXPECT_TRUE(isLocked(u"txtRemarks"_s));
        EXPECT_FALSE(isEnabled(u"cmdOK"_s));
        press(u"cmdCancel"_s);
    });
    press(u"Command4"_s);
    press(u"cmdEdit"_s);
    whenShown(u"frmQuoteRemarks"_s, [this] {
        type(u"txtRemarks"_s, u"given up"_s);
        const QString keep = u"Would you like to keep what you changed?"_s;
        expectBox(keep, Answer::Cancel, {}, Buttons::YesNoCancel);
        key(Qt::Key_Escape);
        EXPECT_EQ(text(u"txtRemarks"_s), u"given up"_s);
        expectBox(keep, Answer::No);
        press(u"cmdCancel"_s);
    });
    press(u"Command4"_s);
    EXPECT_EQ(text(u"txtRemarks"_s), u"old"_s);
    whenShown(u"frmQuoteNotes"_s, [this] {
        type(u"txtNotes"_s, u"first\nsecond"_s);
        press(u"cmdOK"_s);
    });
    press(u"Command5"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(rows(u"SELECT OurNotes FROM Customer"_s), QStringList(u"first\r\nsecond"_s));
}

TEST_P(Customer, QuickReportNeedsADefault) {
    addThree();
    database().execute(u"DELETE * FROM Reports"_s);
    ASSERT_TRUE(openModule());
    for (const char* button : {"cmdPrintScr", "cmdPrintAll"}) {
        expectBoxContaining(u"You do not have a Default Report specified"_s);
        press(QString::fromLatin1(button));
    }
    EXPECT_FALSE(isEnabled(u"cmdList"_s)) << "its screen is not installed";
}

TEST_P(Customer, NothingIsClippedUnnamedOrClashing) {
    addThree();
    ASSERT_TRUE(openModule());
    whenShown(u"frmCustFind"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        whenShown(u"frmCustFound"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            press(u"cmdSelect"_s);
        });
        press(u"cmdFind"_s);
    });
    press(u"cmdFind"_s);
    EXPECT_EQ(company(), u"Acme Tools"_s) << "the first found";
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    press(u"cmdEdit"_s);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

MIRSA_BOTH_ENGINES(Customer);

} // namespace
