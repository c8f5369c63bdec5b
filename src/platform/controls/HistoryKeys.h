#pragma once

#include <QKeyEvent>

namespace controls {

/// Ctrl+Z, or what the desktop has instead.
inline bool isUndo(const QKeyEvent& event) {
    return event.matches(QKeySequence::Undo);
}

/// Ctrl+Y everywhere, and what the desktop has beside it.
inline bool isRedo(const QKeyEvent& event) {
    return event.matches(QKeySequence::Redo) ||
           (event.key() == Qt::Key_Y && event.modifiers() == Qt::ControlModifier);
}

} // namespace controls
