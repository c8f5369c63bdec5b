#pragma once

#include "inventory/Restock.h"

#include <functional>
#include <utility>

namespace inventory {

/// What "frmPOItemRestock" offers: an item of inventory made of a line of a purchase order.
class StockNewItem {
  public:
    virtual ~StockNewItem() = default;
    /// `itemId` is POItem.ID, whose fields are offered; the movement's quantity is what arrived.
    /// `alsoWrite` runs in the transaction that adds the item. False if the user cancelled.
    virtual bool create(qint64 itemId, const Restock& movement,
                        const std::function<void()>& alsoWrite) = 0;
};

/// What "frmItemTreeSelect" offers: a folder of the types or the locations of inventory.
class FolderPicker {
  public:
    virtual ~FolderPicker() = default;
    /// The folder's number and its path, parted by backslashes; 0 for none. `view` is "Type" or
    /// "Location".
    virtual std::pair<qint64, QString> pickFolder(const QString& view) = 0;
};

/// What "frmItemReStockPOMulti" offers: which of several items a part is.
class ItemPicker {
  public:
    virtual ~ItemPicker() = default;
    /// 0 for none.
    virtual qint64 pickItem(const QString& partNumber, const QString& description) = 0;
};

} // namespace inventory
