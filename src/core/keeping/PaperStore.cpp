#include "core/keeping/PaperStore.h"

#include "core/keeping/Files.h"
#include "platform/values/Literals.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace keeping {

namespace {

constexpr qint64 blockBytes = 1 << 20;
const auto readable = QFileDevice::ReadOwner | QFileDevice::ReadGroup | QFileDevice::ReadOther;

class BrokenOff {};

/// The hash of all that is read; `write` gets each block.
QString hashOf(QFile& from, const Progress& progress,
               const std::function<void(const QByteArray&)>& write = {}) {
    QCryptographicHash hash(QCryptographicHash::Sha256);
    const qint64 size = std::max<qint64>(1, from.size());
    qint64 done = 0;
    while (true) {
        const QByteArray block = from.read(blockBytes);
        if (block.isEmpty())
            break;
        hash.addData(block);
        if (write)
            write(block);
        done += block.size();
        if (progress && !progress(static_cast<int>(std::min<qint64>(100, 100 * done / size))))
            throw BrokenOff();
    }
    if (from.error() != QFileDevice::NoError)
        throw Refusal(from.fileName() + u" can't be read: "_s + from.errorString() + u'.');
    return QString::fromLatin1(hash.result().toHex());
}

/// Copies to a new file, which is gone again where that fails.
Content copyHashing(QFile& from, const QString& to, const Progress& progress) {
    QFile target(to);
    try {
        const auto refuse = [&] {
            throw Refusal(
                u"%1 can't be written (%2). Nothing was kept."_s.arg(to, target.errorString()));
        };
        if (!target.open(QIODevice::WriteOnly | QIODevice::NewOnly))
            refuse();
        qint64 bytes = 0;
        const QString hash = hashOf(from, progress, [&](const QByteArray& block) {
            if (target.write(block) != block.size())
                refuse();
            bytes += block.size();
        });
        if (!target.flush())
            refuse();
        target.close();
        return {hash, bytes};
    } catch (const BrokenOff&) {
        target.remove();
        throw Refusal(u"Broken off. Nothing was kept of %1."_s.arg(from.fileName()));
    } catch (...) {
        target.remove();
        throw;
    }
}

/// A folder below the store's, open to the same people.
void makeBelow(const QString& folder, const QString& below) {
    if (QFileInfo(below).isDir())
        return;
    if (QDir().mkpath(below))
        QFile::setPermissions(below, QFile::permissions(folder));
    else if (!QFileInfo(below).isDir())
        throw Refusal(u"The folder "_s + below + u" can't be made."_s);
}

/// Files that can't be written aren't removed everywhere.
void removeFile(const QString& path) {
    QFile::setPermissions(path, readable | QFileDevice::WriteOwner);
    QFile::remove(path);
}

} // namespace

Content PaperStore::add(const QString& path, const Progress& progress) const {
    const QFileInfo info(path);
    const QString name = QDir::toNativeSeparators(path);
    if (info.isDir())
        throw Refusal(name + u" is a folder. Choose the files in it."_s);
    if (!info.exists())
        throw Refusal(name + u" isn't there."_s);
    if (info.size() > mostBytes)
        throw Refusal(name + u" is larger than 1 GB, which is the most that a paper may have."_s);
    QFile from(path);
    if (!info.isFile() || !from.open(QIODevice::ReadOnly))
        throw Refusal(name + u" can't be read. You may have no right to, or another program holds "
                             "it."_s);
    if (from.size() == 0)
        throw Refusal(name + u" is empty."_s);
    if (!QDir().mkpath(m_folder) || !QFileInfo(m_folder).isWritable())
        throw Refusal(u"Nothing can be written into the folder for papers, "_s +
                      QDir::toNativeSeparators(m_folder) +
                      u". It may be out of reach, or you may have no right to."_s);
    const QString aside =
        unfinishedName(QDir(m_folder).filePath(QUuid::createUuid().toString(QUuid::WithoutBraces)));
    if (freeSpace(aside) < from.size())
        throw Refusal(u"There is no room for %1 in the folder for papers, %2."_s.arg(
            name, QDir::toNativeSeparators(m_folder)));
    Content content = copyHashing(from, aside, progress);
    try {
        const QString place = pathOf(content.hash);
        // Whoever tidies up must see that it is wanted again. Another user's file can't be told so;
        // it gives way to ours, which is the same.
        QFile there(place);
        if (check(content, [&](int) { return !progress || progress(100); }) == State::Good &&
            there.open(QIODevice::ReadOnly) &&
            there.setFileTime(QDateTime::currentDateTime(), QFileDevice::FileModificationTime)) {
            QFile::remove(aside);
            return content;
        }
        there.close();
        makeBelow(m_folder, QFileInfo(place).absolutePath());
        QFile::setPermissions(aside, readable);
        replaceFile(aside, place);
    } catch (...) {
        removeFile(aside);
        throw;
    }
    return content;
}

PaperStore::State PaperStore::copyOut(const Content& content, const QString& path,
                                      const Progress& progress) const {
    if (const State state = look(content); state != State::Good)
        return state;
    QFile from(pathOf(content.hash));
    if (!from.open(QIODevice::ReadOnly))
        return State::Unreadable;
    const QString aside = unfinishedName(path);
    removeFile(aside);
    if (freeSpace(aside) < content.bytes)
        throw Refusal(u"There is no room for "_s + path + u'.');
    if (copyHashing(from, aside, progress).hash != content.hash) {
        removeFile(aside);
        return State::Changed;
    }
    try {
        replaceFile(aside, path);
    } catch (...) {
        removeFile(aside);
        throw;
    }
    return State::Good;
}

bool PaperStore::isInReach() const {
    return QFileInfo(m_folder).isReadable() &&
           QDirIterator(m_folder, {u"??"_s}, QDir::Dirs | QDir::NoDotAndDotDot).hasNext();
}

PaperStore::State PaperStore::look(const Content& content) const {
    const QFileInfo file(pathOf(content.hash));
    if (!file.exists())
        return isInReach() ? State::Missing : State::Unreadable;
    return file.size() == content.bytes ? State::Good : State::Changed;
}

PaperStore::State PaperStore::check(const Content& content, const Progress& progress) const {
    if (const State state = look(content); state != State::Good)
        return state;
    QFile file(pathOf(content.hash));
    if (!file.open(QIODevice::ReadOnly))
        return State::Unreadable;
    try {
        return hashOf(file, progress) == content.hash ? State::Good : State::Changed;
    } catch (const Refusal&) {
        return State::Unreadable;
    } catch (const BrokenOff&) {
        return State::Unreadable;
    }
}

QString PaperStore::pathOf(const QString& hash) const {
    return m_folder + u'/' + hash.left(2) + u'/' + hash;
}

std::vector<Content> PaperStore::contents() const {
    std::vector<Content> all;
    const QDir folder(m_folder);
    for (const QString& below : folder.entryList({u"??"_s}, QDir::Dirs | QDir::NoDotAndDotDot))
        for (const QFileInfo& file :
             QDir(folder.filePath(below)).entryInfoList(QDir::Files | QDir::NoDotAndDotDot))
            if (file.fileName().size() == 64 && file.fileName().startsWith(below))
                all.push_back({file.fileName(), file.size()});
    return all;
}

QDateTime PaperStore::touched(const QString& hash) const {
    return QFileInfo(pathOf(hash)).lastModified();
}

void PaperStore::remove(const QString& hash) const {
    removeFile(pathOf(hash));
}

void PaperStore::removeRests(const QDateTime& now) const {
    const QDir folder(m_folder);
    for (const QFileInfo& rest : folder.entryInfoList({u"*.unfinished"_s}, QDir::Files))
        if (rest.lastModified() < now.addDays(-1))
            removeFile(rest.filePath());
}

QString paperFolder(const QString& programFolder, const QString& preferred, bool server) {
    const QString named = QDir::fromNativeSeparators(preferred.trimmed());
    if (named.isEmpty())
        return server ? QString() : QDir(programFolder).absoluteFilePath(u"Papers"_s);
    return QDir::cleanPath(QDir(programFolder).absoluteFilePath(named));
}

} // namespace keeping
