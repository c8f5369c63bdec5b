#pragma once

#include "inventory/Items.h"

#include <QDate>

namespace inventory {

/// An item that is to be ordered.
struct StockOrder {
    Item item;
    qint64 quantity = 0;
    QString type;      ///< "Stock", "Job", "Estimate" or "Overhead"
    qint64 number = 0; ///< of the job or the estimate
};

/// What a line can be ordered for: the open jobs, or the latest estimates, the newest first. Any
/// other number is typed.
QString worksSelect(bool jobs);
/// Whether there is a job, or an estimate, of that number.
bool isWork(jet::Database& database, bool job, qint64 number);

/// Makes a purchase order of one line to a vendor, in one transaction; it has no address to ship to
/// yet. Its number; 0, and nothing written, if the vendor has gone. Throws values::Overflow where
/// the total is too large.
qint64 orderNew(jet::Database& database, const StockOrder& order, qint64 vendor,
                const std::optional<QDate>& required);

/// Adds a line to an order, which is active from then on. False, and nothing written, if there is
/// no such order. Throws values::Overflow.
bool orderOnto(jet::Database& database, const StockOrder& order, qint64 poNumber);

} // namespace inventory
