#include "platform/jet/Database.h"

#include "platform/jet/Connection.h"
#include "platform/jet/Location.h"
#include "platform/jet/ManyRows.h"
#include "platform/jet/Native.h"
#include "platform/jet/RecordsetData.h"
#include "platform/jet/engines/Postgres.h"
#include "platform/jet/engines/Sqlite.h"
#include "platform/values/Literals.h"

#include <QFile>

namespace jet {

namespace {

/// A table's bare name stands for all its rows.
QString selectOf(const QString& source) {
    const QString name = source.trimmed();
    const bool bare = std::none_of(name.begin(), name.end(), [](QChar c) { return c.isSpace(); });
    return bare ? u"SELECT * FROM "_s + name : source;
}

} // namespace

Database::Database(std::unique_ptr<Connection> connection) : m_connection(std::move(connection)) {}

Database::~Database() = default;

std::unique_ptr<Database> Database::openFile(const QString& path) {
    return std::unique_ptr<Database>(new Database(
        std::make_unique<Connection>(std::make_unique<Sqlite>(path, Sqlite::Mode::Open))));
}

std::unique_ptr<Database> Database::createFile(const QString& path) {
    return std::unique_ptr<Database>(new Database(
        std::make_unique<Connection>(std::make_unique<Sqlite>(path, Sqlite::Mode::Create))));
}

std::unique_ptr<Database> Database::openServer(const QString& uri) {
    return std::unique_ptr<Database>(
        new Database(std::make_unique<Connection>(std::make_unique<Postgres>(uri))));
}

void Database::compactFile(const QString& from, const QString& to) {
    if (QFile::exists(to))
        throw Error(errors::other, u"The database '%1' already exists."_s.arg(to));
    try {
        Sqlite(from, Sqlite::Mode::Open).copyCompacted(to);
        Sqlite(to, Sqlite::Mode::Open).readSchema();
    } catch (const Error&) {
        QFile::remove(to);
        throw;
    }
}

void Database::tidy() {
    m_connection->engine().tidy();
}

Recordset Database::openRecordset(const QString& select, RecordsetType type) {
    if (auto expected = m_connection->expected().take(*m_connection, select, type))
        return Recordset(std::move(expected));
    auto data = std::make_shared<RecordsetData>(*m_connection, selectOf(select), type);
    data->load();
    return Recordset(std::move(data));
}

std::vector<Recordset> Database::together(const std::vector<WantedSet>& wanted) {
    std::vector<Recordset> sets(wanted.size());
    std::vector<std::size_t> places; // of those that weren't expected
    std::vector<Read> reads;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (m_connection->expected().has(wanted[i]))
            continue;
        sets[i] = Recordset(std::make_shared<RecordsetData>(
            *m_connection, selectOf(wanted[i].select), wanted[i].type));
        reads.push_back(sets[i].m_data->request());
        places.push_back(i);
    }
    if (!reads.empty())
        m_connection->runTogether(reads);
    for (std::size_t i = 0; i < places.size(); ++i)
        sets[places[i]].m_data->received(reads[i].outcome);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (!sets[i].isOpen())
            sets[i] = openRecordset(wanted[i].select, wanted[i].type);
    }
    return sets;
}

Recordset Database::openLater(const QString& select, RecordsetType type) {
    auto data = std::make_shared<RecordsetData>(*m_connection, selectOf(select), type);
    data->requestLater();
    return Recordset(std::move(data));
}

void Database::expect(const std::vector<WantedSet>& wanted) {
    m_connection->expected().set(*m_connection, wanted);
}

Touched Database::execute(const QString& statement) {
    return m_connection->execute(statement);
}

Touched Database::insertRows(const QString& table, const QStringList& columns,
                             const std::vector<std::vector<Value>>& rows) {
    return ManyRows(*m_connection, table, columns).insert(rows);
}

Touched Database::updateRows(const QString& table, const QStringList& columns, int keys,
                             const std::vector<std::vector<Value>>& rows) {
    return ManyRows(*m_connection, table, columns).update(rows, keys);
}

std::vector<qint64> Database::takeNumbers(const QString& table, int count) {
    const Table* found = schema().table(table);
    if (found == nullptr || found->key() == nullptr)
        throw noSuchTableError(table);
    Native native(*this);
    const QByteArray name = native.quoted(found->name), key = native.quoted(found->key()->name);
    std::vector<qint64> numbers;
    if (isServer()) {
        for (const Native::Row& row :
             native.rows("SELECT nextval(pg_get_serial_sequence('" + name + "', '" +
                         found->key()->name.toLower().toUtf8() + "')) FROM generate_series(1, " +
                         QByteArray::number(count) + ')'))
            numbers.push_back(row.front().toInteger());
        return numbers;
    }
    const QByteArray named = " WHERE name = '" + found->name.toUtf8() + '\'';
    const qint64 last =
        native
            .value("SELECT max(coalesce((SELECT seq FROM sqlite_sequence" + named +
                   "), 0), coalesce((SELECT max(" + key + ") FROM " + name + "), 0))")
            .toInteger();
    native.execute("UPDATE sqlite_sequence SET seq = " + QByteArray::number(last + count) + named);
    for (int i = 1; i <= count; ++i)
        numbers.push_back(last + i);
    return numbers;
}

namespace {

StatementPtr selectStatement(Connection& connection, const Normalized& normalized) {
    StatementPtr statement = connection.statement(normalized);
    if (statement->translation.kind != StatementKind::Select)
        throw Error(errors::notASelect, u"Invalid operation: the statement returns no records."_s);
    return statement;
}

} // namespace

Value Database::lookup(const QString& select) {
    if (const auto expected =
            m_connection->expected().take(*m_connection, select, RecordsetType::Snapshot))
        return expected->recordCount() == 0 ? Value() : expected->field(0);
    const Normalized normalized = normalize(select);
    const StatementPtr statement = selectStatement(*m_connection, normalized);
    Rows rows;
    m_connection->run(statement->firstRow, statement->translation.sql, Engine::Access::Reads,
                      m_connection->argumentsOf(*statement, normalized.literals), &rows, 1);
    if (rows.isEmpty())
        return {};
    return valueOf(rows.cell(0, 0), statement->translation.columns.front().type);
}

bool Database::hasRows(const QString& select) {
    if (const auto expected =
            m_connection->expected().take(*m_connection, select, RecordsetType::Snapshot))
        return expected->recordCount() > 0;
    const Normalized normalized = normalize(select);
    const StatementPtr statement = selectStatement(*m_connection, normalized);
    Rows rows;
    m_connection->run(statement->exists, statement->translation.existsSql, Engine::Access::Reads,
                      m_connection->argumentsOf(*statement, normalized.literals), &rows);
    return rows.cell(0, 0).integer != 0;
}

qint64 Database::lastCounter() const {
    return m_connection->lastCounter();
}

const Schema& Database::schema() const {
    return m_connection->schema();
}

int Database::width(QStringView table, QStringView column) const {
    const Table* found = schema().table(table);
    const Column* wanted = found != nullptr ? found->column(column) : nullptr;
    return wanted != nullptr ? wanted->width : 0;
}

bool Database::isServer() const {
    return m_connection->dialect().isPostgres();
}

QString Database::name() const {
    return withoutPassword(m_connection->engine().name());
}

void Workspace::beginTrans() {
    m_database.m_connection->begin();
}
void Workspace::commitTrans() {
    m_database.m_connection->commit();
}
void Workspace::rollback() {
    m_database.m_connection->rollback();
}
int Workspace::depth() const {
    return m_database.m_connection->depth();
}

quint64 Database::waits() const {
    return m_connection->engine().waits();
}

Step::Step(Database& database, const QString& name)
    : m_connection(*database.m_connection), m_before(m_connection.step()) {
    m_connection.setStep(name);
}

Step::~Step() {
    m_connection.setStep(m_before);
}

Transaction::Transaction(Database& database) : m_workspace(database) {
    m_workspace.beginTrans();
}

Transaction::~Transaction() {
    if (!m_open)
        return;
    try {
        m_workspace.rollback();
    } catch (const std::exception&) {
        // What failed is undone all the same: nothing of it was committed.
    }
}

void Transaction::commit() {
    m_workspace.commitTrans();
    m_open = false;
}

void Transaction::rollback() {
    m_open = false;
    m_workspace.rollback();
}

} // namespace jet
