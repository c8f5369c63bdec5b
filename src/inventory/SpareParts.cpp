#include "inventory/SpareParts.h"

#include "inventory/Sql.h"

namespace inventory {

namespace {

using screen::Complaint;

SparePart read(const jet::Recordset& row) {
    return {row[u"Index"].toLong(),
            row[u"SCustID"].toLong(),
            row.text(u"SLocation"),
            row.text(u"SPartNo"),
            row[u"SJobNo"].toLong(),
            row.text(u"SPoNo"),
            row[u"SSpareQty"].toLong(),
            row[u"SJobQty"].toLong(),
            row[u"SparePrice"].toCurrency(),
            row[u"SpareTotPrice"].toCurrency(),
            row[u"SEmpID"].toLong(),
            row[u"SDate"].toDate(),
            row.text(u"Notes")};
}

QString indexed(const std::vector<qint64>& indexes) {
    return u" WHERE [Index] IN ("_s + listOf(indexes) + u")"_s;
}

} // namespace

std::vector<SparePart> sparesOf(jet::Database& database, qint64 custId,
                                const std::optional<QString>& location) {
    jet::Recordset set = database.openRecordset(
        u"SELECT * FROM SpareParts WHERE SCustID = "_s + num(custId) +
            (location ? u" AND SLocation = "_s + sqlText(*location) : QString()) +
            u" ORDER BY [Index]"_s,
        jet::RecordsetType::Snapshot);
    std::vector<SparePart> parts;
    for (; !set.eof(); set.moveNext())
        parts.push_back(read(set));
    return parts;
}

std::optional<SparePart> sparePart(jet::Database& database, qint64 index) {
    const jet::Recordset row = database.openRecordset(
        u"SELECT * FROM SpareParts WHERE [Index] = "_s + num(index), jet::RecordsetType::Snapshot);
    return row.isEmpty() ? std::nullopt : std::optional(read(row));
}

QString spareLocations(qint64 custId) {
    return u"Select distinct slocation from SpareParts where sCustID = "_s + num(custId) +
           u" AND slocation <> '' ORDER BY slocation"_s;
}

bool isOld(const QDate& date, const QDate& today, int months) {
    return date.daysTo(today) >= static_cast<qint64>(months) * 30;
}

std::optional<Complaint> checkNewSpare(const SparePart& part) {
    if (part.custId == 0)
        return Complaint{u"You must enter a Company!"_s, u"dbcCompID"_s, u"Must have Company!"_s};
    if (part.location.isEmpty())
        return Complaint{u"You must enter a Location!"_s, u"dbcLocation"_s,
                         u"Must have location!"_s};
    if (part.spareQty <= 0)
        return Complaint{u"You must enter a Spare Quantity!"_s, u"txtSpareQty"_s,
                         u"Must have Spare Quantity!"_s};
    if (part.employee == 0)
        return Complaint{u"You must enter an Employee ID!"_s, u"dbcEmployee"_s, u"Must Have ID!"_s};
    if (part.partNo.isEmpty())
        return Complaint{u"You must enter a Part Number!"_s, u"txtPart"_s,
                         u"Must Have Part Number!"_s};
    return {};
}

std::optional<Complaint> checkEditedSpare(const SparePart& part) {
    if (part.location.isEmpty())
        return Complaint{u"You must enter a location!"_s, u"dbcLocation"_s};
    if (part.spareQty <= 0)
        return Complaint{u"You must enter a Quantity. You cannot have a Quantity of 0!"_s,
                         u"mskQty"_s};
    if (part.employee == 0)
        return Complaint{u"You must enter an Employee!"_s, u"dbcEmployee"_s};
    return {};
}

void addSpare(jet::Database& database, const SparePart& part) {
    jet::Transaction transaction(database);
    database.insertRows(
        u"SpareParts"_s,
        {u"SCustID"_s, u"SLocation"_s, u"SSpareQty"_s, u"SJobNo"_s, u"SparePrice"_s,
         u"SpareTotPrice"_s, u"SJobQty"_s, u"SPartNo"_s, u"SPoNo"_s, u"SEmpID"_s, u"SDate"_s,
         u"Notes"_s},
        {{part.custId, part.location, part.spareQty, part.jobNo, part.price, part.totalPrice,
          part.jobQty, part.partNo, part.poNo, part.employee, part.date, part.notes}});
    transaction.commit();
}

bool saveSpare(jet::Database& database, const SparePart& part, const SparePart& before) {
    QStringList columns{u"Index"_s};
    std::vector<jet::Value> values{part.index};
    const auto put = [&](const QString& column, auto member) {
        if (part.*member != before.*member) {
            columns << column;
            values.emplace_back(part.*member);
        }
    };
    put(u"SLocation"_s, &SparePart::location);
    put(u"SSpareQty"_s, &SparePart::spareQty);
    put(u"SparePrice"_s, &SparePart::price);
    put(u"SpareTotPrice"_s, &SparePart::totalPrice);
    put(u"SEmpID"_s, &SparePart::employee);
    put(u"Notes"_s, &SparePart::notes);
    if (columns.size() == 1)
        return true;
    return database.updateRows(u"SpareParts"_s, columns, 1, {values}) > 0;
}

void moveSpares(jet::Database& database, const std::vector<qint64>& indexes,
                const QString& location) {
    if (!indexes.empty())
        database.execute(u"UPDATE SpareParts SET SLocation = "_s + sqlText(location) +
                         indexed(indexes));
}

void deleteSpares(jet::Database& database, const std::vector<qint64>& indexes) {
    if (!indexes.empty())
        database.execute(u"DELETE * FROM SpareParts"_s + indexed(indexes));
}

QString spareFindSelect(const QString& text) {
    if (text.isEmpty())
        return u"SELECT * FROM SpareParts ORDER BY [Index]"_s;
    QString pattern = u'*' + text + u'*';
    pattern.replace(u'-', u'?');
    return u"SELECT * FROM SpareParts WHERE SPartNo LIKE "_s + sqlText(pattern) +
           u" ORDER BY [Index]"_s;
}

QString spareFormula(qint64 custId, const std::optional<QString>& location) {
    QString formula = u"{SpareParts.sCustid} = "_s + num(custId);
    if (location)
        formula += u" and {SpareParts.sLocation} = "_s + sqlText(*location);
    return formula;
}

QString spareFormula(const std::vector<qint64>& indexes) {
    QStringList parts;
    for (const qint64 index : indexes)
        parts << u"{SpareParts.index} = "_s + num(index);
    return parts.join(u" or "_s);
}

} // namespace inventory
