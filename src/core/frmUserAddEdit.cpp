#include "core/frmUserAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace core {

using values::quoted;

frmUserAddEdit::frmUserAddEdit() : AddEditForm(QString::fromLatin1(formName), u"New User"_s) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    const screen::Line shortText{.limit = 10, .filter = values::keys::name(), .characters = 14};
    screen::Line hidden = shortText;
    hidden.password = true;
    txtUserID = fields.text(u"txtUserID"_s, u"&User ID:"_s, shortText);
    txtUserName = fields.text(u"txtUserName"_s, u"User N&ame:"_s,
                              {.limit = 30, .filter = values::keys::name(), .characters = 32});
    txtPassword = fields.text(u"txtPassword"_s, u"&Password:"_s, hidden);
    // What is entered here is only compared, so it needs no key set of its own.
    hidden.filter = {};
    txtVerifyPassword = fields.text(u"txtVerifyPassword"_s, u"&Verify Password:"_s, hidden);
    layout->addStretch();

    makeButtons(layout, u"&Cancel"_s);
    on(txtPassword->changed, &frmUserAddEdit::txtPassword_Change);
    txtPassword_Change();
}

bool frmUserAddEdit::ShowForm(const QString& mode, qint64 key) {
    const bool edit = mode == u"Edit"_s;
    m_key = edit ? key : 0;
    setWindowTitle(edit ? u"Edit User"_s : u"New User"_s);
    setAdding(!edit);
    if (edit && !readRow()) {
        screen::MsgBox(QString::number(key) +
                           u" record id not found! User table may need to be fixed!"_s,
                       screen::Buttons::Ok, screen::Icon::Critical);
        return false;
    }
    return run();
}

bool frmUserAddEdit::readRow() {
    const jet::Recordset row = MainDatabase().openRecordset(
        u"SELECT * FROM users WHERE id="_s + QString::number(m_key), jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return false;
    txtUserID->setText(row.text(u"userid"));
    txtUserName->setText(row.text(u"username"));
    txtPassword->setText(row.text(u"password"));
    const bool administrator = txtUserID->text() == u"Admin"_s;
    txtUserID->setEnabled(!administrator);
    txtUserName->setEnabled(!administrator);
    return true;
}

void frmUserAddEdit::txtPassword_Change() {
    txtVerifyPassword->setEnabled(!txtPassword->text().isEmpty());
    if (txtPassword->text().isEmpty())
        txtVerifyPassword->clear();
}

bool frmUserAddEdit::isTaken(const QString& column, const QString& text) const {
    QString select = u"SELECT "_s + column + u" FROM users WHERE userid='"_s + quoted(text) + u'\'';
    if (m_key != 0)
        select += u" AND id<>"_s + QString::number(m_key);
    return MainDatabase().hasRows(select);
}

bool frmUserAddEdit::save() {
    const QString id = txtUserID->text().trimmed();
    const QString name = txtUserName->text().trimmed();
    const QString password = txtPassword->text();
    if (id.isEmpty()) {
        complain(u"User ID may not be blank!"_s, txtUserID);
        return false;
    }
    if (name.isEmpty()) {
        complain(u"User Name may not be blank!"_s, txtUserName);
        return false;
    }
    if (!password.isEmpty() && password != txtVerifyPassword->text()) {
        complain(u"Password is not verified properly!"_s, txtVerifyPassword);
        return false;
    }
    if (isTaken(u"userid"_s, id)) {
        complain(u"User ID already exists. Duplicate is not allowed."_s, txtUserID);
        return false;
    }
    // A display name may not be somebody's login name; two users may share a display name.
    if (isTaken(u"username"_s, name)) {
        complain(u"User Name already exists. Duplicate is not allowed."_s, txtUserName);
        return false;
    }
    if (m_key == 0)
        MainDatabase().execute(u"INSERT INTO users (userid, username, password)"
                               " VALUES('"_s +
                               quoted(id) + u"','"_s + quoted(name) + u"','"_s + quoted(password) +
                               u"')"_s);
    else
        MainDatabase().execute(u"UPDATE users SET userid='"_s + quoted(id) + u"', username='"_s +
                               quoted(name) + u"', password='"_s + quoted(password) +
                               u"' WHERE id="_s + QString::number(m_key));
    return true;
}

void frmUserAddEdit::startNext() {
    for (controls::TextField* field : {txtUserID, txtUserName, txtPassword, txtVerifyPassword})
        field->clear();
    txtUserID->setFocus();
}

} // namespace core
