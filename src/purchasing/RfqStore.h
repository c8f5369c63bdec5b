#pragma once

#include "purchasing/OrderDocument.h"

namespace purchasing {

/// The key of a vendor's request within a group: "12-7".
QString vendorKey(qint64 group, qint64 vendor);

/// A new group with its first vendor, whose address and terms are copied from the vendor's record.
/// Returns the group's number.
qint64 createGroup(jet::Database& database, qint64 vendor);
/// A further vendor joins a group. Throws where he has joined it already.
void addVendor(jet::Database& database, qint64 group, qint64 vendor);

QString groupSelect(qint64 group);
QString requestSelect(const QString& key);
/// A group's header and, where a key is given, the request to one of its vendors, as stored;
/// nothing if either has gone.
std::optional<OrderDocument> loadRequest(jet::Database& database, qint64 group, const QString& key);
/// Writes header and request over the stored ones, joined with what others did to them since
/// `before` was read. Throws where either has gone.
core::SaveOutcome storeRequest(jet::Database& database, qint64 group, OrderDocument& document,
                               const OrderDocument& before, const QStringList& settled = {});

/// Replaces the lines of a request by these, numbered from 1; of the `stored` ones (rfqLinesSelect)
/// those that stay as they are aren't written. Within the caller's transaction.
void replaceRfqLines(jet::Database& database, qint64 group, qint64 vendor,
                     const std::vector<OrderLine>& lines,
                     std::optional<jet::Recordset> stored = {});

/// What of a group goes into the next: for each vendor's key whether he is taken, and the keys of
/// the lines that are.
struct ChosenRequest {
    QString key;
    QStringList items;
};

/// A new group made of another's header and the vendors and lines that were chosen, numbered as
/// they are; dates are not copied. Returns its number.
qint64 copyGroup(jet::Database& database, qint64 group, const std::vector<ChosenRequest>& chosen);

void deleteGroup(jet::Database& database, qint64 group);
/// Takes a vendor's request out of its group.
void deleteRequest(jet::Database& database, const QString& key);

/// How the request on the screen came to be, for what Cancel and Close undo.
enum class Begun { No, Group, Vendor, Template };
/// After Yes to "Are you sure you want to cancel?". Lines of a template group stay.
void undoByCancel(jet::Database& database, Begun begun, qint64 group, const QString& key);
/// After No to "Would you like to save the current record before closing?": with a vendor that was
/// added all vendors of the group go, its row and all lines stay.
void undoByClose(jet::Database& database, Begun begun, qint64 group);

/// A purchase order to the vendor of a request, of the lines whose keys were chosen, numbered anew.
/// With none chosen it has a header alone. The request stays as it is. Returns the order's number.
qint64 orderFromRequest(jet::Database& database, qint64 group, const ChosenRequest& chosen,
                        const QDate& required);

} // namespace purchasing
