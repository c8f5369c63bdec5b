#include "inventory/frmItemNewEdit.h"

#include "core/MirsaMain.h"
#include "core/history/HistoryTargets.h"
#include "platform/screen/Forms.h"

#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

void tell(const QString& text) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Exclamation, system);
}

} // namespace

frmItemNewEdit::frmItemNewEdit() : AddEditForm(QString::fromLatin1(formName), u"New Item"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* across = new QHBoxLayout;
    outside->addLayout(across);
    auto* left = new QVBoxLayout;
    across->addLayout(left, 1);
    m_fields.emplace(*this, screen::Fields(this, left));
    left->addStretch();
    m_panel = new StockPanel(this);
    across->addWidget(m_panel, 1);
    makeButtons(outside);
}

void frmItemNewEdit::add(const View& view, qint64 folder) {
    setAdding(true);
    m_panel->hide();
    m_fields->fillLists();
    m_fields->showFolder(view, folder);
    run();
}

bool frmItemNewEdit::edit(qint64 itemId) {
    core::MainDatabase().expect(ItemFields::selects(itemId));
    const auto stored = loadItem(core::MainDatabase(), itemId);
    if (!stored) {
        tell(u"This item has been deleted by another user."_s);
        return false;
    }
    setWindowTitle(u"Edit Item"_s);
    setAdding(false);
    control(u"cmdOKNew"_s)->hide();
    m_fields->offerFixedCost(false);
    m_fields->fillLists();
    m_before = *stored;
    m_fields->show(*stored);
    m_panel->show(stockOutlook(core::MainDatabase(), *stored), *stored);
    return run();
}

bool frmItemNewEdit::save() {
    const Item item = m_fields->typed();
    if (const auto check = checkItem(item)) {
        complain(check->text, control(check->field), screen::Icon::Exclamation, system);
        return false;
    }
    if (!write(item))
        return false;
    core::RefreshHistoryIfOpen(u"Items"_s);
    m_fields->addFixedCost(item);
    return true;
}

bool frmItemNewEdit::write(const Item& item) {
    jet::Database& database = core::MainDatabase();
    if (item.id == 0) {
        const qint64 id = addItem(database, item);
        if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
            explorer->itemChanged(id);
        return true;
    }
    switch (saveItem(database, item, m_before)) {
    case Saved::Done:
        return true;
    case Saved::Gone:
        tell(u"This item has been deleted by another user and can't be saved. "
             "What you typed is still on the screen."_s);
        return false;
    case Saved::StockChanged:
        break;
    }
    const auto stored = loadItem(database, item.id);
    complain(u"The stock of this item has changed from %1 to %2 since you opened it. Please look "
             "at the quantity again."_s.arg(m_before.quantity)
                 .arg(stored ? stored->quantity : 0),
             m_fields->fpQuantity, screen::Icon::Exclamation, system);
    if (stored)
        m_before.quantity = stored->quantity;
    return false;
}

} // namespace inventory
