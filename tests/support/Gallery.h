#pragma once

#include <QDir>
#include <QString>
#include <QStringList>

namespace screen {
class Form;
}

namespace testsupport {

/// Where a test program puts its pictures: test_app, which has the sample shop and whose pictures
/// the user's guide shows, into build/gallery itself, any other into a folder of its name in there.
QDir galleryFolder();

/// Saves pictures of a form that is shown, one for each tab page, to that folder and looks it over,
/// at its own font and at one a third larger. Complaints, each beginning with its kind: "clipped"
/// (a text wider than its place), "overlap", "unnamed" (a control without an object name),
/// "unspoken" (a field of which a screen reader knows no name), "mnemonic" (a letter given twice),
/// "colon" (before a field there is one, on a push button none), "button size" (in a bar of buttons
/// all are as high, and none narrower than the others' least width), "button side" (those that
/// leave a screen are at its right), "size" (larger than the screen at the form's own font).
QStringList gallery(screen::Form& form);

} // namespace testsupport
