#include "AccountingShop.h"

#include "platform/controls/Grid.h"
#include "support/Gallery.h"

#include <QTimer>

using screen::Answer;

namespace {

enum Column { Select, Item, JobNo, Part, Description, JobQty, InvoiceQty, Shipped, Price, Amount };
const int sentColumn = 10;
const QString grid = u"sprMain"_s;

class InvoiceTest : public AccountingShop {
  protected:
    qint64 customer(const QString& company, const QString& terms = {}) {
        return insert(u"Customer"_s,
                      u"Company, BillAddress1, BillCity, InPhone, Terms, FOB, QBSent"_s,
                      u"'%1','7 Harbor Row','Cork','555-1','%2','Dock',0"_s.arg(
                          QString(company).replace(u'\'', u"''"_s), terms));
    }
    qint64 job(qint64 custId, const QString& order, const QString& part, int quantity,
               const QString& price = u"12.5"_s, bool shipped = false) {
        return insert(u"Job"_s,
                      u"CustID, PONo, PartNo, Description, Quantity, InvoiceEach, Shipped"_s,
                      u"%1,'%2','%3','Driver''s plate',%4,%5,%6"_s.arg(custId)
                          .arg(order, part)
                          .arg(quantity)
                          .arg(price, shipped ? u"True"_s : u"False"_s));
    }
    void ship(qint64 jobNo, int quantity) {
        insert(u"JobShip"_s, u"JobNo, Quantity"_s, u"%1,%2"_s.arg(jobNo).arg(quantity));
    }
    /// Opens the screen on an order.
    void onOrder(const QString& company, const QString& order) {
        open(u"frmInvoice"_s);
        choose(u"dbcCompID"_s, company);
        choose(u"dbcPO"_s, order);
    }
    void take(int row, const QString& item = u"Parts"_s) {
        tick(grid, row);
        setCell(grid, row, Item, item);
    }
    void knowCustomer(const QString& company) {
        auto held = this->company();
        held.answer(u"<?xml version=\"1.0\" ?><!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD "
                    "1.0//EN' ><QBXML><QBXMLMsgsRq onError=\"stopOnError\" ><CustomerAddRq>"
                    "<CustomerAdd><Name>%1</Name></CustomerAdd></CustomerAddRq></QBXMLMsgsRq>"
                    "</QBXML>"_s.arg(company));
        ASSERT_TRUE(held.save(inFolder(u"Practice.company"_s)));
    }
    QStringList sent() const {
        return rows(u"SELECT InvoiceNo, Description, Quantity, SentDate, POID FROM SentInvoice "
                    "ORDER BY ID"_s);
    }
    void expectSuccess() {
        expectBox(u"Successfully added the Invoice."_s, Answer::Ok, u"Success"_s);
    }
};

TEST_P(InvoiceTest, AShippedOrderOfAnUnknownCustomerWithTermsIsInvoiced) {
    const qint64 cust = customer(u"O'Neil & Söhne"_s, u"Net 30"_s);
    const qint64 first = job(cust, u"PO-7"_s, u"KX-1"_s, 10, u"1234.5"_s);
    job(cust, u"PO-7"_s, u"KX-2"_s, 4);
    job(cust, u"PO-8"_s, u"KX-3"_s, 1, u"1"_s, true);
    ship(first, 6);
    ship(first, 2);

    open(u"frmInvoice"_s);
    choose(u"dbcCompID"_s, u"O'Neil & Söhne"_s);
    EXPECT_EQ(text(u"txtName"_s), QString::number(cust));
    choose(u"dbcPO"_s, u"PO-7"_s);
    EXPECT_EQ(text(u"Frame1"_s), u"Record Selection - 2 records currently displayed.");
    EXPECT_EQ(cells(grid).value(0),
              u"0||%1|KX-1|Driver's plate|10|10|8|$1,234.5000|$1,234.5000|"_s.arg(first));
    EXPECT_EQ(text(u"lblTotals"_s), u"This order: ordered 14, shipped 8, invoiced 0.");

    expectBox(u"No Records were selected."_s, Answer::Ok, u"Nothing Selected"_s);
    press(u"cmdInvoiceSelected"_s);
    tick(grid, 0);
    expectBox(u"Please select an item type for each invoice line item."_s, Answer::Ok,
              u"Select Item Type"_s);
    press(u"cmdInvoiceSelected"_s);
    setCell(grid, 0, Item, u"Machining"_s);
    setCell(grid, 0, InvoiceQty, u"8"_s);
    tick(u"vaSpread2"_s, 0);
    setCell(u"vaSpread2"_s, 0, 1, u"Freight"_s);
    setCell(u"vaSpread2"_s, 0, 3, u"By courier"_s);
    setCell(u"vaSpread2"_s, 0, 5, u"20"_s);
    EXPECT_EQ(cell(u"vaSpread2"_s, 0, 5), u"$20.0000");

    expectBox(u"Customer not found in Quickbooks Database. Add?"_s, Answer::Cancel,
              u"Data Error"_s);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(inCompany(u"CustomerRet"_s), QStringList());
    expectBox(u"Customer not found in Quickbooks Database. Add?"_s, Answer::Ok, u"Data Error"_s);
    expectSuccess();
    press(u"cmdInvoiceSelected"_s);

    EXPECT_EQ(inCompany(u"CustomerRet"_s), QStringList(u"O'Neil & Söhne"_s));
    EXPECT_EQ(inCompany(u"StandardTermsRet"_s), QStringList(u"Net 30"_s));
    EXPECT_EQ(inCompany(u"StandardTermsRet"_s, u"StdDueDays"_s), QStringList(u"30"_s));
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"PONumber"_s), QStringList(u"PO-7"_s));
    EXPECT_EQ(rows(u"SELECT QBSent FROM Customer"_s), QStringList(u"1"_s));
    EXPECT_EQ(sent(), (QStringList{u"1001|KX-1 Driver's plate|8|3/9/2026|PO-7"_s,
                                   u"1001| By courier|1|3/9/2026|PO-7"_s}));
    EXPECT_EQ(cell(grid, 0, sentColumn), u"AGAIN: 8 on 3/9/2026 (1001)");

    whenShown(u"DisplayXML"_s, [this] {
        EXPECT_TRUE(text(u"txtXML"_s).contains(u"<InvoiceAddRq requestID=\"1\" >"));
        EXPECT_TRUE(text(u"txtXML"_s).contains(u"<RefNumber>1001</RefNumber>"));
        press(u"Comm_Exit"_s);
    });
    press(u"cmdMessage"_s);
    // A second send is asked about, and never forbidden.
    expectBoxContaining(u"KX-1 Driver's plate: 8 on 3/9/2026 (1001)"_s, Answer::No);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s).size(), 1);
    expectBoxContaining(u"Send it again?"_s, Answer::Yes);
    expectSuccess();
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s).size(), 2);

    whenShown(u"frmInvoiceRecord"_s, [this] {
        EXPECT_EQ(text(u"Frame1"_s), u"4 Records sent to Quickbooks");
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(u"No Records Selected!"_s, Answer::Ok, u"Error"_s);
        press(u"cmdDelete"_s);
        selectRow(u"sprSent"_s, 2);
        expectBox(u"Delete selected Invoice record(s)?"_s, Answer::Yes, u"Delete Row?"_s);
        key(Qt::Key_Delete);
        EXPECT_EQ(text(u"Frame1"_s), u"3 Records sent to Quickbooks");
        press(u"cmdClose"_s);
    });
    press(u"Command1"_s);
    EXPECT_EQ(text(u"lblTotals"_s), u"This order: ordered 14, shipped 8, invoiced 10.");
    check(u"Option1(0)"_s);
    choose(u"dbcPO"_s, u"PO-8"_s);
    EXPECT_EQ(rowCount(grid), 1);
    press(u"cmdClose"_s);
}

TEST_P(InvoiceTest, WithoutAJobTheScreenStaysClosedAndWithoutTheRightPricesAreHidden) {
    expectBox(u"You must have at least one Job before you can use the Invoice module!"_s,
              Answer::Ok, u"Warning"_s);
    EXPECT_EQ(open(u"frmInvoice"_s), nullptr);
    const qint64 cust = customer(u"Acme"_s);
    job(cust, u"PO-7"_s, u"KX-1"_s, 10);
    knowCustomer(u"Acme"_s);
    core::shared().CurrentUserName = u"somebody"_s;
    onOrder(u"Acme"_s, u"PO-7"_s);
    auto* lines = control<controls::Grid>(grid);
    EXPECT_EQ(lines->model()->index(0, Price).data(Qt::DisplayRole).toString(), QString());
    take(0);
    expectSuccess();
    press(u"cmdInvoiceSelected"_s);
    const auto held = company();
    EXPECT_EQ(held.list(u"InvoiceRet"_s)
                  .at(0)
                  .firstChildElement(u"InvoiceLineRet"_s)
                  .firstChildElement(u"Rate"_s)
                  .text(),
              u"12.5");
}

TEST_P(InvoiceTest, ValuesThatQuickBooksCantTakeAreToldBeforeAnythingIsSent) {
    const qint64 cust = customer(QString(42, u'x'), u"Net 30"_s);
    job(cust, u"PO-7"_s, u"KX-1"_s, 10);
    onOrder(QString(42, u'x'), u"PO-7"_s);
    take(0);
    expectBoxContaining(u"The name has 42 letters, and QuickBooks takes 41"_s);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(inCompany(u"StandardTermsRet"_s), QStringList()) << "not even the terms";
    EXPECT_EQ(sent(), QStringList());
}

TEST_P(InvoiceTest, EveryWayOfGoingWrongLeavesNoRowAndTellsWhatToDo) {
    const qint64 cust = customer(u"Acme"_s);
    job(cust, u"PO-7"_s, u"KX-1"_s, 10);
    knowCustomer(u"Acme"_s);
    const QString notOpen = u"Quickbooks must be running for this module to function."_s;
    // QuickBooks is started only after the screen.
    trouble(u"closed"_s);
    expectBox(notOpen, Answer::Ok, u"Quickbooks not Open"_s);
    onOrder(u"Acme"_s, u"PO-7"_s);
    take(0);
    trouble(u"closed"_s);
    expectBox(notOpen, Answer::Ok, u"Quickbooks not Open"_s);
    press(u"cmdInvoiceSelected"_s);
    trouble(u"3180"_s);
    expectBoxContaining(u"This list has been modified by another user."_s);
    press(u"cmdInvoiceSelected"_s);
    doorIs(u"no-such-program"_s);
    expectBoxContaining(u"Nothing was sent to QuickBooks. The program no-such-program"_s);
    press(u"cmdInvoiceSelected"_s);
    usualDoor();
    setCell(grid, 0, Item, u"Nonsense"_s);
    expectBoxContaining(u"invalid reference to QuickBooks Item \"Nonsense\""_s);
    press(u"cmdInvoiceSelected"_s);
    setCell(grid, 0, Item, u"Parts"_s);
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s), QStringList());

    // From here on QuickBooks has taken it, and nobody knows here.
    trouble(u"death"_s);
    expectBoxContaining(u"It isn't known whether QuickBooks took the invoice."_s);
    press(u"cmdInvoiceSelected"_s);
    expectBoxContaining(u"QuickBooks gave no answer"_s, Answer::No);
    press(u"cmdInvoiceSelected"_s);
    trouble(u"rubbish"_s);
    expectBoxContaining(u"QuickBooks gave no answer"_s, Answer::Yes);
    expectBoxContaining(u"The answer of QuickBooks can't be read"_s);
    press(u"cmdInvoiceSelected"_s);
    usualDoor(1);
    trouble(u"late 5"_s);
    expectBoxContaining(u"QuickBooks gave no answer"_s, Answer::Yes);
    expectBoxContaining(u"There was no answer within 1 seconds."_s);
    press(u"cmdInvoiceSelected"_s);
    trouble(u"none"_s);
    doorIs(u"echo \"<QBXML/>\""_s); // XML, and still no answer
    expectBoxContaining(u"QuickBooks gave no answer"_s, Answer::Yes);
    expectBoxContaining(u"there is no InvoiceAddRs in the answer"_s);
    press(u"cmdInvoiceSelected"_s);
    usualDoor();
    EXPECT_EQ(sent(), QStringList());
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s).size(), 3);

    // A warning doesn't stop it, and an answer that takes its time counts.
    trouble(u"warning"_s);
    expectBoxContaining(u"QuickBooks gave no answer"_s, Answer::Yes);
    expectBoxContaining(u"a part of it was not used"_s);
    expectSuccess();
    press(u"cmdInvoiceSelected"_s);
    trouble(u"late 1"_s);
    expectBoxContaining(u"Send it again?"_s, Answer::Yes);
    expectSuccess();
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(sent().size(), 2);
}

TEST_P(InvoiceTest, WhatAnotherStationHasSentMeanwhileIsAskedAbout) {
    job(customer(u"Acme"_s), u"PO-7"_s, u"KX-1"_s, 10);
    onOrder(u"Acme"_s, u"PO-7"_s);
    take(0);
    EXPECT_EQ(cell(grid, 0, sentColumn), QString());
    anotherStation()->execute(u"INSERT INTO SentInvoice (InvoiceNo, Description, Quantity, "
                              "SentDate, POID) VALUES('77','KX-1 Driver''s plate',10,'3/9/2026',"
                              "'PO-7')"_s);
    expectBoxContaining(u"10 on 3/9/2026 (77)"_s, Answer::No);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s), QStringList());
}

TEST_P(InvoiceTest, WhatTwoDesksSendAtTheSameMomentIsToldToTheLaterOne) {
    job(customer(u"Acme"_s), u"PO-7"_s, u"KX-1"_s, 10);
    knowCustomer(u"Acme"_s);
    onOrder(u"Acme"_s, u"PO-7"_s);
    take(0);
    const auto other = anotherStation();
    QTimer::singleShot(300, &shell(), [&] {
        other->execute(u"INSERT INTO SentInvoice (InvoiceNo, Description, Quantity, SentDate, "
                       "POID) VALUES('77','KX-1 Driver''s plate',10,'3/9/2026','PO-7')"_s);
    });
    trouble(u"late 1"_s);
    expectSuccess();
    expectBoxContaining(u"KX-1 Driver's plate: 10 on 3/9/2026 (77), 10 on 3/9/2026 (1001)"_s);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_EQ(sent().size(), 2);
}

TEST_P(InvoiceTest, WhatTheDatabaseRefusesIsKeptAndRecordedLaterWithoutASecondSend) {
    const qint64 cust = customer(u"Acme"_s);
    job(cust, u"PO-7"_s, u"KX-1"_s, 10);
    job(cust, u"PO-7"_s, u"KX-2"_s, 5);
    knowCustomer(u"Acme"_s);
    onOrder(u"Acme"_s, u"PO-7"_s);
    EXPECT_FALSE(isVisible(u"cmdRecord"_s));
    take(0);
    take(1);
    // Of two rows the second is refused, so the first must not stay either.
    database().execute(u"CREATE UNIQUE INDEX OnlyOne ON SentInvoice (POID)"_s);
    expectBoxContaining(u"QuickBooks holds the invoice under the number 1001, but the database "
                        "refused"_s);
    press(u"cmdInvoiceSelected"_s);
    EXPECT_TRUE(isVisible(u"cmdRecord"_s));
    expectBoxContaining(u"KX-1 Driver's plate: 10 on 3/9/2026 (1001)"_s, Answer::No);
    press(u"cmdInvoiceSelected"_s);
    expectBoxContaining(u"The rest still waits"_s);
    press(u"cmdRecord"_s);
    EXPECT_EQ(sent(), QStringList());
    database().execute(u"DROP TABLE SentInvoice"_s);
    database().execute(
        u"CREATE TABLE SentInvoice (ID COUNTER PRIMARY KEY, InvoiceNo TEXT(255), "
        "Description TEXT(255), Quantity DOUBLE, SentDate TEXT(255), POID TEXT(40))"_s);
    press(u"cmdClose"_s);
    values::setNow(QDateTime(QDate(2026, 3, 10), QTime(8, 0), Qt::UTC));
    onOrder(u"Acme"_s, u"PO-7"_s);
    expectBox(u"Invoice 1001 of order PO-7 is recorded."_s);
    press(u"cmdRecord"_s);
    EXPECT_FALSE(isVisible(u"cmdRecord"_s));
    EXPECT_EQ(sent(), (QStringList{u"1001|KX-1 Driver's plate|10|3/9/2026|PO-7"_s,
                                   u"1001|KX-2 Driver's plate|5|3/9/2026|PO-7"_s}));
    EXPECT_EQ(cell(grid, 1, sentColumn), u"AGAIN: 5 on 3/9/2026 (1001)");
    EXPECT_EQ(inCompany(u"InvoiceRet"_s, u"RefNumber"_s).size(), 1);
}

TEST_P(InvoiceTest, TwentyRepeatsInTwoHundredOrdersAreMarkedAndNoOther) {
    const qint64 cust = customer(u"Acme"_s);
    QStringList expected, marked;
    const auto already = [&](const QString& order, const QString& part, int quantity) {
        insert(
            u"SentInvoice"_s, u"InvoiceNo, Description, Quantity, SentDate, POID"_s,
            u"'900','%1 Driver''s plate',%2,'3/2/2026','%3'"_s.arg(part).arg(quantity).arg(order));
    };
    for (int i = 0; i < 200; ++i) {
        const QString order = u"PO-%1"_s.arg(i, 3, 10, QChar(u'0'));
        const QString part = u"P-%1"_s.arg(i % 50); // the same parts on many orders
        const qint64 jobNo = job(cust, order, part, 10);
        if (i % 10 == 3) {
            already(order, part, i % 20 == 3 ? 10 : 1);
            expected += order;
        } else if (i % 10 == 5) { // two jobs of one part, one of them invoiced and done
            database().execute(u"UPDATE Job SET Shipped=True WHERE JobNo=%1"_s.arg(jobNo));
            job(cust, order, part, 10);
            already(order, part, 10);
        } else if (i % 10 == 7) { // another part of this order was invoiced
            already(order, u"Q-1"_s, 10);
        }
    }
    open(u"frmInvoice"_s);
    choose(u"dbcCompID"_s, u"Acme"_s);
    for (int i = 0; i < 200; ++i) {
        const QString order = u"PO-%1"_s.arg(i, 3, 10, QChar(u'0'));
        choose(u"dbcPO"_s, order);
        for (int row = 0; row < rowCount(grid); ++row) {
            if (cell(grid, row, sentColumn).startsWith(u"AGAIN"))
                marked += order;
        }
    }
    EXPECT_EQ(marked, expected);
    EXPECT_EQ(marked.size(), 20);
    // The rest of a job that was invoiced in part is no repeat.
    choose(u"dbcPO"_s, u"PO-013"_s);
    setCell(grid, 0, InvoiceQty, u"9"_s);
    EXPECT_EQ(cell(grid, 0, sentColumn), u"1 on 3/2/2026 (900)");
}

} // namespace

MIRSA_BOTH_ENGINES(InvoiceTest);
