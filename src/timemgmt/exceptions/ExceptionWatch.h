#pragma once

#include "timemgmt/exceptions/ExceptionList.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

namespace timemgmt {

/// Reads the exceptions beside the program's work, on a thread and a connection of its own, so that
/// no window ever waits for them.
class ExceptionWatch {
  public:
    using Lines = std::shared_ptr<const std::vector<TimeException>>;

    /// `location`: a database's file or a server's URI. In `folder` lies from one run of the
    /// program to the next what is known of it; with none, each run reads all.
    explicit ExceptionWatch(QString location, const QString& folder = {});
    /// Breaks off a reading, and keeps what is known.
    ~ExceptionWatch();
    ExceptionWatch(const ExceptionWatch&) = delete;
    ExceptionWatch& operator=(const ExceptionWatch&) = delete;

    /// Asks for the list as it is at that moment: all records where nothing is known of them yet,
    /// else what may have changed. Returns at once; while a reading is going on, the next one
    /// follows it.
    void check(const QDateTime& now);
    bool isReading() const { return m_reading; }

    /// The latest list; nullptr until the first one is there.
    Lines lines() const;
    /// Counts the readings that have ended.
    int readings() const { return m_readings; }
    /// Why the last reading failed; empty if it didn't.
    QString failure() const;
    const QString& location() const { return m_location; }

    /// The one of the program, on the database at that place: the main window and the screen show
    /// the same.
    static ExceptionWatch& on(const QString& location);
    /// Ends it, so that the database is free to be closed.
    static void end();

  private:
    void run();
    void read(const QDateTime& now);
    /// What was kept, as the list to begin with; false if there is nothing good.
    bool recall(const QDateTime& now);
    void keep();

    QString m_location;
    QString m_file; ///< what is known; empty where it isn't kept
    mutable std::mutex m_mutex;
    std::condition_variable m_asked;
    std::optional<QDateTime> m_wanted;
    Lines m_lines;
    QString m_failure;
    std::atomic<bool> m_stop = false, m_reading = false;
    std::atomic<int> m_readings = 0;
    std::unique_ptr<jet::Database> m_database; ///< of the thread
    ExceptionList m_list;                      ///< of the thread
    QDateTime m_kept;                          ///< of the thread: when that was last
    std::thread m_thread;
};

} // namespace timemgmt
