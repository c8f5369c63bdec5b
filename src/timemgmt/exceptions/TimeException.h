#pragma once

#include <QDateTime>
#include <QString>

#include <array>
#include <utility>

namespace timemgmt {

/// What can be wrong with a time record, so that a person must look at it.
enum class ExceptionKind {
    NeverSignedOut,        ///< attendance of a past shift without an end
    OpenTooLong,           ///< attendance or work that is open for longer than the shift lasts
    OutsideAttendance,     ///< work at a time at which the employee wasn't there
    OverlappingAttendance, ///< two attendances of one employee share time
    ClosedJob,             ///< work after the job was shipped, or on a job that is deleted
    OverEstimate,          ///< more hours than estimated, by more than the shop allows
    Manual,                ///< hours that were typed in
    OutOfOrder,            ///< finished before its predecessor, on a sequential job
    LeftEmployee,          ///< a record after its employee left, or of none that exists
};
inline constexpr int exceptionKinds = 9;
/// In the order of the list above; as the list on the screen names them.
QString kindName(ExceptionKind kind);

/// A line of the list.
struct TimeException {
    /// The table that `id` is a row of.
    enum class Record { Attendance, Work, Operation };
    /// Two lines are the same if they say the same thing of the same row.
    using Key = std::pair<ExceptionKind, std::pair<Record, qint64>>;

    ExceptionKind kind = ExceptionKind::Manual;
    Record record = Record::Work;
    qint64 id = 0;
    qint64 empId = 0;   ///< 0 for operations
    qint64 signId = 0;  ///< of work: its attendance, if that exists and is the employee's own
    qint64 partner = 0; ///< of an overlap: the other, earlier attendance
    qint64 jobNo = 0;   ///< 0 for attendance and overhead
    QDateTime when;     ///< the day and time that the row is about; invalid for operations
    QString employee;   ///< "Hall, Ann"; empty for operations
    QString text;       ///< what is wrong, in words

    Key key() const { return {kind, {record, id}}; }
    friend bool operator==(const TimeException&, const TimeException&) = default;
};

} // namespace timemgmt
