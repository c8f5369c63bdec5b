#pragma once

namespace timemgmt {

/// Makes the screens of this subsystem known to the forms.
void registerScreens();

} // namespace timemgmt
