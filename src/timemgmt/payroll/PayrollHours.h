#pragma once

#include "timemgmt/ShiftHours.h"

#include <optional>

namespace timemgmt {

/// A stretch of attendance or of work; without an end while it goes on.
struct TimeSpan {
    Seconds from = 0;
    std::optional<Seconds> to;
};

/// What an employee's hours are reckoned from: attendance and work, each in the order of its
/// begin.
struct EmployeeTimes {
    ShiftHours shift;
    std::vector<TimeSpan> attendance;
    std::vector<TimeSpan> work; ///< without what was typed in
};

/// The hours of an employee on a day, in a week or in all, in hundredths of an hour.
struct PayrollLine {
    qint64 empId = 0;
    QString employee;   ///< "Hall, Ann"
    QDate day;          ///< of a week its Monday; invalid for all of the employee's days
    qint64 outside = 0; ///< signed in, before or after the shift's range
    qint64 breaks = 0;
    qint64 paid = 0;
    int open = 0; ///< attendances without an end, of which nothing is counted

    qint64 present() const { return outside + breaks + paid; }
    friend bool operator==(const PayrollLine&, const PayrollLine&) = default;
};

/// The days of one employee on which there is anything to tell, in order. The rules:
/// - Time that two attendances share counts once, and an attendance without an end not at all.
/// - Time before and after the shift's range is told apart and not paid. It belongs to the day of
///   the nearest range; without a range, all of an attendance is paid and belongs to the day on
///   which it begins.
/// - A break begins at a time at which the shift suspends work, unless work runs on over it, and
///   lasts until the next start of work in the same attendance; without one there was no break.
/// - Each of a day's three figures is rounded to hundredths, and everything else adds these.
std::vector<PayrollLine> payrollDays(const EmployeeTimes& times, const QDate& from,
                                     const QDate& to);

/// The days of all employees, or of one (`empId` over 0), by their names. One wait on a server.
std::vector<PayrollLine> readPayroll(jet::Database& database, const QDate& from, const QDate& to,
                                     qint64 empId = 0);

enum class PayrollBy { Day, Week, Employee };
/// Days in the order of readPayroll() added up.
std::vector<PayrollLine> addUp(const std::vector<PayrollLine>& days, PayrollBy by);
/// All of them in one line, of no employee.
PayrollLine totalOf(const std::vector<PayrollLine>& lines);
QDate mondayOf(const QDate& day);

/// "1,234.50" of hundredths.
QString hoursText(qint64 hundredths);

/// The rules in words, one to a figure, for whoever reads the figures.
QStringList payrollRules();

} // namespace timemgmt
