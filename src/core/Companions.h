#pragma once

namespace core {

/// Brings the sign-out program forward, or starts it from the program folder.
void startAutoMirsa();
/// The same for the floor terminal.
void startTimeTracking();
void startBenchline();
/// Opens the guide that stands in the program folder.
void openHelp();

} // namespace core
