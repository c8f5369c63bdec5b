#include "core/records/RowStatements.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <algorithm>

namespace core {

namespace {

/// As many rows as one statement takes.
constexpr std::size_t atOnce = 200;

QString literal(const jet::Value& value) {
    using Kind = jet::Value::Kind;
    switch (value.kind()) {
    case Kind::Null:
        return u"NULL"_s;
    case Kind::Text:
        return u"'"_s + values::quoted(value.toText()) + u"'"_s;
    case Kind::Date:
        return u"#"_s + value.toText() + u"#"_s;
    default:
        return value.toText();
    }
}

/// A select of literal rows; the names go with the first.
QString literalRows(const std::vector<std::vector<jet::Value>>& rows, std::size_t begin,
                    std::size_t end, const QStringList& names) {
    QString select;
    for (std::size_t i = begin; i < end; ++i) {
        QStringList items;
        for (const jet::Value& value : rows[i]) {
            const QString name = names.value(items.size());
            items << literal(value) +
                         (i == begin && !name.isEmpty() ? u" AS "_s + name : QString());
        }
        select += (i == begin ? u"SELECT "_s : u" UNION ALL SELECT "_s) + items.join(u", ");
    }
    return select;
}

} // namespace

void insertRows(jet::Database& database, const QString& table, const QStringList& columns,
                const std::vector<std::vector<jet::Value>>& rows) {
    for (std::size_t i = 0; i < rows.size(); i += atOnce) {
        database.execute(u"INSERT INTO "_s + table + u" ("_s + columns.join(u", ") + u") "_s +
                         literalRows(rows, i, std::min(rows.size(), i + atOnce), {}));
    }
}

void updateRows(jet::Database& database, const QString& table, const QStringList& columns, int keys,
                const std::vector<std::vector<jet::Value>>& rows) {
    QStringList names, on, set;
    for (int i = 0; i < columns.size(); ++i) {
        names << u"New%1"_s.arg(i);
        (i < keys ? on : set) << table + u"."_s + columns[i] + u" = Changed."_s + names.last();
    }
    for (std::size_t i = 0; i < rows.size(); i += atOnce) {
        database.execute(u"UPDATE "_s + table + u" INNER JOIN ("_s +
                         literalRows(rows, i, std::min(rows.size(), i + atOnce), names) +
                         u") AS Changed ON ("_s + on.join(u") AND (") + u") SET "_s +
                         set.join(u", "));
    }
}

} // namespace core
