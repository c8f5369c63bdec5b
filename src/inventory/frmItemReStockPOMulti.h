#pragma once

#include "inventory/StockNewItem.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

namespace inventory {

/// Picks the item that a received part is, where several have its number and description.
class frmItemReStockPOMulti : public screen::Form, public ItemPicker {
  public:
    static constexpr char formName[] = "frmItemReStockPOMulti";
    frmItemReStockPOMulti();
    std::optional<qint64> pickItem(const QString& partNumber, const QString& description) override;

  private:
    void cmdSelect_Click();
    controls::Grid* sprItems;
    std::optional<qint64> m_item;
};

} // namespace inventory
