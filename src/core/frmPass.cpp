#include "core/frmPass.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Text.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using screen::Icon;

frmPass::frmPass() : Form(QString::fromLatin1(formName), QStringLiteral("Change Password")) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    screen::Line hidden;
    hidden.password = true;
    hidden.limit = MainDatabase().width(u"Users", u"password");
    txtOldPassword =
        fields.text(QStringLiteral("txtOldPassword"), QStringLiteral("O&ld Password:"), hidden);
    txtNewPassword =
        fields.text(QStringLiteral("txtNewPassword"), QStringLiteral("&New Password:"), hidden);
    txtVerify =
        fields.text(QStringLiteral("txtVerify"), QStringLiteral("&Verify Password:"), hidden);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    auto* cancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("&Cancel"));
    on(ok, &frmPass::cmdOK_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(ok);
    setCancelButton(cancel);
}

void frmPass::Form_Load() {
    const jet::Recordset user = MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM Users WHERE id=") + QString::number(shared().CurrentUserNo),
        jet::RecordsetType::Snapshot);
    if (user.isEmpty()) {
        screen::MsgBox(QStringLiteral("Your UserID has just been deleted!"), screen::Buttons::Ok,
                       Icon::Critical);
        refuse();
        return;
    }
    m_stored = user.text(u"Password");
}

void frmPass::cmdOK_Click() {
    const QString oldOne = txtOldPassword->text().toUpper();
    const QString newOne = txtNewPassword->text().toUpper();
    if (oldOne.trimmed() != m_stored.toUpper().trimmed()) {
        complain(QStringLiteral("Invalid Old Password. Please try again!"), txtOldPassword);
        return;
    }
    if (newOne != txtVerify->text().toUpper()) {
        complain(QStringLiteral("New Password is not verified correctly. Please try again!"),
                 txtVerify);
        return;
    }
    if (newOne == oldOne) {
        complain(
            QStringLiteral("New Password may not be the same as the old one. Please try again!"),
            txtNewPassword);
        return;
    }
    try {
        MainDatabase().execute(QStringLiteral("UPDATE Users SET Password='") +
                               values::quoted(newOne) + QStringLiteral("' WHERE id=") +
                               QString::number(shared().CurrentUserNo));
    } catch (const jet::Error&) {
        screen::MsgBox(QStringLiteral("Unable to save new password. Please try again later!"),
                       screen::Buttons::Ok, Icon::Critical);
        return;
    }
    unload();
}

} // namespace core
