#pragma once

#include "platform/gantt/Model.h"
#include "platform/jet/Recordset.h"

#include <QString>

#include <optional>

namespace scheduling {

/// One row of JobOperSchedule: a dated entry of a job's operation.
struct Entry {
    qint64 id = 0; ///< 0 while it isn't saved
    qint64 jobNo = 0;
    int seqNo = 0; ///< 0: it has lost its operation
    qint64 operNo = 0;
    QString description;
    int textAlign = 0;
    gantt::Span span;

    /// Whether both say the same to a person, whatever their IDs and operation numbers.
    bool saysTheSame(const Entry& other) const;
};

/// A stored time as the chart takes it: the hour after midnight as "00", everything else in lower
/// case. "12:05 AM" is "00:05 AM", "12:05 PM" is "12:05 pm".
QString chartTime(const QString& stored);
/// Minutes after midnight of a time as stored or as the chart has it; 0 for what is none.
int minutesOfTime(const QString& time);
/// A time of day as it is stored: "12:30 AM".
QString storedTime(int minuteOfDay);

/// The entry of the current row; nothing where a date is missing.
std::optional<Entry> entryOf(const jet::Recordset& row);

struct Limits {
    std::optional<QDate> dateIn, dueDate;
};

/// What the range rule finds: dates are compared as whole days.
enum class OutOfRange { No, TooEarly, TooLate };
OutOfRange outOfRange(const gantt::Span& span, const Limits& limits);

/// "Schedule entry 2 in operation 3 on Job 1004 cannot start before the job date in."
/// `inOrder`: on a chart of several jobs, where one text serves both.
QString rangeText(int entry, int row, qint64 jobNo, OutOfRange what, bool inOrder);

/// What the entry dialogs find wrong with their fields, in this order; empty where nothing is.
QString entryComplaint(const std::optional<QDate>& startDate, const std::optional<QTime>& startTime,
                       const std::optional<QDate>& endDate, const std::optional<QTime>& endTime);

} // namespace scheduling
