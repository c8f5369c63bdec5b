#include "estimating/routing/OperationPicker.h"

#include "estimating/routing/Pictures.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSet>
#include <QVBoxLayout>

namespace estimating {

OperationPicker::OperationPicker(screen::Form& form, bool withNotes)
    : QWidget(&form), m_form(form), m_withNotes(withNotes) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(0, 0, 0, 0);
    auto* lists = new QHBoxLayout;
    outside->addLayout(lists, 1);

    const auto list = [&](const QString& frameName, const QString& name, const QString& title) {
        QGroupBox* frame = screen::frame(this, lists, frameName, title);
        auto* made = screen::named(new controls::ListView(frame), name, title);
        made->setMultipleSelection(true);
        made->setSortable(false); // its order is the entries', and in one of them the routing's
        auto* layout = new QVBoxLayout(frame);
        layout->addWidget(made);
        lists->setStretchFactor(frame, 1);
        return made;
    };
    lvwAvail = list(u"fraAvail"_s, u"lvwAvail"_s, u"List of Available Operations"_s);
    lvwAvail->setColumns({{u"Operation"_s, 32}});

    screen::ButtonBar middle(this, lists);
    middle.stretch();
    const auto button = [&](const QString& name, const QString& caption,
                            void (OperationPicker::*handler)()) {
        m_form.on(middle.button(name, caption), [this, handler] { (this->*handler)(); });
    };
    button(u"cmdAddRemove(0)"_s, u"&Add >"_s, &OperationPicker::add);
    button(u"cmdAddRemove(1)"_s, u"< &Remove"_s, &OperationPicker::remove);
    m_form.on(middle.button(u"cmdUpDown(0)"_s, u"Move &Up"_s), [this] { move(-1); });
    m_form.on(middle.button(u"cmdUpDown(1)"_s, u"Move &Down"_s), [this] { move(1); });
    middle.stretch();

    lvwSel = list(u"fraSel"_s, u"lvwSel"_s, u"Selected Operations for this Set"_s);
    std::vector<controls::GridColumn> columns{{u"Operation"_s, 30}};
    if (withNotes)
        columns.push_back({u"Notes"_s, 6});
    lvwSel->setColumns(std::move(columns));

    auto* below = new QHBoxLayout;
    outside->addLayout(below);
    below->addWidget(new QLabel(u"*oc = Outside Contractor"_s, this));
    below->addStretch();
    Check1 =
        screen::named(new QCheckBox(u"Use default &notes for this operation"_s, this), u"Check1"_s);
    Check1->setVisible(withNotes);
    below->addWidget(Check1);

    m_form.on(lvwAvail->rowDoubleClicked, [this](int) { add(); });
    m_form.on(lvwSel->rowDoubleClicked, [this](int) { remove(); });
    m_form.on(lvwSel->selectionChangedByUser, [this] { showChosen(); });
    m_form.on(Check1, [this] { useNote(); });
}

void OperationPicker::load(jet::Database& database, const QString& available,
                           const QString& picked) {
    QSet<qint64> noted;
    jet::Recordset notes =
        database.openRecordset(u"SELECT OperNo FROM OperNote"_s, jet::RecordsetType::Snapshot);
    for (; !notes.eof(); notes.moveNext())
        noted.insert(notes[u"OperNo"].toLong());
    const auto read = [&](const QString& select) {
        std::vector<Entry> entries;
        if (select.isEmpty())
            return entries;
        jet::Recordset set = database.openRecordset(select, jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            const qint64 operNo = set[u"OperNo"].toLong();
            entries.push_back({operNo, set.text(u"Description"), set.text(u"OperType") == u"C"_s,
                               noted.contains(operNo), false});
        }
        return entries;
    };
    m_available = read(available);
    m_picked = read(picked);
    showLists();
    lvwAvail->selectRow(0);
}

void OperationPicker::showLists() {
    show(lvwAvail, m_available, false);
    show(lvwSel, m_picked, m_withNotes);
    showChosen();
}

void OperationPicker::show(controls::ListView* list, const std::vector<Entry>& entries,
                           bool withNotes) {
    std::vector<controls::ListRow> rows;
    for (const Entry& entry : entries) {
        QStringList texts{entry.contractor ? entry.description + u"  *oc"_s : entry.description};
        if (withNotes)
            texts << (entry.useNote ? u"yes"_s : u"no"_s);
        rows.push_back({u"O"_s + QString::number(entry.operNo), texts,
                        entry.hasNote ? noteIcon() : noNoteIcon(),
                        entry.hasNote ? u"has a default note"_s : QString()});
    }
    list->setRows(std::move(rows));
}

void OperationPicker::moveAcross(controls::ListView* list, std::vector<Entry>& from,
                                 std::vector<Entry>& to) {
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
    std::stable_sort(m_available.begin(), m_available.end(), [](const Entry& a, const Entry& b) {
        return values::textLess(a.description, b.description);
    });
    showLists();
    list->selectRow(rows.front());
}

void OperationPicker::add() {
    moveAcross(lvwAvail, m_available, m_picked);
    lvwSel->selectRow(static_cast<int>(m_picked.size()) - 1);
    showChosen();
}

void OperationPicker::remove() {
    moveAcross(lvwSel, m_picked, m_available);
    showChosen();
}

void OperationPicker::move(int step) {
    const int row = lvwSel->selectedRow();
    const int other = row + step;
    if (row < 0 || other < 0 || other >= static_cast<int>(m_picked.size()))
        return;
    std::swap(m_picked[static_cast<std::size_t>(row)], m_picked[static_cast<std::size_t>(other)]);
    showLists();
    lvwSel->selectRow(other);
    showChosen();
}

void OperationPicker::showChosen() {
    const int row = lvwSel->selectedRow();
    const Entry entry = row < 0 ? Entry{} : m_picked[static_cast<std::size_t>(row)];
    Check1->setEnabled(entry.hasNote);
    Check1->setChecked(entry.useNote);
}

void OperationPicker::useNote() {
    for (const int row : lvwSel->selectedRows()) {
        Entry& entry = m_picked[static_cast<std::size_t>(row)];
        entry.useNote = entry.hasNote && Check1->isChecked();
        lvwSel->setRowText(row, 1, entry.useNote ? u"yes"_s : u"no"_s);
    }
}

} // namespace estimating
