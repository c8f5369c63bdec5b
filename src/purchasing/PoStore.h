#pragma once

#include "purchasing/OrderLine.h"

#include <QDate>

#include <map>
#include <stdexcept>

namespace purchasing {

/// Another station saved other lines of the order since they were read.
struct LinesChangedElsewhere : std::runtime_error {
    LinesChangedElsewhere() : std::runtime_error("order lines changed elsewhere") {}
};

/// What was received of the lines of an order, by their IDs: none of a new order.
using Received = std::map<qint64, qint64>;
/// The selects of receivedOf().
std::vector<jet::WantedSet> receivedSelects(qint64 poNumber);
/// What was received of an order's lines, within the transaction that writes them anew. `stored`
/// are the IDs of all lines that the screen was opened with, deleted ones included; throws
/// LinesChangedElsewhere where others stand now.
Received receivedOf(jet::Database& database, qint64 poNumber, const std::vector<qint64>& stored);
/// Writes the lines of an order anew, numbered from 1, within the caller's transaction. Each line
/// gets a new ID, and its receipts, those of the meantime too, follow it.
void replacePoLines(jet::Database& database, qint64 poNumber, const Received& received,
                    const std::vector<OrderLine>& lines);

/// Writes columns of an order's vendor, by name and content: the row itself where it is the first
/// time, else what has changed.
void writePoVendor(jet::Database& database, qint64 poNumber,
                   const std::vector<std::pair<QString, QString>>& columns, bool first);

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
