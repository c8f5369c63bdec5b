#pragma once

#include "platform/report/BandLayout.h"

#include <deque>
#include <functional>
#include <variant>
#include <vector>

namespace report {

/// Puts bands on pages, one below the other.
class Paginator {
  public:
    /// `header` and `footer` give the bands that frame a page; `page` counts from 1. `done` gets
    /// each page that is full.
    struct Frame {
        std::function<std::vector<PlacedBand>(int page)> header, footer;
        std::function<void(Page&&)> done;
    };
    Paginator(const Paper& paper, Frame frame);

    void place(PlacedBand band);
    /// From now on the header of that number, placed before, isn't repeated on new pages.
    void endRepeat(int number);
    void newPage();
    /// What is placed until release() stays on one page, if one has room for it. Nests.
    void hold();
    void release();
    /// Ends the last page. Without any band there is one page with header and footer.
    void finish();
    /// The page that a band would be placed on now, from 1.
    int pageNumber() const { return std::max(1, m_pageNumber); }

  private:
    struct EndRepeat {
        int number;
    };
    struct BreakPage {};
    using Step = std::variant<PlacedBand, EndRepeat, BreakPage>;

    void carryOut(Step&& step);
    void carryOutHeld();
    void placeNow(PlacedBand&& band);
    void placeWaiting();
    void put(PlacedBand&& band);
    void add(const PlacedBand& band);
    void startPage();
    void endPage();
    double room() const { return m_bottom - m_y; }
    /// Room on a page on which nothing but its frame and the repeated headers stand.
    double freshRoom() const;
    bool isFresh() const { return m_y <= m_freshY + 0.001; }

    Paper m_paper;
    Frame m_frame;
    Page m_page;
    bool m_open = false;
    int m_pageNumber = 0;
    double m_y = 0, m_freshY = 0, m_bottom = 0;
    double m_bodyHeight;
    std::vector<PlacedBand> m_waiting; ///< bands that stay with the next one
    std::vector<PlacedBand> m_repeated;
    int m_holds = 0;
    bool m_overflown = false; ///< what is held doesn't fit on a page: no longer held back
    std::deque<Step> m_held;
    double m_heldHeight = 0;
};

} // namespace report
