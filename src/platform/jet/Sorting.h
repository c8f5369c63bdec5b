#pragma once

#include "platform/jet/Rows.h"
#include "platform/jet/Translate.h"
#include "platform/jet/engines/Engine.h"

namespace jet {

/// Puts rows in the order of their terms. Where the engine sorts by bytes only those are moved that
/// have letters beyond ASCII, so that a set of plain texts costs one look at each. Terms that are
/// no column of the select stand from `behind` on, in their order.
void sortRows(Rows& rows, const std::vector<SortTerm>& terms, int behind, EngineOrder order);

/// Drops rows that are the same as one before them but for the case of letters beyond ASCII, in
/// their first `columns` cells.
void dropRepeated(Rows& rows, int columns);

} // namespace jet
