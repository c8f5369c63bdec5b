#include "core/ToolIcons.h"

#include "platform/values/Literals.h"

#include <QPainter>
#include <QPainterPath>

namespace core {

namespace {

const QColor ink(0x35, 0x4a, 0x5f);
const QColor blue(0x3c, 0x82, 0xc4);
const QColor green(0x4c, 0xa0, 0x5a);
const QColor amber(0xd9, 0x8f, 0x2b);
const QColor red(0xc2, 0x4d, 0x43);
const QColor grey(0x8a, 0x96, 0xa3);
const QColor paper(0xfb, 0xfb, 0xf8);

/// All pictures are drawn on a field of 32 by 32.
using Draw = void (*)(QPainter&);

void sheet(QPainter& p, const QColor& edge = ink) {
    p.setPen(QPen(edge, 1.6));
    p.setBrush(paper);
    p.drawRoundedRect(QRectF(6, 3, 20, 26), 2, 2);
}

void lines(QPainter& p, int count, double from = 9) {
    p.setPen(QPen(grey, 1.6));
    for (int i = 0; i < count; ++i)
        p.drawLine(QPointF(10, from + i * 4.5), QPointF(22, from + i * 4.5));
}

void letter(QPainter& p, const QString& text, const QRectF& where, const QColor& colour) {
    QFont font = p.font();
    font.setPixelSize(static_cast<int>(where.height()));
    font.setBold(true);
    p.setFont(font);
    p.setPen(colour);
    p.drawText(where, Qt::AlignCenter, text);
}

void gear(QPainter& p, const QPointF& centre, double radius, const QColor& colour) {
    p.setPen(QPen(colour, radius * 0.42));
    for (int tooth = 0; tooth < 8; ++tooth) {
        const double angle = tooth * M_PI / 4;
        const QPointF direction(std::cos(angle), std::sin(angle));
        p.drawLine(centre + direction * radius * 0.7, centre + direction * radius * 1.15);
    }
    p.setPen(QPen(colour, radius * 0.4));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(centre, radius * 0.62, radius * 0.62);
}

void clock(QPainter& p, const QPointF& centre, double radius) {
    p.setPen(QPen(ink, 1.8));
    p.setBrush(paper);
    p.drawEllipse(centre, radius, radius);
    p.setPen(QPen(red, 1.8));
    p.drawLine(centre, centre + QPointF(0, -radius * 0.65));
    p.drawLine(centre, centre + QPointF(radius * 0.5, radius * 0.2));
}

void person(QPainter& p, const QPointF& head, double size, const QColor& colour) {
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    p.drawEllipse(head, size, size);
    QPainterPath body;
    body.addRoundedRect(QRectF(head.x() - size * 1.7, head.y() + size * 1.25, size * 3.4, size * 3),
                        size * 1.4, size * 1.4);
    p.drawPath(body);
}

void drawEstimate(QPainter& p) {
    sheet(p);
    lines(p, 3);
    letter(p, u"$"_s, QRectF(12, 16, 18, 15), green);
}

void drawJob(QPainter& p) {
    sheet(p);
    lines(p, 2);
    gear(p, {20, 22}, 7, blue);
}

void drawSchedule(QPainter& p) {
    p.setPen(QPen(ink, 1.6));
    p.setBrush(paper);
    p.drawRect(QRectF(3, 5, 26, 22));
    p.setPen(Qt::NoPen);
    p.setBrush(blue);
    p.drawRect(QRectF(6, 9, 11, 4));
    p.setBrush(green);
    p.drawRect(QRectF(12, 15, 10, 4));
    p.setBrush(amber);
    p.drawRect(QRectF(18, 21, 9, 4));
}

void drawInvoice(QPainter& p) {
    sheet(p);
    lines(p, 4);
    p.setPen(QPen(red, 2.2));
    p.drawLine(QPointF(15, 26), QPointF(23, 26));
}

void drawTime(QPainter& p) {
    clock(p, {16, 16}, 12);
}

void drawRequest(QPainter& p) {
    sheet(p);
    lines(p, 2);
    letter(p, u"?"_s, QRectF(9, 14, 16, 16), amber);
}

void drawPayable(QPainter& p) {
    p.setPen(QPen(ink, 1.6));
    p.setBrush(QColor(0xdc, 0xec, 0xdd));
    p.drawRoundedRect(QRectF(2, 8, 28, 16), 2, 2);
    p.setBrush(paper);
    p.drawEllipse(QPointF(16, 16), 5.5, 5.5);
    letter(p, u"$"_s, QRectF(10, 10.5, 12, 11), green);
}

void drawPurchase(QPainter& p) {
    p.setPen(QPen(ink, 2));
    p.drawPolyline(QPolygonF({{3, 6}, {8, 6}, {12, 20}, {25, 20}}));
    p.setBrush(amber);
    p.drawPolygon(QPolygonF({{9.5, 9}, {28, 9}, {25, 17}, {11.5, 17}}));
    p.setBrush(ink);
    p.drawEllipse(QPointF(14, 25), 2.2, 2.2);
    p.drawEllipse(QPointF(23, 25), 2.2, 2.2);
}

void drawCustomer(QPainter& p) {
    person(p, {11, 10}, 4, blue);
    person(p, {22, 12}, 3.6, grey);
}

void drawEmployee(QPainter& p) {
    person(p, {16, 12}, 5, amber);
    p.setBrush(ink);
    p.drawPie(QRectF(9.5, 4, 13, 13), 0, 180 * 16);
}

void drawVendor(QPainter& p) {
    p.setPen(QPen(ink, 1.4));
    p.setBrush(green);
    p.drawRect(QRectF(2, 9, 17, 13));
    p.setBrush(paper);
    p.drawPolygon(QPolygonF({{19, 13}, {25, 13}, {30, 18}, {30, 22}, {19, 22}}));
    p.setBrush(ink);
    p.drawEllipse(QPointF(8, 24), 3, 3);
    p.drawEllipse(QPointF(24, 24), 3, 3);
}

void drawInventory(QPainter& p) {
    p.setPen(QPen(ink, 1.4));
    p.setBrush(amber);
    p.drawRect(QRectF(3, 17, 12, 11));
    p.drawRect(QRectF(17, 17, 12, 11));
    p.drawRect(QRectF(10, 5, 12, 11));
}

void drawSpareParts(QPainter& p) {
    gear(p, {12, 13}, 8, ink);
    gear(p, {23, 23}, 5.5, grey);
}

void drawBarcode(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(paper);
    p.drawRect(QRectF(2, 6, 28, 20));
    p.setBrush(Qt::black);
    constexpr double bars[][2] = {{4, 2}, {8, 1}, {10.5, 3}, {15, 1}, {18, 2}, {22, 1}, {24, 3}};
    for (const auto& bar : bars)
        p.drawRect(QRectF(bar[0], 8, bar[1], 16));
}

void drawAutomatic(QPainter& p) {
    clock(p, {13, 13}, 9);
    gear(p, {23, 23}, 6, blue);
}

void drawBenchline(QPainter& p) {
    p.setPen(QPen(ink, 1.4));
    p.setBrush(QColor(0xb5, 0x83, 0x55));
    p.drawRect(QRectF(2, 14, 28, 4));
    p.drawRect(QRectF(5, 18, 3, 10));
    p.drawRect(QRectF(24, 18, 3, 10));
    p.setBrush(grey);
    p.drawRect(QRectF(10, 7, 8, 7));
    p.drawRect(QRectF(18, 9, 5, 3));
}

void drawHistory(QPainter& p) {
    p.setPen(QPen(ink, 1.4));
    p.setBrush(QColor(0xdd, 0xd4, 0xb8));
    p.drawRect(QRectF(4, 8, 24, 20));
    p.setBrush(amber);
    p.drawRect(QRectF(4, 4, 11, 4));
    clock(p, {16, 18}, 7);
}

void drawProgram(QPainter& p) {
    p.setPen(Qt::NoPen);
    p.setBrush(blue);
    p.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);
    gear(p, {16, 16}, 10, paper);
}

struct Picture {
    int button;
    Draw draw;
};

constexpr Picture pictures[] = {
    {1, drawEstimate},    {2, drawJob},       {3, drawSchedule},   {4, drawInvoice},
    {5, drawTime},        {7, drawRequest},   {8, drawPayable},    {9, drawPurchase},
    {11, drawCustomer},   {12, drawEmployee}, {13, drawVendor},    {15, drawInventory},
    {16, drawSpareParts}, {18, drawBarcode},  {19, drawAutomatic}, {20, drawBenchline},
    {22, drawHistory},
};

QIcon drawn(Draw draw) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 32.0, size / 32.0);
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon toolIcon(int button) {
    for (const Picture& picture : pictures) {
        if (picture.button == button)
            return drawn(picture.draw);
    }
    return {};
}

QIcon programIcon() {
    return drawn(drawProgram);
}

} // namespace core
