#include "inventory/Issue.h"
#include "inventory/Restock.h"
#include "platform/values/Literals.h"
#include "support/ShopFixture.h"

using namespace inventory;
using values::Currency;

namespace {

class Stock : public testsupport::ShopTest {
  protected:
    void prepare() override {
        m_type = saveFolder(database(), typeView(), 0, 0, u"Bolts"_s);
        m_location = saveFolder(database(), locationView(), 0, 0, u"Rack 1"_s);
        database().execute(u"INSERT INTO Employee (firstname, lastname, EmpStatus) VALUES "
                           "('Pat', 'Miller', 'Active')"_s);
        m_employee = database().lastCounter();
    }
    qint64 item(const QString& description, qint64 quantity, qint64 flag = 0) {
        Item made;
        made.description = description;
        made.partNumber = u"P-"_s + description;
        made.units = u"EA"_s;
        made.quantity = quantity;
        made.flagQuantity = flag;
        made.price = Currency::fromText(u"2.5");
        made.type = m_type;
        made.location = m_location;
        return addItem(database(), made);
    }
    Issue issueOf(qint64 itemId, qint64 quantity, qint64 jobNo = 7) const {
        return {itemId, quantity, m_employee, QDate(2026, 3, 2), jobNo, u"Job"_s};
    }
    Restock restockOf(qint64 itemId, qint64 quantity) const {
        Restock movement;
        movement.itemId = itemId;
        movement.quantity = quantity;
        movement.employee = m_employee;
        movement.date = QDate(2026, 3, 2);
        movement.type = u"Manual"_s;
        return movement;
    }
    qint64 stock(qint64 itemId) {
        return database().lookup(u"SELECT Quantity FROM Items WHERE ID="_s + n(itemId)).toLong();
    }
    static QString n(qint64 number) { return QString::number(number); }

    qint64 m_type = 0, m_location = 0, m_employee = 0;
};

TEST_P(Stock, FoldersKeepTheirNamesApartAndGoOnlyWhenEmpty) {
    jet::Database& db = database();
    const View& types = typeView();
    const qint64 steel = saveFolder(db, types, 0, m_type, u"Steel"_s);
    const qint64 m8 = saveFolder(db, types, 0, steel, u"M8 'fine'"_s);
    const qint64 brass = saveFolder(db, types, 0, m_type, u"Brass"_s);
    EXPECT_EQ(folderComplaint(db, types, 0, m_type, u" "_s), u"Please enter a description."_s);
    EXPECT_EQ(folderComplaint(db, types, 0, m_type, u"a\\b"_s),
              u"You may not use a '\\' character for the description."_s);
    EXPECT_EQ(folderComplaint(db, types, 0, m_type, u"STEEL"_s),
              u"A Sub-Type with this description already exists in this Type. "
              "Please specify another Sub-Type description."_s);
    EXPECT_EQ(folderComplaint(db, types, steel, m_type, u"Steel"_s), QString());
    EXPECT_EQ(folderComplaint(db, types, 0, brass, u"Steel"_s), QString()) << "cousins may";
    EXPECT_TRUE(folderComplaint(db, locationView(), 0, 0, u"Rack 1"_s).contains(u"Sub-Location"));

    const auto below = foldersIn(db, types, m_type);
    ASSERT_EQ(below.size(), 2U);
    EXPECT_EQ(below[0].description, u"Brass"_s);
    EXPECT_FALSE(below[0].hasFolders);
    EXPECT_TRUE(below[1].hasFolders);
    qint64 deep = m8;
    for (int level = 0; level < 9; ++level)
        deep = saveFolder(db, types, 0, deep, u"L"_s + n(level));
    EXPECT_EQ(pathText(pathTo(db, types, deep)),
              u"Bolts\\Steel\\M8 'fine'\\L0\\L1\\L2\\L3\\L4\\L5\\L6\\L7\\L8"_s);
    EXPECT_TRUE(pathTo(db, types, 0).empty());
    db.execute(u"UPDATE ItemTypes SET Parent="_s + n(deep) + u" WHERE ID="_s + n(m_type));
    EXPECT_EQ(pathTo(db, types, m8).size(), 12U) << "a ring ends";
    db.execute(u"UPDATE ItemTypes SET Parent=0 WHERE ID="_s + n(m_type));

    EXPECT_EQ(deleteRefusal(db, types, m8), u"Cannot delete a folder with sub-folders."_s);
    item(u"Nut"_s, 1);
    EXPECT_EQ(deleteRefusal(db, types, m_type), u"Cannot delete a folder with items."_s);
    EXPECT_EQ(deleteFolder(db, types, m8), std::nullopt);
    EXPECT_EQ(deleteFolder(db, types, brass), steel) << "the sibling before";
    EXPECT_EQ(deleteFolder(db, types, deep).value_or(0),
              pathTo(db, types, m8).empty() ? 0 : deep - 1)
        << "else the parent";
    EXPECT_EQ(rows(u"SELECT ID FROM ItemTypes WHERE ID="_s + n(deep)), QStringList());
}

TEST_P(Stock, ItemsAreCheckedInOrderFoundAndSavedByWhatChanged) {
    jet::Database& db = database();
    Item made;
    const auto complains = [&] { return checkItem(made) ? checkItem(made)->text : QString(); };
    EXPECT_EQ(complains(), u"Location may not be blank!"_s);
    made.location = m_location;
    EXPECT_EQ(complains(), u"Tool Type may not be blank!"_s);
    made.type = m_type;
    made.manufacturer = QString(256, u'x');
    EXPECT_EQ(complains(), u"Manufacturer may not be longer than 255 characters!"_s);
    made.manufacturer = u"O'Hara"_s;
    EXPECT_EQ(complains(), u"Description may not be blank!"_s);
    made.description = u"Hex bolt"_s;
    EXPECT_EQ(complains(), u"Units may not be blank!"_s);
    made.units = u"EA"_s;
    EXPECT_EQ(complains(), QString());
    made.quantity = 12;
    made.partNumber = u"HB-8*"_s;
    made.id = addItem(db, made);
    item(u"Nut"_s, 3, 5);

    ASSERT_EQ(itemsIn(db, typeView(), m_type).size(), 2U);
    EXPECT_EQ(itemsIn(db, locationView(), m_location)[0].texts(),
              QStringList({u"Hex bolt"_s, u"HB-8*"_s, u"O'Hara"_s, u"..\\Rack 1"_s, u"..\\Bolts"_s,
                           u"12 EA"_s}));
    EXPECT_EQ(findItems(db, u"X B"_s, u"hb"_s).size(), 1U);
    EXPECT_EQ(findItems(db, {}, {}).size(), 2U);
    EXPECT_EQ(findItems(db, u"bolt*"_s, u"nothing"_s).size(), 0U);
    ASSERT_EQ(flaggedItems(db).size(), 1U);
    EXPECT_EQ(flaggedItems(db)[0].item.description, u"Nut"_s);

    db.execute(u"UPDATE Items SET FlagQuantity=Null"_s);
    const Item before = *loadItem(db, made.id);
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Items WHERE FlagQuantity IS NULL"_s).first(), u"0"_s);
    // Another station issues meanwhile: what it didn't touch is saved, a typed quantity is not.
    EXPECT_EQ(issue(db, issueOf(made.id, 2)), Issued::Done);
    Item changed = before;
    changed.description = u"Hex bolt M8"_s;
    EXPECT_EQ(saveItem(db, changed, before), Saved::Done);
    EXPECT_EQ(stock(made.id), 10);
    changed.quantity = 40;
    EXPECT_EQ(saveItem(db, changed, before), Saved::StockChanged);
    EXPECT_EQ(stock(made.id), 10);
    EXPECT_EQ(saveItem(db, changed, *loadItem(db, made.id)), Saved::Done);
    EXPECT_EQ(stock(made.id), 40);
    deleteItem(db, made.id);
    EXPECT_EQ(saveItem(db, before, changed), Saved::Gone);
    EXPECT_EQ(rows(u"SELECT ID FROM ItemIssue"_s), QStringList()) << "history goes with it";
}

TEST_P(Stock, AnIssueTakesWhatIsThereAndPostsItsCost) {
    jet::Database& db = database();
    const qint64 nut = item(u"Nut"_s, 5);
    EXPECT_EQ(issue(db, issueOf(nut, 6)), Issued::NotEnough);
    EXPECT_EQ(issue(db, issueOf(nut, 5)), Issued::Done);
    EXPECT_EQ(issue(db, issueOf(nut, 1)), Issued::NotEnough);
    EXPECT_EQ(issue(db, issueOf(98765, 1)), Issued::Gone);
    EXPECT_EQ(rows(u"SELECT ItemID, Quantity, Employee, [Date], IssueTo, Type FROM ItemIssue"_s),
              QStringList(n(nut) + u"|5|"_s + n(m_employee) + u"|3/2/2026|7|Job"_s));
    const qint64 cost = addFixedCostItem(db, u"Nut"_s, u"EA"_s, Currency::fromText(u"2.5"));
    EXPECT_EQ(fixedCostItem(db, u"NUT"_s), cost);
    postFixedCost(db, 7, cost, u"EA"_s, Currency::fromText(u"2.5"), 5);
    // What the job holds keeps its own price.
    postFixedCost(db, 7, cost, u"EA"_s, Currency::fromText(u"9"), 3);
    EXPECT_EQ(rows(u"SELECT JobNo, ItemNo, Quantity, UnitPrice, CostAmount FROM JobMiscCost"_s),
              QStringList(u"7|"_s + n(cost) + u"|8|2.5|20"_s));
}

TEST_P(Stock, ReversalGivesBackAndStopsAtZero) {
    jet::Database& db = database();
    const qint64 nut = item(u"Nut"_s, 10);
    ASSERT_TRUE(restock(db, restockOf(nut, 20)));
    ASSERT_EQ(issue(db, issueOf(nut, 25)), Issued::Done);
    const qint64 cost = addFixedCostItem(db, u"Nut"_s, u"EA"_s, Currency::fromInteger(2));
    postFixedCost(db, 7, cost, u"EA"_s, Currency::fromInteger(2), 25);
    postFixedCost(db, 8, cost, u"EA"_s, Currency::fromInteger(2), 1);
    const auto [issued, stocked] = historyOf(db, nut);
    ASSERT_EQ(issued.size(), 1U);
    ASSERT_EQ(stocked.size(), 1U);
    EXPECT_EQ(issued[0].employee, u"Pat Miller"_s);
    // The goods have gone already: taking their receipt back stops at zero.
    reverse(db, {nut, {}, {stocked[0].id}, true, false});
    EXPECT_EQ(stock(nut), 0);
    // Twice the same row: the second time it isn't there.
    reverse(db, {nut, {issued[0].id}, {}, true, true});
    reverse(db, {nut, {issued[0].id}, {}, true, true});
    EXPECT_EQ(stock(nut), 25);
    EXPECT_EQ(rows(u"SELECT JobNo, Quantity FROM JobMiscCost ORDER BY JobNo"_s),
              QStringList({u"7|0"_s, u"8|-24"_s}));
    ASSERT_EQ(issue(db, issueOf(nut, 4)), Issued::Done);
    reverse(db, {nut, {historyOf(db, nut).issues[0].id}, {}, false, false});
    EXPECT_EQ(stock(nut), 21);
    EXPECT_TRUE(historyOf(db, nut).issues.empty());
}

TEST_P(Stock, TheHistorySaysWhoItWentToAndCameFrom) {
    jet::Database& db = database();
    const qint64 nut = item(u"Nut"_s, 100);
    db.execute(u"INSERT INTO Customer (Company) VALUES ('Fjord Marine')"_s);
    const QString customer = n(db.lastCounter());
    db.execute(u"INSERT INTO Job (CustID) VALUES ("_s + customer + u")"_s);
    const qint64 job = db.lastCounter();
    db.execute(u"INSERT INTO Operation (Description, OperType) VALUES ('Cleaning', 'O')"_s);
    const qint64 cleaning = db.lastCounter();
    db.execute(
        u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (31, 5, 'Brass Co')"_s);
    Issue out = issueOf(nut, 1, job);
    issue(db, out);
    out.type = u"Sales"_s;
    out.issueTo = customer.toLongLong();
    issue(db, out);
    out.type = u"OverHead"_s;
    out.issueTo = cleaning;
    issue(db, out);
    QStringList who;
    for (const Movement& row : historyOf(db, nut).issues)
        who << row.type + u' ' + row.company;
    EXPECT_EQ(who.join(u'|'), u"Job Fjord Marine|Sales Fjord Marine|OverHead Cleaning"_s);
    Restock in = restockOf(nut, 2);
    in.vendor = 5;
    restock(db, in);
    in.vendor = 6;
    restock(db, in);
    in.type = u"PO"_s;
    in.number = 31;
    restock(db, in);
    who.clear();
    for (const Movement& row : historyOf(db, nut).restocks)
        who << row.type + u' ' + row.company;
    EXPECT_EQ(who.join(u'|'), u"Manual Brass Co|Manual |PO Brass Co"_s);
}

MIRSA_BOTH_ENGINES(Stock);

} // namespace
