#pragma once

#include <cstddef>

namespace screen {

/// Lays the busy pointers aside for the time of a dialog or a message box over them.
class Suspension {
  public:
    Suspension();
    ~Suspension();
    Suspension(const Suspension&) = delete;
    Suspension& operator=(const Suspension&) = delete;

  private:
    std::size_t m_below;
};

} // namespace screen
