#pragma once

#include "estimating/routing/Dialogs.h"
#include "estimating/routing/OperationPicker.h"
#include "platform/screen/Form.h"

namespace estimating {

/// Picks the operations of a new routing, in their order.
class frmSelOper : public screen::Form, public SelectOperationsDialog {
  public:
    static constexpr char formName[] = "frmSelOper";
    frmSelOper();
    void Form_Load() override;
    std::optional<std::vector<ChosenOperation>> choose() override;

  private:
    OperationPicker* m_picker;
    bool m_ok = false;
};

} // namespace estimating
