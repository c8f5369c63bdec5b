#include "platform/system/Companions.h"

#include "platform/values/Literals.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace platform {

bool startProgram(const QString& program, const QStringList& arguments, QString& error) {
    QStringList candidates{program};
#ifndef Q_OS_WIN
    if (program.endsWith(u".exe", Qt::CaseInsensitive))
        candidates << program.chopped(4);
#endif
    for (const QString& candidate : candidates) {
        const QFileInfo file(candidate);
        const bool found = file.isAbsolute() ? file.isFile() && file.isExecutable()
                                             : !QStandardPaths::findExecutable(candidate).isEmpty();
        if (!found)
            continue;
        QProcess process;
        process.setProgram(candidate);
        process.setArguments(arguments);
        if (process.startDetached())
            return true;
        error = process.errorString();
        return false;
    }
    error = u"File not found: %1"_s.arg(program);
    return false;
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
