#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace purchasing {

/// What one vendor asks for one line of a group; a line without a price is not quoted.
struct Offer {
    bool quoted = false;
    bool lowest = false; ///< of the line, by unit price; with others where they are equal
    qint64 quantity = 0;
    values::Currency unitPrice;
    values::Currency total;
    QString delivery;
};

/// A vendor of the group with his sum and his history.
struct Bidder {
    QString key; ///< of his request
    qint64 vendor = 0;
    QString company;
    bool complete = false; ///< has quoted every line
    bool lowest = false;   ///< of those who are complete
    values::Currency total;
    std::optional<QDate> lastReceipt;
    std::optional<double> onTime; ///< share of receipts by the date required, 0 to 1
};

/// The offers of a request group side by side.
struct VendorMatrix {
    struct Line {
        QString partNumber;
        QString description;
        QString units;
        qint64 quantity = 0;
        std::vector<Offer> offers; ///< one for each vendor
    };
    std::vector<Bidder> vendors;
    std::vector<Line> lines;
};

/// An item of one of the group's requests.
struct QuotedItem {
    std::size_t vendor = 0; ///< place among the vendors
    QString partNumber;
    QString description;
    QString units;
    Offer offer;
};

/// Puts items of the same part number on one line, the second of a vendor on a second one, and
/// marks what is lowest. Throws values::Overflow.
VendorMatrix compare(std::vector<Bidder> vendors, const std::vector<QuotedItem>& items);

/// The matrix of a stored group, its vendors by name.
VendorMatrix loadMatrix(jet::Database& database, qint64 group);

/// "12 days ago" of a receipt; empty if there is none.
QString ageText(const std::optional<QDate>& receipt, const QDate& today);

/// The matrix as comma-separated text with a line of titles.
QString matrixCsv(const VendorMatrix& matrix);

} // namespace purchasing
