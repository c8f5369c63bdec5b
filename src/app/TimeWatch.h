#pragma once

class QMainWindow;

namespace app {

/// Counts the time records that a person must look at on the window's status bar, for those who may
/// use Time Management; a press on the count shows them. They are read beside all work, once a
/// minute.
void watchTimeRecords(QMainWindow& shell);

} // namespace app
