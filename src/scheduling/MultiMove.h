#pragma once

#include "platform/gantt/Model.h"

#include <vector>

namespace scheduling {

/// What a change of one entry does to the others.
struct MultiMove {
    bool enabled = false;
    bool resize = false; ///< also where the entry's length changes
    /// The rows from the entry's own row on, whatever their dates. Otherwise every row, those that
    /// start later.
    bool bySequence = false;

    /// The entries that go along when a bar changes from one place to another, each by the
    /// same distance at its start and at its end. Blocks, deleted entries and those of finished
    /// operations stay.
    std::vector<gantt::BarMove> followers(const gantt::Model& model, int row, int bar,
                                          const gantt::Span& before,
                                          const gantt::Span& after) const;
};

} // namespace scheduling
