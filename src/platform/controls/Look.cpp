#include "platform/controls/Look.h"

#include <QApplication>
#include <QWidget>

namespace controls {

namespace {

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

} // namespace

QColor redText(const QPalette& palette) {
    return isDark(palette) ? QColor(255, 138, 128) : QColor(176, 0, 32);
}

QColor greenText(const QPalette& palette) {
    return isDark(palette) ? QColor(129, 214, 135) : QColor(0, 110, 40);
}

void setTextColour(QWidget* widget, const QColor& colour) {
    QPalette palette = widget->palette();
    const QPalette own = QApplication::palette(widget);
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        for (const auto role : {QPalette::Text, QPalette::WindowText})
            palette.setColor(group, role, colour.isValid() ? colour : own.color(group, role));
    }
    widget->setPalette(palette);
}

QString screenName(const QWidget* control) {
    for (const QWidget* above = control->parentWidget(); above; above = above->parentWidget()) {
        if (above->objectName().startsWith(u"frm", Qt::CaseInsensitive))
            return above->objectName().toLower();
    }
    return {};
}

void showLocked(QWidget* widget, bool locked) {
    QPalette palette = widget->palette();
    const QPalette own = QApplication::palette(widget);
    palette.setBrush(QPalette::Base, locked ? own.window() : own.base());
    widget->setPalette(palette);
}

} // namespace controls
