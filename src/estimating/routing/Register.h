#pragma once

namespace estimating {

/// Makes the dialogs of the routing known to the forms.
void registerRoutingDialogs();

} // namespace estimating
