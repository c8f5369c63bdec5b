#pragma once

#include <QColor>
#include <QPalette>
#include <QString>

class QWidget;

namespace controls {

/// A red and a green that read well as text on the palette's background, light or dark.
QColor redText(const QPalette& palette);
QColor greenText(const QPalette& palette);

/// Sets the colour of a widget's text; an invalid colour is the palette's own again.
void setTextColour(QWidget* widget, const QColor& colour);

/// The name of the screen that a control stands on, in small letters: what is remembered of the
/// control goes by it. Empty for one that stands on none.
QString screenName(const QWidget* control);

/// Gives an entry field the background of what can't be changed, or its own back.
void showLocked(QWidget* widget, bool locked);

} // namespace controls
