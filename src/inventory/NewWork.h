#pragma once

#include <QString>

namespace inventory {

/// The job and the estimate module, as far as an item's work begins there.
class NewWork {
  public:
    virtual ~NewWork() = default;
    /// Begins a new record with that text and part number. False if the module is busy with
    /// another.
    virtual bool startNew(const QString& description, const QString& partNumber) = 0;
};

} // namespace inventory
