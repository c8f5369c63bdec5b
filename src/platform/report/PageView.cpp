#include "platform/report/PageView.h"

#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace report {

namespace {
constexpr int gap = 12; // pixels between pages and around them
} // namespace

PageView::PageView(std::shared_ptr<const Document> document, QWidget* parent)
    : QAbstractScrollArea(parent), m_document(std::move(document)), m_painter(*m_document) {
    m_pages.setMaxCost(16);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(u"Report pages"_s);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setBackgroundRole(QPalette::Mid);
    viewport()->setAutoFillBackground(true);
}

double PageView::pixelsForMm() const {
    return m_percent / 100 * logicalDpiX() / 25.4;
}

QSize PageView::pageSize() const {
    const double scale = pixelsForMm();
    return {qRound(m_document->paper.size.width() * scale),
            qRound(m_document->paper.size.height() * scale)};
}

int PageView::pageTop(int page) const {
    return gap + page * (pageSize().height() + gap);
}

int PageView::pageLeft() const {
    return std::max(gap, (viewport()->width() - pageSize().width()) / 2);
}

void PageView::layOut() {
    const QSizeF paper = m_document->paper.size * (logicalDpiX() / 25.4);
    const double widthPercent = (viewport()->width() - 2 * gap) / paper.width() * 100;
    const double heightPercent = (viewport()->height() - 2 * gap) / paper.height() * 100;
    if (m_zoom == Zoom::Width)
        m_percent = std::clamp(widthPercent, 10.0, 400.0);
    else if (m_zoom == Zoom::Page)
        m_percent = std::clamp(std::min(widthPercent, heightPercent), 10.0, 400.0);
    const int height = pageTop(m_document->pageCount());
    const int width = pageSize().width() + 2 * gap;
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
    viewport()->update();
}

int PageView::currentPage() const {
    const int middle = verticalScrollBar()->value() + viewport()->height() / 2;
    const int last = std::max(0, m_document->pageCount() - 1);
    // At either end it is the first or the last page, however little of it is in the middle.
    if (verticalScrollBar()->value() == verticalScrollBar()->maximum() &&
        pageSize().height() < viewport()->height())
        return last;
    return std::clamp((middle - gap / 2) / (pageSize().height() + gap), 0, last);
}

void PageView::goToPage(int page) {
    const int wanted = std::clamp(page, 0, std::max(0, m_document->pageCount() - 1));
    verticalScrollBar()->setValue(pageTop(wanted) - gap);
    if (changed)
        changed();
}

void PageView::setZoom(Zoom zoom, double percent) {
    const int page = currentPage();
    const double share =
        (verticalScrollBar()->value() - pageTop(page)) / double(std::max(1, pageSize().height()));
    m_zoom = zoom;
    m_percent = std::clamp(percent, 10.0, 400.0);
    layOut();
    verticalScrollBar()->setValue(pageTop(page) + qRound(share * pageSize().height()));
    if (changed)
        changed();
}

const Page& PageView::page(int index) {
    if (const auto* known = m_pages.object(index))
        return *known;
    auto* made = new Page(m_document->page(index));
    m_pages.insert(index, made);
    return *made; // NOLINT(clang-analyzer-cplusplus.NewDelete): one page is never too dear to keep
}

void PageView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QPoint offset(horizontalScrollBar()->value(), verticalScrollBar()->value());
    const QRect seen = event->rect().translated(offset);
    const QSize size = pageSize();
    const int first = std::max(0, seen.top() / (size.height() + gap));
    for (int index = first; index < m_document->pageCount() && pageTop(index) <= seen.bottom();
         ++index) {
        const QRect paper(QPoint(pageLeft(), pageTop(index)) - offset, size);
        painter.fillRect(paper, Qt::white);
        painter.setPen(palette().color(QPalette::Dark));
        painter.drawRect(paper.adjusted(-1, -1, 0, 0));
        painter.save();
        painter.setClipRect(paper);
        painter.translate(paper.topLeft());
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        const double scale = pixelsForMm();
        for (const auto& hit : hitsOn(index)) {
            const bool isCurrent = m_hit.page == index && m_hit.place == hit;
            painter.fillRect(QRectF(hit.topLeft() * scale, hit.size() * scale),
                             isCurrent ? QColor(255, 170, 60) : QColor(255, 240, 120));
        }
        m_painter.paint(painter, page(index), scale);
        painter.restore();
    }
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const int kept = m_current;
    layOut();
    if (m_zoom != Zoom::Percent)
        goToPage(kept);
}

void PageView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

void PageView::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        setZoom(Zoom::Percent, m_percent * std::pow(1.1, event->angleDelta().y() / 120.0));
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void PageView::keyPressEvent(QKeyEvent* event) {
    auto* bar = verticalScrollBar();
    switch (event->key()) {
    case Qt::Key_Up:
        bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
        return;
    case Qt::Key_Down:
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        return;
    case Qt::Key_Space:
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        return;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::scrollContentsBy(int, int) {
    viewport()->update();
    const int now = currentPage();
    if (now != m_current) {
        m_current = now;
        if (changed)
            changed();
    }
}

std::vector<QRectF> PageView::hitsOn(int index) {
    std::vector<QRectF> hits;
    if (m_wanted.isEmpty())
        return hits;
    for (const auto& item : page(index).items) {
        if (item.kind != PageItem::Kind::Text)
            continue;
        for (auto at = values::indexOfText(item.text, m_wanted); at >= 0;
             at = values::indexOfText(item.text, m_wanted, at + m_wanted.size()))
            hits.push_back(m_painter.textRect(item, at, m_wanted.size()));
    }
    std::stable_sort(hits.begin(), hits.end(), [](const QRectF& a, const QRectF& b) {
        return std::pair(qRound(a.top()), a.left()) < std::pair(qRound(b.top()), b.left());
    });
    return hits;
}

bool PageView::find(const QString& text, bool backward) {
    if (!values::sameText(m_wanted, text))
        m_hit = {};
    m_wanted = text;
    viewport()->update();
    const int count = m_document->pageCount();
    if (text.isEmpty() || count == 0)
        return false;
    const int start = m_hit.page >= 0 ? m_hit.page : currentPage();
    // The page begun with is looked at again at the end, from its other side.
    for (int step = 0; step <= count; ++step) {
        const int index = ((start + (backward ? -step : step)) % count + count) % count;
        auto hits = hitsOn(index);
        if (backward)
            std::reverse(hits.begin(), hits.end());
        if (hits.empty())
            continue;
        const auto last = step == 0 && m_hit.page == index
                              ? std::find(hits.begin(), hits.end(), m_hit.place)
                              : hits.end();
        if (last == hits.end()) {
            showHit({index, hits.front()});
            return true;
        }
        if (last + 1 != hits.end()) {
            showHit({index, *(last + 1)});
            return true;
        }
    }
    m_hit = {};
    return false;
}

void PageView::clearSearch() {
    m_wanted.clear();
    m_hit = {};
    viewport()->update();
}

void PageView::showHit(const Hit& hit) {
    m_hit = hit;
    const double scale = pixelsForMm();
    const int top = pageTop(hit.page) + qRound(hit.place.top() * scale);
    const int bottom = top + qRound(hit.place.height() * scale);
    auto* bar = verticalScrollBar();
    if (top < bar->value() || bottom > bar->value() + viewport()->height())
        bar->setValue(top - viewport()->height() / 3);
    auto* across = horizontalScrollBar();
    const int left = pageLeft() + qRound(hit.place.left() * scale);
    if (left < across->value() || left > across->value() + viewport()->width())
        across->setValue(left - viewport()->width() / 3);
    viewport()->update();
    if (changed)
        changed();
}

} // namespace report
