#pragma once

#include "core/keeping/PaperStore.h"

namespace core {

/// Runs work on a thread of its own and returns when it has ended; what it throws is thrown here.
/// Windows are painted meanwhile, and `goOn` is asked now and then on this thread, with the last
/// percentage that the work has told: false breaks it off.
void runAside(const std::function<void(const keeping::Progress&)>& work,
              const keeping::Progress& goOn);

} // namespace core
