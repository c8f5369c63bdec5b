#pragma once

namespace core {

/// Makes this folder's screens known by name.
void registerScreens();

} // namespace core
