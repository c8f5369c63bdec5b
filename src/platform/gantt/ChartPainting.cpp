#include "platform/gantt/ChartView.h"

#include "platform/values/Literals.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace gantt {

namespace {

constexpr int longestText = 240; ///< pixels of a text to the right of its bar

QColor mixed(const QColor& a, const QColor& b, double share) {
    return QColor::fromRgbF(static_cast<float>(a.redF() * (1 - share) + b.redF() * share),
                            static_cast<float>(a.greenF() * (1 - share) + b.greenF() * share),
                            static_cast<float>(a.blueF() * (1 - share) + b.blueF() * share));
}

/// Black or white, whichever reads better on the colour.
QColor textOn(const QColor& fill) {
    const double light = 0.299 * fill.redF() + 0.587 * fill.greenF() + 0.114 * fill.blueF();
    return light > 0.45 ? QColor(Qt::black) : QColor(Qt::white);
}

QColor lines(const QPalette& palette) {
    return mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.18);
}

} // namespace

void ChartView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    if (m_drag && m_drag->begun) {
        painter.drawPixmap(0, 0, rest());
        paintGhosts(painter);
        return;
    }
    paintAll(painter, event->rect());
}

/// The chart as it stands, painted once for a whole drag.
const QPixmap& ChartView::rest() {
    if (m_rest.isNull()) {
        const qreal ratio = viewport()->devicePixelRatioF();
        m_rest = QPixmap(viewport()->size() * ratio);
        m_rest.setDevicePixelRatio(ratio);
        QPainter painter(&m_rest);
        painter.setFont(font());
        paintAll(painter, viewport()->rect());
    }
    return m_rest;
}

void ChartView::paintAll(QPainter& painter, const QRect& area) {
    painter.fillRect(area, palette().base());
    const int top = rulerHeight();
    const int first = std::max(1, m_layouts.rowAt(verticalScrollBar()->value()));
    const QRect chart(labelWidth(), top, chartWidth(), viewport()->height() - top);
    if (m_model.rowCount() > 0) {
        for (int row = first; row <= m_model.rowCount(); ++row) {
            if (top + m_layouts.top(row) - verticalScrollBar()->value() > viewport()->height())
                break;
            painter.setClipRect(chart);
            paintRow(painter, row);
            painter.setClipRect(QRect(0, top, viewport()->width(), chart.height()));
            paintLabels(painter, row);
        }
    }
    painter.setClipping(false);
    paintRuler(painter);
    painter.setPen(lines(palette()));
    painter.drawLine(labelWidth() - 1, 0, labelWidth() - 1, viewport()->height());
}

void ChartView::paintRuler(QPainter& painter) {
    const QPalette colours = palette();
    const QRect ruler(0, 0, viewport()->width(), rulerHeight());
    painter.fillRect(ruler, colours.button());
    const int line = fontMetrics().height() + 4;
    painter.setPen(colours.color(QPalette::ButtonText));
    int x = 6;
    for (int column = 1; column <= m_model.columnCount(); ++column) {
        const int width = m_columnWidths[static_cast<size_t>(column) - 1];
        painter.drawText(
            QRect(x, ruler.bottom() - line, std::min(width, labelWidth() - x) - 4, line),
            Qt::AlignLeft | Qt::AlignVCenter, m_model.columnTitle(column));
        x += width;
    }
    painter.setClipRect(QRect(labelWidth(), 0, chartWidth(), ruler.height()));
    const int left = horizontalScrollBar()->value();
    const int offset = labelWidth() - left;
    const QColor grid = lines(colours);
    for (const TimeScale::Tick& tick : m_scale.upper(left, left + chartWidth())) {
        painter.setPen(grid);
        painter.drawLine(offset + tick.x, 0, offset + tick.x, line);
        painter.setPen(colours.color(QPalette::ButtonText));
        // A label stays in sight for as long as any of its time is.
        const int from = std::max(offset + tick.x, labelWidth());
        const int until = offset + tick.x + tick.width;
        if (fontMetrics().horizontalAdvance(tick.label) + 8 <= until - from)
            painter.drawText(QRect(from + 4, 0, until - from - 4, line),
                             Qt::AlignLeft | Qt::AlignVCenter, tick.label);
    }
    for (const TimeScale::Tick& tick : m_scale.lower(left, left + chartWidth())) {
        painter.setPen(grid);
        painter.drawLine(offset + tick.x, line, offset + tick.x, ruler.bottom());
        painter.setPen(colours.color(QPalette::ButtonText));
        if (fontMetrics().horizontalAdvance(tick.label) + 2 <= tick.width)
            painter.drawText(QRect(offset + tick.x + 2, line, tick.width - 2, line),
                             Qt::AlignLeft | Qt::AlignVCenter, tick.label);
    }
    const double mark = m_scale.markWidth();
    if (mark >= 4) {
        painter.setPen(grid);
        for (int i = static_cast<int>(left / mark); i * mark < left + chartWidth(); ++i) {
            const int at = offset + static_cast<int>(i * mark);
            painter.drawLine(at, ruler.bottom() - m_ruler.height / 2, at, ruler.bottom());
        }
    }
    painter.setClipping(false);
    painter.setPen(grid);
    painter.drawLine(0, ruler.bottom(), ruler.right(), ruler.bottom());
}

void ChartView::paintRow(QPainter& painter, int row) {
    const QPalette colours = palette();
    const int y = rulerHeight() + m_layouts.top(row) - verticalScrollBar()->value();
    const int height = m_layouts.bottom(row) - m_layouts.top(row);
    const QRect area(labelWidth(), y, chartWidth(), height);
    const QColor base = colours.color(QPalette::Base);
    if (const auto colour = m_model.rowColour(row))
        painter.fillRect(area,
                         mixed(base, QColor(*colour), m_model.isHeaderRow(row) ? 0.45 : 0.22));
    else if (row % 2 == 0)
        painter.fillRect(area, colours.alternateBase());
    const int left = horizontalScrollBar()->value();
    const int offset = labelWidth() - left;
    const QColor line = lines(colours);
    QColor weekend = colours.color(QPalette::Text);
    weekend.setAlpha(12);
    const bool days = m_scale.ruler().division == Division::Days;
    painter.setPen(line);
    for (const TimeScale::Tick& tick : m_scale.lower(left, left + chartWidth())) {
        if (days && dateOf(m_scale.at(tick.x)).dayOfWeek() > 5)
            painter.fillRect(offset + tick.x, y, tick.width, height, weekend);
        painter.drawLine(offset + tick.x, y, offset + tick.x, y + height);
    }
    painter.drawLine(area.left(), area.bottom(), area.right(), area.bottom());

    const RowLayout& layout = m_layouts.row(row);
    const auto& bars = m_model.bars(row);
    const Minute from = m_scale.at(left);
    const Minute until = m_scale.at(left + chartWidth());
    const int selected = row == m_model.selectedRow() ? m_model.selectedBar() : 0;
    for (const bool blocks : {true, false}) {
        // A text to the right of its bar reaches into what follows.
        const Minute reach = blocks ? from : m_scale.at(left - longestText);
        for (size_t i = layout.firstReaching(bars, reach); i < layout.byStart.size(); ++i) {
            const RowLayout::Placed& placed = layout.byStart[i];
            const Bar& bar = bars[static_cast<size_t>(placed.bar) - 1];
            if (bar.span.start > until)
                break;
            if ((bar.style != 0) != blocks)
                continue;
            QRect rect = spanRect(row, placed.lane, bar.span);
            if (blocks) {
                rect.setTop(y);
                rect.setHeight(height);
            }
            paintBar(painter, bar, rect, placed.bar == selected, roomBehind(row, i, rect));
        }
    }
    paintOutside(painter, row);
}

/// Pixels to the right of a bar until the next one in its lane begins, as far as a text goes.
int ChartView::roomBehind(int row, size_t place, const QRect& rect) const {
    const RowLayout& layout = m_layouts.row(row);
    const auto& bars = m_model.bars(row);
    if (bars[static_cast<size_t>(layout.byStart[place].bar) - 1].align != Align::RightOfBar)
        return 0;
    for (size_t i = place + 1; i < layout.byStart.size(); ++i) {
        const RowLayout::Placed& next = layout.byStart[i];
        const Bar& bar = bars[static_cast<size_t>(next.bar) - 1];
        if (next.lane != layout.byStart[place].lane || bar.style != 0)
            continue;
        return std::min(longestText, spanRect(row, next.lane, bar.span).left() - rect.right() - 10);
    }
    return longestText;
}

void ChartView::paintBar(QPainter& painter, const Bar& bar, const QRect& full, bool selected,
                         int roomBehind) {
    const QPalette colours = palette();
    // Bars of many months at a near zoom: only what is on the screen.
    const QRect rect = full.intersected(viewport()->rect().adjusted(-400, 0, 400, 0));
    const QColor base = colours.color(QPalette::Base);
    QColor fill(bar.colour);
    QColor edge = mixed(fill, colours.color(QPalette::Text), 0.5);
    if (bar.style != 0) {
        fill = mixed(QColor(m_model.style(bar.style).fill), base, 0.35);
        edge = QColor(m_model.style(bar.style).line);
    } else if (bar.state == State::Deleted) {
        fill = mixed(fill, base, 0.75);
    } else if (bar.state == State::Locked) {
        fill = mixed(fill, base, 0.45);
    }
    painter.fillRect(rect, fill);
    if (bar.hatched)
        painter.fillRect(rect, QBrush(edge, Qt::BDiagPattern));
    painter.setPen(edge);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    if (bar.style == 0)
        drawBarText(painter, bar, full, roomBehind);
    if (selected) {
        painter.setPen(QPen(colours.color(hasFocus() ? QPalette::Highlight : QPalette::Text), 2));
        painter.drawRect(rect.adjusted(-1, -1, 0, 0));
    }
}

void ChartView::drawBarText(QPainter& painter, const Bar& bar, const QRect& rect, int roomBehind) {
    if (bar.text.isEmpty())
        return;
    const bool beside = bar.align == Align::RightOfBar;
    // The text of a long bar stays in sight.
    const QRect seen =
        beside ? rect
               : rect.intersected(QRect(labelWidth(), 0, chartWidth(), viewport()->height()));
    const int room = beside ? roomBehind : seen.width() - 6;
    if (room < 8)
        return;
    Elided& kept = m_texts[bar.id];
    if (kept.width != room || kept.text != bar.text) {
        kept.width = room;
        kept.text = bar.text;
        QString line = bar.text;
        line.replace(u'\n', u' ').remove(u'\r');
        kept.shown.setTextFormat(Qt::PlainText);
        kept.shown.setText(fontMetrics().elidedText(line, Qt::ElideRight, room));
        kept.shown.prepare({}, font());
    }
    const int width = qRound(kept.shown.size().width());
    int x = seen.left() + 3;
    if (beside)
        x = rect.right() + 5;
    else if (bar.align == Align::Right)
        x = seen.right() - 3 - width;
    else if (bar.align == Align::Centre)
        x = seen.center().x() - width / 2;
    const QColor fill = bar.state == State::Normal
                            ? QColor(bar.colour)
                            : mixed(QColor(bar.colour), palette().color(QPalette::Base), 0.6);
    painter.setPen(beside ? palette().color(QPalette::Text) : textOn(fill));
    painter.drawStaticText(x, rect.top() + (rect.height() - fontMetrics().height()) / 2,
                           kept.shown);
}

/// Entries before the first day or behind the last one can't be seen; a mark at the edge says so.
void ChartView::paintOutside(QPainter& painter, int row) {
    bool before = false;
    bool behind = false;
    for (const Bar& bar : m_model.bars(row)) {
        if (bar.style != 0)
            continue;
        before = before || (bar.span.start < m_scale.start() && bar.span.end <= m_scale.start());
        behind = behind || bar.span.start >= m_scale.end();
    }
    if (!before && !behind)
        return;
    const int y =
        rulerHeight() + m_layouts.top(row) - verticalScrollBar()->value() + laneHeight() / 2;
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xd0, 0x60, 0x00));
    const auto mark = [&](int x, int tip) {
        const QPoint corners[] = {{x + tip, y}, {x - tip, y - 6}, {x - tip, y + 6}};
        painter.drawPolygon(corners, 3);
    };
    if (before)
        mark(labelWidth() + 7, -5);
    if (behind)
        mark(viewport()->width() - 8, 5);
    painter.setBrush(Qt::NoBrush);
}

void ChartView::paintLabels(QPainter& painter, int row) {
    const QPalette colours = palette();
    const int y = rulerHeight() + m_layouts.top(row) - verticalScrollBar()->value();
    const int height = m_layouts.bottom(row) - m_layouts.top(row);
    const bool header = m_model.isHeaderRow(row);
    const QRect area(0, y, labelWidth() - 1, height);
    const bool selected = row == m_model.selectedRow();
    QColor back = colours.color(row % 2 == 0 ? QPalette::AlternateBase : QPalette::Base);
    if (const auto colour = m_model.rowColour(row))
        back = mixed(colours.color(QPalette::Base), QColor(*colour), header ? 0.45 : 0.3);
    if (selected)
        back = colours.color(QPalette::Highlight);
    painter.fillRect(area, back);
    painter.setPen(selected ? colours.color(QPalette::HighlightedText)
                            : colours.color(QPalette::Text));
    const int line = laneHeight();
    if (header) {
        QFont bold = font();
        bold.setBold(true);
        painter.setFont(bold);
        painter.drawText(QRect(6, y, viewport()->width() - 6, line),
                         Qt::AlignLeft | Qt::AlignVCenter, m_model.cellText(row, 1));
        painter.setFont(font());
    } else {
        int x = 0;
        for (int column = 1; column <= m_model.columnCount(); ++column) {
            const int width = m_columnWidths[static_cast<size_t>(column) - 1];
            const QRect cell(x + 6, y, std::min(width, labelWidth() - x) - 10, line);
            painter.drawText(cell,
                             (column == 1 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter,
                             fontMetrics().elidedText(m_model.cellText(row, column), Qt::ElideRight,
                                                      cell.width()));
            x += width;
        }
    }
    if (selected && hasFocus() && m_model.selectedBar() == 0) {
        painter.setPen(QPen(colours.color(QPalette::HighlightedText), 1, Qt::DotLine));
        painter.drawRect(area.adjusted(1, 1, -2, -2));
    }
    painter.setPen(lines(colours));
    painter.drawLine(area.left(), area.bottom(), area.right(), area.bottom());
}

void ChartView::paintGhosts(QPainter& painter) {
    painter.setClipRect(
        QRect(labelWidth(), rulerHeight(), chartWidth(), viewport()->height() - rulerHeight()));
    const int top = verticalScrollBar()->value();
    const int bottom = top + viewport()->height() - rulerHeight();
    bool first = true;
    for (const BarMove& move : m_moving) {
        const bool isDragged = std::exchange(first, false);
        if (m_layouts.bottom(move.row) < top || m_layouts.top(move.row) > bottom)
            continue;
        const QRect rect = spanRect(move.row, laneOf(move.row, move.bar), move.span);
        if (rect.right() < labelWidth() || rect.left() > viewport()->width())
            continue;
        QColor fill(m_model.bar(move.row, move.bar).colour);
        fill.setAlpha(isDragged ? 200 : 90);
        painter.fillRect(rect, fill);
        painter.setPen(
            QPen(palette().color(QPalette::Text), 1, isDragged ? Qt::SolidLine : Qt::DashLine));
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
    }
    painter.setClipping(false);
}

} // namespace gantt
