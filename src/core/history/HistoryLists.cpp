#include "core/history/HistoryLists.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace core {

namespace {

/// " WHERE ..." over jobs or over estimates.
QString condition(const QString& table, const HistoryCriteria& criteria) {
    QStringList parts;
    if (!criteria.partNo.isEmpty())
        parts += table + u".PartNo LIKE '"_s + values::quoted(criteria.partNo) + u"*'"_s;
    if (criteria.custId != 0)
        parts += table + u".CustID = "_s + QString::number(criteria.custId);
    return u" WHERE "_s + parts.join(u" AND "_s);
}

bool isItems(const HistoryList& list) {
    return list.order.isEmpty();
}

/// The part of a select behind its columns, for items of jobs or of estimates.
QString itemsOf(const HistoryList& list, const QString& owner, const HistoryCriteria& criteria) {
    const QString key = owner == u"Job" ? u"JobNo"_s : u"EstNo"_s;
    return u" FROM %1 INNER JOIN %2 ON %1.%2 = %2.%3"_s.arg(list.table, owner, key) +
           condition(owner, criteria);
}

void fill(jet::Database& database, const HistoryList& list, const QString& from) {
    database.execute(u"INSERT INTO History (Type, %1) SELECT '%2' AS Type, %3 AS %1"_s.arg(
                         list.column, list.type, list.table + u'.' + list.key) +
                     from);
}

} // namespace

const std::array<HistoryList, 4>& historyLists() {
    static const std::array<HistoryList, 4> lists = {{
        {u"Job"_s, u"Jobs"_s, u"Job"_s, u"JobNo"_s, u"{Job.JobNo}"_s, u"job"_s, u"Job"_s,
         u"JobNo"_s, false, u"JobNo"_s},
        {u"Estimate"_s, u"Estimates"_s, u"Estimate"_s, u"EstNo"_s, u"{Estimate.EstNo}"_s, u"est"_s,
         u"Est"_s, u"EstNo"_s, false, u"EstNo"_s},
        {u"RFQ"_s,
         u"RFQ"_s,
         u"RFQitem"_s,
         u"VOrderKey"_s,
         u"{RFQItem.VOrderKey}"_s,
         u"rfq"_s,
         u"RFQ"_s,
         {},
         true,
         u"OrderNumber"_s},
        {u"PO"_s,
         u"PO"_s,
         u"POItem"_s,
         u"ItemKey"_s,
         u"{POItem.PONumber}"_s,
         u"po"_s,
         u"PO"_s,
         {},
         false,
         u"PONumber"_s},
    }};
    return lists;
}

QString historySelect(const HistoryList& list, const HistoryCriteria& criteria) {
    if (!isItems(list))
        return u"SELECT * FROM "_s + list.table + condition(list.table, criteria) +
               u" ORDER BY "_s + list.order;
    const QString columns = u"SELECT "_s + list.table + u".*"_s;
    return columns + itemsOf(list, u"Job"_s, criteria) + u" UNION ALL "_s + columns +
           itemsOf(list, u"Estimate"_s, criteria);
}

void fillHistory(jet::Database& database, const HistoryCriteria& criteria) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM History"_s);
    for (const HistoryList& list : historyLists()) {
        if (!isItems(list)) {
            fill(database, list, u" FROM "_s + list.table + condition(list.table, criteria));
            continue;
        }
        for (const QString& owner : {u"Job"_s, u"Estimate"_s})
            fill(database, list, itemsOf(list, owner, criteria));
    }
    transaction.commit();
}

QString historyPartsSelect(qint64 custId) {
    const QString where = custId == 0 ? QString() : u" WHERE CustID = "_s + QString::number(custId);
    return u"SELECT DISTINCT PartNo FROM Job"_s + where +
           u" UNION SELECT DISTINCT PartNo FROM Estimate"_s + where +
           u" ORDER BY PartNo"_s; // a server's union has none of its own
}

} // namespace core
