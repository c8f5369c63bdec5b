#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <array>
#include <vector>

namespace core {

/// What the history of a customer, a part number or both is asked for.
struct HistoryCriteria {
    qint64 custId = 0; ///< 0: any
    QString partNo;    ///< how part numbers begin; empty: any
    bool isEmpty() const { return custId == 0 && partNo.isEmpty(); }
};

/// One of the four lists of the history: jobs, estimates, RFQ items or PO items.
struct HistoryList {
    QString name;         ///< "Job", "Estimate", "RFQ", "PO"
    QString reportModule; ///< of the reports on its rows
    QString table;        ///< "RFQitem"; a job's or an estimate's own table
    QString key;          ///< "VOrderKey": the column that goes to History and names the record
    QString formula;      ///< "{RFQItem.VOrderKey}", as reports name it
    QString type;         ///< of its rows in History: "rfq"
    QString column;       ///< of its keys in History: "RFQ"
    QString order;        ///< columns that its rows are sorted by; empty for items
    bool textKey = false;
    QString goesBy; ///< the number of the record to go to: "OrderNumber"
};
const std::array<HistoryList, 4>& historyLists();

/// The rows of a list: all columns. RFQ and PO items are found by the job or the estimate that they
/// name, once for each.
QString historySelect(const HistoryList& list, const HistoryCriteria& criteria);

/// Empties the table History and fills it with the keys of all four lists, in one transaction.
void fillHistory(jet::Database& database, const HistoryCriteria& criteria);

/// The part numbers of a customer's jobs and estimates; of all where `custId` is 0.
QString historyPartsSelect(qint64 custId);

} // namespace core
