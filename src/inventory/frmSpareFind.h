#pragma once

#include "inventory/SpareDialogs.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace inventory {

/// Asks for a piece of a spare part's number.
class frmSpareFind : public screen::Form, public FindSpareDialog {
  public:
    static constexpr char formName[] = "frmSpareFind";
    frmSpareFind();
    std::optional<QString> ask() override;

  private:
    void cmdFind_Click();

    controls::TextField* txtPart;
    std::optional<QString> m_text;
};

} // namespace inventory
