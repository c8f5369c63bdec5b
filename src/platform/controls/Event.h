#pragma once

#include <functional>
#include <utility>
#include <vector>

namespace controls {

/// Something that happened on a control. Screens connect through Form::on, which guards the
/// handler.
template <class... Args>
class Event {
  public:
    using Handler = std::function<void(Args...)>;
    void connect(Handler handler) { m_handlers.push_back(std::move(handler)); }
    bool isConnected() const { return !m_handlers.empty(); }
    void operator()(Args... args) const {
        const auto handlers = m_handlers; // a handler may connect or destroy
        for (const auto& handler : handlers)
            handler(args...);
    }

  private:
    std::vector<Handler> m_handlers;
};

} // namespace controls
