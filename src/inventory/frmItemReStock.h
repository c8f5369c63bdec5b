#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/screen/Form.h"

class QRadioButton;

namespace inventory {

/// Says what is to be stocked: the selected item, what a purchase order brought, or a shipped job.
class frmItemReStock : public screen::Form, public RestockDialog {
  public:
    static constexpr char formName[] = "frmItemReStock";
    frmItemReStock();
    void stock(qint64 itemId) override;

  private:
    void cmdOK_Click();

    controls::DataCombo* dbcEmployee;
    controls::DateField* txtDate;
    QRadioButton* Option1;
    qint64 m_itemId = 0;
};

} // namespace inventory
