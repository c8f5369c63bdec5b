#include "platform/system/Companions.h"

#include "platform/values/Literals.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace platform {

namespace {

/// The file that stands for a program; empty if it isn't there or can't be executed.
QString fileOf(const QString& program) {
    QStringList candidates{program};
#ifndef Q_OS_WIN
    if (program.endsWith(u".exe", Qt::CaseInsensitive))
        candidates << program.chopped(4);
#endif
    for (const QString& candidate : candidates) {
        const QFileInfo file(candidate);
        if (!file.isAbsolute()) {
            if (!QStandardPaths::findExecutable(candidate).isEmpty())
                return candidate;
        } else if (file.isFile() && file.isExecutable()) {
            return candidate;
        }
    }
    return {};
}

bool start(const QString& program, const QStringList& arguments, bool maximised, QString& error) {
    const QString file = fileOf(program);
    if (file.isEmpty()) {
        error = u"File not found: %1"_s.arg(program);
        return false;
    }
    QProcess process;
    process.setProgram(file);
    process.setArguments(arguments);
#ifdef Q_OS_WIN
    if (maximised)
        process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments* how) {
            how->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
            how->startupInfo->wShowWindow = SW_SHOWMAXIMIZED;
        });
#else
    Q_UNUSED(maximised)
#endif
    if (process.startDetached())
        return true;
    error = process.errorString();
    return false;
}

} // namespace

bool startProgram(const QString& program, const QStringList& arguments, QString& error) {
    return start(program, arguments, false, error);
}

bool startMaximised(const QString& program, QString& error) {
    return start(program, {}, true, error);
}

bool isInstalled(const QString& program) {
    return !fileOf(program).isEmpty();
}

bool activateWindow(const QString& title) {
#ifdef Q_OS_WIN
    HWND window = FindWindowW(nullptr, reinterpret_cast<LPCWSTR>(title.utf16()));
    if (!window)
        return false;
    if (IsIconic(window))
        ShowWindow(window, SW_RESTORE);
    return SetForegroundWindow(window) != 0;
#else
    const QString tool = QStandardPaths::findExecutable(u"wmctrl"_s);
    return !tool.isEmpty() && QProcess::execute(tool, {u"-a"_s, title}) == 0;
#endif
}

} // namespace platform
