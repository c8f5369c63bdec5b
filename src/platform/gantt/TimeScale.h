#pragma once

#include "platform/gantt/Model.h"

#include <QString>

#include <vector>

namespace gantt {

enum class Division { Hours, Days, Weeks };

/// How the ruler looks and how wide its divisions are.
struct Ruler {
    Division division = Division::Days;
    QString dateFormat; ///< D weekday, M month, n day, Y year; everything else as it stands
    int unitWidth = 60; ///< pixels of a division
    int subdivisions = 1;
    int step = 6;    ///< pixels by which an arrow of the scroll bar moves
    int height = 10; ///< pixels of the marks
    QString am, pm;  ///< behind the hours; "Hours" only
    bool showHours = true;
    bool showMinutes = true;
    friend bool operator==(const Ruler&, const Ruler&) = default;
};

/// Where a moment of the range stands, in pixels from the first day's beginning, and what the ruler
/// says there.
class TimeScale {
  public:
    TimeScale() = default;
    TimeScale(Ruler ruler, const QDate& first, const QDate& last);

    const Ruler& ruler() const { return m_ruler; }
    Minute start() const { return m_start; }
    Minute end() const { return m_end; } ///< the midnight behind the last day
    int width() const { return xOf(m_end); }
    int xOf(Minute moment) const;
    Minute at(int x) const;

    /// What a move by one division means: a subdivision of an hour, a day, a week.
    Minute step() const;
    /// A moment on the marks: the next one of the hours' subdivisions. With days and weeks a bar
    /// goes by whole days and keeps its time of day: the distance of `moment` from `from` is
    /// rounded.
    Minute snapped(Minute moment, Minute from) const;

    struct Tick {
        int x = 0;
        int width = 0;
        QString label;
    };
    /// Days, weeks or months above; hours, days or weeks below. Those that meet the pixels from
    /// `left` to `right`.
    std::vector<Tick> upper(int left, int right) const;
    std::vector<Tick> lower(int left, int right) const;
    /// Pixels between two marks of the subdivisions.
    double markWidth() const;

    static QString dateText(const QDate& date, const QString& format);

  private:
    Tick tick(const QDate& from, const QDate& to, const QString& label) const;
    QString hourText(int hour) const;
    Ruler m_ruler;
    Minute m_start = 0;
    Minute m_end = 0;
    Minute m_unit = minutesPerDay;
};

} // namespace gantt
