#include "setup/Setup.h"

#include "core/journal/JournalTriggers.h"
#include "core/papers/PaperTriggers.h"
#include "platform/jet/Native.h"
#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "setup/SqlText.h"

namespace setup {

namespace {

QStringList statementsOf(const std::vector<const char8_t*>& texts) {
    QStringList statements;
    for (const char8_t* text : texts)
        statements += setup::statementsOf(QString::fromUtf8(text));
    return statements;
}

bool isTable(const QString& statement) {
    return statement.startsWith(u"CREATE TABLE", Qt::CaseInsensitive);
}

bool isDrop(const QString& statement) {
    return statement.startsWith(u"DROP INDEX", Qt::CaseInsensitive);
}

/// "CREATE INDEX name ON ..." and "DROP INDEX name" give name.
QString indexName(const QString& statement) {
    const QString words = statement.simplified();
    return words.section(u" ON "_s, 0, 0, QString::SectionCaseInsensitiveSeps).section(u' ', -1);
}

bool hasIndex(const jet::Schema& schema, const QString& name) {
    for (const jet::Table& table : schema.tables()) {
        for (const jet::Index& index : table.indexes) {
            if (index.name.compare(name, Qt::CaseInsensitive) == 0)
                return true;
        }
    }
    return false;
}

/// Makes the indexes by which a server finds pieces of text, those that are missing; their names.
/// One that hasn't got the extension for them, and doesn't let us add it, does without.
QStringList addServerIndexes(jet::Database& database) {
    if (!database.isServer())
        return {};
    jet::Native native(database);
    native.execute("DO $$ BEGIN CREATE EXTENSION IF NOT EXISTS pg_trgm; "
                   "EXCEPTION WHEN OTHERS THEN NULL; END $$");
    if (native
            .value("SELECT 1 FROM pg_opclass WHERE opcname = 'gin_trgm_ops' AND "
                   "pg_opclass_is_visible(oid)")
            .isNull())
        return {};
    QStringList added;
    for (const QString& statement : statementsOf(serverTexts())) {
        const QString name = indexName(statement);
        if (!native.value("SELECT to_regclass('" + name.toUtf8() + "')::text").isNull())
            continue;
        native.execute(statement.toUtf8());
        added += name;
    }
    return added;
}

/// The column's own words in a CREATE TABLE, as ALTER TABLE takes them.
QString columnDefinition(const QString& createTable, const QString& column) {
    const auto open = createTable.indexOf(u'(');
    const auto close = createTable.lastIndexOf(u')');
    int depth = 0;
    QString piece;
    QStringList pieces;
    for (auto i = open + 1; i < close; ++i) {
        const QChar c = createTable[i];
        depth += c == u'(' ? 1 : c == u')' ? -1 : 0;
        if (c == u',' && depth == 0) {
            pieces += piece.trimmed();
            piece.clear();
        } else {
            piece += c;
        }
    }
    pieces += piece.trimmed();
    for (const QString& definition : pieces) {
        QString name = definition.section(u' ', 0, 0);
        name.remove(u'[').remove(u']');
        if (name.compare(column, Qt::CaseInsensitive) == 0)
            return definition;
    }
    return {};
}

/// The text between the n-th pair of quotes of an INSERT's values.
QString quotedValue(const QString& statement, int n) {
    const auto values = statement.indexOf(u"VALUES", 0, Qt::CaseInsensitive);
    return statement.mid(values).section(u'\'', 2 * n + 1, 2 * n + 1);
}

/// Delivered rows that a later program needs and an older database may lack.
bool addIfMissing(jet::Database& database, const QString& statement, QString& what) {
    QString probe;
    if (statement.startsWith(u"INSERT INTO SecurityObjects", Qt::CaseInsensitive)) {
        what = quotedValue(statement, 1);
        probe = u"SELECT objectid FROM SecurityObjects WHERE securitycode='"_s +
                values::quoted(what) + u'\'';
    } else if (statement.startsWith(u"INSERT INTO Reports", Qt::CaseInsensitive)) {
        what = quotedValue(statement, 3);
        probe = u"SELECT Name FROM Reports WHERE FileName='"_s + values::quoted(what) + u'\'';
    } else {
        return false;
    }
    if (database.hasRows(probe))
        return false;
    if (statement.startsWith(u"INSERT INTO SecurityObjects", Qt::CaseInsensitive)) {
        // Above every number that was granted too: a grant of an object that is gone must not come
        // to mean the new one.
        qint64 next = 1;
        for (const auto* table : {u"SecurityObjects", u"SecurityUsers", u"SecurityGroups"})
            next = std::max(
                next, database.lookup(u"SELECT MAX(objectid) FROM "_s + QString::fromUtf16(table))
                              .toLong() +
                          1);
        database.execute(u"INSERT INTO SecurityObjects (objectid, objectname, securitycode, "
                         "displayorder) VALUES (%1, '%2', '%3', %4)"_s.arg(next)
                             .arg(values::quoted(quotedValue(statement, 0)), values::quoted(what))
                             .arg(next * 10));
    } else {
        database.execute(statement);
    }
    return true;
}

} // namespace

QStringList statementsOf(const QString& text) {
    QStringList statements;
    QString statement;
    QChar quote;
    for (const QChar c : text) {
        if (quote.isNull() && c == u';') {
            if (!statement.trimmed().isEmpty())
                statements += statement.trimmed();
            statement.clear();
            continue;
        }
        if (c == u'\'' || c == u'"')
            quote = quote.isNull() ? c : quote == c ? QChar() : quote;
        statement += c;
    }
    if (!statement.trimmed().isEmpty())
        statements += statement.trimmed();
    return statements;
}

QStringList definitions() {
    QStringList statements = statementsOf(tableTexts());
    statements.removeIf(isDrop);
    return statements;
}

QStringList replacedIndexes() {
    QStringList names;
    for (const QString& statement : statementsOf(tableTexts()))
        if (isDrop(statement))
            names += indexName(statement);
    return names;
}

qint64 lastGiven(jet::Database& database, const QString& table, const QString& counter) {
    jet::Native native(database);
    if (!database.isServer()) {
        const QByteArray named =
            " WHERE name = '" + values::quoted(table).toUtf8() + "' COLLATE NOCASE";
        // The journal's numbers are counted by its rows alone.
        const bool counted =
            !native.value("SELECT 1 FROM sqlite_schema" + named + " AND sql LIKE '%AUTOINCREMENT%'")
                 .isNull();
        return native
            .value(counted
                       ? "SELECT seq FROM sqlite_sequence" + named
                       : "SELECT MAX(" + native.quoted(counter) + ") FROM " + native.quoted(table))
            .toInteger();
    }
    const QString sequence = native
                                 .value("SELECT pg_get_serial_sequence('" + native.quoted(table) +
                                        "', '" + counter.toLower().toUtf8() + "')")
                                 .toText();
    return native
        .value("SELECT CASE WHEN is_called THEN last_value ELSE 0 END FROM " + sequence.toUtf8())
        .toInteger();
}

void setLastGiven(jet::Database& database, const QString& table, const QString& counter,
                  qint64 number) {
    jet::Native native(database);
    if (number < 1)
        return;
    const QByteArray text = QByteArray::number(number);
    if (database.isServer()) {
        native.rows("SELECT setval(pg_get_serial_sequence('" + native.quoted(table) + "', '" +
                    counter.toLower().toUtf8() + "'), " + text + ')');
        return;
    }
    const QByteArray name = values::quoted(table).toUtf8();
    native.execute("UPDATE sqlite_sequence SET seq = " + text + " WHERE name = '" + name +
                   "' COLLATE NOCASE");
    native.execute("INSERT INTO sqlite_sequence (name, seq) SELECT '" + name + "', " + text +
                   " WHERE NOT EXISTS (SELECT 1 FROM sqlite_sequence WHERE name = '" + name +
                   "' COLLATE NOCASE)");
}

QStringList deliveredRows(const QString& table) {
    QStringList statements = statementsOf(deliveredTexts());
    statements.removeIf([&](const QString& statement) {
        return statement.section(u' ', 2, 2).compare(table, Qt::CaseInsensitive) != 0;
    });
    return statements;
}

void createTables(jet::Database& database) {
    jet::Transaction transaction(database);
    for (const QString& statement : definitions())
        database.execute(statement);
    addServerIndexes(database);
    transaction.commit();
}

void install(jet::Database& database) {
    jet::Transaction transaction(database);
    createTables(database);
    for (const QString& statement : statementsOf(deliveredTexts()))
        database.execute(statement);
    core::installJournal(database);
    core::installPaperTriggers(database);
    transaction.commit();
}

namespace {

QStringList missingColumns(const jet::Table& table, const jet::Table& wanted) {
    QStringList missing;
    for (const jet::Column& column : wanted.columns) {
        if (!table.column(column.name))
            missing += column.name;
    }
    return missing;
}

} // namespace

QStringList lacking(const jet::Schema& schema, bool& foreign) {
    QStringList lines;
    foreign = true;
    for (const QString& statement : definitions()) {
        if (!isTable(statement))
            continue;
        const jet::Table wanted = jet::tableFromDefinition(statement);
        const jet::Table* table = schema.table(wanted.name);
        if (!table) {
            lines += u"table "_s + wanted.name;
            continue;
        }
        foreign = false;
        for (const QString& column : missingColumns(*table, wanted))
            lines += u"column "_s + wanted.name + u'.' + column;
    }
    return lines;
}

QStringList upgrade(jet::Database& database) {
    QStringList added;
    jet::Transaction transaction(database);
    for (const QString& statement : definitions()) {
        if (!isTable(statement)) {
            if (const QString name = indexName(statement); !hasIndex(database.schema(), name)) {
                database.execute(statement);
                added += u"added index "_s + name;
            }
            continue;
        }
        const jet::Table wanted = jet::tableFromDefinition(statement);
        const jet::Table* table = database.schema().table(wanted.name);
        if (!table) {
            database.execute(statement);
            added += u"added table "_s + wanted.name;
            continue;
        }
        for (const QString& column : missingColumns(*table, wanted)) {
            database.execute(u"ALTER TABLE [%1] ADD COLUMN %2"_s.arg(
                wanted.name, columnDefinition(statement, column)));
            added += u"added column "_s + wanted.name + u'.' + column;
        }
    }
    for (const QString& name : addServerIndexes(database))
        added += u"added index "_s + name;
    for (const QString& name : replacedIndexes()) {
        if (!hasIndex(database.schema(), name))
            continue;
        jet::Native native(database);
        native.execute("DROP INDEX " + native.quoted(name));
        added += u"dropped index "_s + name;
    }
    for (const QString& statement : statementsOf(deliveredTexts())) {
        QString what;
        if (addIfMissing(database, statement, what))
            added += u"added row "_s + what;
    }
    if (!core::isJournalKept(database)) {
        core::installJournal(database);
        added += u"added what keeps the journal of changes"_s;
    }
    if (!core::hasPaperTriggers(database)) {
        core::installPaperTriggers(database);
        added += u"added what lets papers go with their records"_s;
    }
    transaction.commit();
    return added;
}

} // namespace setup
