#include "platform/screen/AddEditForm.h"

#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

namespace screen {

void AddEditForm::makeButtons(QBoxLayout* into, const QString& cancelCaption) {
    ButtonBar bar(this, into);
    bar.stretch();
    QPushButton* cmdOK = bar.button(u"cmdOK"_s, u"&OK"_s);
    m_okNew = bar.button(u"cmdOKNew"_s, u"OK and &New"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, cancelCaption);
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
    m_goesOn = false;
    if (!save())
        return;
    m_saved = true;
    hideModal();
}

void AddEditForm::cmdOKNew_Click() {
    m_goesOn = true;
    if (!save())
        return;
    m_saved = true;
    startNext();
}

} // namespace screen
