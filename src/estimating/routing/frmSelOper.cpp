#include "estimating/routing/frmSelOper.h"

#include "core/MirsaMain.h"
#include "estimating/routing/Pictures.h"
#include "platform/screen/Layout.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace estimating {

frmSelOper::frmSelOper()
    : Form(QString::fromLatin1(formName), QStringLiteral("Select Operations")) {
    auto* outside = new QVBoxLayout(this);
    auto* lists = new QHBoxLayout;
    outside->addLayout(lists, 1);

    auto* available = screen::frame(this, lists, QStringLiteral("fraAvail"),
                                    QStringLiteral("List of Available Operations"));
    lvwAvail = screen::named(new controls::ListView(available), QStringLiteral("lvwAvail"),
                             QStringLiteral("List of Available Operations"));
    lvwAvail->setColumns({{QStringLiteral("Operation"), 32}});
    lvwAvail->setMultipleSelection(true);
    auto* availableLayout = new QVBoxLayout(available);
    availableLayout->addWidget(lvwAvail);

    screen::ButtonBar middle(this, lists);
    middle.stretch();
    QPushButton* add = middle.button(QStringLiteral("cmdAddRemove(0)"), QStringLiteral("&Add >"));
    QPushButton* remove =
        middle.button(QStringLiteral("cmdAddRemove(1)"), QStringLiteral("< &Remove"));
    QPushButton* up = middle.button(QStringLiteral("cmdUpDown(0)"), QStringLiteral("Move &Up"));
    QPushButton* down = middle.button(QStringLiteral("cmdUpDown(1)"), QStringLiteral("Move &Down"));
    middle.stretch();

    auto* selected = screen::frame(this, lists, QStringLiteral("fraSel"),
                                   QStringLiteral("Selected Operations for this Set"));
    lvwSel = screen::named(new controls::ListView(selected), QStringLiteral("lvwSel"),
                           QStringLiteral("Selected Operations for this Set"));
    lvwSel->setColumns({{QStringLiteral("Operation"), 30}, {QStringLiteral("Notes"), 6}});
    lvwSel->setMultipleSelection(true);
    Check1 = screen::named(
        new QCheckBox(QStringLiteral("Use default &notes for this operation"), selected),
        QStringLiteral("Check1"));
    auto* selectedLayout = new QVBoxLayout(selected);
    selectedLayout->addWidget(lvwSel);
    selectedLayout->addWidget(Check1);

    lists->setStretchFactor(available, 1);
    lists->setStretchFactor(selected, 1);

    screen::ButtonBar bar(this, outside);
    bar.layout()->addWidget(new QLabel(QStringLiteral("*oc = Outside Contractor"), this));
    bar.stretch();
    QPushButton* cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    setDefaultButton(cmdOK);
    setCancelButton(cmdCancel);

    on(add, &frmSelOper::cmdAdd_Click);
    on(remove, &frmSelOper::cmdRemove_Click);
    on(up, [this] { cmdUpDown_Click(-1); });
    on(down, [this] { cmdUpDown_Click(1); });
    on(lvwAvail->rowDoubleClicked, [this](int) { cmdAdd_Click(); });
    on(lvwSel->rowDoubleClicked, [this](int) { cmdRemove_Click(); });
    on(lvwSel->selectionChangedByUser, &frmSelOper::lvwSel_Click);
    on(Check1, &frmSelOper::Check1_Click);
    on(cmdOK, &frmSelOper::cmdOK_Click);
    on(cmdCancel, [this] { hideModal(); });
    resize(860, 520);
}

void frmSelOper::Form_Load() {
    jet::Database& database = core::MainDatabase();
    QSet<qint64> noted;
    jet::Recordset notes = database.openRecordset(QStringLiteral("SELECT OperNo FROM OperNote"),
                                                  jet::RecordsetType::Snapshot);
    for (; !notes.eof(); notes.moveNext())
        noted.insert(notes[u"OperNo"].toLong());
    jet::Recordset set = database.openRecordset(
        QStringLiteral("SELECT * FROM Operation WHERE OperType in ('I','C') ORDER BY Description"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const qint64 operNo = set[u"OperNo"].toLong();
        m_available.push_back({operNo, set.text(u"Description"),
                               set.text(u"OperType") == QStringLiteral("C"), noted.contains(operNo),
                               false});
    }
    showLists();
    lvwAvail->selectRow(0);
}

std::optional<std::vector<ChosenOperation>> frmSelOper::choose() {
    showModal();
    if (!m_ok)
        return std::nullopt;
    std::vector<ChosenOperation> chosen;
    for (const Entry& entry : m_selected)
        chosen.push_back({entry.operNo, entry.useNote});
    return chosen;
}

void frmSelOper::showRow(controls::ListView* list, const Entry& entry, bool withNotes) {
    QStringList texts{entry.contractor ? entry.description + QStringLiteral("  *oc")
                                       : entry.description};
    if (withNotes)
        texts << (entry.useNote ? QStringLiteral("yes") : QStringLiteral("no"));
    list->addRow(QStringLiteral("O") + QString::number(entry.operNo), texts,
                 entry.hasNote ? noteIcon() : noNoteIcon(),
                 entry.hasNote ? QStringLiteral("has a default note") : QString());
}

void frmSelOper::showLists() {
    lvwAvail->clearRows();
    for (const Entry& entry : m_available)
        showRow(lvwAvail, entry, false);
    lvwSel->clearRows();
    for (const Entry& entry : m_selected)
        showRow(lvwSel, entry, true);
    lvwSel_Click();
}

void frmSelOper::moveAcross(controls::ListView* list, Entries& from, Entries& to) {
    const std::vector<int> rows = list->selectedRows();
    if (rows.empty())
        return;
    for (const int row : rows) {
        Entry entry = from[static_cast<std::size_t>(row)];
        entry.useNote = entry.hasNote;
        to.push_back(entry);
    }
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        from.erase(from.begin() + *row);
    showLists();
    list->selectRow(rows.front());
}

void frmSelOper::cmdAdd_Click() {
    moveAcross(lvwAvail, m_available, m_selected);
    if (!m_selected.empty())
        lvwSel->selectRow(static_cast<int>(m_selected.size()) - 1);
    lvwSel_Click();
}

void frmSelOper::cmdRemove_Click() {
    moveAcross(lvwSel, m_selected, m_available);
    std::stable_sort(m_available.begin(), m_available.end(), [](const Entry& a, const Entry& b) {
        return a.description.compare(b.description, Qt::CaseInsensitive) < 0;
    });
    const int row = lvwSel->selectedRow();
    showLists();
    lvwSel->selectRow(row);
    lvwSel_Click();
}

void frmSelOper::cmdUpDown_Click(int step) {
    const int row = lvwSel->selectedRow();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= static_cast<int>(m_selected.size()))
        return;
    std::swap(m_selected[static_cast<std::size_t>(row)],
              m_selected[static_cast<std::size_t>(other)]);
    showLists();
    lvwSel->selectRow(other);
    lvwSel_Click();
}

void frmSelOper::lvwSel_Click() {
    const int row = lvwSel->selectedRow();
    const Entry entry = row < 0 ? Entry{} : m_selected[static_cast<std::size_t>(row)];
    Check1->setEnabled(entry.hasNote);
    Check1->setChecked(entry.useNote);
}

void frmSelOper::Check1_Click() {
    for (const int row : lvwSel->selectedRows()) {
        Entry& entry = m_selected[static_cast<std::size_t>(row)];
        entry.useNote = entry.hasNote && Check1->isChecked();
        lvwSel->setRowText(row, 1, entry.useNote ? QStringLiteral("yes") : QStringLiteral("no"));
    }
}

void frmSelOper::cmdOK_Click() {
    m_ok = true;
    hideModal();
}

} // namespace estimating
