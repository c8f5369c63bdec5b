#include "platform/jet/engines/Postgres.h"
#include "platform/values/Literals.h"

#include "platform/jet/Types.h"

namespace jet {

namespace {

QString textOf(const std::vector<Cell>& cells, std::size_t column) {
    return valueOf(cells[column], ColumnType::Text).toText();
}

constexpr char columnsSql[] =
    "SELECT c.oid::text, c.relname::text, a.attname::text, "
    "format_type(a.atttypid, a.atttypmod), a.attidentity::text, "
    "coalesce(a.attnum = ANY (p.conkey), false), "
    "CASE WHEN a.attidentity = '' THEN pg_get_expr(d.adbin, d.adrelid) END, "
    "(SELECT pg_get_constraintdef(w.oid) FROM pg_constraint w WHERE w.conrelid = c.oid "
    "AND w.contype = 'c' AND w.conkey = ARRAY[a.attnum] "
    "AND w.conname LIKE '%\\_width' LIMIT 1) "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid "
    "LEFT JOIN pg_constraint p ON p.conrelid = c.oid AND p.contype = 'p' "
    "LEFT JOIN pg_attrdef d ON d.adrelid = c.oid AND d.adnum = a.attnum "
    "WHERE c.relkind IN ('r', 'p') AND c.relnamespace = current_schema()::regnamespace "
    "AND a.attnum > 0 AND NOT a.attisdropped ORDER BY c.oid, a.attnum";

constexpr char indexesSql[] =
    "SELECT i.indrelid::text, n.relname::text, i.indisunique, a.attname::text "
    "FROM pg_index i JOIN pg_class n ON n.oid = i.indexrelid "
    "JOIN pg_class t ON t.oid = i.indrelid "
    "CROSS JOIN LATERAL unnest(i.indkey::int[]) WITH ORDINALITY AS k(number, place) "
    "JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = k.number "
    "WHERE t.relnamespace = current_schema()::regnamespace "
    "AND NOT EXISTS (SELECT 1 FROM pg_constraint c WHERE c.conindid = i.indexrelid) "
    "ORDER BY i.indrelid, i.indexrelid, k.place";

/// Whether the database sorts by bytes. Its collation can't change.
constexpr char orderSql[] =
    "SELECT datlocprovider = 'c' AND datcollate IN ('C', 'POSIX', 'C.UTF-8', 'C.utf8') "
    "FROM pg_database WHERE datname = current_database()";

/// 'EA'::citext as the dialect writes it.
QString plainDefault(const QString& expression) {
    const qsizetype cast = expression.lastIndexOf(u"::"_s);
    return cast > 0 ? expression.left(cast) : expression;
}

} // namespace

Schema Postgres::readSchema() {
    Schema schema;
    std::vector<Table> tables;
    QHash<QString, std::size_t> places;
    Rows columns, indexes, order;
    std::vector<Read> reads(3);
    reads[0].statement = prepare(columnsSql, Access::Reads);
    reads[0].rows = &columns;
    reads[1].statement = prepare(indexesSql, Access::Reads);
    reads[1].rows = &indexes;
    reads[2].statement = prepare(orderSql, Access::Reads);
    reads[2].rows = &order;
    runTogether(reads);
    m_order = valueOf(order.cell(0, 0), ColumnType::YesNo).toBool() ? EngineOrder::ByBytes
                                                                    : EngineOrder::Other;

    std::vector<Cell> cells;
    for (int row = 0; row < columns.count(); ++row) {
        columns.read(row, cells);
        const QString id = textOf(cells, 0);
        if (!places.contains(id)) {
            places.insert(id, tables.size());
            tables.emplace_back().name = textOf(cells, 1);
        }
        Column column;
        column.name = textOf(cells, 2);
        if (column.name == QStringView(hiddenIdentity))
            continue;
        const DeclaredType type =
            typeFromDeclaration(textOf(cells, 3), !textOf(cells, 4).isEmpty(), dialect());
        column.type = type.type;
        column.width = type.width;
        column.primaryKey = cells[5].integer != 0;
        column.defaultValue = plainDefault(textOf(cells, 6));
        if (const int width = widthFromCheck(textOf(cells, 7)); width > 0) {
            column.type = ColumnType::Text;
            column.width = width;
        }
        tables.back().columns.push_back(std::move(column));
    }
    for (int row = 0; row < indexes.count(); ++row) {
        indexes.read(row, cells);
        const auto place = places.constFind(textOf(cells, 0));
        if (place == places.constEnd())
            continue;
        Table& table = tables[*place];
        const QString name = textOf(cells, 1);
        if (table.indexes.empty() || table.indexes.back().name != name)
            table.indexes.push_back({name, {}, cells[2].integer != 0});
        table.indexes.back().columns.append(textOf(cells, 3));
    }
    for (Table& table : tables)
        schema.add(std::move(table));
    return schema;
}

} // namespace jet
