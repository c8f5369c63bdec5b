#pragma once

#include "core/keeping/Backup.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace keeping {

/// A backup that is made beside the program's work, on a thread and a connection of its own.
class BackupJob {
  public:
    BackupJob(QString programFolder, QString targetFolder);
    /// Breaks it off, if it still runs, and waits for that.
    ~BackupJob();
    BackupJob(const BackupJob&) = delete;
    BackupJob& operator=(const BackupJob&) = delete;

    bool isRunning() const { return !m_done; }
    int percent() const { return m_percent; }
    /// Why it failed; empty while it runs, and where it is good.
    QString failure() const;

    /// The one of the program: the main window and the screen show the same.
    static std::unique_ptr<BackupJob>& current();

  private:
    void run(const QString& programFolder, const QString& targetFolder);

    std::atomic<bool> m_done = false, m_stop = false;
    std::atomic<int> m_percent = 0;
    mutable std::mutex m_mutex;
    QString m_failure;
    std::thread m_thread;
};

} // namespace keeping
