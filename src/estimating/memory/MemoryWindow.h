#pragma once

#include "estimating/memory/Memory.h"

#include <functional>

namespace estimating {

/// What stands on an estimate, as far as the window of the shop's memory follows it.
struct MemoryShown {
    MemoryQuestion question;
    double quantity = 0;   ///< of the estimate
    qint64 activeOper = 0; ///< the operation where the user is; 0 for none
    bool isEntry = false;  ///< figures can be brought into it
};

/// What "frmMemory" offers to the estimate that it stands beside.
class MemoryWindow {
  public:
    virtual ~MemoryWindow() = default;
    /// Shows what is known of it. Read beside all work where the question is another one.
    virtual void follow(const MemoryShown& shown) = 0;
    struct Host {
        std::function<void(qint64 operNo, double figure)> bring; ///< into the operation's cell
        std::function<void()> goBack;                            ///< for Escape
        std::function<void()> closedByUser;
    };
    virtual void setHost(Host host) = 0;
};

} // namespace estimating
