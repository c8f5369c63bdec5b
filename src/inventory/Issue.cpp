#include "inventory/Issue.h"

#include "inventory/Sql.h"
#include "platform/values/Format.h"

#include <QHash>

#include <span>

namespace inventory {

namespace {

/// What the numbers of a type's rows mean: a select of number and name, over the item's rows.
struct NameSource {
    QString type;
    QString select;
    bool byRow = false; ///< the number is the row's own
};

/// One side of an item's history.
struct HistorySide {
    QString table;
    QString number; ///< the column of job, customer, operation or order
    std::vector<NameSource> names;
};

NameSource jobCompany(const QString& table, const QString& number) {
    return {u"Job"_s, u"SELECT DISTINCT Job.JobNo, Customer.Company FROM (%1 INNER JOIN Job ON "
                      "%1.%2 = Job.JobNo) INNER JOIN Customer ON Job.CustID = "
                      "Customer.CustID"_s.arg(table, number)};
}

const HistorySide& issueSide() {
    static const HistorySide side{
        u"ItemIssue"_s,
        u"IssueTo"_s,
        {jobCompany(u"ItemIssue"_s, u"IssueTo"_s),
         {u"Sales"_s, u"SELECT DISTINCT Customer.CustID, Customer.Company FROM ItemIssue INNER "
                      "JOIN Customer ON ItemIssue.IssueTo = Customer.CustID"_s},
         {u"OverHead"_s, u"SELECT DISTINCT Operation.OperNo, Operation.Description FROM ItemIssue "
                         "INNER JOIN Operation ON ItemIssue.IssueTo = Operation.OperNo"_s}}};
    return side;
}

const HistorySide& stockSide() {
    // By hand: by what the vendor was called on an order; one who never had any shows nothing.
    static const HistorySide side{
        u"ItemReStock"_s,
        u"[Number]"_s,
        {jobCompany(u"ItemReStock"_s, u"[Number]"_s),
         {u"PO"_s, u"SELECT DISTINCT POVendor.OrderNumber, POVendor.Company FROM ItemReStock INNER "
                   "JOIN POVendor ON ItemReStock.[Number] = POVendor.OrderNumber"_s},
         {u"Manual"_s,
          u"SELECT ItemReStock.ID, POVendor.Company FROM ItemReStock INNER JOIN POVendor "
          "ON ItemReStock.Vendor = POVendor.VendorID"_s,
          true}}};
    return side;
}

void addSelects(std::vector<jet::WantedSet>& selects, const HistorySide& side, qint64 itemId) {
    const QString table = side.table;
    const QString ofItem = u" WHERE "_s + table + u".ItemID = "_s + num(itemId);
    selects.emplace_back(u"SELECT "_s + table +
                         u".*, (Employee.FirstName + ' ' + Employee.LastName) AS [Name] FROM "_s +
                         table + u" INNER JOIN Employee ON Employee.EmpID = "_s + table +
                         u".Employee"_s + ofItem + u" ORDER BY "_s + table + u".[Date], "_s +
                         table + u".ID"_s);
    for (const NameSource& names : side.names)
        selects.emplace_back(names.select + ofItem + u" AND "_s + table + u".Type = '"_s +
                             names.type + u"'"_s);
}

/// Takes the side's sets from `sets`, which begin with them.
std::vector<Movement> readSide(const HistorySide& side, std::span<jet::Recordset> sets) {
    std::vector<Movement> rows;
    const QString number = QString(side.number).remove(u'[').remove(u']');
    for (jet::Recordset& set = sets[0]; !set.eof(); set.moveNext())
        rows.push_back({set[u"ID"].toLong(),
                        set[u"Date"].toDate().value_or(QDate()),
                        set.text(u"Type"),
                        set[number].toLong(),
                        {},
                        set[u"Quantity"].toLong(),
                        set.text(u"Name")});
    for (std::size_t i = 0; i < side.names.size(); ++i) {
        const NameSource& source = side.names[i];
        QHash<qint64, QString> names;
        for (jet::Recordset& set = sets[i + 1]; !set.eof(); set.moveNext())
            names.insert(set.field(0).toLong(), set.field(1).toText());
        for (Movement& row : rows) {
            if (row.type.compare(source.type, Qt::CaseInsensitive) == 0)
                row.company = names.value(source.byRow ? row.id : row.number);
        }
    }
    return rows;
}

/// The sum of the quantities of those rows of a table that are still there.
QString sumOf(const QString& table, const std::vector<qint64>& ids) {
    return u"SELECT Sum(Quantity) FROM "_s + table + u" WHERE ID IN ("_s +
           (ids.empty() ? u"0"_s : listOf(ids)) + u")"_s;
}

void removeRows(jet::Database& database, const QString& table, const std::vector<qint64>& ids) {
    if (!ids.empty())
        database.execute(u"DELETE * FROM "_s + table + u" WHERE ID IN ("_s + listOf(ids) + u")"_s);
}

} // namespace

Issued issue(jet::Database& database, const Issue& movement,
             const std::function<void()>& alsoWrite) {
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
    if (alsoWrite)
        alsoWrite();
    transaction.commit();
    return Issued::Done;
}

void postFixedCost(jet::Database& database, qint64 jobNo, qint64 itemNo, const QString& units,
                   values::Currency price, qint64 quantity) {
    const QString more = u"(Quantity + "_s + num(quantity) + u")"_s;
    const QString held = u" WHERE JobNo = "_s + num(jobNo) + u" AND ItemNo = "_s + num(itemNo);
    jet::Transaction transaction(database);
    database.execute(u"UPDATE JobMiscCost Set Quantity = "_s + more +
                     u", CostAmount = UnitPrice * "_s + more + held);
    database.execute(
        u"INSERT INTO JobMiscCost (Jobno, ItemNo, CostAmount, UnitOfMeasure, UnitPrice, Quantity) "
        "SELECT "_s +
        num(jobNo) + u", "_s + num(itemNo) + u", "_s +
        (values::Currency::fromInteger(quantity) * price).toText() + u", '"_s +
        values::quoted(units) + u"', "_s + price.toText() + u", "_s + num(quantity) +
        u" FROM MiscItems WHERE ItemNo = "_s + num(itemNo) +
        u" AND NOT EXISTS (SELECT * FROM JobMiscCost"_s + held + u")"_s);
    transaction.commit();
}

ItemHistory historyOf(jet::Database& database, qint64 itemId) {
    std::vector<jet::WantedSet> selects;
    addSelects(selects, issueSide(), itemId);
    const std::size_t second = selects.size();
    addSelects(selects, stockSide(), itemId);
    auto sets = database.together(selects);
    return {readSide(issueSide(), sets), readSide(stockSide(), std::span(sets).subspan(second))};
}

void reverse(jet::Database& database, const Reversal& reversal) {
    const QString here = u" WHERE ID = "_s + num(reversal.itemId);
    jet::Transaction transaction(database);
    // Locked first, so that a station that takes the same rows back comes after and finds none.
    database.execute(u"UPDATE Items SET Quantity = [Quantity] + 0"_s + here);
    const auto sums = database.together({sumOf(u"ItemIssue"_s, reversal.issues),
                                         sumOf(u"ItemReStock"_s, reversal.restocks),
                                         fixedCostOfSelect(reversal.itemId)});
    const qint64 issued = sums[0].field(0).toLong();
    const qint64 stocked = sums[1].field(0).toLong();
    if (reversal.updateQuantity && (issued != 0 || stocked != 0)) {
        database.execute(u"UPDATE Items SET Quantity = [Quantity] + "_s + num(issued) + u" - "_s +
                         num(stocked) + here);
    }
    removeRows(database, u"ItemIssue"_s, reversal.issues);
    removeRows(database, u"ItemReStock"_s, reversal.restocks);
    // No job is named, so it falls on every job that holds the item.
    if (reversal.updateJobs && issued != 0 && !sums[2].isEmpty())
        database.execute(u"UPDATE JobMiscCost SET Quantity = [Quantity] - "_s + num(issued) +
                         u" WHERE itemNo = "_s + sums[2].field(0).toText());
    database.execute(u"UPDATE Items SET Quantity = 0 WHERE Quantity < 0"_s);
    transaction.commit();
}

} // namespace inventory
