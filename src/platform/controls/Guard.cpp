#include "platform/controls/Guard.h"

#include <utility>

namespace controls {

namespace {
std::function<void(const std::function<void()>&)> theGuard;
}

void guarded(const std::function<void()>& action) {
    if (theGuard)
        theGuard(action);
    else
        action();
}

void setGuard(std::function<void(const std::function<void()>&)> guard) {
    theGuard = std::move(guard);
}

} // namespace controls
