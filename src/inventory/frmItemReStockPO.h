#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/Restock.h"
#include "platform/controls/LineGrid.h"
#include "platform/screen/Form.h"

namespace inventory {

/// Stocks what an order has brought. Whether it was stocked before nobody asks: the quantity is the
/// user's.
class frmItemReStockPO : public screen::Form, public RestockFrom {
  public:
    static constexpr char formName[] = "frmItemReStockPO";
    frmItemReStockPO();
    bool stock(qint64 poNumber, qint64 employee, const QDate& date) override;

  private:
    void selectAll(bool selected);
    void cmdOK_Click();
    /// Asks which item a line is, or makes one.
    void restockItem(const LeftLine& left);

    std::shared_ptr<controls::LineModel<ReceivedLine>> m_lines =
        std::make_shared<controls::LineModel<ReceivedLine>>();
    controls::LineGrid<ReceivedLine>* vaSpread1;
    Restock m_how;
    bool m_done = false;
};

} // namespace inventory
