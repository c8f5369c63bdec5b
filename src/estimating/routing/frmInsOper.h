#pragma once

#include "estimating/routing/Dialogs.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QLabel;
class QRadioButton;

namespace estimating {

/// Picks one operation to insert into a routing.
class frmInsOper : public screen::Form, public InsertOperationDialog {
  public:
    static constexpr char formName[] = "frmInsOper";
    frmInsOper();
    std::optional<InsertedOperation> insert(const std::vector<qint64>& taken) override;

  private:
    void cmdOK_Click();
    void lstOper_Click();
    const CatalogueOperation* selected() const; ///< nullptr if none

    controls::ListView* lstOper;
    QLabel* lblOperShopRate;
    QRadioButton* optPosition[2];
    QCheckBox* chkNotes;
    std::vector<CatalogueOperation> m_operations;
    bool m_ok = false;
};

} // namespace estimating
