#include "platform/controls/Tree.h"

#include "platform/values/Literals.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTimer>

namespace controls {

namespace {

constexpr int edge = 16; ///< pixels from the border where dragging scrolls

/// The node's picture and text on a plate, below the tip of an arrow.
QPixmap dragImage(const QWidget& widget, const QTreeWidgetItem& item) {
    const QFontMetrics metrics = widget.fontMetrics();
    const QString text = metrics.elidedText(item.text(0), Qt::ElideRight, 240);
    const int height = metrics.height() + 4;
    const QRect plate(12, 14, metrics.horizontalAdvance(text) + height + 12, height);
    QPixmap image(plate.right() + 2, plate.bottom() + 2);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(0.8);
    painter.setPen(widget.palette().color(QPalette::Mid));
    painter.setBrush(widget.palette().color(QPalette::Base));
    painter.drawRect(plate);
    item.icon(0).paint(&painter, plate.left() + 2, plate.top() + 1, height - 2, height - 2);
    painter.setFont(widget.font());
    painter.setPen(widget.palette().color(QPalette::Text));
    painter.drawText(plate.adjusted(height + 4, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, text);
    painter.setOpacity(1);
    painter.setPen(Qt::white);
    painter.setBrush(Qt::black);
    painter.drawPolygon(QPolygon({{0, 0}, {0, 15}, {4, 11}, {10, 11}}));
    return image;
}

} // namespace

bool Tree::takes(const QString& key, const QTreeWidgetItem* target) const {
    return target && mayDrop && mayDrop(key, keyOf(target));
}

// Cutting and pasting

void Tree::setCut(const QString& key) {
    const auto look = [this](const QString& which, bool faint) {
        if (QTreeWidgetItem* item = itemOf(which))
            item->setForeground(0, faint ? palette().brush(QPalette::Disabled, QPalette::Text)
                                         : QBrush());
    };
    if (m_cut == key)
        return;
    look(m_cut, false);
    m_cut = key;
    look(m_cut, true);
    cutChanged();
}

void Tree::cut() {
    const QString key = selectedKey();
    if (!key.isEmpty() && (!mayDrag || mayDrag(key)))
        setCut(key);
    else
        refused();
}

void Tree::paste() {
    const QString key = m_cut;
    if (key.isEmpty() || !takes(key, currentItem())) {
        refused();
        return;
    }
    const QString under = selectedKey();
    setCut({});
    dropped(key, under);
}

// Dragging

void Tree::mousePressEvent(QMouseEvent* event) {
    endDrag();
    m_moved = false;
    QTreeWidget::mousePressEvent(event);
    const QTreeWidgetItem* item = itemAt(event->pos());
    if (!mayDrop || event->button() != Qt::LeftButton || !item ||
        !visualItemRect(item).contains(event->pos()))
        return;
    if (!mayDrag || mayDrag(keyOf(item)))
        m_pressed = keyOf(item);
    m_pressedAt = event->pos();
}

void Tree::mouseMoveEvent(QMouseEvent* event) {
    if (!mayDrop || !event->buttons().testFlag(Qt::LeftButton)) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    // What may not be dragged stays, and nothing else gets selected on the way.
    if (m_pressed.isEmpty())
        return;
    if (m_dragged.isEmpty()) {
        if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        m_dragged = m_pressed;
        m_moved = true;
        m_image = QCursor(dragImage(*this, *itemOf(m_dragged)), 0, 0);
        m_scroll->start();
    }
    follow(event->pos());
}

void Tree::follow(const QPoint& at) {
    m_last = at;
    QTreeWidgetItem* under = viewport()->rect().contains(at) ? itemAt(at) : nullptr;
    const bool taken = takes(m_dragged, under);
    viewport()->setCursor(taken ? m_image : m_invalid);
    light(taken ? under : nullptr);
}

void Tree::light(QTreeWidgetItem* item) {
    if (m_target == item)
        return;
    QColor colour = palette().color(QPalette::Highlight);
    colour.setAlpha(80);
    if (m_target)
        m_target->setBackground(0, QBrush());
    m_target = item;
    if (m_target)
        m_target->setBackground(0, colour);
}

void Tree::scrollOn() {
    const auto scroll = [](QScrollBar* bar, int at, int length, int step) {
        const int before = bar->value();
        if (at < edge)
            bar->setValue(before - step);
        else if (at > length - edge)
            bar->setValue(before + step);
        return bar->value() != before;
    };
    const bool down = scroll(verticalScrollBar(), m_last.y(), viewport()->height(),
                             verticalScrollBar()->singleStep());
    const bool across =
        scroll(horizontalScrollBar(), m_last.x(), viewport()->width(), indentation());
    if (down || across)
        follow(m_last);
}

void Tree::endDrag() {
    m_scroll->stop();
    light(nullptr);
    m_dragged.clear();
    m_pressed.clear();
    viewport()->unsetCursor();
}

void Tree::mouseReleaseEvent(QMouseEvent* event) {
    const QString key = m_dragged;
    endDrag();
    if (!m_moved) {
        QTreeWidgetItem* item = itemAt(event->pos());
        QTreeWidget::mouseReleaseEvent(event);
        if (event->button() == Qt::LeftButton && item && item == currentItem() &&
            visualItemRect(item).contains(event->pos()) && isChoice(item))
            turnChoice(item);
        return;
    }
    setState(NoState);
    if (key.isEmpty()) // Escape ended the drag
        return;
    const QTreeWidgetItem* target =
        viewport()->rect().contains(event->pos()) ? itemAt(event->pos()) : nullptr;
    if (takes(key, target))
        dropped(key, keyOf(target));
}

void Tree::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidget::mouseDoubleClickEvent(event);
    const QTreeWidgetItem* item = itemAt(event->pos());
    if (event->button() == Qt::LeftButton && item && visualItemRect(item).contains(event->pos()))
        doubleClicked(keyOf(item));
}

void Tree::focusOutEvent(QFocusEvent* event) {
    endDrag();
    QTreeWidget::focusOutEvent(event);
}

} // namespace controls
