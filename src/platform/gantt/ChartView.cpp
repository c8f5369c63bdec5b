#include "platform/gantt/ChartView.h"

#include "platform/values/Literals.h"

#include <QAccessible>
#include <QEvent>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace gantt {

namespace {

constexpr int smallestBar = 4;   ///< pixels: what can still be seen and grabbed
constexpr int grip = 5;          ///< pixels at a bar's ends that resize it
constexpr int widestLabels = 40; ///< per cent of the view

} // namespace

ChartView::ChartView(QWidget* parent) : QAbstractScrollArea(parent) {
    m_scale = TimeScale(m_ruler, m_model.firstDay(), m_model.lastDay());
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setFrameShape(QFrame::StyledPanel);
    m_autoScroll.setInterval(30);
    m_autoScroll.callOnTimeout([this] { autoScroll(); });
    m_model.changed.connect([this] { modelChanged(); });
    m_model.selectionChanged.connect([this] {
        m_rest = QPixmap();
        viewport()->update();
        say();
    });
    rebuild();
}

ChartView::~ChartView() = default;

QSize ChartView::sizeHint() const {
    return {fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 14};
}

void ChartView::setRuler(const Ruler& ruler) {
    if (ruler == m_ruler)
        return;
    const Minute left = leftMoment();
    m_ruler = ruler;
    rebuild();
    showMoment(left);
}

void ChartView::modelChanged() {
    rebuild();
    // Rows may have come and gone under the selection.
    if (m_model.selectedRow() > m_model.rowCount())
        m_model.select(0);
}

/// Brings layouts, scale and scroll bars up to date with model, ruler and size.
void ChartView::rebuild() {
    // Scroll bars that find their new range may make somebody add rows.
    if (m_building) {
        m_again = true;
        return;
    }
    m_building = true;
    m_layouts.update(m_model, laneHeight());
    const bool otherScale = m_scale.start() != minuteOf(m_model.firstDay()) ||
                            m_scale.end() != minuteOf(m_model.lastDay()) + minutesPerDay ||
                            !(m_scale.ruler() == m_ruler);
    if (otherScale)
        m_scale = TimeScale(m_ruler, m_model.firstDay(), m_model.lastDay());
    if (m_textRevision != m_model.textRevision())
        measureColumns();
    updateBars();
    m_rest = QPixmap();
    viewport()->update();
    m_building = false;
    if (std::exchange(m_again, false))
        rebuild();
    if (otherScale)
        scrolled();
}

void ChartView::measureColumns() {
    m_textRevision = m_model.textRevision();
    m_columnWidths.clear();
    const QFontMetrics metrics = fontMetrics();
    for (int column = 1; column <= m_model.columnCount(); ++column) {
        int width = metrics.horizontalAdvance(m_model.columnTitle(column));
        for (int row = 1; row <= m_model.rowCount(); ++row) {
            if (!m_model.isHeaderRow(row))
                width = std::max(width, metrics.horizontalAdvance(m_model.cellText(row, column)));
        }
        m_columnWidths.push_back(width + 12);
    }
}

void ChartView::updateBars() {
    const int wide = std::max(0, viewport()->width() - labelWidth());
    const int high = std::max(0, viewport()->height() - rulerHeight());
    horizontalScrollBar()->setRange(0, std::max(0, m_scale.width() - wide));
    horizontalScrollBar()->setPageStep(std::max(1, wide));
    horizontalScrollBar()->setSingleStep(std::max(1, m_ruler.step));
    verticalScrollBar()->setRange(0, std::max(0, m_layouts.height() - high));
    verticalScrollBar()->setPageStep(std::max(1, high));
    verticalScrollBar()->setSingleStep(laneHeight());
}

// Places

int ChartView::laneHeight() const {
    return fontMetrics().height() + 8;
}

int ChartView::rulerHeight() const {
    return 2 * (fontMetrics().height() + 4) + m_ruler.height / 2;
}

int ChartView::labelWidth() const {
    int width = 0;
    for (const int column : m_columnWidths)
        width += column;
    return std::min(width, viewport()->width() * widestLabels / 100);
}

int ChartView::chartWidth() const {
    return std::max(0, viewport()->width() - labelWidth());
}

Minute ChartView::leftMoment() const {
    return m_scale.at(horizontalScrollBar()->value());
}

void ChartView::showMoment(Minute moment) {
    horizontalScrollBar()->setValue(m_scale.xOf(moment));
}

void ChartView::showRow(int row) {
    verticalScrollBar()->setValue(m_layouts.top(row));
}

void ChartView::ensureVisible(int row, int bar) {
    QScrollBar* down = verticalScrollBar();
    const int high = viewport()->height() - rulerHeight();
    const int top = m_layouts.top(row);
    const int bottom = m_layouts.bottom(row);
    if (top < down->value())
        down->setValue(top);
    else if (bottom > down->value() + high)
        down->setValue(std::min(top, bottom - high));
    if (bar == 0)
        return;
    QScrollBar* across = horizontalScrollBar();
    const Span span = m_model.bar(row, bar).span;
    const int left = m_scale.xOf(span.start);
    const int right = std::max(m_scale.xOf(span.end), left + smallestBar);
    if (left < across->value() || right - left > chartWidth())
        across->setValue(left - 8);
    else if (right > across->value() + chartWidth())
        across->setValue(right - chartWidth() + 8);
}

int ChartView::laneOf(int row, int bar) const {
    for (const RowLayout::Placed& placed : m_layouts.row(row).byStart) {
        if (placed.bar == bar)
            return placed.lane;
    }
    return 0;
}

QRect ChartView::spanRect(int row, int lane, const Span& span) const {
    const int left = labelWidth() - horizontalScrollBar()->value();
    const int x = left + m_scale.xOf(span.start);
    const int width = std::max(smallestBar, m_scale.xOf(span.end) - m_scale.xOf(span.start));
    const int y = rulerHeight() - verticalScrollBar()->value() + m_layouts.top(row);
    return {x, y + lane * laneHeight() + 2, width, laneHeight() - 4};
}

QRect ChartView::barRect(int row, int bar) const {
    const Bar& shown = m_model.bar(row, bar);
    if (shown.style == 0)
        return spanRect(row, laneOf(row, bar), shown.span);
    QRect block = spanRect(row, 0, shown.span);
    block.setTop(block.top() - 2);
    block.setHeight(m_layouts.bottom(row) - m_layouts.top(row));
    return block;
}

ChartView::Hit ChartView::hitTest(const QPoint& place) const {
    Hit hit;
    if (place.y() < rulerHeight())
        return hit;
    hit.row = m_layouts.rowAt(place.y() - rulerHeight() + verticalScrollBar()->value());
    if (hit.row == 0 || place.x() < labelWidth())
        return hit;
    const RowLayout& layout = m_layouts.row(hit.row);
    const auto& bars = m_model.bars(hit.row);
    const int x = place.x() - labelWidth() + horizontalScrollBar()->value();
    const Minute moment = m_scale.at(x);
    const Minute slack = m_scale.at(x + smallestBar) - moment + 1;
    // The topmost is the one painted last.
    for (size_t i = layout.firstReaching(bars, moment - slack); i < layout.byStart.size(); ++i) {
        const RowLayout::Placed& placed = layout.byStart[i];
        const Bar& bar = bars[static_cast<size_t>(placed.bar) - 1];
        if (bar.span.start > moment + slack)
            break;
        if (bar.style != 0)
            continue;
        const QRect rect = spanRect(hit.row, placed.lane, bar.span);
        if (!rect.contains(place))
            continue;
        hit.bar = placed.bar;
        const int reach = std::min(grip, rect.width() / 4);
        hit.part = Hit::Part::Middle;
        if (place.x() < rect.left() + reach)
            hit.part = Hit::Part::Start;
        else if (place.x() > rect.right() - reach)
            hit.part = Hit::Part::End;
    }
    return hit;
}

// What a screen reader says

void ChartView::say() {
    QString text;
    if (const int row = m_model.selectedRow(); row > 0) {
        text = u"Row %1, %2"_s.arg(row).arg(m_model.cellText(row, 1));
        const int count =
            static_cast<int>(std::count_if(m_model.bars(row).begin(), m_model.bars(row).end(),
                                           [](const Bar& bar) { return bar.style == 0; }));
        text += u", %1 entries"_s.arg(count);
        if (const int bar = m_model.selectedBar(); bar > 0) {
            const Bar& shown = m_model.bar(row, bar);
            text += u". Entry %1: "_s.arg(bar) + tip(shown, shown.span).replace(u'\n', u", "_s);
            if (shown.state == State::Deleted)
                text += u", deleted"_s;
            else if (shown.state == State::Locked)
                text += u", locked"_s;
        }
    }
    setAccessibleDescription(text);
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

// Events of the window

void ChartView::resizeEvent(QResizeEvent*) {
    updateBars();
    m_rest = QPixmap();
    scrolled();
}

void ChartView::scrollContentsBy(int dx, int) {
    m_rest = QPixmap();
    viewport()->update();
    if (dx != 0)
        scrolled();
}

void ChartView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    switch (event->type()) {
    case QEvent::FontChange:
    case QEvent::StyleChange:
        m_texts.clear();
        m_textRevision = ~quint64{0};
        rebuild();
        scrolled();
        break;
    case QEvent::PaletteChange:
    case QEvent::EnabledChange:
        m_rest = QPixmap();
        viewport()->update();
        break;
    default:
        break;
    }
}

void ChartView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void ChartView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    endDrag(false);
    viewport()->update();
}

} // namespace gantt
