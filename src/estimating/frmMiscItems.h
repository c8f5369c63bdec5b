#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

namespace estimating {

/// The catalogue of fixed cost items.
class frmMiscItems : public screen::Form {
  public:
    static constexpr char formName[] = "frmMiscItems";
    frmMiscItems();
    void Form_Load() override;

  private:
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void showItems();

    controls::ListView* lvwMI;
};

} // namespace estimating
