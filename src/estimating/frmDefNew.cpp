#include "estimating/frmDefNew.h"

#include "core/MirsaMain.h"
#include "estimating/DefaultSets.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace estimating {

frmDefNew::frmDefNew() : Form(QString::fromLatin1(formName), u"New Default Set"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtDescription = fields.text(u"txtDescription"_s, u"Set D&escription:"_s, {.characters = 40});
    txtDescription->setLimit(core::MainDatabase().width(u"DefaultSet", u"SetDescription"));
    m_picker = new OperationPicker(*this, false);
    outside->addWidget(m_picker, 1);
    on(addOkCancel(outside), &frmDefNew::cmdOK_Click);
    resize(860, 560);
}

qint64 frmDefNew::ShowForm(qint64 setNo) {
    m_setNo = setNo;
    jet::Database& database = core::MainDatabase();
    const QString catalogue = u"SELECT * FROM Operation WHERE OperType in ('I','C')"_s;
    if (setNo == 0) {
        m_picker->load(database, catalogue + u" ORDER BY Description"_s);
    } else {
        const QString number = QString::number(setNo);
        setWindowTitle(u"Edit Default Set"_s);
        txtDescription->setText(
            database.lookup(u"SELECT SetDescription FROM DefaultSet WHERE SetNo="_s + number)
                .toText());
        m_picker->load(database,
                       catalogue +
                           u" AND OperNo NOT IN (SELECT OperNo FROM DefaultSetOper "
                           "WHERE SetNo="_s +
                           number + u") ORDER BY Description"_s,
                       u"SELECT Operation.* FROM Operation INNER JOIN DefaultSetOper "
                       "ON Operation.OperNo=DefaultSetOper.OperNo  WHERE SetNo="_s +
                           number + u" ORDER BY DefaultSetOper.SeqNo"_s);
    }
    txtDescription->setFocus();
    showModal();
    return m_saved;
}

void frmDefNew::cmdOK_Click() {
    const QString name = txtDescription->text().trimmed();
    if (name.isEmpty()) {
        complain(u"Set Description may not be blank!"_s, txtDescription);
        return;
    }
    jet::Database& database = core::MainDatabase();
    if (setNameTaken(database, name, m_setNo)) {
        complain(u"Set Description already exists. Duplicate is not allowed."_s, txtDescription);
        return;
    }
    std::vector<qint64> operations;
    for (const OperationPicker::Entry& entry : m_picker->picked())
        operations.push_back(entry.operNo);
    try {
        m_saved = saveSet(database, m_setNo, name, operations);
    } catch (const jet::Error& error) {
        screen::MsgBox(error.text(), screen::Buttons::Ok, screen::Icon::Critical);
        return;
    }
    hideModal();
}

} // namespace estimating
