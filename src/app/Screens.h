#pragma once

namespace app {

/// Makes the screens of all subsystems known by name.
void registerAllScreens();

} // namespace app
