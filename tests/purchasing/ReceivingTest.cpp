#include "purchasing/Receiving.h"
#include "BuyingRows.h"
#include "inventory/Restock.h"

#include <thread>

using namespace purchasing;

namespace {

class Receiving : public testsupport::BuyingRows {
  protected:
    void prepare() override {
        BuyingRows::prepare();
        execute(u"INSERT INTO PO (Title, Active) VALUES ('Order', True)");
        m_po = db().lastCounter();
        db().execute(
            u"INSERT INTO POVendor (OrderNumber, VendorID) VALUES (%1, %2)"_s.arg(m_po).arg(
                m_harrow));
        replacePoLines(db(), m_po, {}, {line(u"A"_s, 5, 1), line(u"B"_s, 6, 1)});
    }
    Receipt receipt() const { return {m_po, QDate(2026, 3, 2), m_ann}; }
    std::vector<ReceiveLine> selected(bool stock = false) {
        auto lines = openLines(db(), m_po);
        for (ReceiveLine& line : lines) {
            line.selected = true;
            line.stock = stock;
        }
        return lines;
    }
    qint64 item(const QString& part) {
        db().execute(u"INSERT INTO Items (PartNumber, Description, Quantity) VALUES ('%1', 'The "
                     "%1', 10)"_s.arg(part));
        return db().lastCounter();
    }
    QString received() { return one(u"SELECT ReceivedQuantity FROM POItem ORDER BY ItemNumber"_s); }
    qint64 m_po = 0;
};

TEST_P(Receiving, WhatALineHasReceivedIsTheSumOfItsReceipts) {
    auto lines = selected();
    EXPECT_EQ(lines[0].quantity, 5) << "what is still to come is offered";
    lines[0].quantity = 3;
    lines[1].quantity = 0;
    receive(db(), receipt(), lines);
    EXPECT_EQ(received(), u"3 / 0"_s);
    EXPECT_EQ(one(u"SELECT QtyRecvd, [Date], EmpID, StockInventory FROM POReceived"_s),
              u"3|3/2/2026|%1|False"_s.arg(m_ann));
    lines = selected();
    lines[0].quantity = 7; // more than was ordered
    receive(db(), receipt(), lines);
    EXPECT_EQ(received(), u"10 / 6"_s);
    EXPECT_TRUE(openLines(db(), m_po).empty());
    EXPECT_TRUE(deleteReceipt(db(), db().lookup(u"SELECT Max(ID) FROM POReceived"_s).toLong()));
    EXPECT_EQ(received(), u"10 / 0"_s);
}

TEST_P(Receiving, ALongOrderIsReceivedAndStockedInAFewWaits) {
    std::vector<OrderLine> all;
    for (int i = 0; i < 60; ++i) {
        all.push_back(line(u"P%1"_s.arg(i), i + 1, 1));
        item(u"P%1"_s.arg(i));
    }
    replacePoLines(db(), m_po, receivedOf(db(), m_po), all);
    const auto lines = selected(true);
    const quint64 before = db().waits();
    const auto left = receive(db(), receipt(), lines);
    EXPECT_LE(db().waits() - before, 4U);
    for (const Unstocked& one : left)
        EXPECT_NE(one.items.size(), 1U) << one.line.partNumber.toStdString();
    const auto sum = [this](const char16_t* select) {
        return db().lookup(QString::fromUtf16(select)).toLong();
    };
    EXPECT_EQ(sum(u"SELECT Sum(QtyRecvd) FROM POReceived"), 60 * 61 / 2);
    EXPECT_EQ(sum(u"SELECT Count(*) FROM POItem WHERE ReceivedQuantity <> Quantity"), 0);
    EXPECT_EQ(sum(u"SELECT Count(*) FROM POReceived WHERE StockInventory = True") +
                  static_cast<qint64>(left.size()),
              60);
    // Each receipt is marked for its own line.
    EXPECT_EQ(sum(u"SELECT Count(*) FROM POReceived INNER JOIN POItem ON POReceived.ItemID = "
                  "POItem.ID WHERE POReceived.QtyRecvd <> POItem.Quantity"),
              0);
}

TEST_P(Receiving, OneItemThatFitsIsStockedAndOthersAreAskedFor) {
    const qint64 a = item(u"A"_s);
    item(u"B"_s);
    const qint64 b = item(u"B"_s);
    const auto left = receive(db(), receipt(), selected(true));
    EXPECT_EQ(one(u"SELECT Quantity FROM Items WHERE ID = %1"_s.arg(a)), u"15"_s);
    EXPECT_EQ(one(u"SELECT ItemID, Quantity, Employee, [Date], [Type], [Number], Vendor FROM "
                  "ItemReStock"_s),
              u"%1|5|%2|3/2/2026|PO|%3|%4"_s.arg(a).arg(m_ann).arg(m_po).arg(m_harrow));
    ASSERT_EQ(left.size(), 1U);
    EXPECT_EQ(left[0].items.size(), 2U);
    EXPECT_EQ(left[0].items[0], b) << "the newest first";
    EXPECT_TRUE(stockReceipt(db(), receipt(), left[0].receiptId, b, 6));
    EXPECT_FALSE(stockReceipt(db(), receipt(), left[0].receiptId, 999, 6));
    EXPECT_EQ(one(u"SELECT Quantity FROM Items WHERE ID = %1"_s.arg(b)), u"16"_s);
    EXPECT_FALSE(deleteReceipt(db(), left[0].receiptId)) << "what is stocked stays";
    EXPECT_EQ(received(), u"5 / 6"_s);
    const qint64 made = inventory::createStocked(
        db(), {0, u"New"_s, u"N'1"_s, {}, u"EA"_s, 4, values::Currency::fromInteger(2), 0, 1, 2},
        {0, 0, m_ann, QDate(2026, 3, 2), u"PO"_s, m_po, m_harrow});
    EXPECT_EQ(one(u"SELECT Quantity FROM ItemReStock WHERE ItemID = %1"_s.arg(made)), u"4"_s);
    EXPECT_EQ(one(u"SELECT PartNumber, Quantity, PricePer FROM Items WHERE ID = %1"_s.arg(made)),
              u"N'1|4|2"_s);
    EXPECT_EQ(inventory::checkItem({})->text, u"Location may not be blank!"_s);
}

TEST_P(Receiving, LinesSavedAnewMeanwhileAreFoundByTheirPart) {
    const auto lines = selected();
    const OrderDocument before = *loadOrder(db(), m_po);
    OrderDocument edited = before;
    edited.lines.pop_back();
    storeOrder(db(), m_po, edited, &before);
    EXPECT_THROW(receive(db(), receipt(), lines), LineGone);
    EXPECT_EQ(one(u"SELECT QtyRecvd FROM POReceived"_s), QString()) << "whole or not at all";
    receive(db(), receipt(), {lines[0]});
    EXPECT_EQ(received(), u"5"_s);
}

TEST_P(Receiving, TwoStationsOnOneOrderLoseNothing) {
    constexpr int rounds = 200;
    execute(u"UPDATE POItem SET Quantity = 1000"); // stays open
    const auto other = station();
    std::thread receiver([&] {
        for (int i = 0; i < rounds; ++i) {
            auto lines = openLines(*other, m_po);
            for (ReceiveLine& line : lines) {
                line.selected = line.partNumber == u"A"_s;
                line.quantity = 1;
            }
            receive(*other, receipt(), lines);
        }
    });
    for (int i = 0; i < rounds; ++i) {
        const OrderDocument before = *loadOrder(db(), m_po);
        OrderDocument edited = before;
        for (OrderLine& line : edited.lines)
            line.quantity = 1000 + i;
        EXPECT_FALSE(storeOrder(db(), m_po, edited, &before).conflict);
    }
    receiver.join();
    EXPECT_EQ(one(u"SELECT Count(*) AS N FROM POReceived"_s), QString::number(rounds));
    EXPECT_EQ(received(), u"200 / 0"_s);
    EXPECT_EQ(one(u"SELECT Count(*) AS N FROM POReceived INNER JOIN POItem ON POReceived.ItemID = "
                  "POItem.ID"_s),
              QString::number(rounds));
}

} // namespace

MIRSA_BOTH_ENGINES(Receiving);
