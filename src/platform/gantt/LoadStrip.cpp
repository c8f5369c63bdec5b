#include "platform/gantt/LoadStrip.h"

#include "platform/controls/Look.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace gantt {

namespace {

constexpr int mostWork = 12; ///< lines of a tip

QString hoursText(double hours) {
    return values::numberText(std::round(hours * 10) / 10);
}

} // namespace

LoadStrip::LoadStrip(ChartView* chart, QWidget* parent)
    : QAbstractScrollArea(parent), m_chart(chart) {
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(u"Load"_s);
    viewport()->setMouseTracking(true);
    chart->scrolled.connect([this] { viewport()->update(); });
}

void LoadStrip::setLines(const QDate& first, std::vector<LoadLine> lines) {
    m_first = first;
    m_lines = std::move(lines);
    m_line = std::clamp(m_line, 0, std::max(0, static_cast<int>(m_lines.size()) - 1));
    updateBar();
    updateGeometry();
    viewport()->update();
}

int LoadStrip::lineHeight() const {
    return fontMetrics().height() + 8;
}

QSize LoadStrip::sizeHint() const {
    const int lines = std::clamp(static_cast<int>(m_lines.size()), 2, 4);
    return {200, lines * lineHeight() + 2 * frameWidth()};
}

QSize LoadStrip::minimumSizeHint() const {
    return {100, 2 * lineHeight() + 2 * frameWidth()};
}

void LoadStrip::updateBar() {
    QScrollBar* bar = verticalScrollBar();
    const int height = static_cast<int>(m_lines.size()) * lineHeight();
    bar->setRange(0, std::max(0, height - viewport()->height()));
    bar->setPageStep(viewport()->height());
    bar->setSingleStep(lineHeight());
}

int LoadStrip::cellDays() const {
    return m_chart->scale().ruler().division == Division::Weeks ? 7 : 1;
}

/// Weeks are those of the ruler, from Monday; the first one may begin within.
int LoadStrip::firstOfCell(int day) const {
    if (cellDays() == 1)
        return day;
    return std::max(0, day - (m_first.addDays(day).dayOfWeek() - 1));
}

LoadCell LoadStrip::summed(int line, int day, int days) const {
    LoadCell sum;
    const auto& all = m_lines[static_cast<size_t>(line)].days;
    for (int i = day; i < day + days && i < std::ssize(all); ++i) {
        const LoadCell& one = all[static_cast<size_t>(i)];
        sum.planned += one.planned;
        sum.available += one.available;
    }
    return sum;
}

std::vector<LoadStrip::Cell> LoadStrip::seen(int line) const {
    std::vector<Cell> cells;
    const TimeScale& scale = m_chart->scale();
    const Minute left = m_chart->leftMoment();
    const int offset = m_chart->labelWidth() - scale.xOf(left);
    const int right = m_chart->labelWidth() + m_chart->chartWidth();
    const auto count = static_cast<int>(m_lines[static_cast<size_t>(line)].days.size());
    int day = firstOfCell(std::clamp(static_cast<int>(m_first.daysTo(dateOf(left))), 0, count));
    while (day < count) {
        const int next =
            firstOfCell(day + cellDays()) > day ? firstOfCell(day + cellDays()) : day + cellDays();
        const int x = offset + scale.xOf(minuteOf(m_first.addDays(day)));
        if (x > right)
            break;
        const int width = offset + scale.xOf(minuteOf(m_first.addDays(next))) - x;
        cells.push_back(
            {day, next - day, summed(line, day, next - day),
             QRect(x, line * lineHeight() - verticalScrollBar()->value(), width, lineHeight())});
        day = next;
    }
    return cells;
}

void LoadStrip::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().base());
    const int wide = m_chart->labelWidth();
    for (int line = 0; line < std::ssize(m_lines); ++line) {
        const int y = line * lineHeight() - verticalScrollBar()->value();
        if (y + lineHeight() < 0 || y > viewport()->height())
            continue;
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(QRect(6, y, wide - 10, lineHeight()), Qt::AlignLeft | Qt::AlignVCenter,
                         fontMetrics().elidedText(m_lines[static_cast<size_t>(line)].name,
                                                  Qt::ElideRight, wide - 12));
        painter.setClipRect(QRect(wide, y, m_chart->chartWidth(), lineHeight()));
        for (const Cell& cell : seen(line)) {
            paintCell(painter, cell,
                      hasFocus() && line == m_line && m_day >= cell.day &&
                          m_day < cell.day + cell.days);
        }
        painter.setClipping(false);
    }
}

void LoadStrip::paintCell(QPainter& painter, const Cell& cell, bool current) const {
    const QRect inside = cell.rect.adjusted(1, 2, -1, -2);
    QColor open = palette().color(QPalette::Text);
    open.setAlpha(cell.load.available > 0 ? 22 : 8);
    painter.fillRect(inside, open);
    if (cell.load.planned > 0) {
        const bool over = cell.load.isOver();
        QColor fill = over ? controls::redText(palette()) : palette().color(QPalette::Highlight);
        fill.setAlpha(over ? 200 : 130);
        const double share = over ? 1.0 : cell.load.planned / cell.load.available;
        QRect taken = inside;
        taken.setTop(inside.bottom() - static_cast<int>(inside.height() * share) + 1);
        painter.fillRect(taken, fill);
        QString text = hoursText(cell.load.planned) + u'/' + hoursText(cell.load.available);
        if (painter.fontMetrics().horizontalAdvance(text) + 4 >= inside.width())
            text = hoursText(cell.load.planned);
        if (painter.fontMetrics().horizontalAdvance(text) + 4 < inside.width()) {
            painter.setPen(over ? palette().color(QPalette::Base)
                                : palette().color(QPalette::Text));
            // In the middle of what is seen of a wide cell.
            painter.drawText(
                inside.intersected(viewport()->rect().adjusted(m_chart->labelWidth(), 0, 0, 0)),
                Qt::AlignCenter, text);
        }
    }
    if (current) {
        painter.setPen(QPen(palette().color(QPalette::Text), 1, Qt::DotLine));
        painter.drawRect(inside.adjusted(0, 0, -1, -1));
    }
}

QString LoadStrip::tip(int line, int day) const {
    const int first = firstOfCell(day);
    const int days = cellDays() == 1 ? 1 : 8 - m_first.addDays(first).dayOfWeek();
    const LoadCell load = summed(line, first, days);
    QString text =
        m_lines[static_cast<size_t>(line)].name + u", "_s + (days > 1 ? u"week of "_s : QString()) +
        TimeScale::dateText(m_first.addDays(first), u"D, M n, Y"_s) +
        u"\n%1 of %2 hours planned"_s.arg(hoursText(load.planned), hoursText(load.available));
    if (load.isOver())
        text += u", %1 too many"_s.arg(hoursText(load.planned - load.available));
    QStringList work = workOf ? workOf(line, first, days) : QStringList();
    if (const auto more = work.size() - mostWork; more > 0)
        work = work.first(mostWork) << u"and %1 more"_s.arg(more);
    return (QStringList(text) << work).join(u'\n');
}

bool LoadStrip::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int line = (help->y() + verticalScrollBar()->value()) / lineHeight();
    if (line >= 0 && line < std::ssize(m_lines) && help->x() >= m_chart->labelWidth()) {
        for (const Cell& cell : seen(line)) {
            if (help->x() >= cell.rect.left() && help->x() < cell.rect.left() + cell.rect.width()) {
                QToolTip::showText(help->globalPos(), tip(line, cell.day), viewport());
                return true;
            }
        }
    }
    QToolTip::hideText();
    return true;
}

void LoadStrip::keyPressEvent(QKeyEvent* event) {
    if (m_lines.empty())
        return QAbstractScrollArea::keyPressEvent(event);
    const auto days = static_cast<int>(m_lines[static_cast<size_t>(m_line)].days.size());
    switch (event->key()) {
    case Qt::Key_Left:
        m_day -= cellDays();
        break;
    case Qt::Key_Right:
        m_day += cellDays();
        break;
    case Qt::Key_Up:
        --m_line;
        break;
    case Qt::Key_Down:
        ++m_line;
        break;
    default:
        return QAbstractScrollArea::keyPressEvent(event);
    }
    m_line = std::clamp(m_line, 0, static_cast<int>(m_lines.size()) - 1);
    m_day = std::clamp(m_day, 0, std::max(0, days - 1));
    tell();
}

/// Says and shows what the current cell holds.
void LoadStrip::tell() {
    if (m_lines.empty() || m_lines[static_cast<size_t>(m_line)].days.empty())
        return;
    const int top = m_line * lineHeight();
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(std::clamp(bar->value(), top + lineHeight() - viewport()->height(), top));
    const Minute at = minuteOf(m_first.addDays(m_day));
    const TimeScale& scale = m_chart->scale();
    const int x = scale.xOf(at) - scale.xOf(m_chart->leftMoment());
    if (x < 0 || x > m_chart->chartWidth() - 20)
        m_chart->showMoment(at);
    const QString text = tip(m_line, m_day);
    setAccessibleDescription(QString(text).replace(u'\n', u", "_s));
    QAccessibleEvent spoken(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&spoken);
    QToolTip::showText(viewport()->mapToGlobal(
                           QPoint(m_chart->labelWidth() + std::clamp(x, 0, m_chart->chartWidth()),
                                  top - bar->value() + lineHeight())),
                       text, viewport());
    viewport()->update();
}

void LoadStrip::resizeEvent(QResizeEvent*) {
    updateBar();
}

void LoadStrip::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void LoadStrip::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

void LoadStrip::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateBar();
        updateGeometry();
    }
}

} // namespace gantt
