#pragma once

#include <QString>

namespace qbcompany {

/// The table of elements.txt.
QString elementText();

} // namespace qbcompany
