#pragma once

namespace estimating {

/// Makes the screens of this subsystem known to the forms.
void registerScreens();

} // namespace estimating
