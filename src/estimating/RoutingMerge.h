#pragma once

#include "core/records/DocumentColumns.h"
#include "estimating/Routing.h"

#include <optional>

namespace estimating {

/// What other stations and programs have `stored` in the lines of a document since `before` was
/// read goes into `mine`; what was changed here stays. Tells the first thing that both changed:
/// `mine` is of no more use then.
///
/// Operations: rows are matched by operation; figures that aren't typed (booked hours, status,
/// place) are always the stored ones. The rows of `mine` get the identities of the stored ones.
std::optional<core::ChangedElsewhere> joinOperations(const RoutingKind& kind,
                                                     const std::vector<OperRow>& before,
                                                     const std::vector<OperRow>& stored,
                                                     std::vector<OperRow>& mine);
/// Fixed costs: where inventory issues to the document, quantities that both changed add up. Throws
/// values::Overflow.
std::optional<core::ChangedElsewhere> joinFixedCosts(const RoutingKind& kind,
                                                     const std::vector<MiscRow>& before,
                                                     const std::vector<MiscRow>& stored,
                                                     std::vector<MiscRow>& mine);

/// Whether two documents have the same lines, as far as people type them.
bool sameLines(const RoutingKind& kind, const RoutedLines& a, const RoutedLines& b);

} // namespace estimating
