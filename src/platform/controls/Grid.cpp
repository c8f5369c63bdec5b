#include "platform/controls/Grid.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/GridDelegate.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/GridTools.h"
#include "platform/controls/Look.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>

namespace controls {

Grid::Grid(QWidget* parent)
    : QTableView(parent), m_model(std::make_unique<GridModel>()),
      m_looks(std::make_unique<GridLooks>(*this, *m_model)),
      m_tools(std::make_unique<GridTools>(*this, *m_model)), m_menu(new DropMenu(this)) {
    setItemDelegate(new GridDelegate(*m_model, this));
    setSelectionBehavior(SelectRows);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    m_model->edited = [this](int row, int column) { cellChanged(row, column); };
    connect(this, &QAbstractItemView::clicked, this,
            [this](const QModelIndex& cell) { cellClicked(cell.row(), cell.column()); });
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& cell) { rowDoubleClicked(cell.row()); });
}

Grid::~Grid() {
    // The view's own end must not report to a model that is gone.
    setModel(nullptr);
}

void Grid::setColumns(std::vector<GridColumn> columns) {
    m_model->setColumns(std::move(columns));
    setSelectionBehavior(m_model->hasEditableColumn() ? SelectItems : SelectRows);
    m_looks->applyWidths();
}

void Grid::setColumnChoices(int column, const QStringList& choices) {
    m_model->setChoices(column, choices);
}

int Grid::rowCount() const {
    return m_model->rows();
}

int Grid::columnCount() const {
    return m_model->columnCount();
}

void Grid::setRowCount(int rows) {
    m_model->resize(rows);
    activateFirst();
}

void Grid::insertRow(int row) {
    m_model->insert(row, {});
}

void Grid::removeRow(int row) {
    m_model->remove(row);
}

void Grid::setRows(std::vector<QStringList> rows) {
    std::vector<GridRow> made(rows.size());
    for (size_t i = 0; i < rows.size(); ++i)
        made[i].texts = std::move(rows[i]);
    m_model->replace(std::move(made));
    activateFirst();
}

void Grid::activateFirst() {
    if (rowCount() == 0 || currentIndex().isValid())
        return;
    // Where rows are selected to be printed or deleted, it is the user who selects them.
    int column = 0;
    while (column < columnCount() - 1 && isColumnHidden(column))
        ++column;
    const auto first = m_model->index(0, column);
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
    return m_model->has(row, column) ? m_model->row(row).texts.value(column) : QString();
}

void Grid::setText(int row, int column, const QString& text) {
    if (m_model->has(row, column))
        m_model->setText(row, column, text);
}

void Grid::setPicture(int row, int column, const QIcon& icon, const QString& accessibleText) {
    if (!m_model->has(row, column))
        return;
    auto& cell = m_model->makeExtra(row, column);
    cell.picture = icon;
    cell.pictureText = accessibleText;
    m_model->touched(row, column);
}

void Grid::clearPicture(int row, int column) {
    if (hasPicture(row, column))
        setPicture(row, column, {}, {});
}

bool Grid::hasPicture(int row, int column) const {
    const auto* cell = m_model->has(row, column) ? m_model->extra(row, column) : nullptr;
    return cell && !cell->picture.isNull();
}

void Grid::setCellLocked(int row, int column, bool locked) {
    if (!m_model->has(row, column))
        return;
    m_model->makeExtra(row, column).locked = locked;
    m_model->touched(row, column);
}

bool Grid::isCellLocked(int row, int column) const {
    return !m_model->isEditable(row, column);
}

void Grid::setTextHidden(int row, int column, bool hidden) {
    if (!m_model->has(row, column))
        return;
    m_model->makeExtra(row, column).hidden = hidden;
    m_model->touched(row, column);
}

void Grid::setRowColour(int row, const QColor& foreground) {
    if (row < 0 || row >= rowCount())
        return;
    m_model->row(row).colour = foreground;
    m_model->rowTouched(row);
}

void Grid::setRowKey(int row, qint64 key) {
    if (row >= 0 && row < rowCount())
        m_model->row(row).key = key;
}

qint64 Grid::rowKey(int row) const {
    return row >= 0 && row < rowCount() ? m_model->row(row).key : 0;
}

int Grid::activeRow() const {
    return currentIndex().isValid() ? currentIndex().row() : -1;
}

void Grid::setActiveRow(int row) {
    if (row < 0 || row >= rowCount()) {
        setCurrentIndex({});
        return;
    }
    setCurrentIndex(m_model->index(row, std::max(0, currentIndex().column())));
}

void Grid::setLocked(bool locked) {
    m_model->setLocked(locked);
    showLocked(this, locked && m_model->hasEditableColumn());
}

bool Grid::isLocked() const {
    return m_model->isLocked();
}

void Grid::setSortable(bool sortable) {
    m_looks->setSortable(sortable);
}

QModelIndex Grid::nextEditable(const QModelIndex& from, bool forward) const {
    const int columns = columnCount();
    const int cells = rowCount() * columns;
    const int step = forward ? 1 : -1;
    int cell =
        from.isValid() ? from.row() * columns + from.column() + step : (forward ? 0 : cells - 1);
    for (; cell >= 0 && cell < cells; cell += step) {
        const auto index = m_model->index(cell / columns, cell % columns);
        if (!isColumnHidden(index.column()) && !isRowHidden(index.row()) &&
            (index.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
            return index;
    }
    return {};
}

QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if ((action == MoveNext || action == MovePrevious) && m_model->hasEditableColumn())
        return nextEditable(currentIndex(), action == MoveNext);
    return QTableView::moveCursor(action, modifiers);
}

bool Grid::focusNextPrevChild(bool next) {
    if (m_model->hasEditableColumn() && !m_model->isLocked()) {
        const auto cell = nextEditable(currentIndex(), next);
        if (cell.isValid()) {
            setCurrentIndex(cell);
            return true;
        }
    }
    return QTableView::focusNextPrevChild(next);
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (current.isValid() && current.row() != previous.row())
        activeRowChanged(current.row());
}

bool Grid::press(const QModelIndex& cell) {
    using Kind = GridColumn::Kind;
    if (!cell.isValid())
        return false;
    const int row = cell.row();
    const int column = cell.column();
    if (m_model->column(column).kind == Kind::Check && m_model->isEditable(row, column)) {
        const auto state = m_model->isChecked(row, column) ? Qt::Unchecked : Qt::Checked;
        m_model->setData(cell, state, Qt::CheckStateRole);
        return true;
    }
    if (m_model->column(column).kind == Kind::Picture || hasPicture(row, column)) {
        cellClicked(row, column);
        return true;
    }
    return false;
}

bool Grid::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride &&
        GridTools::isOwn(*static_cast<QKeyEvent*>(event)))
        event->accept();
    return QTableView::event(event);
}

void Grid::contextMenuEvent(QContextMenuEvent* event) {
    m_menu->clear();
    menuAsked(*m_menu);
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    m_tools->openMenu(*m_menu, byKey ? visualRect(currentIndex()).center() : event->pos());
}

void Grid::keyPressEvent(QKeyEvent* event) {
    const auto cell = currentIndex();
    const bool editable = cell.isValid() && (cell.flags() & Qt::ItemIsEditable);
    if (m_tools->press(*event))
        return;
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
    case Qt::Key_Escape:
        event->ignore();
        return;
    default:
        break;
    }
    QTableView::keyPressEvent(event);
}

void Grid::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    m_looks->shown();
}

void Grid::hideEvent(QHideEvent* event) {
    m_looks->hidden();
    QTableView::hideEvent(event);
}

void Grid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    if (m_looks)
        m_looks->stretch();
}

void Grid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    // Escape gives up an entry that was refused.
    if (hint == QAbstractItemDelegate::RevertModelCache)
        m_model->giveUp(indexAt(editor->pos()));
    QTableView::closeEditor(editor, hint);
}

void Grid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (m_looks && event->type() == QEvent::FontChange)
        m_looks->applyWidths();
}

} // namespace controls
