#include "scheduling/ScheduleStore.h"

#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>

namespace scheduling {

namespace {

QString joined(const std::vector<qint64>& numbers) {
    QStringList texts;
    for (const qint64 number : numbers)
        texts << QString::number(number);
    return texts.join(u',');
}

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

std::optional<int> wholeNumber(const jet::Value& value) {
    return value.isNull() ? std::nullopt : std::optional(static_cast<int>(value.toLong()));
}

/// The jobs that a condition on Job names, newest first, with their routings and entries.
/// `these`: the same as a condition behind a column JobNo.
std::vector<ScheduledJob> loadJobs(jet::Database& database, const QString& condition,
                                   const QString& these) {
    std::vector<ScheduledJob> jobs;
    QHash<qint64, size_t> place;
    std::vector<jet::Recordset> sets = database.together(
        {u"SELECT JobNo, JobDateIn, JobDueDate, ScheduleZoom, SchedulePeriod FROM Job WHERE "_s +
             condition + u" ORDER BY JobNo DESC"_s,
         u"SELECT JobOper.*, Operation.Description, Operation.OperType, "
         "Operation.operdepartment_id, Operation.OperNo AS Num FROM JobOper INNER JOIN Operation "
         "ON JobOper.OperNo = Operation.OperNo WHERE JobOper.JobNo"_s +
             these + u" ORDER BY JobOper.JobNo, JobOper.SeqNo"_s,
         u"SELECT * FROM JobOperSchedule WHERE JobNo"_s + these + u" ORDER BY JobNo, SeqNo, ID"_s});
    jet::Recordset row = sets[0];
    for (; !row.eof(); row.moveNext()) {
        ScheduledJob job;
        job.jobNo = row[u"JobNo"].toLong();
        job.limits = {row[u"JobDateIn"].toDate(), row[u"JobDueDate"].toDate()};
        job.zoom = wholeNumber(row[u"ScheduleZoom"]);
        job.period = wholeNumber(row[u"SchedulePeriod"]);
        place.insert(job.jobNo, jobs.size());
        jobs.push_back(std::move(job));
    }
    // A job that another station adds between the statements isn't shown yet.
    const auto jobOf = [&](qint64 jobNo) {
        const auto found = place.constFind(jobNo);
        return found == place.cend() ? nullptr : &jobs[*found];
    };
    row = sets[1];
    for (; !row.eof(); row.moveNext()) {
        RoutingRow operation;
        operation.seqNo = static_cast<int>(row[u"SeqNo"].toLong());
        operation.operNo = row[u"Num"].toLong();
        operation.description = row.text(u"Description");
        operation.contractor = row.text(u"OperType") == u"C";
        if (!row[u"EstOper"].isNull())
            operation.estimated = row[u"EstOper"].toDouble();
        operation.status = row.text(u"Status").trimmed();
        operation.located = row[u"OperLocated"].toBool();
        operation.department = row[u"operdepartment_id"].toLong();
        if (ScheduledJob* job = jobOf(row[u"JobNo"].toLong()))
            job->routing.push_back(std::move(operation));
    }
    row = sets[2];
    for (; !row.eof(); row.moveNext()) {
        auto entry = entryOf(row);
        ScheduledJob* job = entry ? jobOf(entry->jobNo) : nullptr;
        if (job)
            job->entries.push_back(std::move(*entry));
    }
    return jobs;
}

QString ofOrder(const QString& poNo, qint64 custId) {
    return u"PONo = '"_s + values::quoted(poNo) + u"' AND CustID = "_s + QString::number(custId);
}

/// The operations of the changes' texts; empty where there are none.
QString operationsSelect(const std::vector<EntryChange>& changes, bool asTyped) {
    QSet<QString> texts;
    for (const EntryChange& change : changes) {
        if (change.now && !change.operation.isEmpty())
            texts.insert(asTyped ? change.operation : values::quoted(change.operation));
    }
    if (texts.isEmpty())
        return {};
    const QStringList list(texts.cbegin(), texts.cend());
    return u"SELECT OperNo, Description FROM Operation WHERE Description IN ('"_s +
           list.join(u"','"_s) + u"') ORDER BY OperNo DESC"_s;
}

/// Gives the entries the numbers of the operations that their rows' texts name.
void lookUpOperations(jet::Recordset row, std::vector<EntryChange>& changes) {
    QHash<QString, QSet<qint64>> numbers;
    for (; !row.eof(); row.moveNext())
        numbers[values::lowered(row.text(u"Description"))].insert(row[u"OperNo"].toLong());
    for (EntryChange& change : changes) {
        if (!change.now || change.operation.isEmpty())
            continue;
        const QSet<qint64> found = numbers.value(values::lowered(change.operation));
        // Where the text means several, or none any more, the row knows its own.
        if (!found.isEmpty() && !found.contains(change.now->operNo))
            change.now->operNo = *std::min_element(found.begin(), found.end());
    }
}

/// Writes the entries as new rows.
void insertEntries(jet::Database& database, const std::vector<EntryChange>& changes) {
    const auto time = [](gantt::Minute moment) { return storedTime(gantt::minuteOfDay(moment)); };
    std::vector<std::vector<jet::Value>> rows;
    for (const EntryChange& change : changes) {
        if (!change.now)
            continue;
        const Entry& entry = *change.now;
        rows.push_back({entry.jobNo, entry.seqNo, entry.operNo, entry.description, entry.textAlign,
                        gantt::dateOf(entry.span.start), time(entry.span.start),
                        gantt::dateOf(entry.span.end), time(entry.span.end)});
    }
    database.insertRows(u"JobOperSchedule"_s,
                        {u"JobNo"_s, u"SeqNo"_s, u"OperNo"_s, u"Description"_s, u"TextAlign"_s,
                         u"StartDate"_s, u"StartTime"_s, u"EndDate"_s, u"EndTime"_s},
                        rows);
}

/// Joins what was changed here with the rows as they stand now. `gone` takes the IDs to delete.
/// Returns the text of the first entry that was changed on both sides.
std::optional<QString> join(const QMap<qint64, Entry>& standing, std::vector<EntryChange>& changes,
                            std::vector<qint64>& gone) {
    QSet<qint64> taken;
    for (const EntryChange& change : changes) {
        if (change.loaded && standing.contains(change.loaded->id))
            taken.insert(change.loaded->id);
    }
    for (EntryChange& change : changes) {
        if (!change.loaded)
            continue;
        auto same = standing.constFind(change.loaded->id);
        // Another station's save gives rows new numbers, whether it changed them or not.
        if (same == standing.cend() || !same->saysTheSame(*change.loaded)) {
            same = std::find_if(standing.cbegin(), standing.cend(), [&](const Entry& entry) {
                return !taken.contains(entry.id) && entry.saysTheSame(*change.loaded);
            });
        }
        if (same != standing.cend()) {
            taken.insert(same->id);
            gone.push_back(same->id);
            continue;
        }
        if (change.now && change.now->saysTheSame(*change.loaded)) {
            change.now.reset();
            continue;
        }
        return u"Schedule entry %1 in operation %2 on Job %3 was changed at another station "
               "meanwhile. Nothing was saved."_s.arg(change.place)
                   .arg(change.loaded->seqNo)
                   .arg(change.loaded->jobNo);
    }
    return std::nullopt;
}

} // namespace

bool ScheduledJob::hasHours() const {
    return std::any_of(routing.begin(), routing.end(),
                       [](const RoutingRow& row) { return row.estimated.has_value(); });
}

std::optional<ScheduledJob> loadJob(jet::Database& database, qint64 jobNo) {
    const QString is = u" = "_s + QString::number(jobNo);
    auto jobs = loadJobs(database, u"JobNo"_s + is, is);
    if (jobs.empty())
        return std::nullopt;
    return std::move(jobs.front());
}

std::vector<ScheduledJob> loadOrder(jet::Database& database, const QString& poNo, qint64 custId) {
    const QString condition =
        u"PONo = '"_s + values::quoted(poNo) + u"' AND CustID = "_s + QString::number(custId);
    return loadJobs(database, condition,
                    u" IN (SELECT JobNo FROM Job WHERE "_s + condition + u")"_s);
}

std::vector<std::pair<qint64, Limits>> loadLimits(jet::Database& database, const QString& poNo,
                                                  qint64 custId) {
    std::vector<std::pair<qint64, Limits>> limits;
    jet::Recordset row = read(database, u"SELECT JobNo, JobDateIn, JobDueDate FROM Job WHERE "_s +
                                            ofOrder(poNo, custId));
    for (; !row.eof(); row.moveNext()) {
        limits.emplace_back(row[u"JobNo"].toLong(),
                            Limits{row[u"JobDateIn"].toDate(), row[u"JobDueDate"].toDate()});
    }
    return limits;
}

std::optional<QString> saveEntries(jet::Database& database, const std::vector<qint64>& jobs,
                                   std::vector<EntryChange> changes,
                                   const std::optional<JobDates>& dates) {
    jet::Transaction transaction(database);
    std::vector<qint64> gone;
    if (!jobs.empty()) {
        std::vector<jet::WantedSet> wanted = {u"SELECT * FROM JobOperSchedule WHERE JobNo IN ("_s +
                                              joined(jobs) + u") ORDER BY ID"_s};
        if (const QString operations = operationsSelect(changes, dates.has_value());
            !operations.isEmpty())
            wanted.push_back(operations);
        const std::vector<jet::Recordset> sets = database.together(wanted);
        if (sets.size() > 1)
            lookUpOperations(sets[1], changes);
        QMap<qint64, Entry> standing;
        jet::Recordset row = sets[0];
        for (; !row.eof(); row.moveNext()) {
            if (auto entry = entryOf(row))
                standing.insert(entry->id, *entry);
        }
        if (auto conflict = join(standing, changes, gone))
            return conflict;
    }
    insertEntries(database, changes);
    if (!gone.empty()) {
        database.execute(u"DELETE * FROM JobOperSchedule WHERE ID IN ("_s + joined(gone) + u")"_s);
    }
    if (dates) {
        const auto date = [](const std::optional<QDate>& value) {
            return value ? u"'"_s + values::format(*value, u"Short Date") + u"'"_s : u"NULL"_s;
        };
        database.execute(u"UPDATE Job SET JobDueDate = "_s + date(dates->dueDate) +
                         u", JobDateIn = "_s + date(dates->dateIn) + u", ScheduleZoom = "_s +
                         QString::number(dates->zoom) + u", SchedulePeriod = "_s +
                         QString::number(dates->period) + u" WHERE JobNo = "_s +
                         QString::number(dates->jobNo));
    }
    transaction.commit();
    return std::nullopt;
}

} // namespace scheduling
