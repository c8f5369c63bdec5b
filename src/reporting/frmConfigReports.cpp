#include "reporting/frmConfigReports.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "reporting/ReportCatalogue.h"
#include "reporting/ReportDialogs.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace reporting {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {
enum Column { Name, Description, Oem, Default };
}

frmConfigReports::frmConfigReports()
    : Form(QString::fromLatin1(formName), QStringLiteral("Configure Reports")) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QWidget(this);
    outside->addWidget(head);
    screen::Fields fields(head);
    dbcRtype = fields.listCombo(QStringLiteral("dbcRtype"), QStringLiteral("Report &Type"));

    sprReport = screen::named(new controls::Grid(this), QStringLiteral("sprReport"),
                              QStringLiteral("Reports"));
    using Kind = controls::GridColumn::Kind;
    sprReport->setColumns({{QStringLiteral("Name"), 28},
                           {QStringLiteral("Description"), 48},
                           {QStringLiteral("OEM"), 6, Kind::Number},
                           {QStringLiteral("Default"), 8}});
    sprReport->setLocked(true);
    sprReport->setMinimumSize(680, 240);
    outside->addWidget(sprReport, 1);

    screen::ButtonBar bar(this, outside);
    QPushButton* cmdDefault =
        bar.button(QStringLiteral("cmdDefault"), QStringLiteral("&Set as Default"));
    QPushButton* cmdAdd = bar.button(QStringLiteral("cmdAdd"), QStringLiteral("&Import"));
    QPushButton* cmdRemove = bar.button(QStringLiteral("cmdRemove"), QStringLiteral("&Remove"));
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    setCancelButton(cmdClose);
    on(dbcRtype->chosen, &frmConfigReports::dbcRtype_Change);
    on(cmdDefault, &frmConfigReports::cmdDefault_Click);
    on(cmdAdd, &frmConfigReports::cmdAdd_Click);
    on(cmdRemove, &frmConfigReports::cmdRemove_Click);
    on(cmdClose, [this] { unload(); });
}

void frmConfigReports::Form_Load() {
    for (const QString& type : reportTypes())
        dbcRtype->addRow(type);
    dbcRtype->setText(reportTypes().first());
    dbcRtype_Change();
}

void frmConfigReports::dbcRtype_Change() {
    jet::Recordset rows = core::MainDatabase().openRecordset(reportsOfType(dbcRtype->text()),
                                                             jet::RecordsetType::Snapshot);
    std::vector<QStringList> shown;
    for (; !rows.eof(); rows.moveNext()) {
        shown.push_back({rows.text(u"Name"), rows.text(u"Description"), rows.text(u"OEM"),
                         rows[u"Default"].toBool() ? QStringLiteral("Yes") : QString()});
    }
    sprReport->setRows(std::move(shown));
}

QString frmConfigReports::selectedName() const {
    const int row = sprReport->activeRow();
    return row < 0 ? QString() : sprReport->text(row, Name);
}

void frmConfigReports::cmdDefault_Click() {
    const QString name = selectedName();
    if (name.isEmpty()) {
        MsgBox(QStringLiteral("Nothing Selected!."), Buttons::Ok, Icon::Exclamation,
               QStringLiteral("Error"));
        return;
    }
    if (MsgBox(QStringLiteral("Set ") + name + QStringLiteral(" As Default for ") +
                   dbcRtype->text() + u'?',
               Buttons::OkCancel, Icon::Question) != Answer::Ok)
        return;
    makeDefault(core::MainDatabase(), dbcRtype->text(), name);
    dbcRtype_Change();
}

void frmConfigReports::cmdRemove_Click() {
    const QString name = selectedName();
    if (name.isEmpty()) {
        MsgBox(QStringLiteral("Nothing Selected to Remove!."), Buttons::Ok, Icon::Exclamation,
               QStringLiteral("Selection Error"));
        return;
    }
    if (sprReport->text(sprReport->activeRow(), Oem) == u"1") {
        MsgBox(QStringLiteral("You Cannot Delete OEM Reports!."), Buttons::Ok, Icon::Exclamation,
               QStringLiteral("Delete Error"));
        return;
    }
    if (MsgBox(QStringLiteral("Delete This Record?"), Buttons::OkCancel, Icon::Question) !=
        Answer::Ok)
        return;
    removeReport(core::MainDatabase(), name);
    dbcRtype_Change();
}

void frmConfigReports::cmdAdd_Click() {
    const QString file =
        screen::Forms::dialog<NewReportDialog>(QStringLiteral("frmNewReport"))->choose();
    if (!file.isEmpty() &&
        screen::Forms::dialog<ImportReportDialog>(QStringLiteral("frmImportSelected"))
            ->import(file, dbcRtype->text()))
        dbcRtype_Change();
}

} // namespace reporting
