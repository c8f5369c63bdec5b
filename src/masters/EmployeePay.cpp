#include "masters/EmployeePay.h"

#include "platform/values/Format.h"
#include "platform/values/Text.h"

#include <algorithm>
#include <tuple>

namespace masters {

namespace {

QString historySelect(qint64 empId) {
    return QStringLiteral("SELECT * FROM EmployeeSalary WHERE EmpID = ") + QString::number(empId) +
           QStringLiteral(" ORDER BY SalaryDate");
}

void write(jet::Recordset& history, const SalaryRow& row) {
    history.set(u"SalaryDate", row.date);
    history.set(u"SalaryAmount", row.amount);
    history.set(u"SalaryFrequency", row.frequency);
    history.update();
}

} // namespace

QStringList salaryFrequencies() {
    return {QStringLiteral("Hourly"), QStringLiteral("Bi-Weekly"), QStringLiteral("Weekly"),
            QStringLiteral("Monthly")};
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
    database.execute(QStringLiteral("UPDATE Employee SET StartPay = ") +
                     values::format(start.amount, u"0.00") + QStringLiteral(", StartFrq = '") +
                     values::quoted(start.frequency) + QStringLiteral("', CurrPay = ") +
                     values::format(current.amount, u"0.00") + QStringLiteral(", CurrFrq = '") +
                     values::quoted(current.frequency) + QStringLiteral("' WHERE EmpID = ") +
                     QString::number(empId));
}

void addSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Transaction transaction(database);
    database.execute(QStringLiteral("INSERT INTO EmployeeSalary (EmpID, SalaryDate, SalaryAmount, "
                                    "SalaryFrequency) VALUES (") +
                     QString::number(empId) + QStringLiteral(", #") + values::sqlDate(*row.date) +
                     QStringLiteral("#, ") + row.amount.toText() + QStringLiteral(", '") +
                     values::quoted(row.frequency) + QStringLiteral("')"));
    SyncEmployeePay(database, empId);
    transaction.commit();
}

bool changeSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Transaction transaction(database);
    jet::Recordset history = database.openRecordset(historySelect(empId));
    history.findFirst(QStringLiteral("Index = ") + QString::number(row.index));
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
    database.execute(QStringLiteral("DELETE * FROM EmployeeSalary WHERE Index = ") +
                     QString::number(index));
    SyncEmployeePay(database, empId);
    transaction.commit();
}

void beginSalary(jet::Database& database, qint64 empId, const SalaryRow& row) {
    jet::Recordset history =
        database.openRecordset(QStringLiteral("Select * from EmployeeSalary order by EmpID"));
    history.addNew();
    history.set(u"EmpID", empId);
    write(history, row);
}

} // namespace masters
