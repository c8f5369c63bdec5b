#pragma once

#include "platform/controls/TextField.h"
#include "platform/controls/TimeField.h"
#include "platform/screen/AddEditForm.h"
#include "timemgmt/ShiftDialogs.h"

namespace timemgmt {

/// Adds or edits a work shift. Another range of hours takes its timer's times away.
class frmShiftsAddEdit : public screen::AddEditForm, public ShiftDialog {
  public:
    static constexpr char formName[] = "frmShiftsAddEdit";
    frmShiftsAddEdit();
    bool ShowForm(const QString& mode, qint64 shiftId) override;

  private:
    void sayNotFound() const;
    void rangeChanged();
    bool validate();
    bool save() override;
    void startNext() override;

    controls::TextField* txtDescription;
    controls::TimeField* fpEarliestSI;
    controls::TimeField* fpLatestSO;
    qint64 m_shiftId = 0; ///< 0 for a new one
    bool m_hasTimer = false;
    bool m_resetTimer = false;
    bool m_loading = false;
    bool m_gone = false; ///< another station deleted the shift
};

} // namespace timemgmt
