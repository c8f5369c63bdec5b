#include "platform/jet/Location.h"

#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>

namespace jet {

QString serverOfFolder(const QString& folder) {
    QFile file(QDir(folder).filePath(u"Mirsa.server"_s));
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::cannotOpenFile, u"Could not read file '%1'."_s.arg(file.fileName()));
    QString uri = QString::fromUtf8(file.readLine()).trimmed();
    if (!isServerUri(uri))
        throw Error(errors::connectionFailed,
                    u"'%1' names no server (postgresql://...)."_s.arg(file.fileName()));
    return uri;
}

bool isServerUri(const QString& text) {
    return text.startsWith(u"postgresql://"_s) || text.startsWith(u"postgres://"_s);
}

std::unique_ptr<Database> openProgramFolder(const QString& folder) {
    const QString uri = serverOfFolder(folder);
    return uri.isEmpty() ? Database::openFile(QDir(folder).filePath(u"Mirsa.mdb"_s))
                         : Database::openServer(uri);
}

} // namespace jet
