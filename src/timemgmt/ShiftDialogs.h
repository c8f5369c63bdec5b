#pragma once

#include <QString>

namespace timemgmt {

/// What "frmShiftsAddEdit" offers.
class ShiftDialog {
  public:
    virtual ~ShiftDialog() = default;
    /// `mode` "New", or "Edit" of the shift; whether the shifts have to be shown anew, as something
    /// was saved or the shift has gone.
    virtual bool ShowForm(const QString& mode, qint64 shiftId) = 0;
};

/// What "frmShiftsTimer" offers.
class ShiftTimerDialog {
  public:
    virtual ~ShiftTimerDialog() = default;
    /// `readOnly`: the times can only be looked at.
    virtual void ShowForm(qint64 shiftId, bool readOnly) = 0;
};

} // namespace timemgmt
