#pragma once

#include "platform/controls/TimeField.h"
#include "platform/screen/Form.h"
#include "timemgmt/ShiftDialogs.h"

#include <array>

class QLabel;

namespace timemgmt {

/// The times of day at which the companion program suspends work and signs a shift's people out.
class frmShiftsTimer : public screen::Form, public ShiftTimerDialog {
  public:
    static constexpr char formName[] = "frmShiftsTimer";
    frmShiftsTimer();
    void ShowForm(qint64 shiftId, bool readOnly) override;

  private:
    using Times = std::array<controls::TimeField*, 5>;
    Times makeTimes(QWidget* parent, const QString& name, const QString& caption);
    static QStringList texts(const Times& fields);
    QStringList series(const Times& fields) const;
    void sayNotFound() const;
    void fill(qint64 shiftId);
    bool validate();
    void cmdOK_Click();

    QLabel* lblEarliestSI;
    QLabel* lblLatestSO;
    Times fpRunSuspend;
    Times fpRunSignout;
    qint64 m_shiftId = 0;
    QTime m_earliest, m_latest;
    controls::TimeField* m_emptied = nullptr; ///< lately left with text that is no time
    bool m_loading = false;
    bool m_changed = false;
};

} // namespace timemgmt
