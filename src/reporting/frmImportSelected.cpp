#include "reporting/frmImportSelected.h"

#include "core/MirsaMain.h"
#include "platform/report/ReportError.h"
#include "platform/report/ReportFile.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "reporting/ReportCatalogue.h"

#include <QLabel>
#include <QVBoxLayout>

namespace reporting {

namespace {
const QString errorTitle = u"Error!"_s;
}

frmImportSelected::frmImportSelected()
    : Form(QString::fromLatin1(formName), u"Importing Selected Report"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    const jet::Database& database = core::MainDatabase();
    lblRpt = fields.shown(u"lblRpt"_s, u"Report File:"_s, 36);
    fields.nextRow();
    cboRtype = fields.listCombo(u"cboRtype"_s, u"Report &Type:"_s);
    fields.nextRow();
    txtName = fields.text(u"txtName"_s, u"&Name:"_s,
                          {.limit = database.width(u"Reports", u"Name"), .characters = 36});
    fields.nextRow();
    txtDesc = fields.text(u"txtDesc"_s, u"&Description:"_s,
                          {.limit = database.width(u"Reports", u"Description"), .characters = 36});
    for (const QString& type : reportTypes())
        cboRtype->addRow(type);
    outside->addStretch();

    on(addOkCancel(outside, u"&OK"_s, u"&Cancel"_s), &frmImportSelected::cmdOK_Click);
}

bool frmImportSelected::import(const QString& fileName, const QString& type) {
    lblRpt->setText(fileName);
    cboRtype->setText(type);
    showModal();
    return m_imported;
}

void frmImportSelected::cmdOK_Click() {
    const ImportedReport wanted{txtName->text().trimmed(), txtDesc->text().trimmed(),
                                cboRtype->text(), lblRpt->text()};
    if (wanted.type.isEmpty()) {
        complain(u"You must enter a Report Type!"_s, cboRtype, screen::Icon::Exclamation,
                 errorTitle);
        return;
    }
    if (wanted.name.isEmpty()) {
        complain(u"You must enter a Name!"_s, txtName, screen::Icon::Exclamation, errorTitle);
        return;
    }
    if (wanted.description.isEmpty()) {
        complain(u"You must enter a Description!"_s, txtDesc, screen::Icon::Exclamation,
                 errorTitle);
        return;
    }
    // Reports go by their name, and a second one of a name would be removed with the first.
    if (hasReport(core::MainDatabase(), wanted.name)) {
        complain(wanted.name + u" already exists!"_s, txtName, screen::Icon::Exclamation,
                 errorTitle);
        return;
    }
    try {
        report::readReportFile(core::programFile(wanted.fileName));
    } catch (const report::ReportError& error) {
        screen::MsgBox(wanted.fileName + u" can't be used as a report.\r\n"_s + error.detail(),
                       screen::Buttons::Ok, screen::Icon::Exclamation, errorTitle);
        return;
    }
    importReport(core::MainDatabase(), wanted);
    m_imported = true;
    hideModal();
}

} // namespace reporting
