#include "platform/controls/Grid.h"
#include "platform/controls/GridModel.h"

#include <QDateTime>
#include <QKeyEvent>

#include <algorithm>

namespace controls {

namespace {

/// Keeps selection changes quiet that the program makes.
class Quiet {
  public:
    explicit Quiet(int& depth) : m_depth(depth) { ++m_depth; }
    ~Quiet() { --m_depth; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

  private:
    int& m_depth;
};

} // namespace

ListView::ListView(QWidget* parent)
    : QTableView(parent), m_model(std::make_unique<GridModel>()),
      m_looks(std::make_unique<GridLooks>(*this, *m_model)) {
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    m_looks->setSortable(true);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& cell) { rowDoubleClicked(cell.row()); });
}

ListView::~ListView() {
    ++m_byProgram;
    setModel(nullptr);
}

void ListView::setColumns(std::vector<GridColumn> columns) {
    const Quiet quiet(m_byProgram);
    for (GridColumn& column : columns)
        column.editable = false;
    m_model->setColumns(std::move(columns));
    m_looks->applyWidths();
}

void ListView::setMultipleSelection(bool multiple) {
    setSelectionMode(multiple ? ExtendedSelection : SingleSelection);
}

void ListView::setSortable(bool sortable) {
    m_looks->setSortable(sortable);
}

void ListView::clearRows() {
    const Quiet quiet(m_byProgram);
    m_model->replace({});
}

void ListView::addRow(const QString& key, const QStringList& texts, const QIcon& icon,
                      const QString& iconText) {
    GridRow row;
    row.tag = key;
    row.texts = texts;
    row.icon = icon;
    row.iconText = iconText;
    m_model->insert(m_model->rows(), std::move(row));
}

int ListView::rowCount() const {
    return m_model->rows();
}

QString ListView::rowText(int row, int column) const {
    return m_model->has(row, column) ? m_model->row(row).texts.value(column) : QString();
}

void ListView::setRowText(int row, int column, const QString& text) {
    if (m_model->has(row, column))
        m_model->setText(row, column, text);
}

void ListView::removeRow(int row) {
    const Quiet quiet(m_byProgram);
    m_model->remove(row);
}

void ListView::swapRows(int a, int b) {
    m_model->swapRows(a, b);
}

QString ListView::key(int row) const {
    return row >= 0 && row < rowCount() ? m_model->row(row).tag : QString();
}

qint64 ListView::keyNumber(int row) const {
    const QString tag = key(row);
    const auto digit = std::find_if(tag.begin(), tag.end(), [](QChar c) { return c.isDigit(); });
    return QStringView(digit, tag.end()).toLongLong();
}

int ListView::selectedRow() const {
    const auto rows = selectionModel()->selectedRows();
    if (rows.isEmpty())
        return -1;
    // With several selected the one the user is on counts.
    const auto current = currentIndex();
    return current.isValid() && selectionModel()->isRowSelected(current.row(), {})
               ? current.row()
               : rows.first().row();
}

std::vector<int> ListView::selectedRows() const {
    std::vector<int> rows;
    const auto chosen = selectionModel()->selectedRows();
    for (const QModelIndex& row : chosen)
        rows.push_back(row.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

QString ListView::selectedKey() const {
    return key(selectedRow());
}

void ListView::selectRow(int row) {
    if (rowCount() == 0)
        return;
    const Quiet quiet(m_byProgram);
    m_typedAt = 0; // what is typed next begins a word
    const auto cell = m_model->index(std::clamp(row, 0, rowCount() - 1), 0);
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect |
                                                QItemSelectionModel::Rows);
    scrollTo(cell);
}

void ListView::selectPlace(int place) {
    m_looks->sortNow();
    selectRow(place);
}

bool ListView::selectKey(const QString& key) {
    for (int row = 0; row < rowCount(); ++row) {
        if (m_model->row(row).tag == key) {
            selectRow(row);
            return true;
        }
    }
    return false;
}

void ListView::keyboardSearch(const QString& typed) {
    constexpr qint64 pause = 1000; // milliseconds after which a new word begins
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool goesOn = now - m_typedAt < pause;
    m_typedAt = now;
    // The same letter again goes on to the next row that begins with it.
    const bool repeats = goesOn && m_typed == typed && typed.size() == 1;
    m_typed = goesOn && !repeats ? m_typed + typed : typed;
    const int rows = rowCount();
    const int start = std::max(0, selectedRow()) + (goesOn && !repeats ? 0 : 1);
    for (int i = 0; i < rows; ++i) {
        const int row = (start + i) % rows;
        if (!rowText(row, 0).startsWith(m_typed, Qt::CaseInsensitive))
            continue;
        const auto cell = m_model->index(row, 0);
        selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect |
                                                    QItemSelectionModel::Rows);
        scrollTo(cell);
        return;
    }
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (m_byProgram == 0)
        selectionChangedByUser();
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if ((action == MoveHome || action == MoveEnd) && rowCount() > 0)
        return m_model->index(action == MoveHome ? 0 : rowCount() - 1, 0);
    return QTableView::moveCursor(action, modifiers);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        m_looks->copy();
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        const int row = selectedRow();
        if (row >= 0 && rowDoubleClicked.isConnected())
            rowDoubleClicked(row);
        else
            event->ignore();
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

void ListView::showEvent(QShowEvent* event) {
    QTableView::showEvent(event);
    m_looks->shown();
}

void ListView::hideEvent(QHideEvent* event) {
    m_looks->hidden();
    QTableView::hideEvent(event);
}

void ListView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (m_looks && event->type() == QEvent::FontChange)
        m_looks->applyWidths();
}

} // namespace controls
