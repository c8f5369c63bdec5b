#pragma once

#include "platform/jet/Database.h"

#include <QDateTime>
#include <QHash>
#include <QString>

#include <vector>

namespace timemgmt {

/// A moment as whole seconds, without a zone; a shop's clock, not the world's.
using Seconds = qint64;
inline constexpr Seconds secondsPerDay = 86400;

Seconds secondsOf(const QDateTime& moment);
QDateTime momentOf(Seconds seconds);

/// What a shift says of the hours of a day: its range, past midnight where it ends earlier than it
/// begins, and the times at which running work is suspended, where breaks begin. Without a range
/// (`known` false) each calendar day is open from end to end.
struct ShiftHours {
    QString name;
    bool known = false;
    Seconds start = 0;              ///< of the range, seconds after midnight
    Seconds length = secondsPerDay; ///< of the range
    std::vector<Seconds> breaks;    ///< seconds after the range's start, in order; within the range

    /// Each moment belongs to the shift of one day: that of a night shift to the evening on which
    /// it begins. Two days part in the middle of the hours in which nobody works.
    QDate dayOf(Seconds moment) const;
    Seconds dayBegin(const QDate& day) const; ///< 24 hours before the next day's
    Seconds openFrom(const QDate& day) const;
    Seconds openTo(const QDate& day) const { return openFrom(day) + length; }
};

/// All shifts by number.
QHash<qint64, ShiftHours> readShiftHours(jet::Recordset shifts, jet::Recordset timer);
inline constexpr char16_t selectShifts[] = u"SELECT * FROM Shifts";
inline constexpr char16_t selectBreaks[] = u"SELECT * FROM ShiftsTimer WHERE RunType = 'Suspend'";

} // namespace timemgmt
