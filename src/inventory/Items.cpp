#include "inventory/Items.h"

#include "inventory/Sql.h"

namespace inventory {

namespace {

std::vector<ItemRow> rowsOf(jet::Recordset set) {
    std::vector<ItemRow> rows;
    rows.reserve(static_cast<std::size_t>(set.recordCount()));
    for (; !set.eof(); set.moveNext()) {
        ItemRow row;
        row.item = {set[u"ID"].toLong(),
                    set.text(u"Description"),
                    set.text(u"PartNumber"),
                    set.text(u"Manufacturer"),
                    set.text(u"Units"),
                    set[u"Quantity"].toLong(),
                    set[u"PricePer"].toCurrency(),
                    set[u"FlagQuantity"].toLong(),
                    set[u"Type"].toLong(),
                    set[u"Location"].toLong()};
        row.locationName = set.text(u"LocationDesc");
        row.typeName = set.text(u"TypeDesc");
        rows.push_back(std::move(row));
    }
    return rows;
}

/// The items as lists show them; `behind` begins with WHERE or ORDER BY.
std::vector<ItemRow> readRows(jet::Database& database, const QString& behind) {
    return readItems(database, itemSelect(behind));
}

QString wrapped(QString text) {
    if (!text.startsWith(u'*'))
        text.prepend(u'*');
    if (!text.endsWith(u'*'))
        text.append(u'*');
    return sqlText(text);
}

} // namespace

QString itemSelect(const QString& behind) {
    return u"SELECT Items.ID, Items.Description AS Description, Items.Location, Items.Type, "
           "Items.Manufacturer, Items.FlagQuantity, Items.PartNumber, Items.Quantity, Items.Units, "
           "Items.PricePer, ItemLocations.Description AS LocationDesc, "
           "ItemTypes.Description as TypeDesc FROM (Items INNER JOIN ItemTypes ON Items.Type = "
           "ItemTypes.ID) INNER JOIN ItemLocations ON Items.Location = ItemLocations.ID "_s +
           behind;
}

std::vector<ItemRow> readItems(jet::Database& database, const QString& select) {
    return rowsOf(database.openRecordset(select, jet::RecordsetType::Snapshot));
}

QStringList ItemRow::texts() const {
    return {item.description,         item.partNumber,      item.manufacturer,
            u"..\\"_s + locationName, u"..\\"_s + typeName, num(item.quantity) + u' ' + item.units};
}

namespace {

QString itemsSelect(const View& view, qint64 folder) {
    return itemSelect(u"WHERE Items."_s + view.word + u" = "_s + num(folder) +
                      u" ORDER BY Items.Description"_s);
}

} // namespace

std::vector<ItemRow> itemsIn(jet::Database& database, const View& view, qint64 folder) {
    return readItems(database, itemsSelect(view, folder));
}

std::vector<jet::WantedSet> contentsSelects(const View& view, qint64 folder) {
    return {foldersSelect(view, folder), itemsSelect(view, folder)};
}

FolderContents contentsOf(jet::Database& database, const View& view, qint64 folder) {
    const auto sets = database.together(contentsSelects(view, folder));
    return {foldersOf(sets[0], folder), rowsOf(sets[1])};
}

std::vector<ItemRow> findItems(jet::Database& database, const QString& description,
                               const QString& partNumber) {
    QStringList criteria;
    if (!description.isEmpty())
        criteria << u"Items.Description LIKE "_s + wrapped(description);
    if (!partNumber.isEmpty())
        criteria << u"Items.PartNumber LIKE "_s + wrapped(partNumber);
    return readRows(database,
                    (criteria.isEmpty() ? QString() : u"WHERE "_s + criteria.join(u" AND "_s)) +
                        u" ORDER BY Items.Description"_s);
}

std::vector<ItemRow> itemsOfPart(jet::Database& database, const QString& partNumber,
                                 const QString& description) {
    return readRows(database, u"WHERE Items.PartNumber = "_s + sqlText(partNumber) +
                                  u" AND Items.Description = "_s + sqlText(description) +
                                  u" ORDER BY Items.ID DESC"_s);
}

std::vector<ItemRow> flaggedItems(jet::Database& database) {
    return readRows(database,
                    u"WHERE Items.FlagQuantity > Items.Quantity ORDER BY Items.Description"_s);
}

QString itemRowSelect(qint64 id) {
    return itemSelect(u"WHERE Items.ID = "_s + num(id));
}

std::optional<ItemRow> itemRow(jet::Database& database, qint64 id) {
    auto rows = readItems(database, itemRowSelect(id));
    return rows.empty() ? std::nullopt : std::optional(std::move(rows.front()));
}

std::optional<Item> loadItem(jet::Database& database, qint64 id) {
    const jet::Recordset row =
        database.openRecordset(u"SELECT * FROM Items WHERE ID = "_s + num(id) + u" ORDER BY ID"_s,
                               jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return {};
    // What was never set is so in many rows.
    if (row[u"FlagQuantity"].isNull())
        database.execute(u"UPDATE Items SET FlagQuantity = 0 WHERE FlagQuantity IS NULL"_s);
    return Item{id,
                row.text(u"Description"),
                row.text(u"PartNumber"),
                row.text(u"Manufacturer"),
                row.text(u"Units"),
                row[u"Quantity"].toLong(),
                row[u"PricePer"].toCurrency(),
                row[u"FlagQuantity"].toLong(),
                row[u"Type"].toLong(),
                row[u"Location"].toLong()};
}

namespace {

/// The first of some checks, in the order in which a dialog has them, that an item fails.
enum class Check { Description, PartNumber, Location, Type, Manufacturer, Units };
std::optional<ItemCheck> firstFault(const Item& item, std::initializer_list<Check> checks) {
    for (const Check check : checks) {
        switch (check) {
        case Check::Description:
            if (item.description.trimmed().isEmpty())
                return ItemCheck{u"Description may not be blank!"_s, u"txtDescription"_s};
            break;
        case Check::PartNumber:
            if (item.partNumber.trimmed().isEmpty())
                return ItemCheck{u"Part Number may not be blank!"_s, u"txtPartNumber"_s};
            break;
        case Check::Location:
            if (item.location == 0)
                return ItemCheck{u"Location may not be blank!"_s, u"cmdTreeLoc"_s};
            break;
        case Check::Type:
            if (item.type == 0)
                return ItemCheck{u"Tool Type may not be blank!"_s, u"cmdTreeType"_s};
            break;
        case Check::Manufacturer:
            if (item.manufacturer.size() > 255)
                return ItemCheck{u"Manufacturer may not be longer than 255 characters!"_s,
                                 u"cboMan"_s};
            break;
        case Check::Units:
            if (item.units.trimmed().isEmpty())
                return ItemCheck{u"Units may not be blank!"_s, u"dbcUnits"_s};
            break;
        }
    }
    return {};
}

} // namespace

std::optional<ItemCheck> checkItem(const Item& item) {
    return firstFault(item, {Check::Location, Check::Type, Check::Manufacturer, Check::Description,
                             Check::Units});
}

std::optional<ItemCheck> checkOrderedItem(const Item& item) {
    return firstFault(item, {Check::Description, Check::PartNumber, Check::Location, Check::Type,
                             Check::Manufacturer, Check::Units});
}

qint64 addItem(jet::Database& database, const Item& item) {
    database.execute(u"INSERT INTO Items (Units, Type, FlagQuantity, Quantity, Manufacturer, "
                     "PartNumber, Description, Priceper, Location) VALUES("_s +
                     sqlText(item.units) + u", "_s + num(item.type) + u", "_s +
                     num(item.flagQuantity) + u", "_s + num(item.quantity) + u", "_s +
                     sqlText(item.manufacturer) + u", "_s + sqlText(item.partNumber) + u", "_s +
                     sqlText(item.description) + u", "_s + item.price.toText() + u", "_s +
                     num(item.location) + u")"_s);
    return database.lastCounter();
}

Saved saveItem(jet::Database& database, const Item& item, const Item& before) {
    QStringList changes;
    const auto put = [&](const QString& column, auto member, const QString& value) {
        if (item.*member != before.*member)
            changes << column + u" = "_s + value;
    };
    put(u"Manufacturer"_s, &Item::manufacturer, sqlText(item.manufacturer));
    put(u"PartNumber"_s, &Item::partNumber, sqlText(item.partNumber));
    put(u"Description"_s, &Item::description, sqlText(item.description));
    put(u"PricePer"_s, &Item::price, item.price.toText());
    put(u"Quantity"_s, &Item::quantity, num(item.quantity));
    put(u"Units"_s, &Item::units, sqlText(item.units));
    put(u"Location"_s, &Item::location, num(item.location));
    put(u"Type"_s, &Item::type, num(item.type));
    put(u"FlagQuantity"_s, &Item::flagQuantity, num(item.flagQuantity));
    if (changes.isEmpty())
        return Saved::Done;
    const QString here = u" WHERE ID = "_s + num(item.id);
    const QString asShown = item.quantity == before.quantity ? QString()
                            : before.quantity == 0 ? u" AND (Quantity = 0 OR Quantity IS NULL)"_s
                                                   : u" AND Quantity = "_s + num(before.quantity);
    if (database.execute(u"UPDATE Items SET "_s + changes.join(u", "_s) + here + asShown) > 0)
        return Saved::Done;
    return database.hasRows(u"SELECT ID FROM Items"_s + here) ? Saved::StockChanged : Saved::Gone;
}

void deleteItem(jet::Database& database, qint64 id) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM Items WHERE ID = "_s + num(id));
    database.execute(u"DELETE * FROM ItemIssue WHERE ItemID = "_s + num(id));
    database.execute(u"DELETE * FROM ItemReStock WHERE ItemID = "_s + num(id));
    transaction.commit();
}

qint64 fixedCostItem(jet::Database& database, const QString& description) {
    return database
        .lookup(u"SELECT ItemNo FROM MiscItems WHERE Description = "_s + sqlText(description) +
                u" ORDER BY ItemNo"_s)
        .toLong();
}

QString fixedCostOfSelect(qint64 itemId) {
    return u"SELECT MiscItems.ItemNo FROM MiscItems INNER JOIN Items ON MiscItems.Description = "
           "Items.Description WHERE Items.ID = "_s +
           num(itemId) + u" ORDER BY MiscItems.ItemNo"_s;
}

qint64 addFixedCostItem(jet::Database& database, const QString& description, const QString& units,
                        values::Currency price) {
    database.execute(u"INSERT INTO MiscItems (Description, UnitOfMeasure, UnitPrice) VALUES ("_s +
                     sqlText(description) + u", "_s + sqlText(units) + u", "_s + price.toText() +
                     u")"_s);
    return database.lastCounter();
}

void changeFixedCostItem(jet::Database& database, const QString& description, const QString& units,
                         values::Currency price) {
    database.execute(u"UPDATE MiscItems SET UnitOfMeasure = "_s + sqlText(units) +
                     u", UnitPrice = "_s + price.toText() + u" WHERE Description = "_s +
                     sqlText(description));
}

} // namespace inventory
