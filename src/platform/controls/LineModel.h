#pragma once

#include "platform/controls/Event.h"
#include "platform/controls/Guard.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace controls {

/// Shows lines and is told what happens to them.
class LineWatcher {
  public:
    virtual ~LineWatcher() = default;
    virtual void linesReset() = 0;
    virtual void lineInserted(int place) = 0;
    virtual void lineRemoved(int place) = 0;
    virtual void lineMoved(int from, int to) = 0;
    /// Its row, or whether it is hidden.
    virtual void lineChanged(int place) = 0;
};

/// A line that comes, goes or moves, for an owner who keeps something beside the rows.
struct LineStep {
    enum class Kind { Insert, Remove, Move };
    Kind kind;
    int place; ///< where the line comes, or where it stands before
    int to;    ///< of a move
    int rows;  ///< there before the step
};

/// What the lines of a document are to the grids that show them, whatever their rows hold. Places
/// count from 0, hidden lines included.
class LineList {
  public:
    virtual ~LineList() = default;
    virtual int count() const = 0;
    bool isHidden(int place) const { return m_hidden[static_cast<std::size_t>(place)] != 0; }
    int visibleCount() const {
        return static_cast<int>(std::count(m_hidden.begin(), m_hidden.end(), char{0}));
    }
    QString word = u"line"_s; ///< what people call a line
    QString nextChange; ///< what the next change is of, a column's title; the line itself if empty

    /// Takes back, or does again, the last thing that the user did; false where there is none.
    virtual bool undo() = 0;
    virtual bool redo() = 0;
    /// Moves a line past the nearest one that is not hidden. False at either end.
    virtual bool moveUp(int place) = 0;
    virtual bool moveDown(int place) = 0;

    void watch(LineWatcher* watcher) { m_watchers.push_back(watcher); }
    void unwatch(LineWatcher* watcher) { std::erase(m_watchers, watcher); }

    /// The user changed something, or took it back: sums are to be made anew.
    Event<> touched;
    /// The same, when a step was taken back or done again.
    Event<> restored;
    /// Before `touched`: the user did something that undo() takes back, and what that was.
    Event<const QString&> stepped;
    /// Other rows are shown: nothing that was done can be taken back.
    Event<> forgotten;

  protected:
    void tell(const std::function<void(LineWatcher&)>& news) const {
        for (LineWatcher* watcher : m_watchers)
            news(*watcher);
    }
    std::vector<char> m_hidden;

  private:
    std::vector<LineWatcher*> m_watchers;
};

/// The lines of a document while it is open: rows of a plain struct, which any number of LineGrids
/// show. Each change through it can be taken back until the document is shown anew or saved. A line
/// that was deleted may stay as a hidden row, so that the save finds what it stood for.
template <class Row>
class LineModel : public LineList {
  public:
    /// What is done until it ends is one step for undo.
    class Group {
      public:
        explicit Group(LineModel& model) : m_model(model) { ++model.m_depth; }
        ~Group() { m_model.endGroup(); }
        Group(const Group&) = delete;
        Group& operator=(const Group&) = delete;

      private:
        LineModel& m_model;
    };

    /// Shows other rows; what was done before can't be taken back any more.
    void setRows(std::vector<Row> rows) {
        m_rows = std::move(rows);
        refresh();
    }
    /// The same after rows were changed through rows(): all are shown.
    void refresh() {
        m_hidden.assign(m_rows.size(), 0);
        m_done.clear();
        m_undone.clear();
        tell([](LineWatcher& watcher) { watcher.linesReset(); });
        forgotten();
    }
    /// Shows all lines again, where it is not the rows that changed but how they are shown.
    void redraw() const {
        for (int place = 0; place < count(); ++place)
            tell([place](LineWatcher& watcher) { watcher.lineChanged(place); });
    }
    std::vector<Row>& rows() { return m_rows; }
    const std::vector<Row>& rows() const { return m_rows; }
    const Row& row(int place) const { return m_rows[static_cast<std::size_t>(place)]; }
    int count() const override { return static_cast<int>(m_rows.size()); }
    /// The rows that are not hidden.
    std::vector<Row> visibleRows() const {
        std::vector<Row> rows;
        for (int place = 0; place < count(); ++place) {
            if (!isHidden(place))
                rows.push_back(row(place));
        }
        return rows;
    }

    void insert(int place, Row row) {
        run({Kind::Insert, std::clamp(place, 0, count()), 0, row, row});
    }
    void remove(int place) { run({Kind::Remove, place, 0, row(place), row(place)}); }
    /// Keeps the row, unseen: the line is deleted when the document is saved.
    void hide(int place) {
        if (!isHidden(place))
            run({Kind::Hide, place, 0, row(place), row(place)});
    }
    void change(int place, Row row) { run({Kind::Change, place, 0, this->row(place), row}); }
    void move(int from, int to) {
        if (from != to)
            run({Kind::Move, from, to, row(from), row(from)});
    }
    /// Changes what is no step for undo, such as what was found out of a row.
    template <class Fn>
    void patch(int place, Fn change) {
        change(m_rows[static_cast<std::size_t>(place)]);
        tell([place](LineWatcher& watcher) { watcher.lineChanged(place); });
    }

    bool undo() override { return step(m_done, m_undone, false); }
    bool redo() override { return step(m_undone, m_done, true); }
    bool moveUp(int place) override { return moveBy(place, -1); }
    bool moveDown(int place) override { return moveBy(place, 1); }

    /// Before a line comes, goes or moves, forward or taken back. What it throws leaves the lines
    /// as they are. It may complete a row that comes.
    std::function<void(const LineStep&, Row&)> staging;
    /// The same before a row is changed. It may carry over from the row that stands what isn't
    /// undone.
    std::function<void(int place, const Row& stands, Row& put)> changing;

  private:
    enum class Kind { Change, Insert, Remove, Move, Hide };
    struct Step {
        Kind kind;
        int place;
        int to;
        Row before;
        Row after;
    };
    using Steps = std::vector<Step>;

    void run(Step step) {
        const Group group(*this);
        apply(step, true);
        m_open.push_back(std::move(step));
    }

    void endGroup() {
        if (--m_depth > 0 || m_open.empty())
            return;
        m_done.push_back(std::exchange(m_open, {}));
        m_undone.clear();
        if (m_done.size() > 1000)
            m_done.erase(m_done.begin());
        const QString name = nameOf(m_done.back());
        guarded([&] {
            stepped(name);
            touched();
        });
    }

    QString nameOf(const Steps& steps) {
        const QString title = std::exchange(nextChange, {});
        const QString of = steps.size() > 1 ? word + u's' : word;
        switch (steps.front().kind) {
        case Kind::Change:
            return u"change of "_s + (title.isEmpty() ? of : title);
        case Kind::Insert:
            return u"insertion of "_s + of;
        case Kind::Move:
            return u"move of "_s + of;
        case Kind::Remove:
        case Kind::Hide:
            break;
        }
        return u"removal of "_s + of;
    }

    bool step(std::vector<Steps>& from, std::vector<Steps>& to, bool forward) {
        if (from.empty())
            return false;
        Steps steps = from.back();
        if (forward) {
            for (const Step& one : steps)
                apply(one, true);
        } else {
            for (auto one = steps.rbegin(); one != steps.rend(); ++one)
                apply(*one, false);
        }
        from.pop_back();
        to.push_back(std::move(steps));
        restored();
        touched();
        return true;
    }

    bool moveBy(int place, int by) {
        int to = place + by;
        while (to >= 0 && to < count() && isHidden(to))
            to += by;
        if (to < 0 || to >= count())
            return false;
        move(place, to);
        return true;
    }

    void stage(LineStep::Kind kind, int place, int to, Row& row) const {
        if (staging)
            staging({kind, place, to, count()}, row);
    }

    void apply(const Step& step, bool forward) {
        switch (step.kind) {
        case Kind::Change:
            put(step.place, forward ? step.after : step.before);
            break;
        case Kind::Insert:
            forward ? add(step.place, step.after) : take(step.place);
            break;
        case Kind::Remove:
            forward ? take(step.place) : add(step.place, step.before);
            break;
        case Kind::Move:
            forward ? shift(step.place, step.to) : shift(step.to, step.place);
            break;
        case Kind::Hide:
            m_hidden[static_cast<std::size_t>(step.place)] = forward ? 1 : 0;
            tell([&](LineWatcher& watcher) { watcher.lineChanged(step.place); });
            break;
        }
    }
    void put(int place, Row row) {
        Row& stands = m_rows[static_cast<std::size_t>(place)];
        if (changing)
            changing(place, stands, row);
        stands = std::move(row);
        tell([place](LineWatcher& watcher) { watcher.lineChanged(place); });
    }
    void add(int place, Row row) {
        stage(LineStep::Kind::Insert, place, place, row);
        m_rows.insert(m_rows.begin() + place, std::move(row));
        m_hidden.insert(m_hidden.begin() + place, char{0});
        tell([place](LineWatcher& watcher) { watcher.lineInserted(place); });
    }
    void take(int place) {
        stage(LineStep::Kind::Remove, place, place, m_rows[static_cast<std::size_t>(place)]);
        m_rows.erase(m_rows.begin() + place);
        m_hidden.erase(m_hidden.begin() + place);
        tell([place](LineWatcher& watcher) { watcher.lineRemoved(place); });
    }
    void shift(int from, int to) {
        stage(LineStep::Kind::Move, from, to, m_rows[static_cast<std::size_t>(from)]);
        const auto rotate = [from, to](auto& list) {
            const auto at = list.begin();
            if (from < to)
                std::rotate(at + from, at + from + 1, at + to + 1);
            else
                std::rotate(at + to, at + from, at + from + 1);
        };
        rotate(m_rows);
        rotate(m_hidden);
        tell([=](LineWatcher& watcher) { watcher.lineMoved(from, to); });
    }

    std::vector<Row> m_rows;
    std::vector<Steps> m_done;
    std::vector<Steps> m_undone;
    Steps m_open;
    int m_depth = 0;
};

} // namespace controls
