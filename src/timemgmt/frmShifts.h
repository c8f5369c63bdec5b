#pragma once

#include "platform/screen/ListForm.h"

namespace timemgmt {

/// The work shifts. Nothing can be changed while the companion program runs, nor a shift while one
/// of its employees is signed in.
class frmShifts : public screen::ListForm {
  public:
    static constexpr char formName[] = "frmShifts";
    frmShifts();

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;
    void cmdShiftAuto_Click();

  protected:
    std::vector<controls::ListRow> rows() override;

  private:
    bool CanChangeShifts();
    bool IsShiftSignedIn(qint64 shiftId);
};

} // namespace timemgmt
