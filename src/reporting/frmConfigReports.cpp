#include "reporting/frmConfigReports.h"

#include "core/MirsaMain.h"
#include "platform/controls/DropMenu.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
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

frmConfigReports::frmConfigReports() : Form(QString::fromLatin1(formName), u"Configure Reports"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QWidget(this);
    outside->addWidget(head);
    screen::Fields fields(head);
    dbcRtype = fields.listCombo(u"dbcRtype"_s, u"Report &Type"_s);

    sprReport = screen::named(new controls::Grid(this), u"sprReport"_s, u"Reports"_s);
    using Kind = controls::GridColumn::Kind;
    sprReport->setColumns(
        {{u"Name"_s, 28}, {u"Description"_s, 48}, {u"OEM"_s, 6, Kind::Number}, {u"Default"_s, 8}});
    sprReport->setLocked(true);
    sprReport->setMinimumSize(680, 240);
    outside->addWidget(sprReport, 1);

    screen::ButtonBar bar(this, outside);
    QPushButton* cmdDefault = bar.button(u"cmdDefault"_s, u"&Set as Default"_s);
    QPushButton* cmdAdd = bar.button(u"cmdAdd"_s, u"&Import"_s);
    QPushButton* cmdRemove = bar.button(u"cmdRemove"_s, u"&Remove"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(dbcRtype->chosen, &frmConfigReports::dbcRtype_Change);
    on(cmdDefault, &frmConfigReports::cmdDefault_Click);
    on(cmdAdd, &frmConfigReports::cmdAdd_Click);
    on(cmdRemove, &frmConfigReports::cmdRemove_Click);
    on(cmdClose, [this] { unload(); });
    controls::offerInMenu(sprReport, {cmdDefault, cmdAdd, cmdRemove});
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
                         rows[u"Default"].toBool() ? u"Yes"_s : QString()});
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
        MsgBox(u"Nothing Selected!."_s, Buttons::Ok, Icon::Exclamation, u"Error"_s);
        return;
    }
    if (MsgBox(u"Set "_s + name + u" As Default for "_s + dbcRtype->text() + u'?',
               Buttons::OkCancel, Icon::Question) != Answer::Ok)
        return;
    makeDefault(core::MainDatabase(), dbcRtype->text(), name);
    dbcRtype_Change();
}

void frmConfigReports::cmdRemove_Click() {
    const QString name = selectedName();
    if (name.isEmpty()) {
        MsgBox(u"Nothing Selected to Remove!."_s, Buttons::Ok, Icon::Exclamation,
               u"Selection Error"_s);
        return;
    }
    if (sprReport->text(sprReport->activeRow(), Oem) == u"1") {
        MsgBox(u"You Cannot Delete OEM Reports!."_s, Buttons::Ok, Icon::Exclamation,
               u"Delete Error"_s);
        return;
    }
    if (!screen::confirmDeletion(u"Delete This Record?"_s, {}, Icon::Question, Buttons::OkCancel))
        return;
    removeReport(core::MainDatabase(), name);
    dbcRtype_Change();
}

void frmConfigReports::cmdAdd_Click() {
    const auto file = screen::Forms::dialog<NewReportDialog>(u"frmNewReport"_s)->choose();
    if (file && screen::Forms::dialog<ImportReportDialog>(u"frmImportSelected"_s)
                    ->import(*file, dbcRtype->text()))
        dbcRtype_Change();
}

} // namespace reporting
