#pragma once

#include "platform/jet/Database.h"

#include <QObject>
#include <QPointer>

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace core {

/// Reads from the database beside the program's work, on a thread and a connection of its own, so
/// that no window waits for it. Its end breaks off what is going on.
class Background {
  public:
    /// Runs on the thread. May throw; checkStop() throws where the work is to be broken off.
    using Work = std::function<void(jet::Database& database, const Background& thread)>;
    /// Runs on the thread of the user interface; why the work failed, empty if it didn't.
    using Done = std::function<void(const QString& failure)>;

    /// `location`: a database's file or a server's URI. `owner` is whom the answers are for: there
    /// are none once it is gone.
    Background(QString location, QObject* owner);
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// Work that isn't begun yet gives way to this one, unless it is kept.
    void run(Work work, Done done, bool kept = false);
    /// Runs a function on the thread of the user interface, where the owner is still there.
    void tell(std::function<void()> action) const;
    void checkStop() const;
    bool isBusy() const { return m_busy > 0; }

  private:
    struct Stopped {};
    struct Task {
        Work work;
        Done done;
        bool kept = false;
    };
    void loop();
    QString perform(const Work& work);

    QString m_location;
    QPointer<QObject> m_owner;
    std::mutex m_mutex;
    std::condition_variable m_asked;
    std::deque<Task> m_tasks;
    std::atomic<bool> m_stop = false;
    std::atomic<int> m_busy = 0;
    std::unique_ptr<jet::Database> m_database; ///< of the thread
    std::thread m_thread;
};

} // namespace core
