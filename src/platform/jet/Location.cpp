#include "platform/jet/Location.h"

#include <QDir>
#include <QFile>

namespace jet {

QString serverOfFolder(const QString& folder) {
    QFile file(QDir(folder).filePath(QStringLiteral("Mirsa.server")));
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::cannotOpenFile,
                    QStringLiteral("Could not read file '%1'.").arg(file.fileName()));
    QString uri = QString::fromUtf8(file.readLine()).trimmed();
    if (!isServerUri(uri))
        throw Error(
            errors::connectionFailed,
            QStringLiteral("'%1' names no server (postgresql://...).").arg(file.fileName()));
    return uri;
}

bool isServerUri(const QString& text) {
    return text.startsWith(QStringLiteral("postgresql://")) ||
           text.startsWith(QStringLiteral("postgres://"));
}

std::unique_ptr<Database> openProgramFolder(const QString& folder) {
    const QString uri = serverOfFolder(folder);
    return uri.isEmpty() ? Database::openFile(QDir(folder).filePath(QStringLiteral("Mirsa.mdb")))
                         : Database::openServer(uri);
}

} // namespace jet
