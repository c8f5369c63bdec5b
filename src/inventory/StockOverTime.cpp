#include "inventory/StockOverTime.h"

#include "inventory/Sql.h"
#include "platform/values/Clock.h"

#include <algorithm>

namespace inventory {

std::vector<StockPoint> stockSeries(qint64 now, const std::map<QDate, qint64>& changes,
                                    const QDate& today) {
    std::vector<StockPoint> points;
    qint64 stock = now;
    if (changes.empty() || changes.rbegin()->first < today)
        points.push_back({today, stock});
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        points.push_back({change->first, stock});
        stock = std::max<qint64>(0, stock - change->second);
    }
    if (!changes.empty())
        points.push_back({changes.begin()->first.addDays(-1), stock});
    std::reverse(points.begin(), points.end());
    return points;
}

StockOutlook stockOutlook(jet::Database& database, const Item& item) {
    const auto byDay = [&](const QString& table) {
        return u"SELECT [Date], Sum(Quantity) AS Moved FROM "_s + table + u" WHERE ItemID = "_s +
               num(item.id) + u" GROUP BY [Date]"_s;
    };
    auto sets = database.together(
        {byDay(u"ItemIssue"_s), byDay(u"ItemReStock"_s),
         u"SELECT POItem.PONumber, POVendor.Company, PO.ReqDate, POItem.Quantity, "
         "POItem.ReceivedQuantity FROM (POItem INNER JOIN PO ON POItem.PONumber = PO.PONumber) "
         "LEFT JOIN POVendor ON POItem.PONumber = POVendor.OrderNumber WHERE "
         "POItem.PartNumber = "_s +
             sqlText(item.partNumber) + u" AND POItem.Description = "_s +
             sqlText(item.description) +
             u" AND POItem.ReceivedQuantity < POItem.Quantity AND PO.Active = True ORDER BY "
             "PO.ReqDate, POItem.PONumber, POItem.ItemNumber"_s});
    std::map<QDate, qint64> changes;
    for (const int sign : {-1, 1}) {
        for (jet::Recordset& days = sets[sign < 0 ? 0 : 1]; !days.eof(); days.moveNext()) {
            if (const auto day = days.field(0).toDate())
                changes[*day] += sign * days.field(1).toLong();
        }
    }
    StockOutlook outlook;
    outlook.series = stockSeries(item.quantity, changes, values::today());
    for (jet::Recordset& lines = sets[2]; !lines.eof(); lines.moveNext())
        outlook.orders.push_back({lines.field(0).toLong(), lines.field(1).toText(),
                                  lines.field(2).toDate(),
                                  lines.field(3).toLong() - lines.field(4).toLong()});
    return outlook;
}

} // namespace inventory
