#pragma once

#include "platform/report/RowSource.h"
#include "timemgmt/payroll/PayrollHours.h"

namespace timemgmt {

/// Days of payroll hours as the rows of a report: what it reads from `PayrollHours` are these, with
/// the fields EmpID, Employee, Day, SignedIn, Outside, Breaks, Paid and OpenSignIns, and FirstDay
/// and LastDay of those asked for; everything else it reads from the database.
class PayrollRows : public report::RowSource {
  public:
    PayrollRows(jet::Database& database, const std::vector<PayrollLine>& days, const QDate& first,
                const QDate& last)
        : m_database(database), m_days(days), m_first(first), m_last(last) {}

    std::unique_ptr<report::Rows> open(const QString& sql) override;
    std::optional<jet::ColumnType> columnType(const QString& table,
                                              const QString& column) const override;

  private:
    report::DatabaseRowSource m_database;
    const std::vector<PayrollLine>& m_days;
    QDate m_first, m_last;
};

} // namespace timemgmt
