#include "platform/jet/Schema.h"

namespace jet {

const Column* Table::column(QStringView columnName) const {
    for (const Column& column : columns)
        if (column.name.size() == columnName.size() &&
            column.name.compare(columnName, Qt::CaseInsensitive) == 0)
            return &column;
    return nullptr;
}

const Column* Table::key() const {
    const Column* key = nullptr;
    for (const Column& column : columns) {
        if (column.type == ColumnType::Counter)
            return &column;
        if (!column.primaryKey)
            continue;
        if (key != nullptr)
            return nullptr;
        key = &column;
    }
    return key;
}

void Schema::add(Table table) {
    m_byName.insert(table.name.toCaseFolded(), static_cast<int>(m_tables.size()));
    m_tables.push_back(std::move(table));
}

const Table* Schema::table(QStringView name) const {
    const auto found = m_byName.constFind(name.toString().toCaseFolded());
    return found == m_byName.constEnd() ? nullptr : &m_tables[static_cast<std::size_t>(*found)];
}

void Schema::clear() {
    m_tables.clear();
    m_byName.clear();
}

} // namespace jet
