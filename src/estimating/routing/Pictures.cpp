#include "estimating/routing/Pictures.h"

#include <QPainter>
#include <QPixmap>

namespace estimating {

namespace {

QIcon sheet(bool written) {
    constexpr int side = 32; // drawn large, so that it stays sharp on dense screens
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(120, 110, 60), 2));
    painter.setBrush(written ? QBrush(QColor(255, 236, 140)) : QBrush(Qt::NoBrush));
    painter.drawRoundedRect(QRectF(6, 3, 20, 26), 2, 2);
    if (written) {
        painter.setPen(QPen(QColor(90, 80, 40), 2));
        for (int y = 9; y <= 23; y += 5)
            painter.drawLine(10, y, 22, y);
    }
    painter.end();
    return QIcon(pixmap);
}

} // namespace

QIcon noteIcon() {
    static const QIcon icon = sheet(true);
    return icon;
}

QIcon noNoteIcon() {
    static const QIcon icon = sheet(false);
    return icon;
}

} // namespace estimating
