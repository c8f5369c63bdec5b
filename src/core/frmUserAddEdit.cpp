#include "core/frmUserAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace core {

using values::quoted;

frmUserAddEdit::frmUserAddEdit()
    : AddEditForm(QString::fromLatin1(formName), QStringLiteral("New User")) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    const screen::Line shortText{.limit = 10, .filter = values::keys::name(), .characters = 14};
    screen::Line hidden = shortText;
    hidden.password = true;
    txtUserID = fields.text(QStringLiteral("txtUserID"), QStringLiteral("&User ID:"), shortText);
    txtUserName = fields.text(QStringLiteral("txtUserName"), QStringLiteral("User N&ame:"),
                              {.limit = 30, .filter = values::keys::name(), .characters = 32});
    txtPassword = fields.text(QStringLiteral("txtPassword"), QStringLiteral("&Password:"), hidden);
    // What is entered here is only compared, so it needs no key set of its own.
    hidden.filter = {};
    txtVerifyPassword = fields.text(QStringLiteral("txtVerifyPassword"),
                                    QStringLiteral("&Verify Password:"), hidden);
    layout->addStretch();

    makeButtons(layout, QStringLiteral("&Cancel"));
    on(txtPassword->changed, &frmUserAddEdit::txtPassword_Change);
    txtPassword_Change();
}

bool frmUserAddEdit::ShowForm(const QString& mode, qint64 key) {
    const bool edit = mode == QStringLiteral("Edit");
    m_key = edit ? key : 0;
    setWindowTitle(edit ? QStringLiteral("Edit User") : QStringLiteral("New User"));
    setAdding(!edit);
    if (edit && !readRow()) {
        screen::MsgBox(QString::number(key) +
                           QStringLiteral(" record id not found! User table may need to be fixed!"),
                       screen::Buttons::Ok, screen::Icon::Critical);
        return false;
    }
    return run();
}

bool frmUserAddEdit::readRow() {
    const jet::Recordset row = MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM users WHERE id=") + QString::number(m_key),
        jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return false;
    txtUserID->setText(row.text(u"userid"));
    txtUserName->setText(row.text(u"username"));
    txtPassword->setText(row.text(u"password"));
    const bool administrator = txtUserID->text() == QStringLiteral("Admin");
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
    QString select = QStringLiteral("SELECT ") + column +
                     QStringLiteral(" FROM users WHERE userid='") + quoted(text) + u'\'';
    if (m_key != 0)
        select += QStringLiteral(" AND id<>") + QString::number(m_key);
    return MainDatabase().hasRows(select);
}

bool frmUserAddEdit::save() {
    const QString id = txtUserID->text().trimmed();
    const QString name = txtUserName->text().trimmed();
    const QString password = txtPassword->text();
    if (id.isEmpty()) {
        complain(QStringLiteral("User ID may not be blank!"), txtUserID);
        return false;
    }
    if (name.isEmpty()) {
        complain(QStringLiteral("User Name may not be blank!"), txtUserName);
        return false;
    }
    if (!password.isEmpty() && password != txtVerifyPassword->text()) {
        complain(QStringLiteral("Password is not verified properly!"), txtVerifyPassword);
        return false;
    }
    if (isTaken(QStringLiteral("userid"), id)) {
        complain(QStringLiteral("User ID already exists. Duplicate is not allowed."), txtUserID);
        return false;
    }
    // A display name may not be somebody's login name; two users may share a display name.
    if (isTaken(QStringLiteral("username"), name)) {
        complain(QStringLiteral("User Name already exists. Duplicate is not allowed."),
                 txtUserName);
        return false;
    }
    if (m_key == 0)
        MainDatabase().execute(QStringLiteral("INSERT INTO users (userid, username, password)"
                                              " VALUES('") +
                               quoted(id) + QStringLiteral("','") + quoted(name) +
                               QStringLiteral("','") + quoted(password) + QStringLiteral("')"));
    else
        MainDatabase().execute(QStringLiteral("UPDATE users SET userid='") + quoted(id) +
                               QStringLiteral("', username='") + quoted(name) +
                               QStringLiteral("', password='") + quoted(password) +
                               QStringLiteral("' WHERE id=") + QString::number(m_key));
    return true;
}

void frmUserAddEdit::startNext() {
    for (controls::TextField* field : {txtUserID, txtUserName, txtPassword, txtVerifyPassword})
        field->clear();
    txtUserID->setFocus();
}

} // namespace core
