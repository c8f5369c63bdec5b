#pragma once

class QMainWindow;

namespace app {

/// Shows the start page to each user who signs in and hasn't closed it, behind what is open
/// already.
void showStartPages(QMainWindow& shell);

} // namespace app
