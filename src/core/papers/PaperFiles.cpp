#include "core/papers/PaperFiles.h"

#include "core/keeping/Files.h"
#include "platform/values/Literals.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QUuid>

namespace core {

namespace {

constexpr int keptDays = 7;

/// Names come from other systems too.
QString fitName(QString name) {
    static const QString unfit = u"\\/:*?\"<>|"_s;
    for (QChar& c : name)
        if (unfit.contains(c) || c < u' ')
            c = u'-';
    while (name.startsWith(u'.'))
        name.remove(0, 1);
    return name.isEmpty() ? u"Paper"_s : name;
}

} // namespace

QString placeForCopy(const QString& fileName) {
    const QDir all(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/papers"_s);
    for (const QFileInfo& old : all.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (old.lastModified() < QDateTime::currentDateTime().addDays(-keptDays))
            QDir(old.filePath()).removeRecursively();
    const QString folder = all.filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
    if (!QDir().mkpath(folder))
        throw keeping::Refusal(u"The folder "_s + folder + u" can't be made."_s);
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return folder + u'/' + fitName(fileName);
}

bool isPrintable(const QString& fileName) {
    static const QStringList endings{u"pdf"_s, u"png"_s, u"jpg"_s, u"jpeg"_s, u"bmp"_s, u"gif"_s};
    return endings.contains(QFileInfo(fileName).suffix().toLower());
}

} // namespace core
