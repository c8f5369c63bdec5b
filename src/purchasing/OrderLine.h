#pragma once

#include "core/records/DocumentColumns.h"
#include "platform/jet/Database.h"
#include "platform/values/Currency.h"
#include "platform/values/Literals.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace purchasing {

/// One line of a request for quotation or a purchase order.
struct OrderLine {
    qint64 id = 0; ///< tells stored lines apart: in a purchase order its ID, else its number
    int itemNumber = 0;
    QString partNumber;
    QString description;
    QString manufacturer;
    QString type = u"Stock"_s;
    qint64 estimate = 0; ///< of type "Estimate"; 0 for any other
    qint64 job = 0;      ///< of type "Job"; 0 for any other
    QString units;
    values::Currency unitPrice;
    qint64 quantity = 0;
    qint64 received = 0; ///< purchase orders only
    values::Currency total;
    QString delivery;
    QString notes;

    bool isJob() const { return type.compare(u"Job"_s, Qt::CaseInsensitive) == 0; }
    bool isEstimate() const { return type.compare(u"Estimate"_s, Qt::CaseInsensitive) == 0; }
    /// Makes the total of quantity and price, and drops numbers that the type has no use for.
    /// Throws values::Overflow.
    void complete();
};

/// What tells the lines of a request for quotation from those of a purchase order. Everything else
/// about them is the same.
struct OrderKind {
    QString word;      ///< "RFQ", "PO"
    QString itemTable; ///< RFQItem, POItem
    /// Where the parts that were asked of, or ordered from, a vendor stand, as a query names it.
    QString history;
    /// A line for a job or an estimate needs its number.
    bool needsNumber = false;
    QString noDescription;    ///< what is said where there is none
    bool showsSymbol = false; ///< the unit price in the dialog carries the currency symbol
};

const OrderKind& rfqKind();
const OrderKind& poKind();

/// Why a line can't be taken and the field where that is mended.
struct LineComplaint {
    QString text;
    QString field;
};

/// The first fault of a line in the order of the fields.
std::optional<LineComplaint> checkLine(const OrderKind& kind, const OrderLine& line);

/// "Total Cost = " and the sum of the lines.
QString totalText(const std::vector<OrderLine>& lines, const QString& currencySymbol);

/// What the table of either kind keeps of a line besides its keys and its number.
const core::DocumentColumns<OrderLine>& lineColumns();
/// Copies lines of a request or an order (`table`) into an order, numbered in the order of their
/// keys. Keys that aren't there are passed over.
void copyIntoOrder(jet::Database& database, const QString& table, const QStringList& keys,
                   qint64 order);

/// Selects of the lines of a request (by its key such as "12-7"), of the first request of a group
/// by the vendors' names, and of an order (by its number), in order.
QString rfqLinesSelect(const QString& key);
QString firstRfqLinesSelect(qint64 group);
QString poLinesSelect(qint64 poNumber);
std::vector<OrderLine> loadRfqLines(jet::Database& database, const QString& select);
std::vector<OrderLine> loadRfqLines(const jet::Recordset& opened);
std::vector<OrderLine> loadPoLines(jet::Database& database, qint64 poNumber);

/// Values of a column that were used with a vendor before, for one of his parts where one is given:
/// "PartNumber", "Description", "UnitOfMeasure".
QStringList usedBefore(jet::Database& database, const OrderKind& kind, qint64 vendor,
                       const QString& column, const QString& partNumber = {});
/// Writes a text into all lines of that vendor and part.
void makeCommon(jet::Database& database, const OrderKind& kind, qint64 vendor,
                const QString& column, const QString& partNumber, const QString& text);

/// A text for SQL, between quotes and with its apostrophes doubled.
QString sqlText(const QString& text);

} // namespace purchasing
