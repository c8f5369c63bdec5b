#include "core/frmPass.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using screen::Icon;

frmPass::frmPass() : Form(QString::fromLatin1(formName), u"Change Password"_s) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    screen::Line hidden;
    hidden.password = true;
    hidden.limit = MainDatabase().width(u"Users", u"password");
    txtOldPassword = fields.text(u"txtOldPassword"_s, u"O&ld Password:"_s, hidden);
    txtNewPassword = fields.text(u"txtNewPassword"_s, u"&New Password:"_s, hidden);
    txtVerify = fields.text(u"txtVerify"_s, u"&Verify Password:"_s, hidden);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* ok = bar.button(u"cmdOK"_s, u"&OK"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(ok, &frmPass::cmdOK_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(ok);
    setCancelButton(cancel);
}

void frmPass::Form_Load() {
    const jet::Recordset user = MainDatabase().openRecordset(
        u"SELECT * FROM Users WHERE id="_s + QString::number(shared().CurrentUserNo),
        jet::RecordsetType::Snapshot);
    if (user.isEmpty()) {
        screen::MsgBox(u"Your UserID has just been deleted!"_s, screen::Buttons::Ok,
                       Icon::Critical);
        refuse();
        return;
    }
    m_stored = user.text(u"Password");
}

void frmPass::cmdOK_Click() {
    const QString newOne = values::uppered(txtNewPassword->text());
    if (!values::sameText(txtOldPassword->text().trimmed(), m_stored.trimmed())) {
        complain(u"Invalid Old Password. Please try again!"_s, txtOldPassword);
        return;
    }
    if (newOne != values::uppered(txtVerify->text())) {
        complain(u"New Password is not verified correctly. Please try again!"_s, txtVerify);
        return;
    }
    if (newOne.contains(u'\'')) { // nobody could sign in with it
        complain(u"A password may not contain an apostrophe. Please try again!"_s, txtNewPassword);
        return;
    }
    if (values::sameText(newOne, txtOldPassword->text())) {
        complain(u"New Password may not be the same as the old one. Please try again!"_s,
                 txtNewPassword);
        return;
    }
    try {
        MainDatabase().execute(u"UPDATE Users SET Password='"_s + values::quoted(newOne) +
                               u"' WHERE id="_s + QString::number(shared().CurrentUserNo));
    } catch (const jet::Error&) {
        screen::MsgBox(u"Unable to save new password. Please try again later!"_s,
                       screen::Buttons::Ok, Icon::Critical);
        return;
    }
    unload();
}

} // namespace core
