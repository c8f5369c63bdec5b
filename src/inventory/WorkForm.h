#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

class QLabel;
class QPushButton;

namespace inventory {

/// What tells "frmItemCreateJob" from "frmItemCreateEst".
struct WorkKind {
    QString formName, caption, word, gridName;
    QString table, key, columns; ///< of the list, the key and the customer's name first
    std::vector<controls::GridColumn> looks;
    QString module, lookup; ///< "frmJob", and the table of its rows
    qint64 (*copy)(jet::Database&, qint64);
};
const std::vector<WorkKind>& workKinds();

/// Makes a job or an estimate of an item: a new one with its description and part number, or a copy
/// of an earlier one. Those that have the item's part number or description are listed, and where
/// there is none the newest of all.
class WorkForm : public screen::Form, public ItemAction {
  public:
    explicit WorkForm(const WorkKind& kind);
    void showFor(qint64 itemId) override;

  private:
    void fill();
    void cmdCreateSelect_Click();
    void goToNew();
    void goToCopy();

    const WorkKind& m_kind;
    QLabel* lblFound;
    controls::Grid* m_grid;
    QPushButton* cmdCreateSelect;
    Item m_item;
    bool m_new = false;
    qint64 m_made = 0;
};

} // namespace inventory
