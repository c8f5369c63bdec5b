#pragma once

#include "inventory/Items.h"
#include "platform/controls/Grid.h"
#include "platform/controls/ListView.h"

namespace inventory {

/// The key of an item's row in a list.
QString itemKey(qint64 itemId);
/// An item as lists show it, with the icon of one that is below its minimum or not.
controls::ListRow listRow(const ItemRow& row);
/// The columns of an item's texts, and its rows in a grid, each with the item's number.
std::vector<controls::GridColumn> itemColumns();
void showItems(controls::Grid& grid, const std::vector<ItemRow>& items);

} // namespace inventory
