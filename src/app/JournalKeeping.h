#pragma once

class QMainWindow;

namespace app {

/// Lets changes go that the journal need not keep any longer: now, and again while the program
/// stays open for days. Nobody waits for it. An administrator is told if the database doesn't keep
/// the journal in full.
void keepJournalShort(QMainWindow& shell);

} // namespace app
