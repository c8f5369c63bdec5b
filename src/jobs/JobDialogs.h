#pragma once

#include <QString>

#include <optional>

namespace jobs {

/// How a new job starts.
struct NewJob {
    enum class Way { DefaultSet, SelectOperations, CopyCurrent };
    Way way = Way::SelectOperations;
    bool carryCustomer = false;
    bool carryNotes = false;      ///< operation notes of the copied job
    bool useDefaultNotes = false; ///< default notes of the operations
    bool copyEstimated = false;   ///< estimated times and amounts of the copied job
};

/// What "frmJobNew" offers.
class NewJobDialog {
  public:
    virtual ~NewJobDialog() = default;
    /// `hasCurrent`: there is a record to copy. Nothing if the user cancelled.
    virtual std::optional<NewJob> choose(bool hasCurrent) = 0;
};

/// What "frmJobshipAddEdit" offers.
class ShippingDialog {
  public:
    virtual ~ShippingDialog() = default;
    /// `mode` is "New" or "Edit"; `jobShipId` the consignment to edit. True if anything was saved.
    virtual bool ShowForm(const QString& mode, qint64 jobNo, qint64 jobShipId) = 0;
};

} // namespace jobs
