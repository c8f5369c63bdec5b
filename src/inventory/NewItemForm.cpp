#include "inventory/NewItemForm.h"

#include "core/MirsaMain.h"
#include "core/history/HistoryTargets.h"
#include "inventory/InventoryDialogs.h"
#include "platform/screen/Forms.h"

#include <QVBoxLayout>

namespace inventory {

const std::vector<NewItemKind>& newItemKinds() {
    static const std::vector<NewItemKind> kinds{{u"frmPOItemRestock"_s, checkItem},
                                                {u"frmItemReStockCreate"_s, checkOrderedItem},
                                                {u"frmItemRestockJobCreate"_s, checkItem, true}};
    return kinds;
}

NewItemForm::NewItemForm(const NewItemKind& kind)
    : Form(kind.formName, u"New Item"_s), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    m_fields.emplace(*this, screen::Fields(this, outside));
    m_fields->offerFixedCost(kind.offersFixedCost);
    outside->addStretch();
    on(addOkCancel(outside), &NewItemForm::cmdOK_Click);
}

bool NewItemForm::create(const Item& goods, const Restock& movement,
                         const std::function<void()>& alsoWrite) {
    m_movement = movement;
    m_alsoWrite = alsoWrite;
    m_fields->fillLists();
    m_fields->show(goods);
    showModal();
    return m_saved;
}

void NewItemForm::cmdOK_Click() {
    Item item = m_fields->typed();
    item.description = item.description.trimmed();
    item.partNumber = item.partNumber.trimmed();
    if (const auto check = m_kind.check(item)) {
        complain(check->text, control(check->field), screen::Icon::Exclamation,
                 u"System Message"_s);
        return;
    }
    jet::Transaction transaction(core::MainDatabase());
    const qint64 id = createStocked(core::MainDatabase(), item, m_movement);
    if (m_alsoWrite)
        m_alsoWrite();
    transaction.commit();
    m_saved = true;
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(id);
    core::RefreshHistoryIfOpen(u"Items"_s);
    m_fields->addFixedCost(item);
    hideModal();
}

} // namespace inventory
