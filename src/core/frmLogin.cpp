#include "core/frmLogin.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

frmLogin::frmLogin() : Form(QString::fromLatin1(formName), QStringLiteral("Mirsa Login")) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtUserId = fields.text(QStringLiteral("txtUserId"), QStringLiteral("&User Name:"));
    screen::Line hidden;
    hidden.password = true;
    txtUserPassword =
        fields.text(QStringLiteral("txtUserPassword"), QStringLiteral("&Password:"), hidden);
    // Closing the window in whatever way gives up; only a valid login empties it.
    m_action = screen::named(new QLineEdit(QStringLiteral("E"), this), QStringLiteral("action"));
    m_action->hide();

    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(QStringLiteral("cmdOk"), QStringLiteral("&OK"));
    auto* cancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("&Cancel"));
    on(ok, &frmLogin::cmdOk_Click);
    on(cancel, &frmLogin::cmdCancel_Click);
    setDefaultButton(ok);
    setCancelButton(cancel);
}

QString frmLogin::action() const {
    return m_action->text();
}

void frmLogin::cmdOk_Click() {
    const QString user = txtUserId->text();
    const QString password = txtUserPassword->text();
    if (user.isEmpty()) {
        complain(QStringLiteral("Please enter your User Name in the appropriate spot."), txtUserId);
        return;
    }
    if (password.isEmpty()) {
        complain(QStringLiteral("Please enter your Password in the appropriate spot."),
                 txtUserPassword);
        return;
    }
    // Both texts go in as typed. With an apostrophe they would no longer be a text but a part of
    // the statement, so such a statement is refused unrun.
    if (user.contains(QLatin1Char('\'')) || password.contains(QLatin1Char('\'')))
        throw jet::Error(jet::errors::syntax,
                         QStringLiteral("Syntax error in string in query expression 'password'."));
    const jet::Recordset row = MainDatabase().openRecordset(
        QStringLiteral("SELECT ID, userGroupID FROM Users WHERE password = '") + password +
            QStringLiteral("' AND UserID = '") + user + QStringLiteral("'"),
        jet::RecordsetType::Snapshot);
    if (row.isEmpty()) {
        complain(QStringLiteral("This is not a valid login."), txtUserPassword);
        return;
    }
    m_groupNo = row[u"userGroupID"].toLong();
    m_userNo = row[u"ID"].toLong();
    m_action->clear();
    hideModal();
}

void frmLogin::cmdCancel_Click() {
    m_action->setText(QStringLiteral("E"));
    hideModal();
}

} // namespace core
