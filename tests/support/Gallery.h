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
/// twice), "colon" (before a field there is one, on a push button none), "button size" (in a bar of
/// buttons all are as high, and none narrower than the others' least width), "button side" (those
/// that leave a screen are at its right), "size" (larger than the screen at the form's own font).
QStringList gallery(screen::Form& form);

} // namespace testsupport
