#include "platform/screen/AddEditForm.h"

#include "platform/screen/Layout.h"

namespace screen {

void AddEditForm::makeButtons(QBoxLayout* into, const QString& cancelCaption) {
    ButtonBar bar(this, into);
    bar.stretch();
    QPushButton* cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    m_okNew = bar.button(QStringLiteral("cmdOKNew"), QStringLiteral("OK and &New"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), cancelCaption);
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    on(cmdOK, &AddEditForm::cmdOK_Click);
    on(m_okNew, &AddEditForm::cmdOKNew_Click);
    on(cmdCancel, [this] { hideModal(); });
}

void AddEditForm::setAdding(bool adding) {
    m_okNew->setEnabled(adding);
}

bool AddEditForm::run() {
    showModal();
    return m_saved;
}

void AddEditForm::cmdOK_Click() {
    if (!save())
        return;
    m_saved = true;
    hideModal();
}

void AddEditForm::cmdOKNew_Click() {
    if (!save())
        return;
    m_saved = true;
    startNext();
}

} // namespace screen
