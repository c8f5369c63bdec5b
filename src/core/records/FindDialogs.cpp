#include "core/records/FindDialogs.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace core {

FoundForm::FoundForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.title), m_descriptor(std::move(descriptor)) {
    auto* layout = new QVBoxLayout(this);
    m_list = screen::named(new controls::ListView(this), m_descriptor.listName, m_descriptor.title);
    std::vector<controls::GridColumn> columns;
    for (const Column& column : m_descriptor.columns) {
        const auto kind =
            columns.empty() ? controls::GridColumn::Kind::Number : controls::GridColumn::Kind::Text;
        columns.push_back({.title = column.title, .characters = column.characters, .kind = kind});
    }
    m_list->setColumns(std::move(columns));
    m_list->setMinimumSize(420, 260);
    layout->addWidget(m_list, 1);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* select = bar.button(u"cmdSelect"_s, u"&Select"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(select, &FoundForm::cmdSelect_Click);
    on(cancel, [this] { hideModal(); });
    on(m_list->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    setDefaultButton(select);
    setCancelButton(cancel);
    resize(560, 380);
}

bool FoundForm::list(const QString& select) {
    const screen::BusyPointer busy;
    jet::Recordset found = core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    m_list->clearRows();
    for (; !found.eof(); found.moveNext()) {
        QStringList line;
        for (const Column& column : m_descriptor.columns)
            line << found.text(column.field);
        m_list->addRow(u'N' + line.first(), line);
    }
    m_list->selectRow(0);
    return m_list->rowCount() > 0;
}

std::optional<qint64> FoundForm::pick() {
    m_chosen.reset();
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

RecordFindForm::RecordFindForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.title), m_descriptor(std::move(descriptor)) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtData = fields.text(u"txtData"_s, m_descriptor.prompt);
    for (const Option& option : m_descriptor.options)
        m_options.push_back(fields.option(option.name, option.caption));
    m_options.front()->setChecked(true);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* find = bar.button(u"cmdFind"_s, u"&List"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(find, &RecordFindForm::cmdFind_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(find);
    setCancelButton(cancel);
}

void RecordFindForm::cmdFind_Click() {
    std::size_t option = 0;
    while (option + 1 < m_options.size() && !m_options[option]->isChecked())
        ++option;
    const auto found = screen::Forms::dialog<FoundDialog>(m_descriptor.foundScreen);
    if (!found->list(m_descriptor.options[option].select + txtData->text() + u"*'"_s)) {
        complain(u"No Matching Records Found!"_s, txtData, screen::Icon::Exclamation,
                 u"Empty Results!"_s);
        return;
    }
    const auto chosen = found->pick();
    if (!chosen)
        return;
    auto* module = screen::Forms::find<core::RecordScreen>(m_descriptor.moduleScreen);
    if (module && !module->goToRecord(*chosen)) {
        complain(u"That record isn't among those shown at present."_s, txtData);
        return;
    }
    unload();
}

DocumentFindForm::DocumentFindForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.numberCaption), m_descriptor(std::move(descriptor)) {
    auto* outside = new QVBoxLayout(this);
    lblPrompt = screen::named(new QLabel(this), u"lblPrompt"_s);
    txtNo = screen::named(new controls::TextField(this), u"txtNo"_s, u"What to find"_s);
    lblPrompt->setBuddy(txtNo);
    outside->addWidget(lblPrompt);
    outside->addWidget(txtNo);
    outside->addStretch();
    on(addOkCancel(outside), [this] {
        m_ok = true;
        hideModal();
    });
    resize(340, 120);
}

std::optional<QString> DocumentFindForm::ask(const QString& caption, const QString& prompt,
                                             int limit, const values::KeyFilter& filter) {
    setWindowTitle(caption);
    lblPrompt->setText(prompt);
    txtNo->setAccessibleName(prompt);
    txtNo->setLimit(limit);
    txtNo->setKeyFilter(filter);
    txtNo->setText(QString());
    txtNo->setFocus();
    m_ok = false;
    showModal();
    const QString entered = txtNo->text().trimmed();
    return m_ok && !entered.isEmpty() ? std::optional(entered) : std::nullopt;
}

std::optional<qint64> DocumentFindForm::askNumber() {
    const auto entered =
        ask(m_descriptor.numberCaption, m_descriptor.numberPrompt, 9, values::keys::digits());
    return entered ? std::optional(entered->toLongLong()) : std::nullopt;
}

std::optional<QString> DocumentFindForm::askPart() {
    return ask(u"Find Part"_s, m_descriptor.partPrompt, 25, m_descriptor.partKeys);
}

namespace {

template <class Find>
void addPair(const typename Find::Descriptor& find, const FoundForm::Descriptor& found) {
    screen::Forms::add(find.formName, [find] { return std::make_unique<Find>(find); });
    screen::Forms::add(found.formName, [found] { return std::make_unique<FoundForm>(found); });
}

} // namespace

void addFind(const RecordFindForm::Descriptor& find, const FoundForm::Descriptor& found) {
    addPair<RecordFindForm>(find, found);
}

void addFind(const DocumentFindForm::Descriptor& find, const FoundForm::Descriptor& found) {
    addPair<DocumentFindForm>(find, found);
}

} // namespace core
