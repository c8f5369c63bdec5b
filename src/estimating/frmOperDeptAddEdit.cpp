#include "estimating/frmOperDeptAddEdit.h"

#include "core/MirsaMain.h"
#include "estimating/OperationCatalogue.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace estimating {

frmOperDeptAddEdit::frmOperDeptAddEdit() : Form(QString::fromLatin1(formName), QString()) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtDescription = fields.text(u"txtDescription"_s, u"&Description:"_s,
                                 {core::MainDatabase().width(u"OperDepartment", u"department"),
                                  values::keys::description(),
                                  {},
                                  32});
    on(addOkCancel(outside, u"&OK"_s, u"&Cancel"_s), &frmOperDeptAddEdit::cmdOK_Click);
}

bool frmOperDeptAddEdit::ShowForm(const QString& mode, qint64 id) {
    setWindowTitle(mode + u" Department"_s);
    m_id = 0;
    if (mode == u"Edit"_s) {
        m_id = id;
        jet::Recordset set = core::MainDatabase().openRecordset(
            u"SELECT * FROM operdepartment WHERE id="_s + QString::number(id),
            jet::RecordsetType::Snapshot);
        if (set.isEmpty()) {
            screen::MsgBox(QString::number(id) + u" record id not found! Operdepartment table may "
                                                 "need to be fixed!"_s,
                           screen::Buttons::Ok, screen::Icon::Critical);
            return false;
        }
        txtDescription->setText(set.text(u"department"));
    }
    txtDescription->setFocus();
    showModal();
    return m_saved;
}

void frmOperDeptAddEdit::cmdOK_Click() {
    jet::Database& database = core::MainDatabase();
    const QString name = txtDescription->text();
    if (const auto complaint = checkDepartment(database, m_id, name)) {
        complain(*complaint);
        return;
    }
    saveDepartment(database, m_id, name);
    m_saved = true;
    hideModal();
}

} // namespace estimating
