#pragma once

#include "platform/gantt/Model.h"

#include <vector>

namespace gantt {

/// How the bars of a row share its height: bars that overlap in time stand below one another, so
/// that none hides another. Styled bars (blocks) take the whole height.
struct RowLayout {
    struct Placed {
        int bar = 0;
        int lane = 0;
    };
    int lanes = 1;
    std::vector<Placed> byStart; ///< sorted by start
    Minute longest = 0;
    quint64 revision = ~quint64{0};

    static RowLayout of(const std::vector<Bar>& bars);
    /// The first bar of byStart that can reach `from`.
    size_t firstReaching(const std::vector<Bar>& bars, Minute from) const;
};

/// The layouts of all rows and where each row stands, kept up to date with a model.
class RowLayouts {
  public:
    /// Lays out afresh what changed. `laneHeight` in pixels.
    void update(const Model& model, int laneHeight);
    int height() const { return m_tops.empty() ? 0 : m_tops.back(); }
    int top(int row) const { return m_tops.at(static_cast<size_t>(row) - 1); }
    int bottom(int row) const { return m_tops.at(static_cast<size_t>(row)); }
    /// The row at a height from the top; 0 below the last.
    int rowAt(int y) const;
    const RowLayout& row(int number) const { return m_rows.at(static_cast<size_t>(number) - 1); }

  private:
    std::vector<RowLayout> m_rows;
    std::vector<int> m_tops;
    quint64 m_revision = ~quint64{0};
    int m_laneHeight = 0;
};

} // namespace gantt
