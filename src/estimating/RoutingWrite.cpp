#include "estimating/Routing.h"

#include "platform/values/Literals.h"

#include <QHash>
#include <QMap>

#include <algorithm>

namespace estimating {

using values::Currency;

namespace {

using Values = std::vector<jet::Value>;

/// What a row holds, in the order of operColumns().
Values operValues(const RoutingKind& kind, const OperRow& row, std::size_t place) {
    Values values{static_cast<qint64>(place) + 1, row.operNo, row.time.value_or(0), row.rate};
    if (kind.hasProgress) {
        values.insert(values.end(), {jet::Value(row.located), jet::Value(row.status),
                                     jet::Value(row.estimated.value_or(0))});
    }
    return values;
}

QStringList operColumns(const RoutingKind& kind) {
    QStringList columns{u"SeqNo"_s, u"OperNo"_s, u"OperTime_Amount"_s, u"OperShopRate"_s};
    if (kind.hasProgress)
        columns << u"OperLocated"_s << u"Status"_s << u"Estoper"_s;
    return columns;
}

Values miscValues(const MiscRow& row) {
    return {row.unit, row.price, row.quantity, row.total};
}

const QStringList& miscColumns() {
    static const QStringList columns{u"UnitofMeasure"_s, u"Unitprice"_s, u"Quantity"_s,
                                     u"CostAmount"_s};
    return columns;
}

/// Letter by letter, which the database's comparison is not.
bool same(const Values& a, const Values& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const jet::Value& one, const jet::Value& other) {
                          return one.toText() == other.toText();
                      });
}

Values behind(Values front, const Values& values) {
    front.insert(front.end(), values.begin(), values.end());
    return front;
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
    const QString ofDocument =
        u" WHERE "_s + kind.documentKey + u" = "_s + QString::number(documentNo);
    QHash<qint64, Values> before;
    for (const OperRow& row : stored)
        before.insert(row.id, operValues(kind, row, static_cast<std::size_t>(row.place - 1)));
    QStringList kept;
    std::vector<Values> changed, added;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        OperRow& row = rows[i];
        if (!row.inhouse)
            row.rate = Currency();
        const Values values = operValues(kind, row, i);
        if (!before.contains(row.id)) {
            added.push_back(behind({documentNo}, values));
            continue;
        }
        kept << QString::number(row.id);
        if (!same(before.value(row.id), values))
            changed.push_back(behind({row.id}, values));
    }
    if (over) {
        // Rows of operations that have left the catalogue, which nobody sees, go too.
        database.execute(
            u"DELETE FROM "_s + kind.operTable + ofDocument +
            (kept.isEmpty() ? QString() : u" AND ID NOT IN ("_s + kept.join(u',') + u")"_s));
        database.updateRows(kind.operTable, QStringList{u"ID"_s} + operColumns(kind), 1, changed);
    }
    database.insertRows(kind.operTable, QStringList{kind.documentKey} + operColumns(kind), added);
}

void insertMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<MiscRow>& rows) {
    replaceMiscRows(database, kind, documentNo, {}, rows, false);
}

void replaceMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                     const std::vector<MiscRow>& stored, const std::vector<MiscRow>& rows,
                     bool over) {
    // The rows have no identity but their item. Those of one that stands more than once are written
    // anew.
    const auto byItem = [](const std::vector<MiscRow>& all) {
        QMap<qint64, std::vector<Values>> items;
        for (const MiscRow& row : all)
            items[row.itemNo].push_back(miscValues(row));
        return items;
    };
    const auto before = byItem(stored), now = byItem(rows);
    QStringList kept;
    std::vector<Values> changed, added;
    for (auto one = before.begin(); one != before.end(); ++one) {
        const std::vector<Values>& was = one.value();
        const std::vector<Values> wanted = now.value(one.key());
        const bool isSame = std::equal(was.begin(), was.end(), wanted.begin(), wanted.end(), same);
        if (isSame || (wanted.size() == 1 && was.size() == 1)) {
            kept << QString::number(one.key());
            if (!isSame)
                changed.push_back(behind({documentNo, one.key()}, wanted.front()));
            continue;
        }
        for (const Values& row : wanted)
            added.push_back(behind({documentNo, one.key()}, row));
    }
    for (const MiscRow& row : rows) {
        if (!before.contains(row.itemNo))
            added.push_back(behind({documentNo, row.itemNo}, miscValues(row)));
    }
    if (over) {
        database.execute(
            u"DELETE FROM "_s + kind.miscTable + u" WHERE "_s + kind.documentKey + u" = "_s +
            QString::number(documentNo) +
            (kept.isEmpty() ? QString() : u" AND ItemNo NOT IN ("_s + kept.join(u',') + u")"_s));
    }
    const QStringList columns = QStringList{kind.documentKey, u"ItemNo"_s} + miscColumns();
    database.updateRows(kind.miscTable, columns, 2, changed);
    database.insertRows(kind.miscTable, columns, added);
}

} // namespace estimating
