#include "platform/gantt/ChartView.h"

#include "platform/controls/HistoryKeys.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace gantt {

namespace {

QString momentText(Minute moment) {
    const int minute = minuteOfDay(moment);
    const int hour = minute / 60;
    return TimeScale::dateText(dateOf(moment), u"D, M n, Y"_s) +
           u" %1:%2 %3"_s.arg(hour % 12 == 0 ? 12 : hour % 12)
               .arg(minute % 60, 2, 10, QLatin1Char('0'))
               .arg(hour < 12 ? u"AM"_s : u"PM"_s);
}

} // namespace

/// Dates, hours and text of a bar at a place.
QString ChartView::tip(const Bar& bar, const Span& span) const {
    const double hours = static_cast<double>(span.length()) / 60.0;
    QString text = momentText(span.start) + u" to "_s + momentText(span.end) +
                   u"\n%1 hours"_s.arg(values::numberText(std::round(hours * 100) / 100));
    if (!bar.text.isEmpty())
        text += u'\n' + bar.text;
    return text;
}

bool ChartView::mayChange(int row, int bar) const {
    return bar > 0 && !m_model.isReadOnly() && m_model.bar(row, bar).state == State::Normal &&
           m_model.bar(row, bar).style == 0;
}

/// Selects as a person does, with the events that a screen acts on.
void ChartView::choose(int row, int bar) {
    const bool hadBar = m_model.selectedBar() != 0;
    m_model.select(row, bar);
    if (hadBar && bar == 0)
        selectionLost();
    if (row > 0)
        rowSelected(row);
    if (bar > 0)
        barSelected(row, bar);
}

// Changing a bar

void ChartView::change(int row, int bar, const Span& after) {
    const Span before = m_model.bar(row, bar).span;
    if (before == after)
        return;
    std::vector<BarMove> moves = {{row, bar, after}};
    if (followers) {
        const auto others = followers(row, bar, before, after);
        moves.insert(moves.end(), others.begin(), others.end());
    }
    m_model.moveBars(moves);
    barChanged(row, bar, before, after);
}

void ChartView::stepBar(Hit::Part part, int direction) {
    const int row = m_model.selectedRow();
    const int bar = m_model.selectedBar();
    if (!mayChange(row, bar)) {
        QApplication::beep();
        return;
    }
    beforeChange(row, bar);
    const Minute by = direction * std::min(m_scale.step(), minutesPerDay);
    Span span = m_model.bar(row, bar).span;
    if (part != Hit::Part::End)
        span.start += by;
    if (part != Hit::Part::Start)
        span.end += by;
    if (span.end < span.start)
        return;
    change(row, bar, span);
    ensureVisible(row, bar);
    say();
}

void ChartView::beginDrag(const QPoint& place) {
    const Hit hit = hitTest(place);
    if (!mayChange(hit.row, hit.bar))
        return;
    m_drag = Drag{hit.row,
                  hit.bar,
                  hit.part,
                  m_model.bar(hit.row, hit.bar).span,
                  m_scale.at(place.x() - labelWidth() + horizontalScrollBar()->value()),
                  place,
                  false};
}

Span ChartView::spanAt(const QPoint& place) const {
    const Minute here = m_scale.at(place.x() - labelWidth() + horizontalScrollBar()->value());
    const Minute by = here - m_drag->grabbed;
    Span span = m_drag->before;
    if (m_drag->part == Hit::Part::Middle) {
        span.start = m_scale.snapped(span.start + by, span.start);
        span.end = span.start + m_drag->before.length();
    } else if (m_drag->part == Hit::Part::Start) {
        span.start = std::min(m_scale.snapped(span.start + by, span.start), span.end);
    } else {
        span.end = std::max(m_scale.snapped(span.end + by, span.end), span.start);
    }
    return span;
}

void ChartView::dragTo(const QPoint& place) {
    m_pointer = place;
    if (!m_drag->begun) {
        if ((place - m_drag->pressed).manhattanLength() < QApplication::startDragDistance())
            return;
        m_drag->begun = true;
        m_rest = QPixmap();
        beforeChange(m_drag->row, m_drag->bar);
    }
    const Span span = spanAt(place);
    if (m_moving.empty() || !(m_moving.front().span == span)) {
        m_moving = {{m_drag->row, m_drag->bar, span}};
        if (followers && !(span == m_drag->before)) {
            const auto others = followers(m_drag->row, m_drag->bar, m_drag->before, span);
            m_moving.insert(m_moving.end(), others.begin(), others.end());
        }
        viewport()->update();
        dragged();
    }
    QToolTip::showText(viewport()->mapToGlobal(place + QPoint(12, 16)),
                       tip(m_model.bar(m_drag->row, m_drag->bar), span), viewport());
    const QRect inside(labelWidth() + 16, rulerHeight() + 8, chartWidth() - 32,
                       viewport()->height() - rulerHeight() - 16);
    if (inside.contains(place))
        m_autoScroll.stop();
    else if (!m_autoScroll.isActive())
        m_autoScroll.start();
}

void ChartView::autoScroll() {
    if (!m_drag || !m_drag->begun) {
        m_autoScroll.stop();
        return;
    }
    QScrollBar* across = horizontalScrollBar();
    if (m_pointer.x() < labelWidth() + 16)
        across->setValue(across->value() - 16);
    else if (m_pointer.x() > viewport()->width() - 16)
        across->setValue(across->value() + 16);
    QScrollBar* down = verticalScrollBar();
    if (m_pointer.y() < rulerHeight() + 8)
        down->setValue(down->value() - laneHeight() / 2);
    else if (m_pointer.y() > viewport()->height() - 8)
        down->setValue(down->value() + laneHeight() / 2);
    dragTo(m_pointer);
}

void ChartView::endDrag(bool keep) {
    if (!m_drag)
        return;
    const Drag drag = *m_drag;
    m_drag.reset();
    m_autoScroll.stop();
    m_rest = QPixmap();
    const std::vector<BarMove> moves = std::exchange(m_moving, {});
    viewport()->update();
    if (!drag.begun)
        return;
    QToolTip::hideText();
    if (keep && !moves.empty())
        change(drag.row, drag.bar, moves.front().span);
    dragged();
}

void ChartView::undo() {
    endDrag(false);
    if (!m_model.isReadOnly())
        m_model.undo();
}

void ChartView::redo() {
    endDrag(false);
    if (!m_model.isReadOnly())
        m_model.redo();
}

// Mouse

void ChartView::mousePressEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    const Hit hit = hitTest(place);
    choose(hit.row, hit.bar);
    if (event->button() == Qt::LeftButton)
        beginDrag(place);
}

void ChartView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint place = event->position().toPoint();
    if (m_drag && (event->buttons() & Qt::LeftButton) != 0) {
        dragTo(place);
        return;
    }
    showHover(place);
}

void ChartView::showHover(const QPoint& place) {
    const Hit hit = hitTest(place);
    Qt::CursorShape shape = Qt::ArrowCursor;
    if (mayChange(hit.row, hit.bar))
        shape = hit.part == Hit::Part::Middle ? Qt::SizeAllCursor : Qt::SizeHorCursor;
    viewport()->setCursor(shape);
}

void ChartView::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        endDrag(true);
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* event) {
    endDrag(false);
    const Hit hit = hitTest(event->position().toPoint());
    if (event->button() == Qt::LeftButton && hit.bar > 0)
        doubleClicked(hit.row, hit.bar);
}

void ChartView::contextMenuEvent(QContextMenuEvent* event) {
    endDrag(false);
    QPoint where = event->globalPos();
    if (event->reason() == QContextMenuEvent::Keyboard) {
        // At what is selected, not at the pointer.
        QPoint at(labelWidth() / 2, rulerHeight());
        if (const int row = m_model.selectedRow(); row > 0) {
            at.setY(rulerHeight() + m_layouts.bottom(row) - verticalScrollBar()->value());
            if (const int bar = m_model.selectedBar(); bar > 0)
                at.setX(std::clamp(barRect(row, bar).left(), labelWidth(), viewport()->width()));
        }
        where = viewport()->mapToGlobal(at);
    }
    menuRequested(where);
}

void ChartView::wheelEvent(QWheelEvent* event) {
    const int turned = event->angleDelta().y();
    if ((event->modifiers() & Qt::ControlModifier) != 0 && turned != 0) {
        zoomRequested(turned > 0 ? 1 : -1);
        return;
    }
    if ((event->modifiers() & Qt::ShiftModifier) != 0 && turned != 0) {
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - turned);
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

bool ChartView::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip && !m_drag) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const Hit hit = hitTest(help->pos());
        if (hit.bar > 0) {
            const Bar& bar = m_model.bar(hit.row, hit.bar);
            QToolTip::showText(help->globalPos(), tip(bar, bar.span), viewport());
        } else {
            QToolTip::hideText();
        }
        return true;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

// Keyboard

bool ChartView::event(QEvent* event) {
    // Keys that a window around would take: the arrows with Ctrl, undo, Escape of a drag.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* press = static_cast<QKeyEvent*>(event);
        const bool arrow = press->key() == Qt::Key_Left || press->key() == Qt::Key_Right;
        if (controls::isUndo(*press) || controls::isRedo(*press) ||
            press->key() == Qt::Key_Delete ||
            (arrow && (press->modifiers() & Qt::AltModifier) == 0) ||
            (press->key() == Qt::Key_Escape && m_drag)) {
            press->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ChartView::stepSelection(int key, Qt::KeyboardModifiers modifiers) {
    const int rows = m_model.rowCount();
    if (rows == 0)
        return;
    const int row = m_model.selectedRow();
    const int bar = m_model.selectedBar();
    const int page = std::max(1, (viewport()->height() - rulerHeight()) / laneHeight() - 1);
    int next = row;
    switch (key) {
    case Qt::Key_Up:
        next = row - 1;
        break;
    case Qt::Key_Down:
        next = row + 1;
        break;
    case Qt::Key_PageUp:
        next = row - page;
        break;
    case Qt::Key_PageDown:
        next = row + page;
        break;
    case Qt::Key_Home:
        if ((modifiers & Qt::ControlModifier) != 0)
            next = 1;
        break;
    case Qt::Key_End:
        if ((modifiers & Qt::ControlModifier) != 0)
            next = rows;
        break;
    default:
        break;
    }
    next = std::clamp(next, 1, rows);
    if (next != row) {
        choose(next, 0);
        ensureVisible(next, 0);
        return;
    }
    // Along the row, in the order of time.
    std::vector<int> order;
    for (const RowLayout::Placed& placed : m_layouts.row(row).byStart) {
        if (m_model.bar(row, placed.bar).style == 0)
            order.push_back(placed.bar);
    }
    if (order.empty())
        return;
    const auto at = std::find(order.begin(), order.end(), bar);
    int wanted = 0;
    if (key == Qt::Key_Home || (key == Qt::Key_Right && at == order.end()))
        wanted = order.front();
    else if (key == Qt::Key_End || (key == Qt::Key_Left && at == order.end()))
        wanted = order.back();
    else if (key == Qt::Key_Right && std::next(at) != order.end())
        wanted = *std::next(at);
    else if (key == Qt::Key_Left && at != order.begin())
        wanted = *std::prev(at);
    if (wanted == 0)
        return;
    choose(row, wanted);
    ensureVisible(row, wanted);
}

void ChartView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && m_drag) {
        endDrag(false);
        return;
    }
    if (controls::isUndo(*event) || controls::isRedo(*event)) {
        controls::isUndo(*event) ? undo() : redo();
        return;
    }
    const bool control = (event->modifiers() & Qt::ControlModifier) != 0;
    const bool shift = (event->modifiers() & Qt::ShiftModifier) != 0;
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const int direction = event->key() == Qt::Key_Right ? 1 : -1;
        if (control && shift)
            stepBar(Hit::Part::Start, direction);
        else if (shift)
            stepBar(Hit::Part::End, direction);
        else if (control)
            stepBar(Hit::Part::Middle, direction);
        else
            stepSelection(event->key(), event->modifiers());
        return;
    }
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        stepSelection(event->key(), event->modifiers());
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_model.selectedBar() > 0) {
            doubleClicked(m_model.selectedRow(), m_model.selectedBar());
            return;
        }
        // On a row it means nothing; the window's own button isn't meant either.
        if (m_model.selectedRow() > 0)
            return;
        break;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        keyPressed(event->key());
        return;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        if (control) {
            zoomRequested(1);
            return;
        }
        break;
    case Qt::Key_Minus:
        if (control) {
            zoomRequested(-1);
            return;
        }
        break;
    default:
        break;
    }
    QAbstractScrollArea::keyPressEvent(event);
}

} // namespace gantt
