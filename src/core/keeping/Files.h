#pragma once

#include "platform/jet/Database.h"

#include <QLockFile>
#include <QString>

#include <memory>

/// Files that must be whole or not there: written aside under another name, brought to the disk and
/// only then given their own name.
namespace keeping {

/// What can't be done, and why, in a sentence for the administrator.
class Refusal : public std::exception {
  public:
    explicit Refusal(QString text) : m_text(std::move(text)), m_what(m_text.toUtf8()) {}
    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

  private:
    QString m_text;
    QByteArray m_what;
};

/// A folder for the time of a change to its database: a second one is refused. What a killed run
/// left behind holds up nobody.
class FolderLock {
  public:
    /// Makes the folder if there is none. Throws Refusal.
    explicit FolderLock(const QString& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

  private:
    QString m_path;
#ifdef Q_OS_UNIX
    int m_handle = -1; ///< its lock ends with the process, however that ends
#else
    std::unique_ptr<QLockFile> m_lock;
#endif
};

/// The name under which a file is written until it is whole.
QString unfinishedName(const QString& path);

/// Removes a database file with the logs beside it.
void removeDatabase(const QString& path);

/// Waits until a file's contents are on the disk. Throws Refusal.
void flushFile(const QString& path);

/// Gives a finished file its own name, where nothing may stand; the name is on the disk behind it.
/// Throws Refusal, which leaves both as they were.
void putInPlace(const QString& from, const QString& to);
/// The same in place of what stands there: always the old one or the new one.
void replaceFile(const QString& from, const QString& to);

/// The same, and what stood there is kept under a third name, in place of what stood under that. At
/// every moment the second name has the old file or the new one.
void replaceKeeping(const QString& from, const QString& to, const QString& kept);

/// Writes a small file aside and puts it in place of what stands there. Only its owner may read it
/// where `ownerOnly` is set. Throws Refusal.
void writeWhole(const QString& path, const QByteArray& contents, bool ownerOnly = false);

/// Closes a database file so that all of it stands in that one file, on the disk. Throws Refusal
/// where anybody else has it open, or the disk is full.
void closeWhole(std::unique_ptr<jet::Database> database);

/// Bytes that can still be written to where a path stands.
qint64 freeSpace(const QString& path);

} // namespace keeping
