#include "platform/gantt/Model.h"

#include <algorithm>

namespace gantt {

Minute minuteOf(const QDate& date, Minute minuteOfDay) {
    return date.toJulianDay() * minutesPerDay + minuteOfDay;
}

QDate dateOf(Minute moment) {
    const Minute day = moment >= 0 ? moment / minutesPerDay : -((-moment - 1) / minutesPerDay) - 1;
    return QDate::fromJulianDay(day);
}

int minuteOfDay(Minute moment) {
    return static_cast<int>(moment - dateOf(moment).toJulianDay() * minutesPerDay);
}

/// One change of one bar. A move keeps the two places only: a Multi-Move has thousands.
struct Model::Edit {
    struct Whole {
        std::optional<Bar> before, after; ///< nothing: the bar was not there
        int number = 0;
        std::function<void(bool)> act = {}; ///< of what was noted; then it is about no bar
    };
    BarId id = 0;
    int row = 0;
    Span before, after;
    std::unique_ptr<Whole> whole;
};

Model::Model() : m_first(QDate::fromJulianDay(0)), m_last(m_first) {}
Model::~Model() = default;

void Model::clear() {
    m_rows.clear();
    m_rowOfBar.clear();
    forgetHistory();
    const bool selected = m_selectedRow != 0;
    m_selectedRow = 0;
    m_selected = 0;
    textTouched();
    tell();
    if (selected)
        selectionChanged();
}

// Columns and rows

void Model::addColumn(const QString& title) {
    m_columns << title;
    textTouched();
    tell();
}

void Model::removeColumn(int column) {
    m_columns.removeAt(column - 1);
    for (Row& row : m_rows) {
        if (column <= row.cells.size())
            row.cells.removeAt(column - 1);
    }
    textTouched();
    tell();
}

int Model::addRow(const QString& text) {
    Row row;
    row.cells = text.split(u';');
    m_rows.push_back(std::move(row));
    textTouched();
    tell();
    return rowCount();
}

QString Model::cellText(int row, int column) const {
    return at(row).cells.value(column - 1);
}

void Model::setCellText(int row, int column, const QString& text) {
    QStringList& cells = at(row).cells;
    while (cells.size() < column)
        cells << QString();
    cells[column - 1] = text;
    textTouched();
    tell();
}

void Model::setHeaderRow(int row, bool header) {
    at(row).header = header;
    textTouched();
    touched(row);
    tell();
}

void Model::setRowColour(int row, std::optional<Rgb> colour) {
    at(row).colour = colour;
    touched(row);
    tell();
}

// Bars

int Model::addBar(int row, const Span& span) {
    Bar bar;
    bar.span = span;
    return addBar(row, bar);
}

int Model::addBar(int row, const Bar& bar) {
    Bar added = bar;
    added.id = ++m_lastId;
    const int number = barCount(row) + 1;
    insertAt(row, number, added);
    Edit edit{.id = added.id, .row = row, .before = {}, .after = {}, .whole = nullptr};
    edit.whole = std::make_unique<Edit::Whole>();
    edit.whole->after = added;
    edit.whole->number = number;
    record(std::move(edit));
    tell();
    return number;
}

void Model::setBar(int row, int number, const Bar& bar) {
    Bar& standing = at(row).bars.at(static_cast<size_t>(number) - 1);
    Bar next = bar;
    next.id = standing.id;
    if (next == standing)
        return;
    Edit edit{.id = next.id, .row = row, .before = {}, .after = {}, .whole = nullptr};
    edit.whole = std::make_unique<Edit::Whole>();
    edit.whole->before = standing;
    edit.whole->after = next;
    edit.whole->number = number;
    standing = next;
    touched(row);
    record(std::move(edit));
    tell();
}

void Model::setState(int row, int number, State state, bool hatched) {
    Bar next = bar(row, number);
    next.state = state;
    next.hatched = hatched;
    setBar(row, number, next);
}

void Model::moveBar(int row, int number, const Span& span) {
    moveBars({{row, number, span}});
}

void Model::moveBar(int row, int number, const QDate& startDate, Minute startTime,
                    const QDate& endDate, Minute endTime) {
    moveBar(row, number, {minuteOf(startDate, startTime), minuteOf(endDate, endTime)});
}

void Model::moveBars(const std::vector<BarMove>& moves) {
    const Change change(*this);
    for (const BarMove& move : moves) {
        Bar& standing = at(move.row).bars.at(static_cast<size_t>(move.bar) - 1);
        if (standing.span == move.span)
            continue;
        record({.id = standing.id,
                .row = move.row,
                .before = standing.span,
                .after = move.span,
                .whole = nullptr});
        standing.span = move.span;
        touched(move.row);
    }
    tell();
}

void Model::removeBar(int row, int number) {
    Edit edit{.id = bar(row, number).id, .row = row, .before = {}, .after = {}, .whole = nullptr};
    edit.whole = std::make_unique<Edit::Whole>();
    edit.whole->before = bar(row, number);
    edit.whole->number = number;
    removeAt(row, number);
    record(std::move(edit));
    tell();
}

std::optional<std::pair<int, int>> Model::find(BarId id) const {
    const auto row = m_rowOfBar.constFind(id);
    if (row == m_rowOfBar.cend())
        return std::nullopt;
    const auto& all = at(*row).bars;
    const auto found =
        std::find_if(all.begin(), all.end(), [id](const Bar& b) { return b.id == id; });
    return std::pair{*row, static_cast<int>(found - all.begin()) + 1};
}

void Model::insertAt(int row, int number, const Bar& bar) {
    auto& all = at(row).bars;
    const auto place = std::min<std::ptrdiff_t>(number - 1, std::ssize(all));
    all.insert(all.begin() + place, bar);
    m_rowOfBar.insert(bar.id, row);
    touched(row);
}

void Model::removeAt(int row, int number) {
    auto& all = at(row).bars;
    const auto place = all.begin() + (number - 1);
    m_rowOfBar.remove(place->id);
    if (place->id == m_selected)
        m_selected = 0;
    all.erase(place);
    touched(row);
}

int Model::defineStyle(const Style& style) {
    m_styles.push_back(style);
    return static_cast<int>(m_styles.size());
}

// Selection, range, lock

void Model::select(int row, int bar) {
    const BarId id = row > 0 && bar > 0 ? this->bar(row, bar).id : 0;
    if (row == m_selectedRow && id == m_selected)
        return;
    m_selectedRow = row;
    m_selected = id;
    selectionChanged();
}

int Model::selectedBar() const {
    if (m_selected == 0)
        return 0;
    const auto place = find(m_selected);
    return place ? place->second : 0;
}

void Model::setViewRange(const QDate& first, const QDate& last) {
    m_first = first;
    m_last = std::max(first, last);
    ++m_revision;
    tell();
}

void Model::setReadOnly(bool readOnly) {
    m_readOnly = readOnly;
    ++m_revision;
    tell();
}

// History

Model::Change::~Change() {
    if (--m_model.m_depth > 0)
        return;
    m_model.m_open = false;
    if (m_model.m_untold)
        m_model.tell();
}

void Model::record(Edit edit) {
    if (m_unrecorded > 0)
        return;
    m_history.resize(m_done);
    if (!m_open) {
        m_history.emplace_back();
        ++m_done;
        m_open = m_depth > 0;
    }
    m_history.back().push_back(std::move(edit));
}

void Model::note(std::function<void(bool again)> act) {
    Edit edit{.id = 0, .row = 0, .before = {}, .after = {}, .whole = nullptr};
    edit.whole = std::make_unique<Edit::Whole>();
    edit.whole->act = std::move(act);
    record(std::move(edit));
    tell();
}

void Model::apply(const Edit& edit, bool forward) {
    if (!edit.whole) {
        const auto place = find(edit.id);
        if (!place)
            return;
        at(place->first).bars[static_cast<size_t>(place->second) - 1].span =
            forward ? edit.after : edit.before;
        touched(place->first);
        return;
    }
    if (edit.whole->act) {
        edit.whole->act(forward);
        return;
    }
    const std::optional<Bar>& wanted = forward ? edit.whole->after : edit.whole->before;
    const auto place = find(edit.id);
    if (wanted && place) {
        at(place->first).bars[static_cast<size_t>(place->second) - 1] = *wanted;
        touched(place->first);
    } else if (wanted) {
        insertAt(edit.row, edit.whole->number, *wanted);
    } else if (place) {
        removeAt(place->first, place->second);
    }
}

void Model::step(bool forward) {
    if (forward ? !canRedo() : !canUndo())
        return;
    {
        const Change together(*this);
        const Unrecorded again(*this);
        const Step& step = m_history[forward ? m_done : m_done - 1];
        if (forward) {
            for (const Edit& edit : step)
                apply(edit, true);
        } else {
            for (auto edit = step.rbegin(); edit != step.rend(); ++edit)
                apply(*edit, false);
        }
        m_done = forward ? m_done + 1 : m_done - 1;
        tell();
    }
    selectionChanged();
}

void Model::forgetHistory() {
    m_history.clear();
    m_done = 0;
    m_open = false;
}

void Model::touched(int row) {
    ++m_revision;
    at(row).revision = m_revision;
}

void Model::textTouched() {
    m_textRevision = ++m_revision;
}

void Model::tell() {
    if (m_depth > 0) {
        m_untold = true;
        return;
    }
    m_untold = false;
    changed();
}

} // namespace gantt
