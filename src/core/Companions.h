#pragma once

#include <QString>

class QWidget;

namespace core {

/// Brings the sign-out program forward, or starts it from the program folder.
void startAutoMirsa();
/// The same for the floor terminal.
void startTimeTracking();
void startBenchline();
/// Opens the guide that stands in the program folder.
void openHelp();
/// Prints the traveler of a job.
void printTraveler(qint64 jobNo, bool withNotes, QWidget* parent);

} // namespace core
