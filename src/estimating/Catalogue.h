#pragma once

namespace estimating {

/// Makes the catalogue of operations and its dialogs known to the forms.
void registerCatalogue();

} // namespace estimating
