#include "platform/jet/RecordsetData.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

/// A default as the schema tells it: a literal of the dialect or of the engine.
Value defaultOf(const Column& column) {
    QString text = column.defaultValue;
    if (text.isEmpty() || text.compare(QStringView(u"null"), Qt::CaseInsensitive) == 0)
        return column.type == ColumnType::YesNo ? Value(false) : Value();
    if (text.startsWith(u'\'') && text.endsWith(u'\''))
        text = text.mid(1, text.size() - 2).replace(u"''"_s, u"'"_s);
    try {
        return storedValue(text, column);
    } catch (const Error&) { // computed by the engine when the row is written
        return {};
    }
}

} // namespace

Value RecordsetData::field(int index) {
    if (index < 0 || index >= columnCount())
        throw Error(errors::itemNotFound, u"Item not found in this collection."_s);
    if (m_editing == Editing::No)
        return currentField(index);
    const ResultColumn& column = translation().columns[static_cast<std::size_t>(index)];
    if (const Assignment* assignment = assigned(column.name))
        return assignment->value;
    if (m_editing == Editing::Changed)
        return currentField(index);
    const Column* stored = m_edited->table.column(column.name);
    return stored != nullptr ? defaultOf(*stored) : Value();
}

const RecordsetData::Assignment* RecordsetData::assigned(const QString& column) const {
    for (const Assignment& assignment : m_edited->assignments)
        if (assignment.column->name.compare(column, Qt::CaseInsensitive) == 0)
            return &assignment;
    return nullptr;
}

void RecordsetData::addNew() {
    m_edited = std::make_unique<Edited>(Edited{baseTable(), {}, {}});
    m_editing = Editing::Added;
}

void RecordsetData::edit() {
    const Table& table = baseTable();
    needCurrent();
    m_editing = Editing::No;
    // What was read within this transaction, and not written since, is as it is stored.
    const bool isRead =
        m_readIn != 0 && m_readIn == m_connection.transaction() && heldStand(m_position);
    if (m_kind == Kind::Keyed && !isRead ? !fetch() : !readCurrent())
        throw rowDeletedError();
    m_edited = std::make_unique<Edited>(Edited{table, keyAt(m_position), {}});
    m_editing = Editing::Changed;
}

const Column& RecordsetData::editedColumn(QStringView name) const {
    const ResultColumn& shown = translation().columns[static_cast<std::size_t>(columnNamed(name))];
    const Column* column = m_edited->table.column(shown.name);
    if (column == nullptr)
        throw Error(errors::notUpdatable,
                    u"Cannot update '%1': it belongs to another table."_s.arg(name));
    return *column;
}

void RecordsetData::set(QStringView field, const Value& value) {
    if (m_editing == Editing::No)
        throw Error(errors::needsEdit, u"Update or CancelUpdate without AddNew or Edit."_s);
    const Column& column = editedColumn(field);
    Value stored = storedValue(value, column);
    for (Assignment& assignment : m_edited->assignments) {
        if (assignment.column == &column) {
            assignment.value = std::move(stored);
            return;
        }
    }
    m_edited->assignments.push_back({&column, std::move(stored)});
}

void RecordsetData::update() {
    switch (m_editing) {
    case Editing::No:
        throw Error(errors::needsEdit, u"Update or CancelUpdate without AddNew or Edit."_s);
    case Editing::Added:
        insertRow();
        break;
    case Editing::Changed:
        updateRow();
        break;
    }
    m_editing = Editing::No;
}

void RecordsetData::insertRow() {
    QString names = u"+"_s + m_edited->table.name;
    for (const Assignment& assignment : m_edited->assignments)
        names += u'\t' + assignment.column->name;
    const QString& keyColumn = translation().dynaset->keyColumn;
    const Dialect& dialect = m_connection.dialect();
    const StatementPtr statement = m_connection.generated(names, [&] {
        QByteArrayList columns, values;
        for (const Assignment& assignment : m_edited->assignments) {
            columns << dialect.quoted(assignment.column->name);
            values << dialect.parameter(static_cast<int>(columns.size()));
        }
        return "INSERT INTO " + dialect.quoted(m_edited->table.name) +
               (columns.isEmpty()
                    ? QByteArray(" DEFAULT VALUES")
                    : " (" + columns.join(", ") + ") VALUES (" + values.join(", ") + ')') +
               dialect.returning(keyColumn);
    });
    Arguments arguments = m_connection.newArguments();
    for (const Assignment& assignment : m_edited->assignments)
        arguments.add(assignment.value);
    Value key = m_connection.insert(*statement, arguments, m_edited->table);
    // A key that isn't counted is the one that was given.
    if (const Column* column = m_edited->table.key();
        column != nullptr && column->type != ColumnType::Counter) {
        const Assignment* given = assigned(column->name);
        key = given != nullptr ? given->value : Value();
    }
    m_lastAddedKey = key;
    if (m_kind == Kind::Keyed)
        holdAdded(key);
}

/// The new row stands at the end of the set, or where its key puts it.
void RecordsetData::holdAdded(const Value& key) {
    m_rowsStand = false;
    if (!isPart()) {
        if (m_keysRead)
            m_keys.append(key);
        else
            m_added.push_back(key);
        return;
    }
    m_added.push_back(key);
    if (m_part.total >= 0)
        ++m_part.total;
    const int place = m_keys.below(key.toLong());
    if (m_unread || (place == stored() && !m_part.toLast) || (place == 0 && !m_part.toFirst))
        return;
    m_keys.insert(place, key.toLong());
    m_rows.clear();
    if (place <= m_position)
        ++m_position;
}

void RecordsetData::writeOne(CachedStatement& statement, const Arguments& arguments) {
    try {
        m_connection.writeOne(statement, arguments);
    } catch (const Error& error) {
        if (error.number() == errors::rowDeleted) {
            m_editing = Editing::No;
            m_current = Current::Gone;
        }
        throw;
    }
}

void RecordsetData::updateRow() {
    if (m_edited->assignments.empty())
        return;
    QString names = u"="_s + m_edited->table.name;
    for (const Assignment& assignment : m_edited->assignments)
        names += u'\t' + assignment.column->name;
    const QString& keyColumn = translation().dynaset->keyColumn;
    const Dialect& dialect = m_connection.dialect();
    const StatementPtr statement = m_connection.generated(names, [&] {
        QByteArray sql;
        int number = 0;
        for (const Assignment& assignment : m_edited->assignments)
            sql += (sql.isEmpty() ? "" : ", ") + dialect.quoted(assignment.column->name) + " = " +
                   dialect.parameter(++number);
        return "UPDATE " + dialect.quoted(m_edited->table.name) + " SET " + sql + " WHERE " +
               dialect.quoted(keyColumn) + " = " + dialect.parameter(number + 1);
    });
    Arguments arguments = m_connection.newArguments();
    for (const Assignment& assignment : m_edited->assignments)
        arguments.add(assignment.value);
    arguments.add(m_edited->key);
    writeOne(*statement, arguments);

    if (m_kind == Kind::Keyed) {
        m_current = Current::Unread;
        m_rowsStand = false;
        const Column* key = m_edited->table.key();
        if (const Assignment* given = key != nullptr ? assigned(key->name) : nullptr)
            replaceKey(given->value);
        return;
    }
    // All rows of the join that show the base row.
    for (int row = 0; row < m_rows.count(); ++row) {
        if (!(keyAt(row) == m_edited->key))
            continue;
        auto& changed = m_changed[row];
        for (const Assignment& assignment : m_edited->assignments) {
            const int column = columnNamed(assignment.column->name);
            changed.emplace(changed.begin(), column, assignment.value);
        }
    }
}

void RecordsetData::replaceKey(const Value& key) {
    keys().replace(m_position, key);
    if (!isPart())
        return;
    m_keys.clear();
    m_keys.append(key);
    m_rows.clear();
    m_part = {false, false, -1, -1};
    m_position = 0;
}

void RecordsetData::cancelUpdate() {
    m_editing = Editing::No;
}

void RecordsetData::remove() {
    const Table& table = baseTable();
    needCurrent();
    m_editing = Editing::No;
    const QString& keyColumn = translation().dynaset->keyColumn;
    const Dialect& dialect = m_connection.dialect();
    const StatementPtr statement = m_connection.generated(u"-"_s + table.name, [&] {
        return "DELETE FROM " + dialect.quoted(table.name) + " WHERE " + dialect.quoted(keyColumn) +
               " = " + dialect.parameter(1);
    });
    Arguments arguments = m_connection.newArguments();
    arguments.add(keyAt(m_position));
    writeOne(*statement, arguments);
    m_removed = true;
    m_rowsStand = false;
}

} // namespace jet
