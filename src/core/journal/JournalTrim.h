#pragma once

#include "platform/jet/Database.h"

#include <QDateTime>

#include <atomic>
#include <memory>
#include <thread>

namespace core {

/// Lets a piece of the changes go that are older than the preferences keep them (JournalDays).
/// False where there are no more of them. A piece is so small that nobody waits for it.
bool trimJournal(jet::Database& database, const QDateTime& now);

/// Lets all of them go, beside the program's work, on a thread and a connection of its own; and
/// looks first whether the journal is kept at all, so that nobody waits for that. What it can't do
/// is left for the next time.
class JournalTrim {
  public:
    /// `location` is the file's path or the server's URI.
    JournalTrim(QString location, QDateTime now);
    /// Breaks it off, if it still runs, and waits for that.
    ~JournalTrim();
    JournalTrim(const JournalTrim&) = delete;
    JournalTrim& operator=(const JournalTrim&) = delete;

    enum class Kept { Unknown, Yes, No };
    Kept kept() const { return m_kept; }

    /// The one of the program.
    static std::unique_ptr<JournalTrim>& current();

  private:
    void run(const QString& location, const QDateTime& now);

    std::atomic<bool> m_stop = false;
    std::atomic<Kept> m_kept = Kept::Unknown;
    std::thread m_thread;
};

} // namespace core
