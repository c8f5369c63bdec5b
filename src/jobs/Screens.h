#pragma once

namespace jobs {

/// Makes the screens of jobs known to the forms.
void registerScreens();

} // namespace jobs
