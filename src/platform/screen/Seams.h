#pragma once

#include "platform/screen/MsgBox.h"

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace screen {

/// Where the program leaves itself: boxes, file dialogs, other programs, its own end. Tests put
/// their own functions here.
struct Seams {
    std::function<Answer(const QString& text, Buttons, Icon, const QString& title,
                         Answer defaultButton)>
        msgBox;
    std::function<QString(const QString& prompt, const QString& title, const QString& text)>
        inputBox;
    /// Path of a file to save to; empty for Cancel.
    std::function<QString(const QString& title, const QString& suggested, const QString& filter)>
        saveFile;
    /// Paths of the files to open; none for Cancel.
    std::function<QStringList(const QString& title, const QString& folder, const QString& filter)>
        openFiles;
    /// Starts a program; false and a message in `error` if it doesn't start.
    std::function<bool(const QString& program, const QStringList& arguments, QString& error)>
        startProgram;
    /// The same for a companion whose window is to be maximised.
    std::function<bool(const QString& program, QString& error)> startMaximised;
    /// Whether a program that could be started stands there.
    std::function<bool(const QString& program)> isInstalled;
    /// Brings another program's window to the front by its title; false if there is none.
    std::function<bool(const QString& title)> activateWindow;
    std::function<void()> beep;
    /// The run-time's box for an error that no handler expected.
    std::function<void(int number, const QString& text)> runTimeError;
    /// What has to be done before the process ends, such as closing the database; set by the start.
    std::function<void()> beforeEnd;
    /// Ends the process at once, after beforeEnd.
    std::function<void(int code)> endProcess;
};

/// Runs an action, and tells what it throws. True if it ended without an error.
///
/// Where the database can't be worked with just now (line lost, lock not had, disk full, read-only,
/// file gone) a sentence says so, with Retry, which runs the action again, and Close. Any other
/// error of the database, and a number out of range (6), is told in the run-time's box. In all of
/// these cases the screens stay as they are. What is left is a fault of the program itself: it is
/// told as number 1000, and ends the process.
bool guardedCall(const std::function<void()>& action);

/// The functions in force: the desktop's own until replaced.
Seams& seams();

/// Puts the desktop's own functions back.
void resetSeams();

} // namespace screen
