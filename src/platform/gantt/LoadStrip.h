#pragma once

#include "platform/gantt/ChartView.h"

#include <QAbstractScrollArea>

#include <functional>
#include <vector>

namespace gantt {

/// Hours of a day: planned against what there is.
struct LoadCell {
    double planned = 0;
    double available = 0;
    bool isOver() const { return planned > available + 0.005; }
};

struct LoadLine {
    QString name;
    std::vector<LoadCell> days; ///< from the strip's first day on
};

/// A band below a chart on the chart's own time axis: for each line and day (week, where the chart
/// shows weeks) how much of the hours is taken. Too much is shown in another colour; hovering, or
/// going there with the arrow keys, tells which work it is.
class LoadStrip : public QAbstractScrollArea {
  public:
    explicit LoadStrip(ChartView* chart, QWidget* parent = nullptr);
    void setLines(const QDate& first, std::vector<LoadLine> lines);
    /// A line of text for each piece of work on some days of a line, asked for when somebody wants
    /// to know; days count from the first one.
    std::function<QStringList(int line, int day, int days)> workOf;
    const std::vector<LoadLine>& lines() const { return m_lines; }
    QDate firstDay() const { return m_first; }
    /// What a cell tells: line, date, hours, the work. `day` counts from the first day.
    QString tip(int line, int day) const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    /// One or seven days that are shown as one.
    struct Cell {
        int day = 0; ///< the first of them
        int days = 1;
        LoadCell load;
        QRect rect;
    };
    int lineHeight() const;
    void updateBar();
    int cellDays() const;
    int firstOfCell(int day) const;
    LoadCell summed(int line, int day, int days) const;
    std::vector<Cell> seen(int line) const;
    void paintCell(QPainter& painter, const Cell& cell, bool current) const;
    void tell();

    ChartView* m_chart;
    QDate m_first;
    std::vector<LoadLine> m_lines;
    int m_line = 0, m_day = 0; ///< where the keyboard is
};

} // namespace gantt
