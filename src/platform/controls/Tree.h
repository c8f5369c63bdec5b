#pragma once

#include "platform/controls/Event.h"

#include <QCursor>
#include <QHash>
#include <QIcon>
#include <QTreeWidget>

#include <functional>
#include <optional>
#include <vector>

class QTimer;

namespace controls {

class DropMenu;

/// A node of a tree, told from the others by a key such as "C12" or "x0".
struct TreeNode {
    QString key;
    QString text;
    QIcon picture = {};
    QIcon openPicture = {}; ///< while its branch is open; none: the same
    QString said = {};      ///< what the picture says, for the tip and screen readers
    bool lazy = false;      ///< its children are asked for when it is opened for the first time
    std::optional<bool> chosen = {}; ///< a node to choose: its picture is a green or a red light
};

/// A tree of nodes with keys. A node is worked by keys as by the mouse: the arrows go and open,
/// Space turns a choice over, Enter does what a double click does, the context menu key opens the
/// menu. Where mayDrop is set, nodes are moved by dragging with the left button, the node that
/// would take them lit, or by cutting (Ctrl+X) and pasting (Ctrl+V); Escape ends either. The tree
/// says where a node was dropped; the screen moves it.
class Tree : public QTreeWidget {
  public:
    explicit Tree(QWidget* parent = nullptr);

    // Nodes. A key that isn't there is passed over.
    void clearNodes();
    /// Adds nodes behind those under a parent; an empty parent is the top. Below a lazy node that
    /// has never been opened nothing is added: it will be asked for.
    void addNodes(const QString& parent, const std::vector<TreeNode>& nodes);
    void addNode(const QString& parent, const TreeNode& node) { addNodes(parent, {node}); }
    /// At its place among siblings that stand in the order of their texts.
    void addNodeInOrder(const QString& parent, const TreeNode& node);
    void removeNode(const QString& key);
    /// Hangs a node with all below it under another one, in front of that one's child number
    /// `place`. What was open stays open.
    void moveNode(const QString& key, const QString& under, int place);
    /// Asked for the children of a lazy node.
    std::function<std::vector<TreeNode>(const QString& key)> children;

    bool hasNode(const QString& key) const { return m_items.contains(key); }
    QString parentOf(const QString& key) const; ///< empty at the top
    /// Of a lazy node that was never opened: none.
    QStringList childrenOf(const QString& key) const;
    bool isAsked(const QString& key) const; ///< its children are there; true unless lazy
    QString textOf(const QString& key) const;
    void setText(const QString& key, const QString& text);
    void setPictures(const QString& key, const QIcon& picture, const QIcon& openPicture);
    /// Something to be said of a node: it stands in italics, with the remark as its tip. Empty: as
    /// usual.
    void setRemark(const QString& key, const QString& remark);
    bool hasRemark(const QString& key) const;

    bool isOpen(const QString& key) const;
    void open(const QString& key, bool on = true);

    QString selectedKey() const; ///< empty where nothing is selected
    /// Selects a node and opens what is above it, without an event.
    bool selectNode(const QString& key);

    bool isChosen(const QString& key) const;
    void setChosen(const QString& key, bool chosen);

    void cut();
    void paste();
    bool hasCut() const { return !m_cut.isEmpty(); }
    /// Whether a node may be moved; if not set, any may.
    std::function<bool(const QString& key)> mayDrag;
    /// Whether a node may be dropped on another; where it isn't set, nothing is dragged.
    std::function<bool(const QString& key, const QString& under)> mayDrop;
    /// Shown while a node is dragged over a place that doesn't take it.
    void setInvalidCursor(const QCursor& cursor) { m_invalid = cursor; }
    /// Also to the side, so that deep branches come into view.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    Event<QString> selected;         ///< the user went to a node
    Event<QString> doubleClicked;    ///< also Enter
    Event<QString> choiceTurned;     ///< the user turned a choice over
    Event<QString, QString> dropped; ///< node, new parent
    Event<> cutChanged;
    Event<> refused; ///< the user cut or pasted what can't be
    /// The context menu opens: add what the screen offers for the selected node.
    Event<DropMenu&> menuAsked;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    static QString keyOf(const QTreeWidgetItem* item);
    QTreeWidgetItem* itemOf(const QString& key) const { return m_items.value(key); }
    static bool isChoice(const QTreeWidgetItem* item);
    QTreeWidgetItem* make(const TreeNode& node);
    void showPicture(QTreeWidgetItem* item) const;
    void ask(QTreeWidgetItem* item);
    void forget(QTreeWidgetItem* item);
    void turnChoice(QTreeWidgetItem* item);
    /// Pixels that a branch needs, from the left border of the tree.
    int widthBelow(const QTreeWidgetItem* top) const;
    void widen(const QTreeWidgetItem* top);

    bool takes(const QString& key, const QTreeWidgetItem* target) const;
    void setCut(const QString& key);
    void follow(const QPoint& at);
    void light(QTreeWidgetItem* item);
    void endDrag();
    void scrollOn();

    QHash<QString, QTreeWidgetItem*> m_items;
    DropMenu* m_menu;
    int m_byProgram = 0;

    QString m_pressed; ///< may be dragged
    QString m_dragged;
    bool m_moved = false; ///< a drag began since the button went down
    QString m_cut;
    QTreeWidgetItem* m_target = nullptr; ///< would take what is dragged
    QPoint m_pressedAt;
    QPoint m_last;
    QCursor m_image;
    QCursor m_invalid = QCursor(Qt::ForbiddenCursor);
    QTimer* m_scroll;
};

} // namespace controls
