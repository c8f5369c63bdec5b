#include "core/records/RecordScreen.h"
#include "inventory/CopyWork.h"
#include "inventory/Ordering.h"
#include "inventory/Restock.h"
#include "inventory/Screens.h"
#include "inventory/StockQuery.h"
#include "jobs/Screens.h"
#include "platform/controls/DataCombo.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

using namespace inventory;
using screen::Answer;

namespace {

const QString system = u"System Message"_s;

class FromStock : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        registerScreens();
        m_type = saveFolder(database(), typeView(), 0, 0, u"Bolts"_s);
        m_location = saveFolder(database(), locationView(), 0, 0, u"Rack 1"_s);
        run(u"INSERT INTO UnitOfMeasure (code, description) VALUES ('EA', 'Each')"_s);
        m_employee = run(u"INSERT INTO Employee (firstname, lastname, EmpStatus) VALUES "
                         "('Pat', 'Miller', 'Active')"_s);
        m_vendor = run(u"INSERT INTO Vendor (Company, Address1, City, Terms, OurNotes) VALUES "
                       "('O''Brass', 'Dock 4', 'Leith', 'Net 30', 'ring first')"_s);
        m_bolt = item(u"Hex bolt"_s, u"P-1"_s, 5, 20);
    }
    qint64 run(const QString& insert) {
        database().execute(insert);
        return database().lastCounter();
    }
    qint64 item(const QString& description, const QString& part, qint64 quantity, qint64 flag = 0) {
        Item made;
        made.description = description;
        made.partNumber = part;
        made.manufacturer = u"Forge"_s;
        made.units = u"EA"_s;
        made.quantity = quantity;
        made.flagQuantity = flag;
        made.price = values::Currency::fromText(u"1.25");
        made.type = m_type;
        made.location = m_location;
        return addItem(database(), made);
    }
    qint64 orderLine(qint64 po, const QString& part, const QString& description, qint64 received) {
        return run(u"INSERT INTO POItem (ItemKey, PONumber, ItemNumber, PartNumber, Description, "
                   "Quantity, ReceivedQuantity, UnitPrice, UnitOfMeasure, Manufacturer) VALUES "
                   "('k', %1, 1, '%2', '%3', 50, %4, 2.5, 'EA', 'Forge')"_s.arg(po)
                       .arg(part, description)
                       .arg(received));
    }
    QString stock(qint64 id) {
        return rows(u"SELECT Quantity FROM Items WHERE ID="_s + QString::number(id)).value(0);
    }
    void openAtItems() {
        open(u"frmInventory"_s);
        go(u"tvMain"_s);
        key(Qt::Key_Down);
        selectRow(u"lvMain"_s, 0);
    }
    void back() { use(screen::Forms::find(u"frmInventory"_s)); }

    qint64 m_type = 0, m_location = 0, m_employee = 0, m_vendor = 0, m_bolt = 0;
};

TEST_P(FromStock, AnItemIsOrderedAnewAndOntoAnOrderThatTurnsActive) {
    const qint64 shipped = run(u"INSERT INTO Job (CustID, Shipped) VALUES (1, True)"_s);
    const qint64 job = run(u"INSERT INTO Job (CustID, Shipped) VALUES (1, False)"_s);
    openAtItems();
    whenShown(u"frmItemFlagged"_s, [this] {
        whenShown(u"frmItemOrder"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            EXPECT_EQ(text(u"txtQuantity"_s), u"15"_s) << "up to the minimum";
            const auto refused = [this](const QString& message) {
                expectBox(message, Answer::Ok, system);
                press(u"cmdOK"_s);
            };
            refused(u"Please select a vendor."_s);
            type(u"dbcVendor"_s, u"O'Brass"_s);
            type(u"txtQuantity"_s, u"0"_s);
            refused(u"Please enter a quantity."_s);
            type(u"txtQuantity"_s, u"4"_s);
            refused(u"Please choose an item type."_s);
            choose(u"cboType"_s, u"Estimate"_s);
            refused(u"Estimate number cannot be blank."_s);
            choose(u"cboType"_s, u"Stock"_s);
            EXPECT_FALSE(isVisible(u"dbcNumber"_s));
            type(u"txtReqDate"_s, u"4/5/2026"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdOrder"_s);
        use(screen::Forms::find(u"frmItemFlagged"_s));
        press(u"cmdClose"_s);
    });
    press(u"cmdFlag"_s);
    back();
    EXPECT_EQ(rows(u"SELECT Title, PODate, ReqDate, Active, Ship2Name FROM PO"_s),
              QStringList(u"Hex bolt|3/2/2026|4/5/2026|True|"_s));
    const QString po = rows(u"SELECT PONumber FROM PO"_s).value(0);
    EXPECT_EQ(rows(u"SELECT OrderNumber, VendorID, Company, MailAddress1, MailCity, Terms, Notes "
                   "FROM POVendor"_s),
              QStringList(u"%1|%2|O'Brass|Dock 4|Leith|Net 30|ring first"_s.arg(po).arg(m_vendor)));
    database().execute(u"UPDATE PO SET Active = False"_s);
    whenShown(u"frmItemOrder"_s, [this, po, job, shipped] {
        check(u"Option2"_s);
        expectBox(u"Please select a PO."_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"dbcPONo"_s, u"9999"_s);
        type(u"txtQuantity2"_s, u"2"_s);
        choose(u"cboType2"_s, u"Job"_s);
        type(u"dbcNumber2"_s, QString::number(job));
        EXPECT_EQ(control<controls::DataCombo>(u"dbcNumber2"_s)->findText(QString::number(shipped)),
                  -1);
        expectBox(u"PO Number 9999 not found!"_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"dbcPONo"_s, po);
        press(u"cmdOK"_s);
    });
    press(u"cmdOrder"_s);
    EXPECT_EQ(rows(u"SELECT Active FROM PO"_s), QStringList(u"True"_s));
    EXPECT_EQ(rows(u"SELECT ItemKey, ItemNumber, Quantity, ReceivedQuantity, PartNumber, Type, "
                   "UnitPrice, ItemTotal, Estimate, Job, UnitOfMeasure, Manufacturer FROM POItem "
                   "ORDER BY ItemNumber"_s),
              QStringList({po + u"-1|1|4|0|P-1|Stock|1.25|5|0|0|EA|Forge"_s,
                           po + u"-2|2|2|0|P-1|Job|1.25|2.5|0|%1|EA|Forge"_s.arg(job)}));
    // What can't be done leaves nothing behind.
    StockOrder tooMuch{*loadItem(database(), m_bolt), 999'999'999, u"Stock"_s, 0};
    tooMuch.item.price = values::Currency::fromInteger(900'000'000);
    EXPECT_THROW(orderNew(database(), tooMuch, m_vendor, {}), values::Overflow);
    tooMuch.item.price = {};
    EXPECT_EQ(orderNew(database(), tooMuch, 98765, {}), 0);
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM PO"_s), QStringList(u"1"_s));
    database().execute(u"UPDATE Items SET PartNumber = ''"_s);
    expectBox(u"An Item must have both a description and a part number to be ordered."_s,
              Answer::Ok, system);
    press(u"cmdOrder"_s);
}

TEST_P(FromStock, WhatAnOrderBroughtIsStockedLineByLine) {
    const qint64 twin = item(u"Nut"_s, u"P-2"_s, 1);
    item(u"Nut"_s, u"P-2"_s, 1);
    orderLine(31, u"p-1"_s, u"Hex BOLT"_s, 6);
    orderLine(31, u"P-2"_s, u"Nut"_s, 3);
    orderLine(31, u"P-9"_s, u"Pin"_s, 8);
    orderLine(31, u"P-1"_s, u"Hex bolt"_s, 2);
    orderLine(31, u"P-8"_s, u"Not come"_s, 0);
    run(u"INSERT INTO POReceived (ItemID, PONumber, QtyRecvd) VALUES (1, 31, 6)"_s);
    run(u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (31, 77, 'Brass')"_s);
    openAtItems();
    whenShown(u"frmItemReStock"_s, [this] {
        type(u"dbcEmployee"_s, u"Miller, Pat"_s);
        check(u"Option2"_s);
        expectBox(u"Please select a PO Number."_s, Answer::Ok, system);
        press(u"cmdOK"_s);
        type(u"dbcPONo"_s, u"31"_s);
        whenShown(u"frmItemReStockPO"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            EXPECT_EQ(rowCount(u"vaSpread1"_s), 4);
            expectBox(u"No Records Selected."_s, Answer::Ok, u"Nothing Selected"_s);
            press(u"cmdOK"_s);
            press(u"cmdSelAll"_s);
            setCell(u"vaSpread1"_s, 0, 3, u"0"_s);
            expectBox(u"Please enter how many of part number p-1 are to be stocked."_s);
            press(u"cmdOK"_s);
            setCell(u"vaSpread1"_s, 0, 3, u"10"_s);
            expectBoxContaining(u"Multiple Inventory items were found"_s);
            whenShown(u"frmItemReStockPOMulti"_s, [this] {
                clickCell(u"sprItems"_s, 1, 0);
                press(u"cmdSelect"_s);
            });
            expectBox(u"Part number P-9 is not an existing inventory item. Create?"_s, Answer::Ok,
                      system);
            whenShown(u"frmItemReStockCreate"_s, [this] {
                EXPECT_EQ(testsupport::gallery(form()), QStringList());
                EXPECT_EQ(text(u"fpQuantity"_s), u"8"_s);
                type(u"txtPartNumber"_s, {});
                type(u"txtDescription"_s, {});
                const auto refused = [this](const QString& message) {
                    expectBox(message, Answer::Ok, system);
                    press(u"cmdOK"_s);
                };
                refused(u"Description may not be blank!"_s);
                type(u"txtDescription"_s, u"Pin"_s);
                refused(u"Part Number may not be blank!"_s);
                type(u"txtPartNumber"_s, u"P-9"_s);
                refused(u"Location may not be blank!"_s);
                for (const auto* button : {u"cmdTreeLoc", u"cmdTreeType"}) {
                    whenShown(u"frmItemTreeSelect"_s, [this] {
                        go(u"tvItem"_s);
                        key(Qt::Key_Down);
                        press(u"cmdSelect"_s);
                    });
                    press(QString::fromUtf16(button));
                    use(screen::Forms::find(u"frmItemReStockCreate"_s));
                }
                press(u"cmdOK"_s);
            });
            press(u"cmdOK"_s);
        });
        press(u"cmdOK"_s);
    });
    press(u"cmdReStock"_s);
    back();
    EXPECT_EQ(stock(m_bolt), u"17"_s) << "two lines of one item";
    EXPECT_EQ(stock(twin), u"4"_s);
    EXPECT_EQ(rows(u"SELECT Quantity, PricePer FROM Items WHERE PartNumber='P-9'"_s),
              QStringList(u"8|2.5"_s));
    const QString tail = u"|%1|3/2/2026|PO|31|77"_s.arg(m_employee);
    EXPECT_EQ(rows(u"SELECT Quantity, Employee, [Date], Type, [Number], Vendor FROM ItemReStock "
                   "ORDER BY ID"_s),
              QStringList({u"10"_s + tail, u"2"_s + tail, u"3"_s + tail, u"8"_s + tail}));
    EXPECT_EQ(rowCount(u"lvMain"_s), 4) << "the explorer shows them";
}

TEST_P(FromStock, AShippedJobIsStockedAsAnItemOrMakesOne) {
    const QString known = QString::number(
        run(u"INSERT INTO Job (CustID, Description, PartNo, Quantity, InvoiceEach, Shipped) "
            "VALUES (1, 'Hex bolt', 'other', 7, 3.5, True)"_s));
    const QString fresh = QString::number(
        run(u"INSERT INTO Job (CustID, Description, PartNo, Quantity, InvoiceEach, Shipped) "
            "VALUES (1, 'Clamp', 'C-1', 9, 3.5, True)"_s));
    openAtItems();
    const auto stockFrom = [this](const QString& job) {
        type(u"dbcEmployee"_s, u"Miller, Pat"_s);
        check(u"Option3"_s);
        type(u"dbcJobNo"_s, job);
    };
    whenShown(u"frmItemReStock"_s, [&, this] {
        stockFrom(known);
        whenShown(u"frmItemRestockJob"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            EXPECT_EQ(cells(u"sprItems"_s),
                      QStringList(u"Hex bolt|P-1|Forge|..\\Rack 1|..\\Bolts|5 EA"_s));
            expectBox(u"Please select an item to restock."_s, Answer::Ok, system);
            press(u"cmdOK"_s);
            EXPECT_EQ(text(u"fpQuantity"_s), u"7"_s);
            clickCell(u"sprItems"_s, 0, 0);
            press(u"cmdOK"_s);
        });
        press(u"cmdOK"_s);
    });
    press(u"cmdReStock"_s);
    EXPECT_EQ(stock(m_bolt), u"12"_s);
    const QString question = u"An Inventory item with a description or part number matching the "
                             "job was not found. Create new item?"_s;
    back();
    whenShown(u"frmItemReStock"_s, [&, this] {
        stockFrom(fresh);
        expectBox(question, Answer::Cancel, system);
        press(u"cmdOK"_s);
        expectBox(question, Answer::Ok, system);
        whenShown(u"frmItemRestockJobCreate"_s, [this] {
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            for (const auto* button : {u"cmdTreeLoc", u"cmdTreeType"}) {
                whenShown(u"frmItemTreeSelect"_s, [this] {
                    go(u"tvItem"_s);
                    key(Qt::Key_Down);
                    press(u"cmdSelect"_s);
                });
                press(QString::fromUtf16(button));
                use(screen::Forms::find(u"frmItemRestockJobCreate"_s));
            }
            type(u"dbcUnits"_s, u"EA"_s);
            check(u"chkFixedCost"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdOK"_s);
    });
    press(u"cmdReStock"_s);
    EXPECT_EQ(rows(u"SELECT Quantity, PricePer, PartNumber FROM Items WHERE Description='Clamp'"_s),
              QStringList(u"9|3.5|C-1"_s));
    EXPECT_EQ(rows(u"SELECT UnitPrice FROM MiscItems WHERE Description='Clamp'"_s),
              QStringList(u"3.5"_s));
    EXPECT_EQ(rows(u"SELECT Quantity, Type, [Number], Vendor FROM ItemReStock ORDER BY ID"_s),
              QStringList({u"7|Job|%1|0"_s.arg(known), u"9|Job|%1|0"_s.arg(fresh)}));
}

TEST_P(FromStock, JobsAndEstimatesAreCopiedWithRoutingNotesAndCosts) {
    const qint64 job = run(
        u"INSERT INTO Job (CustID, PONo, Description, PartNo, Quantity, InvoiceTotal, JobDateIn, "
        "TotalHours, Shipped, EstNo) VALUES (3, 'A1', 'Hex bolt', 'P-1', 7, 70, #1/2/2020#, 12, "
        "True, 5)"_s);
    run(u"INSERT INTO JobMiscCost (JobNo, ItemNo, CostAmount, UnitPrice, Quantity) VALUES "
        "(%1, 4, 8, 2, 4)"_s.arg(job));
    for (int seq = 1; seq <= 2; ++seq) {
        const qint64 row =
            run(u"INSERT INTO JobOper (JobNo, SeqNo, OperNo, OperTime_Amount, "
                "OperShopRate, Status, EstOper) VALUES (%1, %2, 6, 3, 55, 'F', 4)"_s.arg(job)
                    .arg(seq));
        run(u"INSERT INTO JobOperNote (ID, JobNo, SeqNo, OperNotes) VALUES (%1, %2, %3, 'note')"_s
                .arg(row)
                .arg(job)
                .arg(seq));
    }
    const qint64 made = copyJob(database(), job);
    ASSERT_GT(made, job);
    const QString where = u" WHERE JobNo = "_s + QString::number(made);
    EXPECT_EQ(rows(u"SELECT CustID, PONo, Quantity, InvoiceTotal, JobDateIn, JobDueDate, "
                   "TotalHours, Shipped, EstNo FROM Job"_s +
                   where),
              QStringList(u"3|A1|7|70|3/2/2026|3/2/2026||False|0"_s));
    EXPECT_EQ(rows(u"SELECT ItemNo, CostAmount, Quantity FROM JobMiscCost"_s + where),
              QStringList(u"4|8|4"_s));
    EXPECT_EQ(rows(u"SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate, Status, EstOper FROM "
                   "JobOper"_s +
                   where + u" ORDER BY SeqNo"_s),
              QStringList({u"1|6|0|55||4"_s, u"2|6|0|55||4"_s}))
        << "nothing worked on it yet";
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM JobOperNote INNER JOIN JobOper ON JobOperNote.ID = "
                   "JobOper.ID WHERE JobOperNote.JobNo = JobOper.JobNo AND JobOper.JobNo = "_s +
                   QString::number(made)),
              QStringList(u"2"_s));
    const qint64 estimate = run(u"INSERT INTO Estimate (CustID, RFQNo, PartNo, EstDate, QtyBreakC, "
                                "QtyTotalC) VALUES (3, 'R1', 'P-1', #1/2/2020#, 100, 250)"_s);
    run(u"INSERT INTO EstOper (EstNo, SeqNo, OperNo, OperTime_Amount) VALUES (%1, 1, 6, 2.5)"_s.arg(
        estimate));
    const qint64 again = copyEstimate(database(), estimate);
    EXPECT_EQ(rows(u"SELECT RFQNo, EstDate, QtyBreakC, QtyTotalC FROM Estimate WHERE EstNo = "_s +
                   QString::number(again)),
              QStringList(u"R1|3/2/2026|100|250"_s));
    EXPECT_EQ(rows(u"SELECT SeqNo, OperTime_Amount FROM EstOper WHERE EstNo = "_s +
                   QString::number(again)),
              QStringList(u"1|2.5"_s));
    EXPECT_EQ(copyJob(database(), 98765), 0);
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Job"_s), QStringList(u"2"_s));
}

TEST_P(FromStock, TheJobOfAnItemOpensInItsModule) {
    jobs::registerScreens();
    const qint64 customer = run(u"INSERT INTO Customer (Company) VALUES ('Fjord')"_s);
    const QString insert = u"INSERT INTO Job (CustID, Description, PartNo, Quantity, Shipped) "
                           "VALUES (%1, '%2', '%3', 7, %4)"_s;
    run(insert.arg(customer).arg(u"Hex bolt"_s, u"x"_s, u"True"_s));
    const qint64 open = run(insert.arg(customer).arg(u"Nut"_s, u"y"_s, u"False"_s));
    openAtItems();
    whenShown(u"frmItemCreateJob"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(rowCount(u"sprJob"_s), 1) << "of the same description";
        EXPECT_TRUE(cells(u"sprJob"_s)[0].contains(u"|Fjord||x|Hex bolt|"));
        press(u"cmdCreateSelect"_s);
    });
    press(u"cmdCreateJob"_s);
    auto* job = screen::Forms::find<core::RecordScreen>(u"frmJob"_s);
    ASSERT_TRUE(job);
    EXPECT_EQ(job->currentKey(), open + 1);
    back();
    whenShown(u"frmItemCreateJob"_s, [this] { press(u"cmdCreateNew"_s); });
    press(u"cmdCreateJob"_s);
    EXPECT_EQ(job->mode(), u"Add"_s);
    use(screen::Forms::find(u"frmJob"_s));
    EXPECT_EQ(text(u"txtPartno"_s), u"P-1"_s);
    // Busy with that one: the copy is made and told.
    back();
    whenShown(u"frmItemCreateJob"_s, [this] { press(u"cmdCreateSelect"_s); });
    expectBoxContaining(u"has been created"_s);
    press(u"cmdCreateJob"_s);
    use(screen::Forms::find(u"frmJob"_s));
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

TEST_P(FromStock, TheQueryAsksByFolderTextAndDay) {
    jet::Database& db = database();
    const qint64 steel = saveFolder(db, typeView(), 0, m_type, u"Steel"_s);
    const qint64 deep = saveFolder(db, typeView(), 0, steel, u"Fine"_s);
    const qint64 other = saveFolder(db, locationView(), 0, 0, u"Rack 2"_s);
    saveFolder(db, locationView(), 0, 0, u"Empty"_s);
    const qint64 pin = item(u"Pin 'x'"_s, u"P-2"_s, 3);
    const qint64 nut = item(u"Nut"_s, u"P-3"_s, 3);
    const auto place = [&](qint64 id, qint64 type, qint64 location) {
        run(u"UPDATE Items SET Type=%1, Location=%2 WHERE ID=%3"_s.arg(type).arg(location).arg(id));
    };
    place(pin, deep, m_location);
    place(nut, m_type, other);
    run(u"INSERT INTO ItemIssue (ItemID, Quantity, [Date]) VALUES (%1, 1, #3/1/2026#)"_s.arg(nut));
    run(u"INSERT INTO ItemQuery (ID) VALUES (77)"_s);
    const auto found = [&](const StockQuestion& question) {
        QStringList names;
        for (const ItemRow& row : findStock(db, question))
            names << row.item.description;
        return names.join(u'|');
    };
    StockQuestion asked;
    EXPECT_EQ(found(asked), u"Hex bolt|Nut|Pin 'x'"_s) << "nothing asked: all";
    asked.type = {.used = true, .folder = steel};
    EXPECT_EQ(found(asked), u"Pin 'x'"_s) << "with what is below";
    asked.location = {.used = true, .folder = other};
    EXPECT_EQ(found(asked), u"Nut|Pin 'x'"_s) << "two folders add up";
    asked = {};
    asked.location = {.used = true, .range = true, .first = u"Rack 2"_s, .second = u"Rack 9"_s};
    asked.description = {.used = true, .first = u"nut"_s};
    EXPECT_EQ(found(asked), u"Nut"_s);
    asked = {};
    asked.description = {.used = true, .first = u"Pin 'x'"_s};
    EXPECT_EQ(found(asked), u"Pin 'x'"_s);
    asked = {};
    asked.issued = {
        .used = true, .range = true, .from = QDate(2026, 3, 1), .to = QDate(2026, 3, 2)};
    EXPECT_EQ(found(asked), u"Nut"_s);
    EXPECT_EQ(stockFormula(asked, u"Inventory Issue"_s, {3, 5}),
              u"({Items.ID} = 3 OR {Items.ID} = 5) AND {ItemIssue.Date} in #03/01/2026# to "
              "#03/02/2026#"_s);
    EXPECT_EQ(stockFormula(asked, u"Inventory Stock"_s, {3}), u"({Items.ID} = 3)"_s);
    asked.stocked = {.used = true, .from = QDate(2026, 3, 1)};
    EXPECT_EQ(found(asked), QString()) << "issued and stocked";

    open(u"frmQueryTypeLoc"_s);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    const auto pickLast = [this] {
        key(Qt::Key_End);
        press(u"cmdSelect"_s);
    };
    whenShown(u"frmItemQueryTree"_s, [&, this] {
        go(u"tvItem"_s);
        key(Qt::Key_Down);
        press(u"cmdSelect"_s);
    });
    press(u"cmdLocation"_s);
    use(screen::Forms::find(u"frmQueryTypeLoc"_s));
    EXPECT_TRUE(isChecked(u"chkUseLocation"_s));
    EXPECT_EQ(text(u"txtLocation"_s), u"Empty"_s);
    expectBox(u"No Records satisfy your Criteria!"_s, Answer::Ok, u"No Records Found"_s);
    press(u"cmdGenerate"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM ItemQuery"_s), QStringList());
    whenShown(u"frmItemQueryTree"_s, [&, this] {
        go(u"tvItem"_s);
        pickLast();
    });
    press(u"cmdLocation"_s);
    use(screen::Forms::find(u"frmQueryTypeLoc"_s));
    press(u"cmdGenerate"_s);
    use(screen::Forms::find(u"frmReportAllItemsQresults"_s));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    EXPECT_EQ(cells(u"sprItemFound"_s), QStringList(u"Nut|Rack 2|Bolts|P-3|Forge|3"_s));
    EXPECT_EQ(text(u"dbcReport"_s), u"Stock List"_s);
    expectBox(u"No Records Selected!"_s);
    press(u"cmdPrintSel"_s);
    press(u"cmdRedo"_s);
    use(screen::Forms::find(u"frmQueryTypeLoc"_s));
    EXPECT_EQ(rows(u"SELECT ID FROM ItemQuery"_s), QStringList(QString::number(nut)));
    press(u"cmdCancel"_s);
    EXPECT_EQ(rows(u"SELECT ID FROM ItemQuery"_s), QStringList());
}

TEST_P(FromStock, ALineIsOneWaitToReadAndTwoToWriteHoweverManyThereAre) {
    std::vector<ReceivedLine> lines;
    for (int i = 0; i < 40; ++i) {
        const QString part = u"W-"_s + QString::number(i);
        item(u"Washer"_s, part, 0);
        lines.push_back({0, true, part, u"washer"_s, 3, 3, 3});
    }
    const quint64 before = database().waits();
    EXPECT_TRUE(
        stockLines(database(), {0, 0, m_employee, QDate(2026, 3, 2), {}, 31, 0}, lines).empty());
    EXPECT_LE(database().waits() - before, 4U);
    EXPECT_EQ(rows(u"SELECT COUNT(*), SUM(Quantity) FROM Items WHERE Description='Washer'"_s),
              QStringList(u"40|120"_s));
}

MIRSA_BOTH_ENGINES(FromStock);

} // namespace
