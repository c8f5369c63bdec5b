#include "core/Mnemonics.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
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

Mnemonics::Mnemonics(QMdiArea* area) : QObject(area), m_area(area) {
    qApp->installEventFilter(this);
}

bool Mnemonics::eventFilter(QObject*, QEvent* event) {
    if (event->type() != QEvent::Shortcut)
        return false;
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
