#include "inventory/frmItemReStockPOMulti.h"

#include "core/MirsaMain.h"
#include "inventory/ItemRows.h"
#include "platform/screen/Layout.h"

#include <QVBoxLayout>

namespace inventory {

frmItemReStockPOMulti::frmItemReStockPOMulti()
    : Form(QString::fromLatin1(formName), u"Select Correct Item"_s) {
    auto* outside = new QVBoxLayout(this);
    sprItems = screen::named(new controls::Grid(this), u"sprItems"_s, u"Matching items"_s);
    sprItems->setColumns(itemColumns());
    outside->addWidget(sprItems, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&Use Selected"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(cmdSelect, &frmItemReStockPOMulti::cmdSelect_Click);
    on(sprItems->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    on(cmdCancel, [this] { hideModal(); });
    resize(820, 360);
}

std::optional<qint64> frmItemReStockPOMulti::pickItem(const QString& partNumber,
                                                      const QString& description) {
    if (screen::MsgBox(u"Multiple Inventory items were found matching the partnumber and "
                       "description. Click OK to select from a list or click CANCEL to move to "
                       "the next item on the PO."_s,
                       screen::Buttons::OkCancel, screen::Icon::Question,
                       u"System Message"_s) != screen::Answer::Ok)
        return std::nullopt;
    showItems(*sprItems, itemsOfPart(core::MainDatabase(), partNumber, description));
    sprItems->setActiveRow(0);
    sprItems->setFocus();
    showModal();
    return m_item;
}

void frmItemReStockPOMulti::cmdSelect_Click() {
    const qint64 item = sprItems->rowKey(sprItems->activeRow());
    if (item == 0)
        return;
    m_item = item;
    hideModal();
}

} // namespace inventory
