#include "inventory/Restock.h"

#include "inventory/Sql.h"
#include "platform/values/Letters.h"

#include <QHash>

#include <algorithm>

namespace inventory {

namespace {

void writeHistory(jet::Database& database, const std::vector<Restock>& movements) {
    std::vector<std::vector<jet::Value>> rows;
    rows.reserve(movements.size());
    for (const Restock& movement : movements)
        rows.push_back({jet::Value(movement.itemId), jet::Value(movement.quantity),
                        jet::Value(movement.employee), jet::Value(movement.date),
                        jet::Value(movement.type), jet::Value(movement.number),
                        jet::Value(movement.vendor)});
    database.insertRows(
        u"ItemReStock"_s,
        {u"ItemID"_s, u"Quantity"_s, u"Employee"_s, u"Date"_s, u"Type"_s, u"Number"_s, u"Vendor"_s},
        rows);
}

bool same(const QString& a, const QString& b) {
    return values::sameText(a, b);
}

} // namespace

std::vector<qint64> matchingItems(jet::Database& database, const QString& partNumber,
                                  const QString& description) {
    jet::Recordset set = database.openRecordset(u"SELECT ID FROM Items WHERE PartNumber = "_s +
                                                    sqlText(partNumber) + u" AND Description = "_s +
                                                    sqlText(description) + u" ORDER BY ID DESC"_s,
                                                jet::RecordsetType::Snapshot);
    std::vector<qint64> items;
    for (; !set.eof(); set.moveNext())
        items.push_back(set[u"ID"].toLong());
    return items;
}

QString matchingItemsSelect(const WantedItems& wanted) {
    QStringList parts;
    for (const auto& [partNumber, description] : wanted)
        parts << sqlText(partNumber);
    parts.removeDuplicates();
    return u"SELECT ID, PartNumber, Description FROM Items WHERE PartNumber IN ("_s +
           (parts.isEmpty() ? u"Null"_s : parts.join(u", ")) + u") ORDER BY ID DESC"_s;
}

std::vector<std::vector<qint64>> matchingItems(jet::Database& database, const WantedItems& wanted) {
    std::vector<std::vector<qint64>> items(wanted.size());
    if (wanted.empty())
        return items;
    jet::Recordset set =
        database.openRecordset(matchingItemsSelect(wanted), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            if (same(set.text(u"PartNumber"), wanted[i].first) &&
                same(set.text(u"Description"), wanted[i].second))
                items[i].push_back(set[u"ID"].toLong());
        }
    }
    return items;
}

bool restock(jet::Database& database, const std::vector<Restock>& movements) {
    if (movements.empty())
        return true;
    std::vector<qint64> ids;
    ids.reserve(movements.size());
    for (const Restock& movement : movements)
        ids.push_back(movement.itemId);
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    const QString these = u" WHERE ID IN ("_s + listOf(ids) + u")"_s;
    jet::Transaction transaction(database);
    // Held first, so that whoever issues from them meanwhile comes after.
    database.execute(u"UPDATE Items SET Quantity = [Quantity] + 0"_s + these);
    QHash<qint64, qint64> stock;
    jet::Recordset set = database.openRecordset(u"SELECT ID, Quantity FROM Items"_s + these,
                                                jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        stock.insert(set[u"ID"].toLong(), set[u"Quantity"].toLong());
    if (static_cast<std::size_t>(stock.size()) != ids.size())
        return false;
    for (const Restock& movement : movements)
        stock[movement.itemId] += movement.quantity;
    std::vector<std::vector<jet::Value>> rows;
    rows.reserve(ids.size());
    for (const qint64 id : ids)
        rows.push_back({jet::Value(id), jet::Value(stock.value(id))});
    database.updateRows(u"Items"_s, {u"ID"_s, u"Quantity"_s}, 1, rows);
    writeHistory(database, movements);
    transaction.commit();
    return true;
}

bool restock(jet::Database& database, const Restock& movement) {
    return restock(database, std::vector<Restock>{movement});
}

qint64 createStocked(jet::Database& database, const Item& item, Restock movement) {
    jet::Transaction transaction(database);
    movement.itemId = addItem(database, item);
    movement.quantity = item.quantity;
    writeHistory(database, {movement});
    transaction.commit();
    return movement.itemId;
}

std::vector<ReceivedLine> receivedLines(jet::Database& database, qint64 poNumber) {
    jet::Recordset set =
        database.openRecordset(u"SELECT * FROM POItem WHERE PONumber = "_s + num(poNumber) +
                                   u" AND ReceivedQuantity > 0 ORDER BY ID"_s,
                               jet::RecordsetType::Snapshot);
    std::vector<ReceivedLine> lines;
    for (; !set.eof(); set.moveNext()) {
        ReceivedLine line;
        line.lineId = set[u"ID"].toLong();
        line.partNumber = set.text(u"PartNumber");
        line.description = set.text(u"Description");
        line.received = set[u"ReceivedQuantity"].toLong();
        line.ordered = set[u"Quantity"].toLong();
        line.stock = line.received;
        lines.push_back(std::move(line));
    }
    return lines;
}

std::vector<LeftLine> stockLines(jet::Database& database, const Restock& how,
                                 const std::vector<ReceivedLine>& lines) {
    WantedItems wanted;
    for (const ReceivedLine& line : lines) {
        if (line.selected)
            wanted.emplace_back(line.partNumber, line.description);
    }
    if (wanted.empty())
        return {};
    jet::Transaction transaction(database);
    database.expect({vendorOfOrderSelect(how.number), matchingItemsSelect(wanted)});
    const qint64 vendor = vendorOfOrder(database, how.number);
    auto items = matchingItems(database, wanted);
    std::vector<LeftLine> left;
    std::vector<Restock> movements;
    std::size_t place = 0;
    for (const ReceivedLine& line : lines) {
        if (!line.selected)
            continue;
        std::vector<qint64>& fitting = items[place++];
        if (fitting.size() != 1) {
            left.push_back({line, std::move(fitting)});
            continue;
        }
        Restock movement = how;
        movement.itemId = fitting.front();
        movement.quantity = line.stock;
        movement.type = u"PO"_s;
        movement.vendor = vendor;
        movements.push_back(std::move(movement));
    }
    restock(database, movements);
    transaction.commit();
    return left;
}

QString vendorOfOrderSelect(qint64 poNumber) {
    return u"SELECT VendorID FROM POVendor WHERE OrderNumber = "_s + num(poNumber) +
           u" ORDER BY VendorID"_s;
}

qint64 vendorOfOrder(jet::Database& database, qint64 poNumber) {
    return database.lookup(vendorOfOrderSelect(poNumber)).toLong();
}

Item itemOfLine(jet::Database& database, qint64 lineId) {
    const jet::Recordset line = database.openRecordset(
        u"SELECT Description, PartNumber, UnitPrice, UnitOfMeasure, ReceivedQuantity, "
        "Manufacturer FROM POItem WHERE ID = "_s +
            num(lineId),
        jet::RecordsetType::Snapshot);
    Item item;
    if (line.isEmpty())
        return item;
    item.description = line.text(u"Description");
    item.partNumber = line.text(u"PartNumber");
    item.manufacturer = line.text(u"Manufacturer");
    item.units = line.text(u"UnitOfMeasure");
    item.quantity = line[u"ReceivedQuantity"].toLong();
    item.price = line[u"UnitPrice"].toCurrency();
    return item;
}

std::optional<JobGoods> goodsOfJob(jet::Database& database, qint64 jobNo) {
    const QString like = u"Items.%1 IN (SELECT %2 FROM Job WHERE JobNo = %3 AND %2 <> '')"_s;
    const QString matching = itemSelect(
        u"WHERE "_s + like.arg(u"Description"_s, u"Description"_s, num(jobNo)) + u" OR "_s +
        like.arg(u"PartNumber"_s, u"PartNo"_s, num(jobNo)) + u" ORDER BY Items.Description"_s);
    database.expect({matching});
    const jet::Recordset job = database.openRecordset(
        u"SELECT Description, PartNo, InvoiceEach, Quantity FROM Job WHERE JobNo = "_s +
            num(jobNo) + u" ORDER BY JobNo"_s,
        jet::RecordsetType::Snapshot);
    if (job.isEmpty())
        return {};
    JobGoods goods;
    goods.item.description = job.text(u"Description");
    goods.item.partNumber = job.text(u"PartNo");
    goods.item.quantity = job[u"Quantity"].toLong();
    goods.item.price = job[u"InvoiceEach"].toCurrency();
    goods.matching = readItems(database, matching);
    return goods;
}

} // namespace inventory
