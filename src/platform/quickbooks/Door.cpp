#include "platform/quickbooks/Door.h"

#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace quickbooks {

namespace {

/// The program's own path where it stands in the folder or is found on the system's path.
QString found(const QString& program, const QString& folder) {
    const QFileInfo here(QDir(folder), program);
    if (here.isFile() && here.isExecutable())
        return here.absoluteFilePath();
    return QStandardPaths::findExecutable(program);
}

} // namespace

Door doorOf(const QString& programFolder) {
    Door door;
    door.folder = programFolder;
    const QString name = QString::fromUtf16(Door::fileName);
    QFile file(QDir(programFolder).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        door.complaint = u"The program folder holds no file %1, which names the program that "
                         "carries messages to QuickBooks."_s.arg(name);
        return door;
    }
    QString command;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        constexpr QStringView limit = u"seconds=";
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        if (line.startsWith(limit, Qt::CaseInsensitive)) {
            bool ok = false;
            const int seconds = line.mid(limit.size()).toInt(&ok);
            if (!ok || seconds < 1) {
                door.complaint =
                    u"The line \"%1\" of the file %2 is no number of seconds."_s.arg(line, name);
                return door;
            }
            door.seconds = seconds;
        } else if (command.isEmpty()) {
            command = line;
        }
    }
    door.arguments = QProcess::splitCommand(command);
    if (door.arguments.isEmpty()) {
        door.complaint = u"The file %1 names no program."_s.arg(name);
        return door;
    }
    const QString wanted = door.arguments.takeFirst();
    door.program = found(wanted, programFolder);
    if (door.program.isEmpty())
        door.complaint =
            u"The program %1, which the file %2 names, isn't there."_s.arg(wanted, name);
    return door;
}

} // namespace quickbooks
