#include "core/reference/ReferenceForms.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace core {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

ReferenceDialog::ReferenceDialog(const ReferenceTable& table)
    : AddEditForm(table.dialogForm, table.newTitle), m_table(table) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    for (const ReferenceField& field : table.fields) {
        const int width = MainDatabase().width(table.table, field.column);
        m_fields.push_back(fields.text(field.control, field.label,
                                       {.limit = width > 0 ? width : 5,
                                        .filter = field.filter,
                                        .characters = std::clamp(width, 8, 36)}));
        fields.nextRow();
    }
    outside->addStretch();

    makeButtons(outside);
}

bool ReferenceDialog::ShowForm(qint64 key) {
    m_key = key;
    setWindowTitle(key == 0 ? m_table.newTitle : m_table.editTitle);
    setAdding(key == 0);
    if (key != 0 && !readRow()) {
        MsgBox(QString::number(key) + m_table.missingMessage, Buttons::Ok, Icon::Critical);
        return false;
    }
    return run();
}

bool ReferenceDialog::readRow() {
    const jet::Recordset row =
        MainDatabase().openRecordset(u"SELECT * FROM "_s + m_table.table + u" WHERE "_s +
                                         m_table.key + u" ="_s + QString::number(m_key),
                                     jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return false;
    m_stored.clear();
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        m_stored += row.text(m_table.fields[i].column);
        m_fields[i]->setText(m_stored.last());
    }
    return true;
}

bool ReferenceDialog::save() {
    QStringList texts;
    for (const controls::TextField* field : m_fields)
        texts += field->text().trimmed();
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const QString& message = m_table.fields[i].blankMessage;
        if (!message.isEmpty() && texts[static_cast<qsizetype>(i)].isEmpty()) {
            complain(message, m_fields[i]);
            return false;
        }
    }
    std::vector<jet::WantedSet> duplicates;
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        if (m_table.fields[i].unique)
            duplicates.emplace_back(duplicateSelect(m_table, m_table.fields[i],
                                                    texts[static_cast<qsizetype>(i)], m_key));
    }
    MainDatabase().expect(duplicates);
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
        const QString& text = texts[static_cast<qsizetype>(i)];
        if (m_table.fields[i].unique &&
            MainDatabase().hasRows(duplicateSelect(m_table, m_table.fields[i], text, m_key))) {
            complain(m_table.duplicateMessage.isEmpty() ? text + u" already exists!"_s
                                                        : m_table.duplicateMessage,
                     m_fields[i]);
            return false;
        }
    }
    MainDatabase().execute(m_key == 0 ? m_table.insert(texts)
                                      : m_table.update(texts, m_key, m_stored));
    return true;
}

void ReferenceDialog::startNext() {
    for (controls::TextField* field : m_fields)
        field->clear();
    m_fields.front()->setFocus();
}

ReferenceList::ReferenceList(const ReferenceTable& table)
    : Form(table.listForm, table.listCaption), m_table(table) {
    auto* outside = new QHBoxLayout(this);
    lvwMI = screen::named(new controls::ListView(this), u"lvwMI"_s, table.listCaption);
    std::vector<controls::GridColumn> columns;
    for (const ReferenceListColumn& column : table.listColumns) {
        controls::GridColumn gridColumn;
        gridColumn.title = column.title;
        gridColumn.characters = column.characters;
        columns.push_back(gridColumn);
    }
    lvwMI->setColumns(std::move(columns));
    lvwMI->setMinimumSize(380, 280);
    outside->addWidget(lvwMI, 1);

    auto* side = new QVBoxLayout;
    outside->addLayout(side);
    const auto button = [&](const char16_t* name, const char16_t* caption) {
        auto* made = screen::named(new QPushButton(QString::fromUtf16(caption), this),
                                   QString::fromUtf16(name));
        side->addWidget(made);
        return made;
    };
    QPushButton* cmdNew = button(u"cmdNew", u"&New");
    m_edit = button(u"cmdEdit", u"&Edit");
    m_delete = button(u"cmdDelete", u"&Delete");
    side->addStretch();
    QPushButton* cmdClose = button(u"cmdClose", u"&Close");
    setCancelButton(cmdClose);

    on(cmdNew, &ReferenceList::cmdNew_Click);
    on(m_edit, &ReferenceList::cmdEdit_Click);
    on(m_delete, &ReferenceList::cmdDelete_Click);
    on(cmdClose, [this] { unload(); });
    on(lvwMI->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    controls::offerInMenu(lvwMI, {cmdNew, m_edit, m_delete});
}

void ReferenceList::Form_Load() {
    reload();
}

void ReferenceList::Form_Activate() {
    reload();
}

void ReferenceList::reload() {
    jet::Recordset set =
        MainDatabase().openRecordset(m_table.listSelect, jet::RecordsetType::Snapshot);
    std::vector<controls::ListRow> rows;
    for (; !set.eof(); set.moveNext()) {
        QStringList texts;
        for (const ReferenceListColumn& column : m_table.listColumns)
            texts += set.text(column.column);
        rows.push_back({u'K' + set.text(m_table.key), texts});
    }
    lvwMI->setRows(std::move(rows));
    showButtons();
}

void ReferenceList::showButtons() {
    m_edit->setEnabled(lvwMI->rowCount() > 0);
    m_delete->setEnabled(lvwMI->rowCount() > 0);
}

QStringList ReferenceList::selectedTexts() const {
    QStringList texts;
    for (int column = 0; column < static_cast<int>(m_table.listColumns.size()); ++column)
        texts += lvwMI->rowText(lvwMI->selectedRow(), column);
    return texts;
}

void ReferenceList::changed() {
    reload();
    refreshNeighbours(m_table.users, m_table.table);
}

void ReferenceList::cmdNew_Click() {
    if (screen::Forms::dialog<ReferenceDialog>(m_table.dialogForm)->ShowForm(0))
        changed();
}

void ReferenceList::cmdEdit_Click() {
    if (lvwMI->selectedRow() < 0)
        return;
    const QString refusal =
        m_table.editRefusal ? m_table.editRefusal(selectedTexts().first()) : QString();
    if (!refusal.isEmpty()) {
        MsgBox(refusal, Buttons::Ok, Icon::Exclamation, m_table.refusalTitle);
        return;
    }
    if (screen::Forms::dialog<ReferenceDialog>(m_table.dialogForm)
            ->ShowForm(lvwMI->keyNumber(lvwMI->selectedRow())))
        changed();
}

void ReferenceList::cmdDelete_Click() {
    if (lvwMI->selectedRow() < 0)
        return;
    const QStringList texts = selectedTexts();
    const QString refusal =
        m_table.deleteRefusal ? m_table.deleteRefusal(MainDatabase(), texts.first()) : QString();
    if (!refusal.isEmpty()) {
        MsgBox(refusal, Buttons::Ok, Icon::Exclamation, m_table.refusalTitle);
        return;
    }
    if (!screen::confirmDeletion(u"Delete this item?"_s, u"Delete"_s))
        return;
    MainDatabase().execute(m_table.remove(lvwMI->keyNumber(lvwMI->selectedRow()), texts));
    changed();
}

void registerReferenceScreens() {
    for (const ReferenceTable& table : referenceTables()) {
        screen::Forms::add(table.listForm,
                           [&table] { return std::make_unique<ReferenceList>(table); });
        screen::Forms::add(table.dialogForm,
                           [&table] { return std::make_unique<ReferenceDialog>(table); });
    }
}

} // namespace core
