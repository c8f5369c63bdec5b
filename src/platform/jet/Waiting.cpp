#include "platform/jet/Waiting.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace jet {

namespace {

using namespace std::chrono_literals;

constexpr auto untilFirst = 200ms;
constexpr auto untilNext = 50ms;

struct Seam {
    WhileWaiting goOn;
    std::function<void()> ended;
    std::thread::id thread; ///< that of the windows; others wait without a word
};

Seam& seam() {
    static Seam inForce;
    return inForce;
}

thread_local bool asking = false;

} // namespace

void setWhileWaiting(WhileWaiting goOn, std::function<void()> ended) {
    seam() = {std::move(goOn), std::move(ended), std::this_thread::get_id()};
}

Waiting::~Waiting() {
    if (m_asked && seam().ended)
        seam().ended();
}

std::chrono::milliseconds Waiting::slice() const {
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - m_since);
    return std::max(untilNext, untilFirst - waited);
}

bool Waiting::goOn() {
    const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now() - m_since);
    if (waited < untilFirst || !seam().goOn || asking ||
        seam().thread != std::this_thread::get_id())
        return true;
    struct Asking {
        Asking() { asking = true; }
        ~Asking() { asking = false; }
    } const now;
    m_asked = true;
    return seam().goOn(waited);
}

bool Waiting::isAsking() {
    return asking;
}

} // namespace jet
