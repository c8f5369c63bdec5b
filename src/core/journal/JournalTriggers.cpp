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

/// A value as JSON. json_quote() would cut a number's last bits, and refuses what isn't text.
QByteArray json(const QByteArray& value) {
    return "CASE typeof(" + value + ") WHEN 'real' THEN quote(" + value +
           ") WHEN 'blob' THEN json_quote(hex(" + value + ")) ELSE json_quote(" + value + ") END";
}

/// The row, old or new, without its Nulls: {"JobNo":1,"PartNo":"AX-10"}.
QByteArray wholeRow(const jet::Native& native, const jet::Table& table, const QByteArray& side) {
    QByteArray sql;
    for (const jet::Column& column : table.columns) {
        const QByteArray name = native.quoted(column.name), value = side + '.' + name;
        sql += (sql.isEmpty() ? "" : "||") + ("CASE WHEN " + value) + " IS NULL THEN '' ELSE '," +
               name + ":'||" + json(value) + " END";
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
               ":['||" + json("OLD." + name) + "||','||" + json("NEW." + name) +
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

QString triggerName(const QString& table, char event) {
    return u"Journal_"_s + table + u'_' + QLatin1Char(event);
}

/// Only what every SQLite of today has: whatever program writes, its write passes here.
Parts fileParts(jet::Database& database) {
    const jet::Native native(database);
    Parts parts;
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
                "Changes) VALUES (strftime('%Y-%m-%d %H:%M:%S','now','localtime'), "
                "(SELECT substr(Who,1,60) FROM Writer), '" +
                journalled.name.toUtf8() + "', substr(" + side + '.' + key + ",1,40), " + record +
                ", '" + event + "', " + contents + "); END";
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
constexpr char changesFunction[] = "mirsa_journal_changes";

/// What both functions insert, once for all rows of a statement. They run with their owner's
/// rights: who writes a table may have none on the journal.
QByteArray functionText(const QByteArray& name, const QByteArray& schema, const QByteArray& body) {
    return "CREATE OR REPLACE FUNCTION " + name +
           "() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = " + schema +
           ", pg_temp AS $body$" + body + "$body$";
}

QByteArray body(const QByteArray& changes, const QByteArray& from) {
    return "BEGIN INSERT INTO journal (at, who, tablename, rowkey, record, action, changes) SELECT "
           "localtimestamp, left(coalesce(nullif(current_setting('mirsa.who', true), ''), "
           "session_user), 60), TG_ARGV[1], left(r.j->>TG_ARGV[0], 40), "
           "(r.j->>nullif(TG_ARGV[2], ''))::integer, left(TG_OP, 1), " +
           changes + " FROM " + from + "; RETURN NULL; END";
}

QByteArray rowsBody() {
    return body("(jsonb_strip_nulls(r.j) - '" + QString::fromUtf16(jet::hiddenIdentity).toUtf8() +
                    "')::text",
                "(SELECT to_jsonb(c) AS j FROM told c) r");
}

/// A row's two states stand at the same place of both tables, also where its key has changed.
/// Values are compared as JSON, since citext would pass over a change of case.
QByteArray changesBody() {
    const auto numbered = [](const QByteArray& table) {
        return "(SELECT row_number() OVER () AS i, to_jsonb(c) AS j FROM " + table + " c) ";
    };
    return body("d.t", numbered("before") + "r JOIN " + numbered("after") +
                           "a USING (i) CROSS JOIN LATERAL (SELECT jsonb_object_agg(n.key, "
                           "jsonb_build_array(r.j->n.key, n.value))::text AS t FROM "
                           "jsonb_each(a.j) n WHERE r.j->n.key IS DISTINCT FROM n.value) d WHERE "
                           "d.t IS NOT NULL");
}

Parts serverParts(jet::Database& database) {
    const jet::Native native(database);
    Parts parts;
    for (const auto& [journalled, table] : present(database)) {
        const QString key =
            table->key() ? table->key()->name.toLower() : QString::fromUtf16(jet::hiddenIdentity);
        const auto add = [&, &journalled = journalled,
                          &table = table](char event, const QByteArray& when,
                                          const QByteArray& tables, const char* function) {
            const QString name = triggerName(table->name, event).toLower();
            parts[name] = "CREATE TRIGGER " + native.quoted(name) + " AFTER " + when + " ON " +
                          native.quoted(table->name) + " REFERENCING " + tables +
                          " FOR EACH STATEMENT EXECUTE FUNCTION " + function + "('" + key.toUtf8() +
                          "', '" + journalled.name.toUtf8() + "', '" +
                          journalled.record.toLower().toUtf8() + "')";
        };
        add('I', "INSERT", "NEW TABLE AS told", rowsFunction);
        add('U', "UPDATE", "OLD TABLE AS before NEW TABLE AS after", changesFunction);
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

} // namespace

void installJournal(jet::Database& database) {
    QByteArrayList statements = drops(database);
    if (database.isServer()) {
        const QByteArray schema =
            jet::Native(database).value("SELECT quote_ident(current_schema())").toText().toUtf8();
        statements += functionText(rowsFunction, schema, rowsBody());
        statements += functionText(changesFunction, schema, changesBody());
    }
    const Parts parts = database.isServer() ? serverParts(database) : fileParts(database);
    perform(database, statements + parts.values());
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
             native.rows("SELECT name, sql FROM sqlite_schema WHERE type = 'trigger'"))
            found[row[0].toText()] = row[1].toText().toUtf8();
    } else {
        wanted = serverParts(database);
        for (QByteArray& any : wanted)
            any.clear();
        wanted[QString::fromLatin1(rowsFunction)] = rowsBody();
        wanted[QString::fromLatin1(changesFunction)] = changesBody();
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
