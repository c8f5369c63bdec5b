#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/Issue.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QLabel;

namespace inventory {

/// What went out of an item's stock and came into it. Rows are taken back by deleting them and
/// saving.
class frmItemActivity : public screen::Form, public ItemAction {
  public:
    static constexpr char formName[] = "frmItemActivity";
    frmItemActivity();
    void showFor(qint64 itemId) override;

  private:
    struct Side {
        controls::Grid* grid = nullptr;
        QLabel* count = nullptr;
        QString word; ///< "Issue" or "Stock"
        std::vector<Movement> rows;
        std::vector<qint64> removed; ///< IDs
    };
    void makeSide(Side& side, const QString& gridName, const QString& word, const QString& number);
    void showSide(Side& side);
    /// Moves the selected rows out of sight; how many they were.
    std::size_t removeSelected(Side& side);
    void cmdDelete_Click();
    void cmdSave_Click();

    Side m_issues, m_stock;
    QCheckBox* chkQuantity;
    QCheckBox* chkFixed;
    qint64 m_itemId = 0;
};

} // namespace inventory
