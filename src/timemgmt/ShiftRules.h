#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

namespace timemgmt {

/// Whether the companion program leaves the shifts free to change. It runs while it holds a lock on
/// the marker file (on Windows: keeps it open without sharing delete access); a file that nobody
/// holds is left over from one that stopped, and is deleted.
bool canChangeShifts(const QString& markerFile);

/// Whether an employee of the shift is signed in.
bool isShiftSignedIn(jet::Database& database, qint64 shiftId);
/// Whether an employee, even one who left, has the shift.
bool isShiftInUse(jet::Database& database, qint64 shiftId);

/// Whether times "hh:mm:ss" rise from the first to the last, past midnight at most once, and after
/// that pass neither the first nor the last.
bool IsValidTimeSeries(const QStringList& series);

/// Whether a time field's text can stand in a timer: hour 1 to 12 in its first two characters,
/// AM or PM at its end.
bool isTimerTime(const QString& text);

/// Deletes a shift with its timer.
void deleteShift(jet::Database& database, qint64 shiftId);

/// What the add and edit dialog writes; times as a time field shows them, empty for none.
struct Shift {
    QString description;
    QString earliest;
    QString latest;
};
void addShift(jet::Database& database, const Shift& shift);
/// `resetTimer`: the range was changed, so that the timer's times go. False if the shift has gone.
bool changeShift(jet::Database& database, qint64 shiftId, const Shift& shift, bool resetTimer);

/// Writes a shift's timer anew; empty texts are left out. False, with nothing written, if the shift
/// has gone.
bool saveTimer(jet::Database& database, qint64 shiftId, const QStringList& suspend,
               const QStringList& signOut);

} // namespace timemgmt
