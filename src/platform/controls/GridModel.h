#pragma once

#include "platform/controls/GridColumn.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QIcon>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class QTableView;

namespace controls {

/// What is particular about a cell.
struct CellExtra {
    QIcon picture;
    QString pictureText;
    std::optional<bool> locked;
    bool hidden = false;
    QString refusal; ///< why what was typed can't stand, while it does
    QString before;  ///< what stood there before it
};

struct GridRow {
    QStringList texts;
    qint64 key = 0;
    QString tag; ///< key of a list's row, such as "O17"
    QIcon icon;
    QString iconText;
    QColor colour;
    std::unique_ptr<std::map<int, CellExtra>> extras;
};

/// The rows behind a Grid or a ListView. Sorting moves the rows themselves.
class GridModel : public QAbstractTableModel {
  public:
    explicit GridModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    void setColumns(std::vector<GridColumn> columns);
    const GridColumn& column(int column) const { return m_columns[size_t(column)]; }
    void setChoices(int column, const QStringList& choices);
    bool hasEditableColumn() const;

    int rows() const { return int(m_rows.size()); }
    bool has(int row, int column) const;
    void insert(int row, GridRow content);
    void remove(int row);
    void resize(int count);
    void replace(std::vector<GridRow> rows);
    /// Rows with the keys 0 to count - 1 whose texts are asked for (by key and column) when
    /// somebody wants them.
    void replace(int count, std::function<QString(qint64 key, int column)> source);
    /// Makes these the rows, by their tags: what stays keeps its marks in the views, and only what
    /// changed is told. False where tags aren't unique or so much went that all was replaced.
    bool patch(std::vector<GridRow> rows);
    void setRow(int row, GridRow content);
    void swapRows(int a, int b);
    void move(int from, int to);

    const GridRow& row(int row) const { return m_rows[size_t(row)]; }
    GridRow& row(int row) { return m_rows[size_t(row)]; }
    QString text(int row, int column) const;
    const CellExtra* extra(int row, int column) const;
    CellExtra& makeExtra(int row, int column);
    void setText(int row, int column, const QString& text);
    /// What a copy or a file holds of a cell: nothing of a hidden one, a picture's words where
    /// there is no text.
    QString plainText(int row, int column) const;
    /// Whether a column shows dates and nothing else.
    bool holdsDates(int column) const;
    bool isChecked(int row, int column) const;
    bool isEditable(int row, int column) const;
    bool isShown(int row, int column, const QString& text) const {
        return this->text(row, column) == text;
    }
    /// Marks what is about to stand in a cell as refused; an empty reason takes the mark away.
    void refuse(int row, int column, const QString& why);
    /// Puts back what stood in a cell before a refused entry.
    void giveUp(const QModelIndex& cell);
    void touched(int row, int column);
    void rowTouched(int row);

    void setLocked(bool locked);
    bool isLocked() const { return m_locked; }

    /// The user changed a text or a check.
    std::function<void(int row, int column)> edited;
    /// Takes an entry in place of the model's own text, where somebody else holds the rows.
    std::function<void(int row, int column, const QString& typed)> entering;
    /// Why an entry can't be taken; empty if it can.
    std::function<QString(int row, int column, const QString& typed)> refusal;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    /// What stands in each row of a column, the lowest number for an empty cell; nothing where a
    /// cell has no value, or all are empty.
    std::vector<double>
    valuesOf(int column, const std::function<std::optional<double>(QStringView)>& valueOf) const;
    void reorder(const std::vector<size_t>& places);
    std::vector<GridColumn> m_columns;
    std::vector<GridRow> m_rows;
    std::function<QString(qint64, int)> m_source; ///< texts of the rows that hold none
    bool m_locked = false;
};

/// Column widths, their order, the sort and the looks that Grid and ListView share. What the user
/// changed is remembered for him under the names of the screen and the list.
class GridLooks {
  public:
    GridLooks(QTableView& view, GridModel& model);
    void applyWidths();
    /// Gives the column that stretches the room that the others leave.
    void stretch();
    void setSortable(bool sortable);
    /// Puts the rows into the order that the user chose, if he chose one.
    void sortNow();
    void shown();
    void hidden();

  private:
    QString place() const;
    QStringList titles() const;
    void sortAgainLater();
    void restoreColumns(const QString& name);
    void restoreSort(const QString& name);
    QTableView& m_view;
    GridModel& m_model;
    bool m_sortable = false;
    bool m_userColumns = false; ///< the user changed widths or order
    bool m_userSort = false;
    bool m_applying = false;
    bool m_sortPending = false;
    bool m_restored = false;
};

} // namespace controls
