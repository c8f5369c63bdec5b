#include "jobs/AssemblyTreeView.h"

#include "jobs/AssemblyRules.h"
#include "platform/screen/MsgBox.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>

namespace jobs {

namespace {

constexpr int numberRole = Qt::UserRole;
constexpr int edge = 16; ///< pixels from the border where dragging scrolls

QPixmap dragImage(const QWidget& widget, const QTreeWidgetItem& item) {
    const QString text = widget.fontMetrics().elidedText(item.text(0), Qt::ElideRight, 240);
    const int height = widget.fontMetrics().height() + 4;
    QPixmap image(widget.fontMetrics().horizontalAdvance(text) + height + 24, height + 12);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setOpacity(0.8);
    item.icon(0).paint(&painter, 14, 10, height, height);
    painter.setFont(widget.font());
    painter.setPen(widget.palette().color(QPalette::Text));
    painter.drawText(QRect(18 + height, 10, image.width() - height - 18, height),
                     Qt::AlignLeft | Qt::AlignVCenter, text);
    painter.setOpacity(1);
    painter.drawPolyline(QPolygon({{0, 9}, {0, 0}, {9, 0}}));
    painter.drawLine(0, 0, 10, 10);
    return image;
}

} // namespace

AssemblyTreeView::AssemblyTreeView(QWidget* parent)
    : QTreeWidget(parent), m_scroll(new QTimer(this)) {
    setColumnCount(1);
    setHeaderHidden(true);
    setSelectionMode(SingleSelection);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    setTabKeyNavigation(false);
    setDragEnabled(false);
    m_scroll->setInterval(60);
    connect(m_scroll, &QTimer::timeout, this, [this] { scrollOn(); });
}

qint64 AssemblyTreeView::numberOf(const QTreeWidgetItem* item) {
    return item ? item->data(0, numberRole).toLongLong() : -1;
}

QTreeWidgetItem* AssemblyTreeView::itemFor(qint64 number) const {
    return m_items.value(number);
}

void AssemblyTreeView::clearNodes() {
    endDrag();
    m_pressed = 0;
    setCut(0);
    m_items.clear();
    clear();
}

void AssemblyTreeView::showNodes(const std::vector<AssemblyNode>& nodes) {
    clearNodes();
    const QIcon record = style()->standardIcon(QStyle::SP_FileIcon);
    auto* root = new QTreeWidgetItem({QStringLiteral("Root")});
    root->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
    root->setData(0, numberRole, qint64{0});
    m_items.insert(0, root);
    for (const AssemblyNode& node : nodes) {
        auto* item = new QTreeWidgetItem(m_items.value(node.under), {node.text()});
        item->setIcon(0, record);
        item->setData(0, numberRole, node.number);
        m_items.insert(node.number, item);
    }
    addTopLevelItem(root);
    expandAll();
}

void AssemblyTreeView::selectNumber(qint64 number) {
    if (QTreeWidgetItem* item = itemFor(number)) {
        setCurrentItem(item);
        scrollToItem(item);
    }
}

qint64 AssemblyTreeView::selectedNumber() const {
    return numberOf(currentItem());
}

void AssemblyTreeView::moveNumber(qint64 number, qint64 under) {
    QTreeWidgetItem* item = itemFor(number);
    QTreeWidgetItem* parent = itemFor(under);
    if (!item || !parent || !item->parent())
        return;
    std::vector<QTreeWidgetItem*> open;
    for (QTreeWidgetItem* each : std::as_const(m_items)) {
        if (each->isExpanded())
            open.push_back(each);
    }
    item->parent()->removeChild(item);
    int place = 0;
    while (place < parent->childCount() && numberOf(parent->child(place)) < number)
        ++place;
    parent->insertChild(place, item);
    // What is taken out of the tree forgets that it was open.
    for (QTreeWidgetItem* each : open)
        each->setExpanded(true);
    parent->setExpanded(true);
    selectNumber(number);
}

bool AssemblyTreeView::takes(qint64 number, const QTreeWidgetItem* target) const {
    return target && (!mayDrop || mayDrop(number, numberOf(target)));
}

// Cutting and pasting

void AssemblyTreeView::setCut(qint64 number) {
    const auto look = [this](qint64 which, bool faint) {
        if (QTreeWidgetItem* item = which > 0 ? itemFor(which) : nullptr)
            item->setForeground(0, faint ? palette().brush(QPalette::Disabled, QPalette::Text)
                                         : QBrush());
    };
    look(m_cut, false);
    m_cut = number;
    look(m_cut, true);
    cutChanged();
}

void AssemblyTreeView::cut() {
    if (selectedNumber() > 0)
        setCut(selectedNumber());
    else
        screen::beep();
}

void AssemblyTreeView::paste() {
    const qint64 number = m_cut;
    if (number <= 0 || !takes(number, currentItem())) {
        screen::beep();
        return;
    }
    const qint64 under = selectedNumber();
    setCut(0);
    dropped(number, under);
}

void AssemblyTreeView::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Cut)) {
        cut();
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->key() == Qt::Key_Escape && m_dragged > 0) {
        endDrag();
    } else if (event->key() == Qt::Key_Escape && m_cut > 0) {
        setCut(0);
    } else if (enter && selectedNumber() > 0) {
        opened(selectedNumber());
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

// Dragging

void AssemblyTreeView::mousePressEvent(QMouseEvent* event) {
    endDrag();
    QTreeWidget::mousePressEvent(event);
    m_pressed = 0;
    const QTreeWidgetItem* item = itemAt(event->pos());
    if (event->button() != Qt::LeftButton || !item || !visualItemRect(item).contains(event->pos()))
        return;
    m_pressed = std::max(qint64{0}, numberOf(item));
    m_pressedAt = event->pos();
}

void AssemblyTreeView::mouseMoveEvent(QMouseEvent* event) {
    if (m_pressed == 0 || !event->buttons().testFlag(Qt::LeftButton)) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    if (m_dragged == 0) {
        if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        m_dragged = m_pressed;
        m_image = QCursor(dragImage(*this, *itemFor(m_dragged)), 0, 0);
        m_scroll->start();
    }
    follow(event->pos());
}

void AssemblyTreeView::follow(const QPoint& at) {
    m_last = at;
    viewport()->setCursor(takes(m_dragged, itemAt(at)) ? m_image : m_invalid);
}

void AssemblyTreeView::scrollOn() {
    QScrollBar* bar = verticalScrollBar();
    const int before = bar->value();
    if (m_last.y() < edge)
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
    else if (m_last.y() > viewport()->height() - edge)
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    if (bar->value() != before)
        follow(m_last);
}

void AssemblyTreeView::endDrag() {
    m_scroll->stop();
    m_dragged = 0;
    m_pressed = 0;
    viewport()->unsetCursor();
}

void AssemblyTreeView::mouseReleaseEvent(QMouseEvent* event) {
    const qint64 number = m_dragged;
    endDrag();
    if (number == 0) {
        QTreeWidget::mouseReleaseEvent(event);
        return;
    }
    setState(NoState);
    const QTreeWidgetItem* target =
        viewport()->rect().contains(event->pos()) ? itemAt(event->pos()) : nullptr;
    if (takes(number, target))
        dropped(number, numberOf(target));
}

void AssemblyTreeView::mouseDoubleClickEvent(QMouseEvent* event) {
    QTreeWidget::mouseDoubleClickEvent(event);
    const qint64 number = numberOf(itemAt(event->pos()));
    if (event->button() == Qt::LeftButton && number > 0)
        opened(number);
}

void AssemblyTreeView::focusOutEvent(QFocusEvent* event) {
    endDrag();
    QTreeWidget::focusOutEvent(event);
}

} // namespace jobs
