#pragma once

#include "inventory/InventoryDialogs.h"
#include "inventory/ItemFields.h"
#include "inventory/StockPanel.h"
#include "platform/screen/AddEditForm.h"

#include <optional>

namespace inventory {

/// A new stock item, or one to be changed. A quantity that is typed here corrects the stock without
/// a row in its history.
class frmItemNewEdit : public screen::AddEditForm, public ItemDialog {
  public:
    static constexpr char formName[] = "frmItemNewEdit";
    frmItemNewEdit();
    void add(const View& view, qint64 folder) override;
    bool edit(qint64 itemId) override;

  protected:
    bool save() override;
    void startNext() override { m_fields->clearForNext(); }

  private:
    bool write(const Item& item);

    std::optional<ItemFields> m_fields;
    StockPanel* m_panel;
    Item m_before; ///< as stored; id 0 for a new item
};

} // namespace inventory
