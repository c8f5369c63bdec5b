#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/Restock.h"
#include "inventory/TickedLines.h"

namespace inventory {

/// Stocks what an order has brought. Whether it was stocked before nobody asks: the quantity is the
/// user's.
class frmItemReStockPO : public screen::Form, public RestockFrom {
  public:
    static constexpr char formName[] = "frmItemReStockPO";
    frmItemReStockPO();
    bool stock(qint64 poNumber, qint64 employee, const QDate& date) override;

  private:
    void cmdOK_Click();
    /// Asks which item a line is, or makes one.
    void restockItem(const LeftLine& left);

    TickedLines<ReceivedLine> m_lines;
    Restock m_how;
    bool m_done = false;
};

} // namespace inventory
