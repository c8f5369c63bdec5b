#include "core/frmGroupAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace core {

using values::quoted;

frmGroupAddEdit::frmGroupAddEdit() : AddEditForm(QString::fromLatin1(formName), u"New Group"_s) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtGroupName =
        fields.text(u"txtGroupName"_s, u"&Group Name:"_s, {.limit = 30, .characters = 32});
    layout->addStretch();

    makeButtons(layout, u"&Cancel"_s);
}

bool frmGroupAddEdit::ShowForm(const QString& mode, qint64 key) {
    const bool edit = mode == u"Edit"_s;
    m_key = edit ? key : 0;
    setWindowTitle(edit ? u"Edit Group"_s : u"New Group"_s);
    setAdding(!edit);
    if (edit) {
        const jet::Recordset row = MainDatabase().openRecordset(
            u"SELECT * FROM groups WHERE groupid="_s + QString::number(key),
            jet::RecordsetType::Snapshot);
        if (row.isEmpty()) {
            screen::MsgBox(QString::number(key) +
                               u" record id not found! Groups table may need to be fixed!"_s,
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
        complain(u"Group Name may not be blank!"_s, txtGroupName);
        return false;
    }
    QString select = u"SELECT groupid FROM groups WHERE groupname='"_s + quoted(name) + u'\'';
    if (m_key != 0)
        select += u" AND groupid<>"_s + QString::number(m_key);
    if (MainDatabase().hasRows(select)) {
        complain(u"Group Name already exists. Duplicate is not allowed."_s, txtGroupName);
        return false;
    }
    if (m_key == 0)
        MainDatabase().execute(u"INSERT INTO groups (groupname) VALUES('"_s + quoted(name) +
                               u"')"_s);
    else
        MainDatabase().execute(u"UPDATE groups SET groupname='"_s + quoted(name) +
                               u"' WHERE groupid="_s + QString::number(m_key));
    return true;
}

void frmGroupAddEdit::startNext() {
    txtGroupName->clear();
    txtGroupName->setFocus();
}

} // namespace core
