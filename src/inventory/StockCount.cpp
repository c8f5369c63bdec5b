#include "inventory/StockCount.h"

#include "inventory/Sql.h"

#include <QHash>

#include <algorithm>

namespace inventory {

std::vector<qint64> countFolders(jet::Database& database, qint64 location) {
    return foldersBelow(database.openRecordset(u"SELECT ID, Parent FROM ItemLocations"_s,
                                               jet::RecordsetType::Snapshot),
                        location);
}

std::vector<CountLine> countSheet(jet::Database& database, const std::vector<qint64>& locations) {
    auto items = readItems(database, itemSelect(u"WHERE Items.Location IN ("_s + listOf(locations) +
                                                u") ORDER BY ItemLocations.Description, "
                                                "Items.Location, Items.Description, Items.ID"_s));
    std::vector<CountLine> lines;
    lines.reserve(items.size());
    for (ItemRow& row : items)
        lines.push_back({row.item.id, row.item.description, row.item.partNumber, row.locationName,
                         row.item.units, row.item.quantity, std::nullopt});
    return lines;
}

QString countFormula(const std::vector<qint64>& locations) {
    return u"{Items.Location} in ["_s + listOf(locations) + u"]"_s;
}

std::vector<CountChange> postCount(jet::Database& database, const std::vector<CountLine>& lines,
                                   qint64 employee, const QDate& date) {
    std::vector<const CountLine*> different;
    std::vector<qint64> ids;
    for (const CountLine& line : lines) {
        if (line.difference() == 0)
            continue;
        different.push_back(&line);
        ids.push_back(line.itemId);
    }
    if (ids.empty())
        return {};
    const QString these = u" WHERE ID IN ("_s + listOf(ids) + u")"_s;
    jet::Transaction transaction(database);
    // Held first, so that nobody issues between the test and the correction.
    database.execute(u"UPDATE Items SET Quantity = [Quantity] + 0"_s + these);
    QHash<qint64, qint64> stock;
    jet::Recordset set = database.openRecordset(u"SELECT ID, Quantity FROM Items"_s + these,
                                                jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        stock.insert(set[u"ID"].toLong(), set[u"Quantity"].toLong());
    std::vector<CountChange> changed;
    std::vector<std::vector<jet::Value>> corrected, shortages, surpluses;
    for (const CountLine* line : different) {
        const auto now = stock.constFind(line->itemId);
        if (now == stock.constEnd())
            changed.push_back({line->itemId, std::nullopt});
        else if (*now != line->stock)
            changed.push_back({line->itemId, *now});
        corrected.push_back({line->itemId, *line->counted});
        const qint64 difference = line->difference();
        (difference < 0 ? shortages : surpluses)
            .push_back({line->itemId, std::abs(difference), employee, date, u"Count"_s, 0});
    }
    if (!changed.empty())
        return changed;
    database.updateRows(u"Items"_s, {u"ID"_s, u"Quantity"_s}, 1, corrected);
    const QStringList columns{u"ItemID"_s, u"Quantity"_s, u"Employee"_s, u"Date"_s, u"Type"_s};
    database.insertRows(u"ItemIssue"_s, columns + QStringList(u"IssueTo"_s), shortages);
    database.insertRows(u"ItemReStock"_s, columns + QStringList(u"Number"_s), surpluses);
    transaction.commit();
    return {};
}

} // namespace inventory
