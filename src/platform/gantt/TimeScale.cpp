#include "platform/gantt/TimeScale.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <cmath>

namespace gantt {

namespace {

QDate mondayOf(const QDate& date) {
    return date.addDays(1 - date.dayOfWeek());
}

Minute unitOf(Division division) {
    switch (division) {
    case Division::Hours:
        return 60;
    case Division::Days:
        return minutesPerDay;
    case Division::Weeks:
        break;
    }
    return 7 * minutesPerDay;
}

Minute rounded(Minute value, Minute step) {
    return static_cast<Minute>(
               std::floor(static_cast<double>(value) / static_cast<double>(step) + 0.5)) *
           step;
}

} // namespace

TimeScale::TimeScale(Ruler ruler, const QDate& first, const QDate& last)
    : m_ruler(std::move(ruler)), m_start(minuteOf(first)),
      m_end(minuteOf(std::max(first, last)) + minutesPerDay), m_unit(unitOf(m_ruler.division)) {}

int TimeScale::xOf(Minute moment) const {
    return static_cast<int>(std::floor(static_cast<double>(moment - m_start) * m_ruler.unitWidth /
                                       static_cast<double>(m_unit)));
}

Minute TimeScale::at(int x) const {
    return m_start + static_cast<Minute>(std::ceil(
                         static_cast<double>(x) * static_cast<double>(m_unit) / m_ruler.unitWidth));
}

Minute TimeScale::step() const {
    return m_ruler.division == Division::Hours ? m_unit / std::max(1, m_ruler.subdivisions)
                                               : m_unit;
}

Minute TimeScale::snapped(Minute moment, Minute from) const {
    if (m_ruler.division == Division::Hours)
        return rounded(moment, step());
    return from + rounded(moment - from, minutesPerDay);
}

double TimeScale::markWidth() const {
    return static_cast<double>(m_ruler.unitWidth) / std::max(1, m_ruler.subdivisions);
}

TimeScale::Tick TimeScale::tick(const QDate& from, const QDate& to, const QString& label) const {
    const int x = xOf(minuteOf(from));
    return {x, xOf(minuteOf(to)) - x, label};
}

std::vector<TimeScale::Tick> TimeScale::upper(int left, int right) const {
    std::vector<Tick> ticks;
    const QDate last = dateOf(std::min(at(right), m_end - 1));
    QDate day = dateOf(std::max(at(left), m_start));
    if (m_ruler.division == Division::Weeks)
        day = QDate(day.year(), day.month(), 1);
    else if (m_ruler.division == Division::Days)
        day = mondayOf(day);
    while (day <= last) {
        QDate next = day.addDays(1);
        if (m_ruler.division == Division::Weeks)
            next = day.addMonths(1);
        else if (m_ruler.division == Division::Days)
            next = day.addDays(7);
        ticks.push_back(tick(day, next, dateText(day, m_ruler.dateFormat)));
        day = next;
    }
    return ticks;
}

std::vector<TimeScale::Tick> TimeScale::lower(int left, int right) const {
    std::vector<Tick> ticks;
    const Minute until = std::min(at(right), m_end - 1);
    const Minute from = std::max(at(left), m_start);
    if (m_ruler.division == Division::Hours) {
        // Too narrow for every hour: every sixth.
        const Minute hours = m_ruler.showHours ? 1 : 6;
        for (Minute hour = from - minuteOfDay(from) % (60 * hours); hour <= until;
             hour += 60 * hours) {
            ticks.push_back({xOf(hour), m_ruler.unitWidth * static_cast<int>(hours),
                             hourText(minuteOfDay(hour) / 60)});
        }
        return ticks;
    }
    const int days = m_ruler.division == Division::Weeks ? 7 : 1;
    QDate day = dateOf(from);
    if (days == 7)
        day = mondayOf(day);
    for (; minuteOf(day) <= until; day = day.addDays(days)) {
        QString label = QString::number(day.day());
        if (days == 1 && m_ruler.unitWidth >= 60)
            label = values::format(day, u"ddd") + u' ' + label;
        else if (days == 7 && m_ruler.unitWidth >= 60)
            label = values::format(day, u"mmm") + u' ' + label;
        ticks.push_back(tick(day, day.addDays(days), label));
    }
    return ticks;
}

QString TimeScale::hourText(int hour) const {
    const QString mark = hour < 12 ? m_ruler.am : m_ruler.pm;
    const QString number = QString::number(hour % 12 == 0 ? 12 : hour % 12);
    return number + (m_ruler.showMinutes ? u":00"_s : QString()) + mark;
}

QString TimeScale::dateText(const QDate& date, const QString& format) {
    QString text;
    for (const QChar letter : format) {
        switch (letter.unicode()) {
        case u'D':
            text += values::format(date, u"ddd");
            break;
        case u'M':
            text += values::format(date, u"mmm");
            break;
        case u'n':
            text += QString::number(date.day());
            break;
        case u'Y':
            text += values::format(date, u"yyyy");
            break;
        default:
            text += letter;
        }
    }
    return text;
}

} // namespace gantt
