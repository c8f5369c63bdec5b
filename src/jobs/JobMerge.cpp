#include "jobs/JobMerge.h"

#include "platform/values/Literals.h"

#include <algorithm>

namespace jobs {

using estimating::Complaint;
using estimating::MiscRow;
using estimating::OperRow;

namespace {

// The rows are taken before they are read: a program that doesn't take turns with ours then waits
// with its change, or we have waited for it.

std::vector<OperRow> storedOperations(jet::Database& database, const QString& jobNo) {
    database.execute(u"UPDATE JobOper SET Status = Status WHERE JobNo = "_s + jobNo);
    jet::Recordset set = database.openRecordset(
        u"SELECT JobOper.* FROM JobOper INNER JOIN Operation ON JobOper.OperNo = "
        "Operation.OperNo WHERE JobOper.JobNo="_s +
            jobNo + u" ORDER BY JobOper.SeqNo"_s,
        jet::RecordsetType::Snapshot);
    std::vector<OperRow> rows;
    for (; !set.eof(); set.moveNext()) {
        OperRow row;
        row.operNo = set[u"OperNo"].toLong();
        row.time = set[u"OperTime_Amount"].toDouble();
        row.located = static_cast<int>(set[u"OperLocated"].toLong());
        row.status = set.text(u"Status");
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<MiscRow> storedFixedCosts(jet::Database& database, const QString& jobNo) {
    database.execute(u"UPDATE JobMiscCost SET Quantity = Quantity WHERE JobNo = "_s + jobNo);
    jet::Recordset set = database.openRecordset(
        u"SELECT * FROM JobMiscCost WHERE JobNo = "_s + jobNo, jet::RecordsetType::Snapshot);
    std::vector<MiscRow> rows;
    for (; !set.eof(); set.moveNext()) {
        rows.push_back({set[u"ItemNo"].toLong(), QString(), set.text(u"UnitofMeasure"),
                        set[u"UnitPrice"].toCurrency(), set[u"Quantity"].toCurrency(),
                        set[u"CostAmount"].toCurrency()});
    }
    return rows;
}

/// The row of an item, the n-th one where it stands several times.
template <class Rows>
auto nthOf(Rows& rows, qint64 itemNo, std::ptrdiff_t n) {
    return std::find_if(rows.begin(), rows.end(),
                        [&](const MiscRow& row) { return row.itemNo == itemNo && n-- == 0; });
}

} // namespace

std::optional<Complaint> mergeOperations(jet::Database& database, qint64 jobNo,
                                         const std::vector<OperRow>& before,
                                         std::vector<OperRow>& rows) {
    const std::vector<OperRow> stored = storedOperations(database, QString::number(jobNo));
    if (!std::equal(stored.begin(), stored.end(), before.begin(), before.end(),
                    [](const OperRow& a, const OperRow& b) { return a.operNo == b.operNo; })) {
        return Complaint{u"The operations of this job have been changed at another "
                         "station since you opened it.\r\nPlease note what you "
                         "have entered, cancel, and edit the job again."_s,
                         u"sprOper"_s};
    }
    for (std::size_t i = 0; i < before.size(); ++i) {
        const OperRow& was = before[i];
        const OperRow& now = stored[i];
        const auto mine = std::find_if(
            rows.begin(), rows.end(), [&](const OperRow& row) { return row.operNo == was.operNo; });
        if (mine == rows.end()) {
            if (hasTimeRecords(database, jobNo, was.operNo)) {
                return Complaint{u"Time has been booked on the operation "_s + was.description +
                                     u" since you removed it.\r\nPlease insert it again."_s,
                                 u"sprOper"_s};
            }
            continue;
        }
        if (now.status != was.status)
            mine->status = now.status;
        if (now.located != was.located)
            mine->located = now.located;
        if (now.time != was.time && (mine->inhouse || mine->time == was.time))
            mine->time = now.time;
    }
    return std::nullopt;
}

void mergeFixedCosts(jet::Database& database, qint64 jobNo, const std::vector<MiscRow>& before,
                     std::vector<MiscRow>& rows) {
    const std::vector<MiscRow> stored = storedFixedCosts(database, QString::number(jobNo));
    for (auto now = stored.begin(); now != stored.end(); ++now) {
        const auto n = std::count_if(stored.begin(), now,
                                     [&](const MiscRow& row) { return row.itemNo == now->itemNo; });
        const auto was = nthOf(before, now->itemNo, n);
        const values::Currency issued =
            was == before.end() ? now->quantity : now->quantity - was->quantity;
        if (was != before.end() && issued == values::Currency())
            continue;
        const auto mine = nthOf(rows, now->itemNo, n);
        if (mine != rows.end()) {
            mine->quantity = mine->quantity + issued;
            mine->retotal();
        } else if (was == before.end()) {
            rows.push_back(*now);
        } else if (issued > values::Currency()) {
            // Removed here, and then more of it was issued: that much the job did use.
            rows.push_back(*now);
            rows.back().quantity = issued;
            rows.back().retotal();
        }
    }
}

} // namespace jobs
