#pragma once

#include "platform/gantt/Model.h"
#include "platform/jet/Database.h"
#include "scheduling/Entry.h"

#include <functional>
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

/// A page of the jobs of a period with their routings, newest first. `below`: the number
/// behind which the page begins, 0 for the first. `downTo`: reads on to that job, however many
/// lie between; 0: `count` jobs.
std::vector<LoadGroup> jobPage(jet::Database& database, const QDate& start, const QDate& end,
                               bool unscheduled, qint64 below, int count, qint64 downTo = 0);
/// The select that it begins with, to be expected by who opens others beside it.
QString jobPageSelect(const QDate& start, const QDate& end, bool unscheduled, qint64 below,
                      int count, qint64 downTo);
/// A page of the departments with their operations, by name. `behind`: the name behind which the
/// page begins; empty for the first.
std::vector<LoadGroup> departmentPage(jet::Database& database, bool unscheduled,
                                      const QString& behind, int count);

/// The entries of those jobs; of those operations, as far as their jobs belong to the period.
std::vector<LoadEntry> entriesOfJobs(jet::Database& database, const std::vector<LoadGroup>& jobs);
std::vector<LoadEntry> entriesOfOperations(jet::Database& database,
                                           const std::vector<LoadGroup>& groups,
                                           const QString& period);

} // namespace scheduling
