#include "estimating/routing/OperationPicker.h"

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
    lvwAvail = list(QStringLiteral("fraAvail"), QStringLiteral("lvwAvail"),
                    QStringLiteral("List of Available Operations"));
    lvwAvail->setColumns({{QStringLiteral("Operation"), 32}});

    screen::ButtonBar middle(this, lists);
    middle.stretch();
    const auto button = [&](const QString& name, const QString& caption,
                            void (OperationPicker::*handler)()) {
        connect(middle.button(name, caption), &QPushButton::clicked, this,
                [this, handler] { m_form.guarded([&] { (this->*handler)(); }); });
    };
    button(QStringLiteral("cmdAddRemove(0)"), QStringLiteral("&Add >"), &OperationPicker::add);
    button(QStringLiteral("cmdAddRemove(1)"), QStringLiteral("< &Remove"),
           &OperationPicker::remove);
    connect(middle.button(QStringLiteral("cmdUpDown(0)"), QStringLiteral("Move &Up")),
            &QPushButton::clicked, this, [this] { m_form.guarded([this] { move(-1); }); });
    connect(middle.button(QStringLiteral("cmdUpDown(1)"), QStringLiteral("Move &Down")),
            &QPushButton::clicked, this, [this] { m_form.guarded([this] { move(1); }); });
    middle.stretch();

    lvwSel = list(QStringLiteral("fraSel"), QStringLiteral("lvwSel"),
                  QStringLiteral("Selected Operations for this Set"));
    std::vector<controls::GridColumn> columns{{QStringLiteral("Operation"), 30}};
    if (withNotes)
        columns.push_back({QStringLiteral("Notes"), 6});
    lvwSel->setColumns(std::move(columns));

    auto* below = new QHBoxLayout;
    outside->addLayout(below);
    below->addWidget(new QLabel(QStringLiteral("*oc = Outside Contractor"), this));
    below->addStretch();
    Check1 =
        screen::named(new QCheckBox(QStringLiteral("Use default &notes for this operation"), this),
                      QStringLiteral("Check1"));
    Check1->setVisible(withNotes);
    below->addWidget(Check1);

    lvwAvail->rowDoubleClicked.connect([this](int) { m_form.guarded([this] { add(); }); });
    lvwSel->rowDoubleClicked.connect([this](int) { m_form.guarded([this] { remove(); }); });
    lvwSel->selectionChangedByUser.connect([this] { showChosen(); });
    connect(Check1, &QCheckBox::clicked, this, [this] { useNote(); });
}

void OperationPicker::load(jet::Database& database, const QString& available,
                           const QString& picked) {
    QSet<qint64> noted;
    jet::Recordset notes = database.openRecordset(QStringLiteral("SELECT OperNo FROM OperNote"),
                                                  jet::RecordsetType::Snapshot);
    for (; !notes.eof(); notes.moveNext())
        noted.insert(notes[u"OperNo"].toLong());
    const auto read = [&](const QString& select) {
        std::vector<Entry> entries;
        if (select.isEmpty())
            return entries;
        jet::Recordset set = database.openRecordset(select, jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            const qint64 operNo = set[u"OperNo"].toLong();
            entries.push_back({operNo, set.text(u"Description"),
                               set.text(u"OperType") == QStringLiteral("C"), noted.contains(operNo),
                               false});
        }
        return entries;
    };
    m_available = read(available);
    m_picked = read(picked);
    showLists();
    lvwAvail->selectRow(0);
}

void OperationPicker::addRow(controls::ListView* list, const Entry& entry, bool withNotes) {
    QStringList texts{entry.contractor ? entry.description + QStringLiteral("  *oc")
                                       : entry.description};
    if (withNotes)
        texts << (entry.useNote ? QStringLiteral("yes") : QStringLiteral("no"));
    list->addRow(QStringLiteral("O") + QString::number(entry.operNo), texts,
                 entry.hasNote ? noteIcon() : noNoteIcon(),
                 entry.hasNote ? QStringLiteral("has a default note") : QString());
}

void OperationPicker::showLists() {
    lvwAvail->clearRows();
    for (const Entry& entry : m_available)
        addRow(lvwAvail, entry, false);
    lvwSel->clearRows();
    for (const Entry& entry : m_picked)
        addRow(lvwSel, entry, m_withNotes);
    showChosen();
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
        return a.description.compare(b.description, Qt::CaseInsensitive) < 0;
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
        lvwSel->setRowText(row, 1, entry.useNote ? QStringLiteral("yes") : QStringLiteral("no"));
    }
}

} // namespace estimating
