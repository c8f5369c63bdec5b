#include "core/journal/JournalForm.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/journal/JournalReport.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

namespace {

/// Nobody reads more; who looks for older ones narrows the search.
constexpr int mostChanges = 2000;

} // namespace

JournalForm::JournalForm(const QString& name, const QString& caption) : Form(name, caption) {
    m_heading = caption;
    resize(1100, 560);
}

void JournalForm::makeList(QBoxLayout* outside, QPushButton* first) {
    sprJournal = screen::named(new controls::Grid(this), u"sprJournal"_s, u"Changes"_s);
    sprJournal->setColumns({{u"When"_s, 24},
                            {u"User"_s, 12},
                            {u"Rows of"_s, 18},
                            {u"Record"_s, 8, controls::GridColumn::Kind::Number},
                            {u"What"_s, 9},
                            {u"Field"_s, 16},
                            {u"Before"_s, 26},
                            {u"After"_s, 26}});
    sprJournal->setSortable(true);
    outside->addWidget(sprJournal, 1);
    lblShown = screen::named(new QLabel(this), u"lblShown"_s, u"How many are shown"_s);
    outside->addWidget(lblShown);
    screen::ButtonBar bar(this, outside);
    if (first)
        bar.layout()->addWidget(first);
    QPushButton* cmdPrint = bar.button(u"cmdPrint"_s, u"&Print"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(first ? first : cmdClose);
    setCancelButton(cmdClose);
    on(cmdPrint, &JournalForm::cmdPrint_Click);
    on(cmdClose, [this] { unload(); });
}

void JournalForm::showChanges(const JournalCriteria& criteria) {
    const screen::BusyPointer hourglass;
    std::vector<JournalChange> changes = searchJournal(MainDatabase(), criteria, mostChanges);
    const bool more = changes.size() == mostChanges;
    std::erase_if(changes, [](const JournalChange& change) {
        return change.what == JournalChange::What::Changed && change.fields.empty();
    });
    m_lines = journalLines(changes, m_showMoney);
    sprJournal->setRows(m_lines);
    if (changes.empty())
        lblShown->setText(u"No change was found."_s);
    else if (more)
        lblShown->setText(
            u"The latest %L1 changes. Narrow the search to see older ones."_s.arg(mostChanges));
    else
        lblShown->setText(changes.size() == 1
                              ? u"1 change."_s
                              : u"%L1 changes, the latest first."_s.arg(changes.size()));
}

void JournalForm::cmdPrint_Click() {
    if (m_lines.empty()) {
        screen::MsgBox(u"There are no Records Displayed to Print!"_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, u"Error!"_s);
        return;
    }
    JournalRows rows(MainDatabase(), m_lines, m_heading);
    launchReportFile(u"Journal.rpt"_s, {}, m_heading, this, &rows);
}

} // namespace core
