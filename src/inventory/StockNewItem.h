#pragma once

#include "inventory/Restock.h"

#include <functional>
#include <utility>

namespace inventory {

/// What "frmPOItemRestock", "frmItemReStockCreate" and "frmItemRestockJobCreate" offer: an item of
/// inventory made of goods that came from an order or a job, with them as its stock.
class StockNewItem {
  public:
    virtual ~StockNewItem() = default;
    /// `goods` is what the dialog begins with. `alsoWrite` runs in the transaction that adds the
    /// item. False if the user cancelled.
    virtual bool create(const Item& goods, const Restock& movement,
                        const std::function<void()>& alsoWrite = {}) = 0;
};

/// What "frmItemTreeSelect" offers: a folder of the types or the locations of inventory.
class FolderPicker {
  public:
    virtual ~FolderPicker() = default;
    struct Picked {
        qint64 folder = 0;
        QString path; ///< parted by backslashes
    };
    /// `view` is "Type" or "Location".
    virtual std::optional<Picked> pickFolder(const QString& view) = 0;
};

/// What "frmItemReStockPOMulti" offers: which of several items a part is.
class ItemPicker {
  public:
    virtual ~ItemPicker() = default;
    /// Says that there are several and asks; nothing for none of them.
    virtual std::optional<qint64> pickItem(const QString& partNumber,
                                           const QString& description) = 0;
};

} // namespace inventory
