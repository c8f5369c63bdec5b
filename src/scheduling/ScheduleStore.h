#pragma once

#include "platform/jet/Database.h"
#include "scheduling/Entry.h"

#include <vector>

namespace scheduling {

/// One operation of a job's routing as the chart shows it.
struct RoutingRow {
    int seqNo = 0;
    qint64 operNo = 0;
    QString description;
    bool contractor = false;
    std::optional<double> estimated; ///< hours; an amount where a contractor does it
    QString status;                  ///< "F" finished, "D" part done
    bool located = false;            ///< the job is at this operation
    qint64 department = 0;
};

struct ScheduledJob {
    qint64 jobNo = 0;
    Limits limits;
    std::optional<int> zoom, period; ///< indexes of the lists, where they were saved
    std::vector<RoutingRow> routing; ///< by sequence
    std::vector<Entry> entries;      ///< by sequence and ID
    bool hasHours() const;           ///< an estimated figure stands in the routing
};

/// The job with its routing and entries; nothing if it has gone.
std::optional<ScheduledJob> loadJob(jet::Database& database, qint64 jobNo);
/// The jobs of a customer's purchase order, newest first.
std::vector<ScheduledJob> loadOrder(jet::Database& database, const QString& poNo, qint64 custId);

/// Only the dates of those jobs, as they stand by now.
std::vector<std::pair<qint64, Limits>> loadLimits(jet::Database& database, const QString& poNo,
                                                  qint64 custId);

/// One entry of a chart that is saved.
struct EntryChange {
    std::optional<Entry> loaded; ///< as it was read; nothing for a new one
    std::optional<Entry> now;    ///< as it shall be; nothing for a deleted one
    QString operation;           ///< the row's text, by which OperNo is looked up; empty: as it is
    int place = 0;               ///< within its row, for messages
};

/// Dates and looks that a job's own chart writes back.
struct JobDates {
    qint64 jobNo = 0;
    std::optional<QDate> dateIn, dueDate;
    int zoom = 0;
    int period = 0;
};

/// Writes every entry as a new row and removes the rows that stood before, in one transaction.
/// Entries that another station has added stay; one that it has changed or deleted stays as it made
/// it, unless it was changed here as well: then nothing is written and the text that is returned
/// says which. `dates`: for a job's own chart, whose operations' texts go into the statement as
/// they stand. Nothing where everything was saved.
std::optional<QString> saveEntries(jet::Database& database, const std::vector<qint64>& jobs,
                                   std::vector<EntryChange> changes,
                                   const std::optional<JobDates>& dates);

} // namespace scheduling
