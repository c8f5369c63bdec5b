#pragma once

#include "platform/controls/Event.h"
#include "platform/controls/GridColumn.h"
#include "platform/controls/ToolTable.h"

#include <QColor>
#include <QIcon>
#include <QString>

#include <functional>
#include <vector>

namespace controls {

/// A table with typed cells, pictures, locked cells and cells whose text is hidden. Rows and
/// columns count from 0. F2, Enter or typing edits; Enter and Tab go to the next cell that can be
/// edited, Tab leaves the grid behind the last one; Space checks a box. The first row is the active
/// one of rows that were just filled in. What GridTools offers works here: copying, searching, CSV,
/// the context menu. Column widths, order and sort are remembered for the user under the screen's
/// and the grid's name.
class Grid : public ToolTable {
  public:
    explicit Grid(QWidget* parent = nullptr);

    void setColumns(std::vector<GridColumn> columns);
    void setColumnChoices(int column, const QStringList& choices);

    int rowCount() const;
    int columnCount() const;
    void setRowCount(int rows);
    void insertRow(int row);
    void removeRow(int row);
    void clearRows() { setRowCount(0); }
    /// Replaces all rows at once; the way for long lists.
    void setRows(std::vector<QStringList> rows);
    /// Rows with the keys 0 to count - 1, whose texts are asked for only when they are shown,
    /// sorted or written; the way for very long ones.
    void setRows(int count, std::function<QString(qint64 key, int column)> textOf);

    QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);
    void setPicture(int row, int column, const QIcon& icon, const QString& accessibleText);
    bool hasPicture(int row, int column) const;
    /// Overrides the column's editability for one cell.
    void setCellLocked(int row, int column, bool locked);
    bool isCellLocked(int row, int column) const;
    /// Draws the text in the colour of its background, and keeps it out of copies and screen
    /// readers.
    void setTextHidden(int row, int column, bool hidden);
    void setRowColour(int row, const QColor& foreground);
    /// A number behind a row, such as its key.
    void setRowKey(int row, qint64 key);
    qint64 rowKey(int row) const;

    /// The current row, -1 if none.
    int activeRow() const;
    void setActiveRow(int row);
    /// Rows are selected for what the screen's buttons do with them: at first none is.
    void setRowsToSelect(bool rowsToSelect);
    std::vector<int> selectedRows() const; ///< in their order
    /// No cell can be edited while locked.
    void setLocked(bool locked);
    bool isLocked() const;
    /// Sorting by a click on a header; off to begin with. A column of numbers sorts by value, one
    /// of dates by date. Sorting moves the rows: tell them apart by rowKey(), not by their place.
    void setSortable(bool sortable);

    Event<int, int> cellChanged; ///< the user changed a cell's text
    Event<int, int> cellClicked; ///< also the space bar on a picture
    Event<int> rowDoubleClicked; ///< also Enter on a row where nothing is editable
    Event<int> activeRowChanged; ///< by the user or the program; not when there is none any more

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

  private:
    QModelIndex nextEditable(const QModelIndex& from, bool forward) const;
    bool press(const QModelIndex& cell);
    void activateFirst();
    bool m_rowsToSelect = false;
};

} // namespace controls
