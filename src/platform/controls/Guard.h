#pragma once

#include <functional>

namespace controls {

/// Runs what a control does on its own for the user (moving through a recordset, say) so that no
/// exception crosses the event loop. The screens' ground says what becomes of one.
void guarded(const std::function<void()>& action);

/// Puts the function that guarded() runs actions through.
void setGuard(std::function<void(const std::function<void()>&)> guard);

} // namespace controls
