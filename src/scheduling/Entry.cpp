#include "scheduling/Entry.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace scheduling {

bool Entry::saysTheSame(const Entry& other) const {
    return jobNo == other.jobNo && seqNo == other.seqNo && description == other.description &&
           textAlign == other.textAlign && span == other.span;
}

QString chartTime(const QString& stored) {
    if (stored.startsWith(u"12") && stored.endsWith(u"AM", Qt::CaseInsensitive))
        return u"00"_s + stored.mid(2);
    return stored.toLower();
}

int minutesOfTime(const QString& time) {
    const QString text = chartTime(time.trimmed());
    const auto colon = text.indexOf(u':');
    if (colon < 1)
        return 0;
    int hour = static_cast<int>(values::val(QStringView(text).left(colon)));
    const int minute = static_cast<int>(values::val(QStringView(text).mid(colon + 1, 2)));
    if (text.endsWith(u"pm", Qt::CaseInsensitive) && hour < 12)
        hour += 12;
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 ? hour * 60 + minute : 0;
}

QString storedTime(int minuteOfDay) {
    const int hour = minuteOfDay / 60;
    return u"%1:%2 %3"_s.arg(hour % 12 == 0 ? 12 : hour % 12, 2, 10, QLatin1Char('0'))
        .arg(minuteOfDay % 60, 2, 10, QLatin1Char('0'))
        .arg(hour < 12 ? u"AM"_s : u"PM"_s);
}

std::optional<Entry> entryOf(const jet::Recordset& row) {
    const auto start = row[u"StartDate"].toDate();
    const auto end = row[u"EndDate"].toDate();
    if (!start || !end)
        return std::nullopt;
    Entry entry;
    entry.id = row[u"ID"].toLong();
    entry.jobNo = row[u"JobNo"].toLong();
    entry.seqNo = static_cast<int>(row[u"SeqNo"].toLong());
    entry.operNo = row[u"OperNo"].toLong();
    entry.description = row.text(u"Description");
    entry.textAlign = static_cast<int>(row[u"TextAlign"].toLong());
    entry.span.start = gantt::minuteOf(*start, minutesOfTime(row.text(u"StartTime")));
    entry.span.end = gantt::minuteOf(*end, minutesOfTime(row.text(u"EndTime")));
    return entry;
}

OutOfRange outOfRange(const gantt::Span& span, const Limits& limits) {
    if (limits.dateIn && gantt::dateOf(span.start) < *limits.dateIn)
        return OutOfRange::TooEarly;
    if (limits.dueDate && gantt::dateOf(span.end) > *limits.dueDate)
        return OutOfRange::TooLate;
    return OutOfRange::No;
}

QString rangeText(int entry, int row, qint64 jobNo, OutOfRange what, bool inOrder) {
    const QString opening =
        u"Schedule entry %1 in operation %2 on Job %3"_s.arg(entry).arg(row).arg(jobNo);
    if (inOrder)
        return opening + u" cannot be placed outside the date in/due date range."_s;
    return opening + (what == OutOfRange::TooEarly ? u" cannot start before the job date in."_s
                                                   : u" cannot extend after the job due date."_s);
}

QString entryComplaint(const std::optional<QDate>& startDate, const std::optional<QTime>& startTime,
                       const std::optional<QDate>& endDate, const std::optional<QTime>& endTime) {
    if (!startDate || !startTime || !endDate || !endTime)
        return u"Schedule entries must have a start and end date/time."_s;
    if (*startDate > *endDate)
        return u"Start date cannot be after end date."_s;
    if (*startDate == *endDate && *startTime > *endTime)
        return u"Start time cannot be after the end time."_s;
    return {};
}

} // namespace scheduling
