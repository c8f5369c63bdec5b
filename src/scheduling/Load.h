#pragma once

#include "platform/gantt/Model.h"
#include "platform/jet/Database.h"

#include <QMap>

#include <array>
#include <vector>

namespace scheduling {

/// Part of a day, in minutes after midnight.
struct Interval {
    int from = 0;
    int to = 0;
    friend bool operator==(const Interval&, const Interval&) = default;
};

/// The working times of the days of a week, from Monday (0); in order, without overlaps.
using WeekTimes = std::array<std::vector<Interval>, 7>;

/// When the people of each department work, and how many hours they give.
struct Capacity {
    QMap<qint64, WeekTimes> open;
    /// Hours of each day of the week, by department.
    QMap<qint64, std::array<double, 7>> hours;
    QMap<qint64, QString> departments; ///< names

    double hoursOn(qint64 department, const QDate& day) const;
    const std::vector<Interval>& timesOn(qint64 department, const QDate& day) const;
    /// Never open where the department has no people.
    const WeekTimes& weekOf(qint64 department) const;
};

/// The active employees' shifts, from Monday to Friday, a night shift's hours on the days on which
/// they fall. Where people work is told by the hours that they booked within the last 60 days;
/// who has booked none counts for all departments alike.
Capacity loadCapacity(jet::Database& database, const QDate& today);
/// The selects that it opens, to be expected by who opens others beside it.
QStringList capacitySelects(const QDate& today);

/// The hours that an entry takes of all its days: what of it falls into the department's working
/// times. An entry that meets none at all counts with every hour from its start to its end.
double plannedHours(const Capacity& capacity, qint64 department, const gantt::Span& span);

/// An entry with what a reader of the load has to know of it.
struct PlannedWork {
    qint64 department = 0;
    qint64 jobNo = 0;
    QString operation;
    gantt::Span span;
};

/// The entries of unshipped jobs that touch the days from first to last, those of some jobs left
/// out.
std::vector<PlannedWork> loadPlanned(jet::Database& database, const QDate& first, const QDate& last,
                                     const std::vector<qint64>& without);
/// The select that it opens, to be expected by who opens others beside it.
QString plannedSelect(const QDate& first, const QDate& last);

/// Hours of each day, for each department: planned and there, with the work behind them.
struct DayLoad {
    struct Work {
        qint64 jobNo = 0;
        QString operation;
        double hours = 0;
    };
    double planned = 0;
    double available = 0;
    std::vector<Work> work;
};
class LoadTable {
  public:
    LoadTable() = default;
    LoadTable(const Capacity& capacity, std::vector<qint64> departments, const QDate& first,
              const QDate& last);
    void add(const PlannedWork& work);
    const std::vector<qint64>& departments() const { return m_departments; }
    QDate firstDay() const { return m_first; }
    const std::vector<DayLoad>& days(qint64 department) const;
    double freeOn(qint64 department, const QDate& day) const;
    /// "Job 1004 Milling: 6.5 h" for each work of some days, counted from the first one.
    QStringList workOf(qint64 department, int day, int days) const;
    const Capacity& capacity() const { return m_capacity; }

  private:
    Capacity m_capacity;
    std::vector<qint64> m_departments;
    QDate m_first, m_last;
    QMap<qint64, std::vector<DayLoad>> m_days;
};

} // namespace scheduling
