#pragma once

#include "platform/jet/Database.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace masters {

/// A row of the salary history.
struct SalaryRow {
    qint64 index = 0; ///< key; 0 while the row isn't saved
    std::optional<QDate> date;
    values::Currency amount; ///< dollars per `frequency`
    QString frequency;
};

/// The frequencies to choose from.
QStringList salaryFrequencies();

/// An employee's salary history in the order of dates; rows of one day in the order of entry.
std::vector<SalaryRow> salaryHistory(jet::Database& database, qint64 empId);

/// Writes the employee's starting pay from the first row of the history and the current pay from
/// the last one; zero and no frequency where there is no row.
void SyncEmployeePay(jet::Database& database, qint64 empId);

/// Each in one transaction with SyncEmployeePay.
void addSalary(jet::Database& database, qint64 empId, const SalaryRow& row);
/// False if the row has gone meanwhile; nothing is written then.
bool changeSalary(jet::Database& database, qint64 empId, const SalaryRow& row);
void deleteSalary(jet::Database& database, qint64 empId, qint64 index);

/// The history's first row for a new employee, in the transaction that saves him. The employee's
/// own row isn't touched.
void beginSalary(jet::Database& database, qint64 empId, const SalaryRow& row);

} // namespace masters
