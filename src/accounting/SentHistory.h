#pragma once

#include <QString>

namespace accounting {

/// The windows "frmInvoiceRecord" and "frmAPRecord": what was sent for an order.
class SentHistory {
  public:
    virtual ~SentHistory() = default;
    virtual void ShowHistory(const QString& order) = 0;
};

} // namespace accounting
