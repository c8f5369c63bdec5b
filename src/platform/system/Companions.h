#pragma once

#include <QString>
#include <QStringList>

namespace platform {

/// Starts a program that goes on by itself. False, with a message in `error`, if it can't be
/// started. On systems that tell programs by a mark on the file a name with ".exe" also finds the
/// file without it.
bool startProgram(const QString& program, const QStringList& arguments, QString& error);
/// The same, its window maximised where the system lets the starting program say so (Windows).
bool startMaximised(const QString& program, QString& error);
/// Whether startProgram would find the file.
bool isInstalled(const QString& program);

/// Brings another program's window to the front by its title, restored if it was minimised.
/// False if there is none, or if the desktop offers no way (on X11 the tool wmctrl).
bool activateWindow(const QString& title);

} // namespace platform
