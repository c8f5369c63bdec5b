#pragma once

#include "platform/screen/MsgBox.h"

#include <QString>

namespace screen {

/// What is wrong with an entry, as a rule finds it and a screen tells it.
struct Complaint {
    QString text;
    QString field = {}; ///< name of the control that gets the focus; empty: none
    QString title = {}; ///< empty: the program's own
    Icon icon = Icon::Exclamation;
};

} // namespace screen
