#pragma once

#include "desk/find/FileIndex.h"

#include <QString>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace desk {

/// Keeps the index of a database file, on a thread and connections of its own: makes it, the latest
/// records first, and then takes in what anybody changed. Records that are new, open or among the
/// latest are looked at whenever somebody wrote; all the others in turn.
class Indexer {
  public:
    Indexer(QString location, QString path);
    ~Indexer();
    Indexer(const Indexer&) = delete;
    Indexer& operator=(const Indexer&) = delete;

    /// Looks for changes at once; returns without waiting.
    void look();
    /// How much of the database it has, 0 to 100.
    int percent() const { return m_percent; }
    /// Counts the looks that have ended.
    int looks() const { return m_looks; }
    const QString& location() const { return m_location; }
    const QString& path() const { return m_path; }

    /// The one of the program; nullptr for a server, which keeps indexes itself.
    static Indexer* on(const QString& location);
    /// Ends it, so that the database is free to be closed.
    static void end();

  private:
    void run();
    void work();
    void build(jet::Database& shop, FileIndex& index);
    bool lookOver(jet::Database& shop, FileIndex& index);
    void compare(jet::Database& shop, FileIndex& index, int kind, qint64 first, qint64 last,
                 FileIndex::Range range);
    /// False if the end was asked for meanwhile.
    bool pause(int milliseconds);

    QString m_location, m_path;
    std::mutex m_mutex;
    std::condition_variable m_asked;
    std::atomic<bool> m_stop = false, m_wanted = false;
    std::atomic<int> m_percent = 0, m_looks = 0;
    qint64 m_version = -1; ///< of the thread: the database as it was at the last look
    std::thread m_thread;
};

} // namespace desk
