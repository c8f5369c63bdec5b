#pragma once

#include <QString>

class QWidget;

namespace report {
class RowSource;
}

namespace core {

/// Prints a module's default report, as chosen in the catalogue `Reports`, to a preview window. A
/// missing default and every failure of the engine end in a box; nothing else changes.
/// `formula` is a selection formula in Crystal's syntax; empty for all records. `parent` is the
/// calling window; the preview itself belongs to the shell and outlives a dialog.
void launchDefaultReport(const QString& module, const QString& formula, const QString& title,
                         QWidget* parent);

/// Hands a module's default report to the desktop's mail program, without a preview: see
/// report::sendByMail. False after a box.
bool sendDefaultReport(const QString& module, const QString& formula, QWidget* parent);

/// The same as the first with a report file of the program folder, whether the catalogue has it or
/// not.
/// `source`: where it reads, if not from the database alone.
void launchReportFile(const QString& fileName, const QString& formula, const QString& title,
                      QWidget* parent, report::RowSource* source = nullptr);

/// The same with a report file anywhere.
void launchReportAt(const QString& path, const QString& formula, const QString& title,
                    QWidget* parent, report::RowSource* source = nullptr);

/// Prints a job's traveler, with the notes of its operations if wanted.
void launchTraveler(qint64 jobNo, bool withNotes, QWidget* parent);

} // namespace core
