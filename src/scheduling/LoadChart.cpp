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

/// The groups that a select's rows are, with what their rows say of them.
std::vector<LoadGroup> groups(jet::Database& database, const QString& select, QStringView key,
                              QStringView title, const QString& opening) {
    std::vector<LoadGroup> found;
    jet::Recordset row = read(database, select);
    for (; !row.eof(); row.moveNext())
        found.push_back({row[key].toLong(), opening + row.text(title), {}});
    return found;
}

/// Adds the rows to their groups.
void addRows(jet::Database& database, const QString& select, QStringView key,
             std::vector<LoadGroup>& groups) {
    QHash<qint64, size_t> place;
    for (size_t i = 0; i < groups.size(); ++i)
        place.insert(groups[i].key, i);
    jet::Recordset row = read(database, select);
    for (; !row.eof(); row.moveNext()) {
        // What another station adds between the statements isn't shown yet.
        const auto group = place.constFind(row[key].toLong());
        if (group != place.cend())
            groups[*group].rows.push_back({row[u"OperNo"].toLong(), row.text(u"Description")});
    }
}

QString operationsOf(const QString& departments, bool unscheduled) {
    return u"SELECT OperNo, Description, OperDepartment_ID FROM Operation WHERE OperDepartment_ID "
           "IN ("_s +
           departments + u") "_s +
           (unscheduled ? QString() : u"AND OperNo IN (SELECT OperNo FROM JobOperSchedule) "_s) +
           u"ORDER BY Description"_s;
}

QString entriesOfDepartments(const QString& departments, const QString& period) {
    return entriesSelect(u"JobOperSchedule.OperNo IN (SELECT OperNo FROM Operation WHERE "
                         "OperDepartment_ID IN ("_s +
                         departments +
                         u")) AND JobOperSchedule.JobNo IN (SELECT JobNo FROM Job WHERE "_s +
                         period + u")"_s);
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

QStringList pageSelects(const JobsWanted& wanted) {
    QString condition = u"("_s + jobsOfPeriod(wanted.start, wanted.end) + u")"_s;
    if (!wanted.unscheduled)
        condition += u" AND JobNo IN (SELECT JobNo FROM JobOperSchedule)"_s;
    if (wanted.below != 0)
        condition += u" AND JobNo < "_s + QString::number(wanted.below);
    if (wanted.downTo != 0)
        condition += u" AND JobNo >= "_s + QString::number(wanted.downTo);
    const QString top = wanted.downTo == 0 ? u"TOP %1 "_s.arg(wanted.count) : QString();
    const QString jobs =
        u"SELECT "_s + top + u"JobNo FROM Job WHERE "_s + condition + u" ORDER BY JobNo DESC"_s;
    return {jobs,
            u"SELECT JobOper.JobNo, JobOper.SeqNo, Operation.Description, Operation.OperNo FROM "
            "JobOper RIGHT OUTER JOIN Operation ON Operation.OperNo = JobOper.OperNo WHERE "
            "JobOper.JobNo IN ("_s +
                jobs + u") ORDER BY JobOper.JobNo, JobOper.SeqNo"_s,
            entriesSelect(u"JobOperSchedule.JobNo IN ("_s + jobs + u")"_s)};
}

LoadPage readPage(jet::Database& database, const JobsWanted& wanted) {
    const QStringList selects = pageSelects(wanted);
    LoadPage page;
    page.groups = groups(database, selects[0], u"JobNo", u"JobNo", u"Job No.: "_s);
    addRows(database, selects[1], u"JobNo", page.groups);
    page.entries = entries(database, selects[2]);
    return page;
}

QStringList pageSelects(const DepartmentsWanted& wanted) {
    const auto departments = [&](const QString& columns) {
        return u"SELECT TOP %1 %2 FROM OperDepartment "_s.arg(QString::number(wanted.count),
                                                              columns) +
               (wanted.behind.isEmpty()
                    ? QString()
                    : u"WHERE Department > '"_s + values::quoted(wanted.behind) + u"' "_s) +
               u"ORDER BY Department"_s;
    };
    return {departments(u"*"_s), operationsOf(departments(u"ID"_s), wanted.unscheduled),
            entriesOfDepartments(departments(u"ID"_s), jobsOfPeriod(wanted.start, wanted.end))};
}

LoadPage readPage(jet::Database& database, const DepartmentsWanted& wanted) {
    const QStringList selects = pageSelects(wanted);
    LoadPage page;
    page.groups = groups(database, selects[0], u"ID", u"Department", {});
    addRows(database, selects[1], u"OperDepartment_ID", page.groups);
    page.entries = entries(database, selects[2]);
    return page;
}

QStringList departmentSelects(const DepartmentOf& wanted) {
    const QString department = u"SELECT OperDepartment_ID FROM Operation WHERE OperNo = "_s +
                               QString::number(wanted.operNo);
    const QString period = jobsOfPeriod(wanted.start, wanted.end, wanted.without);
    return {u"SELECT TOP 1 Operation.OperDepartment_ID, OperDepartment.Department FROM Operation "
            "INNER JOIN OperDepartment ON Operation.OperDepartment_ID = OperDepartment.ID WHERE "
            "Operation.OperNo = "_s +
                QString::number(wanted.operNo),
            operationsOf(department, true), entriesOfDepartments(department, period),
            entriesSelect(
                u"JobOperSchedule.OperNo = %1 AND JobOperSchedule.JobNo IN (SELECT JobNo FROM "
                "Job WHERE %2)"_s.arg(QString::number(wanted.operNo), period))};
}

LoadPage readDepartment(jet::Database& database, const DepartmentOf& wanted) {
    const QStringList selects = departmentSelects(wanted);
    LoadPage page;
    page.groups = groups(database, selects[0], u"OperDepartment_ID", u"Department", {});
    if (page.groups.empty()) {
        page.entries = entries(database, selects[3]);
        return page;
    }
    addRows(database, selects[1], u"OperDepartment_ID", page.groups);
    page.entries = entries(database, selects[2]);
    return page;
}

} // namespace scheduling
