#include "timemgmt/payroll/PayrollHours.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QMap>

#include <algorithm>

namespace timemgmt {

namespace {

/// Days before the first within which an attendance that reaches into it has begun.
constexpr int longestAttendance = 35;

struct DaySeconds {
    Seconds outside = 0, breaks = 0, paid = 0;
    int open = 0;
};

Seconds shared(Seconds from, Seconds to, Seconds otherFrom, Seconds otherTo) {
    return std::max<Seconds>(0, std::min(to, otherTo) - std::max(from, otherFrom));
}

/// The start of work that ends a break which begins at a moment; nothing if work runs on over it,
/// or isn't taken up again before `until`. Work that never ended holds no break up for longer than
/// a day.
std::optional<Seconds> endOfBreak(const std::vector<TimeSpan>& work, Seconds moment,
                                  Seconds until) {
    auto stretch = std::lower_bound(
        work.begin(), work.end(), moment - secondsPerDay,
        [](const TimeSpan& each, Seconds earliest) { return each.from < earliest; });
    for (; stretch != work.end() && stretch->from < until; ++stretch) {
        if (stretch->from >= moment)
            return stretch->from;
        if (!stretch->to || *stretch->to > moment)
            return {};
    }
    return {};
}

/// The breaks of a day within a part of its range.
Seconds breaksWithin(const EmployeeTimes& times, const QDate& day, Seconds from, Seconds to) {
    Seconds sum = 0, done = from;
    for (const Seconds after : times.shift.breaks) {
        const Seconds begin = times.shift.openFrom(day) + after;
        if (begin <= from || begin >= to)
            continue;
        const auto end = endOfBreak(times.work, begin, to);
        if (!end)
            continue;
        sum += std::max<Seconds>(0, *end - std::max(begin, done));
        done = std::max(done, *end);
    }
    return sum;
}

void addAttendance(const EmployeeTimes& times, Seconds from, Seconds to,
                   QMap<QDate, DaySeconds>& days) {
    const ShiftHours& shift = times.shift;
    if (!shift.known) {
        days[shift.dayOf(from)].paid += to - from;
        return;
    }
    for (QDate day = shift.dayOf(from); day <= shift.dayOf(to - 1); day = day.addDays(1)) {
        const Seconds openFrom = std::max(from, shift.openFrom(day));
        const Seconds openTo = std::min(to, shift.openTo(day));
        const Seconds within = std::max<Seconds>(0, openTo - openFrom);
        const Seconds begin = shift.dayBegin(day);
        const Seconds breaks = within > 0 ? breaksWithin(times, day, openFrom, openTo) : 0;
        DaySeconds& seconds = days[day];
        seconds.outside += shared(from, to, begin, begin + secondsPerDay) - within;
        seconds.breaks += breaks;
        seconds.paid += within - breaks;
    }
}

qint64 hundredths(Seconds seconds) {
    return (seconds + 18) / 36;
}

void add(PayrollLine& sum, const PayrollLine& line) {
    sum.outside += line.outside;
    sum.breaks += line.breaks;
    sum.paid += line.paid;
    sum.open += line.open;
}

} // namespace

std::vector<PayrollLine> payrollDays(const EmployeeTimes& times, const QDate& from,
                                     const QDate& to) {
    QMap<QDate, DaySeconds> days;
    Seconds counted = std::numeric_limits<Seconds>::min();
    for (const TimeSpan& attendance : times.attendance) {
        if (!attendance.to) {
            ++days[times.shift.dayOf(attendance.from)].open;
            continue;
        }
        const Seconds begin = std::max(attendance.from, counted);
        if (*attendance.to > begin)
            addAttendance(times, begin, *attendance.to, days);
        counted = std::max(counted, *attendance.to);
    }
    std::vector<PayrollLine> lines;
    for (auto day = days.cbegin(); day != days.cend(); ++day) {
        if (day.key() < from || day.key() > to)
            continue;
        PayrollLine line;
        line.day = day.key();
        line.outside = hundredths(day->outside);
        line.breaks = hundredths(day->breaks);
        line.paid = hundredths(day->paid);
        line.open = day->open;
        lines.push_back(line);
    }
    return lines;
}

std::vector<PayrollLine> readPayroll(jet::Database& database, const QDate& from, const QDate& to,
                                     qint64 empId) {
    const QString between = u" BETWEEN #"_s + values::sqlDate(from.addDays(-longestAttendance)) +
                            u"# AND #"_s + values::sqlDate(to.addDays(3)) + u'#';
    const auto ofEmployee = [empId](const QString& table) {
        return empId > 0 ? u" AND %1.EmpID = "_s.arg(table) + QString::number(empId) : QString();
    };
    auto sets = database.together(
        {u"SELECT EmpID, lastname, firstname, shiftsid FROM Employee ORDER BY lastname, "
         "firstname, EmpID"_s,
         QString::fromUtf16(selectShifts), QString::fromUtf16(selectBreaks),
         u"SELECT Sign_in.EmpID, Sign_in.Sign_in AS CameIn, Sign_in.Sign_out AS WentOut FROM "
         "Sign_in WHERE Sign_in.Sign_in"_s +
             between + ofEmployee(u"Sign_in"_s) + u" ORDER BY Sign_in.Sign_in, Sign_in.ID"_s,
         u"SELECT Timelog.EmpID, Timelog.StartDate, Timelog.SuspDate, Timelog.FinishDate, "
         "Operation.OperType FROM Timelog INNER JOIN Operation ON Timelog.OperNo = "
         "Operation.OperNo WHERE Timelog.StartDate"_s +
             between + ofEmployee(u"Timelog"_s) +
             u" AND Timelog.Status <> '0' AND Operation.OperType <> 'C' AND Timelog.EmpID IN "
             "(SELECT EmpID FROM Employee WHERE shiftsid IN (SELECT ShiftsID FROM ShiftsTimer "
             "WHERE RunType = 'Suspend')) ORDER BY Timelog.StartDate"_s});

    const QHash<qint64, ShiftHours> shifts = readShiftHours(sets[1], sets[2]);
    QHash<qint64, EmployeeTimes> times;
    const auto moment = [](const jet::Value& value) {
        const auto known = value.toDateTime();
        return known ? std::optional(secondsOf(*known)) : std::nullopt;
    };
    for (jet::Recordset& row = sets[3]; !row.eof(); row.moveNext()) {
        if (const auto in = moment(row[u"CameIn"]))
            times[row[u"EmpID"].toLong()].attendance.push_back({*in, moment(row[u"WentOut"])});
    }
    for (jet::Recordset& row = sets[4]; !row.eof(); row.moveNext()) {
        const bool inHouse = row.text(u"OperType").compare(u"I"_s, Qt::CaseInsensitive) == 0;
        if (const auto start = moment(row[u"StartDate"]))
            times[row[u"EmpID"].toLong()].work.push_back(
                {*start, moment(row[inHouse ? u"SuspDate" : u"FinishDate"])});
    }

    std::vector<PayrollLine> lines;
    const auto take = [&](qint64 employee, const QString& name, qint64 shift) {
        EmployeeTimes own = times.take(employee);
        own.shift = shifts.value(shift);
        for (PayrollLine& line : payrollDays(own, from, to)) {
            line.empId = employee;
            line.employee = name;
            lines.push_back(std::move(line));
        }
    };
    for (jet::Recordset& row = sets[0]; !row.eof(); row.moveNext()) {
        if (const qint64 employee = row[u"EmpID"].toLong(); times.contains(employee))
            take(employee, row.text(u"lastname") + u", "_s + row.text(u"firstname"),
                 row[u"shiftsid"].toLong());
    }
    // Hours of somebody who isn't in the list of employees are told all the same.
    QList<qint64> unknown = times.keys();
    std::sort(unknown.begin(), unknown.end());
    for (const qint64 employee : std::as_const(unknown))
        take(employee, u"No. %1"_s.arg(employee), 0);
    return lines;
}

std::vector<PayrollLine> addUp(const std::vector<PayrollLine>& days, PayrollBy by) {
    if (by == PayrollBy::Day)
        return days;
    std::vector<PayrollLine> sums;
    for (const PayrollLine& line : days) {
        const QDate day = by == PayrollBy::Week ? mondayOf(line.day) : QDate();
        if (sums.empty() || sums.back().empId != line.empId || sums.back().day != day) {
            PayrollLine& next = sums.emplace_back();
            next.empId = line.empId;
            next.employee = line.employee;
            next.day = day;
        }
        add(sums.back(), line);
    }
    return sums;
}

PayrollLine totalOf(const std::vector<PayrollLine>& lines) {
    PayrollLine total;
    for (const PayrollLine& line : lines)
        add(total, line);
    return total;
}

QDate mondayOf(const QDate& day) {
    return day.addDays(1 - day.dayOfWeek());
}

QString hoursText(qint64 hundredths) {
    return values::format(static_cast<double>(hundredths) / 100.0, u"#,##0.00");
}

QStringList payrollRules() {
    return {u"Signed in: from sign-in to sign-out. What two sign-ins share counts once; a sign-in "
            "without a sign-out counts nothing and is told under Open."_s,
            u"Outside shift: before the shift's earliest sign-in or after its latest sign-out."_s,
            u"Breaks: from a suspend time of the shift, unless work ran on, to the next start of "
            "work before the sign-out."_s,
            u"Paid: what remains, each day to hundredths of an hour. A night shift's hours are "
            "those of the day on which it begins; weeks begin on Monday."_s};
}

} // namespace timemgmt
