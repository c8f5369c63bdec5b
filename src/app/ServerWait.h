#pragma once

namespace app {

/// From now on, a server that lets the program wait for longer than two seconds is told about in a
/// small window, in which the waiting can be given up; the other windows stay painted meanwhile.
void watchServerWaits();

} // namespace app
