#pragma once

#include <QDateTime>
#include <QString>

#include <functional>
#include <vector>

namespace keeping {

/// Told how much is done, 0 to 100; false breaks it off.
using Progress = std::function<bool(int percent)>;

/// What a stored file holds: its SHA-256 in small hexadecimal letters, and its size.
struct Content {
    QString hash;
    qint64 bytes = 0;
};

/// Files kept by what they hold: each once, named by its hash, in a folder that any number of
/// stations share. Nothing is ever written over: a file stands there whole or not at all.
class PaperStore {
  public:
    enum class State {
        Good,
        Missing,
        Changed,    ///< something else stands under its name
        Unreadable, ///< the folder is out of reach, or the file can't be read just now
    };
    /// A larger file isn't taken.
    static constexpr qint64 mostBytes = qint64(1) << 30;

    explicit PaperStore(QString folder) : m_folder(std::move(folder)) {}
    const QString& folder() const { return m_folder; }
    /// Whether the folder can be read and something of a store stands in it. A bare one is the
    /// place of a disk or a share that isn't there now.
    bool isInReach() const;

    /// Takes a file in. What is there already, whole, isn't written again. Throws Refusal, with
    /// nothing new left: a folder, nothing to read, too large, no room, broken off.
    Content add(const QString& path, const Progress& progress = {}) const;
    /// Copies a content to a path, in place of what stands there, where it is good. Throws Refusal
    /// where the copy can't be written.
    State copyOut(const Content& content, const QString& path, const Progress& progress = {}) const;

    /// Whether it is there with its size: a look, nothing is read.
    State look(const Content& content) const;
    /// Reads all of it. Broken off, it says that it couldn't be read.
    State check(const Content& content, const Progress& progress = {}) const;
    QString pathOf(const QString& hash) const;

    /// Everything that stands there.
    std::vector<Content> contents() const;
    /// When a content was put there, or asked to be put there, last.
    QDateTime touched(const QString& hash) const;
    void remove(const QString& hash) const;
    /// Removes what killed runs left behind more than a day ago.
    void removeRests(const QDateTime& now) const;

  private:
    QString m_folder;
};

/// The folder of a shop's papers: what the preferences name, a relative path being one below the
/// program's folder, which is also where "Papers" stands if they name none. Empty for a server's
/// shop whose preferences name none: its program folders are many.
QString paperFolder(const QString& programFolder, const QString& preferred, bool server);

} // namespace keeping
