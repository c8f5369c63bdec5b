#include "reporting/frmNewReport.h"

#include "core/MirsaMain.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QPushButton>
#include <QVBoxLayout>

namespace reporting {

frmNewReport::frmNewReport()
    : Form(QString::fromLatin1(formName), u"Select Report to Import ..."_s) {
    auto* outside = new QVBoxLayout(this);
    filReport = screen::named(new controls::ListView(this), u"filReport"_s, u"Report files"_s);
    filReport->setColumns({{u"File"_s, 44}});
    filReport->setMinimumSize(380, 260);
    outside->addWidget(filReport, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&Select"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(filReport->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    controls::offerInMenu(filReport, {cmdSelect});
    on(cmdSelect, &frmNewReport::cmdSelect_Click);
    on(cmdCancel, [this] { hideModal(); });
}

void frmNewReport::Form_Load() {
    const QStringList files =
        QDir(core::shared().ProgramFolder)
            .entryList({u"*.rpt"_s}, QDir::Files | QDir::Readable, QDir::Name | QDir::IgnoreCase);
    for (const QString& file : files)
        filReport->addRow(u'F' + file, {file});
}

std::optional<QString> frmNewReport::choose() {
    showModal();
    return m_chosen;
}

void frmNewReport::cmdSelect_Click() {
    if (filReport->selectedRow() < 0) {
        // The words are shared with the removal of a report.
        screen::MsgBox(u"Nothing Selected To Delete!"_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, u"Selection Error"_s);
        return;
    }
    m_chosen = filReport->rowText(filReport->selectedRow(), 0);
    hideModal();
}

} // namespace reporting
