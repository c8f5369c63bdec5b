#pragma once

#include "core/records/DocumentLines.h"
#include "purchasing/OrderLine.h"

#include <QDate>

#include <array>

namespace purchasing {

/// What a group of requests and a purchase order say above their lines.
struct OrderHeader {
    QString title;
    std::optional<QDate> issued;
    std::optional<QDate> required;
    std::array<QString, 9> shipTo; ///< in the order of shipToColumns()
};

/// The copy of a vendor that a request or an order keeps.
struct OrderVendor {
    QString requestKey; ///< such as "12-7"; of a request only
    qint64 vendorId = 0;
    QString company;
    std::array<QString, 15> copied; ///< address, terms and notes, in the order of the columns
};

/// A purchase order, or the request to one of a group's vendors under the group's header.
struct OrderDocument {
    qint64 documentNo = 0;
    OrderHeader header;
    OrderVendor vendor;
    std::vector<OrderLine> lines;
};

/// What stands behind "Ship2" in the ship-to columns, and behind "POShipto" in the preferences.
const std::array<QString, 9>& shipToColumns();

const core::DocumentColumns<OrderHeader>& orderColumns();
const core::DocumentColumns<OrderVendor>& vendorColumns(const OrderKind& kind);
/// The lines of both kinds: those of a request are told apart by their numbers.
const core::DocumentLines<OrderLine>& orderLines();

/// Whether two are the same, as far as people enter them.
bool sameOrder(const OrderKind& kind, const OrderDocument& a, const OrderDocument& b);

} // namespace purchasing
