#include "platform/jet/RecordsetData.h"

#include "platform/jet/Lexer.h"
#include "platform/jet/Sorting.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

/// A set of no more rows than this is read with its keys in one go.
constexpr int rowsReadAtOnce = 200;
constexpr QChar occurrenceMark(0x1f);

Error noCurrentRecord() {
    return Error(errors::noCurrentRecord, u"No current record."_s);
}

} // namespace

RecordsetData::RecordsetData(Connection& connection, const QString& select, RecordsetType type)
    : m_connection(connection), m_type(type), m_select(normalize(select)) {}

void RecordsetData::load() {
    Read read = request();
    read.outcome = m_connection.run(read);
    received(read.outcome);
}

/// Forgets the rows.
void RecordsetData::prepare() {
    m_statement = m_connection.statement(m_select);
    if (translation().kind != StatementKind::Select)
        throw Error(errors::notASelect, u"Invalid operation: the statement returns no records."_s);
    m_later.reset();
    m_keys.clear();
    m_keysRead = true;
    m_added.clear();
    m_rows.clear();
    m_rowsAt = 0;
    m_rowsDown = m_unread = false;
    m_part = {};
    m_changed.clear();
    m_cells.clear();
    m_removed = m_rowsStand = m_noMatch = false;
    m_current = Current::Unread;
    m_editing = Editing::No;
    m_position = -1;

    const auto& plan = translation().dynaset;
    m_kind = m_type == RecordsetType::Snapshot || !plan ? Kind::Whole
             : plan->singleTable                        ? Kind::Keyed
                                                        : Kind::Joined;
}

Read RecordsetData::request() {
    prepare();
    const auto& plan = translation().dynaset;
    Read read{nullptr, m_connection.argumentsOf(*m_statement, m_select.literals), &m_rows};
    const auto prepared = [&](PreparedPtr& slot, const QByteArray& sql, int first = 0) {
        return m_connection.prepared(slot, sql, Engine::Access::Reads, first);
    };
    if (m_kind == Kind::Keyed) {
        read.statement = prepared(m_statement->keyed, plan->keyedSql, rowsReadAtOnce);
        read.limit = rowsReadAtOnce;
    } else if (m_kind == Kind::Joined) {
        read.statement = prepared(m_statement->keys, plan->keysSql);
    } else {
        read.statement = prepared(m_statement->whole, translation().sql);
    }
    return read;
}

void RecordsetData::received(const Outcome& outcome) {
    m_readIn = m_connection.transaction();
    if (outcome.complete)
        sortRows(m_rows, translation().sorted, columnCount() + (m_kind == Kind::Whole ? 0 : 1),
                 m_connection.engine().order());
    if (translation().dropsRepeated)
        dropRepeated(m_rows, columnCount());
    if (m_kind == Kind::Keyed) {
        m_rowsStand = outcome.complete;
        if (outcome.complete) {
            m_mark = m_connection.engine().mark();
            m_keys.take(m_rows, columnCount(), keyType());
        } else if (isPart()) {
            m_rowsStand = true;
            m_mark = m_connection.engine().mark();
            m_keys.take(m_rows, columnCount(), keyType());
            m_part.toLast = false;
        } else {
            m_rows.clear();
            m_keysRead = false;
        }
    }
    m_position = !m_keysRead || stored() > 0 ? 0 : -1;
    m_fresh = true;
}

void RecordsetData::requestLater() {
    prepare();
    if (isPart()) {
        m_unread = true;
        return;
    }
    Read read = request();
    const DeferredPtr later = m_connection.readLater(read.statement, read.arguments, read.limit);
    if (later)
        m_later = later;
    else
        received(m_connection.run(read));
}

void RecordsetData::takeLater() {
    const DeferredPtr later = std::exchange(m_later, nullptr);
    if (!m_connection.settle(*later)) { // it was dropped with what it was to travel with
        load();
        return;
    }
    m_rows = std::move(later->rows);
    received(later->outcome);
}

void RecordsetData::readKeys() const {
    Rows rows;
    m_connection.run(m_statement->keys, translation().dynaset->keysSql, Engine::Access::Reads,
                     m_connection.argumentsOf(*m_statement, m_select.literals), &rows);
    std::vector<SortTerm> terms = translation().sorted;
    for (SortTerm& term : terms)
        term.column = -1;
    sortRows(rows, terms, 1, m_connection.engine().order());
    m_keys.take(rows, 0, keyType());
    m_keysRead = true;
    // What was added here stands at the end, and once.
    for (const Value& key : m_added) {
        if (const int place = m_keys.find(key); place >= 0)
            m_keys.erase(place);
        m_keys.append(key);
    }
}

Keys& RecordsetData::keys() const {
    if (!m_keysRead)
        readKeys();
    return m_keys;
}

const Table& RecordsetData::baseTable() const {
    const Table* table = translation().dynaset && m_kind != Kind::Whole
                             ? m_connection.schema().table(translation().dynaset->table)
                             : nullptr;
    if (table == nullptr)
        throw notUpdatableError();
    return *table;
}

Value RecordsetData::keyAt(int position) const {
    if (m_kind == Kind::Keyed)
        return keys().at(position);
    return valueOf(m_rows.cell(position, columnCount()), keyType());
}

void RecordsetData::goTo(int position) {
    m_position = position;
    m_current = Current::Unread;
    m_fresh = false;
}

void RecordsetData::drop(int position) {
    const int row = held(position);
    if (m_kind == Kind::Keyed)
        keys().erase(position);
    if (row >= 0)
        m_rows.erase(row);
    if (position < m_rowsAt)
        --m_rowsAt;
    if (m_part.total > 0)
        --m_part.total;
    if (!m_changed.isEmpty()) {
        decltype(m_changed) moved;
        for (auto it = m_changed.cbegin(); it != m_changed.cend(); ++it)
            if (it.key() != position)
                moved.insert(it.key() - (it.key() > position ? 1 : 0), it.value());
        m_changed = std::move(moved);
    }
}

/// A row that was deleted here leaves the set when the position leaves it; the position is then
/// between its neighbours.
void RecordsetData::dropRemoved() {
    if (!m_removed)
        return;
    m_removed = false;
    if (m_kind != Kind::Joined) {
        drop(m_position);
        return;
    }
    // The base row is gone from every row of the join that showed it.
    const Value key = keyAt(m_position);
    for (int row = m_rows.count() - 1; row >= 0; --row) {
        if (keyAt(row) == key) {
            drop(row);
            if (row < m_position)
                --m_position;
        }
    }
}

/// Goes on in a direction past rows that other stations have deleted; they leave the set.
void RecordsetData::skipGone(int step) {
    reach();
    while (m_position >= 0 && m_position < stored() && !readMoving(step)) {
        drop(m_position);
        goTo(step > 0 ? m_position : m_position - 1);
        reach();
    }
}

void RecordsetData::moveFirst() {
    m_editing = Editing::No;
    dropRemoved();
    if (!m_part.toFirst)
        load();
    goTo(0);
    skipGone(1);
}

void RecordsetData::moveLast() {
    m_editing = Editing::No;
    dropRemoved();
    if (isPart() && (m_unread || !m_part.toLast || !heldStand(stored() - 1)))
        readLast();
    goTo(stored() - 1);
    skipGone(-1);
}

void RecordsetData::moveNext() {
    if (eof())
        throw noCurrentRecord();
    m_editing = Editing::No;
    if (m_removed) {
        dropRemoved();
        goTo(m_position);
    } else {
        goTo(m_position + 1);
    }
    skipGone(1);
}

void RecordsetData::movePrevious() {
    if (bof())
        throw noCurrentRecord();
    m_editing = Editing::No;
    dropRemoved();
    goTo(m_position - 1);
    skipGone(-1);
}

void RecordsetData::moveTo(int position) {
    if (m_removed && position > m_position)
        --position;
    m_editing = Editing::No;
    dropRemoved();
    if (!isHeldWhole())
        position -= offset();
    if (!isHeldWhole() && (position < 0 || position >= stored())) {
        // So far away that it has to be looked for.
        PreparedPtr slot;
        Rows rows;
        const int place = position + offset();
        m_connection.run(slot,
                         translation().dynaset->keysSql + " LIMIT 1 OFFSET " +
                             QByteArray::number(std::max(place, 0)),
                         Engine::Access::Reads,
                         m_connection.argumentsOf(*m_statement, m_select.literals), &rows);
        if (place < 0 || rows.isEmpty() || !readAround(valueOf(rows.cell(0, 0), keyType()), true))
            throw noCurrentRecord();
        m_part.before = place - m_position;
        return;
    }
    if (position < 0 || position >= stored())
        throw noCurrentRecord();
    goTo(position);
}

void RecordsetData::needCurrent() const {
    if (bof() || eof())
        throw noCurrentRecord();
    if (m_removed)
        throw rowDeletedError();
}

/// Has the current row's cells at hand; false if the row has gone.
bool RecordsetData::readCurrent() {
    if (m_current != Current::Unread)
        return m_current == Current::Read;
    if (m_kind != Kind::Keyed) {
        m_rows.read(m_position, m_cells);
    } else {
        if (heldStand(m_position))
            m_rows.read(held(m_position), m_cells);
        else if (!fetch())
            return false;
    }
    m_current = Current::Read;
    return true;
}

/// Reads the current row from the database.
bool RecordsetData::fetch() {
    m_rowsStand = false;
    m_fetched.clear();
    Arguments arguments = m_connection.argumentsOf(*m_statement, m_select.literals);
    arguments.add(m_position < stored() ? keyAt(m_position) : Value());
    m_connection.run(m_statement->row, translation().dynaset->rowSql, Engine::Access::Reads,
                     arguments, &m_fetched);
    if (m_fetched.isEmpty()) {
        m_current = Current::Gone;
        return false;
    }
    m_fetched.read(0, m_cells);
    m_current = Current::Read;
    return true;
}

int RecordsetData::columnNamed(QStringView name) const {
    const std::vector<ResultColumn>& columns = translation().columns;
    const auto equal = [](const QString& a, QStringView b) {
        return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
    };
    for (std::size_t i = 0; i < columns.size(); ++i)
        if (equal(columns[i].name, name))
            return static_cast<int>(i);
    const qsizetype point = name.indexOf(u'.');
    if (point > 0)
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (equal(columns[i].table, name.left(point)) &&
                equal(columns[i].name, name.mid(point + 1)))
                return static_cast<int>(i);
    throw Error(errors::itemNotFound, u"Item not found in this collection: '%1'."_s.arg(name));
}

Value RecordsetData::currentField(int index) {
    needCurrent();
    if (!readCurrent())
        throw rowDeletedError();
    if (!m_changed.isEmpty()) {
        const auto row = m_changed.constFind(m_position);
        if (row != m_changed.cend())
            for (const auto& [column, value] : *row)
                if (column == index)
                    return value;
    }
    const auto place = static_cast<std::size_t>(index);
    return valueOf(m_cells[place], translation().columns[place].type);
}

Value RecordsetData::field(QStringView name) {
    const int index = columnNamed(name);
    if (m_editing != Editing::No)
        return field(index);
    return currentField(index);
}

QStringList RecordsetData::fieldNames() const {
    QStringList names;
    for (const ResultColumn& column : translation().columns)
        names << column.name;
    return names;
}

/// The key, so that the mark means the same row after the set was read again. Of a join that shows
/// the same base row several times also which of them; of a set without keys its place.
Value RecordsetData::bookmark() {
    needCurrent();
    if (m_kind == Kind::Whole)
        return m_position;
    Value key = keyAt(m_position);
    if (m_kind == Kind::Keyed)
        return key;
    int before = 0;
    for (int row = 0; row < m_position; ++row)
        before += keyAt(row) == key ? 1 : 0;
    return before == 0 ? key : Value(key.toText() + occurrenceMark + QString::number(before));
}

void RecordsetData::setBookmark(const Value& mark) {
    m_editing = Editing::No;
    dropRemoved();
    relocate(mark);
    if (!readCurrent())
        throw rowDeletedError();
}

void RecordsetData::relocate(const Value& mark) {
    int place = -1;
    if (m_kind == Kind::Keyed) {
        place = keys().find(mark);
        if (place < 0 && !isHeldWhole() && readAround(mark, true))
            return;
    } else if (m_kind == Kind::Whole) {
        place = mark.isNull() ? -1 : static_cast<int>(mark.toLong());
    } else {
        const QString text = mark.toText();
        const qsizetype at = text.indexOf(occurrenceMark);
        int skip = at < 0 ? 0 : text.mid(at + 1).toInt();
        const Value key = at < 0 ? mark : Value(text.left(at));
        for (int row = 0; row < stored() && place < 0; ++row)
            if (keyAt(row) == key && skip-- == 0)
                place = row;
    }
    if (place < 0 || place >= stored())
        throw rowDeletedError();
    goTo(place);
}

bool RecordsetData::loadAt(const Value& mark) {
    const int position = m_position;
    if (m_kind == Kind::Keyed && m_statement && isPart()) {
        const bool valid = position >= 0 && position < stored();
        const Value key = mark.isNull() && valid ? keyAt(position) : mark;
        if (m_unread || stored() > rowsReadAtOnce || !isHeldWhole()) {
            prepare();
            return readAround(key, false);
        }
        load();
        if (isHeldWhole() && m_keys.find(key) < 0 && stored() > 0)
            goTo(std::min(m_keys.below(key.toLong()), stored() - 1));
        else if (stored() > 0)
            return !isHeldWhole() ? readAround(key, false) : (relocate(key), true);
        return false;
    }
    load();
    try {
        relocate(mark);
        return true;
    } catch (const Error& error) {
        if (error.number() != errors::rowDeleted)
            throw;
    }
    if (stored() > 0)
        goTo(std::clamp(position, 0, stored() - 1));
    return false;
}

void RecordsetData::refreshRow() {
    needCurrent();
    m_editing = Editing::No;
    if (m_kind == Kind::Keyed) {
        fetch();
        return;
    }
    const Value mark = bookmark();
    const int position = m_position;
    load();
    try {
        relocate(mark);
    } catch (const Error&) {
        goTo(std::min(position, stored() - 1));
        throw;
    }
}

void RecordsetData::found(int position) {
    m_noMatch = position < 0;
    if (m_noMatch)
        return;
    if (m_removed && position != m_position) {
        const Value mark = m_kind == Kind::Whole ? Value(position) : keyAt(position);
        if (m_kind == Kind::Keyed) {
            dropRemoved();
            position = keys().find(mark);
        } else {
            const int before = m_rows.count();
            const bool behind = position > m_position;
            dropRemoved();
            if (behind)
                position -= before - m_rows.count();
        }
    }
    goTo(position);
}

Value RecordsetData::keyAhead(int step) const {
    const int place = m_position + step;
    const bool isHeld =
        m_kind == Kind::Keyed && m_keysRead && !m_removed && place >= 0 && place < stored();
    return isHeld ? keyAt(place) : Value();
}

void RecordsetData::findFirst(const QString& criteria) {
    m_editing = Editing::No;
    const Normalized normalized = normalize(criteria);
    if (m_kind != Kind::Keyed)
        findByRows(normalized);
    else if (!findByKey(normalized))
        findByQuery(normalized);
}

/// `Key = n` alone needs no query; false if the criterion is another.
bool RecordsetData::findByKey(const Normalized& criteria) {
    const QString& name = translation().dynaset->keyColumn;
    const QStringView key = criteria.key;
    if (criteria.literals.size() != 1 || (keys().count() == 0 && !isPart()))
        return false;
    QStringView left = key.left(key.indexOf(u'=')).trimmed();
    const QStringView right = key.mid(key.indexOf(u'=') + 1).trimmed();
    if (!key.contains(u'=') || right.size() != 2 || right[0] != u'?' ||
        isTextMark(right[1].unicode()) !=
            (keyType() == ColumnType::Text || keyType() == ColumnType::Memo))
        return false;
    if (left.startsWith(u'[') && left.endsWith(u']'))
        left = left.mid(1, left.size() - 2);
    if (left.compare(name, Qt::CaseInsensitive) != 0)
        return false;
    const Value& wanted = criteria.literals.front();
    const int place = keys().find(wanted);
    if (place < 0 && isPart()) { // not among those held; perhaps another station has just added it
        m_noMatch = !readAround(wanted, true);
        return true;
    }
    if (place < 0 || (place == m_position && m_removed)) {
        m_noMatch = true;
        return true;
    }
    const int position = m_position;
    const Value before = position >= 0 && position < stored() ? keys().at(position) : Value();
    found(place);
    if (!readCurrent()) { // another station has deleted it
        drop(m_position);
        goTo(before.isNull() ? position : keys().find(before));
        m_noMatch = true;
    }
    return true;
}

bool RecordsetData::findByQuery(const Normalized& criteria) {
    const StatementPtr finder = m_connection.finder(m_select, criteria);
    std::vector<Value> literals = m_select.literals;
    literals.insert(literals.end(), criteria.literals.begin(), criteria.literals.end());
    // The first of them is in the set but for rows that were added since.
    constexpr int few = 20;
    for (const int limit : {few, 0}) {
        const Arguments arguments = m_connection.argumentsOf(*finder, literals);
        Rows rows;
        const Outcome outcome =
            m_connection.run(limit > 0 ? finder->firstRow : finder->whole, finder->translation.sql,
                             Engine::Access::Reads, arguments, &rows, limit);
        int first = -1;
        for (int row = 0; row < rows.count(); ++row) {
            const Value key = valueOf(rows.cell(row, 0), keyType());
            const int place = keys().find(key);
            if (place < 0 && isPart() && readAround(key, true)) {
                m_noMatch = false;
                return true;
            }
            if (place < 0 || (place == m_position && m_removed))
                continue;
            first = first < 0 ? place : std::min(first, place);
            if (translation().sorted.empty()) // the engine has them in their order
                break;
        }
        if (first >= 0) {
            found(first);
            return true;
        }
        if (outcome.complete)
            break;
    }
    m_noMatch = true;
    return false;
}

bool RecordsetData::findByRows(const Normalized& criteria) {
    const Criteria test(criteria);
    std::vector<Cell> cells;
    for (int row = 0; row < m_rows.count(); ++row) {
        if (row == m_position && m_removed)
            continue;
        m_rows.read(row, cells);
        const bool matches = test.matches([&](const QString& name) {
            const auto place = static_cast<std::size_t>(columnNamed(name));
            return valueOf(cells[place], translation().columns[place].type);
        });
        if (matches) {
            found(row);
            return true;
        }
    }
    m_noMatch = true;
    return false;
}

} // namespace jet
