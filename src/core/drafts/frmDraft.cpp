#include "core/drafts/frmDraft.h"

#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace core {

frmDraft::frmDraft() : Form(QString::fromLatin1(formName), u"Draft"_s) {
    auto* down = new QVBoxLayout(this);
    lblWhy = screen::named(new QLabel(this), u"lblWhy"_s);
    lblWhy->setWordWrap(true);
    down->addWidget(lblWhy);
    txtDraft = screen::named(new QPlainTextEdit(this), u"txtDraft"_s, u"What was typed"_s);
    txtDraft->setReadOnly(true);
    txtDraft->setTabChangesFocus(true);
    txtDraft->setMinimumSize(520, 320);
    down->addWidget(txtDraft, 1);
    screen::ButtonBar bar(this, down);
    auto* cmdCopy = bar.button(u"cmdCopy"_s, u"&Copy"_s);
    bar.stretch();
    auto* cmdKeep = bar.button(u"cmdKeep"_s, u"&Keep"_s);
    auto* cmdThrowAway = bar.button(u"cmdThrowAway"_s, u"&Throw Away"_s);
    on(cmdCopy, [this] {
        txtDraft->selectAll();
        txtDraft->copy();
    });
    on(cmdKeep, [this] { hideModal(); });
    on(cmdThrowAway, [this] {
        m_thrownAway = true;
        hideModal();
    });
    setDefaultButton(cmdKeep);
    setCancelButton(cmdKeep);
}

bool frmDraft::tell(const QString& why, const QString& text) {
    lblWhy->setText(why);
    txtDraft->setPlainText(text);
    showModal();
    return m_thrownAway;
}

} // namespace core
