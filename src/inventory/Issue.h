#pragma once

#include "inventory/Items.h"

#include <QDate>

#include <functional>

namespace inventory {

/// What goes out of stock: one row of the item's history.
struct Issue {
    qint64 itemId = 0;
    qint64 quantity = 0;
    qint64 employee = 0; ///< EmpID
    QDate date;
    qint64 issueTo = 0; ///< job number, CustID or OperNo, by type
    QString type;       ///< "Job", "Sales" or "OverHead"
};

enum class Issued { Done, NotEnough, Gone };
/// Takes the quantity out of stock and writes the history row, in one transaction. What is there is
/// tested by the statement that takes it, so that stations that issue at once never take more than
/// there is. `alsoWrite` is done in the same transaction, if anything was taken.
Issued issue(jet::Database& database, const Issue& movement,
             const std::function<void()>& alsoWrite = {});

/// Posts what was issued as a fixed cost of a job: more of one that the job holds, or a new one of
/// that fixed cost item.
void postFixedCost(jet::Database& database, qint64 jobNo, qint64 itemNo, const QString& units,
                   values::Currency price, qint64 quantity);

/// A row of an item's history, with who it went to or came from.
struct Movement {
    qint64 id = 0;
    QDate date;
    QString type;
    qint64 number = 0; ///< job, customer, operation or order
    QString company;
    qint64 quantity = 0;
    QString employee;
};
struct ItemHistory {
    std::vector<Movement> issues, restocks; ///< by their dates
};
/// One wait on a server.
ItemHistory historyOf(jet::Database& database, qint64 itemId);

/// Rows of an item's history that are to be taken back.
struct Reversal {
    qint64 itemId = 0;
    std::vector<qint64> issues, restocks; ///< IDs
    bool updateQuantity = true;
    bool updateJobs = false; ///< the fixed costs of every job that holds the item
};
/// Takes the rows back that are still there, in one transaction. Stock that would fall below zero,
/// of whatever item, is zero afterwards.
void reverse(jet::Database& database, const Reversal& reversal);

} // namespace inventory
