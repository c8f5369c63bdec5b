#include "core/frmGroupAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Text.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using values::quoted;

frmGroupAddEdit::frmGroupAddEdit()
    : Form(QString::fromLatin1(formName), QStringLiteral("New Group")) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtGroupName = fields.text(QStringLiteral("txtGroupName"), QStringLiteral("&Group Name:"),
                               {.limit = 30, .characters = 32});
    layout->addStretch();

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    cmdOKNew = bar.button(QStringLiteral("cmdOKNew"), QStringLiteral("OK and &New"));
    auto* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("&Cancel"));
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);
    on(cmdOK, &frmGroupAddEdit::cmdOK_Click);
    on(cmdOKNew, &frmGroupAddEdit::cmdOKNew_Click);
    on(cmdCancel, [this] { hideModal(); });
}

bool frmGroupAddEdit::ShowForm(const QString& mode, qint64 key) {
    const bool edit = mode == QStringLiteral("Edit");
    m_key = edit ? key : 0;
    setWindowTitle(edit ? QStringLiteral("Edit Group") : QStringLiteral("New Group"));
    cmdOKNew->setEnabled(!edit);
    if (edit) {
        const jet::Recordset row = MainDatabase().openRecordset(
            QStringLiteral("SELECT * FROM groups WHERE groupid=") + QString::number(key),
            jet::RecordsetType::Snapshot);
        if (row.isEmpty()) {
            screen::MsgBox(
                QString::number(key) +
                    QStringLiteral(" record id not found! Groups table may need to be fixed!"),
                screen::Buttons::Ok, screen::Icon::Critical);
            return false;
        }
        txtGroupName->setText(row.text(u"groupname"));
    }
    showModal();
    return m_saved;
}

bool frmGroupAddEdit::save() {
    const QString name = txtGroupName->text().trimmed();
    if (name.isEmpty()) {
        complain(QStringLiteral("Group Name may not be blank!"), txtGroupName);
        return false;
    }
    QString select =
        QStringLiteral("SELECT groupid FROM groups WHERE groupname='") + quoted(name) + u'\'';
    if (m_key != 0)
        select += QStringLiteral(" AND groupid<>") + QString::number(m_key);
    if (MainDatabase().hasRows(select)) {
        complain(QStringLiteral("Group Name already exists. Duplicate is not allowed."),
                 txtGroupName);
        return false;
    }
    if (m_key == 0)
        MainDatabase().execute(QStringLiteral("INSERT INTO groups (groupname) VALUES('") +
                               quoted(name) + QStringLiteral("')"));
    else
        MainDatabase().execute(QStringLiteral("UPDATE groups SET groupname='") + quoted(name) +
                               QStringLiteral("' WHERE groupid=") + QString::number(m_key));
    m_saved = true;
    return true;
}

void frmGroupAddEdit::cmdOK_Click() {
    if (save())
        hideModal();
}

void frmGroupAddEdit::cmdOKNew_Click() {
    if (!save())
        return;
    txtGroupName->clear();
    txtGroupName->setFocus();
}

} // namespace core
