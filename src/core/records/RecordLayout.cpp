#include "core/records/RecordModule.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>

// What a record module looks like: its buttons with their keys, and the way of Tab.

namespace core {

namespace {

/// Whether this installation has a screen; a member that opens its own names none.
bool hasScreen(const QString& name) {
    return name.isEmpty() || screen::Forms::isKnown(name);
}

/// The widgets that Tab goes to, in the order in which the layouts have them.
void collectTabs(QWidget* widget, QList<QWidget*>& order);

void collectTabs(QLayout* layout, QList<QWidget*>& order) {
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* item = layout->itemAt(i);
        if (item->widget())
            collectTabs(item->widget(), order);
        else if (item->layout())
            collectTabs(item->layout(), order);
    }
}

void collectTabs(QWidget* widget, QList<QWidget*>& order) {
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
        order << tabs->tabBar();
        for (int page = 0; page < tabs->count(); ++page)
            collectTabs(tabs->widget(page), order);
    } else if (auto* splitter = qobject_cast<QSplitter*>(widget)) {
        for (int pane = 0; pane < splitter->count(); ++pane)
            collectTabs(splitter->widget(pane), order);
    } else if (widget->focusPolicy() & Qt::TabFocus) {
        order << widget;
    } else if (widget->layout()) {
        collectTabs(widget->layout(), order);
    }
}

} // namespace

void RecordModule::orderTabs() const {
    QList<QWidget*> order;
    if (layout())
        collectTabs(layout(), order);
    for (int i = 1; i < order.size(); ++i)
        QWidget::setTabOrder(order[i - 1], order[i]);
}

std::vector<ModuleButton> RecordModule::standardButtons() const {
    return {{Role::New, u"cmdNew"_s, u"&New"_s},
            {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
            {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
            {Role::Save, u"cmdSave"_s, u"&Save"_s},
            {Role::Find, u"cmdFind"_s, u"&Goto"_s},
            {Role::List, u"cmdList"_s, u"&Query/Report"_s},
            {Role::PrintShown, u"cmdPrintScr"_s, u"Quick &Report Shown"_s},
            {Role::PrintAll, u"cmdPrintAll"_s, u"Quick Report  &All"_s},
            {Role::Cancel, u"cmdCancel"_s, u"&Cancel"_s},
            {Role::Close, u"cmdClose"_s, u"Do&ne"_s}};
}

void RecordModule::makeFoot(QBoxLayout* inside, const std::vector<ModuleButton>& buttons) {
    auto* move = new QHBoxLayout;
    inside->addLayout(move);
    move->addWidget(m_data);
    move->addStretch();
    auto* row = new QHBoxLayout;
    inside->addLayout(row);
    makeButtons(row, buttons);
}

void RecordModule::makeButtons(QBoxLayout* inside, const std::vector<ModuleButton>& buttons) {
    for (const ModuleButton& wanted : buttons) {
        auto* made = screen::named(new QPushButton(wanted.caption, this), wanted.name);
        inside->addWidget(made);
        m_buttons.emplace_back(wanted.role, made);
        giveShortcut(made, wanted.role);
        switch (wanted.role) {
        case Role::New:
            on(made, &RecordModule::cmdNew_Click);
            break;
        case Role::Edit:
            on(made, &RecordModule::cmdEdit_Click);
            break;
        case Role::Delete:
            on(made, &RecordModule::cmdDelete_Click);
            break;
        case Role::Find:
            on(made, &RecordModule::cmdFind_Click);
            break;
        case Role::List:
            on(made, &RecordModule::cmdList_Click);
            break;
        case Role::PrintShown:
            on(made, &RecordModule::cmdPrintScr_Click);
            break;
        case Role::PrintAll:
            on(made, &RecordModule::cmdPrintAll_Click);
            break;
        case Role::Save:
            on(made, &RecordModule::cmdSave_Click);
            break;
        case Role::Cancel:
            on(made, &RecordModule::cmdCancel_Click);
            break;
        case Role::Close:
            on(made, &RecordModule::cmdClose_Click);
            break;
        case Role::BrowseOnly:
        case Role::EntryOnly:
        case Role::Free:
            break;
        }
    }
}

void RecordModule::giveShortcut(QPushButton* push, Role role) {
    QKeySequence key;
    switch (role) {
    case Role::New:
        key = Qt::CTRL | Qt::Key_N;
        break;
    case Role::Edit:
        key = Qt::CTRL | Qt::Key_E;
        break;
    case Role::Delete:
        key = Qt::CTRL | Qt::Key_D;
        break;
    case Role::Find:
        // Where the number is asked for in a box of its own, Ctrl+G does that.
        key = m_descriptor.numberWord.isEmpty() ? QKeySequence(Qt::CTRL | Qt::Key_G)
                                                : QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G);
        break;
    case Role::List:
        key = Qt::CTRL | Qt::Key_Q;
        break;
    case Role::PrintShown:
        key = Qt::CTRL | Qt::Key_P;
        break;
    case Role::Save:
        key = Qt::CTRL | Qt::Key_S;
        break;
    case Role::Close:
        key = Qt::CTRL | Qt::Key_W;
        break;
    default:
        return;
    }
    push->setToolTip(key.toString(QKeySequence::NativeText));
    auto* shortcut = new QShortcut(key, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    on(shortcut, &QShortcut::activated, [push] {
        if (push->isVisible() && push->isEnabled())
            push->click();
    });
}

QPushButton* RecordModule::button(Role role) const {
    for (const auto& [made, push] : m_buttons) {
        if (made == role)
            return push;
    }
    return nullptr;
}

void RecordModule::arrangeButtons() {
    const bool browse = isBrowse();
    for (const auto& [role, push] : m_buttons) {
        switch (role) {
        case Role::Save:
        case Role::EntryOnly:
            push->setEnabled(!browse);
            break;
        case Role::Cancel:
            push->setVisible(!browse);
            break;
        case Role::Close:
            push->setVisible(browse);
            break;
        case Role::Free:
            break;
        case Role::Find:
            push->setEnabled(browse && hasScreen(m_descriptor.findScreen));
            break;
        case Role::List:
            push->setEnabled(browse && hasScreen(m_descriptor.queryScreen));
            break;
        default:
            push->setEnabled(browse);
        }
    }
    setDefaultButton(button(browse ? Role::Close : Role::Save));
    setCancelButton(browse ? nullptr : button(Role::Cancel));
}

} // namespace core
