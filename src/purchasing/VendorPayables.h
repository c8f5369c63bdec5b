#pragma once

#include <QtGlobal>

namespace purchasing {

/// What the purchase order asks of "frmAP".
class VendorPayables {
  public:
    virtual ~VendorPayables() = default;
    /// Shows the vendor's orders, unless a bill is being put together for another one.
    virtual void showVendor(qint64 vendor) = 0;
};

} // namespace purchasing
