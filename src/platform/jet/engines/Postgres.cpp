#include "platform/jet/engines/Postgres.h"

#include "platform/jet/Types.h"
#include "platform/values/Literals.h"

#include <QVarLengthArray>

#include <array>
#include <charconv>
#include <thread>

namespace jet {

namespace {

/// The one lock by which transactions of all stations wait for each other: a transaction holds it
/// alone, a single write shares it. So what a transaction has read stands until it commits, as it
/// does where a file's only writer is meant.
constexpr char lockAlone[] = "SELECT pg_advisory_xact_lock(774411)";
constexpr char lockShared[] = "SELECT pg_advisory_xact_lock_shared(774411)";
/// Behind one of them: for its transaction, so that it needs no wait and outlives no connection.
constexpr char signature[] = ", set_config('mirsa.who', E'%1', true)";

constexpr std::chrono::seconds rowsAreFreshFor(1);
constexpr std::chrono::seconds reconnectFor(3);
constexpr std::chrono::milliseconds reconnectPause(100);

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

std::optional<qint64> wholeOf(const char* text, int size) {
    qint64 value = 0;
    const auto [end, error] = std::from_chars(text, text + size, value);
    return error == std::errc() && end == text + size ? std::optional(value) : std::nullopt;
}

void takeCell(const PGresult* result, int row, int column, std::optional<ColumnType> type,
              Rows& rows) {
    if (PQgetisnull(result, row, column) != 0) {
        rows.addNull();
        return;
    }
    const char* text = PQgetvalue(result, row, column);
    const int size = PQgetlength(result, row, column);
    if (type == ColumnType::Long) {
        if (const auto value = wholeOf(text, size)) {
            rows.addInteger(*value);
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

/// False: there are more rows than the limit.
bool takeRows(const PGresult* result, Rows& rows, int limit) {
    const int columns = PQnfields(result);
    QVarLengthArray<std::optional<ColumnType>, 64> types(columns);
    for (int column = 0; column < columns; ++column)
        types[column] = typeOfOid(PQftype(result, column));
    const int count = PQntuples(result);
    for (int row = 0; row < count; ++row) {
        if (row == limit)
            return false;
        rows.beginRow();
        for (int column = 0; column < columns; ++column)
            takeCell(result, row, column, types[column], rows);
        rows.endRow();
    }
    return true;
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

/// What is to be sent: a statement, or a word of the transaction.
struct Postgres::Command {
    enum class Kind { Begin, Level, Commit, Other, Read, Write };
    Kind kind = Kind::Read;
    QByteArray sql; ///< where there is no statement
    std::shared_ptr<Statement> statement = {};
    Arguments arguments = Arguments(Arguments::Money::AsText);
    QString step = {};
    DeferredPtr deferred = {}; ///< where outcome and rows go, or else:
    Rows* rows = nullptr;
    int limit = -1;
    Outcome outcome = {};
};

/// What is under way: whose is each reply, in the order of sending.
struct Postgres::Flight {
    struct Sent {
        Part part;
        Command* command;
    };
    std::vector<std::vector<Sent>> groups{1};
    Command* failed = nullptr;
    ResultPtr failure;    ///< the first one, but for those of deferred selects
    bool guarded = false; ///< the guard stands

    void add(Part part, Command* command = nullptr) { groups.back().push_back({part, command}); }
};

Postgres::Postgres(const QString& uri)
    : m_line(uri), m_toClose(std::make_shared<std::vector<QByteArray>>()) {}

Postgres::~Postgres() = default;

PreparedPtr Postgres::prepare(const QByteArray& sql, Access access) {
    auto statement = std::make_shared<Statement>();
    statement->sql = sql;
    if (access == Access::MustTouch) // the division undoes a write that met nothing
        statement->sql =
            "WITH touched AS (" + sql + " RETURNING 1) SELECT 1 / count(*) FROM touched";
    statement->access = access;
    statement->toClose = m_toClose;
    return statement; // prepared on the server together with its first run
}

PreparedPtr Postgres::prepareFirst(const QByteArray& sql, int limit) {
    return prepare("SELECT * FROM (" + sql + ") AS q LIMIT " + QByteArray::number(limit + 1),
                   Access::Reads);
}

// The road to the server and back

void Postgres::endGroup(Flight& flight) {
    m_line.endGroup();
    flight.groups.emplace_back();
}

/// Statements that were let go are closed on the way, between transactions.
void Postgres::closeStatements(Flight& flight) {
    if (m_toClose->empty() || m_transaction == Transaction::Open)
        return;
    for (const QByteArray& name : std::exchange(*m_toClose, {})) {
        m_line.command("DEALLOCATE " + name);
        flight.add(Part::Any);
    }
    endGroup(flight);
}

void Postgres::send(Flight& flight, Command& command) {
    if (!command.statement) {
        m_line.command(command.sql);
        flight.add(Part::Statement, &command);
        return;
    }
    Statement& statement = *command.statement;
    if (statement.session != m_line.session()) {
        // Always another name: whether the last one is known isn't told where a try broke off.
        statement.name = "s" + QByteArray::number(++m_names);
        statement.session = m_line.session();
        m_line.prepare(statement.name, statement.sql);
        flight.add(Part::Preparing, &command);
    }
    const Arguments& arguments = command.arguments;
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
    m_line.execute(statement.name, {values.constData(), static_cast<std::size_t>(count)});
    flight.add(Part::Statement, &command);
}

/// One round trip: what waits, then the commands, within a guard where a transaction is open.
Postgres::Flight Postgres::fly(std::vector<Command>& commands) {
    using Kind = Command::Kind;
    Flight flight;
    closeStatements(flight);
    for (Command& command : m_waiting) {
        send(flight, command);
        if (command.kind == Kind::Read) // one that fails is its own affair
            endGroup(flight);
    }
    const Kind kind = commands.empty() ? Kind::Other : commands.front().kind;
    const bool isStatement = kind == Kind::Read || kind == Kind::Write;
    if (isStatement && inTransaction()) {
        m_line.command("SAVEPOINT mirsa_guard");
        flight.add(Part::Guard);
    } else if (kind == Kind::Write) {
        m_line.command(lockShared + m_sign);
        flight.add(Part::Word);
    }
    for (Command& command : commands)
        send(flight, command);
    if (isStatement && inTransaction()) {
        m_line.command("RELEASE mirsa_guard");
        flight.add(Part::Word);
    }
    m_line.endGroup();
    for (const auto& group : flight.groups) {
        for (const Flight::Sent& sent : group)
            receive(flight, sent.part, sent.command);
        m_line.receive(); // the group's end
    }
    return flight;
}

void Postgres::receive(Flight& flight, Part part, Command* command) {
    using Kind = PostgresLine::Reply::Kind;
    PostgresLine::Reply reply = m_line.receive();
    if (part == Part::Any)
        return;
    const bool ownAffair =
        command != nullptr && command->deferred && command->kind == Command::Kind::Read;
    if (reply.kind == Kind::Done) {
        if (part == Part::Guard)
            flight.guarded = true;
        else if (part == Part::Statement && command->statement)
            takeOutcome(*command, reply.result.get());
        return;
    }
    if (command != nullptr && command->statement &&
        (part == Part::Preparing || reply.kind == Kind::Failed))
        command->statement->session = -1;
    if (command != nullptr && command->deferred)
        command->deferred->state = Deferred::State::Failed;
    if (reply.kind != Kind::Failed)
        return;
    if (ownAffair) {
        command->deferred->error = serverError(reply.result.get());
    } else if (!flight.failure) {
        flight.failed = command;
        flight.failure = std::move(reply.result);
    }
}

void Postgres::takeOutcome(Command& command, PGresult* result) {
    Outcome& outcome = command.deferred ? command.deferred->outcome : command.outcome;
    if (command.kind == Command::Kind::Write) {
        outcome.touched = QByteArray(PQcmdTuples(result)).toInt();
        if (const int last = PQntuples(result) - 1; last >= 0)
            outcome.counter =
                wholeOf(PQgetvalue(result, last, 0), PQgetlength(result, last, 0)).value_or(0);
    } else {
        Rows* rows = command.deferred ? &command.deferred->rows : command.rows;
        if (rows != nullptr)
            outcome.complete = takeRows(result, *rows, command.limit);
    }
    if (command.deferred)
        command.deferred->state = Deferred::State::Done;
}

/// Sends what waits and the commands, and waits for the replies. What was lost on the way, or had
/// become stale, goes once more, unless it may have been done.
void Postgres::talk(std::vector<Command>& commands) {
    for (bool again = false;; again = true) {
        bool mayRepeat = !again && m_transaction != Transaction::Open;
        try {
            if (!m_line.isUp()) {
                if (m_transaction == Transaction::Open)
                    m_line.lost();
                mayRepeat = false;
                connectAgain();
            }
            Flight flight = fly(commands);
            if (!flight.failure) {
                arrived(commands);
                return;
            }
            if (failed(flight, again))
                continue;
        } catch (const Error& error) {
            if (error.failure() != Failure::ConnectionLost || m_line.isUp())
                throw;
            if (m_line.wasGivenUp())
                mayRepeat = false;
            for (const Command& command : commands)
                if (command.kind == Command::Kind::Commit ||
                    (command.kind == Command::Kind::Write && !inTransaction()))
                    mayRepeat = false;
            if (!mayRepeat) {
                m_transaction = Transaction::None;
                dropWaiting(0);
                throw;
            }
        }
        clearReceived(commands);
    }
}

/// A server that starts again takes connections after a moment.
void Postgres::connectAgain() {
    const auto until = std::chrono::steady_clock::now() + reconnectFor;
    while (true) {
        try {
            m_line.connect();
            return;
        } catch (const Error&) {
            if (m_line.wasGivenUp() || std::chrono::steady_clock::now() > until)
                throw;
        }
        std::this_thread::sleep_for(reconnectPause);
    }
}

void Postgres::clearReceived(std::vector<Command>& commands) {
    for (auto* list : {&commands, &m_waiting}) {
        for (Command& command : *list) {
            if (command.rows != nullptr)
                command.rows->clear();
            if (command.deferred)
                *command.deferred = Deferred();
        }
    }
}

void Postgres::arrived(const std::vector<Command>& commands) {
    m_waiting.clear();
    if (m_transaction == Transaction::Waiting)
        m_transaction = Transaction::Open;
    if (!commands.empty() && commands.front().kind == Command::Kind::Commit)
        m_transaction = Transaction::None;
}

/// Sets the transaction right after a failure and throws it; true where all may go once more.
bool Postgres::failed(Flight& flight, bool again) {
    const QByteArray state = serverState(flight.failure.get());
    // Another station has altered the table since the statement was prepared; or the session is
    // no longer the one that prepared it.
    const bool stale = !again && (state == "0A000" || state == "26000");
    Error error = serverError(flight.failure.get());
    if (const Command* command = flight.failed) {
        if (command->statement && command->statement->access == Access::MustTouch &&
            state == "22012")
            error = rowDeletedError();
        if (command->deferred || command->kind == Command::Kind::Begin ||
            command->kind == Command::Kind::Level)
            error = error.withStep(command->step);
    }
    if (!inTransaction()) {
        m_waiting.clear();
    } else if (flight.guarded) {
        m_waiting.clear();
        m_transaction = Transaction::Open;
        m_line.command("ROLLBACK TO mirsa_guard");
        m_line.command("RELEASE mirsa_guard");
        m_line.endGroup();
        m_line.forgetReplies();
    } else {
        m_line.command("ROLLBACK");
        m_line.endGroup();
        m_line.forgetReplies();
        if (stale && m_transaction == Transaction::Waiting)
            return true;
        m_transaction = Transaction::None;
        dropWaiting(0);
        throw error;
    }
    if (stale)
        return true;
    throw error;
}

void Postgres::dropWaiting(std::size_t from) {
    for (std::size_t i = from; i < m_waiting.size(); ++i)
        if (m_waiting[i].deferred && m_waiting[i].deferred->state == Deferred::State::Waiting)
            m_waiting[i].deferred->state = Deferred::State::Failed;
    m_waiting.erase(m_waiting.begin() + static_cast<std::ptrdiff_t>(from), m_waiting.end());
}

// Statements

Outcome Postgres::run(const PreparedPtr& prepared, const Arguments& arguments, Rows* rows,
                      int limit) {
    auto statement = std::static_pointer_cast<Statement>(prepared);
    const bool writes = statement->access != Access::Reads;
    if (writes) {
        ++m_writes;
        m_hasWritten = true;
    }
    std::vector<Command> commands;
    commands.push_back(
        {writes ? Command::Kind::Write : Command::Kind::Read, {}, std::move(statement), arguments});
    commands.front().rows = rows;
    commands.front().limit = limit;
    talk(commands);
    return commands.front().outcome;
}

void Postgres::runTogether(std::vector<Read>& reads) {
    std::vector<Command> commands;
    commands.reserve(reads.size());
    for (const Read& read : reads) {
        commands.push_back({Command::Kind::Read,
                            {},
                            std::static_pointer_cast<Statement>(read.statement),
                            read.arguments});
        commands.back().rows = read.rows;
        commands.back().limit = read.limit;
    }
    if (!commands.empty())
        talk(commands);
    for (std::size_t i = 0; i < reads.size(); ++i)
        reads[i].outcome = commands[i].outcome;
}

void Postgres::execute(const QByteArray& sql) {
    run(prepare(sql, Access::Writes), Arguments(), nullptr, -1);
}

DeferredPtr Postgres::writeLater(const PreparedPtr& statement, const Arguments& arguments,
                                 const QString& step) {
    ++m_writes;
    m_hasWritten = true;
    auto deferred = std::make_shared<Deferred>();
    m_waiting.push_back({Command::Kind::Write,
                         {},
                         std::static_pointer_cast<Statement>(statement),
                         arguments,
                         step,
                         deferred});
    return deferred;
}

DeferredPtr Postgres::readLater(const PreparedPtr& statement, const Arguments& arguments,
                                int limit) {
    auto deferred = std::make_shared<Deferred>();
    m_waiting.push_back({Command::Kind::Read,
                         {},
                         std::static_pointer_cast<Statement>(statement),
                         arguments,
                         {},
                         deferred});
    m_waiting.back().limit = limit;
    return deferred;
}

void Postgres::sendWaiting() {
    // Of writes somebody asks for the last one's outcome: if it is that which fails, the
    // transaction is to stand as it was before it.
    std::vector<Command> last;
    if (!m_waiting.empty() && m_waiting.back().kind == Command::Kind::Write) {
        last.push_back(std::move(m_waiting.back()));
        m_waiting.pop_back();
    }
    if (!last.empty() || !m_waiting.empty())
        talk(last);
}

// Transactions

void Postgres::begin(int depth, const QString& step) {
    using Kind = Command::Kind;
    if (depth > 0) {
        m_waiting.push_back({Kind::Level, "SAVEPOINT level" + QByteArray::number(depth)});
        m_waiting.back().step = step;
        return;
    }
    m_waiting.push_back({Kind::Begin, "BEGIN"});
    m_waiting.push_back({Kind::Begin, lockAlone + m_sign});
    m_waiting.back().step = step;
    m_transaction = Transaction::Waiting;
    m_hasWritten = false;
}

void Postgres::commit(int depth) {
    if (depth > 0) {
        m_waiting.push_back({Command::Kind::Level, "RELEASE level" + QByteArray::number(depth)});
        return;
    }
    if (!m_hasWritten) {
        endUnheard("COMMIT");
        return;
    }
    std::vector<Command> commands{{Command::Kind::Commit, "COMMIT"}};
    talk(commands);
}

void Postgres::rollback(int depth) {
    ++m_writes;
    if (depth == 0) {
        endUnheard("ROLLBACK");
        return;
    }
    const QByteArray level = "level" + QByteArray::number(depth);
    const auto begun =
        std::find_if(m_waiting.begin(), m_waiting.end(),
                     [&](const Command& command) { return command.sql == "SAVEPOINT " + level; });
    const bool told = begun == m_waiting.end();
    dropWaiting(told ? 0 : static_cast<std::size_t>(begun - m_waiting.begin()));
    if (told) {
        m_waiting.push_back({Command::Kind::Level, "ROLLBACK TO " + level});
        m_waiting.push_back({Command::Kind::Level, "RELEASE " + level});
    }
}

/// Ends a transaction of which nothing is to be kept; nobody waits for the reply.
void Postgres::endUnheard(const char* sql) {
    const auto begun = std::find_if(m_waiting.begin(), m_waiting.end(), [](const Command& command) {
        return command.kind != Command::Kind::Read;
    });
    dropWaiting(static_cast<std::size_t>(begun - m_waiting.begin()));
    const bool told = std::exchange(m_transaction, Transaction::None) == Transaction::Open;
    if (!told || !m_line.isUp())
        return;
    m_line.command(sql);
    m_line.endGroup();
    m_line.forgetReplies();
}

void Postgres::setWriter(const QString& who) {
    QString name = who;
    name.remove(QChar::Null);
    name.replace(u'\\', u"\\\\"_s).replace(u'\'', u"''"_s);
    m_sign = who.isEmpty() ? QByteArray() : QString::fromLatin1(signature).arg(name).toUtf8();
}

void Postgres::tidy() {
    std::vector<Command> commands{{Command::Kind::Other, "VACUUM (ANALYZE)"}};
    talk(commands);
}

ChangeMark Postgres::mark() {
    return {0, m_writes, std::chrono::steady_clock::now()};
}

/// The server doesn't tell that others have written, so rows count as fresh for the moment in which
/// a handler walks over them.
bool Postgres::stillStands(const ChangeMark& mark) {
    return mark.own == m_writes && std::chrono::steady_clock::now() - mark.taken < rowsAreFreshFor;
}

} // namespace jet
