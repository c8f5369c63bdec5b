#include "platform/screen/ListForm.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace screen {

ListForm::ListForm(const QString& name, const QString& caption, const QString& listName,
                   const QString& spoken, std::vector<controls::GridColumn> columns,
                   Reselect reselect)
    : Form(name, caption), m_reselect(reselect) {
    auto* outside = new QVBoxLayout(this);
    m_list = named(new controls::ListView(this), listName, spoken);
    m_list->setColumns(std::move(columns));
    outside->addWidget(m_list, 1);
    ButtonBar bar(this, outside);
    m_buttons = bar.layout();
    m_commands = {bar.button(u"cmdNew"_s, u"&New"_s), bar.button(u"cmdEdit"_s, u"&Edit"_s),
                  bar.button(u"cmdDelete"_s, u"&Delete"_s)};
    on(m_commands[0], [this] { cmdNew_Click(); });
    on(m_commands[1], [this] { cmdEdit_Click(); });
    on(m_commands[2], [this] { cmdDelete_Click(); });
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdClose, [this] { unload(); });
    on(m_list->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    // Members may add to them.
    m_list->menuAsked.connect([this](controls::DropMenu& menu) {
        for (QPushButton* command : m_commands)
            menu.add(command);
    });
    resize(640, 460);
}

QPushButton* ListForm::addButton(const QString& name, const QString& caption) {
    auto* button = named(new QPushButton(caption, this), name);
    button->setAutoDefault(false);
    const int behindDelete = m_buttons->count() - 2; // the gap and Close
    setTabOrder(m_buttons->itemAt(behindDelete - 1)->widget(), button);
    m_buttons->insertWidget(behindDelete, button);
    m_commands.push_back(button);
    return button;
}

void ListForm::reload() {
    const int place = m_list->selectedRow();
    m_list->setRows(rows());
    if (m_reselect == Reselect::Place)
        m_list->selectRow(std::max(0, place));
}

qint64 ListForm::selectedNumber() const {
    const int row = m_list->selectedRow();
    return row < 0 ? 0 : m_list->keyNumber(row);
}

bool ListForm::askDelete() const {
    return confirmDeletion(u"Delete this item?"_s, u"Delete"_s);
}

} // namespace screen
