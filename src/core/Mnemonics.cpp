#include "core/Mnemonics.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QShortcutEvent>
#include <QTabBar>

namespace core {

bool pressMnemonic(QWidget* form, const QKeySequence& key) {
    const auto buttons = form->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->isVisible() && button->isEnabled() && button->shortcut() == key) {
            button->click();
            return true;
        }
    }
    const auto labels = form->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        QWidget* field = label->buddy();
        if (field && label->isVisible() && field->isEnabled() &&
            QKeySequence::mnemonic(label->text()) == key) {
            field->setFocus(Qt::ShortcutFocusReason);
            return true;
        }
    }
    const auto bars = form->findChildren<QTabBar*>();
    for (QTabBar* bar : bars) {
        for (int tab = 0; bar->isVisible() && tab < bar->count(); ++tab) {
            if (bar->isTabEnabled(tab) && QKeySequence::mnemonic(bar->tabText(tab)) == key) {
                bar->setCurrentIndex(tab);
                return true;
            }
        }
    }
    return false;
}

Mnemonics::Mnemonics(QMdiArea* area, QMenuBar* menus)
    : QObject(area), m_area(area), m_menus(menus) {
    qApp->installEventFilter(this);
}

bool Mnemonics::isShellInFront() const {
    return !QApplication::activePopupWidget() && !QApplication::activeModalWidget() &&
           m_menus->window()->isActiveWindow();
}

void Mnemonics::enterMenus() {
    const auto actions = m_menus->actions();
    for (QAction* action : actions) {
        if (action->isVisible() && action->isEnabled()) {
            m_menus->setFocus(Qt::MenuBarFocusReason);
            m_menus->setActiveAction(action);
            return;
        }
    }
}

bool Mnemonics::openMenu(const QKeySequence& key) {
    const auto actions = m_menus->actions();
    for (QAction* action : actions) {
        if (action->isVisible() && action->isEnabled() &&
            QKeySequence::mnemonic(action->text()) == key) {
            m_menus->setFocus(Qt::MenuBarFocusReason);
            m_menus->setActiveAction(action);
            return true;
        }
    }
    return false;
}

bool Mnemonics::keyPressed(const QKeyEvent& key) {
    const Qt::KeyboardModifiers modifiers = key.modifiers() & ~Qt::KeypadModifier;
    m_altAlone = key.key() == Qt::Key_Alt && (modifiers & ~Qt::AltModifier) == Qt::NoModifier &&
                 isShellInFront();
    if (key.key() == Qt::Key_F10 && modifiers == Qt::NoModifier && isShellInFront()) {
        enterMenus();
        return true;
    }
    // What comes here was no shortcut of anything. AltGr, which types letters, isn't this Alt.
    const bool letter = !key.text().isEmpty() && key.text().front().isPrint();
    if (!letter || (modifiers & ~Qt::ShiftModifier) != Qt::AltModifier)
        return false;
    if (isShellInFront())
        openMenu(QKeySequence(Qt::ALT | static_cast<Qt::Key>(key.key())));
    return true;
}

bool Mnemonics::keyReleased(const QKeyEvent& key) {
    if (key.key() != Qt::Key_Alt || key.isAutoRepeat() || !m_altAlone)
        return false;
    m_altAlone = false;
    if (!isShellInFront())
        return false;
    enterMenus();
    return true;
}

bool Mnemonics::eventFilter(QObject* object, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        // A popup's own keys are its own; each key is looked at once, where it arrives.
        return object->isWidgetType() && !QApplication::activePopupWidget() &&
               keyPressed(*static_cast<const QKeyEvent*>(event));
    case QEvent::KeyRelease:
        return object->isWidgetType() && keyReleased(*static_cast<const QKeyEvent*>(event));
    case QEvent::ShortcutOverride: {
        // A field that takes no entries doesn't need the keys with which one edits text.
        const auto* key = static_cast<const QKeyEvent*>(event);
        if ((key->modifiers() & Qt::ControlModifier) && key->key() != Qt::Key_C &&
            key->key() != Qt::Key_A && object->property("readOnly").toBool()) {
            event->ignore();
            return true;
        }
        return false;
    }
    case QEvent::MouseButtonPress:
        m_altAlone = false;
        return false;
    case QEvent::Shortcut:
        m_altAlone = false;
        break;
    default:
        return false;
    }
    const auto* shortcut = static_cast<QShortcutEvent*>(event);
    if (!shortcut->isAmbiguous())
        return false;
    // The children's own system menus claim this one as well on some desktops.
    if (shortcut->key() == QKeySequence(Qt::CTRL | Qt::Key_F4)) {
        m_area->closeActiveSubWindow();
        return true;
    }
    const QMdiSubWindow* frame = m_area->activeSubWindow();
    return frame && frame->isActiveWindow() && frame->widget() &&
           pressMnemonic(frame->widget(), shortcut->key());
}

} // namespace core
