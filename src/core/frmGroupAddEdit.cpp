#include "core/frmGroupAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace core {

using values::quoted;

frmGroupAddEdit::frmGroupAddEdit()
    : AddEditForm(QString::fromLatin1(formName), QStringLiteral("New Group")) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtGroupName = fields.text(QStringLiteral("txtGroupName"), QStringLiteral("&Group Name:"),
                               {.limit = 30, .characters = 32});
    layout->addStretch();

    makeButtons(layout, QStringLiteral("&Cancel"));
}

bool frmGroupAddEdit::ShowForm(const QString& mode, qint64 key) {
    const bool edit = mode == QStringLiteral("Edit");
    m_key = edit ? key : 0;
    setWindowTitle(edit ? QStringLiteral("Edit Group") : QStringLiteral("New Group"));
    setAdding(!edit);
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
    return run();
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
    return true;
}

void frmGroupAddEdit::startNext() {
    txtGroupName->clear();
    txtGroupName->setFocus();
}

} // namespace core
