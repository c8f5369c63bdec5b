#pragma once

#include "inventory/StockNewItem.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"

class QCheckBox;

namespace purchasing {

/// Makes an item of inventory of a received line that has none, with what arrived as its stock.
class frmPOItemRestock : public screen::Form, public inventory::StockNewItem {
  public:
    static constexpr char formName[] = "frmPOItemRestock";
    frmPOItemRestock();
    bool create(qint64 itemId, const inventory::Restock& movement,
                const std::function<void()>& alsoWrite) override;

    void cmdOK_Click();

  private:
    QPushButton* pickButton(const QString& name, const QString& spoken, const QString& view,
                            controls::TextField* path, qint64& folder);
    void fillLists();

    controls::TextField* txtPartNumber;
    controls::TextField* txtDescription;
    controls::DataCombo* cboMan;
    controls::DataCombo* dbcUnits;
    controls::TextField* txtType;
    controls::TextField* txtLocation;
    controls::TextField* fpQuantity;
    controls::CurrencyField* fpCost;
    QCheckBox* chkFlag;
    controls::TextField* txtFlagQuantity;
    qint64 m_type = 0;
    qint64 m_location = 0;
    inventory::Restock m_movement;
    std::function<void()> m_alsoWrite;
    bool m_saved = false;
};

} // namespace purchasing
