#pragma once

#include <functional>

namespace core {

/// Something that works beside the screens on threads and connections of its own, such as what
/// indexes the records. It has to let the database go before the file can be closed or replaced.
struct Beside {
    std::function<void()> end;   ///< lets go, and waits for that; also where it hasn't begun
    std::function<void()> begin; ///< goes on with the database that is open; may be empty
};

void addBeside(Beside beside);
/// Ends all of them, the last one first.
void endBeside();
/// Lets them go on.
void beginBeside();

} // namespace core
