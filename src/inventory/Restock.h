#pragma once

#include "inventory/Items.h"

#include <QDate>

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

/// The items of that part number and description, the newest first.
std::vector<qint64> matchingItems(jet::Database& database, const QString& partNumber,
                                  const QString& description);

/// The same for many, by part number and description: the items of each, in one wait.
using WantedItems = std::vector<std::pair<QString, QString>>;
std::vector<std::vector<qint64>> matchingItems(jet::Database& database, const WantedItems& wanted);
/// The select that it opens, to be expected by who opens others beside it.
QString matchingItemsSelect(const WantedItems& wanted);

/// Writes the history rows and raises the stock, in one transaction that holds the items while it
/// adds, so that stations that stock and issue at once lose nothing. False, and nothing written, if
/// one of the items has gone.
bool restock(jet::Database& database, const std::vector<Restock>& movements);
bool restock(jet::Database& database, const Restock& movement);

/// Adds the item with its quantity and, in the same transaction, the history row of how it came;
/// the movement's item and quantity are the new item's. Returns its number.
qint64 createStocked(jet::Database& database, const Item& item, Restock movement);

/// A line of a purchase order of which something was received, and what of it goes into stock.
struct ReceivedLine {
    qint64 lineId = 0; ///< POItem.ID
    bool selected = false;
    QString partNumber, description;
    qint64 stock = 0;
    qint64 received = 0, ordered = 0;
};
std::vector<ReceivedLine> receivedLines(jet::Database& database, qint64 poNumber);

/// A line that isn't stocked because there is not just one item of its part number and description.
struct LeftLine {
    ReceivedLine line;
    std::vector<qint64> items; ///< that it could be; none if there is none
};
/// Stocks the selected lines of an order, in one transaction, and returns those that are left. The
/// movement says by whom and when.
std::vector<LeftLine> stockLines(jet::Database& database, const Restock& how,
                                 const std::vector<ReceivedLine>& lines);
/// The vendor of an order; 0 if it has none.
qint64 vendorOfOrder(jet::Database& database, qint64 poNumber);
QString vendorOfOrderSelect(qint64 poNumber);
/// What an item made of a line of an order begins with, what was received as its quantity.
Item itemOfLine(jet::Database& database, qint64 lineId);

/// What a shipped job made, as an item would have it, and the items that it could be.
struct JobGoods {
    Item item;
    std::vector<ItemRow> matching;
};
std::optional<JobGoods> goodsOfJob(jet::Database& database, qint64 jobNo);

} // namespace inventory
