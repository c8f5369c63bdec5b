#pragma once

namespace inventory {

/// Makes the screens of this folder known.
void registerScreens();

} // namespace inventory
