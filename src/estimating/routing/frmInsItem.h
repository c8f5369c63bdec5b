#pragma once

#include "estimating/routing/Dialogs.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QRadioButton;

namespace estimating {

/// Picks fixed cost items to insert, several at once.
class frmInsItem : public screen::Form, public InsertItemsDialog {
  public:
    static constexpr char formName[] = "frmInsItem";
    frmInsItem();
    std::optional<InsertedItems> insert(const std::vector<qint64>& taken) override;

  private:
    void cmdOK_Click();
    void lstItems_Click();
    const MiscRow* itemOf(int row) const; ///< of a row of the list; nullptr if there is none

    controls::ListView* lstItems;
    controls::TextField* txtUnits;
    controls::TextField* txtUnitPrice;
    QRadioButton* optPosition[2];
    std::vector<MiscRow> m_items;
    bool m_ok = false;
};

} // namespace estimating
