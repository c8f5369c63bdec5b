#pragma once

class QMainWindow;

namespace app {

/// After the sign-in: tells an administrator when the last good backup is older than the settings
/// allow, and begins the day's backup if there is none yet. It goes on beside all work; the status
/// bar of the window shows how far it is.
void keepBackups(QMainWindow& shell);

} // namespace app
