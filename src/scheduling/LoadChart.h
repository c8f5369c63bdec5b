#pragma once

#include "platform/gantt/Model.h"
#include "platform/jet/Database.h"
#include "scheduling/Entry.h"

#include <vector>

namespace scheduling {

/// An entry on a chart of the load, with the status of its operation.
struct LoadEntry {
    Entry entry;
    QString status;
    bool located = false;
};

/// The colour of an entry by its operation: green where the job is, grey when finished, orange when
/// part done, red otherwise.
gantt::Rgb colourByStatus(const LoadEntry& entry);

/// The bar of an entry; its key is its ID.
gantt::Bar loadBar(const LoadEntry& entry);

/// What tells a job of a period, as a condition on Job: it comes in within it, or is on the way
/// at its start. Only the second half asks for unshipped jobs and leaves the jobs of the
/// purchase order `without` out; that grouping is the system's own.
QString jobsOfPeriod(const QDate& start, const QDate& end, const QString& without = {});

/// Fills ScheduleView with the jobs of a period, for programs that read it there. What our charts
/// show doesn't hang on the table, since every station fills it with its own.
void fillScheduleView(jet::Database& database, const QDate& start, const QDate& end,
                      const QString& without = {});
void emptyScheduleView(jet::Database& database);

/// A row under a group of the load's chart: an operation of a job, or of a department.
struct LoadRow {
    qint64 operNo = 0;
    QString description;
};
/// A job or a department with its operations.
struct LoadGroup {
    qint64 key = 0; ///< job or department
    QString title;
    std::vector<LoadRow> rows;
};

/// A page of the chart: groups in their order, and the entries on their rows.
struct LoadPage {
    std::vector<LoadGroup> groups;
    std::vector<LoadEntry> entries;
};

/// A page of the jobs of a period with their routings, newest first.
struct JobsWanted {
    QDate start, end;
    bool unscheduled = false; ///< those without entries too
    qint64 below = 0;         ///< begins behind that number; 0: with the first
    int count = 0;
    qint64 downTo = 0; ///< reads on to that job, however many lie between; 0: `count` jobs
};
/// A page of the departments with their operations, by name; entries as far as their jobs belong
/// to the period.
struct DepartmentsWanted {
    QDate start, end;
    bool unscheduled = false; ///< operations without entries too
    QString behind;           ///< begins behind that name; empty: with the first
    int count = 0;
};

/// The selects that a page opens, none of which needs another's answer; to be expected.
QStringList pageSelects(const JobsWanted& wanted);
QStringList pageSelects(const DepartmentsWanted& wanted);
LoadPage readPage(jet::Database& database, const JobsWanted& wanted);
LoadPage readPage(jet::Database& database, const DepartmentsWanted& wanted);

/// The operations of the department that an operation belongs to.
struct DepartmentOf {
    qint64 operNo = 0;
    QDate start, end;
    QString without; ///< purchase order whose jobs are left out of the entries
};
QStringList departmentSelects(const DepartmentOf& wanted);
/// No group where the operation is none of the shop's own.
LoadPage readDepartment(jet::Database& database, const DepartmentOf& wanted);

} // namespace scheduling
