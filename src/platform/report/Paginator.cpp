#include "platform/report/Paginator.h"

#include <algorithm>

namespace report {

namespace {
constexpr double hair = 0.01;
}

Paginator::Paginator(const Paper& paper, Frame frame)
    : m_paper(paper), m_frame(std::move(frame)),
      m_bodyHeight(paper.size.height() - paper.top - paper.bottom) {}

void Paginator::place(PlacedBand band) {
    if (m_holds > 0 && !m_overflown) {
        m_heldHeight += band.height;
        m_held.emplace_back(std::move(band));
        if (m_heldHeight > freshRoom()) {
            m_overflown = true;
            carryOutHeld();
        }
        return;
    }
    placeNow(std::move(band));
}

void Paginator::endRepeat(int number) {
    if (m_holds > 0 && !m_overflown)
        m_held.emplace_back(EndRepeat{number});
    else
        carryOut(EndRepeat{number});
}

void Paginator::newPage() {
    if (m_holds > 0 && !m_overflown)
        m_held.emplace_back(BreakPage{});
    else
        carryOut(BreakPage{});
}

void Paginator::hold() {
    if (m_holds++ == 0) {
        m_overflown = false;
        m_heldHeight = 0;
    }
}

void Paginator::release() {
    if (--m_holds > 0 || m_overflown)
        return;
    double needed = m_heldHeight;
    for (const auto& band : m_waiting)
        needed += band.height;
    startPage();
    if (needed > room() + hair && !isFresh())
        endPage();
    carryOutHeld();
}

void Paginator::carryOutHeld() {
    while (!m_held.empty()) {
        Step step = std::move(m_held.front());
        m_held.pop_front();
        carryOut(std::move(step));
    }
}

void Paginator::carryOut(Step&& step) {
    if (auto* band = std::get_if<PlacedBand>(&step)) {
        placeNow(std::move(*band));
    } else if (auto* end = std::get_if<EndRepeat>(&step)) {
        for (auto& waiting : m_waiting) {
            if (waiting.repeat == end->number)
                waiting.repeat = 0;
        }
        std::erase_if(m_repeated, [&](const auto& header) { return header.repeat == end->number; });
    } else {
        placeWaiting();
        if (m_open && !isFresh())
            endPage();
    }
}

void Paginator::placeNow(PlacedBand&& band) {
    if (band.newPage) {
        placeWaiting();
        if (m_open && !isFresh())
            endPage();
    }
    if (band.keepWithNext) {
        m_waiting.push_back(std::move(band));
        double height = 0;
        for (const auto& waiting : m_waiting)
            height += waiting.height;
        if (height > freshRoom() / 2)
            placeWaiting();
        return;
    }
    startPage();
    double needed = 0;
    for (const auto& waiting : m_waiting)
        needed += waiting.height;
    const bool whole = band.keepTogether && needed + band.height <= freshRoom() + hair;
    needed += whole ? band.height : band.firstPart();
    if (needed > room() + hair && !isFresh()) {
        endPage();
        startPage();
    }
    placeWaiting();
    put(std::move(band));
}

void Paginator::placeWaiting() {
    auto waiting = std::move(m_waiting);
    m_waiting.clear();
    for (auto& band : waiting)
        put(std::move(band));
}

void Paginator::put(PlacedBand&& band) {
    for (;;) {
        startPage();
        if (band.height <= room() + hair) {
            add(band);
            break;
        }
        if (!isFresh() && band.keepTogether && band.height <= freshRoom() + hair) {
            endPage();
            continue;
        }
        // Blank space at a band's end may run over the end of the page.
        PlacedBand first = band.split(room());
        if (first.items.empty() && isFresh()) {
            // Higher than any page: it stands there, cut, rather than nowhere.
            add(band);
            endPage();
            return;
        }
        add(first);
        if (band.items.empty())
            return;
        endPage();
    }
    if (band.repeat != 0)
        m_repeated.push_back(std::move(band));
}

void Paginator::add(const PlacedBand& band) {
    for (PageItem item : band.items) {
        item.x += static_cast<float>(m_paper.left);
        item.y += static_cast<float>(m_y);
        m_page.items.push_back(std::move(item));
    }
    m_y += band.height;
}

double Paginator::freshRoom() const {
    double repeated = 0;
    for (const auto& band : m_repeated)
        repeated += band.height;
    return m_bodyHeight - (repeated > m_bodyHeight / 2 ? 0 : repeated);
}

void Paginator::startPage() {
    if (m_open)
        return;
    m_open = true;
    ++m_pageNumber;
    m_page = {};
    m_y = m_paper.top;
    for (const auto& band : m_frame.header(m_pageNumber))
        add(band);
    const double bodyTop = m_y;
    const auto footer = m_frame.footer(m_pageNumber);
    double footerHeight = 0;
    for (const auto& band : footer)
        footerHeight += band.height;
    m_bottom = m_paper.size.height() - m_paper.bottom - footerHeight;
    m_y = m_bottom;
    for (const auto& band : footer)
        add(band);
    m_y = bodyTop;
    // A frame that leaves no room would never let a page fill.
    m_bottom = std::max(m_bottom, bodyTop + 20);
    m_bodyHeight = m_bottom - bodyTop;
    if (freshRoom() < m_bodyHeight || m_repeated.empty()) {
        for (const auto& band : m_repeated)
            add(band);
    }
    m_freshY = m_y;
}

void Paginator::endPage() {
    m_open = false;
    m_frame.done(std::move(m_page));
    m_page = {};
}

void Paginator::finish() {
    placeWaiting();
    if (m_pageNumber == 0)
        startPage();
    if (m_open)
        endPage();
}

} // namespace report
