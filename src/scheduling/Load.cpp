#include "scheduling/Load.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "scheduling/Entry.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace scheduling {

using gantt::Span;

namespace {

constexpr int bookedDays = 60;
constexpr int workDays = 5;
/// Days: no entry that counts for the load is longer, so that old ones needn't be looked at.
constexpr int longestEntry = 366;

/// A shift's working times on the days of the week: behind midnight they are the next day's.
std::vector<std::pair<int, Interval>> timesOf(const QTime& from, const QTime& to) {
    const int start = from.msecsSinceStartOfDay() / 60000;
    const int end = to.msecsSinceStartOfDay() / 60000;
    std::vector<std::pair<int, Interval>> times;
    for (int day = 0; day < workDays; ++day) {
        if (start < end) {
            times.push_back({day, {start, end}});
        } else if (start > end) {
            times.push_back({day, {start, static_cast<int>(gantt::minutesPerDay)}});
            times.push_back({(day + 1) % 7, {0, end}});
        }
    }
    return times;
}

void unite(std::vector<Interval>& intervals) {
    std::sort(intervals.begin(), intervals.end(),
              [](const Interval& a, const Interval& b) { return a.from < b.from; });
    std::vector<Interval> united;
    for (const Interval& interval : intervals) {
        if (interval.from >= interval.to)
            continue;
        if (!united.empty() && interval.from <= united.back().to)
            united.back().to = std::max(united.back().to, interval.to);
        else
            united.push_back(interval);
    }
    intervals = std::move(united);
}

const std::vector<Interval>& timesOn(const WeekTimes& week, const QDate& day) {
    return week[static_cast<size_t>(day.dayOfWeek()) - 1];
}

/// Minutes of a span within the working times of a day.
gantt::Minute openMinutes(const WeekTimes& week, const Span& span, const QDate& day) {
    const gantt::Minute midnight = gantt::minuteOf(day);
    gantt::Minute sum = 0;
    for (const Interval& open : timesOn(week, day)) {
        sum += std::max<gantt::Minute>(0, std::min(span.end, midnight + open.to) -
                                              std::max(span.start, midnight + open.from));
    }
    return sum;
}

bool meetsOpen(const WeekTimes& week, const Span& span) {
    // Every week is like the other.
    const QDate last = std::min(gantt::dateOf(span.end), gantt::dateOf(span.start).addDays(8));
    for (QDate day = gantt::dateOf(span.start); day <= last; day = day.addDays(1)) {
        if (openMinutes(week, span, day) > 0)
            return true;
    }
    return false;
}

double plannedOn(const WeekTimes& week, const Span& span, const QDate& day, bool inOpen) {
    if (inOpen)
        return static_cast<double>(openMinutes(week, span, day)) / 60.0;
    const gantt::Minute midnight = gantt::minuteOf(day);
    return static_cast<double>(
               std::max<gantt::Minute>(0, std::min(span.end, midnight + gantt::minutesPerDay) -
                                              std::max(span.start, midnight))) /
           60.0;
}

} // namespace

double Capacity::hoursOn(qint64 department, const QDate& day) const {
    const auto found = hours.constFind(department);
    return found == hours.cend() ? 0 : (*found)[static_cast<size_t>(day.dayOfWeek()) - 1];
}

const WeekTimes& Capacity::weekOf(qint64 department) const {
    static const WeekTimes closed;
    const auto found = open.constFind(department);
    return found == open.cend() ? closed : *found;
}

const std::vector<Interval>& Capacity::timesOn(qint64 department, const QDate& day) const {
    return scheduling::timesOn(weekOf(department), day);
}

QStringList capacitySelects(const QDate& today) {
    return {u"SELECT ID, Department FROM OperDepartment ORDER BY Department"_s,
            u"SELECT Timelog.EmpID, Operation.operdepartment_id AS Department, "
            "SUM(Timelog.AccumTime) AS Hours FROM Timelog INNER JOIN Operation ON "
            "Timelog.OperNo = Operation.OperNo WHERE Timelog.StartDate >= #"_s +
                values::sqlDate(today.addDays(-bookedDays)) +
                u"# AND Operation.OperType = 'I' GROUP BY Timelog.EmpID, "
                "Operation.operdepartment_id"_s,
            u"SELECT Employee.EmpID, Shifts.EarliestSignIn, Shifts.LatestSignOut FROM Employee "
            "INNER JOIN Shifts ON Employee.shiftsid = Shifts.ID WHERE Employee.EmpStatus = "
            "'Active'"_s};
}

Capacity loadCapacity(jet::Database& database, const QDate& today) {
    Capacity capacity;
    std::vector<jet::Recordset> sets;
    for (const QString& select : capacitySelects(today))
        sets.push_back(database.openRecordset(select, jet::RecordsetType::Snapshot));
    jet::Recordset row = sets[0];
    for (; !row.eof(); row.moveNext()) {
        const qint64 department = row[u"ID"].toLong();
        capacity.departments.insert(department, row.text(u"Department"));
        capacity.hours.insert(department, {});
    }
    // Each person's share in the departments.
    QHash<qint64, QHash<qint64, double>> booked;
    row = sets[1];
    for (; !row.eof(); row.moveNext()) {
        const double hours = row[u"Hours"].toDouble();
        const qint64 department = row[u"Department"].toLong();
        if (hours > 0 && capacity.hours.contains(department))
            booked[row[u"EmpID"].toLong()][department] += hours;
    }
    row = sets[2];
    for (; !row.eof(); row.moveNext()) {
        const auto from = row[u"EarliestSignIn"].toDateTime();
        const auto to = row[u"LatestSignOut"].toDateTime();
        if (!from || !to)
            continue;
        QHash<qint64, double> shares = booked.value(row[u"EmpID"].toLong());
        double all = 0;
        for (const double hours : std::as_const(shares))
            all += hours;
        if (shares.isEmpty()) {
            for (auto it = capacity.hours.cbegin(); it != capacity.hours.cend(); ++it)
                shares.insert(it.key(), 1);
            all = static_cast<double>(shares.size());
        }
        for (const auto& [day, times] : timesOf(from->time(), to->time())) {
            const auto weekDay = static_cast<size_t>(day);
            for (auto share = shares.cbegin(); share != shares.cend(); ++share) {
                capacity.open[share.key()][weekDay].push_back(times);
                capacity.hours[share.key()][weekDay] +=
                    (times.to - times.from) / 60.0 * share.value() / all;
            }
        }
    }
    for (WeekTimes& week : capacity.open) {
        for (auto& times : week)
            unite(times);
    }
    return capacity;
}

double plannedHours(const Capacity& capacity, qint64 department, const Span& span) {
    const WeekTimes& week = capacity.weekOf(department);
    const bool inOpen = meetsOpen(week, span);
    double sum = 0;
    for (QDate day = gantt::dateOf(span.start); day <= gantt::dateOf(span.end);
         day = day.addDays(1))
        sum += plannedOn(week, span, day, inOpen);
    return sum;
}

QString plannedSelect(const QDate& first, const QDate& last) {
    return u"SELECT JobOperSchedule.*, Operation.Description AS Operation, "
           "Operation.operdepartment_id AS Department FROM (JobOperSchedule INNER JOIN Job ON "
           "JobOperSchedule.JobNo = Job.JobNo) INNER JOIN Operation ON JobOperSchedule.OperNo = "
           "Operation.OperNo WHERE JobOperSchedule.StartDate BETWEEN #"_s +
           values::sqlDate(first.addDays(-longestEntry)) + u"# AND #"_s + values::sqlDate(last) +
           u"# AND JobOperSchedule.EndDate >= #"_s + values::sqlDate(first) +
           u"# AND Job.Shipped = False ORDER BY JobOperSchedule.JobNo"_s;
}

std::vector<PlannedWork> loadPlanned(jet::Database& database, const QDate& first, const QDate& last,
                                     const std::vector<qint64>& without) {
    std::vector<PlannedWork> planned;
    jet::Recordset row =
        database.openRecordset(plannedSelect(first, last), jet::RecordsetType::Snapshot);
    for (; !row.eof(); row.moveNext()) {
        const auto entry = entryOf(row);
        if (!entry || std::find(without.begin(), without.end(), entry->jobNo) != without.end())
            continue;
        planned.push_back(
            {row[u"Department"].toLong(), entry->jobNo, row.text(u"Operation"), entry->span});
    }
    return planned;
}

LoadTable::LoadTable(const Capacity& capacity, std::vector<qint64> departments, const QDate& first,
                     const QDate& last)
    : m_capacity(capacity), m_departments(std::move(departments)), m_first(first),
      m_last(std::max(first, last)) {
    const auto count = static_cast<size_t>(m_first.daysTo(m_last) + 1);
    for (const qint64 department : m_departments) {
        std::vector<DayLoad>& days = m_days[department];
        days.resize(count);
        for (size_t i = 0; i < count; ++i)
            days[i].available =
                capacity.hoursOn(department, m_first.addDays(static_cast<qint64>(i)));
    }
}

void LoadTable::add(const PlannedWork& work) {
    const auto found = m_days.find(work.department);
    if (found == m_days.end())
        return;
    const WeekTimes& week = m_capacity.weekOf(work.department);
    const bool inOpen = meetsOpen(week, work.span);
    const QDate last = std::min(gantt::dateOf(work.span.end), m_last);
    for (QDate day = std::max(gantt::dateOf(work.span.start), m_first); day <= last;
         day = day.addDays(1)) {
        const double hours = plannedOn(week, work.span, day, inOpen);
        if (hours <= 0)
            continue;
        DayLoad& load = (*found)[static_cast<size_t>(m_first.daysTo(day))];
        load.planned += hours;
        load.work.push_back({work.jobNo, work.operation, hours});
    }
}

const std::vector<DayLoad>& LoadTable::days(qint64 department) const {
    static const std::vector<DayLoad> none;
    const auto found = m_days.constFind(department);
    return found == m_days.cend() ? none : *found;
}

QStringList LoadTable::workOf(qint64 department, int day, int days) const {
    std::vector<DayLoad::Work> all;
    const auto& loads = this->days(department);
    for (int i = std::max(0, day); i < day + days && i < std::ssize(loads); ++i) {
        for (const DayLoad::Work& work : loads[static_cast<size_t>(i)].work) {
            const auto same = std::find_if(all.begin(), all.end(), [&](const auto& one) {
                return one.jobNo == work.jobNo && one.operation == work.operation;
            });
            if (same == all.end())
                all.push_back(work);
            else
                same->hours += work.hours;
        }
    }
    QStringList texts;
    for (const DayLoad::Work& work : all)
        texts << u"Job %1 %2: %3 h"_s.arg(work.jobNo)
                     .arg(work.operation, values::numberText(std::round(work.hours * 100) / 100));
    return texts;
}

double LoadTable::freeOn(qint64 department, const QDate& day) const {
    const auto& all = days(department);
    const qint64 at = m_first.daysTo(day);
    if (at < 0 || at >= std::ssize(all))
        return 0;
    const DayLoad& load = all[static_cast<size_t>(at)];
    return std::max(0.0, load.available - load.planned);
}

} // namespace scheduling
