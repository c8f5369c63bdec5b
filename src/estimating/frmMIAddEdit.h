#pragma once

#include "estimating/EstimateDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace estimating {

/// Adds or edits an item of the fixed cost catalogue.
class frmMIAddEdit : public screen::AddEditForm, public FixedCostItemDialog {
  public:
    static constexpr char formName[] = "frmMIAddEdit";
    frmMIAddEdit();
    bool ShowForm(qint64 itemNo) override;

  private:
    void cboUnitofMeasure_LostFocus();
    bool save() override;
    void startNext() override;
    void clearFields();

    controls::TextField* txtDescription;
    controls::DataCombo* cboUnitofMeasure;
    controls::TextField* txtUnitPrice;
    QStringList m_units;
    qint64 m_itemNo = 0;
};

} // namespace estimating
