#include "platform/controls/Grid.h"

#include "platform/controls/GridDelegate.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/Look.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace controls {

Grid::Grid(QWidget* parent) : ToolTable(parent) {
    setItemDelegate(new GridDelegate(cells(), this));
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    cells().edited = [this](int row, int column) { cellChanged(row, column); };
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& cell) { cellClicked(cell.row(), cell.column()); });
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& cell) { rowDoubleClicked(cell.row()); });
}

void Grid::setColumns(std::vector<GridColumn> columns) {
    cells().setColumns(std::move(columns));
    setSelectionBehavior(cells().hasEditableColumn() ? SelectItems : SelectRows);
    looks().applyWidths();
}

void Grid::setColumnChoices(int column, const QStringList& choices) {
    cells().setChoices(column, choices);
}

int Grid::rowCount() const {
    return cells().rows();
}

int Grid::columnCount() const {
    return cells().columnCount();
}

void Grid::setRowCount(int rows) {
    cells().resize(rows);
    activateFirst();
}

void Grid::insertRow(int row) {
    cells().insert(row, {});
}

void Grid::removeRow(int row) {
    cells().remove(row);
}

void Grid::setRows(std::vector<QStringList> rows) {
    std::vector<GridRow> made(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        made[i].texts = std::move(rows[i]);
    cells().replace(std::move(made));
    activateFirst();
}

void Grid::setRows(int count, std::function<QString(qint64, int)> textOf) {
    cells().replace(count, std::move(textOf));
    activateFirst();
}

void Grid::activateFirst() {
    if (rowCount() == 0 || currentIndex().isValid())
        return;
    // Where rows are selected to be printed or deleted, it is the user who selects them.
    int column = 0;
    while (column < columnCount() - 1 && isColumnHidden(column))
        ++column;
    const auto first = cells().index(0, column);
    if (m_rowsToSelect)
        selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    else
        setCurrentIndex(first);
}

void Grid::setRowsToSelect(bool rowsToSelect) {
    m_rowsToSelect = rowsToSelect;
    setSelectionBehavior(rowsToSelect ? SelectRows : selectionBehavior());
}

std::vector<int> Grid::selectedRows() const {
    std::vector<int> rows;
    const auto chosen = selectionModel()->selectedRows();
    for (const QModelIndex& row : chosen)
        rows.push_back(row.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

QString Grid::text(int row, int column) const {
    return cells().has(row, column) ? cells().text(row, column) : QString();
}

void Grid::setText(int row, int column, const QString& text) {
    if (cells().has(row, column))
        cells().setText(row, column, text);
}

void Grid::setPicture(int row, int column, const QIcon& icon, const QString& accessibleText) {
    if (!cells().has(row, column))
        return;
    auto& cell = cells().makeExtra(row, column);
    cell.picture = icon;
    cell.pictureText = accessibleText;
    cells().touched(row, column);
}

bool Grid::hasPicture(int row, int column) const {
    const auto* cell = cells().has(row, column) ? cells().extra(row, column) : nullptr;
    return cell && !cell->picture.isNull();
}

void Grid::setCellLocked(int row, int column, bool locked) {
    if (!cells().has(row, column))
        return;
    cells().makeExtra(row, column).locked = locked;
    cells().touched(row, column);
}

bool Grid::isCellLocked(int row, int column) const {
    return !cells().isEditable(row, column);
}

void Grid::setTextHidden(int row, int column, bool hidden) {
    if (!cells().has(row, column))
        return;
    cells().makeExtra(row, column).hidden = hidden;
    cells().touched(row, column);
}

void Grid::setRowColour(int row, const QColor& foreground) {
    if (row < 0 || row >= rowCount())
        return;
    cells().row(row).colour = foreground;
    cells().rowTouched(row);
}

void Grid::setRowKey(int row, qint64 key) {
    if (row >= 0 && row < rowCount())
        cells().row(row).key = key;
}

qint64 Grid::rowKey(int row) const {
    return row >= 0 && row < rowCount() ? cells().row(row).key : 0;
}

int Grid::activeRow() const {
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void Grid::setActiveRow(int row) {
    if (row < 0 || row >= rowCount()) {
        setCurrentIndex({});
        return;
    }
    setCurrentIndex(cells().index(row, std::max(0, currentIndex().column())));
}

void Grid::setLocked(bool locked) {
    cells().setLocked(locked);
    showLocked(this, locked && cells().hasEditableColumn());
}

bool Grid::isLocked() const {
    return cells().isLocked();
}

void Grid::setSortable(bool sortable) {
    looks().setSortable(sortable);
}

QModelIndex Grid::nextEditable(const QModelIndex& from, bool forward) const {
    const int columns = columnCount();
    const int count = rowCount() * columns;
    const int step = forward ? 1 : -1;
    int cell =
        from.isValid() ? from.row() * columns + from.column() + step : (forward ? 0 : count - 1);
    for (; cell >= 0 && cell < count; cell += step) {
        const auto index = cells().index(cell / columns, cell % columns);
        if (!isColumnHidden(index.column()) && !isRowHidden(index.row()) &&
            (index.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
            return index;
    }
    return {};
}

QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if ((action == MoveNext || action == MovePrevious) && cells().hasEditableColumn())
        return nextEditable(currentIndex(), action == MoveNext);
    return ToolTable::moveCursor(action, modifiers);
}

bool Grid::focusNextPrevChild(bool next) {
    if (cells().hasEditableColumn() && !cells().isLocked()) {
        const auto cell = nextEditable(currentIndex(), next);
        if (cell.isValid()) {
            setCurrentIndex(cell);
            return true;
        }
    }
    return ToolTable::focusNextPrevChild(next);
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    ToolTable::currentChanged(current, previous);
    if (current.isValid() && current.row() != previous.row())
        activeRowChanged(current.row());
}

bool Grid::press(const QModelIndex& cell) {
    using Kind = GridColumn::Kind;
    if (!cell.isValid())
        return false;
    const int row = cell.row();
    const int column = cell.column();
    if (cells().column(column).kind == Kind::Check && cells().isEditable(row, column)) {
        const auto state = cells().isChecked(row, column) ? Qt::Unchecked : Qt::Checked;
        cells().setData(cell, state, Qt::CheckStateRole);
        return true;
    }
    if (cells().column(column).kind == Kind::Picture || hasPicture(row, column)) {
        cellClicked(row, column);
        return true;
    }
    return false;
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const auto cell = currentIndex();
    const bool editable = cell.isValid() && (cell.flags() & Qt::ItemIsEditable);
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (editable) {
            edit(cell);
        } else if (cell.isValid() && rowDoubleClicked.isConnected()) {
            rowDoubleClicked(cell.row());
        } else {
            event->ignore();
        }
        return;
    case Qt::Key_Space:
        if (!editable && event->modifiers() == Qt::NoModifier && press(cell))
            return;
        break;
    default:
        break;
    }
    ToolTable::keyPressEvent(event);
}

void Grid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // Escape gives up an entry that was refused.
    if (hint == QAbstractItemDelegate::RevertModelCache)
        cells().giveUp(indexAt(editor->pos()));
    ToolTable::closeEditor(editor, hint);
}

} // namespace controls
