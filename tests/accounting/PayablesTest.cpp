#include "AccountingShop.h"

#include "platform/screen/Forms.h"
#include "purchasing/Screens.h"

using screen::Answer;

namespace {

enum Column { Select, Item, Part, Description, Quantity, Price, SentBefore };
const QString grid = u"vaSpread1"_s;

class PayablesTest : public AccountingShop {
  protected:
    void prepare() override {
        AccountingShop::prepare();
        m_vendor = insert(u"Vendor"_s, u"Company, Address1, City, Terms, QBSent"_s,
                          u"'Stål & Co','1 Mill','Malmö','Net 10',0"_s);
        insert(u"PO"_s, u"PONumber, Title"_s, u"3004,'Steel'"_s);
        insert(u"POVendor"_s, u"OrderNumber, VendorID"_s, u"3004,%1"_s.arg(m_vendor));
        line(1, u"ST-1"_s, 10, 6);
        line(2, u"ST-2"_s, 4, 0);
        // Another order whose number only begins with this one's.
        insert(u"POItem"_s, u"ItemKey, PONumber, ItemNumber, PartNumber"_s,
               u"'30041-1',30041,1,'X'"_s);
    }
    void line(int number, const QString& part, int ordered, int received) {
        insert(u"POItem"_s,
               u"ItemKey, PONumber, ItemNumber, Quantity, ReceivedQuantity, PartNumber, "
               "Description, UnitPrice"_s,
               u"'3004-%1',3004,%1,%2,%3,'%4','Bar, 1''',1042.125"_s.arg(number)
                   .arg(ordered)
                   .arg(received)
                   .arg(part));
    }
    void onOrder() {
        open(u"frmAP"_s);
        choose(u"dbcCompID"_s, u"Stål & Co"_s);
        choose(u"dbcPO"_s, u"3004"_s);
    }
    QStringList sent() const {
        return rows(u"SELECT Description, Quantity, SentDate, POID FROM SentAP ORDER BY ID"_s);
    }
    QDomElement bill(int number) const {
        const auto held = company();
        return held.list(u"BillRet"_s).at(std::size_t(number)).cloneNode().toElement();
    }
    qint64 m_vendor = 0;
};

TEST_P(PayablesTest, ReceivedLinesOfAnUnknownVendorBecomeABill) {
    open(u"frmAP"_s);
    expectBox(u"Please select a company and PO."_s, Answer::Ok, u"Nothing Selected"_s);
    press(u"cmdSend"_s);
    onOrder();
    EXPECT_EQ(cells(grid), (QStringList{u"0||ST-1|Bar, 1'|6|$1,042.1250|"_s,
                                        u"0||ST-2|Bar, 1'|0|$1,042.1250|"_s}));
    expectBox(u"No vendor records where selected."_s, Answer::Ok, u"Nothing Selected"_s);
    press(u"cmdSend"_s);
    press(u"cmdSelAll"_s);
    setCell(grid, 0, Item, u"Material"_s);
    expectBox(u"Please select an item type for each line item."_s, Answer::Ok,
              u"Select Item Type"_s);
    press(u"cmdSend"_s);
    setCell(grid, 1, Item, u"Material"_s);
    expectBox(u"One or more of the received quantities is zero. Please enter the correct "
              "quantity."_s,
              Answer::Ok, u"Zero Quantity"_s);
    press(u"cmdSend"_s);
    tick(grid, 1);
    tick(u"vaSpread2"_s, 1);
    EXPECT_EQ(cell(u"vaSpread2"_s, 1, Description), u"Freight Charges");
    setCell(u"vaSpread2"_s, 1, Item, u"Freight"_s);
    setCell(u"vaSpread2"_s, 1, Price, u"35"_s);
    type(u"txtInvoiceNum"_s, u"S-99"_s);
    check(u"Check1"_s);
    expectBox(u"Please enter a valid invoice date."_s);
    press(u"cmdSend"_s);
    type(u"txtInvoiceDate"_s, u"3/5/2026"_s);
    check(u"optDate"_s);
    type(u"txtBillDate"_s, u"4/4/2026"_s);
    expectBox(u"Vendor not found in Quickbooks Database. Add?"_s, Answer::Ok, u"Data Error"_s);
    expectBox(u"Successfully sent to Quickbooks."_s, Answer::Ok, u"Success"_s);
    press(u"cmdSend"_s);

    EXPECT_EQ(inCompany(u"VendorRet"_s), QStringList(u"Stål & Co"_s));
    EXPECT_EQ(inCompany(u"VendorRet"_s, u"NameOnCheck"_s), QStringList(u"Stål & Co"_s));
    EXPECT_EQ(inCompany(u"StandardTermsRet"_s), QStringList(u"Net 10"_s));
    EXPECT_EQ(rows(u"SELECT QBSent FROM Vendor"_s), QStringList(u"1"_s));
    const QDomElement first = bill(0);
    EXPECT_EQ(first.firstChildElement(u"TxnDate"_s).text(), u"2026-03-05");
    EXPECT_EQ(first.firstChildElement(u"DueDate"_s).text(), u"2026-04-04");
    EXPECT_EQ(first.firstChildElement(u"RefNumber"_s).text(), u"S-99");
    EXPECT_EQ(first.firstChildElement(u"AmountDue"_s).text(), u"6287.75");
    EXPECT_EQ(sent(), (QStringList{u"ST-1 Bar, 1'|6|3/9/2026|3004"_s,
                                   u" Freight Charges|1|3/9/2026|3004"_s}));
    EXPECT_EQ(cell(grid, 0, SentBefore), u"AGAIN: 6 on 3/9/2026");

    // Four more came: only those are due.
    database().execute(u"UPDATE POItem SET ReceivedQuantity=10 WHERE ItemKey='3004-1'"_s);
    press(u"cmdClose"_s);
    onOrder();
    tick(grid, 0);
    setCell(grid, 0, Item, u"Material"_s);
    expectBoxContaining(u"ST-1 Bar, 1': 6 on 3/9/2026"_s, Answer::No);
    press(u"cmdSend"_s);
    setCell(grid, 0, Quantity, u"4"_s);
    expectBox(u"Successfully sent to Quickbooks."_s);
    press(u"cmdSend"_s);
    EXPECT_EQ(bill(1).firstChildElement(u"TxnDate"_s).text(), u"2026-03-09");
    EXPECT_TRUE(bill(1).firstChildElement(u"DueDate"_s).isNull()) << "by the vendor's terms";

    whenShown(u"frmAPRecord"_s, [this] {
        EXPECT_EQ(rowCount(u"sprSent"_s), 3);
        selectRow(u"sprSent"_s, 0);
        expectBox(u"Delete selected Accounts Payable record?"_s, Answer::No, u"Delete Row?"_s);
        press(u"cmdDelete"_s);
        expectBox(u"Delete selected Accounts Payable record?"_s, Answer::Yes, u"Delete Row?"_s);
        press(u"cmdDelete"_s);
        press(u"cmdClose"_s);
    });
    press(u"Command1"_s);
    EXPECT_EQ(sent().size(), 2);
}

TEST_P(PayablesTest, ARefusedBillLeavesNothingBehind) {
    onOrder();
    tick(grid, 0);
    setCell(grid, 0, Item, u"Material"_s);
    trouble(u"3180 BillAddRq"_s);
    expectBoxContaining(u"This list has been modified by another user."_s);
    press(u"cmdSend"_s);
    trouble(u"rubbish BillAddRq"_s);
    expectBox(u"Vendor not found in Quickbooks Database. Add?"_s, Answer::Ok);
    trouble(u"none"_s);
    expectBox(u"Successfully sent to Quickbooks."_s);
    press(u"cmdSend"_s);
    EXPECT_EQ(sent().size(), 1);
    trouble(u"rubbish BillAddRq"_s);
    expectBoxContaining(u"Send it again?"_s, Answer::Yes);
    expectBoxContaining(u"loadXML failed, reason: "_s);
    press(u"cmdSend"_s);
    EXPECT_EQ(sent().size(), 1);
}

TEST_P(PayablesTest, TheButtonOfAnOrderShowsTheOrdersOfItsVendor) {
    const qint64 other = insert(u"Vendor"_s, u"Company"_s, u"'Another'"_s);
    insert(u"POVendor"_s, u"OrderNumber, VendorID"_s, u"3003,%1"_s.arg(other));
    purchasing::registerScreens();
    open(u"frmPO"_s);
    press(u"cmdAP"_s);
    use(screen::Forms::find(u"frmAP"_s));
    EXPECT_EQ(text(u"dbcCompID"_s), u"Stål & Co");
    choose(u"dbcPO"_s, u"3004"_s);
    EXPECT_EQ(rowCount(grid), 2);
    // What is being put together for somebody else stays.
    choose(u"dbcCompID"_s, u"Another"_s);
    choose(u"dbcPO"_s, u"3003"_s);
    use(screen::Forms::find(u"frmPO"_s));
    press(u"cmdAP"_s);
    use(screen::Forms::find(u"frmAP"_s));
    EXPECT_EQ(text(u"dbcCompID"_s), u"Stål & Co") << "nothing of the other was selected";
    choose(u"dbcPO"_s, u"3004"_s);
    tick(grid, 0);
    database().execute(u"UPDATE POVendor SET VendorID = %1"_s.arg(other));
    use(screen::Forms::find(u"frmPO"_s));
    press(u"cmdAP"_s);
    use(screen::Forms::find(u"frmAP"_s));
    EXPECT_EQ(text(u"dbcCompID"_s), u"Stål & Co");
}

} // namespace

MIRSA_BOTH_ENGINES(PayablesTest);
