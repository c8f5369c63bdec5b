#include "platform/jet/StatementEngines.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>

/// Every statement that the system uses, run on both engines over one small shop: they must return
/// the same rows and leave the same tables.

namespace jet {
namespace {

QString textOfFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(("cannot read " + path).toStdString());
    return QString::fromUtf8(file.readAll());
}

QString testFile(const char* name) {
    return testsupport::sourceFile(u"tests/platform/jet/"_s) + QLatin1String(name);
}

QStringList definitions() {
    QStringList result;
    const QDir sources(testsupport::sourceFile(u"src"_s));
    for (const QString& folder : sources.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString path = sources.filePath(folder + u"/tables.sql"_s);
        if (QFile::exists(path))
            for (const QString& statement : textOfFile(path).split(u';'))
                // An index that went is no statement of the dialect: an upgrade reads its name.
                if (!statement.trimmed().isEmpty() && !statement.contains(u"DROP INDEX"_s))
                    result << statement.trimmed();
    }
    return result;
}

/// The rows of the table a write goes to, without new counters.
Rows tableRows(Engine& engine, const Schema& schema, const QString& name) {
    QStringList columns;
    for (const Column& column : schema.table(name)->columns)
        if (column.type != ColumnType::Counter)
            columns << u'[' + column.name + u']';
    Rows rows = engine.run(u"SELECT %1 FROM [%2]"_s.arg(columns.join(u','), name), schema);
    std::sort(rows.begin(), rows.end());
    return rows;
}

struct Outcome {
    Rows rows, after;
    StatementKind kind = StatementKind::Select;
};

/// The first row that a criterion finds, by the database or, for a select without keys, among the
/// rows that were read. Where both ways are open they must agree.
Rows found(Engine& engine, const Schema& schema, const QString& recordset, const QString& text) {
    const Normalized select = normalize(recordset), criteria = normalize(text);
    const Translation whole = translate(select, schema, engine.dialect());
    const Criteria criterion(criteria);
    Rows tested;
    for (const Row& row : engine.run(whole.sql, whole.parameters, select, whole.columns)) {
        const auto field = [&](const QString& name) {
            for (std::size_t i = 0; i < whole.columns.size(); ++i) {
                if (whole.columns[i].name.compare(name, Qt::CaseInsensitive) != 0)
                    continue;
                const QString& text = row[static_cast<qsizetype>(i)];
                const bool isText = whole.columns[i].type == ColumnType::Text;
                return text == u"Null" ? Value() : isText ? Value(text) : Value(text.toDouble());
            }
            throw Error(errors::itemNotFound, name);
        };
        if (criterion.matches(field))
            tested.push_back(row);
    }
    if (!whole.dynaset)
        return tested;
    const Translation find = translateFind(select, criteria, schema, engine.dialect());
    Normalized both = select;
    both.literals.insert(both.literals.end(), criteria.literals.begin(), criteria.literals.end());
    const Rows keys = engine.run(find.sql, find.parameters, both, find.columns);
    EXPECT_EQ(keys.size(), tested.size()) << text.toStdString();
    return keys;
}

Outcome outcome(Engine& engine, const Schema& schema, const QString& text,
                const QString& recordset) {
    Outcome result;
    engine.plain("BEGIN");
    if (!recordset.isEmpty()) {
        result.rows = found(engine, schema, recordset, text);
    } else {
        const Normalized statement = normalize(text);
        const Translation translation = translate(statement, schema, engine.dialect());
        result.kind = translation.kind;
        result.rows =
            engine.run(translation.sql, translation.parameters, statement, translation.columns);
        if (translation.kind != StatementKind::Select)
            result.after = tableRows(engine, schema, translation.table);
        if (translation.dynaset) {
            const DynasetPlan& plan = *translation.dynaset;
            const auto width = static_cast<qsizetype>(translation.columns.size());
            const Rows keys =
                engine.run(plan.keysSql, translation.parameters, statement,
                           plan.singleTable ? std::vector<ResultColumn>() : translation.columns);
            EXPECT_EQ(keys.size(), result.rows.size()) << text.toStdString();
            if (plan.singleTable && keys.size() == result.rows.size()) {
                for (std::size_t i = 0; i < keys.size(); ++i) {
                    const Rows row = engine.run(plan.rowSql, translation.parameters, statement,
                                                translation.columns, &keys[i][0]);
                    EXPECT_EQ(row.size(), 1U) << plan.rowSql.toStdString();
                    if (row.size() == 1)
                        EXPECT_EQ(shown({row[0].mid(0, width)}),
                                  shown({result.rows[i].mid(0, width)}))
                            << text.toStdString();
                }
            }
        }
        if (translation.kind == StatementKind::Select &&
            !text.contains(u"ORDER BY", Qt::CaseInsensitive))
            std::sort(result.rows.begin(), result.rows.end());
    }
    engine.plain("ROLLBACK");
    return result;
}

TEST(Corpus, EveryStatementRunsAlikeOnBothEngines) {
    Engines shop;
    for (const QString& definition : definitions())
        shop.define(definition);
    for (const QString& row : textOfFile(testFile("corpus_rows.sql")).split(u'\n'))
        if (!row.isEmpty())
            shop.execute(row);
    ASSERT_GT(shop.schema.tables().size(), 50U);
    if (!shop.postgres && qEnvironmentVariableIsSet("CI"))
        FAIL() << "MIRSA_TEST_SERVER is not set";
    int statements = 0, productive = 0;
    for (const QString& line : textOfFile(testFile("statements.txt")).split(u'\n')) {
        if (line.isEmpty())
            continue;
        const QStringList parts = line.split(u'\t');
        ++statements;
        try {
            const Outcome onSqlite = outcome(*shop.sqlite, shop.schema, parts[0], parts.value(1));
            const bool counts = onSqlite.kind != StatementKind::Select;
            if (!onSqlite.rows.empty() && (!counts || onSqlite.rows[0][0] != u"0"))
                ++productive;
            else if (qEnvironmentVariableIsSet("CORPUS_VERBOSE"))
                std::cerr << "no row: " << line.toStdString() << '\n';
            if (!shop.postgres)
                continue;
            const Outcome onPostgres =
                outcome(*shop.postgres, shop.schema, parts[0], parts.value(1));
            EXPECT_EQ(shown(onSqlite.rows), shown(onPostgres.rows)) << line.toStdString();
            EXPECT_EQ(shown(onSqlite.after), shown(onPostgres.after)) << line.toStdString();
        } catch (const Error& error) {
            ADD_FAILURE() << error.number() << ' ' << error.what() << "\n" << line.toStdString();
            for (Engine* engine : shop.all())
                try {
                    engine->plain("ROLLBACK");
                } catch (const std::exception&) {
                }
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what() << "\n" << line.toStdString();
            for (Engine* engine : shop.all())
                try {
                    engine->plain("ROLLBACK");
                } catch (const std::exception&) {
                }
        }
    }
    EXPECT_GT(statements, 700);
    // Most must find or change rows of the small shop, or they prove little.
    EXPECT_GT(productive, statements * 3 / 4);
    RecordProperty("productive", productive);
    if (!shop.postgres)
        GTEST_SKIP() << "no server: only SQLite was tried";
}

/// What the program sees of a statement: the rows of a recordset as texts, the place that findFirst
/// goes to, the number of rows that a write touched.
QString seen(Database& database, const QString& text, const QString& recordset) {
    const auto textOf = [](Recordset& rows) {
        const qsizetype width = rows.fieldNames().size();
        QStringList lines;
        for (; !rows.eof(); rows.moveNext()) {
            QStringList cells;
            for (int i = 0; i < width; ++i)
                cells << rows.field(i).toText();
            lines << cells.join(u'|');
        }
        return lines;
    };
    if (!recordset.isEmpty()) {
        Recordset rows = database.openRecordset(recordset);
        rows.findFirst(text);
        return rows.noMatch() ? u"no match"_s : QString::number(rows.absolutePosition());
    }
    const Translation translation =
        translate(normalize(text), database.schema(), Dialect::sqlite());
    if (translation.kind != StatementKind::Select) {
        Transaction undone(database);
        return QString::number(database.execute(text));
    }
    Recordset rows = database.openRecordset(text);
    Recordset snapshot = database.openRecordset(text, RecordsetType::Snapshot);
    QStringList lines = textOf(rows), read = textOf(snapshot);
    if (!text.contains(u"ORDER BY"_s, Qt::CaseInsensitive)) {
        lines.sort();
        read.sort();
    }
    EXPECT_EQ(lines, read) << text.toStdString();
    return lines.join(u'\n');
}

TEST(Corpus, TheProgramSeesTheSameOnAFileAndOnAServer) {
    using namespace testsupport;
    MIRSA_NEEDS_ENGINE(EngineKind::Server);
    TestDatabase file(EngineKind::File), server(EngineKind::Server);
    for (TestDatabase* each : {&file, &server}) {
        for (const QString& definition : definitions())
            each->database().execute(definition);
        Transaction transaction(each->database());
        for (const QString& row : textOfFile(testFile("corpus_rows.sql")).split(u'\n'))
            if (!row.isEmpty())
                each->database().execute(row);
        transaction.commit();
    }
    for (const QString& line : textOfFile(testFile("statements.txt")).split(u'\n')) {
        if (line.isEmpty())
            continue;
        const QStringList parts = line.split(u'\t');
        try {
            EXPECT_EQ(seen(file.database(), parts[0], parts.value(1)),
                      seen(server.database(), parts[0], parts.value(1)))
                << line.toStdString();
        } catch (const Error& error) {
            ADD_FAILURE() << error.number() << ' ' << error.what() << "\n" << line.toStdString();
        }
    }
}

} // namespace
} // namespace jet
