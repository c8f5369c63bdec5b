#pragma once

#include "platform/gantt/Model.h"
#include "platform/gantt/RowLayouts.h"
#include "platform/gantt/TimeScale.h"

#include <QAbstractScrollArea>
#include <QPixmap>
#include <QStaticText>
#include <QTimer>

#include <functional>
#include <optional>
#include <unordered_map>

namespace gantt {

/// The chart on the screen: the rows' texts on the left, the ruler above, the bars. Only what is
/// seen is painted.
///
/// Mouse: a bar is moved by its middle and resized by its ends, along the divisions; the chart
/// scrolls when the pointer comes to its edge; Escape gives up. Keyboard: the arrows choose row and
/// bar, Ctrl with left and right moves the bar by a division, Shift resizes its end, Ctrl+Shift its
/// start; Enter is a double click; Ctrl+Z and Ctrl+Y undo and redo; Ctrl with plus and minus zooms.
class ChartView : public QAbstractScrollArea {
  public:
    explicit ChartView(QWidget* parent = nullptr);
    ~ChartView() override;

    Model& model() { return m_model; }
    const Model& model() const { return m_model; }

    void setRuler(const Ruler& ruler);
    const TimeScale& scale() const { return m_scale; }
    /// The first moment that is seen.
    Minute leftMoment() const;
    /// Scrolls so that the moment stands at the left, the row at the top.
    void showMoment(Minute moment);
    void showRow(int row);
    void ensureVisible(int row, int bar);

    /// Where the bars begin, in pixels of the view.
    int labelWidth() const;
    int chartWidth() const;
    int rulerHeight() const;
    /// Where a bar is painted, in pixels of the viewport.
    QRect barRect(int row, int bar) const;
    struct Hit {
        int row = 0;
        int bar = 0;
        enum class Part { None, Middle, Start, End } part = Part::None;
    };
    Hit hitTest(const QPoint& place) const;

    /// Takes a step of the history back or makes it again, as the keys do: a drag is given up
    /// first, and a chart that is only read stays as it is.
    void undo();
    void redo();

    /// Which other bars go along when a bar changes from one place to another. They are shown as
    /// ghosts while it is dragged and move with it in one change.
    std::function<std::vector<BarMove>(int row, int bar, const Span& before, const Span& after)>
        followers;
    /// The dragged bar and its followers at their places of this moment; empty between drags.
    const std::vector<BarMove>& moving() const { return m_moving; }

    controls::Event<int, int> beforeChange;           ///< row, bar
    controls::Event<int, int, Span, Span> barChanged; ///< row, bar, before, after
    controls::Event<> dragged;                        ///< moving() is another
    controls::Event<int, int> barSelected;
    controls::Event<int> rowSelected;
    controls::Event<> selectionLost;
    controls::Event<int, int> doubleClicked;
    controls::Event<int> keyPressed;       ///< Backspace, Delete
    controls::Event<QPoint> menuRequested; ///< where, on the screen
    controls::Event<int> zoomRequested;    ///< +1 nearer, -1 farther
    controls::Event<> scrolled;            ///< range, ruler or place of the time axis are others

    QSize sizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    struct Drag {
        int row = 0;
        int bar = 0;
        Hit::Part part = Hit::Part::None;
        Span before;
        Minute grabbed = 0; ///< the moment under the pointer when it began
        QPoint pressed;
        bool begun = false;
    };
    struct Elided {
        int width = -1;
        QString text;
        QStaticText shown;
    };

    void modelChanged();
    void rebuild();
    void measureColumns();
    void updateBars();
    int laneHeight() const;
    QRect spanRect(int row, int lane, const Span& span) const;
    int laneOf(int row, int bar) const;
    void say();

    // ChartPainting.cpp
    void paintAll(QPainter& painter, const QRect& area);
    void paintRuler(QPainter& painter);
    void paintRow(QPainter& painter, int row);
    void paintLabels(QPainter& painter, int row);
    int roomBehind(int row, size_t place, const QRect& rect) const;
    void paintBar(QPainter& painter, const Bar& bar, const QRect& rect, bool selected,
                  int roomBehind);
    void paintOutside(QPainter& painter, int row);
    void paintGhosts(QPainter& painter);
    void drawBarText(QPainter& painter, const Bar& bar, const QRect& rect, int roomBehind);
    const QPixmap& rest();

    // ChartInput.cpp
    void beginDrag(const QPoint& place);
    void dragTo(const QPoint& place);
    void endDrag(bool keep);
    void autoScroll();
    Span spanAt(const QPoint& place) const;
    void change(int row, int bar, const Span& after);
    bool mayChange(int row, int bar) const;
    void stepBar(Hit::Part part, int direction);
    void stepSelection(int key, Qt::KeyboardModifiers modifiers);
    void choose(int row, int bar);
    QString tip(const Bar& bar, const Span& span) const;
    void showHover(const QPoint& place);

    Model m_model;
    RowLayouts m_layouts;
    TimeScale m_scale;
    Ruler m_ruler;
    quint64 m_textRevision = ~quint64{0};
    std::unordered_map<BarId, Elided> m_texts;
    std::vector<int> m_columnWidths;
    std::optional<Drag> m_drag;
    std::vector<BarMove> m_moving;
    QPixmap m_rest; ///< the chart without ghosts while dragging; null: to be painted
    QPoint m_pointer;
    QTimer m_autoScroll;
    bool m_building = false;
    bool m_again = false; ///< the model changed while it was being laid out
};

} // namespace gantt
