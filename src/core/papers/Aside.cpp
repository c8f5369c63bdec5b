#include "core/papers/Aside.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

namespace core {

void runAside(const std::function<void(const keeping::Progress&)>& work,
              const keeping::Progress& goOn) {
    using namespace std::chrono_literals;
    std::atomic<int> percent = 0;
    std::atomic<bool> stop = false;
    std::exception_ptr failure;
    bool ended = false;
    std::mutex mutex;
    std::condition_variable changed;
    std::jthread thread([&] {
        try {
            work([&](int done) {
                percent = done;
                return !stop;
            });
        } catch (...) {
            failure = std::current_exception();
        }
        const std::scoped_lock lock(mutex);
        ended = true;
        changed.notify_one();
    });
    const auto waited = [&] {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, 40ms, [&] { return ended; });
    };
    while (!waited()) {
        // What the user does meanwhile waits, but for the Cancel that `goOn` may offer.
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        stop = stop || !goOn(percent);
    }
    thread.join();
    if (failure)
        std::rethrow_exception(failure);
}

} // namespace core
