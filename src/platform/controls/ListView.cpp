#include "platform/controls/ListView.h"

#include "platform/controls/GridModel.h"
#include "platform/values/Letters.h"

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

GridRow modelRow(ListRow row) {
    GridRow made;
    made.tag = std::move(row.key);
    made.texts = std::move(row.texts);
    made.icon = std::move(row.icon);
    made.iconText = std::move(row.iconText);
    return made;
}

} // namespace

ListView::ListView(QWidget* parent) : ToolTable(parent) {
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    looks().setSortable(true);
    connect(this, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& cell) { rowDoubleClicked(cell.row()); });
}

ListView::~ListView() {
    // Its rows' end is nobody's choice.
    ++m_byProgram;
    setModel(nullptr);
}

void ListView::setColumns(std::vector<GridColumn> columns) {
    const Quiet quiet(m_byProgram);
    for (GridColumn& column : columns)
        column.editable = false;
    cells().setColumns(std::move(columns));
    looks().applyWidths();
}

void ListView::setMultipleSelection(bool multiple) {
    setSelectionMode(multiple ? ExtendedSelection : SingleSelection);
}

void ListView::setSortable(bool sortable) {
    looks().setSortable(sortable);
}

void ListView::setRows(std::vector<ListRow> rows) {
    const Quiet quiet(m_byProgram);
    const int place = selectedRow();
    const QString selected = selectedKey();
    std::vector<GridRow> made;
    made.reserve(rows.size());
    for (ListRow& row : rows)
        made.push_back(modelRow(std::move(row)));
    const bool patched = cells().patch(std::move(made));
    looks().sortNow();
    if (patched && selectedRow() >= 0)
        return;
    if (selected.isEmpty() || !selectKey(selected))
        selectRow(std::max(place, 0));
}

void ListView::patchRow(ListRow row) {
    const Quiet quiet(m_byProgram);
    const int place = rowOf(row.key);
    if (place >= 0)
        cells().setRow(place, modelRow(std::move(row)));
    else
        cells().insert(cells().rows(), modelRow(std::move(row)));
}

void ListView::removeKey(const QString& key) {
    removeRow(rowOf(key));
}

void ListView::clearRows() {
    const Quiet quiet(m_byProgram);
    cells().replace({});
}

void ListView::addRow(const QString& key, const QStringList& texts, const QIcon& icon,
                      const QString& iconText) {
    cells().insert(cells().rows(), modelRow({key, texts, icon, iconText}));
}

int ListView::rowCount() const {
    return cells().rows();
}

QString ListView::rowText(int row, int column) const {
    return cells().has(row, column) ? cells().row(row).texts.value(column) : QString();
}

void ListView::setRowText(int row, int column, const QString& text) {
    if (cells().has(row, column))
        cells().setText(row, column, text);
}

void ListView::removeRow(int row) {
    const Quiet quiet(m_byProgram);
    cells().remove(row);
}

void ListView::swapRows(int a, int b) {
    cells().swapRows(a, b);
}

int ListView::rowOf(const QString& key) const {
    for (int row = 0; row < rowCount(); ++row) {
        if (cells().row(row).tag == key)
            return row;
    }
    return -1;
}

QString ListView::key(int row) const {
    return row >= 0 && row < rowCount() ? cells().row(row).tag : QString();
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
    const auto cell = cells().index(std::clamp(row, 0, rowCount() - 1), 0);
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect |
                                                QItemSelectionModel::Rows);
    scrollTo(cell);
}

bool ListView::selectKey(const QString& key) {
    const int row = rowOf(key);
    if (row >= 0)
        selectRow(row);
    return row >= 0;
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
        if (!values::startsWithText(rowText(row, 0), m_typed))
            continue;
        const auto cell = cells().index(row, 0);
        selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect |
                                                    QItemSelectionModel::Rows);
        scrollTo(cell);
        return;
    }
}

void ListView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    ToolTable::selectionChanged(selected, deselected);
    if (m_byProgram == 0)
        selectionChangedByUser();
}

QModelIndex ListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if ((action == MoveHome || action == MoveEnd) && rowCount() > 0)
        return cells().index(action == MoveHome ? 0 : rowCount() - 1, 0);
    return ToolTable::moveCursor(action, modifiers);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        const int row = selectedRow();
        if (row >= 0 && rowDoubleClicked.isConnected())
            rowDoubleClicked(row);
        else
            event->ignore();
        return;
    }
    ToolTable::keyPressEvent(event);
}

} // namespace controls
