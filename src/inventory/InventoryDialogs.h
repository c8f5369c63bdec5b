#pragma once

#include "inventory/StockQuery.h"

#include <optional>

namespace inventory {

/// What the dialogs of inventory ask of the open explorer, "frmInventory".
class Explorer {
  public:
    virtual ~Explorer() = default;
    virtual const View& view() const = 0;
    /// Shows an item's row as it stands now; a new one is added if its folder is shown.
    virtual void itemChanged(qint64 itemId) = 0;
    /// Shows the present folder as it stands now.
    virtual void showAgain() = 0;
    /// Opens the folder of an item in the present view and selects it.
    virtual void goToItem(qint64 itemId) = 0;
    /// A folder was added.
    virtual void folderAdded(const Folder& folder) = 0;
};

/// "frmItemTypeNewEdit" and "frmItemLocNewEdit".
class FolderDialog {
  public:
    virtual ~FolderDialog() = default;
    /// Adds folders below a parent (0: the root), telling the explorer of each.
    virtual void add(qint64 parent, const QString& parentName) = 0;
    /// The new description; empty if the user cancelled or the folder has gone.
    virtual QString rename(qint64 id) = 0;
};

/// "frmItemNewEdit".
class ItemDialog {
  public:
    virtual ~ItemDialog() = default;
    /// Adds items, the first into a folder of the explorer's view. The explorer is told of each.
    virtual void add(const View& view, qint64 folder) = 0;
    /// True if something was saved.
    virtual bool edit(qint64 itemId) = 0;
};

/// "frmItemIssueInv" and "frmItemActivity": something about one item.
class ItemAction {
  public:
    virtual ~ItemAction() = default;
    virtual void showFor(qint64 itemId) = 0;
};

/// "frmItemReStock".
class RestockDialog {
  public:
    virtual ~RestockDialog() = default;
    /// `itemId` 0: none is selected.
    virtual void stock(qint64 itemId) = 0;
};

/// "frmItemReStockSelected", "frmItemReStockPO" and "frmItemRestockJob": what they stock from is
/// the number of an item, an order or a job.
class RestockFrom {
  public:
    virtual ~RestockFrom() = default;
    /// True if something was stocked.
    virtual bool stock(qint64 number, qint64 employee, const QDate& date) = 0;
};

/// "frmItemCount".
class CountScreen {
  public:
    virtual ~CountScreen() = default;
    /// Begins a count of what is at a location and below. False if another one is being entered.
    virtual bool countAt(qint64 location) = 0;
};

/// "frmQueryTypeLoc", as its results see it.
class StockSource {
  public:
    virtual ~StockSource() = default;
    virtual const StockQuestion& question() const = 0;
    virtual const std::vector<ItemRow>& found() const = 0;
};

/// "frmReportAllItemsQresults": items to be printed, also those that another screen has found.
class StockResults {
  public:
    virtual ~StockResults() = default;
    virtual void showItems(const std::vector<ItemRow>& items) = 0;
};

/// "frmItemOrder".
class OrderDialog {
  public:
    virtual ~OrderDialog() = default;
    /// Puts an item on a purchase order, after a message where it lacks what an order needs.
    /// `quantity` is what is offered; 0: nothing.
    virtual void order(qint64 itemId, qint64 quantity) = 0;
};

} // namespace inventory
