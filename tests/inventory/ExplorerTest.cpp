#include "core/Shell.h"
#include "core/papers/PaperScreen.h"
#include "core/papers/Papers.h"
#include "inventory/Issue.h"
#include "inventory/Screens.h"
#include "platform/controls/ListView.h"
#include "platform/controls/Tree.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include <QTest>

using namespace inventory;
using screen::Answer;
using screen::Icon;

namespace {

const QString system = u"System Message"_s;

class Explorers : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        registerScreens();
        jet::Database& db = database();
        m_hardware = saveFolder(db, typeView(), 0, 0, u"Hardware"_s);
        m_bolts = saveFolder(db, typeView(), 0, m_hardware, u"Bolts"_s);
        saveFolder(db, typeView(), 0, 0, u"Steel"_s);
        m_room = saveFolder(db, locationView(), 0, 0, u"Stock room"_s);
        m_rack = saveFolder(db, locationView(), 0, m_room, u"Rack 1"_s);
        db.execute(u"INSERT INTO UnitOfMeasure (code, description) VALUES ('EA', 'Each')"_s);
        m_bolt = item(u"Hex bolt"_s, 20, 15);
        m_nut = item(u"Nut"_s, 5, 0);
        open(u"frmInventory"_s);
    }
    qint64 item(const QString& description, qint64 quantity, qint64 flag) {
        Item made;
        made.description = description;
        made.partNumber = u"P-"_s + description.left(3);
        made.units = u"EA"_s;
        made.quantity = quantity;
        made.flagQuantity = flag;
        made.price = values::Currency::fromText(u"1.25");
        made.type = m_bolts;
        made.location = m_rack;
        return addItem(database(), made);
    }
    controls::Tree* tree() const { return control<controls::Tree>(u"tvMain"_s); }
    controls::ListView* list() const { return control<controls::ListView>(u"lvMain"_s); }
    QStringList shown() const {
        QStringList texts;
        for (int row = 0; row < list()->rowCount(); ++row)
            texts << list()->rowText(row, 0);
        return texts;
    }
    void goToBolts() {
        go(u"tvMain"_s);
        key(Qt::Key_Down);
        key(Qt::Key_Right);
        key(Qt::Key_Down);
    }
    static QString n(qint64 number) { return QString::number(number); }

    qint64 m_hardware = 0, m_bolts = 0, m_room = 0, m_rack = 0, m_bolt = 0, m_nut = 0;
};

TEST_P(Explorers, FoldersOpenByKeysAndTheViewKeepsTheItemInSight) {
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    EXPECT_EQ(tree()->textOf(u"x0"_s), u"Item Types"_s);
    EXPECT_EQ(shown(), QStringList({u"Hardware"_s, u"Steel"_s}));
    goToBolts();
    EXPECT_EQ(tree()->selectedKey(), u"C"_s + n(m_bolts));
    EXPECT_EQ(cells(u"lvMain"_s).first(), u"Hex bolt|P-Hex||..\\Rack 1|..\\Bolts|20 EA"_s);
    EXPECT_EQ(text(u"txtObjCount"_s), u"2 object(s)"_s);
    selectRow(u"lvMain"_s, 1);
    press(u"Toolbar1"_s);
    EXPECT_EQ(tree()->textOf(u"x0"_s), u"Item Locations"_s);
    EXPECT_EQ(tree()->selectedKey(), u"C"_s + n(m_rack));
    EXPECT_EQ(list()->selectedKey(), u"i"_s + n(m_nut));
    // A folder in the list opens with a double click or Enter.
    tree()->selectNode(u"x0"_s);
    go(u"tvMain"_s);
    key(Qt::Key_Home);
    key(Qt::Key_Down);
    key(Qt::Key_Home);
    EXPECT_EQ(shown(), QStringList(u"Stock room"_s));
    doubleClickRow(u"lvMain"_s, 0);
    EXPECT_EQ(tree()->selectedKey(), u"C"_s + n(m_room));
    EXPECT_EQ(shown(), QStringList(u"Rack 1"_s));
}

TEST_P(Explorers, PapersOfTheItemAreCountedBesideAllWaits) {
    const core::PaperKind& kind = *core::paperKind(u"Item"_s);
    core::addPapers(database(), kind, m_bolt,
                    {{u"a.pdf"_s, {u"aa"_s, 1}}, {u"b.pdf"_s, {u"bb"_s, 1}}}, u"Ann"_s);
    const auto counts = [this](int papers) {
        return QTest::qWaitFor([&] { return form().property(core::papersProperty) == papers; });
    };
    goToBolts();
    EXPECT_TRUE(counts(2)) << "the first one is chosen";
    go(u"lvMain"_s);
    const quint64 waits = database().waits();
    key(Qt::Key_Down);
    EXPECT_TRUE(counts(0));
    key(Qt::Key_Up);
    EXPECT_TRUE(counts(2));
    EXPECT_EQ(database().waits(), waits);
}

TEST_P(Explorers, FoldersAreMadeRenamedAndDeletedWithEveryCheckInItsOrder) {
    goToBolts();
    whenShown(u"frmItemTypeNewEdit"_s, [this] {
        EXPECT_EQ(form().windowTitle(), u"New Item Type in Bolts"_s);
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(u"Please enter a description."_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"txtType"_s, u"M8\\'fine'"_s);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(text(u"txtType"_s), QString());
        expectBoxContaining(u"A Sub-Type with this description already exists"_s);
        type(u"txtType"_s, u"m8FINE"_s);
        press(u"cmdOK"_s);
        press(u"cmdCancel"_s);
    });
    pickFromMenu(u"tvMain"_s, u"New Type"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(shown(), QStringList({u"Hex bolt"_s, u"Nut"_s, u"M8fine"_s}));
    const QString made = tree()->childrenOf(u"C"_s + n(m_bolts)).value(0);
    EXPECT_EQ(tree()->textOf(made), u"M8fine"_s);
    whenShown(u"frmItemTypeNewEdit"_s, [this] {
        EXPECT_EQ(form().windowTitle(), u"Edit Item Type"_s);
        type(u"txtType"_s, u"Metric"_s);
        press(u"cmdOK"_s);
    });
    list()->selectKey(u"f"_s + made.mid(1));
    pickFromMenu(u"lvMain"_s, u"Edit Type"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(tree()->textOf(made), u"Metric"_s);
    EXPECT_EQ(list()->rowText(2, 0), u"Metric"_s);
    expectBox(u"Delete folder Metric?"_s, Answer::Ok, system);
    pickFromMenu(u"lvMain"_s, u"Delete Type"_s);
    EXPECT_FALSE(tree()->hasNode(made));
    go(u"tvMain"_s);
    expectBox(u"Cannot delete a folder with items."_s, Answer::Ok, system);
    pickFromMenu(u"tvMain"_s, u"Delete Type"_s);
    go(u"tvMain"_s);
    key(Qt::Key_Left);
    EXPECT_EQ(tree()->selectedKey(), u"C"_s + n(m_hardware));
    expectBox(u"Cannot delete a folder with sub-folders."_s, Answer::Ok, system);
    pickFromMenu(u"tvMain"_s, u"Delete Type"_s);
    go(u"tvMain"_s);
    key(Qt::Key_Home);
    expectBox(u"Cannot delete the root."_s, Answer::Ok, system);
    pickFromMenu(u"tvMain"_s, u"Delete Type"_s);
    expectBox(u"Inventory Items cannot be assigned to the root type or location."_s, Answer::Ok,
              system);
    pickFromMenu(u"tvMain"_s, u"New Item"_s);
}

TEST_P(Explorers, ItemsAreMadeChangedAndDeleted) {
    goToBolts();
    whenShown(u"frmItemNewEdit"_s, [this] {
        EXPECT_EQ(form().windowTitle(), u"New Item"_s);
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(text(u"txtType"_s), u"Hardware\\Bolts"_s);
        expectBox(u"Location may not be blank!"_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        whenShown(u"frmItemTreeSelect"_s, [this] {
            key(Qt::Key_Down);
            key(Qt::Key_Right);
            key(Qt::Key_Down);
            press(u"cmdSelect"_s);
        });
        press(u"cmdTreeLoc"_s);
        use(screen::Forms::find(u"frmItemNewEdit"_s));
        EXPECT_EQ(text(u"txtLocation"_s), u"Stock room\\Rack 1"_s);
        expectBox(u"Description may not be blank!"_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"Washer"_s);
        type(u"fpQuantity"_s, u"7"_s);
        type(u"fpCost"_s, u"0.125"_s);
        type(u"dbcUnits"_s, u"EA"_s);
        check(u"chkFlag"_s);
        type(u"txtFlagQuantity"_s, u"9"_s);
        check(u"chkFixedCost"_s);
        press(u"cmdOK"_s);
    });
    pickFromMenu(u"lvMain"_s, u"New Item"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(shown().last(), u"Washer"_s);
    EXPECT_EQ(rows(u"SELECT Quantity, PricePer, FlagQuantity, Type, Location FROM Items WHERE "
                   "Description='Washer'"_s),
              QStringList(u"7|0.125|9|%1|%2"_s.arg(m_bolts).arg(m_rack)));
    EXPECT_EQ(rows(u"SELECT Description, UnitOfMeasure, UnitPrice FROM MiscItems WHERE "
                   "Description='Washer'"_s),
              QStringList(u"Washer|EA|0.125"_s));
    // While one is being edited another station issues from it.
    selectRow(u"lvMain"_s, 0);
    whenShown(u"frmItemNewEdit"_s, [this] {
        EXPECT_EQ(form().windowTitle(), u"Edit Item"_s);
        issue(*anotherStation(), {m_bolt, 4, 1, QDate(2026, 3, 2), 7, u"Job"_s});
        type(u"fpQuantity"_s, u"30"_s);
        expectBoxContaining(u"has changed from 20 to 16"_s);
        press(u"cmdOK"_s);
        EXPECT_EQ(text(u"fpQuantity"_s), u"30"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->rowText(0, 5), u"30 EA"_s);
    EXPECT_EQ(list()->selectedKey(), u"i"_s + n(m_bolt));
    expectBox(u"Delete Hex bolt?"_s, Answer::Cancel, system);
    press(u"cmdDelete"_s);
    expectBox(u"Delete Hex bolt?"_s, Answer::Ok, system);
    press(u"cmdDelete"_s);
    EXPECT_EQ(shown(), QStringList({u"Nut"_s, u"Washer"_s}));
    EXPECT_EQ(rows(u"SELECT ID FROM ItemIssue"_s), QStringList());
}

TEST_P(Explorers, StockIsIssuedStockedAndTakenBack) {
    database().execute(u"INSERT INTO Employee (firstname, lastname, EmpStatus) VALUES "
                       "('Pat', 'Miller', 'Active')"_s);
    database().execute(u"INSERT INTO Vendor (Company) VALUES ('Brass Co')"_s);
    database().execute(u"INSERT INTO Job (CustID, Shipped) VALUES (1, False)"_s);
    const QString job = n(database().lastCounter());
    expectBox(u"Please select an item to issue."_s, Answer::Ok, system);
    press(u"cmdIssue"_s);
    goToBolts();
    selectRow(u"lvMain"_s, 0);
    whenShown(u"frmItemIssueInv"_s, [this, job] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        const auto refused = [this](const QString& message) {
            expectBox(message, Answer::Ok, system, {}, Icon::Critical);
            press(u"cmdOK"_s);
        };
        refused(u"Employee field cannot be blank."_s);
        type(u"dbcEmployee"_s, u"Miller,Pat"_s);
        refused(u"Issue type must be specified."_s);
        choose(u"cboIssueType"_s, u"Job"_s);
        refused(u"Issue information must be specified."_s);
        type(u"dbcInfo"_s, job);
        refused(u"Quantity must be specified."_s);
        type(u"txtQuantity"_s, u"21"_s);
        refused(u"Issue quantity cannot be larger than item inventory quantity."_s);
        type(u"txtQuantity"_s, u"6.9"_s);
        check(u"chkFixedCost"_s);
        expectBox(u"Inventory Item is not an Item in the Fixed Cost Table. Create a new Fixed "
                  "Cost Item?"_s,
                  Answer::Ok, system);
        press(u"cmdOK"_s);
    });
    press(u"cmdIssue"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->rowText(0, 5), u"14 EA"_s);
    EXPECT_EQ(list()->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
              u"Item below its minimum Hex bolt"_s);
    EXPECT_EQ(rows(u"SELECT JobNo, Quantity, CostAmount FROM JobMiscCost"_s),
              QStringList(job + u"|6|7.5"_s));
    whenShown(u"frmItemReStock"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(u"Please specify the stocking employee."_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"dbcEmployee"_s, u"Miller, Pat"_s);
        whenShown(u"frmItemReStockSelected"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            expectBox(u"Vendor must be specified."_s, Answer::Ok, system);
            press(u"cmdOK"_s);
            type(u"dbcVendor"_s, u"Brass Co"_s);
            type(u"txtQuantity"_s, u"3"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdOK"_s);
    });
    press(u"cmdReStock"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->rowText(0, 5), u"17 EA"_s);
    whenShown(u"frmItemActivity"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(text(u"lblIssue"_s), u"1 Issue Record Found"_s);
        EXPECT_EQ(text(u"lblStock"_s), u"1 Stock Record Found"_s);
        expectBox(u"No Records Selected!"_s, Answer::Ok, system);
        press(u"cmdDelete"_s);
        clickCell(u"sprIssue"_s, 0, 0);
        press(u"cmdDelete"_s);
        check(u"chkQuantity"_s);
        press(u"cmdSave"_s);
    });
    press(u"cmdActivity"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->rowText(0, 5), u"23 EA"_s);
    EXPECT_EQ(list()->model()->index(0, 0).data(Qt::AccessibleTextRole).toString(),
              u"Item Hex bolt"_s);
}

TEST_P(Explorers, FindAndTheFlaggedListGoToTheItem) {
    whenShown(u"frmItemFind"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(u"No Records satisfy your Criteria!"_s, Answer::Ok, u"No Records Found"_s);
        type(u"txtDescription"_s, u"zzz"_s);
        press(u"cmdFind"_s);
        EXPECT_FALSE(isEnabled(u"cmdGoto"_s) || isEnabled(u"cmdQuery"_s));
        type(u"txtDescription"_s, u"u"_s);
        press(u"cmdFind"_s);
        EXPECT_EQ(text(u"txtCount"_s), u"1 Item Record Found."_s);
        press(u"cmdQuery"_s);
    });
    press(u"cmdFind"_s);
    screen::Form* results = screen::Forms::find(u"frmReportAllItemsQresults"_s);
    ASSERT_TRUE(results);
    use(results);
    EXPECT_EQ(rowCount(u"sprItemFound"_s), 1);
    results->unload();
    use(screen::Forms::find(u"frmInventory"_s));
    whenShown(u"frmItemFind"_s, [this] {
        type(u"txtDescription"_s, u"u"_s);
        press(u"cmdFind"_s);
        press(u"cmdGoto"_s);
    });
    press(u"cmdFind"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->selectedKey(), u"i"_s + n(m_nut));
    EXPECT_EQ(tree()->selectedKey(), u"C"_s + n(m_bolts));
    database().execute(u"UPDATE Items SET Quantity=3 WHERE ID="_s + n(m_bolt));
    whenShown(u"frmItemFlagged"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(cells(u"vaSpread1"_s),
                  QStringList(u"Hex bolt|P-Hex||..\\Rack 1|..\\Bolts|3 EA|15"_s));
        press(u"cmdGoto"_s);
    });
    press(u"cmdFlag"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    EXPECT_EQ(list()->selectedKey(), u"i"_s + n(m_bolt));
}

MIRSA_BOTH_ENGINES(Explorers);

} // namespace
