#pragma once

#include "platform/screen/ListForm.h"

namespace estimating {

/// The catalogue of fixed cost items.
class frmMiscItems : public screen::ListForm {
  public:
    static constexpr char formName[] = "frmMiscItems";
    frmMiscItems();

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;

  protected:
    std::vector<controls::ListRow> rows() override;
};

} // namespace estimating
