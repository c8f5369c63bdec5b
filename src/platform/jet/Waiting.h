#pragma once

#include <chrono>
#include <functional>

namespace jet {

/// What is done while the database lets the program wait, so that its window stays alive: called
/// about every 50 ms, from 200 ms of waiting on, with the time waited so far. Giving up (false)
/// ends the line to the server as if it had been lost. It must not use the database; who does meets
/// Error(locked). Without it the program waits for as long as the line stands. Only waits of the
/// thread that sets it are asked about.
using WhileWaiting = std::function<bool(std::chrono::milliseconds)>;
/// `ended` is called when a wait is over in which goOn() was.
void setWhileWaiting(WhileWaiting goOn, std::function<void()> ended = {});

/// One wait, as the engines make it.
class Waiting {
  public:
    Waiting() = default;
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    /// How long to wait at most until goOn() is to be asked next.
    std::chrono::milliseconds slice() const;
    /// False: given up.
    bool goOn();
    /// Whether somebody is asked in goOn() right now.
    static bool isAsking();

  private:
    std::chrono::steady_clock::time_point m_since = std::chrono::steady_clock::now();
    bool m_asked = false;
};

} // namespace jet
