#include "platform/gantt/RowLayouts.h"

#include <algorithm>

namespace gantt {

namespace {

/// More bars at one moment than this lie on one another: rows stay on the screen.
constexpr int mostLanes = 8;

} // namespace

RowLayout RowLayout::of(const std::vector<Bar>& bars) {
    RowLayout layout;
    layout.byStart.reserve(bars.size());
    for (size_t i = 0; i < bars.size(); ++i) {
        layout.byStart.push_back({static_cast<int>(i) + 1, 0});
        layout.longest = std::max(layout.longest, bars[i].span.length());
    }
    const auto startOf = [&](const Placed& p) {
        return bars[static_cast<size_t>(p.bar) - 1].span.start;
    };
    std::stable_sort(layout.byStart.begin(), layout.byStart.end(),
                     [&](const Placed& a, const Placed& b) { return startOf(a) < startOf(b); });
    std::vector<Minute> free; // for each lane the end of its last bar
    for (Placed& placed : layout.byStart) {
        const Bar& bar = bars[static_cast<size_t>(placed.bar) - 1];
        if (bar.style != 0)
            continue;
        auto lane = std::find_if(free.begin(), free.end(),
                                 [&](Minute end) { return end <= bar.span.start; });
        if (lane == free.end() && std::ssize(free) == mostLanes)
            lane = std::min_element(free.begin(), free.end());
        if (lane == free.end())
            lane = free.insert(free.end(), 0);
        // A bar without length still takes its place.
        *lane = std::max(bar.span.end, bar.span.start + 1);
        placed.lane = static_cast<int>(lane - free.begin());
    }
    layout.lanes = std::max(1, static_cast<int>(free.size()));
    return layout;
}

size_t RowLayout::firstReaching(const std::vector<Bar>& bars, Minute from) const {
    const auto found = std::lower_bound(
        byStart.begin(), byStart.end(), from - longest, [&](const Placed& placed, Minute moment) {
            return bars[static_cast<size_t>(placed.bar) - 1].span.start < moment;
        });
    return static_cast<size_t>(found - byStart.begin());
}

void RowLayouts::update(const Model& model, int laneHeight) {
    if (m_revision == model.revision() && m_laneHeight == laneHeight)
        return;
    const auto rows = static_cast<size_t>(model.rowCount());
    m_rows.resize(rows);
    m_tops.assign(rows + 1, 0);
    for (size_t i = 0; i < rows; ++i) {
        const int number = static_cast<int>(i) + 1;
        const quint64 revision = model.rowRevision(number);
        // Rows without bars have never changed.
        if (m_rows[i].revision != revision || revision == 0) {
            m_rows[i] = RowLayout::of(model.bars(number));
            m_rows[i].revision = revision;
        }
        m_tops[i + 1] = m_tops[i] + m_rows[i].lanes * laneHeight;
    }
    m_revision = model.revision();
    m_laneHeight = laneHeight;
}

int RowLayouts::rowAt(int y) const {
    if (y < 0 || y >= height())
        return 0;
    return static_cast<int>(std::upper_bound(m_tops.begin(), m_tops.end(), y) - m_tops.begin());
}

} // namespace gantt
