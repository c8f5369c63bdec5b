#include "setup/Folder.h"

#include "core/keeping/Files.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "setup/Check.h"
#include "setup/Setup.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace setup {

using keeping::Refusal;

namespace {

void refuseExisting(const QString& folder) {
    for (const auto* name : {u"Mirsa.mdb", u"Mirsa.server"}) {
        const QString path = QDir(folder).filePath(QString::fromUtf16(name));
        if (QFileInfo::exists(path))
            throw Refusal(path + u" is there already. Nothing was changed."_s);
    }
}

bool isSetUp(jet::Database& database) {
    return database.schema().table(u"Job") != nullptr;
}

} // namespace

QStringList makeNew(const QString& folder) {
    const QString path = QDir(folder).filePath(u"Mirsa.mdb"_s);
    refuseExisting(folder);
    const keeping::FolderLock lock(folder);
    refuseExisting(folder);
    const QString unfinished = keeping::unfinishedName(path);
    keeping::removeDatabase(unfinished); // of a run that was killed
    try {
        auto database = jet::Database::createFile(unfinished);
        install(*database);
        keeping::closeWhole(std::move(database));
        database = jet::Database::openFile(unfinished);
        if (const QStringList wrong = engineFindings(*database);
            !wrong.isEmpty() || !isSetUp(*database))
            throw Refusal(u"What was written is not what was meant ("_s + wrong.value(0) +
                          u"). The disk may be at fault."_s);
        keeping::closeWhole(std::move(database));
        keeping::putInPlace(unfinished, path);
    } catch (...) {
        keeping::removeDatabase(unfinished);
        throw;
    }
    return {path + u" is ready. Sign in as Admin with the password Bolts."_s};
}

QStringList setUpServer(const QString& uri, const QString& folder) {
    if (!jet::isServerUri(uri))
        throw Refusal(u"The address of a server begins with postgresql://"_s);
    const QString marker = QDir(folder).filePath(u"Mirsa.server"_s);
    if (QFileInfo::exists(marker))
        throw Refusal(marker + u" is there already. Nothing was changed."_s);
    const keeping::FolderLock lock(folder);
    QStringList told;
    {
        auto database = jet::Database::openServer(uri);
        if (!isSetUp(*database)) {
            // Another run may be at it: whoever comes second finds it done.
            jet::Transaction transaction(*database);
            const bool meanwhile =
                !jet::Native(*database).value("SELECT to_regclass('job')::text").isNull();
            if (!meanwhile) {
                install(*database);
                transaction.commit();
                told += u"The database on the server is set up."_s;
            }
        }
        if (told.isEmpty())
            told += u"The database on the server is set up already; nothing was added to it."_s;
    }
    try {
        const bool secret = !jet::passwordOf(uri).isEmpty();
        keeping::writeWhole(marker, uri.toUtf8() + '\n', secret);
        if (jet::serverOfFolder(folder) != uri)
            throw Refusal(marker + u" doesn't hold what was written."_s);
    } catch (const Refusal& refusal) {
        QFile::remove(marker);
        throw Refusal(refusal.text() + u' ' + told.join(u' ') +
                      u" The folder doesn't use it yet."_s);
    }
    told += folder + u" now uses it."_s;
    return told + passwordAdvice(uri, marker);
}

QStringList upgradeFolder(const QString& folder) {
    const keeping::FolderLock lock(folder);
    const auto database = jet::openProgramFolder(folder);
    QStringList told;
    for (const QString& line : upgrade(*database))
        told += line.left(1).toUpper() + line.mid(1);
    if (told.isEmpty())
        told += u"Nothing was missing."_s;
    if (const QString uri = jet::serverOfFolder(folder); !uri.isEmpty())
        told += passwordAdvice(uri, QDir(folder).filePath(u"Mirsa.server"_s));
    return told;
}

QStringList passwordAdvice(const QString& uri, const QString& markerFile) {
    if (jet::passwordOf(uri).isEmpty())
        return {};
    QStringList told;
    const auto others = QFileDevice::ReadGroup | QFileDevice::ReadOther;
    if (QFile::permissions(markerFile) & others)
        told += u"%1 holds a password and others may read it: chmod 600 %1"_s.arg(markerFile);
    told +=
        u"%1 holds the password in clear. To do without: leave it out of the address and put it "
        "into ~/.pgpass of each user (postgresql://USER@HOST/DATABASE?passfile=FILE names "
        "another file), or name a section of pg_service.conf "
        "(postgresql:///?service=NAME)."_s.arg(markerFile);
    return told;
}

} // namespace setup
