#pragma once

#include <QString>
#include <QStringList>

namespace screen {
class Form;
}

namespace testsupport {

/// Saves pictures of a form that is shown, one for each tab page, to build/gallery and looks it
/// over, at its own font and at one a third larger. Complaints, each beginning with its kind:
/// "clipped" (a text wider than its place), "overlap", "unnamed" (a control without an object
/// name), "unspoken" (a field of which a screen reader knows no name), "mnemonic" (a letter given
/// twice), "size" (larger than the screen at the form's own font).
QStringList gallery(screen::Form& form);

} // namespace testsupport
