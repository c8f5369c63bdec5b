#include "purchasing/Receiving.h"

#include "inventory/Restock.h"
#include "platform/values/Format.h"

#include <algorithm>

namespace purchasing {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

std::vector<ReceiveLine> linesOf(jet::Database& database, qint64 poNumber, const QString& more) {
    jet::Recordset set = database.openRecordset(
        u"SELECT ID, PartNumber, Description, Quantity, ReceivedQuantity FROM POItem WHERE "
        "PONumber = "_s +
            num(poNumber) + more + u" ORDER BY ItemNumber"_s,
        jet::RecordsetType::Snapshot);
    std::vector<ReceiveLine> lines;
    for (; !set.eof(); set.moveNext()) {
        ReceiveLine line;
        line.itemId = set[u"ID"].toLong();
        line.partNumber = set.text(u"PartNumber");
        line.description = set.text(u"Description");
        line.ordered = set[u"Quantity"].toLong();
        line.received = set[u"ReceivedQuantity"].toLong();
        lines.push_back(std::move(line));
    }
    return lines;
}

/// The line as it stands now: by its number, else by its part.
const ReceiveLine* find(const std::vector<ReceiveLine>& there, const ReceiveLine& wanted) {
    auto found = std::find_if(there.begin(), there.end(), [&](const ReceiveLine& line) {
        return line.itemId == wanted.itemId;
    });
    if (found == there.end()) {
        found = std::find_if(there.begin(), there.end(), [&](const ReceiveLine& line) {
            return line.partNumber == wanted.partNumber && line.description == wanted.description;
        });
    }
    return found == there.end() ? nullptr : &*found;
}

/// What the line has received is the sum of its receipts.
void recount(jet::Database& database, qint64 itemId) {
    const jet::Value sum = database.lookup(
        u"SELECT Sum(QtyRecvd) AS QtySum FROM POReceived WHERE POReceived.ItemID = "_s +
        num(itemId));
    database.execute(u"UPDATE POItem SET ReceivedQuantity = "_s +
                     num(std::max<qint64>(0, sum.toLong())) + u" WHERE ID = "_s + num(itemId));
}

} // namespace

std::vector<ReceiveLine> openLines(jet::Database& database, qint64 poNumber) {
    auto lines = linesOf(database, poNumber, u" AND ReceivedQuantity < Quantity"_s);
    for (ReceiveLine& line : lines)
        line.quantity = line.ordered - line.received;
    return lines;
}

std::vector<Unstocked> receive(jet::Database& database, const Receipt& receipt,
                               const std::vector<ReceiveLine>& lines) {
    std::vector<Unstocked> left;
    jet::Transaction transaction(database);
    const auto there = linesOf(database, receipt.poNumber, {});
    for (const ReceiveLine& wanted : lines) {
        if (!wanted.selected || wanted.quantity <= 0)
            continue;
        const ReceiveLine* found = find(there, wanted);
        if (!found)
            throw LineGone(wanted.partNumber);
        ReceiveLine line = wanted;
        line.itemId = found->itemId;
        database.execute(
            u"INSERT INTO POReceived (ItemID, PONumber, QtyRecvd, [Date], EmpID) VALUES ("_s +
            num(line.itemId) + u", "_s + num(receipt.poNumber) + u", "_s + num(line.quantity) +
            u", '"_s + values::format(receipt.date, u"Short Date") + u"', "_s +
            num(receipt.employee) + u")"_s);
        const qint64 receiptId = database.lastCounter();
        recount(database, line.itemId);
        if (!line.stock)
            continue;
        auto items = inventory::matchingItems(database, line.partNumber, line.description);
        if (items.size() != 1 ||
            !stockReceipt(database, receipt, receiptId, items.front(), line.quantity))
            left.push_back({receiptId, line, std::move(items)});
    }
    transaction.commit();
    return left;
}

bool stockReceipt(jet::Database& database, const Receipt& receipt, qint64 receiptId, qint64 itemId,
                  qint64 quantity) {
    jet::Transaction transaction(database);
    if (!inventory::restock(database, {itemId, quantity, receipt.employee, receipt.date, u"PO"_s,
                                       receipt.poNumber,
                                       inventory::vendorOfOrder(database, receipt.poNumber)}))
        return false;
    markStocked(database, receiptId);
    transaction.commit();
    return true;
}

void markStocked(jet::Database& database, qint64 receiptId) {
    database.execute(u"UPDATE POReceived SET StockInventory = True WHERE ID = "_s + num(receiptId));
}

bool deleteReceipt(jet::Database& database, qint64 receiptId) {
    jet::Transaction transaction(database);
    const jet::Recordset receipt = database.openRecordset(
        u"SELECT * FROM POReceived WHERE ID = "_s + num(receiptId), jet::RecordsetType::Snapshot);
    if (receipt.isEmpty())
        return true;
    if (receipt[u"StockInventory"].toBool())
        return false;
    const qint64 itemId = receipt[u"ItemID"].toLong();
    database.execute(u"DELETE * FROM POReceived WHERE ID = "_s + num(receiptId));
    recount(database, itemId);
    transaction.commit();
    return true;
}

} // namespace purchasing
