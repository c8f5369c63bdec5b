#pragma once

namespace core {

/// A screen beside which the memory of the shop can stand, as the shell asks for it.
class MemoryScreen {
  public:
    virtual ~MemoryScreen() = default;
    /// Opens it, or goes to it where it is open.
    virtual void showMemory() = 0;
};

} // namespace core
