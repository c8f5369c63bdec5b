#include "timemgmt/ShiftHours.h"

#include "platform/values/Literals.h"
#include "timemgmt/ShiftRules.h"

#include <QLocale>

#include <algorithm>

namespace timemgmt {

namespace {

const QDate firstDay(1970, 1, 1);

/// A timer's text, "12:00 PM"; an invalid time for one that can't be read.
QTime timerTime(const QString& text) {
    if (!isTimerTime(text))
        return {};
    static const QLocale english(QLocale::English, QLocale::UnitedStates);
    for (const auto* form : {u"h:mm AP", u"h:mm:ss AP", u"hh:mmAP", u"hh:mm:ssAP"}) {
        const QTime time = english.toTime(text.trimmed(), QString::fromUtf16(form));
        if (time.isValid())
            return time;
    }
    return {};
}

Seconds afterMidnight(const QTime& time) {
    return time.msecsSinceStartOfDay() / 1000;
}

Seconds within(Seconds value) {
    return (value % secondsPerDay + secondsPerDay) % secondsPerDay;
}

} // namespace

Seconds secondsOf(const QDateTime& moment) {
    return firstDay.daysTo(moment.date()) * secondsPerDay + afterMidnight(moment.time());
}

QDateTime momentOf(Seconds seconds) {
    const Seconds ofDay = within(seconds);
    return {firstDay.addDays((seconds - ofDay) / secondsPerDay),
            QTime::fromMSecsSinceStartOfDay(static_cast<int>(ofDay * 1000)), Qt::UTC};
}

QDate ShiftHours::dayOf(Seconds moment) const {
    const Seconds sinceBegin = moment - dayBegin(firstDay);
    return firstDay.addDays((sinceBegin - within(sinceBegin)) / secondsPerDay);
}

Seconds ShiftHours::dayBegin(const QDate& day) const {
    return openFrom(day) - (secondsPerDay - length) / 2;
}

Seconds ShiftHours::openFrom(const QDate& day) const {
    return firstDay.daysTo(day) * secondsPerDay + start;
}

QHash<qint64, ShiftHours> readShiftHours(jet::Recordset shifts, jet::Recordset timer) {
    QHash<qint64, ShiftHours> found;
    for (; !shifts.eof(); shifts.moveNext()) {
        ShiftHours& shift = found[shifts[u"ID"].toLong()];
        shift.name = shifts.text(u"Description");
        const auto from = shifts[u"EarliestSignIn"].toDateTime();
        const auto to = shifts[u"LatestSignOut"].toDateTime();
        if (!from || !to || from->time() == to->time())
            continue;
        shift.known = true;
        shift.start = afterMidnight(from->time());
        shift.length = within(afterMidnight(to->time()) - shift.start);
    }
    for (; !timer.eof(); timer.moveNext()) {
        const auto shift = found.find(timer[u"ShiftsID"].toLong());
        const QTime time = timerTime(timer.text(u"RunTime"));
        if (shift == found.end() || !shift->known || !time.isValid())
            continue;
        const Seconds after = within(afterMidnight(time) - shift->start);
        if (after > 0 && after < shift->length)
            shift->breaks.push_back(after);
    }
    for (ShiftHours& shift : found)
        std::sort(shift.breaks.begin(), shift.breaks.end());
    return found;
}

} // namespace timemgmt
