#pragma once

#include "core/records/RecordScreen.h"

namespace timemgmt {

/// Tells whoever shows time records that some were written.
inline void tellTimeChanged() {
    const auto open = screen::Forms::all();
    for (screen::Form* form : open) {
        if (auto* user = dynamic_cast<core::LookupUser*>(form))
            user->refreshLookup(u"Timelog"_s);
    }
}

} // namespace timemgmt
