#pragma once

#include "platform/controls/Event.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace gantt {

/// A moment on the chart: minutes since the beginning of day 0 of the Julian count. Times past
/// midnight are thus moments of the next day.
using Minute = qint64;
inline constexpr Minute minutesPerDay = 1440;

/// `minuteOfDay` may lie outside a day: 1450 is ten past midnight of the next one.
Minute minuteOf(const QDate& date, Minute minuteOfDay = 0);
QDate dateOf(Minute moment);
int minuteOfDay(Minute moment);

struct Span {
    Minute start = 0;
    Minute end = 0;
    Minute length() const { return end - start; }
    friend bool operator==(const Span&, const Span&) = default;
};

enum class State { Normal = 1, Deleted = 2, Locked = 4 };
enum class Align { Left = 0, Right = 1, Centre = 2, RightOfBar = 3 };

/// Tells a bar from all others of its model for as long as the rows stand, whatever its place.
using BarId = int;
using Rgb = quint32; ///< 0xrrggbb

struct Bar {
    BarId id = 0; ///< given by the model
    Span span;
    QString text;
    Align align = Align::Left;
    Rgb colour = 0xff0000;
    QString key; ///< the owner's own; the model doesn't read it
    State state = State::Normal;
    int style = 0; ///< of defineStyle; 0: an ordinary bar
    bool hatched = false;
    friend bool operator==(const Bar&, const Bar&) = default;
};

struct Style {
    Rgb fill = 0;
    Rgb line = 0;
};

/// New place of a bar.
struct BarMove {
    int row = 0;
    int bar = 0;
    Span span;
    friend bool operator==(const BarMove&, const BarMove&) = default;
};

/// What a chart shows: columns of text, rows, and on each row bars in the order in which they were
/// added. Rows, columns and bars are numbered from 1. Knows nothing of windows. Every change of a
/// bar, and what its owner notes beside them, can be undone, to any depth, until the rows are
/// cleared or the history is forgotten.
class Model {
  public:
    Model();
    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    /// Removes all rows with their history and the selection; columns, styles and range stay.
    void clear();

    // --- columns
    void addColumn(const QString& title);
    void removeColumn(int column);
    int columnCount() const { return static_cast<int>(m_columns.size()); }
    QString columnTitle(int column) const { return m_columns.at(column - 1); }

    // --- rows
    /// A text with its columns parted by ";"; returns the row's number.
    int addRow(const QString& text);
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    QString cellText(int row, int column) const;
    void setCellText(int row, int column, const QString& text);
    /// A header row parts the rows; it takes no bars of its own.
    void setHeaderRow(int row, bool header);
    bool isHeaderRow(int row) const { return at(row).header; }
    void setRowColour(int row, std::optional<Rgb> colour);
    std::optional<Rgb> rowColour(int row) const { return at(row).colour; }

    // --- bars
    int addBar(int row, const Span& span);
    int addBar(int row, const Bar& bar); ///< its id is given anew
    int barCount(int row) const { return static_cast<int>(at(row).bars.size()); }
    const Bar& bar(int row, int number) const { return at(row).bars.at(number - 1); }
    const std::vector<Bar>& bars(int row) const { return at(row).bars; }
    /// Everything but the id is taken.
    void setBar(int row, int number, const Bar& bar);
    void setState(int row, int number, State state, bool hatched);
    void moveBar(int row, int number, const Span& span);
    /// Start and end as days with minutes, which may lie outside a day.
    void moveBar(int row, int number, const QDate& startDate, Minute startTime,
                 const QDate& endDate, Minute endTime);
    void moveBars(const std::vector<BarMove>& moves); ///< in one change
    void removeBar(int row, int number);
    /// Row and number of a bar; nothing if it has gone.
    std::optional<std::pair<int, int>> find(BarId id) const;

    // --- styles
    int defineStyle(const Style& style);
    const Style& style(int number) const { return m_styles.at(static_cast<size_t>(number) - 1); }

    // --- selection: 0 for none
    void select(int row, int bar = 0);
    int selectedRow() const { return m_selectedRow; }
    int selectedBar() const; ///< 0 also where the selected bar has gone

    // --- range and lock
    /// The chart shows whole days from the first to the last. A last day before the first counts
    /// as the first.
    void setViewRange(const QDate& first, const QDate& last);
    QDate firstDay() const { return m_first; }
    QDate lastDay() const { return m_last; }
    void setReadOnly(bool readOnly);
    bool isReadOnly() const { return m_readOnly; }

    // --- history
    /// Changes of bars made while one lives are undone together. They nest.
    class Change {
      public:
        explicit Change(Model& model) : m_model(model) { ++m_model.m_depth; }
        ~Change();
        Change(const Change&) = delete;
        Change& operator=(const Change&) = delete;

      private:
        Model& m_model;
    };
    /// Changes made while one lives are no part of the history: loading, and what follows from
    /// other fields.
    class Unrecorded {
      public:
        explicit Unrecorded(Model& model) : m_model(model) { ++m_model.m_unrecorded; }
        ~Unrecorded() { --m_model.m_unrecorded; }
        Unrecorded(const Unrecorded&) = delete;
        Unrecorded& operator=(const Unrecorded&) = delete;

      private:
        Model& m_model;
    };
    /// A change of something beside the bars that belongs to the same history, already made: `act`
    /// makes it again (true) or takes it back (false).
    void note(std::function<void(bool again)> act);
    bool canUndo() const { return m_done > 0; }
    bool canRedo() const { return m_done < m_history.size(); }
    void undo() { step(false); }
    void redo() { step(true); }
    void forgetHistory();

    /// Grows with each change of rows, bars, columns, range or lock.
    quint64 revision() const { return m_revision; }
    /// Grows with each change of columns and of the rows' texts.
    quint64 textRevision() const { return m_textRevision; }
    /// Grows with each change of the row's bars.
    quint64 rowRevision(int row) const { return at(row).revision; }

    controls::Event<> changed;          ///< once for each change, however many bars it has
    controls::Event<> selectionChanged; ///< row or bar

  private:
    struct Row {
        QStringList cells;
        bool header = false;
        std::optional<Rgb> colour;
        std::vector<Bar> bars;
        quint64 revision = 0;
    };
    struct Edit;
    using Step = std::vector<Edit>;

    const Row& at(int row) const { return m_rows.at(static_cast<size_t>(row) - 1); }
    Row& at(int row) { return m_rows.at(static_cast<size_t>(row) - 1); }
    void record(Edit edit);
    void step(bool forward);
    void apply(const Edit& edit, bool forward);
    void insertAt(int row, int number, const Bar& bar);
    void removeAt(int row, int number);
    void touched(int row);
    void textTouched();
    void tell();

    QStringList m_columns;
    std::vector<Row> m_rows;
    std::vector<Style> m_styles;
    QHash<BarId, int> m_rowOfBar;
    QDate m_first, m_last;
    bool m_readOnly = false;
    int m_selectedRow = 0;
    BarId m_selected = 0;
    BarId m_lastId = 0;
    quint64 m_revision = 0;
    quint64 m_textRevision = 0;
    int m_depth = 0;
    int m_unrecorded = 0;
    bool m_untold = false;
    std::vector<Step> m_history;
    size_t m_done = 0;   ///< steps of the history that stand
    bool m_open = false; ///< the last step still takes edits
};

} // namespace gantt
