#pragma once

#include <QIcon>

namespace core {

/// The picture of a tool bar button, drawn for the sizes asked of it.
QIcon toolIcon(int button);
/// The picture of the program itself.
QIcon programIcon();

} // namespace core
