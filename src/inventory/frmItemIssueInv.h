#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QLabel;

namespace inventory {

/// Issues an item to a job, a customer or overhead.
class frmItemIssueInv : public screen::Form, public ItemAction {
  public:
    static constexpr char formName[] = "frmItemIssueInv";
    frmItemIssueInv();
    void showFor(qint64 itemId) override;

  private:
    void cboIssueType_Click();
    void cmdOK_Click();
    bool isComplete();
    /// Posts the cost of what was issued to the job; asks where the item is no fixed cost item yet.
    void postNewCost(const Item& item, qint64 jobNo, qint64 quantity);

    QLabel* m_shown[6];
    controls::DataCombo* dbcEmployee;
    controls::ListCombo* cboIssueType;
    QLabel* lblInfo;
    controls::DataCombo* dbcInfo;
    controls::DateField* txtDate;
    controls::TextField* txtQuantity;
    QCheckBox* chkFixedCost;
    qint64 m_itemId = 0;
};

} // namespace inventory
