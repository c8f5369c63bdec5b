#pragma once

#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

namespace inventory {

/// The items below their minimum.
class frmItemFlagged : public screen::Form {
  public:
    static constexpr char formName[] = "frmItemFlagged";
    frmItemFlagged();
    void Form_Load() override;

  private:
    void cmdGoto_Click();
    void cmdOrder_Click();
    controls::ListView* vaSpread1;
};

} // namespace inventory
