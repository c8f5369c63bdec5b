#include "platform/jet/engines/Postgres.h"

#include "platform/jet/Error.h"
#include "platform/jet/Location.h"
#include "platform/values/Literals.h"

#include <charconv>

namespace jet {

namespace {

/// The one lock by which transactions of all stations wait for each other: a transaction holds it
/// alone, a single write shares it. So what a transaction has read stands until it commits, as it
/// does where a file's only writer is meant.
constexpr char lockAlone[] = "SELECT pg_advisory_xact_lock(774411)";
constexpr char lockShared[] = "SELECT pg_advisory_xact_lock_shared(774411)";

constexpr const char* sessionSettings =
    "SET client_min_messages = error; SET DateStyle = 'ISO, MDY'; SET lock_timeout = '20s'; "
    "SET standard_conforming_strings = on; SET extra_float_digits = 1; "
    "SET default_transaction_isolation = 'read committed'; SET bytea_output = 'hex'";

constexpr std::pair<const char*, const char*> namedStatements[] = {
    {"mirsa_guard", "SAVEPOINT mirsa_guard"},
    {"mirsa_pass", "RELEASE mirsa_guard"},
    {"mirsa_undo", "ROLLBACK TO mirsa_guard"},
    {"mirsa_share", lockShared},
};

constexpr std::chrono::seconds rowsAreFreshFor(1);

void ignoreNotice(void*, const PGresult*) {}

std::optional<ColumnType> typeOfOid(Oid oid) {
    switch (oid) {
    case 16: // boolean
        return ColumnType::YesNo;
    case 20: // bigint
    case 21: // smallint
    case 23: // integer
    case 26: // oid
        return ColumnType::Long;
    case 700:  // real
    case 701:  // double precision
    case 1700: // numeric
        return ColumnType::Double;
    case 1082: // date
    case 1114: // timestamp
    case 1184: // timestamp with time zone
        return ColumnType::DateTime;
    default:
        return std::nullopt;
    }
}

void takeCell(const PGresult* result, int row, int column, std::optional<ColumnType> type,
              Rows& rows) {
    if (PQgetisnull(result, row, column) != 0) {
        rows.addNull();
        return;
    }
    const char* text = PQgetvalue(result, row, column);
    const int size = PQgetlength(result, row, column);
    const char* end = text + size;
    if (type == ColumnType::Long) {
        qint64 value = 0;
        if (std::from_chars(text, end, value).ptr == end) {
            rows.addInteger(value);
            return;
        }
    } else if (type == ColumnType::Double) {
        bool isNumber = false;
        const double value = QByteArrayView(text, size).toDouble(&isNumber);
        if (isNumber) {
            rows.addReal(value);
            return;
        }
    } else if (type == ColumnType::YesNo) {
        rows.addInteger(*text == 't' ? 1 : 0);
        return;
    }
    rows.addText(text, size);
}

} // namespace

struct Postgres::Statement : Prepared {
    ~Statement() override {
        if (session >= 0)
            if (const auto list = toClose.lock())
                list->push_back(name);
    }
    QByteArray name;
    QByteArray sql;
    Access access = Access::Reads;
    int session = -1; ///< the connection that knows it
    std::weak_ptr<std::vector<QByteArray>> toClose;
};

/// What came back from one exchange.
struct Postgres::Result {
    ~Result() {
        PQclear(rows);
        PQclear(error);
    }
    Result() = default;
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;
    void clear() {
        PQclear(std::exchange(rows, nullptr));
        PQclear(std::exchange(error, nullptr));
    }
    QByteArray state() const {
        return error != nullptr ? QByteArray(PQresultErrorField(error, PG_DIAG_SQLSTATE))
                                : QByteArray();
    }

    int wanted = 0;            ///< which of the statements sent together is meant
    PGresult* rows = nullptr;  ///< its result
    PGresult* error = nullptr; ///< the first failure
};

Postgres::Postgres(const QString& uri)
    : m_uri(uri), m_toClose(std::make_shared<std::vector<QByteArray>>()) {
    try {
        connect();
    } catch (...) {
        PQfinish(m_connection);
        throw;
    }
}

Postgres::~Postgres() {
    PQfinish(m_connection);
}

void Postgres::connect() {
    if (m_connection == nullptr)
        m_connection = PQconnectdb(m_uri.toUtf8().constData());
    else
        PQreset(m_connection);
    if (PQstatus(m_connection) != CONNECTION_OK)
        throw Error(errors::connectionFailed,
                    u"Connection to the database server failed: %1"_s.arg(withoutPassword(
                        QString::fromUtf8(PQerrorMessage(m_connection)).trimmed(), m_uri)));
    ++m_session;
    m_toClose->clear();
    PQsetNoticeReceiver(m_connection, ignoreNotice, nullptr);
    PQsetClientEncoding(m_connection, "UTF8");
    PQclear(PQexec(m_connection, sessionSettings));
    for (const auto& [name, sql] : namedStatements)
        PQclear(PQprepare(m_connection, name, sql, 0, nullptr));
    PQenterPipelineMode(m_connection);
}

void Postgres::lost() {
    throw Error(errors::connectionFailed, u"The connection to the database server was lost."_s);
}

/// A connection that was lost between two changes is made again; one that was lost within a
/// transaction fails until that is rolled back.
void Postgres::ensureConnected() {
    if (PQstatus(m_connection) == CONNECTION_OK)
        return;
    if (m_inTransaction)
        lost();
    connect();
}

void Postgres::sendPlain(const char* sql) {
    if (PQsendQueryParams(m_connection, sql, 0, nullptr, nullptr, nullptr, nullptr, 0) == 0)
        lost();
}

void Postgres::sendNamed(const char* name) {
    if (PQsendQueryPrepared(m_connection, name, 0, nullptr, nullptr, nullptr, 0) == 0)
        lost();
}

int Postgres::sendWaitingCloses() {
    const auto names = std::exchange(*m_toClose, {});
    for (const QByteArray& name : names)
        sendPlain("DEALLOCATE " + name);
    return static_cast<int>(names.size());
}

/// Ends what was sent and reads all its results.
void Postgres::finish(Result& result) {
    if (PQpipelineSync(m_connection) == 0)
        lost();
    int command = 0;
    while (true) {
        PGresult* next = PQgetResult(m_connection);
        if (next == nullptr) {
            if (PQstatus(m_connection) != CONNECTION_OK)
                break;
            ++command;
            continue;
        }
        switch (PQresultStatus(next)) {
        case PGRES_PIPELINE_SYNC:
            PQclear(next);
            return;
        case PGRES_TUPLES_OK:
        case PGRES_COMMAND_OK:
            if (command == result.wanted)
                PQclear(std::exchange(result.rows, next));
            else
                PQclear(next);
            break;
        case PGRES_PIPELINE_ABORTED:
            PQclear(next);
            break;
        default:
            if (result.error == nullptr)
                result.error = next;
            else
                PQclear(next);
        }
    }
    if (result.error == nullptr || result.state().isEmpty())
        lost();
}

/// Sends statements in one go, which must all succeed.
void Postgres::exchange(const std::vector<QByteArray>& statements) {
    Result result;
    for (const QByteArray& sql : statements)
        sendPlain(sql.constData());
    finish(result);
    if (result.error != nullptr)
        fail(result);
}

std::unique_ptr<Prepared> Postgres::prepare(const QByteArray& sql, Access access) {
    auto statement = std::make_unique<Statement>();
    statement->name = "s" + QByteArray::number(++m_names);
    statement->sql = sql;
    statement->access = access;
    statement->toClose = m_toClose;
    return statement; // prepared on the server together with its first run
}

std::unique_ptr<Prepared> Postgres::prepareFirst(const QByteArray& sql, int limit) {
    return prepare("SELECT * FROM (" + sql + ") AS q LIMIT " + QByteArray::number(limit + 1),
                   Access::Reads);
}

/// One round trip: the guard of the open transaction, the statement, and the end of the guard.
/// False if it failed; an open transaction then stands as before.
bool Postgres::sendAndFinish(Statement& statement, const Arguments& arguments, Result& result) {
    const int count = arguments.count();
    QVarLengthArray<const char*, 32> values(count);
    QVarLengthArray<std::array<char, 32>, 32> numbers(count);
    for (int i = 0; i < count; ++i) {
        const Arguments::Argument& argument = arguments.at(i);
        auto& number = numbers[i];
        switch (argument.kind) {
        case Arguments::Kind::Null:
            values[i] = nullptr;
            break;
        case Arguments::Kind::Integer:
            *std::to_chars(number.data(), number.data() + number.size(), argument.integer).ptr = 0;
            values[i] = number.data();
            break;
        case Arguments::Kind::Real:
            *std::to_chars(number.data(), number.data() + number.size(), argument.real).ptr = 0;
            values[i] = number.data();
            break;
        case Arguments::Kind::Text:
            values[i] = arguments.text(argument);
            break;
        }
    }

    ensureConnected();
    result.wanted = sendWaitingCloses();
    if (m_inTransaction) {
        sendNamed("mirsa_guard");
        ++result.wanted;
    } else if (statement.access == Access::Writes) {
        sendNamed("mirsa_share");
        ++result.wanted;
    }
    if (statement.session != m_session) {
        if (PQsendPrepare(m_connection, statement.name.constData(), statement.sql.constData(), 0,
                          nullptr) == 0)
            lost();
        statement.session = m_session;
        ++result.wanted;
    }
    if (PQsendQueryPrepared(m_connection, statement.name.constData(), count, values.constData(),
                            nullptr, nullptr, 0) == 0)
        lost();
    if (m_inTransaction)
        sendNamed("mirsa_pass");
    finish(result);
    if (result.error == nullptr)
        return true;

    if (PQstatus(m_connection) != CONNECTION_OK)
        lost();
    if (m_inTransaction) {
        Result undone;
        sendNamed("mirsa_undo");
        sendNamed("mirsa_pass");
        finish(undone);
    }
    // Whether the failure came before or behind the preparing isn't told: another name is safe.
    m_toClose->clear();
    statement.session = -1;
    statement.name = "s" + QByteArray::number(++m_names);
    return false;
}

Engine::Outcome Postgres::run(Prepared& prepared, const Arguments& arguments, Rows* rows,
                              int limit) {
    auto& statement = static_cast<Statement&>(prepared);
    Result result;
    if (!sendAndFinish(statement, arguments, result)) {
        // Another station has altered the table since the statement was prepared.
        if (result.state() != "0A000")
            fail(result);
        result.clear();
        if (!sendAndFinish(statement, arguments, result))
            fail(result);
    }
    Outcome outcome;
    if (statement.access == Access::Writes) {
        ++m_writes;
        outcome.touched = QByteArray(PQcmdTuples(result.rows)).toInt();
    }
    if (rows == nullptr || result.rows == nullptr)
        return outcome;
    const int columns = PQnfields(result.rows);
    QVarLengthArray<std::optional<ColumnType>, 64> types(columns);
    for (int column = 0; column < columns; ++column)
        types[column] = typeOfOid(PQftype(result.rows, column));
    const int count = PQntuples(result.rows);
    for (int row = 0; row < count; ++row) {
        if (row == limit) {
            outcome.complete = false;
            break;
        }
        rows->beginRow();
        for (int column = 0; column < columns; ++column)
            takeCell(result.rows, row, column, types[column], *rows);
        rows->endRow();
    }
    return outcome;
}

void Postgres::execute(const QByteArray& sql) {
    const auto statement = prepare(sql, Access::Writes);
    run(*statement, Arguments(), nullptr, -1);
}

void Postgres::begin(int depth) {
    ensureConnected();
    if (depth > 0) {
        exchange({"SAVEPOINT level" + QByteArray::number(depth)});
        return;
    }
    try {
        exchange({"BEGIN", lockAlone});
    } catch (const Error&) {
        if (PQstatus(m_connection) == CONNECTION_OK)
            exchange({"ROLLBACK"});
        throw;
    }
    m_inTransaction = true;
}

void Postgres::commit(int depth) {
    if (PQstatus(m_connection) != CONNECTION_OK)
        lost();
    if (depth > 0) {
        exchange({"RELEASE level" + QByteArray::number(depth)});
        return;
    }
    exchange({"COMMIT"});
    m_inTransaction = false;
}

void Postgres::rollback(int depth) {
    ++m_writes;
    const bool connected = PQstatus(m_connection) == CONNECTION_OK;
    if (depth > 0) {
        const QByteArray level = "level" + QByteArray::number(depth);
        if (connected)
            exchange({"ROLLBACK TO " + level, "RELEASE " + level});
        return;
    }
    m_inTransaction = false;
    if (connected)
        exchange({"ROLLBACK"});
}

void Postgres::tidy() {
    exchange({"VACUUM (ANALYZE)"});
}

bool Postgres::inTransaction() const {
    return m_inTransaction && PQstatus(m_connection) == CONNECTION_OK;
}

ChangeMark Postgres::mark() {
    return {0, m_writes, std::chrono::steady_clock::now()};
}

/// The server doesn't tell that others have written, so rows count as fresh for the moment in which
/// a handler walks over them.
bool Postgres::stillStands(const ChangeMark& mark) {
    return mark.own == m_writes && std::chrono::steady_clock::now() - mark.taken < rowsAreFreshFor;
}

void Postgres::fail(const Result& result) {
    const QByteArray state = result.state();
    const auto field = [&](int code) {
        return QString::fromUtf8(PQresultErrorField(result.error, code));
    };
    const QString text = field(PG_DIAG_MESSAGE_PRIMARY);
    if (state == "23505")
        throw duplicateError();
    if (state == "23514") {
        if (field(PG_DIAG_CONSTRAINT_NAME).endsWith(u"_width"_s))
            throw fieldTooSmallError();
        throw Error(errors::prohibitedValue, text);
    }
    if (state == "22001")
        throw fieldTooSmallError();
    if (state == "23502")
        throw requiredFieldError(field(PG_DIAG_TABLE_NAME) + u'.' + field(PG_DIAG_COLUMN_NAME));
    if (state == "22003")
        throw overflowError();
    if (state == "22012")
        throw Error(errors::divisionByZero, u"Division by zero"_s);
    if (state == "22P02" || state == "22007" || state == "22008" || state == "42804" ||
        state == "42883")
        throw typeMismatchError();
    if (state == "21000")
        throw Error(errors::severalRows, u"At most one record can be returned by this subquery."_s);
    if (state == "42601")
        throw Error(errors::syntax, text);
    if (state == "42P01")
        throw Error(errors::noSuchTable, text);
    if (state == "42703")
        throw Error(errors::tooFewParameters, u"Too few parameters. Expected 1."_s);
    if (state == "40P01" || state == "40001" || state == "55P03")
        throw lockedError();
    if (state == "25006" || state == "42501")
        throw Error(errors::notUpdatable, u"Cannot update. Database or object is read-only."_s);
    if (state.startsWith("57P") || state.startsWith("08"))
        lost();
    throw Error(errors::other, text);
}

} // namespace jet
