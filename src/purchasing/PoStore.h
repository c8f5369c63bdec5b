#pragma once

#include "purchasing/OrderDocument.h"

#include <map>

namespace purchasing {

/// What was received of the lines of an order, by their IDs: none of a new order.
using Received = std::map<qint64, qint64>;
Received receivedOf(jet::Database& database, qint64 poNumber);
/// Writes the lines of an order anew, numbered from 1, within the caller's transaction. Each line
/// gets a new ID, and its receipts, those of the meantime too, follow it.
void replacePoLines(jet::Database& database, qint64 poNumber, const Received& received,
                    const std::vector<OrderLine>& lines);

/// The header of an order, and its vendor: nothing in an order that was copied without lines.
QString orderSelect(qint64 poNumber);
QString orderVendorSelect(qint64 poNumber);
/// An order as it is stored.
std::optional<OrderDocument> loadOrder(jet::Database& database, qint64 poNumber);
/// Writes an order over the stored one, joined with what others did to it since `before` was read,
/// or as a new one without it. What was received of a line that is removed here, since it was read,
/// is told like any change. Throws where the order has gone.
core::SaveOutcome storeOrder(jet::Database& database, qint64 poNumber, OrderDocument& document,
                             const OrderDocument* before, const QStringList& settled = {});

/// Whether an order is still open changes with what is ordered and received.
enum class ActiveChange { None, BecameActive, BecameInactive };
/// The lines of an order of which something is still to come.
QString openLinesSelect(qint64 poNumber);
/// Writes the change; `active` is what the order says of itself.
ActiveChange detectActive(jet::Database& database, qint64 poNumber, bool active);
/// What is told of a change, titled "Notice".
QString activeNotice(ActiveChange change);

/// A new order of another's header and vendor and the chosen lines (by their keys), numbered anew,
/// nothing received. Without lines it has no vendor. Returns its number.
qint64 copyOrder(jet::Database& database, qint64 poNumber, const QStringList& items,
                 const QDate& required);

/// Deletes an order with lines and receipts.
void deleteOrder(jet::Database& database, qint64 poNumber);

} // namespace purchasing
