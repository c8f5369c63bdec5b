#pragma once

#include "estimating/EstimateDialogs.h"
#include "estimating/routing/OperationPicker.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace estimating {

/// Makes or changes one default set of operations.
class frmDefNew : public screen::Form, public DefaultSetEditor {
  public:
    static constexpr char formName[] = "frmDefNew";
    frmDefNew();
    qint64 ShowForm(qint64 setNo) override;

  private:
    void cmdOK_Click();

    controls::TextField* txtDescription;
    OperationPicker* m_picker;
    qint64 m_setNo = 0;
    qint64 m_saved = 0;
};

} // namespace estimating
