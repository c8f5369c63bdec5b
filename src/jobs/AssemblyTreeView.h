#pragma once

#include "platform/controls/Event.h"

#include <QCursor>
#include <QHash>
#include <QTreeWidget>

#include <functional>
#include <vector>

class QTimer;

namespace jobs {

struct AssemblyNode;

/// A tree of numbered records under one root, moved by dragging with the left button, or by cutting
/// (Ctrl+X) and pasting (Ctrl+V). It says where a record was dropped; the screen moves it.
class AssemblyTreeView : public QTreeWidget {
  public:
    explicit AssemblyTreeView(QWidget* parent = nullptr);

    /// Shows records, each behind the one that it stands under, all branches open.
    void showNodes(const std::vector<AssemblyNode>& nodes);
    void clearNodes();
    void selectNumber(qint64 number);
    /// The selected record; 0 for the root, -1 where nothing is selected.
    qint64 selectedNumber() const;
    /// Hangs a record under another one (0: the root), at the place of its number.
    void moveNumber(qint64 number, qint64 under);

    void cut();
    void paste();
    bool hasCut() const { return m_cut > 0; }
    /// Shown while a record is dragged over a place that doesn't take it.
    void setInvalidCursor(const QCursor& cursor) { m_invalid = cursor; }
    /// Also to the side, so that deep branches come into view.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

    /// Whether a record may be dropped there.
    std::function<bool(qint64 number, qint64 under)> mayDrop;
    controls::Event<qint64, qint64> dropped; ///< record, new parent
    controls::Event<qint64> opened;          ///< double click or Enter on a record
    controls::Event<> cutChanged;

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    static qint64 numberOf(const QTreeWidgetItem* item);
    QTreeWidgetItem* itemFor(qint64 number) const;
    bool takes(qint64 number, const QTreeWidgetItem* target) const;
    void setCut(qint64 number);
    void follow(const QPoint& at);
    void showTarget(QTreeWidgetItem* item);
    void endDrag();
    void scrollOn();
    /// Pixels that a branch needs, from the left border of the tree.
    int widthBelow(const QTreeWidgetItem* top) const;

    QHash<qint64, QTreeWidgetItem*> m_items; ///< the root under 0
    qint64 m_pressed = 0;
    qint64 m_dragged = 0;
    bool m_moved = false; ///< a drag began since the button went down
    qint64 m_cut = 0;
    QTreeWidgetItem* m_target = nullptr; ///< would take what is dragged
    QPoint m_pressedAt;
    QPoint m_last;
    QCursor m_image;
    QCursor m_invalid = QCursor(Qt::ForbiddenCursor);
    QTimer* m_scroll;
};

} // namespace jobs
