#pragma once

#include "platform/controls/GridColumn.h"
#include "platform/controls/ToolTable.h"

#include <QIcon>

#include <vector>

namespace controls {

/// A row of a list. The key tells it from the others, whatever its place: a letter and a number,
/// such as "O17".
struct ListRow {
    QString key;
    QStringList texts;
    QIcon icon = {};
    QString iconText = {}; ///< what the icon says, for the tip and screen readers
};

/// A list with columns: rows have a key, an icon and texts; one row is selected. Typing goes to the
/// next row whose first text begins so. A click on a header sorts. What GridTools offers works
/// here: copying, searching, CSV, the context menu. Columns and sort are remembered for the user.
class ListView : public ToolTable {
  public:
    explicit ListView(QWidget* parent = nullptr);
    ~ListView() override;

    void setColumns(std::vector<GridColumn> columns);
    void setMultipleSelection(bool multiple);
    /// Sorting by a click on a header; on to begin with.
    void setSortable(bool sortable);

    /// Shows these rows by patching those there are: a row that stays keeps its selection and its
    /// place on the screen, and only what changed is drawn. The selected row is the same again, or
    /// if it has gone the one that stands at its place, or the first where none was.
    void setRows(std::vector<ListRow> rows);
    /// Puts a row in place of the one with its key, or behind all others if there is none.
    void patchRow(ListRow row);
    void removeKey(const QString& key);
    void clearRows();
    void addRow(const QString& key, const QStringList& texts, const QIcon& icon = {},
                const QString& iconText = {});
    void removeRow(int row);
    void swapRows(int a, int b);

    int rowCount() const;
    int rowOf(const QString& key) const; ///< -1 if none
    bool hasKey(const QString& key) const { return rowOf(key) >= 0; }
    QString key(int row) const;
    /// Number behind the letter of a row's key.
    qint64 keyNumber(int row) const;
    QString rowText(int row, int column) const;
    void setRowText(int row, int column, const QString& text);

    int selectedRow() const; ///< -1 if none
    std::vector<int> selectedRows() const;
    QString selectedKey() const; ///< empty if none
    /// Selects a row, clamped to the rows there are; nothing if there is none.
    void selectRow(int row);
    bool selectKey(const QString& key);

    Event<> selectionChangedByUser;
    Event<int> rowDoubleClicked; ///< also Enter

    void keyboardSearch(const QString& typed) override;

  protected:
    /// Home and End go to the first and last row.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;

  private:
    QString m_typed;
    qint64 m_typedAt = 0;
    int m_byProgram = 0;
};

} // namespace controls
