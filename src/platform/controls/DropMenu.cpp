#include "platform/controls/DropMenu.h"

#include "platform/controls/Guard.h"
#include "platform/values/Literals.h"

#include <QAbstractButton>
#include <QMenu>
#include <QPointer>
#include <QTimer>

#include <utility>

namespace controls {

DropMenu::DropMenu(QWidget* owner)
    : QObject(owner), m_menu(new QMenu(owner)), tmrMenu(new QTimer(this)) {
    tmrMenu->setObjectName(u"tmrMenu"_s);
    tmrMenu->setSingleShot(true);
    connect(tmrMenu, &QTimer::timeout, this, [this] {
        const auto action = std::exchange(m_chosen, nullptr);
        if (action)
            guarded(action);
    });
}

DropMenu::~DropMenu() = default;

void DropMenu::clear() {
    m_menu->clear();
    m_chosen = nullptr;
}

bool DropMenu::isEmpty() const {
    return m_menu->isEmpty();
}

void DropMenu::add(const QString& text, std::function<void()> action, bool enabled) {
    QAction* entry = m_menu->addAction(text);
    entry->setEnabled(enabled);
    connect(entry, &QAction::triggered, this, [this, action = std::move(action)] {
        m_chosen = action;
        tmrMenu->start(0);
    });
}

void DropMenu::add(QAbstractButton* button) {
    if (!button || button->isHidden())
        return;
    // The button may go with its screen before the timer comes.
    add(
        button->text(),
        [pressed = QPointer(button)] {
            if (pressed)
                pressed->click();
        },
        button->isEnabled());
}

void DropMenu::addSeparator() {
    if (!m_menu->isEmpty() && !m_menu->actions().last()->isSeparator())
        m_menu->addSeparator();
}

void DropMenu::showKey(const QString& key) {
    if (!m_menu->isEmpty())
        m_menu->actions().last()->setText(m_menu->actions().last()->text() + u'\t' + key);
}

void DropMenu::open(const QPoint& globalPlace) {
    if (!m_menu->isEmpty())
        m_menu->popup(globalPlace);
}

} // namespace controls
