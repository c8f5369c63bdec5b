#include "masters/EmployeePay.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <algorithm>
#include <tuple>

namespace masters {

namespace {

QString historySelect(qint64 empId) {
    return u"SELECT * FROM EmployeeSalary WHERE EmpID = "_s + QString::number(empId) +
           u" ORDER BY SalaryDate"_s;
}

void write(jet::Recordset& history, const SalaryRow& row) {
    history.set(u"SalaryDate", row.date);
    history.set(u"SalaryAmount", row.amount);
    history.set(u"SalaryFrequency", row.frequency);
    history.update();
}

} // namespace

QStringList salaryFrequencies() {
    return {u"Hourly"_s, u"Bi-Weekly"_s, u"Weekly"_s, u"Monthly"_s};
}

std::vector<SalaryRow> salaryHistory(jet::Database& database, qint64 empId) {
    std::vector<SalaryRow> history;
    jet::Recordset rows =
        database.openRecordset(historySelect(empId), jet::RecordsetType::Snapshot);
    for (; !rows.eof(); rows.moveNext())
        history.push_back({rows[u"Index"].toLong(), rows[u"SalaryDate"].toDate(),
                           rows[u"SalaryAmount"].toCurrency(), rows.text(u"SalaryFrequency")});
    // The engines differ in the order of rows of one day.
    std::sort(history.begin(), history.end(), [](const SalaryRow& a, const SalaryRow& b) {
        return std::tie(a.date, a.index) < std::tie(b.date, b.index);
    });
    return history;
}

void SyncEmployeePay(jet::Database& database, qint64 empId) {
    const std::vector<SalaryRow> history = salaryHistory(database, empId);
    const SalaryRow start = history.empty() ? SalaryRow() : history.front();
    const SalaryRow current = history.empty() ? SalaryRow() : history.back();
    database.execute(u"UPDATE Employee SET StartPay = "_s + values::format(start.amount, u"0.00") +
                     u", StartFrq = '"_s + values::quoted(start.frequency) + u"', CurrPay = "_s +
                     values::format(current.amount, u"0.00") + u", CurrFrq = '"_s +
                     values::quoted(current.frequency) + u"' WHERE EmpID = "_s +
                     QString::number(empId));
}

void addSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Transaction transaction(database);
    database.execute(u"INSERT INTO EmployeeSalary (EmpID, SalaryDate, SalaryAmount, "
                     "SalaryFrequency) VALUES ("_s +
                     QString::number(empId) + u", #"_s + values::sqlDate(*row.date) + u"#, "_s +
                     row.amount.toText() + u", '"_s + values::quoted(row.frequency) + u"')"_s);
    SyncEmployeePay(database, empId);
    transaction.commit();
}

bool changeSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Transaction transaction(database);
    jet::Recordset history = database.openRecordset(historySelect(empId));
    history.findFirst(u"Index = "_s + QString::number(row.index));
    if (history.noMatch())
        return false;
    history.edit();
    write(history, row);
    SyncEmployeePay(database, empId);
    transaction.commit();
    return true;
}

void deleteSalary(jet::Database& database, qint64 empId, qint64 index) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM EmployeeSalary WHERE Index = "_s + QString::number(index));
    SyncEmployeePay(database, empId);
    transaction.commit();
}

void beginSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Recordset history =
        database.openRecordset(u"Select * from EmployeeSalary order by EmpID"_s);
    history.addNew();
    history.set(u"EmpID", empId);
    write(history, row);
}

} // namespace masters
