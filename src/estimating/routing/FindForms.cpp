#include "estimating/routing/FindForms.h"

#include "core/MirsaMain.h"
#include "estimating/Routing.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

FindForm::FindForm(const FindKind& kind) : Form(kind.find, kind.numberCaption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    lblPrompt = screen::named(new QLabel(this), u"lblPrompt"_s);
    txtNo = screen::named(new controls::TextField(this), u"txtNo"_s, u"What to find"_s);
    lblPrompt->setBuddy(txtNo);
    outside->addWidget(lblPrompt);
    outside->addWidget(txtNo);
    outside->addStretch();
    QPushButton* cmdOK = addOkCancel(outside);
    on(cmdOK, [this] {
        m_ok = true;
        hideModal();
    });
    resize(340, 120);
}

QString FindForm::ask(const QString& caption, const QString& prompt, int limit,
                      const values::KeyFilter& filter) {
    setWindowTitle(caption);
    lblPrompt->setText(prompt);
    txtNo->setAccessibleName(prompt);
    txtNo->setLimit(limit);
    txtNo->setKeyFilter(filter);
    txtNo->setText(QString());
    txtNo->setFocus();
    m_ok = false;
    showModal();
    return m_ok ? txtNo->text().trimmed() : QString();
}

qint64 FindForm::askNumber() {
    return ask(m_kind.numberCaption, m_kind.numberPrompt, 9, values::keys::digits()).toLongLong();
}

QString FindForm::askPart() {
    return ask(u"Find Part"_s, m_kind.partPrompt, 25, m_kind.partKeys);
}

FoundForm::FoundForm(const FindKind& kind) : Form(kind.found, kind.foundCaption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    m_list = screen::named(new controls::ListView(this), u"sprFound"_s, u"Found"_s);
    std::vector<controls::GridColumn> columns;
    for (const auto& column : kind.columns)
        columns.push_back({column.second, 14});
    m_list->setColumns(std::move(columns));
    outside->addWidget(m_list, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&Select"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(cmdSelect, &FoundForm::cmdSelect_Click);
    on(m_list->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    on(cmdCancel, [this] { hideModal(); });
    resize(640, 400);
}

qint64 FoundForm::pick(const QString& part, const QString& further) {
    {
        screen::BusyPointer busy;
        jet::Recordset set = core::MainDatabase().openRecordset(
            u"SELECT * FROM "_s + m_kind.table + u" WHERE PartNo LIKE '"_s +
                values::quoted(partPattern(part)) + u"'"_s + further + u" ORDER BY "_s + m_kind.key,
            jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            QStringList texts;
            for (const auto& column : m_kind.columns)
                texts << set.text(column.first);
            m_list->addRow(u"N"_s + texts.first(), texts);
        }
    }
    if (m_list->rowCount() == 0) {
        screen::MsgBox(u"Part(s) not found!"_s, screen::Buttons::Ok, screen::Icon::Information,
                       u"System Message"_s);
        return 0;
    }
    m_list->selectRow(0);
    m_list->setFocus();
    showModal();
    return m_chosen;
}

void FoundForm::cmdSelect_Click() {
    const int row = m_list->selectedRow();
    if (row < 0)
        return;
    m_chosen = m_list->keyNumber(row);
    hideModal();
}

} // namespace estimating
