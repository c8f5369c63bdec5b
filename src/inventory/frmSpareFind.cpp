#include "inventory/frmSpareFind.h"

#include "platform/screen/Layout.h"

#include <QVBoxLayout>

namespace inventory {

frmSpareFind::frmSpareFind() : Form(QString::fromLatin1(formName), u"Goto Spare Part"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtPart = fields.text(u"txtPart"_s, u"&Part Number:"_s, screen::wide(30));
    outside->addStretch();
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdFind = bar.button(u"cmdFind"_s, u"&List"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    setDefaultButton(cmdFind);
    setCancelButton(cmdCancel);
    on(cmdFind, &frmSpareFind::cmdFind_Click);
    on(cmdCancel, [this] { hideModal(); });
}

std::optional<QString> frmSpareFind::ask() {
    showModal();
    return m_text;
}

void frmSpareFind::cmdFind_Click() {
    const QString text = txtPart->text().trimmed();
    if (text.isEmpty() &&
        screen::MsgBox(u"Finding With Blank Criteria Will Return All Records! Are You Sure?"_s,
                       screen::Buttons::YesNo, screen::Icon::Question,
                       u"Blank Criteria"_s) != screen::Answer::Yes)
        return;
    m_text = text;
    hideModal();
}

} // namespace inventory
