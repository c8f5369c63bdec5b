#pragma once

#include "estimating/EstimateDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QPushButton;

namespace estimating {

/// Adds or edits an item of the fixed cost catalogue.
class frmMIAddEdit : public screen::Form, public FixedCostItemDialog {
  public:
    static constexpr char formName[] = "frmMIAddEdit";
    frmMIAddEdit();
    bool ShowForm(qint64 itemNo) override;

  private:
    void cmdOK_Click();
    void cmdOKNew_Click();
    void cboUnitofMeasure_LostFocus();
    bool save();
    void clearFields();

    controls::TextField* txtDescription;
    controls::DataCombo* cboUnitofMeasure;
    controls::TextField* txtUnitPrice;
    QPushButton* cmdOKNewButton;
    QStringList m_units;
    qint64 m_itemNo = 0;
    bool m_saved = false;
};

} // namespace estimating
