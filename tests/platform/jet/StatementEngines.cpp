#include "platform/jet/StatementEngines.h"

#include "platform/jet/engines/SqliteLetters.h"

#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCoreApplication>

#include <libpq-fe.h>
#include <sqlite3.h>

#include <stdexcept>

namespace jet {

namespace {

/// A literal as the text that an engine takes.
std::optional<QString> boundText(const Parameter& parameter, const Normalized& statement) {
    if (parameter.literal < 0)
        return u"2026-03-02 08:15:00"_s;
    const Value& value = statement.literals[static_cast<std::size_t>(parameter.literal)];
    const auto iso = [](const QDateTime& moment) {
        return moment.toString(u"yyyy-MM-dd HH:mm:ss"_s);
    };
    switch (parameter.conversion) {
    case Conversion::ToDate: {
        const auto moment =
            value.kind() == Value::Kind::Text ? momentFromText(value.toText()) : value.toDateTime();
        if (!moment)
            throw Error(errors::typeMismatch, u"not a date"_s);
        return iso(*moment);
    }
    case Conversion::ToYesNo:
        return value.toBool() ? u"1"_s : u"0"_s;
    case Conversion::ToWhole:
        return QString::number(value.toLong());
    case Conversion::ToMoney:
        return value.toCurrency().toText();
    case Conversion::ToReal:
        return values::numberText(value.toDouble());
    case Conversion::ToPattern: {
        QString pattern;
        for (const QChar c : value.toText()) {
            if (c == u'%' || c == u'_' || c == u'\\')
                pattern += u'\\';
            pattern += c == u'*' ? u'%' : c == u'?' ? u'_' : c;
        }
        return pattern;
    }
    case Conversion::ToLowered:
        return values::lowered(value.toText());
    case Conversion::ToFolded:
        return values::folded(value.toText());
    case Conversion::ToSpellings:
        return u"[\""_s + values::spellings(value.toText()).join(u"\",\""_s) + u"\"]"_s;
    case Conversion::AsIs:
    case Conversion::ToText:
        break;
    }
    if (value.kind() == Value::Kind::Date)
        return iso(*value.toDateTime());
    return value.toText();
}

bool isTextParameter(const Parameter& parameter, const Normalized& statement) {
    if (parameter.literal < 0 || parameter.conversion == Conversion::ToText ||
        parameter.conversion >= Conversion::ToSpellings ||
        parameter.conversion == Conversion::ToDate)
        return true;
    const auto kind = statement.literals[static_cast<std::size_t>(parameter.literal)].kind();
    return parameter.conversion == Conversion::AsIs &&
           (kind == Value::Kind::Text || kind == Value::Kind::Date);
}

/// A cell in one form for both engines.
QString cell(const char* text, const ResultColumn* column) {
    if (text == nullptr)
        return u"Null"_s;
    const QString value = QString::fromUtf8(text);
    const bool isText = column == nullptr || column->type == ColumnType::Text ||
                        column->type == ColumnType::Memo || column->type == ColumnType::DateTime;
    bool number = false;
    const double read = isText ? 0 : value.toDouble(&number);
    return number ? QString::number(read, 'g', 12) : value;
}

class SqliteEngine : public Engine {
  public:
    SqliteEngine() : Engine(Dialect::sqlite()) {
        sqlite3_open(":memory:", &m_database);
        addLetters(m_database);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    }
    ~SqliteEngine() override { sqlite3_close(m_database); }

    void plain(const QByteArray& sql) override {
        if (sqlite3_exec(m_database, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database) + (" in " + sql).toStdString());
    }
    using Engine::run;
    Rows run(const QByteArray& sql, const std::vector<Parameter>& parameters,
             const Normalized& statement, const std::vector<ResultColumn>& columns,
             const QString* key) override {
        sqlite3_stmt* prepared = nullptr;
        if (sqlite3_prepare_v2(m_database, sql.constData(), -1, &prepared, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(m_database) + (" in " + sql).toStdString());
        const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owner(prepared,
                                                                          sqlite3_finalize);
        int place = 1;
        for (const Parameter& parameter : parameters) {
            const auto text = boundText(parameter, statement);
            if (isTextParameter(parameter, statement))
                sqlite3_bind_text16(prepared, place, text->utf16(), -1, SQLITE_TRANSIENT);
            else if (text->contains(u'.'))
                sqlite3_bind_double(prepared, place, text->toDouble());
            else
                sqlite3_bind_int64(prepared, place, text->toLongLong());
            ++place;
        }
        if (key != nullptr)
            sqlite3_bind_text16(prepared, place, key->utf16(), -1, SQLITE_TRANSIENT);
        Rows rows;
        const int width = sqlite3_column_count(prepared);
        int result = SQLITE_ROW;
        while ((result = sqlite3_step(prepared)) == SQLITE_ROW) {
            Row row;
            for (int i = 0; i < width; ++i)
                row << cell(reinterpret_cast<const char*>(sqlite3_column_text(prepared, i)),
                            static_cast<std::size_t>(i) < columns.size()
                                ? &columns[static_cast<std::size_t>(i)]
                                : nullptr);
            rows.push_back(row);
        }
        if (result != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(m_database) + (" in " + sql).toStdString());
        if (width == 0)
            rows = {{QString::number(sqlite3_changes(m_database))}};
        return rows;
    }

  private:
    sqlite3* m_database = nullptr;
};

class PostgresEngine : public Engine {
  public:
    explicit PostgresEngine(const QByteArray& uri) : Engine(Dialect::postgres()) {
        m_connection = PQconnectdb(uri.constData());
        if (PQstatus(m_connection) != CONNECTION_OK)
            throw std::runtime_error(PQerrorMessage(m_connection));
        PQsetNoticeProcessor(
            m_connection, [](void*, const char*) {}, nullptr);
        m_schema = "corpus_" + QByteArray::number(QCoreApplication::applicationPid());
        plain("CREATE EXTENSION IF NOT EXISTS citext");
        plain("DROP SCHEMA IF EXISTS " + m_schema + " CASCADE");
        plain("CREATE SCHEMA " + m_schema);
        plain("SET search_path TO " + m_schema + ", public");
        for (const QByteArray& sql : serverPrelude())
            plain(sql);
    }
    ~PostgresEngine() override {
        PQclear(PQexec(m_connection, ("DROP SCHEMA " + m_schema + " CASCADE").constData()));
        PQfinish(m_connection);
    }

    void plain(const QByteArray& sql) override {
        finish(PQexec(m_connection, sql.constData()), sql);
    }
    using Engine::run;
    Rows run(const QByteArray& sql, const std::vector<Parameter>& parameters,
             const Normalized& statement, const std::vector<ResultColumn>& columns,
             const QString* key) override {
        QByteArrayList texts;
        for (const Parameter& parameter : parameters)
            texts << boundText(parameter, statement)->toUtf8();
        if (key != nullptr)
            texts << key->toUtf8();
        std::vector<const char*> pointers;
        for (const QByteArray& text : texts)
            pointers.push_back(text.constData());
        // Prepared, as the statements are in the program.
        finish(PQprepare(m_connection, "", sql.constData(), 0, nullptr), sql);
        PGresult* result = PQexecPrepared(m_connection, "", static_cast<int>(pointers.size()),
                                          pointers.data(), nullptr, nullptr, 0);
        Rows rows;
        if (PQresultStatus(result) == PGRES_TUPLES_OK) {
            for (int r = 0; r < PQntuples(result); ++r) {
                Row row;
                for (int c = 0; c < PQnfields(result); ++c)
                    row << cell(PQgetisnull(result, r, c) ? nullptr : PQgetvalue(result, r, c),
                                static_cast<std::size_t>(c) < columns.size()
                                    ? &columns[static_cast<std::size_t>(c)]
                                    : nullptr);
                rows.push_back(row);
            }
        } else if (PQresultStatus(result) == PGRES_COMMAND_OK) {
            rows = {{QString::fromLatin1(PQcmdTuples(result))}};
        }
        finish(result, sql);
        return rows;
    }

  private:
    void finish(PGresult* result, const QByteArray& sql) {
        const ExecStatusType status = PQresultStatus(result);
        PQclear(result);
        if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
            throw std::runtime_error(PQerrorMessage(m_connection) + ("in " + sql).toStdString());
    }

    PGconn* m_connection = nullptr;
    QByteArray m_schema;
};

} // namespace

std::unique_ptr<Engine> sqliteEngine() {
    return std::make_unique<SqliteEngine>();
}

std::unique_ptr<Engine> postgresEngine() {
    const QByteArray uri = qgetenv("MIRSA_TEST_SERVER");
    return uri.isEmpty() ? nullptr : std::make_unique<PostgresEngine>(uri);
}

std::vector<Engine*> Engines::all() const {
    std::vector<Engine*> result = {sqlite.get()};
    if (postgres)
        result.push_back(postgres.get());
    return result;
}

void Engines::define(const QString& statement) {
    if (statement.startsWith(u"CREATE TABLE"_s, Qt::CaseInsensitive))
        schema.add(tableFromDefinition(statement));
    for (Engine* engine : all())
        engine->define(statement, schema);
}

void Engines::execute(const QString& statement) {
    for (Engine* engine : all())
        engine->run(statement, schema);
}

std::string shown(const Rows& rows) {
    QString text;
    for (const Row& row : rows)
        text += row.join(u'|') + u'\n';
    return text.toStdString();
}

} // namespace jet
