#pragma once

#include "inventory/ItemFields.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Form.h"

namespace inventory {

/// A member of the family of dialogs that make an item of goods which have come.
struct NewItemKind {
    QString formName;
    std::optional<ItemCheck> (*check)(const Item&); ///< in the order of its messages
    bool offersFixedCost = false;
};
const std::vector<NewItemKind>& newItemKinds();

class NewItemForm : public screen::Form, public StockNewItem {
  public:
    explicit NewItemForm(const NewItemKind& kind);
    bool create(const Item& goods, const Restock& movement,
                const std::function<void()>& alsoWrite) override;

  private:
    void cmdOK_Click();

    const NewItemKind& m_kind;
    std::optional<ItemFields> m_fields;
    Restock m_movement;
    std::function<void()> m_alsoWrite;
    bool m_saved = false;
};

} // namespace inventory
