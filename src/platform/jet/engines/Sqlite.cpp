#include "platform/jet/engines/Sqlite.h"

#include "platform/jet/Error.h"
#include "platform/jet/Types.h"
#include "platform/jet/engines/SqliteLetters.h"
#include "platform/values/Literals.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <cerrno>

namespace jet {

namespace {

/// The engine counts what memory it takes, under a lock that all connections share. Nobody asks.
[[maybe_unused]] const int uncounted = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);

constexpr int busyMilliseconds = 20000;
constexpr int mostOfAWriter = 60;

class SqlitePrepared : public Prepared {
  public:
    using Statements = std::shared_ptr<std::unordered_set<sqlite3_stmt*>>;
    SqlitePrepared(sqlite3_stmt* statement, Engine::Access access, Statements all)
        : m_statement(statement), m_writes(access != Engine::Access::Reads), m_all(std::move(all)) {
        m_all->insert(statement);
    }
    ~SqlitePrepared() override {
        if (m_all->erase(m_statement) > 0)
            sqlite3_finalize(m_statement);
    }
    sqlite3_stmt* statement() const { return m_statement; }
    bool writes() const { return m_writes; }

  private:
    sqlite3_stmt* m_statement;
    bool m_writes;
    Statements m_all; ///< of the engine; none once it is closed
};

/// Ends a statement on the way out, so that no read or lock outlives its call.
class Stepping {
  public:
    explicit Stepping(sqlite3_stmt* statement) : m_statement(statement) {}
    ~Stepping() { sqlite3_reset(m_statement); }
    Stepping(const Stepping&) = delete;
    Stepping& operator=(const Stepping&) = delete;

  private:
    sqlite3_stmt* m_statement;
};

/// The write-ahead log needs memory that all stations share: not to be had over a network.
bool isOnNetwork(const QString& path) {
    if (path.startsWith(u"//"_s))
        return true;
    const QByteArray type = QStorageInfo(QFileInfo(path).absolutePath()).fileSystemType().toLower();
    for (const char* network : {"nfs", "cifs", "smb", "afs", "sshfs", "davfs", "ceph", "gluster"})
        if (type.contains(network))
            return true;
    return false;
}

QString textAt(sqlite3_stmt* statement, int column) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
}

/// A value as it lies where the engine has it.
Cell cellOf(sqlite3_value* value) {
    Cell cell;
    switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
        break;
    case SQLITE_INTEGER:
        cell.kind = Cell::Kind::Integer;
        cell.integer = sqlite3_value_int64(value);
        break;
    case SQLITE_FLOAT:
        cell.kind = Cell::Kind::Real;
        cell.real = sqlite3_value_double(value);
        break;
    default:
        cell.kind = Cell::Kind::Text;
        cell.text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        cell.size = sqlite3_value_bytes(value);
    }
    return cell;
}

/// A field of the row that the statement stands on.
Cell cellAt(sqlite3_stmt* statement, int column) {
    return cellOf(sqlite3_column_value(statement, column));
}

/// An aggregate function that adds nothing up, but shows its arguments, row by row: so no row has
/// to be handed out.
constexpr char lookFunction[] = "mirsa_look";

/// What sweep() looks with.
struct Sweep {
    const Engine::Look& look;
    std::vector<Cell> cells = {};
};

void showRow(sqlite3_context* context, int count, sqlite3_value** values) {
    auto& sweep = *static_cast<Sweep*>(sqlite3_user_data(context));
    try {
        sweep.cells.resize(static_cast<std::size_t>(count));
        for (int i = 0; i < count; ++i)
            sweep.cells[static_cast<std::size_t>(i)] = cellOf(values[i]);
        sweep.look(sweep.cells);
    } catch (...) { // through the engine's own frames nothing may be thrown
        sqlite3_result_error_nomem(context);
    }
}

void endRows(sqlite3_context* context) {
    sqlite3_result_null(context);
}

void takeRow(sqlite3_stmt* statement, int columns, Rows& rows) {
    rows.beginRow();
    for (int i = 0; i < columns; ++i) {
        const Cell cell = cellAt(statement, i);
        switch (cell.kind) {
        case Cell::Kind::Null:
            rows.addNull();
            break;
        case Cell::Kind::Integer:
            rows.addInteger(cell.integer);
            break;
        case Cell::Kind::Real:
            rows.addReal(cell.real);
            break;
        case Cell::Kind::Text:
            rows.addText(cell.text, cell.size);
            break;
        }
    }
    rows.endRow();
}

} // namespace

Sqlite::Sqlite(const QString& path, Mode mode) : m_path(path) {
    try {
        openFile(mode);
        configure();
    } catch (...) {
        close();
        throw;
    }
}

Sqlite::~Sqlite() {
    close();
}

/// Also with recordsets still about: the file must be free when its database is let go.
void Sqlite::close() {
    if (m_db == nullptr)
        return;
    for (sqlite3_stmt* statement : *m_statements)
        sqlite3_finalize(statement);
    m_statements->clear();
    sqlite3_close(m_db);
}

void Sqlite::openFile(Mode mode) {
    const QFileInfo file(m_path);
    if (mode == Mode::Create && file.exists())
        throw Error(errors::other, u"The database '%1' already exists."_s.arg(m_path));
    if (mode == Mode::Open && !file.isFile())
        throw notFound();
    if (mode == Mode::Open && !file.isReadable())
        throw Error(errors::noPermission,
                    u"You don't have the right to read the file '%1'."_s.arg(m_path));
    if (mode == Mode::Open && file.size() == 0)
        fail(SQLITE_NOTADB);
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX |
                      (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
    const int code = sqlite3_open_v2(m_path.toUtf8().constData(), &m_db, flags, nullptr);
    if (code != SQLITE_OK)
        fail(code);
}

void Sqlite::configure() {
    sqlite3_extended_result_codes(m_db, 1);
    sqlite3_busy_timeout(m_db, busyMilliseconds);
    addLetters(m_db);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(m_db, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    execute("PRAGMA foreign_keys = OFF");
    execute("PRAGMA temp_store = MEMORY");
    execute("PRAGMA cache_size = -65536");
    number("PRAGMA schema_version", m_schemaVersion); // the first look into the file
    QByteArray columns = "c0";
    for (int i = 1; i < givenColumns; ++i)
        columns += ", c" + QByteArray::number(i);
    execute(QByteArray("CREATE TEMP TABLE ") + givenTable + " (" + columns + ')');

    const bool readOnly = sqlite3_db_readonly(m_db, "main") == 1;
    if (readOnly)
        return;
    // With the log a killed program loses nothing, and a power cut at most the last moments but
    // never the file; without it every transaction must reach the disk.
    const auto mode =
        prepare(isOnNetwork(m_path) ? "PRAGMA journal_mode = DELETE" : "PRAGMA journal_mode = WAL",
                Access::Reads);
    Rows rows;
    run(mode, Arguments(), &rows, -1);
    const bool logged =
        !rows.isEmpty() && valueOf(rows.cell(0, 0), ColumnType::Text).toText() == u"wal";
    execute(logged ? "PRAGMA synchronous = NORMAL" : "PRAGMA synchronous = FULL");
}

PreparedPtr Sqlite::prepare(const QByteArray& sql, Access access) {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v3(m_db, sql.constData(), static_cast<int>(sql.size()) + 1,
                                        SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    if (code != SQLITE_OK)
        fail(code);
    return std::make_shared<SqlitePrepared>(statement, access, m_statements);
}

PreparedPtr Sqlite::prepareFirst(const QByteArray& sql, int) {
    return prepare(sql, Access::Reads); // rows that nobody takes aren't looked for
}

Outcome Sqlite::run(const PreparedPtr& prepared, const Arguments& arguments, Rows* rows,
                    int limit) {
    if (m_writer.isEmpty() || inTransaction() ||
        !static_cast<const SqlitePrepared&>(*prepared).writes())
        return step(prepared, arguments, rows, limit);
    begin(0, {});
    try {
        const Outcome outcome = step(prepared, arguments, rows, limit);
        commit(0);
        return outcome;
    } catch (...) {
        rollback(0);
        throw;
    }
}

void Sqlite::step(PreparedPtr& slot, const char* sql, const Arguments& arguments) {
    if (!slot)
        slot = prepare(sql, Access::Writes);
    step(slot, arguments, nullptr, -1);
}

Outcome Sqlite::step(const PreparedPtr& prepared, const Arguments& arguments, Rows* rows,
                     int limit) {
    sqlite3_stmt* statement = static_cast<const SqlitePrepared&>(*prepared).statement();
    for (int i = 0; i < arguments.count(); ++i) {
        const Arguments::Argument& argument = arguments.at(i);
        switch (argument.kind) {
        case Arguments::Kind::Null:
            sqlite3_bind_null(statement, i + 1);
            break;
        case Arguments::Kind::Integer:
            sqlite3_bind_int64(statement, i + 1, argument.integer);
            break;
        case Arguments::Kind::Real:
            sqlite3_bind_double(statement, i + 1, argument.real);
            break;
        case Arguments::Kind::Text:
            sqlite3_bind_text(statement, i + 1, arguments.text(argument), argument.size,
                              SQLITE_STATIC);
            break;
        }
    }

    Stepping stepping(statement);
    Outcome outcome;
    int code = sqlite3_step(statement);
    if (code == SQLITE_ROW) {
        const int columns = sqlite3_column_count(statement);
        for (int taken = 0; code == SQLITE_ROW; code = sqlite3_step(statement), ++taken) {
            if (taken == limit) {
                outcome.complete = false;
                return outcome;
            }
            if (rows != nullptr)
                takeRow(statement, columns, *rows);
        }
    }
    if (code != SQLITE_DONE)
        fail(code);
    if (!sqlite3_stmt_readonly(statement)) {
        outcome.touched = sqlite3_changes(m_db);
        outcome.counter = sqlite3_last_insert_rowid(m_db);
    }
    return outcome;
}

void Sqlite::each(const PreparedPtr& prepared, const Look& look) {
    sqlite3_stmt* statement = static_cast<const SqlitePrepared&>(*prepared).statement();
    const Stepping stepping(statement);
    std::vector<Cell> cells(static_cast<std::size_t>(sqlite3_column_count(statement)));
    int code = sqlite3_step(statement);
    for (; code == SQLITE_ROW; code = sqlite3_step(statement)) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            cells[i] = cellAt(statement, static_cast<int>(i));
        look(cells);
    }
    if (code != SQLITE_DONE)
        fail(code);
}

void Sqlite::sweep(const QByteArray& columns, const QByteArray& from, const Look& look) {
    Sweep sweep{look};
    const int made = sqlite3_create_function_v2(m_db, lookFunction, -1, SQLITE_UTF8, &sweep,
                                                nullptr, showRow, endRows, nullptr);
    if (made != SQLITE_OK)
        fail(made);
    struct Removal {
        sqlite3* db;
        ~Removal() {
            sqlite3_create_function_v2(db, lookFunction, -1, SQLITE_UTF8, nullptr, nullptr, nullptr,
                                       nullptr, nullptr);
        }
    } const removal{m_db};
    const auto statement =
        prepare("SELECT " + QByteArray(lookFunction) + '(' + columns + ") " + from, Access::Reads);
    run(statement, Arguments(), nullptr, -1);
}

void Sqlite::execute(const QByteArray& sql) {
    const int code = sqlite3_exec(m_db, sql.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        fail(code);
}

void Sqlite::begin(int depth, const QString&) {
    if (depth > 0) {
        execute("SAVEPOINT level" + QByteArray::number(depth));
        return;
    }
    // Begun as a writer: stations then wait here for each other. One that read first and wrote
    // later would be refused as soon as another had written in between.
    step(m_begin, "BEGIN IMMEDIATE");
    m_signed = !m_writer.isEmpty();
    if (!m_signed)
        return;
    // There is one writer at a time, and nobody else sees what isn't committed: the row is exact.
    try {
        Arguments who;
        who.addText(m_writer);
        step(m_sign,
             "INSERT OR REPLACE INTO Writer (ID, Who, \"At\") VALUES (1, ?1, "
             "strftime('%Y-%m-%d %H:%M:%S', 'now', 'localtime'))",
             who);
    } catch (...) {
        rollback(0);
        throw;
    }
}

void Sqlite::commit(int depth) {
    if (depth > 0) {
        execute("RELEASE level" + QByteArray::number(depth));
        return;
    }
    if (m_signed)
        step(m_unsign, "DELETE FROM Writer");
    step(m_commit, "COMMIT");
}

void Sqlite::setWriter(const QString& who) {
    const auto table =
        prepare("SELECT 1 FROM pragma_table_info('Writer') WHERE name = 'At'", Access::Reads);
    Rows rows;
    step(table, Arguments(), &rows, -1);
    m_writer = rows.isEmpty() ? QString() : who.left(mostOfAWriter);
}

void Sqlite::rollback(int depth) {
    if (depth > 0) {
        const QByteArray level = "level" + QByteArray::number(depth);
        execute("ROLLBACK TO " + level);
        execute("RELEASE " + level);
    } else if (inTransaction()) { // after some failures SQLite has done it by itself
        execute("ROLLBACK");
    }
}

void Sqlite::copyCompacted(const QString& to) {
    sqlite3_busy_timeout(m_db, 500);
    Rows rows;
    // Leaving the log takes the file for this connection alone, and brings all into it.
    const auto leaveLog = prepare("PRAGMA journal_mode = DELETE", Access::Writes);
    run(leaveLog, Arguments(), &rows, -1);
    execute("PRAGMA locking_mode = EXCLUSIVE");
    execute("BEGIN EXCLUSIVE");
    execute("COMMIT");
    const auto copy = prepare("VACUUM INTO ?1", Access::Reads);
    Arguments target;
    target.addText(to);
    run(copy, target, nullptr, -1);
}

qint64 Sqlite::number(const char* pragma, PreparedPtr& statement) {
    if (!statement)
        statement = prepare(pragma, Access::Reads);
    sqlite3_stmt* stepped = static_cast<const SqlitePrepared&>(*statement).statement();
    Stepping stepping(stepped);
    const int code = sqlite3_step(stepped);
    if (code != SQLITE_ROW)
        fail(code);
    return sqlite3_column_int64(stepped, 0);
}

/// As of the last read of this connection; costs no look into the file.
qint64 Sqlite::lastReadVersion() const {
    unsigned int version = 0;
    sqlite3_file_control(m_db, "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

ChangeMark Sqlite::mark() {
    return {lastReadVersion(), sqlite3_total_changes64(m_db), {}};
}

bool Sqlite::stillStands(const ChangeMark& mark) {
    if (mark.own != sqlite3_total_changes64(m_db))
        return false;
    number("PRAGMA data_version", m_dataVersion); // looks into the file
    return mark.others == lastReadVersion();
}

bool Sqlite::schemaMayHaveChanged() {
    return number("PRAGMA schema_version", m_schemaVersion) != m_readSchemaVersion;
}

Schema Sqlite::readSchema() {
    m_readSchemaVersion = number("PRAGMA schema_version", m_schemaVersion);
    Schema schema;
    std::vector<Table> tables;
    const auto each = [this](const char* sql, auto&& take) {
        const auto prepared = prepare(sql, Access::Reads);
        sqlite3_stmt* statement = static_cast<const SqlitePrepared&>(*prepared).statement();
        Stepping stepping(statement);
        int code;
        while ((code = sqlite3_step(statement)) == SQLITE_ROW)
            take(statement);
        if (code != SQLITE_DONE)
            fail(code);
    };
    each("SELECT m.name, c.name, c.type, c.pk, c.dflt_value, "
         "(SELECT count(*) FROM pragma_table_info(m.name) k WHERE k.pk > 0) "
         "FROM sqlite_schema m JOIN pragma_table_info(m.name) c "
         "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
         "ORDER BY m.rowid, c.cid",
         [&](sqlite3_stmt* row) {
             const QString name = textAt(row, 0);
             if (tables.empty() || tables.back().name != name)
                 tables.emplace_back().name = name;
             Column column;
             column.name = textAt(row, 1);
             const QString declared = textAt(row, 2);
             column.primaryKey = sqlite3_column_int(row, 3) > 0;
             const bool automatic =
                 column.primaryKey && sqlite3_column_int(row, 5) == 1 &&
                 declared.compare(QStringView(u"integer"), Qt::CaseInsensitive) == 0;
             const DeclaredType type = typeFromDeclaration(declared, automatic, dialect());
             column.type = type.type;
             column.width = type.width;
             column.defaultValue = textAt(row, 4);
             tables.back().columns.push_back(std::move(column));
         });
    each("SELECT m.name, i.name, i.\"unique\", c.name FROM sqlite_schema m "
         "JOIN pragma_index_list(m.name) i JOIN pragma_index_info(i.name) c "
         "WHERE m.type = 'table' AND i.origin = 'c' ORDER BY m.rowid, i.seq DESC, c.seqno",
         [&](sqlite3_stmt* row) {
             const QString name = textAt(row, 0), index = textAt(row, 1);
             for (Table& table : tables) {
                 if (table.name != name)
                     continue;
                 if (table.indexes.empty() || table.indexes.back().name != index)
                     table.indexes.push_back({index, {}, sqlite3_column_int(row, 2) != 0});
                 table.indexes.back().columns.append(textAt(row, 3));
             }
         });
    for (Table& table : tables)
        schema.add(std::move(table));
    return schema;
}

Error Sqlite::notFound() const {
    return Error(errors::cannotOpenFile, u"Could not find file '%1'."_s.arg(m_path),
                 Failure::FileGone);
}

void Sqlite::fail(int code) const {
    const QString text =
        QString::fromUtf8(m_db != nullptr ? sqlite3_errmsg(m_db) : sqlite3_errstr(code));
    switch (code) {
    case SQLITE_CONSTRAINT_UNIQUE:
    case SQLITE_CONSTRAINT_PRIMARYKEY:
    case SQLITE_CONSTRAINT_ROWID:
        throw duplicateError();
    case SQLITE_CONSTRAINT_CHECK:
        if (text.endsWith(u"_width"_s))
            throw fieldTooSmallError();
        throw Error(errors::prohibitedValue, text);
    case SQLITE_CONSTRAINT_NOTNULL:
        throw requiredFieldError(text.section(u':', -1).trimmed());
    case SQLITE_CONSTRAINT_DATATYPE:
    case SQLITE_MISMATCH:
        throw typeMismatchError();
    case SQLITE_TOOBIG:
        throw fieldTooSmallError();
    default:
        break;
    }
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        throw lockedError();
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        throw Error(errors::unrecognizedFormat,
                    u"Unrecognized database format '%1'."_s.arg(m_path));
    case SQLITE_CANTOPEN:
        throw notFound();
    case SQLITE_READONLY:
        if (code == SQLITE_READONLY_DBMOVED)
            throw notFound();
        throw Error(errors::notUpdatable, notUpdatableError().text(), Failure::ReadOnly);
    case SQLITE_PERM:
    case SQLITE_AUTH:
        throw Error(errors::noPermission,
                    u"You don't have the right to use the file '%1'."_s.arg(m_path));
    case SQLITE_FULL:
        throw Error(errors::other, text, Failure::DiskFull);
    case SQLITE_IOERR: {
        const int reason = m_db != nullptr ? sqlite3_system_errno(m_db) : 0;
        const bool full = reason == ENOSPC || reason == EDQUOT || reason == EFBIG;
        throw Error(errors::other, text, full ? Failure::DiskFull : Failure::FileGone);
    }
    case SQLITE_ERROR:
        if (text.startsWith(u"no such table"_s))
            throw Error(errors::noSuchTable, text);
        if (text.startsWith(u"no such column"_s))
            throw Error(errors::tooFewParameters, u"Too few parameters. Expected 1."_s);
        if (text.contains(u"syntax error"_s))
            throw Error(errors::syntax, text);
        if (text.contains(u"integer overflow"_s))
            throw overflowError();
        break;
    default:
        break;
    }
    throw Error(errors::other, text);
}

} // namespace jet
