#pragma once

#include <QString>

namespace platform {

/// The currency symbol of the user's locale; "$" where the locale has none.
QString localeCurrencySymbol();

} // namespace platform
