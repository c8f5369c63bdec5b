#include "platform/jet/Keys.h"

namespace jet {

void Keys::clear() {
    m_whole = true;
    m_numbers.clear();
    m_values.clear();
}

void Keys::take(const Rows& rows, int column, std::optional<ColumnType> type) {
    clear();
    m_numbers.reserve(static_cast<std::size_t>(rows.count()));
    for (int row = 0; row < rows.count(); ++row) {
        const Cell cell = rows.cell(row, column);
        if (m_whole && cell.kind == Cell::Kind::Integer)
            m_numbers.push_back(cell.integer);
        else
            append(valueOf(cell, type));
    }
}

void Keys::widen() {
    m_values.assign(m_numbers.begin(), m_numbers.end());
    m_numbers.clear();
    m_whole = false;
}

void Keys::append(const Value& key) {
    if (m_whole && key.kind() == Value::Kind::Integer) {
        m_numbers.push_back(key.toInteger());
        return;
    }
    if (m_whole)
        widen();
    m_values.push_back(key);
}

void Keys::replace(int position, const Value& key) {
    const auto place = static_cast<std::size_t>(position);
    if (m_whole && key.kind() == Value::Kind::Integer) {
        m_numbers[place] = key.toInteger();
        return;
    }
    if (m_whole)
        widen();
    m_values[place] = key;
}

void Keys::erase(int position) {
    if (m_whole)
        m_numbers.erase(m_numbers.begin() + position);
    else
        m_values.erase(m_values.begin() + position);
}

int Keys::below(qint64 number) const {
    return static_cast<int>(std::lower_bound(m_numbers.begin(), m_numbers.end(), number) -
                            m_numbers.begin());
}

void Keys::insert(int position, qint64 number) {
    m_numbers.insert(m_numbers.begin() + position, number);
}

void Keys::cut(int from) {
    m_numbers.erase(m_numbers.begin() + from, m_numbers.end());
}

void Keys::replaceFirst(int count, const Rows& rows, int column) {
    std::vector<qint64> numbers;
    for (int row = rows.count() - 1; row >= 0; --row)
        numbers.push_back(rows.cell(row, column).integer);
    numbers.insert(numbers.end(), m_numbers.begin() + count, m_numbers.end());
    m_numbers = std::move(numbers);
}

int Keys::count() const {
    return static_cast<int>(m_whole ? m_numbers.size() : m_values.size());
}

Value Keys::at(int position) const {
    const auto place = static_cast<std::size_t>(position);
    return m_whole ? Value(m_numbers[place]) : m_values[place];
}

int Keys::find(const Value& key) const {
    if (!m_whole) {
        const auto found = std::find(m_values.begin(), m_values.end(), key);
        return found == m_values.end() ? -1 : static_cast<int>(found - m_values.begin());
    }
    const double number = key.toDouble();
    if (key.isNull() || number != static_cast<double>(static_cast<qint64>(number)))
        return -1;
    const auto found = std::find(m_numbers.begin(), m_numbers.end(), static_cast<qint64>(number));
    return found == m_numbers.end() ? -1 : static_cast<int>(found - m_numbers.begin());
}

} // namespace jet
