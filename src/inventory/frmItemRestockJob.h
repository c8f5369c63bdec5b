#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/Grid.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QLabel;

namespace inventory {

/// Stocks what a shipped job made as one of the items that match it.
class frmItemRestockJob : public screen::Form, public RestockFrom {
  public:
    static constexpr char formName[] = "frmItemRestockJob";
    frmItemRestockJob();
    bool stock(qint64 jobNo, qint64 employee, const QDate& date) override;

  private:
    void cmdOK_Click();

    QLabel* lblJob;
    controls::TextField* fpQuantity;
    controls::Grid* sprItems;
    qint64 m_jobNo = 0, m_employee = 0;
    QDate m_date;
    bool m_done = false;
};

} // namespace inventory
