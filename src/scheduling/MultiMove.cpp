#include "scheduling/MultiMove.h"

#include <algorithm>

namespace scheduling {

using gantt::Bar;
using gantt::BarMove;
using gantt::Span;
using gantt::State;

std::vector<BarMove> MultiMove::followers(const gantt::Model& model, int row, int bar,
                                          const Span& before, const Span& after) const {
    std::vector<BarMove> moves;
    const Bar& dragged = model.bar(row, bar);
    if (dragged.style != 0 || dragged.state == State::Deleted)
        return moves;
    if (!enabled || (before.length() != after.length() && !resize))
        return moves;
    for (int r = bySequence ? row : 1; r <= model.rowCount(); ++r) {
        for (int b = 1; b <= model.barCount(r); ++b) {
            const Bar& other = model.bar(r, b);
            if (other.style != 0 || other.state != State::Normal || (r == row && b == bar))
                continue;
            if (!bySequence && other.span.start <= before.start)
                continue;
            Span moved{other.span.start + after.start - before.start,
                       other.span.end + after.end - before.end};
            // Made shorter by more than it has, an entry keeps its start.
            moved.end = std::max(moved.start, moved.end);
            moves.push_back({r, b, moved});
        }
    }
    return moves;
}

} // namespace scheduling
