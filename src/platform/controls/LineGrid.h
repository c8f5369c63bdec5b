#pragma once

#include "platform/controls/Grid.h"
#include "platform/controls/LineModel.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace controls {

/// A picture in a cell with the words that a screen reader says; none without an icon.
struct CellPicture {
    QIcon icon;
    QString words;
};

/// What a cell of a line shows and takes.
struct LineCell {
    QString text;
    CellPicture picture;
    bool locked = false;
};

/// The part of a LineGrid that is the same for rows of every kind: keys, undo, entries that are
/// refused, the clipboard. Beside what a Grid does, outside of locked times:
/// - Ctrl+Z and Ctrl+Y take back and do again what was done to the lines since they were shown;
/// - Ctrl+Shift+Up and Down (or Alt) move the active line; Insert and Delete ask for a line to come
///   or go;
/// - Ctrl+V pastes cells from the active one on: all of them, or none and the reason;
/// - an entry that makes no sense keeps its editor open with the reason; left all the same, it
///   stands in the cell, marked, until it is typed over (see complaint()).
class LineView : public Grid, private LineWatcher {
  public:
    ~LineView() override;

    /// Whether lines may be moved, true to begin with.
    void setMovable(bool movable) { m_movable = movable; }
    /// Why what stands in some cell can't be taken; empty if all is well. To be asked before the
    /// lines are read for a save: it goes to the cell and opens it.
    QString complaint();
    /// An entry as if it had been typed into the cell: taken, or marked as refused.
    void enter(int place, int column, const QString& typed);

    Event<int, int> entryTaken; ///< an entry went into a row: its place and column
    Event<> insertAsked;
    Event<> removeAsked;

  protected:
    LineView(std::shared_ptr<LineList> lines, QWidget* parent);
    /// To be called when the columns stand.
    void start(std::vector<GridColumn> columns);

    virtual LineCell shown(int place, int column) const = 0;
    /// Whether the column shows a line's number and changes with its place.
    virtual bool counts(int column) const = 0;
    /// What an entry would do to a row: nothing, and the reason, where it makes no sense.
    virtual QString refusal(int place, int column, const QString& typed) const = 0;
    virtual QString take(int place, int column, const QString& typed) = 0;
    /// Takes several entries as one step, or none and the reason.
    struct Entry {
        int place;
        int column;
        QString typed;
    };
    virtual QString takeAll(const std::vector<Entry>& entries) = 0;

    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void linesReset() override;
    void lineInserted(int place) override;
    void lineRemoved(int place) override;
    void lineMoved(int from, int to) override;
    void lineChanged(int place) override;
    void showLine(int place);
    void showNumbers(int from);
    void showFirst();
    void paste();
    bool answers(const QKeyEvent& event) const;

    std::shared_ptr<LineList> m_lines;
    bool m_movable = true;
};

/// A column of a LineGrid.
template <class Row>
struct LineColumn {
    /// Title, width, kind, key filter, choices, limit. A column with `take` is editable.
    GridColumn look;
    /// What the cell shows; without it, the line's number from 1 among those not hidden.
    std::function<QString(const Row&)> text = {};
    /// Puts an entry into the row; says in a sentence why not where it makes no sense.
    std::function<QString(Row&, const QString& typed)> take = {};
    std::function<bool(const Row&)> locked = {};
    /// Neither shown nor given away: the cell is empty, opens empty and keeps what it holds if
    /// nothing is typed.
    std::function<bool(const Row&)> secret = {};
    std::function<CellPicture(const Row&)> picture = {};
};

/// Shows and edits the rows of a LineModel, a line each, by columns of getters and setters. Only
/// cells that changed are drawn again. See docs/architecture.md for an example.
template <class Row>
class LineGrid : public LineView {
  public:
    LineGrid(std::shared_ptr<LineModel<Row>> model, std::vector<LineColumn<Row>> columns,
             QWidget* parent)
        : LineView(model, parent), m_model(std::move(model)), m_columns(std::move(columns)) {
        std::vector<GridColumn> looks;
        for (LineColumn<Row>& column : m_columns) {
            column.look.editable = static_cast<bool>(column.take);
            looks.push_back(column.look);
        }
        start(std::move(looks));
    }

  protected:
    LineCell shown(int place, int column) const override {
        const LineColumn<Row>& by = at(column);
        const Row& row = m_model->row(place);
        LineCell cell;
        if (by.text && !(by.secret && by.secret(row)))
            cell.text = by.text(row);
        if (by.picture)
            cell.picture = by.picture(row);
        cell.locked = by.locked && by.locked(row);
        return cell;
    }
    bool counts(int column) const override { return !at(column).text && !at(column).picture; }
    QString refusal(int place, int column, const QString& typed) const override {
        Row row = m_model->row(place);
        return put(row, column, typed);
    }
    QString take(int place, int column, const QString& typed) override {
        return takeAll({{place, column, typed}});
    }
    QString takeAll(const std::vector<Entry>& entries) override {
        std::vector<std::pair<int, Row>> changed;
        for (const Entry& entry : entries) {
            if (changed.empty() || changed.back().first != entry.place)
                changed.emplace_back(entry.place, m_model->row(entry.place));
            QString why = put(changed.back().second, entry.column, entry.typed);
            if (!why.isEmpty())
                return why;
        }
        if (entries.size() == 1)
            m_model->nextChange = at(entries.front().column).look.title;
        const typename LineModel<Row>::Group group(*m_model);
        for (auto& [place, row] : changed)
            m_model->change(place, std::move(row));
        return {};
    }

  private:
    const LineColumn<Row>& at(int column) const {
        return m_columns[static_cast<std::size_t>(column)];
    }
    QString put(Row& row, int column, const QString& typed) const {
        const LineColumn<Row>& by = at(column);
        if (!by.take || (typed.isEmpty() && by.secret && by.secret(row)))
            return {};
        return by.take(row, typed);
    }

    std::shared_ptr<LineModel<Row>> m_model;
    std::vector<LineColumn<Row>> m_columns;
};

} // namespace controls
