#pragma once

#include "inventory/Items.h"

#include <QDate>

namespace inventory {

/// An item on a count sheet.
struct CountLine {
    qint64 itemId = 0;
    QString description, partNumber, location, units;
    qint64 stock = 0;              ///< as it was when the sheet was read
    std::optional<qint64> counted; ///< nothing: not counted

    qint64 difference() const { return counted ? *counted - stock : 0; }
};

/// The folders of a location with all below it, and the items in them, by location and description.
std::vector<qint64> countFolders(jet::Database& database, qint64 location);
std::vector<CountLine> countSheet(jet::Database& database, const std::vector<qint64>& locations);
/// The selection formula of the printed sheet.
QString countFormula(const std::vector<qint64>& locations);

/// An item whose stock is another one than on the sheet; nothing: it has gone.
struct CountChange {
    qint64 itemId = 0;
    std::optional<qint64> stock;
};
/// Makes the counted quantities the stock, each difference with a row of type "Count" in the item's
/// history that says who counted and when: all of them in one transaction, or nothing and the items
/// whose stock has changed since the sheet was read.
std::vector<CountChange> postCount(jet::Database& database, const std::vector<CountLine>& lines,
                                   qint64 employee, const QDate& date);

} // namespace inventory
