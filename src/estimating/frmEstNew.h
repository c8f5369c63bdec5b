#pragma once

#include "estimating/EstimateDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QRadioButton;

namespace estimating {

/// Asks how a new estimate starts.
class frmEstNew : public screen::Form, public NewEstimateDialog {
  public:
    static constexpr char formName[] = "frmEstNew";
    frmEstNew();
    std::optional<NewEstimate> choose(bool hasCurrent) override;

  private:
    void option_Click();
    void cmdOK_Click();
    NewEstimate::Way way() const;

    QRadioButton* m_options[4];
    controls::DataCombo* txtJobno;
    QCheckBox* chkCarryCus;
    QCheckBox* chkNotes;
    QCheckBox* chkDefault;
    std::optional<NewEstimate> m_result;
};

} // namespace estimating
