#include "platform/controls/Tree.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/Guard.h"
#include "platform/controls/Pictures.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>

namespace controls {

namespace {

enum Role {
    KeyRole = Qt::UserRole,
    LazyRole, ///< still to be asked for its children
    PictureRole,
    OpenPictureRole,
    ChosenRole,
    RemarkRole,
};

bool isBelow(const QTreeWidgetItem* item, const QTreeWidgetItem* top) {
    while (item && item != top)
        item = item->parent();
    return item == top;
}

} // namespace

Tree::Tree(QWidget* parent)
    : QTreeWidget(parent), m_menu(new DropMenu(this)), m_scroll(new QTimer(this)) {
    setColumnCount(1);
    setHeaderHidden(true);
    setSelectionMode(SingleSelection);
    setUniformRowHeights(true);
    setTabKeyNavigation(false);
    setDragEnabled(false);
    m_scroll->setInterval(60);
    connect(m_scroll, &QTimer::timeout, this, [this] { scrollOn(); });
    connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
        ask(item);
        showPicture(item);
    });
    connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) {
        showPicture(item);
        // What is selected stays in sight.
        if (currentItem() && currentItem() != item && isBelow(currentItem(), item))
            setCurrentItem(item);
    });
    connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (m_byProgram == 0 && item)
            selected(keyOf(item));
    });
}

bool Tree::isChoice(const QTreeWidgetItem* item) {
    return item->data(0, ChosenRole).isValid();
}

QString Tree::keyOf(const QTreeWidgetItem* item) {
    return item ? item->data(0, KeyRole).toString() : QString();
}

// Nodes

void Tree::clearNodes() {
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    endDrag();
    setCut({});
    m_items.clear();
    clear();
    header()->setMinimumSectionSize(0);
}

QTreeWidgetItem* Tree::make(const TreeNode& node) {
    auto* item = new QTreeWidgetItem({node.text});
    item->setData(0, KeyRole, node.key);
    item->setData(0, PictureRole, node.picture);
    item->setData(0, OpenPictureRole, node.openPicture);
    if (!node.said.isEmpty()) {
        item->setData(0, Qt::AccessibleDescriptionRole, node.said);
        item->setToolTip(0, node.said);
    }
    if (node.chosen)
        item->setData(0, ChosenRole, *node.chosen);
    if (node.lazy) {
        item->setData(0, LazyRole, true);
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    }
    showPicture(item);
    m_items.insert(node.key, item);
    return item;
}

void Tree::showPicture(QTreeWidgetItem* item) const {
    const QVariant chosen = item->data(0, ChosenRole);
    if (isChoice(item)) {
        item->setIcon(0, chosen.toBool() ? pictures::greenLight() : pictures::redLight());
        item->setData(0, Qt::AccessibleDescriptionRole,
                      chosen.toBool() ? u"chosen"_s : u"not chosen"_s);
        return;
    }
    const QIcon open = item->data(0, OpenPictureRole).value<QIcon>();
    const bool showsOpen = item->isExpanded() && !open.isNull();
    item->setIcon(0, showsOpen ? open : item->data(0, PictureRole).value<QIcon>());
}

void Tree::addNodes(const QString& parent, const std::vector<TreeNode>& nodes) {
    QTreeWidgetItem* above = parent.isEmpty() ? invisibleRootItem() : itemOf(parent);
    if (!above || nodes.empty())
        return;
    if (above->data(0, LazyRole).toBool()) {
        above->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
        return;
    }
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    QList<QTreeWidgetItem*> made;
    for (const TreeNode& node : nodes)
        made << make(node);
    above->addChildren(made);
    if (above != invisibleRootItem()) {
        widen(above);
        return;
    }
    for (const QTreeWidgetItem* item : made)
        widen(item);
}

void Tree::addNodeInOrder(const QString& parent, const TreeNode& node) {
    addNode(parent, node);
    QTreeWidgetItem* item = itemOf(node.key);
    if (!item)
        return;
    QTreeWidgetItem* above = item->parent() ? item->parent() : invisibleRootItem();
    int place = 0;
    while (place < above->childCount() - 1 &&
           values::compareText(above->child(place)->text(0), node.text) <= 0)
        ++place;
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    above->removeChild(item);
    above->insertChild(place, item);
}

void Tree::forget(QTreeWidgetItem* item) {
    for (int i = 0; i < item->childCount(); ++i)
        forget(item->child(i));
    m_items.remove(keyOf(item));
}

void Tree::removeNode(const QString& key) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item)
        return;
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    endDrag();
    if (itemOf(m_cut) && isBelow(itemOf(m_cut), item))
        setCut({});
    forget(item);
    delete item;
}

void Tree::moveNode(const QString& key, const QString& under, int place) {
    QTreeWidgetItem* item = itemOf(key);
    QTreeWidgetItem* parent = itemOf(under);
    if (!item || !parent || !item->parent())
        return;
    // What is taken out of the tree forgets that it was open.
    std::vector<QTreeWidgetItem*> open;
    for (QTreeWidgetItemIterator at(item, QTreeWidgetItemIterator::All); *at && isBelow(*at, item);
         ++at) {
        if ((*at)->isExpanded())
            open.push_back(*at);
    }
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    item->parent()->removeChild(item);
    parent->insertChild(std::clamp(place, 0, parent->childCount()), item);
    for (QTreeWidgetItem* each : open)
        each->setExpanded(true);
    parent->setExpanded(true);
    widen(item);
}

void Tree::ask(QTreeWidgetItem* item) {
    if (!item->data(0, LazyRole).toBool() || !children)
        return;
    const QString key = keyOf(item);
    bool answered = false;
    guarded([&] {
        const std::vector<TreeNode> found = children(key);
        if (!itemOf(key))
            return;
        item->setData(0, LazyRole, false);
        item->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
        addNodes(key, found);
        answered = true;
    });
    if (!answered && itemOf(key))
        item->setExpanded(false);
}

QString Tree::parentOf(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item ? keyOf(item->parent()) : QString();
}

QStringList Tree::childrenOf(const QString& key) const {
    QStringList keys;
    const QTreeWidgetItem* item = key.isEmpty() ? invisibleRootItem() : itemOf(key);
    for (int i = 0; item && i < item->childCount(); ++i)
        keys << keyOf(item->child(i));
    return keys;
}

bool Tree::isAsked(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item && !item->data(0, LazyRole).toBool();
}

QString Tree::textOf(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item ? item->text(0) : QString();
}

void Tree::setText(const QString& key, const QString& text) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item)
        return;
    item->setText(0, text);
    widen(item);
}

void Tree::setPictures(const QString& key, const QIcon& picture, const QIcon& openPicture) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item)
        return;
    item->setData(0, PictureRole, picture);
    item->setData(0, OpenPictureRole, openPicture);
    showPicture(item);
}

void Tree::setRemark(const QString& key, const QString& remark) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item || item->data(0, RemarkRole).toString() == remark)
        return;
    QFont italic = item->font(0);
    italic.setItalic(!remark.isEmpty());
    item->setFont(0, italic);
    item->setData(0, RemarkRole, remark);
    item->setToolTip(0, remark);
}

bool Tree::hasRemark(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item && !item->data(0, RemarkRole).toString().isEmpty();
}

bool Tree::isOpen(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item && item->isExpanded();
}

void Tree::open(const QString& key, bool on) {
    if (QTreeWidgetItem* item = itemOf(key))
        item->setExpanded(on);
}

QString Tree::selectedKey() const {
    return keyOf(currentItem());
}

bool Tree::selectNode(const QString& key) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item)
        return false;
    const QScopedValueRollback quiet(m_byProgram, m_byProgram + 1);
    for (QTreeWidgetItem* above = item->parent(); above; above = above->parent())
        above->setExpanded(true);
    setCurrentItem(item);
    scrollTo(indexFromItem(item));
    return true;
}

// Choices

bool Tree::isChosen(const QString& key) const {
    const QTreeWidgetItem* item = itemOf(key);
    return item && item->data(0, ChosenRole).toBool();
}

void Tree::setChosen(const QString& key, bool chosen) {
    QTreeWidgetItem* item = itemOf(key);
    if (!item)
        return;
    item->setData(0, ChosenRole, chosen);
    showPicture(item);
}

void Tree::turnChoice(QTreeWidgetItem* item) {
    const QString key = keyOf(item);
    setChosen(key, !isChosen(key));
    choiceTurned(key);
}

// Keys and looks

void Tree::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    QTreeWidgetItem* item = currentItem();
    if (mayDrop && event->matches(QKeySequence::Cut)) {
        cut();
    } else if (mayDrop && event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->key() == Qt::Key_Escape && !m_dragged.isEmpty()) {
        endDrag();
    } else if (event->key() == Qt::Key_Escape && !m_cut.isEmpty()) {
        setCut({});
    } else if (enter && item && doubleClicked.isConnected()) {
        doubleClicked(keyOf(item));
    } else if (enter) {
        event->ignore();
    } else if (event->key() == Qt::Key_Space && item && isChoice(item)) {
        turnChoice(item);
    } else if (event->key() == Qt::Key_Asterisk && children) {
        // To open all below would ask for each branch by itself.
        event->accept();
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

void Tree::contextMenuEvent(QContextMenuEvent* event) {
    m_menu->clear();
    menuAsked(*m_menu);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    m_menu->open(
        viewport()->mapToGlobal(byKey ? visualRect(currentIndex()).center() : event->pos()));
}

int Tree::widthBelow(const QTreeWidgetItem* top) const {
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

void Tree::widen(const QTreeWidgetItem* top) {
    // Even the same size would lay all nodes out again.
    const int width = widthBelow(top);
    if (width > header()->minimumSectionSize())
        header()->setMinimumSectionSize(width);
}

void Tree::showEvent(QShowEvent* event) {
    QTreeWidget::showEvent(event);
    // Only now the tree knows its size.
    QTimer::singleShot(0, this, [this] {
        horizontalScrollBar()->setValue(0);
        scrollTo(currentIndex());
    });
}

void Tree::scrollTo(const QModelIndex& index, ScrollHint hint) {
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

} // namespace controls
