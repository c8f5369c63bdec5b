#pragma once

namespace reporting {

/// Makes the screens of this folder known by name.
void registerScreens();

} // namespace reporting
