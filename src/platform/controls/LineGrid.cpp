#include "platform/controls/LineGrid.h"

#include "platform/controls/GridModel.h"
#include "platform/controls/Guard.h"
#include "platform/controls/HistoryKeys.h"
#include "platform/values/Literals.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QToolTip>

namespace controls {

namespace {

using Extras = std::unique_ptr<std::map<int, CellExtra>>;

/// A cell's picture and lock, kept only where there is something to keep.
void setExtra(Extras& extras, int column, const LineCell& cell, bool locked) {
    const auto found = extras ? extras->find(column) : std::map<int, CellExtra>::iterator();
    const bool has = extras && found != extras->end();
    if (!has && cell.picture.icon.isNull() && !locked)
        return;
    if (!extras)
        extras = std::make_unique<std::map<int, CellExtra>>();
    CellExtra& extra = (*extras)[column];
    extra.picture = cell.picture.icon;
    extra.pictureText = cell.picture.words;
    extra.locked = locked ? std::optional(true) : std::nullopt;
}

/// -1 for up, 1 for down, 0 for any other key.
int moveOf(const QKeyEvent& event) {
    const auto held = event.modifiers() & ~Qt::KeypadModifier;
    if (held != Qt::AltModifier && held != (Qt::ControlModifier | Qt::ShiftModifier))
        return 0;
    return event.key() == Qt::Key_Up ? -1 : event.key() == Qt::Key_Down ? 1 : 0;
}

} // namespace

LineView::LineView(std::shared_ptr<LineList> lines, QWidget* parent)
    : Grid(parent), m_lines(std::move(lines)) {
    m_lines->watch(this);
}

LineView::~LineView() {
    m_lines->unwatch(this);
}

void LineView::start(std::vector<GridColumn> columns) {
    setColumns(std::move(columns));
    for (int column = 0; column < columnCount(); ++column)
        setColumnHidden(column, cells().column(column).hidden);
    cells().refusal = [this](int row, int column, const QString& typed) {
        return refusal(row, column, typed);
    };
    cells().entering = [this](int row, int column, const QString& typed) {
        guarded([&] { enter(row, column, typed); });
    };
    linesReset();
}

void LineView::enter(int place, int column, const QString& typed) {
    const QString why = refusal(place, column, typed);
    cells().refuse(place, column, why);
    if (!why.isEmpty()) {
        setText(place, column, typed);
        return;
    }
    take(place, column, typed);
    entryTaken(place, column);
}

QString LineView::complaint() {
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column) {
            const CellExtra* extra = cells().extra(row, column);
            if (!extra || extra->refusal.isEmpty() || isRowHidden(row))
                continue;
            const QString why = extra->refusal;
            const auto cell = model()->index(row, column);
            setFocus();
            setCurrentIndex(cell);
            scrollTo(cell);
            edit(cell);
            return why;
        }
    }
    return {};
}

// Showing

void LineView::linesReset() {
    std::vector<GridRow> rows(static_cast<std::size_t>(m_lines->count()));
    int number = 0;
    for (int place = 0; place < m_lines->count(); ++place) {
        GridRow& row = rows[static_cast<std::size_t>(place)];
        number += m_lines->isHidden(place) ? 0 : 1;
        for (int column = 0; column < columnCount(); ++column) {
            const LineCell cell = shown(place, column);
            row.texts << (counts(column) ? QString::number(number) : cell.text);
            setExtra(row.extras, column, cell, cell.locked && cells().column(column).editable);
        }
    }
    cells().replace(std::move(rows));
    for (int place = 0; place < m_lines->count(); ++place) {
        if (m_lines->isHidden(place))
            setRowHidden(place, true);
    }
    showFirst();
}

void LineView::showFirst() {
    int row = 0;
    while (row < rowCount() && isRowHidden(row))
        ++row;
    if (row == rowCount())
        return;
    int first = -1;
    for (int column = columnCount() - 1; column >= 0; --column) {
        if (!isColumnHidden(column) &&
            (first < 0 || !cells().column(first).editable || cells().column(column).editable))
            first = column;
    }
    if (first >= 0)
        setCurrentIndex(model()->index(row, first));
}

void LineView::showLine(int place) {
    for (int column = 0; column < columnCount(); ++column) {
        const LineCell cell = shown(place, column);
        const CellExtra* extra = cells().extra(place, column);
        const bool refused = extra && !extra->refusal.isEmpty();
        if (!counts(column) && !refused && text(place, column) != cell.text)
            setText(place, column, cell.text);
        setExtra(cells().row(place).extras, column, cell,
                 cell.locked && cells().column(column).editable);
    }
    cells().rowTouched(place);
}

void LineView::showNumbers(int from) {
    for (int column = 0; column < columnCount(); ++column) {
        if (!counts(column))
            continue;
        int number = 0;
        for (int place = 0; place < m_lines->count(); ++place) {
            number += m_lines->isHidden(place) ? 0 : 1;
            const QString shownNumber = QString::number(number);
            if (place >= from && text(place, column) != shownNumber)
                setText(place, column, shownNumber);
        }
    }
}

void LineView::lineInserted(int place) {
    insertRow(place);
    showLine(place);
    showNumbers(place);
    setRowHidden(place, m_lines->isHidden(place));
    setActiveRow(place);
}

void LineView::lineRemoved(int place) {
    const int active = activeRow();
    removeRow(place);
    showNumbers(place);
    if (active == place && rowCount() > 0)
        setActiveRow(std::min(place, rowCount() - 1));
}

void LineView::lineMoved(int from, int to) {
    cells().move(from, to);
    for (int place = std::min(from, to); place <= std::max(from, to); ++place)
        setRowHidden(place, m_lines->isHidden(place));
    showNumbers(std::min(from, to));
    setActiveRow(to);
    scrollTo(currentIndex());
}

void LineView::lineChanged(int place) {
    showLine(place);
    const bool hidden = m_lines->isHidden(place);
    if (hidden == isRowHidden(place))
        return;
    setRowHidden(place, hidden);
    showNumbers(place);
    if (!hidden) {
        setActiveRow(place);
        return;
    }
    // The next line takes its place, the one before where there is none.
    int next = place + 1;
    while (next < rowCount() && isRowHidden(next))
        ++next;
    for (int before = place - 1; next >= rowCount() && before >= 0; --before) {
        if (!isRowHidden(before))
            next = before;
    }
    setActiveRow(next);
}

// Keys

bool LineView::answers(const QKeyEvent& event) const {
    return !isLocked() && (isUndo(event) || isRedo(event) || (m_movable && moveOf(event) != 0) ||
                           event.matches(QKeySequence::Paste));
}

bool LineView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && answers(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return Grid::event(event);
}

void LineView::keyPressEvent(QKeyEvent* event) {
    if (isLocked()) {
        Grid::keyPressEvent(event);
        return;
    }
    const int by = m_movable ? moveOf(*event) : 0;
    const bool plain = event->modifiers() == Qt::NoModifier;
    if (isUndo(*event)) {
        guarded([this] { m_lines->undo(); });
    } else if (isRedo(*event)) {
        guarded([this] { m_lines->redo(); });
    } else if (event->matches(QKeySequence::Paste)) {
        guarded([this] { paste(); });
    } else if (by != 0) {
        if (activeRow() >= 0)
            guarded(
                [&] { by < 0 ? m_lines->moveUp(activeRow()) : m_lines->moveDown(activeRow()); });
    } else if (plain && event->key() == Qt::Key_Insert && insertAsked.isConnected()) {
        insertAsked();
    } else if (plain && event->key() == Qt::Key_Delete && removeAsked.isConnected()) {
        removeAsked();
    } else {
        Grid::keyPressEvent(event);
    }
}

void LineView::paste() {
    QString text = QGuiApplication::clipboard()->text();
    text.remove(u'\r');
    if (text.endsWith(u'\n'))
        text.chop(1);
    const auto at = currentIndex();
    if (text.isEmpty() || !at.isValid())
        return;
    std::vector<Entry> entries;
    int row = at.row();
    for (const QString& line : text.split(u'\n')) {
        while (row < rowCount() && isRowHidden(row))
            ++row;
        if (row >= rowCount())
            break;
        int column = at.column();
        for (const QString& part : line.split(u'\t')) {
            while (column < columnCount() && isColumnHidden(column))
                ++column;
            if (column >= columnCount())
                break;
            const GridColumn& look = cells().column(column);
            QString typed = values::filtered(part.trimmed(), look.filter);
            if (look.limit > 0)
                typed.truncate(look.limit);
            if (cells().isEditable(row, column) && !cells().isShown(row, column, typed))
                entries.push_back({row, column, typed});
            ++column;
        }
        ++row;
    }
    if (entries.empty())
        return;
    const QString why = takeAll(entries);
    if (!why.isEmpty()) {
        QToolTip::showText(viewport()->mapToGlobal(visualRect(at).bottomLeft()),
                           u"Nothing was pasted. "_s + why, this);
        return;
    }
    entryTaken(entries.back().place, entries.back().column);
}

} // namespace controls
