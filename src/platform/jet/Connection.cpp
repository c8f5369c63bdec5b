#include "platform/jet/Connection.h"

#include "platform/jet/Types.h"
#include "platform/jet/Waiting.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

constexpr qsizetype cacheSize = 500;

Value momentFor(int special) {
    const QDateTime now = values::now();
    switch (special) {
    case Parameter::today:
        return now.date();
    case Parameter::timeOfDay:
        return QDateTime(QDate(1899, 12, 30), now.time(), Qt::UTC);
    default:
        return now;
    }
}

bool isAboutNames(const Error& error) {
    return error.number() == errors::noSuchTable || error.number() == errors::tooFewParameters ||
           error.number() == errors::unknownField || error.number() == errors::itemNotFound;
}

Error undoneError() {
    return Error(errors::other, u"The transaction was undone by the database."_s);
}

} // namespace

Connection::Connection(std::unique_ptr<Engine> engine)
    : m_engine(std::move(engine)), m_dialect(m_engine->dialect()), m_schema(m_engine->readSchema()),
      m_money(m_dialect.isPostgres() ? Arguments::Money::AsText : Arguments::Money::AsNumber) {}

Connection::~Connection() {
    m_cache.clear();
}

void Connection::reloadSchema() {
    m_cache.clear();
    m_schema = m_engine->readSchema();
    m_schemaStale = false;
}

const Schema& Connection::schema() {
    if (m_schemaStale && !m_broken)
        reloadSchema();
    return m_schema;
}

StatementPtr Connection::cached(const QString& key) {
    const auto found = m_cache.constFind(key);
    if (found == m_cache.constEnd())
        return nullptr;
    (*found)->lastUse = ++m_uses;
    return *found;
}

StatementPtr Connection::keep(const QString& key, Translation translation) {
    if (m_cache.size() >= cacheSize) {
        // A quarter goes at once: those that weren't used for longest.
        std::vector<quint64> uses;
        uses.reserve(static_cast<std::size_t>(m_cache.size()));
        for (const StatementPtr& entry : std::as_const(m_cache))
            uses.push_back(entry->lastUse);
        const auto quarter = uses.begin() + static_cast<std::ptrdiff_t>(uses.size() / 4);
        std::nth_element(uses.begin(), quarter, uses.end());
        const quint64 oldest = *quarter;
        m_cache.removeIf([oldest](const auto& entry) { return entry.value()->lastUse < oldest; });
    }
    auto entry = std::make_shared<CachedStatement>();
    entry->translation = std::move(translation);
    entry->lastUse = ++m_uses;
    m_cache.insert(key, entry);
    return entry;
}

template <class Translate>
StatementPtr Connection::translated(const QString& key, Translate translate) {
    if (StatementPtr found = cached(key))
        return found;
    try {
        return keep(key, translate());
    } catch (const Error& error) {
        // The name may be one that another station has just added.
        if (!isAboutNames(error) || m_broken || !m_engine->schemaMayHaveChanged())
            throw;
        reloadSchema();
        return keep(key, translate());
    }
}

StatementPtr Connection::statement(const Normalized& statement) {
    if (StatementPtr found = cached(statement.key))
        return found;
    StatementPtr entry =
        translated(statement.key, [&] { return translate(statement, m_schema, m_dialect); });
    Translation& translation = entry->translation;
    if (translation.dynaset) {
        const Table* table = m_schema.table(translation.dynaset->table);
        if (const Column* key = table != nullptr ? table->key() : nullptr)
            entry->keyType = key->type;
    }
    if (translation.kind == StatementKind::Insert) {
        const Table* table = m_schema.table(translation.table);
        const Column* key = table != nullptr ? table->key() : nullptr;
        entry->givesCounter = key != nullptr && key->type == ColumnType::Counter;
        if (entry->givesCounter)
            translation.sql += m_dialect.returning(key->name);
    }
    return entry;
}

StatementPtr Connection::finder(const Normalized& select, const Normalized& criteria) {
    return translated(select.key + u'\n' + criteria.key,
                      [&] { return translateFind(select, criteria, m_schema, m_dialect); });
}

StatementPtr Connection::generated(const QString& key, const std::function<QByteArray()>& sql) {
    if (StatementPtr found = cached(key))
        return found;
    Translation translation;
    translation.sql = sql();
    return keep(key, std::move(translation));
}

Arguments Connection::argumentsOf(const CachedStatement& statement,
                                  const std::vector<Value>& literals) const {
    Arguments arguments(m_money);
    for (const Parameter& parameter : statement.translation.parameters) {
        if (parameter.literal < 0)
            arguments.add(momentFor(parameter.literal), parameter.conversion);
        else
            arguments.add(literals[static_cast<std::size_t>(parameter.literal)],
                          parameter.conversion);
    }
    return arguments;
}

void Connection::checkUsable() const {
    if (m_broken)
        throw undoneError();
    if (Waiting::isAsking()) // a timer or the like, while another statement is on its way
        throw lockedError();
}

void Connection::noteFailure(const Error& error) {
    if (m_depth > 0 && !m_engine->inTransaction())
        m_broken = true;
    if (isAboutNames(error)) // the tables are no longer what the statement was written for
        m_cache.clear();
}

const PreparedPtr& Connection::prepared(PreparedPtr& slot, const QByteArray& sql, Access access,
                                        int first) {
    checkUsable();
    if (!slot)
        slot = first > 0 ? m_engine->prepareFirst(sql, first) : m_engine->prepare(sql, access);
    return slot;
}

Outcome Connection::run(PreparedPtr& slot, const QByteArray& sql, Access access,
                        const Arguments& arguments, Rows* rows, int first) {
    const Read one{prepared(slot, sql, access, first), arguments, rows, first > 0 ? first : -1};
    if (access == Access::Reads)
        return run(one);
    try {
        return m_engine->run(one.statement, arguments, rows, one.limit);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
}

void Connection::sweep(const QByteArray& columns, const QByteArray& from,
                       const Engine::Look& look) {
    try {
        m_engine->sweep(columns, from, look);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
}

void Connection::each(const QByteArray& sql, const Engine::Look& look) {
    try {
        PreparedPtr statement;
        m_engine->each(prepared(statement, sql, Access::Reads), look);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
}

Outcome Connection::run(const Read& read) {
    if (m_expected.isWaiting()) {
        std::vector<Read> reads{read};
        runTogether(reads);
        return reads.front().outcome;
    }
    try {
        return m_engine->run(read.statement, read.arguments, read.rows, read.limit);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
}

void Connection::runTogether(std::vector<Read>& reads) {
    checkUsable();
    if (m_expected.isWaiting()) {
        std::vector<Read> all = reads;
        m_expected.addTo(all);
        try {
            m_engine->runTogether(all);
            m_expected.received(all);
            for (std::size_t i = 0; i < reads.size(); ++i)
                reads[i].outcome = all[i].outcome;
            return;
        } catch (const Error& error) {
            m_expected.giveUp();
            if (error.failure() != Failure::Statement || reads.empty()) {
                noteFailure(error);
                throw;
            }
            for (Read& read : reads) {
                if (read.rows)
                    read.rows->clear();
            }
        }
    }
    try {
        m_engine->runTogether(reads);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
}

Touched Connection::write(CachedStatement& entry, const Arguments& arguments) {
    ++m_changes;
    Touched touched;
    const QByteArray& sql = entry.translation.sql;
    if (m_depth > 0 && m_engine->defers()) {
        touched.m_deferred =
            m_engine->writeLater(prepared(entry.whole, sql, Access::Writes), arguments, m_step);
        touched.m_connection = this;
        if (entry.givesCounter)
            m_counterOf = touched.m_deferred;
    } else {
        const Outcome outcome = run(entry.whole, sql, Access::Writes, arguments);
        touched.m_rows = outcome.touched;
        if (entry.givesCounter && outcome.touched > 0) {
            m_lastCounter = outcome.counter;
            m_counterOf.reset();
        }
    }
    return touched;
}

void Connection::writeOne(CachedStatement& entry, const Arguments& arguments) {
    ++m_changes;
    const QByteArray& sql = entry.translation.sql;
    if (m_depth > 0 && m_engine->defers())
        m_engine->writeLater(prepared(entry.touching, sql, Access::MustTouch), arguments, m_step);
    else if (run(entry.whole, sql, Access::Writes, arguments).touched == 0)
        throw rowDeletedError();
}

DeferredPtr Connection::readLater(const PreparedPtr& statement, const Arguments& arguments,
                                  int limit) {
    checkUsable();
    return m_depth == 0 && m_engine->defers() ? m_engine->readLater(statement, arguments, limit)
                                              : nullptr;
}

bool Connection::settle(const Deferred& deferred) {
    if (deferred.state == Deferred::State::Waiting) {
        checkUsable();
        try {
            m_engine->sendWaiting();
        } catch (const Error& error) {
            noteFailure(error);
            throw;
        }
    }
    if (deferred.error) {
        noteFailure(*deferred.error);
        throw *deferred.error;
    }
    return deferred.state == Deferred::State::Done;
}

Touched::operator int() const {
    if (!m_deferred)
        return m_rows;
    if (!m_connection->settle(*m_deferred))
        throw undoneError();
    return m_deferred->outcome.touched;
}

Touched Connection::execute(const QString& text) {
    const Normalized normalized = normalize(text);
    const StatementPtr entry = statement(normalized);
    switch (entry->translation.kind) {
    case StatementKind::Select:
        throw Error(errors::cannotExecuteSelect, u"Cannot execute a select query."_s);
    case StatementKind::Insert:
    case StatementKind::Update:
    case StatementKind::Delete: {
        const Touched touched = write(*entry, argumentsOf(*entry, normalized.literals));
        const std::vector<QByteArray>& more = entry->translation.more;
        entry->more.resize(more.size());
        for (std::size_t i = 0; i < more.size(); ++i) {
            if (m_depth > 0 && m_engine->defers())
                m_engine->writeLater(prepared(entry->more[i], more[i], Access::Writes),
                                     newArguments(), m_step);
            else
                run(entry->more[i], more[i], Access::Writes, newArguments());
        }
        return touched;
    }
    default:
        define(*entry, text);
        return Touched();
    }
}

qint64 Connection::insert(CachedStatement& entry, const Arguments& arguments, const Table& table) {
    ++m_changes;
    const qint64 identity =
        run(entry.whole, entry.translation.sql, Access::Writes, arguments).counter;
    const Column* key = table.key();
    if (key != nullptr && key->type == ColumnType::Counter) {
        m_lastCounter = identity;
        m_counterOf.reset();
    }
    return identity;
}

qint64 Connection::lastCounter() {
    if (const DeferredPtr insert = std::exchange(m_counterOf, nullptr)) {
        if (settle(*insert) && insert->outcome.touched > 0)
            m_lastCounter = insert->outcome.counter;
    }
    return m_lastCounter;
}

/// A definition with its indexes: all of it or nothing.
void Connection::define(const CachedStatement& entry, QStringView text) {
    ++m_changes;
    const Translation definition = entry.translation;
    begin();
    try {
        if (m_dialect.isPostgres() && !m_serverPrepared) {
            for (const QByteArray& sql : serverPrelude())
                m_engine->execute(sql);
            m_serverPrepared = true;
        }
        m_engine->execute(definition.sql);
        for (const QByteArray& sql : definition.more)
            m_engine->execute(sql);
        commit();
    } catch (const Error& error) {
        noteFailure(error);
        rollback();
        throw;
    }
    m_defined = m_depth > 0;
    // Setting up a shop runs hundreds of definitions: reading the schema waits until one needs it.
    m_schemaStale = true;
    if (definition.kind == StatementKind::CreateTable)
        m_schema.add(tableFromDefinition(text));
    else if (definition.kind != StatementKind::CreateIndex)
        reloadSchema();
    m_cache.clear();
}

void Connection::begin() {
    checkUsable();
    ++m_changes;
    m_engine->begin(m_depth, m_step);
    if (m_depth++ == 0)
        ++m_transaction;
}

void Connection::commit() {
    ++m_changes;
    if (m_depth == 0)
        throw Error(errors::noTransaction, u"No transaction is open."_s);
    checkUsable();
    try {
        m_engine->commit(m_depth - 1);
    } catch (const Error& error) {
        noteFailure(error);
        throw;
    }
    --m_depth;
}

void Connection::rollback() {
    ++m_changes;
    if (m_depth == 0)
        throw Error(errors::noTransaction, u"No transaction is open."_s);
    --m_depth;
    m_counterOf.reset();
    const bool standing = m_engine->inTransaction();
    if (m_depth == 0)
        m_broken = false;
    if (standing || m_depth == 0)
        m_engine->rollback(m_depth);
    if (m_defined && standing)
        reloadSchema();
    if (m_depth == 0)
        m_defined = false;
}

} // namespace jet
