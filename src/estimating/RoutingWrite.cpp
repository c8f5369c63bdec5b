#include "estimating/Routing.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QSet>

#include <algorithm>

namespace estimating {

using values::Currency;

namespace {

/// As many rows as one statement takes.
constexpr std::size_t atOnce = 200;

QString text(const QString& value) {
    return u"'"_s + values::quoted(value) + u"'"_s;
}

/// A select of literal rows; the names go with the first.
QString literalRows(const std::vector<QStringList>& rows, std::size_t begin, std::size_t end,
                    const QStringList& names = {}) {
    QString select;
    for (std::size_t i = begin; i < end; ++i) {
        QStringList items = rows[i];
        for (int k = 0; i == begin && k < names.size(); ++k)
            items[k] += u" AS "_s + names[k];
        select += (i == begin ? u"SELECT "_s : u" UNION ALL SELECT "_s) + items.join(u", ");
    }
    return select;
}

void insertRows(jet::Database& database, const QString& table, const QString& columns,
                const std::vector<QStringList>& rows) {
    for (std::size_t i = 0; i < rows.size(); i += atOnce) {
        database.execute(u"INSERT INTO "_s + table + u" ("_s + columns + u") "_s +
                         literalRows(rows, i, std::min(rows.size(), i + atOnce)));
    }
}

/// Sets columns of the rows whose key (the first of each of `rows`) is given.
void updateRows(jet::Database& database, const QString& table, const QString& key,
                const QStringList& columns, const std::vector<QStringList>& rows,
                const QString& where) {
    QStringList names{u"RowKey"_s};
    QStringList set;
    for (int i = 0; i < columns.size(); ++i) {
        names << u"New%1"_s.arg(i);
        set << table + u"."_s + columns[i] + u" = Changed.New%1"_s.arg(i);
    }
    for (std::size_t i = 0; i < rows.size(); i += atOnce) {
        database.execute(u"UPDATE "_s + table + u" INNER JOIN ("_s +
                         literalRows(rows, i, std::min(rows.size(), i + atOnce), names) +
                         u") AS Changed ON "_s + table + u"."_s + key +
                         u" = Changed.RowKey SET "_s + set.join(u", ") + where);
    }
}

/// What a row holds, in the order of operColumns().
QStringList operValues(const RoutingKind& kind, const OperRow& row, std::size_t place) {
    QStringList values{QString::number(place + 1), QString::number(row.operNo),
                       values::numberText(row.time.value_or(0)), row.rate.toText()};
    if (kind.hasProgress) {
        values << QString::number(row.located) << text(row.status)
               << values::numberText(row.estimated.value_or(0));
    }
    return values;
}

QStringList operColumns(const RoutingKind& kind) {
    QStringList columns{u"SeqNo"_s, u"OperNo"_s, u"OperTime_Amount"_s, u"OperShopRate"_s};
    if (kind.hasProgress)
        columns << u"OperLocated"_s << u"Status"_s << u"Estoper"_s;
    return columns;
}

QStringList miscValues(const MiscRow& row) {
    return {text(row.unit), row.price.toText(), row.quantity.toText(), row.total.toText()};
}

} // namespace

void insertOperRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    std::vector<OperRow>& rows) {
    for (OperRow& row : rows)
        row.id = 0;
    replaceOperRows(database, kind, documentNo, {}, rows, false);
}

void replaceOperRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                     const std::vector<OperRow>& stored, std::vector<OperRow>& rows, bool over) {
    const QString number = QString::number(documentNo);
    const QString ofDocument =
        u" WHERE "_s + kind.operTable + u"."_s + kind.documentKey + u" = "_s + number;
    QHash<qint64, QStringList> before;
    for (const OperRow& row : stored)
        before.insert(row.id, operValues(kind, row, static_cast<std::size_t>(row.place - 1)));
    QStringList kept;
    std::vector<QStringList> changed, added;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        OperRow& row = rows[i];
        if (!row.inhouse)
            row.rate = Currency();
        const QStringList values = operValues(kind, row, i);
        if (!before.contains(row.id)) {
            added.push_back(QStringList{number} + values);
            continue;
        }
        const QString id = QString::number(row.id);
        kept << id;
        if (before.value(row.id) != values)
            changed.push_back(QStringList{id} + values);
    }
    if (over) {
        // Rows of operations that have left the catalogue, which nobody sees, go too.
        database.execute(
            u"DELETE FROM "_s + kind.operTable + ofDocument +
            (kept.isEmpty() ? QString() : u" AND ID NOT IN ("_s + kept.join(u',') + u")"_s));
        updateRows(database, kind.operTable, u"ID"_s, operColumns(kind), changed, ofDocument);
    }
    insertRows(database, kind.operTable, kind.documentKey + u", "_s + operColumns(kind).join(u", "),
               added);
}

void insertMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<MiscRow>& rows) {
    replaceMiscRows(database, kind, documentNo, {}, rows, false);
}

void replaceMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                     const std::vector<MiscRow>& stored, const std::vector<MiscRow>& rows,
                     bool over) {
    const QString number = QString::number(documentNo);
    const QString ofDocument =
        u" WHERE "_s + kind.miscTable + u"."_s + kind.documentKey + u" = "_s + number;
    // The rows have no identity but their item. One that stands more than once is written anew.
    const auto byItem = [](const std::vector<MiscRow>& all) {
        QMap<qint64, QList<QStringList>> items;
        for (const MiscRow& row : all)
            items[row.itemNo] << miscValues(row);
        return items;
    };
    const auto before = byItem(stored), now = byItem(rows);
    QStringList kept;
    std::vector<QStringList> changed;
    QSet<qint64> written;
    for (auto one = before.begin(); one != before.end(); ++one) {
        const QString item = QString::number(one.key());
        const QList<QStringList> wanted = now.value(one.key());
        const bool inPlace = wanted.size() == 1 && one.value().size() == 1;
        if (wanted != one.value() && !inPlace) {
            written.insert(one.key());
            continue;
        }
        kept << item;
        if (wanted != one.value())
            changed.push_back(QStringList{item} + wanted.front());
    }
    if (over) {
        database.execute(
            u"DELETE FROM "_s + kind.miscTable + ofDocument +
            (kept.isEmpty() ? QString() : u" AND ItemNo NOT IN ("_s + kept.join(u',') + u")"_s));
    }
    updateRows(database, kind.miscTable, u"ItemNo"_s,
               {u"UnitofMeasure"_s, u"Unitprice"_s, u"Quantity"_s, u"CostAmount"_s}, changed,
               ofDocument);
    std::vector<QStringList> added;
    for (const MiscRow& row : rows) {
        if (!before.contains(row.itemNo) || written.contains(row.itemNo))
            added.push_back(QStringList{number} + miscValues(row) +
                            QStringList{QString::number(row.itemNo)});
    }
    insertRows(database, kind.miscTable,
               kind.documentKey + u", UnitofMeasure, Unitprice, Quantity, CostAmount, ItemNo"_s,
               added);
}

} // namespace estimating
