#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

namespace timemgmt {

/// The work shifts. Nothing can be changed while the companion program runs, nor a shift while one
/// of its employees is signed in.
class frmShifts : public screen::Form {
  public:
    static constexpr char formName[] = "frmShifts";
    frmShifts();
    void Form_Load() override;

  private:
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdShiftAuto_Click();
    bool CanChangeShifts();
    bool IsShiftSignedIn(qint64 shiftId);
    void showItems();

    controls::ListView* lvwItems;
};

} // namespace timemgmt
