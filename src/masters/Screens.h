#pragma once

namespace masters {

/// Makes this folder's screens known by name.
void registerScreens();

} // namespace masters
