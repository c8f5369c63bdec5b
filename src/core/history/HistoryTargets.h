#pragma once

#include "core/records/RecordScreen.h"

namespace core {

/// Every save and delete of a customer, estimate, job, RFQ, PO or item ends with this: the history
/// shows its lists again, if it is open.
inline void RefreshHistoryIfOpen(const QString& table) {
    refreshNeighbours({QStringLiteral("frmhistory")}, table);
}

} // namespace core
