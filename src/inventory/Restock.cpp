#include "inventory/Restock.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace inventory {

namespace {

QString num(qint64 number) {
    return QString::number(number);
}

QString sqlText(const QString& text) {
    return u"'"_s + values::quoted(text) + u"'"_s;
}

void writeHistory(jet::Database& database, const Restock& movement) {
    database.execute(u"INSERT INTO ItemReStock (ItemID, Quantity, Employee, [Date], [Type], "
                     "[Number], Vendor) VALUES ("_s +
                     num(movement.itemId) + u", "_s + num(movement.quantity) + u", "_s +
                     num(movement.employee) + u", #"_s + values::sqlDate(movement.date) + u"#, "_s +
                     sqlText(movement.type) + u", "_s + num(movement.number) + u", "_s +
                     num(movement.vendor) + u")"_s);
}

} // namespace

std::vector<qint64> matchingItems(jet::Database& database, const QString& partNumber,
                                  const QString& description) {
    jet::Recordset set = database.openRecordset(u"SELECT * FROM Items WHERE PartNumber = "_s +
                                                    sqlText(partNumber) + u" AND Description = "_s +
                                                    sqlText(description) + u" ORDER BY ID DESC"_s,
                                                jet::RecordsetType::Snapshot);
    std::vector<qint64> items;
    for (; !set.eof(); set.moveNext())
        items.push_back(set[u"ID"].toLong());
    return items;
}

bool restock(jet::Database& database, const Restock& movement) {
    jet::Transaction transaction(database);
    const int touched =
        database.execute(u"UPDATE Items Set Quantity = [Quantity] + "_s + num(movement.quantity) +
                         u" WHERE ID = "_s + num(movement.itemId));
    if (touched == 0)
        return false;
    writeHistory(database, movement);
    transaction.commit();
    return true;
}

qint64 createStocked(jet::Database& database, const NewItem& item, Restock movement) {
    jet::Transaction transaction(database);
    database.execute(u"INSERT INTO Items (Units, Type, FlagQuantity, Quantity, Manufacturer, "
                     "PartNumber, Description, Priceper, Location) VALUES("_s +
                     sqlText(item.units) + u", "_s + num(item.type) + u", "_s +
                     num(item.flagQuantity) + u", "_s + num(item.quantity) + u", "_s +
                     sqlText(item.manufacturer) + u", "_s + sqlText(item.partNumber) + u", "_s +
                     sqlText(item.description) + u", "_s + item.priceEach.toText() + u", "_s +
                     num(item.location) + u")"_s);
    movement.itemId = database.lastCounter();
    movement.quantity = item.quantity;
    writeHistory(database, movement);
    transaction.commit();
    return movement.itemId;
}

std::optional<ItemComplaint> checkItem(const NewItem& item) {
    if (item.location == 0)
        return ItemComplaint{u"Location may not be blank!"_s, u"txtLocation"_s};
    if (item.type == 0)
        return ItemComplaint{u"Tool Type may not be blank!"_s, u"txtType"_s};
    if (item.manufacturer.size() > 255)
        return ItemComplaint{u"Manufacturer may not be longer than 255 characters!"_s, u"cboMan"_s};
    if (item.description.trimmed().isEmpty())
        return ItemComplaint{u"Description may not be blank!"_s, u"txtDescription"_s};
    if (item.units.trimmed().isEmpty())
        return ItemComplaint{u"Units may not be blank!"_s, u"dbcUnits"_s};
    return std::nullopt;
}

} // namespace inventory
