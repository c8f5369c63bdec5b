#include "core/keeping/Files.h"

#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <cerrno>
#include <cstring>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif
#ifdef Q_OS_WIN
#include <io.h>
#endif

namespace keeping {

namespace {

[[noreturn]] void refuse(const QString& what, const QString& why) {
    throw Refusal(why.isEmpty() ? what + u'.' : what + u": "_s + why + u'.');
}

QString systemReason() {
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// A rename is on the disk when its folder is.
void flushFolder(const QString& folder) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (handle < 0)
        return; // a folder that may be written but not read
    ::fsync(handle);
    ::close(handle);
#else
    Q_UNUSED(folder)
#endif
}

/// Renames without ever writing over what has come to stand there meanwhile.
bool renameToFree(const QString& from, const QString& to) {
#ifdef Q_OS_UNIX
    const QByteArray source = QFile::encodeName(from), target = QFile::encodeName(to);
    if (::link(source.constData(), target.constData()) == 0) {
        ::unlink(source.constData());
        return true;
    }
    if (errno != EPERM && errno != EOPNOTSUPP && errno != EMLINK)
        return false; // there is something; other failures are the file system's own
#endif
    return QFile::rename(from, to);
}

} // namespace

FolderLock::FolderLock(const QString& folder) {
    if (!QDir().mkpath(folder))
        throw Refusal(u"The folder "_s + folder + u" can't be made."_s);
    m_path = QDir(folder).filePath(u".mirsa-setup.lock"_s);
    const Refusal taken(u"Another run of mirsa-setup, or a backup, is at work in "_s + folder +
                        u". Nothing was changed."_s);
    const Refusal unwritable(u"Nothing can be written into "_s + folder +
                             u" (no right, or no room). Nothing was changed."_s);
#ifdef Q_OS_UNIX
    const QByteArray name = QFile::encodeName(m_path);
    while (true) {
        m_handle = ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (m_handle < 0)
            throw unwritable;
        if (::flock(m_handle, LOCK_EX | LOCK_NB) != 0) {
            const bool held = errno == EWOULDBLOCK;
            ::close(m_handle);
            throw held ? taken : unwritable;
        }
        // Whoever held it may have removed it between our two steps: then it is no lock any more.
        struct stat ours {};
        struct stat there {};
        if (::fstat(m_handle, &ours) == 0 && ::stat(name.constData(), &there) == 0 &&
            ours.st_ino == there.st_ino && ours.st_dev == there.st_dev)
            return;
        ::close(m_handle);
    }
#else
    m_lock = std::make_unique<QLockFile>(m_path);
    m_lock->setStaleLockTime(0); // a long run isn't a dead one
    if (!m_lock->tryLock(0))
        throw m_lock->error() == QLockFile::LockFailedError ? taken : unwritable;
#endif
}

FolderLock::~FolderLock() {
#ifdef Q_OS_UNIX
    ::unlink(QFile::encodeName(m_path).constData());
    ::close(m_handle);
#endif
}

QString unfinishedName(const QString& path) {
    return path + u".unfinished"_s;
}

void removeDatabase(const QString& path) {
    for (const auto* ending : {u"-wal", u"-shm", u"-journal", u""})
        QFile::remove(path + QString::fromUtf16(ending));
}

void flushFile(const QString& path) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    const bool flushed = handle >= 0 && ::fsync(handle) == 0;
    const QString reason = flushed ? QString() : systemReason();
    if (handle >= 0)
        ::close(handle);
#else
    QFile file(path);
    const bool flushed = file.open(QIODevice::ReadWrite) && ::_commit(file.handle()) == 0;
    const QString reason = flushed ? QString() : systemReason();
#endif
    if (!flushed)
        refuse(path + u" can't be brought to the disk"_s, reason);
}

void putInPlace(const QString& from, const QString& to) {
    flushFile(from);
    if (!renameToFree(from, to)) {
        if (QFileInfo::exists(to))
            throw Refusal(to + u" is there already. Nothing was changed."_s);
        refuse(to + u" can't be written"_s, systemReason());
    }
    flushFolder(QFileInfo(to).absolutePath());
}

void replaceFile(const QString& from, const QString& to) {
    flushFile(from);
#ifdef Q_OS_UNIX
    if (::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        refuse(to + u" can't be written"_s, systemReason());
#else
    QFile::remove(to);
    if (!QFile::rename(from, to))
        refuse(to + u" can't be written"_s, systemReason());
#endif
    flushFolder(QFileInfo(to).absolutePath());
}

void replaceKeeping(const QString& from, const QString& to, const QString& kept) {
    removeDatabase(kept);
#ifdef Q_OS_UNIX
    if (::link(QFile::encodeName(to).constData(), QFile::encodeName(kept).constData()) == 0) {
        replaceFile(from, to);
        return;
    }
#endif
    // Where a file has one name only, a copy is kept.
    if (QFileInfo::exists(to) && !QFile::copy(to, kept))
        refuse(kept + u" can't be written"_s, systemReason());
    flushFile(kept);
    replaceFile(from, to);
}

void writeWhole(const QString& path, const QByteArray& contents, bool ownerOnly) {
    const QString aside = unfinishedName(path);
    QFile::remove(aside);
    QFile file(aside);
    const auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    // The permissions come before the contents: nobody reads a secret in between.
    const bool written = file.open(QIODevice::WriteOnly) &&
                         (!ownerOnly || file.setPermissions(owner)) &&
                         file.write(contents) == contents.size() && file.flush();
    const QString reason = file.errorString();
    file.close();
    if (!written || file.error() != QFileDevice::NoError) {
        QFile::remove(aside);
        refuse(path + u" can't be written"_s, reason);
    }
    try {
        replaceFile(aside, path);
    } catch (const Refusal&) {
        QFile::remove(aside);
        throw;
    }
}

void closeWhole(std::unique_ptr<jet::Database> database) {
    const QString path = database->name();
    {
        jet::Native native(*database);
        const auto outcome = native.rows("PRAGMA wal_checkpoint(TRUNCATE)");
        if (!outcome.empty() && outcome.front().front().toInteger() != 0)
            throw Refusal(path + u" is in use by another program."_s);
    }
    database.reset();
    if (QFileInfo(path + u"-wal"_s).size() > 0)
        throw Refusal(path + u" can't be written as a whole; the disk may be full."_s);
    flushFile(path);
}

qint64 freeSpace(const QString& path) {
    return QStorageInfo(QFileInfo(path).absolutePath()).bytesAvailable();
}

} // namespace keeping
