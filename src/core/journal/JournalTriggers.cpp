#include "core/journal/JournalTriggers.h"

#include "core/journal/JournalTables.h"
#include "platform/jet/Native.h"
#include "platform/jet/Types.h"
#include "platform/values/Literals.h"

#include <QMap>

namespace core {

namespace {

/// What stands in a database by name: a file's triggers, or a server's functions and triggers.
using Parts = QMap<QString, QByteArray>;

std::vector<std::pair<JournalTable, const jet::Table*>> present(jet::Database& database) {
    std::vector<std::pair<JournalTable, const jet::Table*>> tables;
    for (const JournalTable& journalled : journalTables()) {
        const jet::Table* table = database.schema().table(journalled.name);
        if (table && (journalled.record.isEmpty() || table->column(journalled.record)))
            tables.emplace_back(journalled, table);
    }
    return tables;
}

// A file

/// The journal's table. As a counter, its number would be looked up and written in the engine's
/// list of counters with each statement; as it is, numbers rise as long as the last row stays.
constexpr char fileTable[] =
    "CREATE TABLE Journal (ID INTEGER PRIMARY KEY NOT NULL, \"At\" DATETIME, Who TEXT(60) COLLATE "
    "NOCASE, TableName TEXT(30) COLLATE NOCASE, RowKey TEXT(40) COLLATE NOCASE, Record INT, "
    "\"Action\" TEXT(1) COLLATE NOCASE, Changes LONGTEXT COLLATE NOCASE)";

/// A value as JSON; what a column mostly holds is asked for first. json_quote() would cut a
/// number's last bits, and refuses what isn't text.
QByteArray json(const QByteArray& value, const jet::Column& column) {
    using Type = jet::ColumnType;
    QByteArray first;
    if (column.type == Type::Text || column.type == Type::Memo || column.type == Type::DateTime)
        first = " WHEN 'text' THEN json_quote(" + value + ')';
    else if (column.type != Type::Double && column.type != Type::Currency)
        first = " WHEN 'integer' THEN " + value;
    return "CASE typeof(" + value + ')' + first + " WHEN 'real' THEN quote(" + value +
           ") WHEN 'blob' THEN json_quote(hex(" + value + ")) ELSE json_quote(" + value + ") END";
}

/// The row, old or new, without its Nulls: {"JobNo":1,"PartNo":"AX-10"}.
QByteArray wholeRow(const jet::Native& native, const jet::Table& table, const QByteArray& side) {
    QByteArray sql;
    for (const jet::Column& column : table.columns) {
        const QByteArray name = native.quoted(column.name), value = side + '.' + name;
        sql += (sql.isEmpty() ? "" : "||") + ("CASE WHEN " + value) + " IS NULL THEN '' ELSE '," +
               name + ":'||" + json(value, column) + " END";
    }
    return "'{'||substr(" + sql + ",2)||'}'";
}

/// Case counts, whatever the column's collation.
QByteArray differs(const QByteArray& name) {
    return "OLD." + name + " IS NOT NEW." + name + " COLLATE BINARY";
}

/// The changed columns with both values: {"Quantity":[5,6]}.
QByteArray changes(const jet::Native& native, const jet::Table& table) {
    QByteArray sql;
    for (const jet::Column& column : table.columns) {
        const QByteArray name = native.quoted(column.name);
        sql += (sql.isEmpty() ? "" : "||") + ("CASE WHEN " + differs(name)) + " THEN '," + name +
               ":['||" + json("OLD." + name, column) + "||','||" + json("NEW." + name, column) +
               "||']' ELSE '' END";
    }
    return "'{'||substr(" + sql + ",2)||'}'";
}

QByteArray anyChange(const jet::Native& native, const jet::Table& table) {
    QByteArray sql;
    for (const jet::Column& column : table.columns)
        sql += (sql.isEmpty() ? "" : " OR ") + differs(native.quoted(column.name));
    return sql;
}

/// A program that signs its transactions says when, too. Working the time out costs more than the
/// rest of a row; only by needing the other time is it left alone where there is one.
constexpr char at[] = "coalesce(w.\"At\", strftime('%Y-%m-%d %H:%M:%S', "
                      "'now'||coalesce(w.\"At\",''), 'localtime'))";

QString triggerName(const QString& table, char event) {
    return u"Journal_"_s + table + u'_' + QLatin1Char(event);
}

/// Only what every SQLite of today has: whatever program writes, its write passes here.
Parts fileParts(jet::Database& database) {
    const jet::Native native(database);
    Parts parts{{u"Journal"_s, fileTable}};
    for (const auto& [journalled, table] : present(database)) {
        const QByteArray key =
            table->key() ? native.quoted(table->key()->name) : QByteArray("rowid");
        const auto add = [&, &journalled = journalled,
                          &table = table](char event, const QByteArray& when,
                                          const QByteArray& side, const QByteArray& contents) {
            const QString name = triggerName(table->name, event);
            const QByteArray record =
                journalled.record.isEmpty()
                    ? "NULL"
                    : "CAST(" + side + '.' + native.quoted(journalled.record) + " AS INTEGER)";
            parts[name] =
                "CREATE TRIGGER " + native.quoted(name) + " AFTER " + when +
                " BEGIN INSERT INTO Journal (\"At\", Who, TableName, RowKey, Record, \"Action\", "
                "Changes) SELECT " +
                at + ", w.Who, '" + journalled.name.toUtf8() + "', " + side + '.' + key + ", " +
                record + ", '" + event + "', " + contents +
                " FROM (SELECT 1) LEFT JOIN Writer w; END";
        };
        const QByteArray on = " ON " + native.quoted(table->name);
        add('I', "INSERT" + on, "NEW", wholeRow(native, *table, "NEW"));
        add('U', "UPDATE" + on + " WHEN " + anyChange(native, *table), "OLD",
            changes(native, *table));
        add('D', "DELETE" + on, "OLD", wholeRow(native, *table, "OLD"));
    }
    return parts;
}

// A server

constexpr char rowsFunction[] = "mirsa_journal_rows";

QByteArray changesFunction(const jet::Table& table) {
    return "mirsa_journal_u_" + table.name.toLower().toUtf8();
}

/// What a function inserts, once for all rows of a statement. They run with their owner's rights:
/// who writes a table may have none on the journal.
QByteArray functionText(const QString& name, const QByteArray& schema, const QByteArray& body) {
    return "CREATE OR REPLACE FUNCTION " + name.toUtf8() +
           "() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = " + schema +
           ", pg_temp AS $body$" + body + "$body$";
}

QByteArray body(const QByteArray& table, const QByteArray& key, const QByteArray& record,
                const QByteArray& changes, const QByteArray& from) {
    return "BEGIN INSERT INTO journal (at, who, tablename, rowkey, record, action, changes) SELECT "
           "localtimestamp, left(coalesce(nullif(current_setting('mirsa.who', true), ''), "
           "session_user), 60), " +
           table + ", left(" + key + ", 40), " + record + ", left(TG_OP, 1), " + changes +
           " FROM " + from + "; RETURN NULL; END";
}

QByteArray rowsBody() {
    return body("TG_ARGV[1]", "r.j->>TG_ARGV[0]", "(r.j->>nullif(TG_ARGV[2], ''))::integer",
                "(jsonb_strip_nulls(r.j) - '" + QString::fromUtf16(jet::hiddenIdentity).toUtf8() +
                    "')::text",
                "(SELECT to_jsonb(c) AS j FROM told c) r");
}

/// A table's own, which names its columns: to take rows apart by the names in them would cost ten
/// times as much. A row's two states stand at the same place of both tables, also where its key
/// has changed.
QByteArray changesBody(const jet::Native& native, const JournalTable& journalled,
                       const jet::Table& table, const QByteArray& key) {
    QByteArrayList changes, differ;
    for (const jet::Column& column : table.columns) {
        const QByteArray name = native.quoted(column.name);
        // Letter by letter, which this type's own comparison is not.
        const QByteArray letters =
            column.type == jet::ColumnType::Text || column.type == jet::ColumnType::Memo ? "::text"
                                                                                         : "";
        const QByteArray before = "r." + name + letters, after = "a." + name + letters;
        differ += before + " IS DISTINCT FROM " + after;
        changes += "CASE WHEN " + differ.back() + " THEN '" + name + ":['||coalesce(to_json(" +
                   before + ")::text,'null')||','||coalesce(to_json(" + after +
                   ")::text,'null')||']' END";
    }
    const auto numbered = [](const QByteArray& rows) {
        return "(SELECT row_number() OVER () AS row_place, c.* FROM " + rows + " c) ";
    };
    return body('\'' + journalled.name.toUtf8() + '\'', "r." + key + "::text",
                journalled.record.isEmpty() ? "NULL::integer"
                                            : "r." + native.quoted(journalled.record) + "::integer",
                "'{'||concat_ws(','," + changes.join(',') + ")||'}'",
                numbered("before") + "r JOIN " + numbered("after") + "a USING (row_place) WHERE " +
                    differ.join(" OR "));
}

QString serverKey(const jet::Table& table) {
    return table.key() ? table.key()->name.toLower() : QString::fromUtf16(jet::hiddenIdentity);
}

/// By name, what they do.
Parts serverFunctions(jet::Database& database) {
    const jet::Native native(database);
    Parts functions{{QString::fromLatin1(rowsFunction), rowsBody()}};
    for (const auto& [journalled, table] : present(database))
        functions[QString::fromUtf8(changesFunction(*table))] =
            changesBody(native, journalled, *table, native.quoted(serverKey(*table)));
    return functions;
}

Parts serverTriggers(jet::Database& database) {
    const jet::Native native(database);
    Parts parts;
    for (const auto& [journalled, table] : present(database)) {
        const auto add = [&, &journalled = journalled,
                          &table = table](char event, const QByteArray& when,
                                          const QByteArray& tables, const QByteArray& function) {
            const QString name = triggerName(table->name, event).toLower();
            parts[name] = "CREATE TRIGGER " + native.quoted(name) + " AFTER " + when + " ON " +
                          native.quoted(table->name) + " REFERENCING " + tables +
                          " FOR EACH STATEMENT EXECUTE FUNCTION " + function + "('" +
                          serverKey(*table).toUtf8() + "', '" + journalled.name.toUtf8() + "', '" +
                          journalled.record.toLower().toUtf8() + "')";
        };
        add('I', "INSERT", "NEW TABLE AS told", rowsFunction);
        add('U', "UPDATE", "OLD TABLE AS before NEW TABLE AS after", changesFunction(*table));
        add('D', "DELETE", "OLD TABLE AS told", rowsFunction);
    }
    return parts;
}

/// In one go: on a server, each statement would be a wait.
void perform(jet::Database& database, const QByteArrayList& statements) {
    QByteArray all = statements.join(";\n") + ';';
    if (database.isServer())
        all = "DO $all$ BEGIN " + all + " END $all$";
    jet::Native(database).execute(all);
}

QByteArrayList drops(jet::Database& database) {
    const jet::Native native(database);
    QByteArrayList statements;
    for (const auto& [journalled, table] : present(database))
        for (const char event : {'I', 'U', 'D'}) {
            const QString name = triggerName(table->name, event);
            statements += "DROP TRIGGER IF EXISTS " +
                          (database.isServer()
                               ? native.quoted(name.toLower()) + " ON " + native.quoted(table->name)
                               : native.quoted(name));
        }
    return statements;
}

/// The journal's table of a file as it should be, with the rows that it has.
QByteArrayList newFileTable(jet::Database& database) {
    if (jet::Native(database)
            .value("SELECT sql FROM sqlite_schema WHERE name = 'Journal'")
            .toText() == QLatin1String(fileTable))
        return {};
    const QByteArray columns = "ID, \"At\", Who, TableName, RowKey, Record, \"Action\", Changes";
    return {"ALTER TABLE Journal RENAME TO JournalBefore",
            fileTable,
            "INSERT INTO Journal (" + columns + ") SELECT " + columns +
                " FROM JournalBefore ORDER BY ID",
            "DROP TABLE JournalBefore",
            "CREATE INDEX \"Journal_Record\" ON Journal (Record)",
            "CREATE INDEX \"Journal_At\" ON Journal (\"At\")"};
}

} // namespace

void installJournal(jet::Database& database) {
    QByteArrayList statements = drops(database);
    if (database.isServer()) {
        const QByteArray schema =
            jet::Native(database).value("SELECT quote_ident(current_schema())").toText().toUtf8();
        statements += "DROP FUNCTION IF EXISTS mirsa_journal_changes()"; // an earlier release's
        const Parts functions = serverFunctions(database);
        for (auto function = functions.cbegin(); function != functions.cend(); ++function)
            statements += functionText(function.key(), schema, function.value());
        statements += serverTriggers(database).values();
    } else {
        statements += newFileTable(database);
        Parts parts = fileParts(database);
        parts.remove(u"Journal"_s);
        statements += parts.values();
    }
    perform(database, statements);
}

void removeJournal(jet::Database& database) {
    perform(database, drops(database));
}

bool isJournalKept(jet::Database& database) {
    jet::Native native(database);
    Parts wanted, found;
    if (!database.isServer()) {
        wanted = fileParts(database);
        for (const jet::Native::Row& row :
             native.rows("SELECT name, sql FROM sqlite_schema WHERE type = 'trigger' OR name = "
                         "'Journal'"))
            found[row[0].toText()] = row[1].toText().toUtf8();
    } else {
        wanted = serverTriggers(database);
        for (QByteArray& any : wanted)
            any.clear();
        wanted.insert(serverFunctions(database));
        for (const jet::Native::Row& row : native.rows(
                 "SELECT tgname::text, '' FROM pg_trigger WHERE NOT tgisinternal AND tgenabled <> "
                 "'D' UNION ALL SELECT proname::text, prosrc FROM pg_proc WHERE proname LIKE "
                 "'mirsa\\_journal\\_%'"))
            found[row[0].toText()] = row[1].toText().toUtf8();
    }
    for (auto part = wanted.cbegin(); part != wanted.cend(); ++part)
        if (!found.contains(part.key()) || found[part.key()] != part.value())
            return false;
    return true;
}

} // namespace core
