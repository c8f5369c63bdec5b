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
    /// False if there are no employees.
    bool fillLists();
    void option_Click();
    void cmdOK_Click();
    bool stockJob(qint64 jobNo, qint64 employee, const QDate& date);

    QRadioButton *Option1, *Option2, *Option3;
    controls::DataCombo* dbcPONo;
    controls::DataCombo* dbcJobNo;
    controls::DataCombo* dbcEmployee;
    controls::DateField* txtDate;
    qint64 m_itemId = 0;
};

} // namespace inventory
