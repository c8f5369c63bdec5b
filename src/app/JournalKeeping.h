#pragma once

class QMainWindow;

namespace app {

/// Lets changes go that the journal need not keep any longer: now, and again while the program
/// stays open for days. Nobody waits for it.
void keepJournalShort(QMainWindow& shell);

} // namespace app
