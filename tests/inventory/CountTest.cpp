#include "inventory/Issue.h"
#include "inventory/Restock.h"
#include "inventory/Screens.h"
#include "inventory/StockCount.h"
#include "inventory/StockOverTime.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

using namespace inventory;
using screen::Answer;

namespace {

const QDate today(2026, 3, 2);

TEST(StockSeries, IsReckonedBackFromTodayAndNeverBelowZero) {
    using Points = std::vector<StockPoint>;
    EXPECT_EQ(stockSeries(7, {}, today), Points({{today, 7}}));
    EXPECT_EQ(stockSeries(7, {{today.addDays(-9), 10}, {today.addDays(-2), -3}}, today),
              Points({{today.addDays(-10), 0},
                      {today.addDays(-9), 10},
                      {today.addDays(-2), 7},
                      {today, 7}}));
    EXPECT_EQ(stockSeries(2, {{today, 5}}, today), Points({{today.addDays(-1), 0}, {today, 2}}))
        << "corrected by hand meanwhile";
}

class Counting : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(today, QTime(9, 0)));
        registerScreens();
        m_type = saveFolder(database(), typeView(), 0, 0, u"Bolts"_s);
        m_room = saveFolder(database(), locationView(), 0, 0, u"Room"_s);
        m_rack = saveFolder(database(), locationView(), 0, m_room, u"Rack 1"_s);
        run(u"INSERT INTO UnitOfMeasure (code) VALUES ('EA')"_s);
        m_pat = run(u"INSERT INTO Employee (firstname, lastname, EmpStatus) VALUES ('Pat', "
                    "'Miller', 'Active')"_s);
        m_bolt = item(u"Bolt"_s, m_room, 20);
        m_nut = item(u"Nut"_s, m_rack, 5);
        item(u"Elsewhere"_s, saveFolder(database(), locationView(), 0, 0, u"Yard"_s), 5);
    }
    qint64 run(const QString& insert) {
        database().execute(insert);
        return database().lastCounter();
    }
    qint64 item(const QString& description, qint64 location, qint64 quantity) {
        Item made;
        made.description = made.partNumber = description;
        made.units = u"EA"_s;
        made.quantity = quantity;
        made.flagQuantity = 8;
        made.type = m_type;
        made.location = location;
        return addItem(database(), made);
    }
    QStringList stock() { return rows(u"SELECT Quantity FROM Items ORDER BY ID"_s); }

    qint64 m_type = 0, m_room = 0, m_rack = 0, m_pat = 0, m_bolt = 0, m_nut = 0;
};

TEST_P(Counting, DifferencesArePostedTogetherOrNotAtAll) {
    jet::Database& db = database();
    const auto folders = countFolders(db, m_room);
    EXPECT_EQ(folders, (std::vector<qint64>{m_room, m_rack}));
    auto lines = countSheet(db, folders);
    ASSERT_EQ(lines.size(), 2U);
    auto& nut = lines[0].itemId == m_nut ? lines[0] : lines[1];
    auto& bolt = lines[0].itemId == m_bolt ? lines[0] : lines[1];
    bolt.counted = 17;
    nut.counted = 9;
    // Another station issues after the sheet was read.
    ASSERT_EQ(issue(*anotherStation(), {m_nut, 1, m_pat, today, 7, u"Job"_s}), Issued::Done);
    auto changed = postCount(db, lines, m_pat, today);
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_EQ(changed[0].itemId, m_nut);
    EXPECT_EQ(changed[0].stock, 4);
    EXPECT_EQ(stock(), QStringList({u"20"_s, u"4"_s, u"5"_s})) << "nothing was posted";
    nut.stock = 4;
    const quint64 before = db.waits();
    EXPECT_TRUE(postCount(db, lines, m_pat, today).empty());
    EXPECT_LE(db.waits() - before, 3U);
    EXPECT_EQ(stock(), QStringList({u"17"_s, u"9"_s, u"5"_s}));
    const QString who = u"|%1|3/2/2026|Count"_s.arg(m_pat);
    EXPECT_EQ(rows(u"SELECT ItemID, Quantity, Employee, [Date], Type FROM ItemIssue WHERE Type = "
                   "'Count'"_s),
              QStringList(u"%1|3"_s.arg(m_bolt) + who));
    EXPECT_EQ(rows(u"SELECT ItemID, Quantity, Employee, [Date], Type FROM ItemReStock"_s),
              QStringList(u"%1|5"_s.arg(m_nut) + who));
    lines = countSheet(db, folders);
    lines[0].counted = 1;
    db.execute(u"DELETE * FROM Items WHERE ID = "_s + QString::number(lines[0].itemId));
    changed = postCount(db, lines, m_pat, today);
    ASSERT_EQ(changed.size(), 1U);
    EXPECT_FALSE(changed[0].stock.has_value()) << "gone";
}

TEST_P(Counting, TheSheetIsTypedDownTheGridAndKeptUntilPosted) {
    open(u"frmInventory"_s);
    press(u"Toolbar1"_s);
    go(u"tvMain"_s);
    key(Qt::Key_Down);
    press(u"cmdCount"_s);
    use(screen::Forms::find(u"frmItemCount"_s));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    EXPECT_EQ(text(u"txtLocation"_s), u"Room"_s);
    ASSERT_EQ(rowCount(u"sprCount"_s), 2);
    const QString system = u"System Message"_s;
    expectBox(u"Please enter what you have counted."_s, Answer::Ok, system);
    press(u"cmdPost"_s);
    clickCell(u"sprCount"_s, 0, 6);
    typeOn(u"3\n"_s);
    typeOn(u"20\n"_s);
    EXPECT_EQ(cell(u"sprCount"_s, 0, 7) + u'|' + cell(u"sprCount"_s, 1, 7),
              cell(u"sprCount"_s, 0, 1) == u"Nut" ? u"-2|0"_s : u"-17|15"_s);
    EXPECT_TRUE(text(u"lblSum"_s).contains(u"2 counted"));
    expectBox(u"Employee field cannot be blank."_s, Answer::Ok, system);
    press(u"cmdPost"_s);
    type(u"dbcEmployee"_s, u"Miller, Pat"_s);
    // Closing doesn't lose it, and another count doesn't replace it.
    expectBox(u"Would you like to keep what you changed?"_s, Answer::Cancel);
    press(u"cmdClose"_s);
    use(screen::Forms::find(u"frmInventory"_s));
    press(u"cmdCount"_s);
    use(screen::Forms::find(u"frmItemCount"_s));
    EXPECT_TRUE(text(u"lblSum"_s).contains(u"2 counted"));
    ASSERT_EQ(issue(*anotherStation(), {m_nut, 1, m_pat, today, 7, u"Job"_s}), Issued::Done);
    expectBoxContaining(u"Nut: 4 instead of 5"_s);
    press(u"cmdPost"_s);
    expectBox(u"The corrections have been posted."_s, Answer::Ok, system);
    press(u"cmdPost"_s);
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Items WHERE Quantity IN (3, 20)"_s), QStringList(u"2"_s));
    press(u"cmdClose"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmItemCount"_s));
}

TEST_P(Counting, BesideAnItemStandsWhatMovedAndWhatIsOnOrder) {
    jet::Database& db = database();
    restock(db, {m_bolt, 5, m_pat, today.addDays(-4), u"Manual"_s, 0, 0});
    issue(db, {m_bolt, 2, m_pat, today.addDays(-1), 7, u"Job"_s});
    const auto order = [&](bool active, qint64 received, const QString& part) {
        const qint64 po = run(u"INSERT INTO PO (Active, ReqDate) VALUES (%1, #4/1/2026#)"_s.arg(
            active ? u"True"_s : u"False"_s));
        run(u"INSERT INTO POVendor (OrderNumber, Company) VALUES (%1, 'Brass')"_s.arg(po));
        run(u"INSERT INTO POItem (PONumber, ItemNumber, PartNumber, Description, Quantity, "
            "ReceivedQuantity) VALUES (%1, 1, '%2', 'Bolt', 50, %3)"_s.arg(po)
                .arg(part)
                .arg(received));
        return po;
    };
    const qint64 open = order(true, 20, u"bolt"_s);
    order(true, 50, u"Bolt"_s);
    order(false, 0, u"Bolt"_s);
    order(true, 0, u"Nut"_s);
    const quint64 before = db.waits();
    const auto item = *loadItem(db, m_bolt);
    const auto outlook = stockOutlook(db, item);
    EXPECT_LE(db.waits() - before, 2U);
    EXPECT_EQ(outlook.series, (std::vector<StockPoint>{{today.addDays(-5), 20},
                                                       {today.addDays(-4), 25},
                                                       {today.addDays(-1), 23},
                                                       {today, 23}}));
    ASSERT_EQ(outlook.orders.size(), 1U);
    EXPECT_EQ(outlook.orders[0].poNumber, open);
    EXPECT_EQ(outlook.orders[0].quantity, 30);
    this->open(u"frmInventory"_s);
    press(u"Toolbar1"_s);
    go(u"tvMain"_s);
    key(Qt::Key_Down);
    selectRow(u"lvMain"_s, 1);
    whenShown(u"frmItemNewEdit"_s, [&, this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(text(u"lblOnOrder"_s), u"On order: 30 EA"_s);
        EXPECT_EQ(cells(u"sprOnOrder"_s), QStringList(u"%1|Brass|4/1/2026|30"_s.arg(open)));
        EXPECT_TRUE(control(u"picStock"_s)
                        ->accessibleDescription()
                        .startsWith(u"23 now, the least was 20"_s));
        press(u"cmdCancel"_s);
    });
    press(u"cmdEdit"_s);
}

MIRSA_BOTH_ENGINES(Counting);

} // namespace
