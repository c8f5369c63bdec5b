#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace inventory {

/// What comes into stock: one row of the item's history.
struct Restock {
    qint64 itemId = 0;
    qint64 quantity = 0;
    qint64 employee = 0; ///< EmpID
    QDate date;
    QString type;      ///< "PO", "Job" or "Manual"
    qint64 number = 0; ///< of the order or the job; 0 for "Manual"
    qint64 vendor = 0; ///< VendID; 0 for "Job"
};

/// An item that does not exist yet.
struct NewItem {
    QString partNumber;
    QString description;
    QString manufacturer;
    QString units;
    values::Currency priceEach;
    qint64 quantity = 0;     ///< on hand from the beginning
    qint64 flagQuantity = 0; ///< 0: no flag
    qint64 type = 0;         ///< folder among the types, never the root
    qint64 location = 0;     ///< folder among the locations, never the root
};

/// The items of that part number and description, the newest first.
std::vector<qint64> matchingItems(jet::Database& database, const QString& partNumber,
                                  const QString& description);

/// Writes the history row and raises the stock by the database's own sum, in one transaction, so
/// that stations that stock and issue at once lose nothing. False, and nothing written, if the item
/// has gone.
bool restock(jet::Database& database, const Restock& movement);

/// Adds the item with its quantity and, in the same transaction, the history row of how it came;
/// the movement's item and quantity are the new item's. Returns its number.
qint64 createStocked(jet::Database& database, const NewItem& item, Restock movement);

/// Why an item can't be added and the field where that is mended, in the order of the checks for
/// goods that are received; nothing if it can.
struct ItemComplaint {
    QString text;
    QString field;
};
std::optional<ItemComplaint> checkItem(const NewItem& item);

} // namespace inventory
