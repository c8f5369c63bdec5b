#pragma once

#include "inventory/Items.h"

#include <QDate>

namespace inventory {

/// A criterion of the query over stock: one value, or a range of two.
struct StockCriterion {
    bool used = false;
    bool range = false;
    QString first, second;
    qint64 folder = 0; ///< the one folder of a type or location, which is asked with all below it
    std::optional<QDate> from, to;
};

/// What is asked of the stock. Without criteria all items are meant.
struct StockQuestion {
    StockCriterion description, part, location, type, manufacturer, issued, stocked;

    bool isEmpty() const;
};

/// The statement that finds the items; single folders refer to what stands in ItemQuery.
QString stockStatement(const StockQuestion& question);

/// The items found, by their descriptions. Folders are put into the work table ItemQuery first: of
/// a location and a type the items add up. In one transaction, so that stations that ask at once
/// don't see each other's.
std::vector<ItemRow> findStock(jet::Database& database, const StockQuestion& question);
/// Empties the work table.
void forgetQuery(jet::Database& database);

/// The selection formula of a report on items. `module` is the report's: of those on issues and
/// receipts only those of the days that were asked for are printed.
QString stockFormula(const StockQuestion& question, const QString& module,
                     const std::vector<qint64>& items);

} // namespace inventory
