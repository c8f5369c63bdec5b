#pragma once

#include "core/records/RecordScreen.h"

namespace core {

/// What the history asks of the RFQ module beside: the vendor of a group, by its key "12-3".
class VendorOrders {
  public:
    virtual ~VendorOrders() = default;
    virtual bool goToVendorOrder(const QString& vOrderKey) = 0;
};

/// Every save and delete of a customer, estimate, job, RFQ, PO or item ends with this: the history
/// shows its lists again, if it is open.
inline void RefreshHistoryIfOpen(const QString& table) {
    refreshNeighbours({QStringLiteral("frmhistory")}, table);
}

} // namespace core
