#include "reporting/frmImportSelected.h"

#include "core/MirsaMain.h"
#include "platform/report/ReportError.h"
#include "platform/report/ReportFile.h"
#include "platform/screen/Layout.h"
#include "reporting/ReportCatalogue.h"

#include <QLabel>
#include <QVBoxLayout>

namespace reporting {

namespace {
const QString errorTitle = QStringLiteral("Error!");
}

frmImportSelected::frmImportSelected()
    : Form(QString::fromLatin1(formName), QStringLiteral("Importing Selected Report")) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    const jet::Database& database = core::MainDatabase();
    lblRpt = fields.shown(QStringLiteral("lblRpt"), QStringLiteral("Report File:"), 36);
    fields.nextRow();
    cboRtype = fields.listCombo(QStringLiteral("cboRtype"), QStringLiteral("Report &Type:"));
    fields.nextRow();
    txtName = fields.text(QStringLiteral("txtName"), QStringLiteral("&Name:"),
                          {.limit = database.width(u"Reports", u"Name"), .characters = 36});
    fields.nextRow();
    txtDesc = fields.text(QStringLiteral("txtDesc"), QStringLiteral("&Description:"),
                          {.limit = database.width(u"Reports", u"Description"), .characters = 36});
    for (const QString& type : reportTypes())
        cboRtype->addRow(type);
    outside->addStretch();

    on(addOkCancel(outside, QStringLiteral("&OK"), QStringLiteral("&Cancel")),
       &frmImportSelected::cmdOK_Click);
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
        complain(QStringLiteral("You must enter a Report Type!"), cboRtype,
                 screen::Icon::Exclamation, errorTitle);
        return;
    }
    if (wanted.name.isEmpty()) {
        complain(QStringLiteral("You must enter a Name!"), txtName, screen::Icon::Exclamation,
                 errorTitle);
        return;
    }
    if (wanted.description.isEmpty()) {
        complain(QStringLiteral("You must enter a Description!"), txtDesc,
                 screen::Icon::Exclamation, errorTitle);
        return;
    }
    // Reports go by their name, and a second one of a name would be removed with the first.
    if (hasReport(core::MainDatabase(), wanted.name)) {
        complain(wanted.name + QStringLiteral(" already exists!"), txtName,
                 screen::Icon::Exclamation, errorTitle);
        return;
    }
    try {
        report::readReportFile(core::programFile(wanted.fileName));
    } catch (const report::ReportError& error) {
        screen::MsgBox(wanted.fileName + QStringLiteral(" can't be used as a report.\r\n") +
                           error.detail(),
                       screen::Buttons::Ok, screen::Icon::Exclamation, errorTitle);
        return;
    }
    importReport(core::MainDatabase(), wanted);
    m_imported = true;
    hideModal();
}

} // namespace reporting
