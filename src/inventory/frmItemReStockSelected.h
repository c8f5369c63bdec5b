#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace inventory {

/// Stocks an item by hand, from a vendor.
class frmItemReStockSelected : public screen::Form, public RestockFrom {
  public:
    static constexpr char formName[] = "frmItemReStockSelected";
    frmItemReStockSelected();
    bool stock(qint64 itemId, qint64 employee, const QDate& date) override;

  private:
    void cmdOK_Click();

    QLabel* lblItem;
    controls::DataCombo* dbcEmployee;
    controls::DataCombo* dbcVendor;
    controls::DateField* txtDate;
    controls::TextField* txtQuantity;
    qint64 m_itemId = 0;
    bool m_done = false;
};

} // namespace inventory
