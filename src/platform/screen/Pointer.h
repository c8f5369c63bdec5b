#pragma once

namespace screen {

/// The hourglass for a scope. Boxes shown meanwhile have the arrow.
class BusyPointer {
  public:
    enum Shape { Hourglass = 11, ArrowAndHourglass = 13 };
    explicit BusyPointer(Shape shape = Hourglass);
    ~BusyPointer();
    /// Back to the arrow before the scope ends.
    void reset();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

  private:
    bool m_shown = true;
};

} // namespace screen
