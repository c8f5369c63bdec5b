#include "jobs/AssemblyTreeView.h"

#include "jobs/AssemblyRules.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

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
constexpr int strayRole = Qt::UserRole + 1;
constexpr int edge = 16; ///< pixels from the border where dragging scrolls

/// The record's icon and text on a plate, below the tip of an arrow.
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

bool isBelow(const QTreeWidgetItem* item, const QTreeWidgetItem* top) {
    while (item && item != top)
        item = item->parent();
    return item == top;
}

bool isStray(const QTreeWidgetItem* item) {
    return item->data(0, strayRole).toBool();
}

/// Marks a record whose parent, which stands somewhere else, is told by the tip; 0 takes the mark
/// away.
void markStray(QTreeWidgetItem& item, qint64 parent) {
    if (parent == 0 && !isStray(&item))
        return;
    QFont font = item.font(0);
    font.setItalic(parent != 0);
    item.setFont(0, font);
    item.setData(0, strayRole, parent != 0);
    item.setToolTip(0, parent == 0 ? QString()
                                   : u"A part of %1, which isn't shown above it"_s.arg(parent));
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
    auto* root = new QTreeWidgetItem({u"Root"_s});
    root->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
    root->setData(0, numberRole, qint64{0});
    m_items.insert(0, root);
    for (const AssemblyNode& node : nodes) {
        auto* item = new QTreeWidgetItem(m_items.value(node.under), {node.text()});
        item->setIcon(0, record);
        item->setData(0, numberRole, node.number);
        if (node.isStray())
            markStray(*item, node.parent);
        m_items.insert(node.number, item);
    }
    addTopLevelItem(root);
    expandAll();
    header()->setMinimumSectionSize(widthBelow(root));
}

int AssemblyTreeView::widthBelow(const QTreeWidgetItem* top) const {
    int level = 1;
    for (const auto* up = top->parent(); up; up = up->parent())
        ++level;
    struct Place {
        const QTreeWidgetItem* item;
        int level;
    };
    std::vector<Place> open{{top, level}};
    const int frame = style()->pixelMetric(QStyle::PM_SmallIconSize) + 24;
    int width = 0;
    while (!open.empty()) {
        const Place at = open.back();
        open.pop_back();
        width = std::max(width, at.level * indentation() + frame +
                                    fontMetrics().horizontalAdvance(at.item->text(0)));
        for (int i = 0; i < at.item->childCount(); ++i)
            open.push_back({at.item->child(i), at.level + 1});
    }
    return width;
}

void AssemblyTreeView::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    // Only now the tree knows its size.
    QTimer::singleShot(0, this, [this] {
        horizontalScrollBar()->setValue(0);
        scrollTo(currentIndex());
    });
}

void AssemblyTreeView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int before = horizontalScrollBar()->value();
    QTreeWidget::scrollTo(index, hint);
    // The base brings the column into view, of which a deep branch may be far to the right.
    horizontalScrollBar()->setValue(before);
    const QRect place = visualRect(index);
    const int right = place.left() + std::min(place.width(), sizeHintForIndex(index).width());
    if (right > viewport()->width())
        horizontalScrollBar()->setValue(before + right - viewport()->width());
    const int left = visualRect(index).left() - indentation();
    if (left < 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() + left);
}

void AssemblyTreeView::selectNumber(qint64 number) {
    if (QTreeWidgetItem* item = itemFor(number)) {
        setCurrentItem(item);
        scrollTo(indexFromItem(item));
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
    // What is taken out of the tree forgets that it was open.
    std::vector<QTreeWidgetItem*> open;
    for (QTreeWidgetItemIterator at(item, QTreeWidgetItemIterator::All); *at && isBelow(*at, item);
         ++at) {
        if ((*at)->isExpanded())
            open.push_back(*at);
    }
    item->parent()->removeChild(item);
    markStray(*item, 0);
    int place = 0;
    while (place < parent->childCount() && !isStray(parent->child(place)) &&
           numberOf(parent->child(place)) < number)
        ++place;
    parent->insertChild(place, item);
    for (QTreeWidgetItem* each : open)
        each->setExpanded(true);
    parent->setExpanded(true);
    header()->setMinimumSectionSize(std::max(header()->minimumSectionSize(), widthBelow(item)));
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
    m_moved = false;
    QTreeWidget::mousePressEvent(event);
    m_pressed = 0;
    const QTreeWidgetItem* item = itemAt(event->pos());
    if (event->button() != Qt::LeftButton || !item || !visualItemRect(item).contains(event->pos()))
        return;
    m_pressed = std::max(qint64{0}, numberOf(item));
    m_pressedAt = event->pos();
}

void AssemblyTreeView::mouseMoveEvent(QMouseEvent* event) {
    if (!event->buttons().testFlag(Qt::LeftButton)) {
        QTreeWidget::mouseMoveEvent(event);
        return;
    }
    // The root stays where it is, and nothing else gets selected on the way.
    if (m_pressed == 0)
        return;
    if (m_dragged == 0) {
        if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        m_dragged = m_pressed;
        m_moved = true;
        m_image = QCursor(dragImage(*this, *itemFor(m_dragged)), 0, 0);
        m_scroll->start();
    }
    follow(event->pos());
}

void AssemblyTreeView::follow(const QPoint& at) {
    m_last = at;
    QTreeWidgetItem* under = viewport()->rect().contains(at) ? itemAt(at) : nullptr;
    const bool taken = takes(m_dragged, under);
    viewport()->setCursor(taken ? m_image : m_invalid);
    showTarget(taken ? under : nullptr);
}

void AssemblyTreeView::showTarget(QTreeWidgetItem* item) {
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

void AssemblyTreeView::scrollOn() {
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

void AssemblyTreeView::endDrag() {
    m_scroll->stop();
    showTarget(nullptr);
    m_dragged = 0;
    m_pressed = 0;
    viewport()->unsetCursor();
}

void AssemblyTreeView::mouseReleaseEvent(QMouseEvent* event) {
    const qint64 number = m_dragged;
    endDrag();
    if (!m_moved) {
        QTreeWidget::mouseReleaseEvent(event);
        return;
    }
    setState(NoState);
    if (number == 0) // Escape ended the drag
        return;
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
