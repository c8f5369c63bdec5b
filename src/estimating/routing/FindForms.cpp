#include "estimating/routing/FindForms.h"

#include "core/MirsaMain.h"
#include "estimating/Routing.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Text.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

FindForm::FindForm(const FindKind& kind) : Form(kind.find, kind.numberCaption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    lblPrompt = screen::named(new QLabel(this), QStringLiteral("lblPrompt"));
    txtNo = screen::named(new controls::TextField(this), QStringLiteral("txtNo"),
                          QStringLiteral("What to find"));
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
    return ask(QStringLiteral("Find Part"), m_kind.partPrompt, 25, values::keys::name());
}

FoundForm::FoundForm(const FindKind& kind) : Form(kind.found, kind.foundCaption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    m_list = screen::named(new controls::ListView(this), QStringLiteral("sprFound"),
                           QStringLiteral("Found"));
    std::vector<controls::GridColumn> columns;
    for (const auto& column : kind.columns)
        columns.push_back({column.second, 14});
    m_list->setColumns(std::move(columns));
    outside->addWidget(m_list, 1);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(QStringLiteral("cmdSelect"), QStringLiteral("&Select"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
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
            QStringLiteral("SELECT * FROM ") + m_kind.table +
                QStringLiteral(" WHERE PartNo LIKE '") + values::quoted(partPattern(part)) +
                QStringLiteral("'") + further + QStringLiteral(" ORDER BY ") + m_kind.key,
            jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            QStringList texts;
            for (const auto& column : m_kind.columns)
                texts << set.text(column.first);
            m_list->addRow(QStringLiteral("N") + texts.first(), texts);
        }
    }
    if (m_list->rowCount() == 0) {
        screen::MsgBox(QStringLiteral("Part(s) not found!"), screen::Buttons::Ok,
                       screen::Icon::Information, QStringLiteral("System Message"));
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
