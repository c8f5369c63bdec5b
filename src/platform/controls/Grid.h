#pragma once

#include "platform/controls/Event.h"
#include "platform/values/Text.h"

#include <QColor>
#include <QIcon>
#include <QString>
#include <QTableView>

#include <memory>
#include <optional>
#include <vector>

namespace controls {

class GridLooks;
class GridModel;

/// A column of a grid.
struct GridColumn {
    enum class Kind {
        Text,
        Number,  ///< right-aligned, sorts by value
        Picture, ///< an icon, answers clicks and the space bar
        Check,   ///< a box; its text is "1" or "0", and any number but 0 or "True" shows as checked
        Combo,   ///< edited through a list of `choices`, typing allowed
    };

    QString title;
    int characters = 12; ///< width to begin with
    Kind kind = Kind::Text;
    bool editable = false;
    values::KeyFilter filter = {};
    QStringList choices = {};
    int limit = 0;
    bool stretches = false; ///< takes the room that the other columns leave, instead of the last
    bool hidden = false;    ///< carries what isn't shown, such as a key
};

/// A table with typed cells, pictures, locked cells and cells whose text is hidden. Rows and
/// columns count from 0. F2, Enter or typing edits; Enter and Tab go to the next cell that can be
/// edited, Tab leaves the grid behind the last one; Space checks a box. Ctrl+C copies the selected
/// rows or cells as text with tabs. Column widths and the sort that the user chose are kept for the
/// run of the program under the screen's and the grid's name.
class Grid : public QTableView {
  public:
    explicit Grid(QWidget* parent = nullptr);
    ~Grid() override;

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

    QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);
    void setPicture(int row, int column, const QIcon& icon, const QString& accessibleText);
    void clearPicture(int row, int column);
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
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
    GridModel& cells() const { return *m_model; }

  private:
    QModelIndex nextEditable(const QModelIndex& from, bool forward) const;
    bool press(const QModelIndex& cell);
    std::unique_ptr<GridModel> m_model;
    std::unique_ptr<GridLooks> m_looks;
};

/// A list with columns: rows have a key such as "O17", an icon and texts; one row is selected.
/// Typing goes to the next row whose first text begins so. A click on a header sorts.
class ListView : public QTableView {
  public:
    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    void setColumns(std::vector<GridColumn> columns);
    void setMultipleSelection(bool multiple);
    void clearRows();
    void addRow(const QString& key, const QStringList& texts, const QIcon& icon = {},
                const QString& iconText = {});
    int rowCount() const;
    QString rowText(int row, int column) const;
    void setRowText(int row, int column, const QString& text);
    void removeRow(int row);
    void swapRows(int a, int b);
    /// Sorting by a click on a header; on to begin with.
    void setSortable(bool sortable);

    QString key(int row) const;
    /// Number behind the letter of a row's key.
    qint64 keyNumber(int row) const;
    int selectedRow() const; ///< -1 if none
    std::vector<int> selectedRows() const;
    QString selectedKey() const; ///< empty if none
    /// Selects a row, clamped to the rows there are; nothing if there is none.
    void selectRow(int row);
    /// Of rows that were just filled in anew: selects as selectRow() what stands at a place in the
    /// order that the user chose, which they have from then on.
    void selectPlace(int place);
    bool selectKey(const QString& key);

    Event<> selectionChangedByUser;
    Event<int> rowDoubleClicked; ///< also Enter

    void keyboardSearch(const QString& typed) override;

  protected:
    /// Home and End go to the first and last row.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

  private:
    std::unique_ptr<GridModel> m_model;
    std::unique_ptr<GridLooks> m_looks;
    QString m_typed;
    qint64 m_typedAt = 0;
    int m_byProgram = 0;
};

} // namespace controls
