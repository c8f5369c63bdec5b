#include "reporting/frmNewReport.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"

#include <QDir>
#include <QPushButton>
#include <QVBoxLayout>

namespace reporting {

frmNewReport::frmNewReport()
    : Form(QString::fromLatin1(formName), QStringLiteral("Select Report to Import ...")) {
    auto* outside = new QVBoxLayout(this);
    filReport = screen::named(new controls::ListView(this), QStringLiteral("filReport"),
                              QStringLiteral("Report files"));
    filReport->setColumns({{QStringLiteral("File"), 44}});
    filReport->setMinimumSize(380, 260);
    outside->addWidget(filReport, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(QStringLiteral("cmdSelect"), QStringLiteral("&Select"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(filReport->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    on(cmdSelect, &frmNewReport::cmdSelect_Click);
    on(cmdCancel, [this] { hideModal(); });
}

void frmNewReport::Form_Load() {
    const QStringList files =
        QDir(core::shared().ProgramFolder)
            .entryList({QStringLiteral("*.rpt")}, QDir::Files | QDir::Readable,
                       QDir::Name | QDir::IgnoreCase);
    for (const QString& file : files)
        filReport->addRow(u'F' + file, {file});
}

QString frmNewReport::choose() {
    showModal();
    return m_chosen;
}

void frmNewReport::cmdSelect_Click() {
    if (filReport->selectedRow() < 0) {
        // The words are shared with the removal of a report.
        screen::MsgBox(QStringLiteral("Nothing Selected To Delete!"), screen::Buttons::Ok,
                       screen::Icon::Exclamation, QStringLiteral("Selection Error"));
        return;
    }
    m_chosen = filReport->rowText(filReport->selectedRow(), 0);
    hideModal();
}

} // namespace reporting
