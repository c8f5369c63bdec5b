#include "inventory/Issue.h"

#include "inventory/Sql.h"
#include "platform/values/Format.h"

#include <QHash>

#include <algorithm>

namespace inventory {

namespace {

/// Texts by number: one select for all rows of a kind.
using Names = QHash<qint64, QString>;

Names namesOf(jet::Database& database, const QString& select) {
    Names names;
    jet::Recordset set = database.openRecordset(select, jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        names.insert(set.field(0).toLong(), set.field(1).toText());
    return names;
}

/// Says of the rows of a type whom their numbers mean; `select` ends in "IN (".
void nameRows(jet::Database& database, std::vector<Movement>& rows, QStringView type,
              const QString& select) {
    std::vector<qint64> numbers;
    for (const Movement& row : rows) {
        if (row.type.compare(type, Qt::CaseInsensitive) == 0)
            numbers.push_back(row.number);
    }
    if (numbers.empty())
        return;
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    const Names names = namesOf(database, select + listOf(numbers) + u")"_s);
    for (Movement& row : rows) {
        if (row.type.compare(type, Qt::CaseInsensitive) == 0)
            row.company = names.value(row.number);
    }
}

std::vector<Movement> movements(jet::Database& database, const QString& table,
                                const QString& number, qint64 itemId) {
    jet::Recordset set = database.openRecordset(
        u"SELECT "_s + table +
            u".*, (Employee.FirstName + ' ' + Employee.LastName) AS [Name] FROM "_s + table +
            u" INNER JOIN Employee ON Employee.EmpID = "_s + table + u".Employee WHERE "_s + table +
            u".ItemID = "_s + num(itemId) + u" ORDER BY "_s + table + u".[Date], "_s + table +
            u".ID"_s,
        jet::RecordsetType::Snapshot);
    std::vector<Movement> rows;
    for (; !set.eof(); set.moveNext())
        rows.push_back({set[u"ID"].toLong(),
                        set[u"Date"].toDate().value_or(QDate()),
                        set.text(u"Type"),
                        set[number].toLong(),
                        {},
                        set[u"Quantity"].toLong(),
                        set.text(u"Name")});
    return rows;
}

const QString jobCompany = u"SELECT Job.JobNo, Customer.Company FROM Job INNER JOIN Customer ON "
                           "Job.CustID = Customer.CustID WHERE Job.JobNo IN ("_s;

/// The sum of the quantities of those rows of a table that are still there.
qint64 sumOf(jet::Database& database, const QString& table, const std::vector<qint64>& ids) {
    if (ids.empty())
        return 0;
    return database
        .lookup(u"SELECT Sum(Quantity) FROM "_s + table + u" WHERE ID IN ("_s + listOf(ids) +
                u")"_s)
        .toLong();
}

void removeRows(jet::Database& database, const QString& table, const std::vector<qint64>& ids) {
    if (!ids.empty())
        database.execute(u"DELETE * FROM "_s + table + u" WHERE ID IN ("_s + listOf(ids) + u")"_s);
}

} // namespace

Issued issue(jet::Database& database, const Issue& movement) {
    const QString quantity = num(movement.quantity);
    const QString here = u" WHERE ID = "_s + num(movement.itemId);
    jet::Transaction transaction(database);
    const int taken = database.execute(u"UPDATE Items SET Quantity = [Quantity] - "_s + quantity +
                                       here + u" AND [Quantity] >= "_s + quantity);
    if (taken == 0)
        return database.hasRows(u"SELECT ID FROM Items"_s + here) ? Issued::NotEnough
                                                                  : Issued::Gone;
    database.execute(
        u"INSERT INTO ItemIssue (ItemID, Quantity, Employee, [Date], IssueTo, Type) VALUES ("_s +
        num(movement.itemId) + u", "_s + quantity + u", "_s + num(movement.employee) + u", '"_s +
        values::format(movement.date, u"Short Date") + u"', "_s + num(movement.issueTo) + u", '"_s +
        values::quoted(movement.type) + u"')"_s);
    transaction.commit();
    return Issued::Done;
}

void postFixedCost(jet::Database& database, qint64 jobNo, qint64 itemNo, const QString& units,
                   values::Currency price, qint64 quantity) {
    const QString more = u"(Quantity + "_s + num(quantity) + u")"_s;
    jet::Transaction transaction(database);
    const int held = database.execute(
        u"UPDATE JobMiscCost Set Quantity = "_s + more + u", CostAmount = UnitPrice * "_s + more +
        u" WHERE JobNo = "_s + num(jobNo) + u" AND ItemNo = "_s + num(itemNo));
    if (held == 0) {
        database.execute(u"INSERT INTO JobMiscCost (Jobno, ItemNo, CostAmount, UnitOfMeasure, "
                         "UnitPrice, Quantity) VALUES ("_s +
                         num(jobNo) + u", "_s + num(itemNo) + u", "_s +
                         (values::Currency::fromInteger(quantity) * price).toText() + u", '"_s +
                         values::quoted(units) + u"', "_s + price.toText() + u", "_s +
                         num(quantity) + u")"_s);
    }
    transaction.commit();
}

std::vector<Movement> issuesOf(jet::Database& database, qint64 itemId) {
    auto rows = movements(database, u"ItemIssue"_s, u"IssueTo"_s, itemId);
    nameRows(database, rows, u"Job", jobCompany);
    nameRows(database, rows, u"Sales", u"SELECT CustID, Company FROM Customer WHERE CustID IN ("_s);
    nameRows(database, rows, u"OverHead",
             u"SELECT OperNo, Description FROM Operation WHERE OperNo IN ("_s);
    return rows;
}

std::vector<Movement> restocksOf(jet::Database& database, qint64 itemId) {
    auto rows = movements(database, u"ItemReStock"_s, u"Number"_s, itemId);
    nameRows(database, rows, u"Job", jobCompany);
    nameRows(database, rows, u"PO",
             u"SELECT OrderNumber, Company FROM POVendor WHERE OrderNumber IN ("_s);
    // By what the vendor was called on an order: one who never had any shows nothing.
    const bool manual = std::any_of(rows.begin(), rows.end(),
                                    [](const Movement& row) { return row.type == u"Manual"; });
    if (!manual)
        return rows;
    const Names names = namesOf(
        database, u"SELECT ItemReStock.ID, POVendor.Company FROM ItemReStock INNER JOIN POVendor "
                  "ON ItemReStock.Vendor = POVendor.VendorID WHERE ItemReStock.Type = 'Manual' "
                  "AND ItemReStock.ItemID = "_s +
                      num(itemId));
    for (Movement& row : rows) {
        if (row.type == u"Manual")
            row.company = names.value(row.id);
    }
    return rows;
}

void reverse(jet::Database& database, const Reversal& reversal) {
    const QString here = u" WHERE ID = "_s + num(reversal.itemId);
    jet::Transaction transaction(database);
    // Locked first, so that a station that takes the same rows back comes after and finds none.
    database.execute(u"UPDATE Items SET Quantity = [Quantity] + 0"_s + here);
    const qint64 issued = sumOf(database, u"ItemIssue"_s, reversal.issues);
    const qint64 stocked = sumOf(database, u"ItemReStock"_s, reversal.restocks);
    if (reversal.updateQuantity && (issued != 0 || stocked != 0)) {
        database.execute(u"UPDATE Items SET Quantity = [Quantity] + "_s + num(issued) + u" - "_s +
                         num(stocked) + here);
    }
    removeRows(database, u"ItemIssue"_s, reversal.issues);
    removeRows(database, u"ItemReStock"_s, reversal.restocks);
    if (reversal.updateJobs && issued != 0) {
        // No job is named, so it falls on every job that holds the item.
        const qint64 itemNo =
            database
                .lookup(u"SELECT MiscItems.itemNo FROM MiscItems INNER JOIN Items ON "
                        "MiscItems.Description = Items.Description WHERE Items.ID = "_s +
                        num(reversal.itemId))
                .toLong();
        if (itemNo != 0)
            database.execute(u"UPDATE JobMiscCost SET Quantity = [Quantity] - "_s + num(issued) +
                             u" WHERE itemNo = "_s + num(itemNo));
    }
    database.execute(u"UPDATE Items SET Quantity = 0 WHERE Quantity < 0"_s);
    transaction.commit();
}

} // namespace inventory
