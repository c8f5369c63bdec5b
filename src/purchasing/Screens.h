#pragma once

namespace purchasing {

/// Makes the screens of this folder known.
void registerScreens();

} // namespace purchasing
