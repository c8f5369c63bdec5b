#pragma once

#include "platform/jet/Database.h"
#include "platform/screen/Complaint.h"
#include "platform/values/Currency.h"

#include <QDate>

#include <optional>
#include <vector>

namespace inventory {

/// Goods that the shop keeps for a customer.
struct SparePart {
    qint64 index = 0; ///< "Rec #"
    qint64 custId = 0;
    QString location, partNo;
    qint64 jobNo = 0; ///< 0: none
    QString poNo;
    qint64 spareQty = 0, jobQty = 0;
    values::Currency price, totalPrice; ///< as entered: neither follows from the other
    qint64 employee = 0;
    std::optional<QDate> date;
    QString notes;
};

/// A customer's spare parts, at one location if that is given; -1 is nobody.
std::vector<SparePart> sparesOf(jet::Database& database, qint64 custId,
                                const std::optional<QString>& location = {});
std::optional<SparePart> sparePart(jet::Database& database, qint64 index);
/// The select of a customer's locations: those that a row of his uses.
QString spareLocations(qint64 custId);
/// Whether goods have lain for so many months of 30 days.
bool isOld(const QDate& date, const QDate& today, int months);

/// The first fault of a new record, and of one that was edited.
std::optional<screen::Complaint> checkNewSpare(const SparePart& part);
std::optional<screen::Complaint> checkEditedSpare(const SparePart& part);

/// Adds a record, in a transaction.
void addSpare(jet::Database& database, const SparePart& part);
/// Writes what differs from `before`; false if the record has gone.
bool saveSpare(jet::Database& database, const SparePart& part, const SparePart& before);
void moveSpares(jet::Database& database, const std::vector<qint64>& indexes,
                const QString& location);
void deleteSpares(jet::Database& database, const std::vector<qint64>& indexes);

/// The records whose part number holds a text, in which "-" stands for any letter; all where it is
/// empty.
QString spareFindSelect(const QString& text);
/// The selection formulas of their reports.
QString spareFormula(qint64 custId, const std::optional<QString>& location);
QString spareFormula(const std::vector<qint64>& indexes);

} // namespace inventory
