#pragma once

namespace accounting {

/// Makes the screens of this folder known by name.
void registerScreens();

} // namespace accounting
