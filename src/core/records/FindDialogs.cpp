#include "core/records/FindDialogs.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace core {

FindForm::FindForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.title), m_descriptor(std::move(descriptor)) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    txtData = fields.text(u"txtData"_s, m_descriptor.prompt);
    for (const FindForm::Option& option : m_descriptor.options)
        m_options.push_back(fields.option(option.name, option.caption));
    m_options.front()->setChecked(true);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* find = bar.button(u"cmdFind"_s, u"&List"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(find, &FindForm::cmdFind_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(find);
    setCancelButton(cancel);
}

void FindForm::cmdFind_Click() {
    std::size_t option = 0;
    while (option + 1 < m_options.size() && !m_options[option]->isChecked())
        ++option;
    const auto found = screen::Forms::dialog<FoundDialog>(m_descriptor.foundScreen);
    if (!found->list(m_descriptor.options[option].select + txtData->text() + u"*'"_s)) {
        complain(u"No Matching Records Found!"_s, txtData, screen::Icon::Exclamation,
                 u"Empty Results!"_s);
        return;
    }
    found.form().showModal();
    if (found->chosen() == 0)
        return;
    auto* module = screen::Forms::find<core::RecordScreen>(m_descriptor.moduleScreen);
    if (module && !module->goToRecord(found->chosen())) {
        complain(u"That record isn't among those shown at present."_s, txtData);
        return;
    }
    unload();
}

FoundForm::FoundForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.title), m_descriptor(std::move(descriptor)) {
    auto* layout = new QVBoxLayout(this);
    m_grid = screen::named(new controls::Grid(this), m_descriptor.gridName, m_descriptor.title);
    m_grid->setColumns(m_descriptor.columns);
    m_grid->setSortable(true);
    m_grid->setMinimumSize(420, 260);
    layout->addWidget(m_grid);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* select = bar.button(u"cmdSelect"_s, u"&Select"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(select, &FoundForm::cmdSelect_Click);
    on(cancel, [this] { unload(); });
    on(m_grid->rowDoubleClicked, [this](int) { cmdSelect_Click(); });
    setDefaultButton(select);
    setCancelButton(cancel);
}

bool FoundForm::list(const QString& select) {
    const screen::BusyPointer busy;
    jet::Recordset found = core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    std::vector<QStringList> lines;
    for (; !found.eof(); found.moveNext()) {
        QStringList line;
        for (const QString& field : m_descriptor.fields)
            line << found.text(field);
        lines.push_back(line);
    }
    const bool any = !lines.empty();
    m_grid->setRows(std::move(lines));
    if (any)
        m_grid->setActiveRow(0);
    return any;
}

void FoundForm::cmdSelect_Click() {
    const int row = m_grid->activeRow();
    if (row < 0)
        return;
    m_chosen = m_grid->text(row, 0).toLongLong();
    unload();
}

} // namespace core
