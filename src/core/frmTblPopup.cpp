#include "core/frmTblPopup.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace core {

frmTblPopup::frmTblPopup() : Form(QString::fromLatin1(formName), u"Select"_s) {
    auto* outside = new QVBoxLayout(this);
    lstItems = screen::named(new controls::ListView(this), u"lstItems"_s, u"Items"_s);
    lstItems->setColumns({{QString(), 40}});
    outside->addWidget(lstItems, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* btnsel = bar.button(u"btnsel"_s, u"&Select"_s);
    QPushButton* cancel = bar.button(u"btnCancel"_s, u"Cancel"_s);
    setDefaultButton(btnsel);
    setCancelButton(cancel);
    on(btnsel, &frmTblPopup::btnsel_Click);
    on(lstItems->rowDoubleClicked, [this](int) { btnsel_Click(); });
    controls::offerInMenu(lstItems, {btnsel});
    on(cancel, [this] { hideModal(); });
    resize(400, 420);
}

std::optional<QString> frmTblPopup::pick(const QString& caption, const QStringList& items,
                                         const QString& emptyMessage) {
    if (items.isEmpty()) {
        screen::MsgBox(emptyMessage.isEmpty() ? u"No items to show for the selected lookup!"_s
                                              : emptyMessage,
                       screen::Buttons::Ok, screen::Icon::Information);
        return {};
    }
    setWindowTitle(caption);
    for (const QString& item : items)
        lstItems->addRow(item, {item});
    lstItems->selectRow(0);
    lstItems->setFocus();
    showModal();
    return m_chosen;
}

void frmTblPopup::btnsel_Click() {
    const int row = lstItems->selectedRow();
    if (row < 0)
        return;
    if (const QString text = lstItems->rowText(row, 0); !text.isEmpty())
        m_chosen = text;
    hideModal();
}

} // namespace core
