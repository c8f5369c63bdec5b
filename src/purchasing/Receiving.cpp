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

/// What the lines have received is the sum of their receipts.
void recount(jet::Database& database, const QString& itemIds) {
    const QString these = u" IN ("_s + itemIds + u")"_s;
    database.execute(u"UPDATE POItem SET ReceivedQuantity = 0 WHERE ID"_s + these);
    database.execute(u"UPDATE POItem INNER JOIN (SELECT ItemID, Sum(QtyRecvd) AS QtySum FROM "
                     "POReceived WHERE ItemID"_s +
                     these +
                     u" GROUP BY ItemID) AS Sums ON POItem.ID = Sums.ItemID SET "
                     "POItem.ReceivedQuantity = Sums.QtySum WHERE Sums.QtySum > 0"_s);
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
    jet::Transaction transaction(database);
    const auto there = linesOf(database, receipt.poNumber, {});
    std::vector<ReceiveLine> arrived;
    std::vector<std::vector<jet::Value>> rows;
    QStringList ids;
    inventory::WantedItems wanted;
    for (const ReceiveLine& line : lines) {
        if (!line.selected || line.quantity <= 0)
            continue;
        const ReceiveLine* found = find(there, line);
        if (!found)
            throw LineGone(line.partNumber);
        arrived.push_back(line);
        arrived.back().itemId = found->itemId;
        rows.push_back(
            {found->itemId, receipt.poNumber, line.quantity, receipt.date, receipt.employee});
        ids << num(found->itemId);
        if (line.stock)
            wanted.emplace_back(line.partNumber, line.description);
    }
    if (arrived.empty())
        return {};
    database.insertRows(u"POReceived"_s,
                        {u"ItemID"_s, u"PONumber"_s, u"QtyRecvd"_s, u"Date"_s, u"EmpID"_s}, rows);
    recount(database, ids.join(u", "));
    const QString made =
        u"SELECT TOP %1 ID FROM POReceived WHERE PONumber = %2 ORDER BY ID DESC"_s.arg(rows.size())
            .arg(receipt.poNumber);
    database.expect({made, inventory::vendorOfOrderSelect(receipt.poNumber),
                     inventory::matchingItemsSelect(wanted)});
    std::vector<qint64> receipts;
    for (jet::Recordset set = database.openRecordset(made, jet::RecordsetType::Snapshot);
         !set.eof(); set.moveNext())
        receipts.insert(receipts.begin(), set[u"ID"].toLong());
    const qint64 vendor = inventory::vendorOfOrder(database, receipt.poNumber);
    const auto items = inventory::matchingItems(database, wanted);

    std::vector<Unstocked> left;
    std::vector<inventory::Restock> movements;
    QStringList stocked;
    std::size_t place = 0;
    for (std::size_t i = 0; i < arrived.size(); ++i) {
        if (!arrived[i].stock)
            continue;
        const std::vector<qint64>& fitting = items[place++];
        if (fitting.size() != 1) {
            left.push_back({receipts[i], arrived[i], fitting});
            continue;
        }
        movements.push_back({fitting.front(), arrived[i].quantity, receipt.employee, receipt.date,
                             u"PO"_s, receipt.poNumber, vendor});
        stocked << num(receipts[i]);
    }
    // They were read under the lock that all stations take before they delete one.
    if (!inventory::restock(database, movements))
        throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
    if (!stocked.isEmpty())
        database.execute(u"UPDATE POReceived SET StockInventory = True WHERE ID IN ("_s +
                         stocked.join(u", ") + u")"_s);
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
    recount(database, num(itemId));
    transaction.commit();
    return true;
}

} // namespace purchasing
