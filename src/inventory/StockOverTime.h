#pragma once

#include "inventory/Items.h"

#include <QDate>

#include <map>

namespace inventory {

/// What an item's stock was at the end of a day.
struct StockPoint {
    QDate date;
    qint64 stock = 0;
    bool operator==(const StockPoint&) const = default;
};

/// Reckoned back from what there is today, by what came in less what went out on each day. Begins
/// with the day before the first movement; what was typed over without a row isn't known and shows
/// in the days before it. Never below zero.
std::vector<StockPoint> stockSeries(qint64 now, const std::map<QDate, qint64>& changes,
                                    const QDate& today);

/// A line of an order that has not come whole.
struct OnOrder {
    qint64 poNumber = 0;
    QString vendor;
    std::optional<QDate> required;
    qint64 quantity = 0; ///< still to come
};

/// What is shown beside an item.
struct StockOutlook {
    std::vector<StockPoint> series;
    std::vector<OnOrder> orders; ///< of active orders, by their dates
};
StockOutlook stockOutlook(jet::Database& database, const Item& item);

} // namespace inventory
