#include "scheduling/LoadChart.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QHash>
#include <QStringList>

namespace scheduling {

namespace {

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

QString entriesSelect(const QString& condition) {
    return u"SELECT JobOperSchedule.*, JobOper.Status, JobOper.OperLocated FROM JobOperSchedule "
           "INNER JOIN JobOper ON JobOperSchedule.JobNo = JobOper.JobNo WHERE "_s +
           condition +
           u" AND JobOper.OperNo = JobOperSchedule.OperNo ORDER BY JobOperSchedule.JobNo, "
           "JobOperSchedule.ID"_s;
}

std::vector<LoadEntry> entries(jet::Database& database, const QString& select) {
    std::vector<LoadEntry> found;
    jet::Recordset row = read(database, select);
    for (; !row.eof(); row.moveNext()) {
        if (auto entry = entryOf(row))
            found.push_back(
                {std::move(*entry), row.text(u"Status").trimmed(), row[u"OperLocated"].toBool()});
    }
    return found;
}

QString keysOf(const std::vector<LoadGroup>& groups) {
    QStringList keys;
    for (const LoadGroup& group : groups)
        keys << QString::number(group.key);
    return keys.join(u',');
}

QString entriesOfJobsSelect(const std::vector<LoadGroup>& jobs) {
    return entriesSelect(u"JobOperSchedule.JobNo IN ("_s + keysOf(jobs) + u")"_s);
}

} // namespace

gantt::Rgb colourByStatus(const LoadEntry& entry) {
    if (entry.located)
        return 0x00ff00;
    if (entry.status == u"F")
        return 0x909090;
    return entry.status == u"D" ? 0xffa000 : 0xff0000;
}

gantt::Bar loadBar(const LoadEntry& entry) {
    gantt::Bar bar;
    bar.span = entry.entry.span;
    bar.key = QString::number(entry.entry.id);
    bar.text = entry.entry.description;
    bar.align = entry.entry.textAlign >= 0 && entry.entry.textAlign <= 3
                    ? static_cast<gantt::Align>(entry.entry.textAlign)
                    : gantt::Align::Left;
    bar.colour = colourByStatus(entry);
    return bar;
}

QString jobsOfPeriod(const QDate& start, const QDate& end, const QString& without) {
    const QString first = u"#"_s + values::sqlDate(start) + u"#"_s;
    const QString last = u"#"_s + values::sqlDate(end) + u"#"_s;
    QString condition = u"(JobDateIn BETWEEN "_s + first + u" AND "_s + last + u") OR ("_s + first +
                        u" BETWEEN JobDateIn AND JobDueDate) AND Shipped = FALSE "_s;
    if (!without.isEmpty())
        condition += u"AND NOT PONo = '"_s + values::quoted(without) + u"' "_s;
    return condition;
}

void fillScheduleView(jet::Database& database, const QDate& start, const QDate& end,
                      const QString& without) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM ScheduleView"_s);
    database.execute(u"INSERT INTO ScheduleView SELECT JobNo FROM Job WHERE "_s +
                     jobsOfPeriod(start, end, without) + u"ORDER BY JobNo"_s);
    transaction.commit();
}

void emptyScheduleView(jet::Database& database) {
    database.execute(u"DELETE * FROM ScheduleView"_s);
}

QString jobPageSelect(const QDate& start, const QDate& end, bool unscheduled, qint64 below,
                      int count, qint64 downTo) {
    QString condition = u"("_s + jobsOfPeriod(start, end) + u")"_s;
    if (!unscheduled)
        condition += u" AND JobNo IN (SELECT JobNo FROM JobOperSchedule)"_s;
    if (below != 0)
        condition += u" AND JobNo < "_s + QString::number(below);
    if (downTo != 0)
        condition += u" AND JobNo >= "_s + QString::number(downTo);
    const QString top = downTo == 0 ? u"TOP %1 "_s.arg(count) : QString();
    return u"SELECT "_s + top + u"JobNo FROM Job WHERE "_s + condition + u" ORDER BY JobNo DESC"_s;
}

std::vector<LoadGroup> jobPage(jet::Database& database, const QDate& start, const QDate& end,
                               bool unscheduled, qint64 below, int count, qint64 downTo) {
    std::vector<LoadGroup> page;
    QHash<qint64, size_t> place;
    jet::Recordset row =
        read(database, jobPageSelect(start, end, unscheduled, below, count, downTo));
    for (; !row.eof(); row.moveNext()) {
        const qint64 jobNo = row[u"JobNo"].toLong();
        place.insert(jobNo, page.size());
        page.push_back({jobNo, u"Job No.: "_s + QString::number(jobNo), {}});
    }
    if (page.empty())
        return page;
    const QString rows =
        u"SELECT JobOper.*, Operation.Description, Operation.OperNo as Num FROM JobOper RIGHT "
        "OUTER JOIN Operation ON Operation.OperNo = JobOper.OperNo WHERE JobOper.JobNo IN ("_s +
        keysOf(page) + u") ORDER BY JobOper.JobNo, JobOper.SeqNo"_s;
    database.expect({rows, entriesOfJobsSelect(page)}); // which is read next
    row = read(database, rows);
    for (; !row.eof(); row.moveNext()) {
        page[place.value(row[u"JobNo"].toLong())].rows.push_back(
            {row[u"Num"].toLong(), row.text(u"Description")});
    }
    return page;
}

std::vector<LoadGroup> departmentPage(jet::Database& database, bool unscheduled,
                                      const QString& behind, int count) {
    std::vector<LoadGroup> page;
    QHash<qint64, size_t> place;
    jet::Recordset row =
        read(database,
             u"SELECT TOP %1 * FROM OperDepartment "_s.arg(count) +
                 (behind.isEmpty() ? QString()
                                   : u"WHERE Department > '"_s + values::quoted(behind) + u"' "_s) +
                 u"ORDER BY Department"_s);
    for (; !row.eof(); row.moveNext()) {
        const qint64 id = row[u"ID"].toLong();
        place.insert(id, page.size());
        page.push_back({id, row.text(u"Department"), {}});
    }
    if (page.empty())
        return page;
    row = read(
        database,
        u"SELECT OperNo, Description, OperDepartment_ID FROM Operation WHERE "
        "OperDepartment_ID IN ("_s +
            keysOf(page) + u") "_s +
            (unscheduled ? QString() : u"AND OperNo IN (SELECT OperNo FROM JobOperSchedule) "_s) +
            u"ORDER BY Description"_s);
    for (; !row.eof(); row.moveNext()) {
        page[place.value(row[u"OperDepartment_ID"].toLong())].rows.push_back(
            {row[u"OperNo"].toLong(), row.text(u"Description")});
    }
    return page;
}

std::vector<LoadEntry> entriesOfJobs(jet::Database& database, const std::vector<LoadGroup>& jobs) {
    if (jobs.empty())
        return {};
    return entries(database, entriesOfJobsSelect(jobs));
}

std::vector<LoadEntry> entriesOfOperations(jet::Database& database,
                                           const std::vector<LoadGroup>& groups,
                                           const QString& period) {
    QStringList operations;
    for (const LoadGroup& group : groups) {
        for (const LoadRow& row : group.rows)
            operations << QString::number(row.operNo);
    }
    if (operations.isEmpty())
        return {};
    return entries(database,
                   entriesSelect(u"JobOperSchedule.OperNo IN ("_s + operations.join(u',') +
                                 u") AND JobOperSchedule.JobNo IN (SELECT JobNo FROM Job WHERE "_s +
                                 period + u")"_s));
}

} // namespace scheduling
