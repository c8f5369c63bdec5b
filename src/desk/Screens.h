#pragma once

namespace desk {

/// Makes the screens of this folder known by name.
void registerScreens();

} // namespace desk
