#include "core/frmLogin.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

namespace {
const QString lastUser = u"lastSignIn"_s;
}

frmLogin::frmLogin() : Form(QString::fromLatin1(formName), u"Mirsa Login"_s) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtUserId = fields.text(u"txtUserId"_s, u"&User Name:"_s);
    screen::Line hidden;
    hidden.password = true;
    txtUserPassword = fields.text(u"txtUserPassword"_s, u"&Password:"_s, hidden);
    // Closing the window in whatever way gives up; only a valid login empties it.
    m_action = screen::named(new QLineEdit(u"E"_s, this), u"action"_s);
    m_action->hide();

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(u"cmdOk"_s, u"&OK"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(ok, &frmLogin::cmdOk_Click);
    on(cancel, &frmLogin::cmdCancel_Click);
    setDefaultButton(ok);
    setCancelButton(cancel);
}

void frmLogin::Form_Load() {
    const QString last = platform::remembered(lastUser, {}, platform::Whose::Station).toString();
    if (last.isEmpty())
        return;
    txtUserId->setText(last);
    txtUserPassword->setFocus();
}

QString frmLogin::action() const {
    return m_action->text();
}

void frmLogin::cmdOk_Click() {
    const QString user = txtUserId->text();
    const QString password = txtUserPassword->text();
    if (user.isEmpty()) {
        complain(u"Please enter your User Name in the appropriate spot."_s, txtUserId);
        return;
    }
    if (password.isEmpty()) {
        complain(u"Please enter your Password in the appropriate spot."_s, txtUserPassword);
        return;
    }
    // Both texts go in as typed. With an apostrophe they would no longer be a text but a part of
    // the statement, so such a statement is refused unrun.
    if (user.contains(QLatin1Char('\'')) || password.contains(QLatin1Char('\'')))
        throw jet::Error(jet::errors::syntax,
                         u"Syntax error in string in query expression 'password'."_s);
    const jet::Recordset row =
        MainDatabase().openRecordset(u"SELECT ID, userGroupID FROM Users WHERE password = '"_s +
                                         password + u"' AND UserID = '"_s + user + u"'"_s,
                                     jet::RecordsetType::Snapshot);
    if (row.isEmpty()) {
        complain(u"This is not a valid login."_s, txtUserPassword);
        return;
    }
    m_groupNo = row[u"userGroupID"].toLong();
    m_userNo = row[u"ID"].toLong();
    m_action->clear();
    platform::remember(lastUser, user, platform::Whose::Station);
    hideModal();
}

void frmLogin::cmdCancel_Click() {
    m_action->setText(u"E"_s);
    hideModal();
}

} // namespace core
