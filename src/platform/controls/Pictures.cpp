#include "platform/controls/Pictures.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

#include <functional>

namespace controls::pictures {

namespace {

constexpr int side = 32; // drawn large, so that it stays sharp on dense screens

QIcon drawn(const std::function<void(QPainter&)>& draw) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    return QIcon(pixmap);
}

void drawBox(QPainter& painter) {
    painter.setPen(QPen(QColor(92, 72, 40), 2));
    painter.setBrush(QColor(214, 178, 120));
    painter.drawPolygon(QPolygonF({{4, 11}, {16, 6}, {28, 11}, {28, 25}, {16, 30}, {4, 25}}));
    painter.setBrush(QColor(236, 208, 160));
    painter.drawPolygon(QPolygonF({{4, 11}, {16, 6}, {28, 11}, {16, 16}}));
    painter.drawLine(QPointF(16, 16), QPointF(16, 30));
}

QIcon light(const QColor& colour, const QList<QPointF>& mark, const QList<QPointF>& second = {}) {
    return drawn([&](QPainter& painter) {
        painter.setPen(QPen(colour.darker(140), 2));
        painter.setBrush(colour);
        painter.drawEllipse(QRectF(3, 3, 26, 26));
        painter.setPen(QPen(Qt::white, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolyline(QPolygonF(mark));
        painter.drawPolyline(QPolygonF(second));
    });
}

/// The style reads its pictures from their files at each call: thousands of nodes share one.
QIcon standard(QStyle::StandardPixmap which) {
    static QHash<int, QIcon> known;
    QIcon& icon = known[which];
    if (icon.isNull())
        icon = QApplication::style()->standardIcon(which);
    return icon;
}

} // namespace

QIcon folder() {
    return standard(QStyle::SP_DirIcon);
}

QIcon openFolder() {
    return standard(QStyle::SP_DirOpenIcon);
}

QIcon page() {
    return standard(QStyle::SP_FileIcon);
}

QIcon item() {
    static const QIcon icon = drawn(drawBox);
    return icon;
}

QIcon flaggedItem() {
    static const QIcon icon = drawn([](QPainter& painter) {
        drawBox(painter);
        painter.setPen(QPen(QColor(70, 70, 70), 2));
        painter.drawLine(QPointF(19, 30), QPointF(19, 2));
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(200, 0, 30));
        painter.drawPolygon(QPolygonF({{20, 2}, {31, 7}, {20, 12}}));
    });
    return icon;
}

QIcon greenLight() {
    static const QIcon icon = light(QColor(36, 150, 64), {{9, 17}, {14, 22}, {23, 11}});
    return icon;
}

QIcon redLight() {
    static const QIcon icon =
        light(QColor(200, 44, 44), {{11, 11}, {21, 21}}, {{21, 11}, {11, 21}});
    return icon;
}

QIcon running() {
    static const QIcon icon = light(QColor(30, 100, 190), {{12, 10}, {22, 16}, {12, 22}, {12, 10}});
    return icon;
}

} // namespace controls::pictures
