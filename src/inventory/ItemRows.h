#pragma once

#include "inventory/Items.h"
#include "platform/controls/ListView.h"

namespace inventory {

/// The key of an item's row in lists: "i" and its number.
QString itemKey(qint64 itemId);
/// An item's row in lists, with a flag while it is below its minimum.
controls::ListRow listRow(const ItemRow& row);

} // namespace inventory
