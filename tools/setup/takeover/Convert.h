#pragma once

#include "platform/jet/Schema.h"
#include "platform/jet/Value.h"
#include "setup/takeover/OldFile.h"
#include "setup/takeover/Remarks.h"

namespace takeover {

/// The value as a column of today holds it. What can't stand there as it was becomes the nearest
/// that can, or Null where none is right, and is remarked upon.
jet::Value converted(const OldValue& value, const OldColumn& from, const jet::Column& to,
                     const Remarks::Place& place, Remarks& remarks);

/// The value as a report shows it.
QString shown(const OldValue& value);

/// A moment of the old system, to the nearest second. Nothing outside the years 100 to 9999.
std::optional<QDateTime> momentOf(double days);

} // namespace takeover
