#pragma once

#include "inventory/Folders.h"
#include "platform/values/Currency.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace inventory {

/// A stock item as it is stored.
struct Item {
    qint64 id = 0;
    QString description, partNumber, manufacturer, units;
    qint64 quantity = 0; ///< on hand
    values::Currency price;
    qint64 flagQuantity = 0; ///< 0: no flag
    qint64 type = 0, location = 0;

    bool isFlagged() const { return flagQuantity > quantity; }
    bool operator==(const Item&) const = default;
};

/// An item as lists show it, with the names of its folders.
struct ItemRow {
    Item item;
    QString locationName, typeName;

    /// Description, part number, manufacturer, location, type, quantity with units.
    QStringList texts() const;
};

/// The select of items with the names of their folders, and its rows. `behind` begins with WHERE or
/// ORDER BY.
QString itemSelect(const QString& behind);
std::vector<ItemRow> readItems(jet::Database& database, const QString& select);

/// The items of a folder, in the order of their descriptions.
std::vector<ItemRow> itemsIn(jet::Database& database, const View& view, qint64 folder);
/// What stands in a folder: its sub-folders and its items, in one wait.
struct FolderContents {
    std::vector<Folder> folders;
    std::vector<ItemRow> items;
};
FolderContents contentsOf(jet::Database& database, const View& view, qint64 folder);
/// What contentsOf() opens, to be expected by who opens others beside it.
std::vector<jet::WantedSet> contentsSelects(const View& view, qint64 folder);
/// The items that a text is found in: wrapped in "*" on either side unless it has one there. Empty
/// texts are no criteria.
std::vector<ItemRow> findItems(jet::Database& database, const QString& description,
                               const QString& partNumber);
/// The items of that part number and that description, the newest first.
std::vector<ItemRow> itemsOfPart(jet::Database& database, const QString& partNumber,
                                 const QString& description);
/// Items below their minimum.
std::vector<ItemRow> flaggedItems(jet::Database& database);
std::optional<ItemRow> itemRow(jet::Database& database, qint64 id);
/// Its select, to be expected by who opens others beside it.
QString itemRowSelect(qint64 id);

/// The item to be edited. A minimum that was never set counts as none, in the whole table.
std::optional<Item> loadItem(jet::Database& database, qint64 id);

/// Why an item can't be saved and where that is mended; empty if it can.
struct ItemCheck {
    QString text, field;
};
std::optional<ItemCheck> checkItem(const Item& item);
/// The same for goods of a purchase order, which need a part number, in the order of their dialog.
std::optional<ItemCheck> checkOrderedItem(const Item& item);

enum class Saved { Done, Gone, StockChanged };
/// Adds an item; its number.
qint64 addItem(jet::Database& database, const Item& item);
/// Writes what differs from `before`. A quantity that was typed is a correction of the one that was
/// shown: if the stock has changed since, nothing is written.
Saved saveItem(jet::Database& database, const Item& item, const Item& before);
/// With its history.
void deleteItem(jet::Database& database, qint64 id);

/// The fixed cost item of a description; 0 if there is none.
qint64 fixedCostItem(jet::Database& database, const QString& description);
/// Selects the fixed cost item of an item's description.
QString fixedCostOfSelect(qint64 itemId);
/// Adds a fixed cost item (its number), or gives the one of that description unit and price.
qint64 addFixedCostItem(jet::Database& database, const QString& description, const QString& units,
                        values::Currency price);
void changeFixedCostItem(jet::Database& database, const QString& description, const QString& units,
                         values::Currency price);

} // namespace inventory
