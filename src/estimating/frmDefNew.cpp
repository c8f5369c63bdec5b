#include "estimating/frmDefNew.h"

#include "core/MirsaMain.h"
#include "estimating/DefaultSets.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"

#include <QVBoxLayout>

namespace estimating {

frmDefNew::frmDefNew() : Form(QString::fromLatin1(formName), QStringLiteral("New Default Set")) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtDescription = fields.text(QStringLiteral("txtDescription"),
                                 QStringLiteral("Set D&escription:"), {.characters = 40});
    txtDescription->setLimit(core::MainDatabase().width(u"DefaultSet", u"SetDescription"));
    m_picker = new OperationPicker(*this, false);
    outside->addWidget(m_picker, 1);
    on(addOkCancel(outside), &frmDefNew::cmdOK_Click);
    resize(860, 560);
}

qint64 frmDefNew::ShowForm(qint64 setNo) {
    m_setNo = setNo;
    jet::Database& database = core::MainDatabase();
    const QString catalogue = QStringLiteral("SELECT * FROM Operation WHERE OperType in ('I','C')");
    if (setNo == 0) {
        m_picker->load(database, catalogue + QStringLiteral(" ORDER BY Description"));
    } else {
        const QString number = QString::number(setNo);
        setWindowTitle(QStringLiteral("Edit Default Set"));
        txtDescription->setText(
            database
                .lookup(QStringLiteral("SELECT SetDescription FROM DefaultSet WHERE SetNo=") +
                        number)
                .toText());
        m_picker->load(database,
                       catalogue +
                           QStringLiteral(" AND OperNo NOT IN (SELECT OperNo FROM DefaultSetOper "
                                          "WHERE SetNo=") +
                           number + QStringLiteral(") ORDER BY Description"),
                       QStringLiteral("SELECT Operation.* FROM Operation INNER JOIN DefaultSetOper "
                                      "ON Operation.OperNo=DefaultSetOper.OperNo  WHERE SetNo=") +
                           number + QStringLiteral(" ORDER BY DefaultSetOper.SeqNo"));
    }
    txtDescription->setFocus();
    showModal();
    return m_saved;
}

void frmDefNew::cmdOK_Click() {
    const QString name = txtDescription->text().trimmed();
    if (name.isEmpty()) {
        complain(QStringLiteral("Set Description may not be blank!"), txtDescription);
        return;
    }
    jet::Database& database = core::MainDatabase();
    if (setNameTaken(database, name, m_setNo)) {
        complain(QStringLiteral("Set Description already exists. Duplicate is not allowed."),
                 txtDescription);
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
