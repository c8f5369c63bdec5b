#pragma once

namespace scheduling {

/// Makes the screens of this subsystem known to the forms.
void registerScreens();

} // namespace scheduling
