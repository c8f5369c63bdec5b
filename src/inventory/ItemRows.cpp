#include "inventory/ItemRows.h"

#include "platform/controls/Pictures.h"
#include "platform/values/Literals.h"

namespace inventory {

QString itemKey(qint64 itemId) {
    return u"i"_s + QString::number(itemId);
}

controls::ListRow listRow(const ItemRow& row) {
    using namespace controls;
    const bool flagged = row.item.isFlagged();
    return {itemKey(row.item.id), row.texts(), flagged ? pictures::flaggedItem() : pictures::item(),
            flagged ? u"Item below its minimum"_s : u"Item"_s};
}

std::vector<controls::GridColumn> itemColumns() {
    return {{.title = u"Description"_s, .characters = 28, .stretches = true},
            {u"Part Number"_s, 16},
            {u"Manufacturer"_s, 16},
            {u"Location"_s, 14},
            {u"Type"_s, 14},
            {u"Quantity"_s, 10}};
}

void showItems(controls::Grid& grid, const std::vector<ItemRow>& items) {
    std::vector<QStringList> rows;
    rows.reserve(items.size());
    for (const ItemRow& item : items)
        rows.push_back(item.texts());
    grid.setRows(std::move(rows));
    for (std::size_t i = 0; i < items.size(); ++i)
        grid.setRowKey(static_cast<int>(i), items[i].item.id);
}

} // namespace inventory
