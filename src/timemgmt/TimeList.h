#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace timemgmt {

/// Whose time, of which days, in which state.
struct TimeCriteria {
    qint64 empId = 0;
    QDate first;
    std::optional<QDate> last = {}; ///< nothing: one day
    QString pattern = {};           ///< of `Status`, "*" for all that have one
};

/// The sets that the two pages show, and the same as selection formulas for their reports.
struct TimeTexts {
    QString work, attendance;
    QString workFormula, attendanceFormula;
};
TimeTexts timeTexts(const TimeCriteria& criteria);

/// The names of the ranges that are reckoned from today.
QStringList cannedRanges();
/// First and last day of one of them by its place; the last one only where it is more than a day.
std::pair<QDate, std::optional<QDate>> cannedRange(int index, const QDate& today);

/// The words for states of work, and the pattern of each by its place.
QStringList statusChoices();
QString statusPattern(int index);

} // namespace timemgmt
