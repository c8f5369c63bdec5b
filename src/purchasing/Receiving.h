#pragma once

#include "platform/jet/Database.h"
#include "purchasing/PoStore.h"

#include <QDate>

namespace purchasing {

/// An open line of an order and what of it has just arrived.
struct ReceiveLine {
    qint64 itemId = 0; ///< POItem.ID
    bool selected = false;
    bool stock = false; ///< goes into inventory as well
    QString partNumber;
    QString description;
    qint64 quantity = 0; ///< that arrived
    qint64 received = 0; ///< before
    qint64 ordered = 0;
};

/// The lines of an order that have not been received whole.
std::vector<ReceiveLine> openLines(jet::Database& database, qint64 poNumber);

/// How goods were taken in.
struct Receipt {
    qint64 poNumber = 0;
    QDate date;
    qint64 employee = 0;
};

/// A receipt that is to be stocked and for which there is not just one item of its part number and
/// description.
struct Unstocked {
    qint64 receiptId = 0;
    ReceiveLine line;
    std::vector<qint64> items; ///< that it could be; none if there is none
};

/// The lines of the order were changed at another station, and one to be received isn't among them
/// any more.
struct LineGone : std::runtime_error {
    explicit LineGone(QString part)
        : std::runtime_error("order line gone"), partNumber(std::move(part)) {}
    QString partNumber;
};

/// Books the selected lines whose quantity is above zero: receipts, and what each line has received
/// by now as the sum of its receipts. Where exactly one item of inventory fits, what is to be
/// stocked is. A line that was saved anew meanwhile is found by its part. One transaction; returns
/// what is still to be stocked. Throws LineGone.
std::vector<Unstocked> receive(jet::Database& database, const Receipt& receipt,
                               const std::vector<ReceiveLine>& lines);

/// Stocks a receipt as an item. False if the item has gone.
bool stockReceipt(jet::Database& database, const Receipt& receipt, qint64 receiptId, qint64 itemId,
                  qint64 quantity);
/// Marks a receipt as stocked, so that it can't be deleted any more.
void markStocked(jet::Database& database, qint64 receiptId);

/// Takes a receipt back. False, and nothing is done, if it has been stocked.
bool deleteReceipt(jet::Database& database, qint64 receiptId);

} // namespace purchasing
