#include "platform/jet/Rows.h"

#include "platform/jet/Types.h"
#include "platform/values/Numbers.h"

#include <charconv>
#include <cmath>

namespace jet {

namespace {

constexpr std::size_t smallestChunk = 512;
constexpr std::size_t largestChunk = std::size_t{1} << 20;

template <class T>
T load(const char*& at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    at += sizeof value;
    return value;
}

values::Currency money(double value) {
    const double units = value * 10000.0;
    const double whole = std::nearbyint(units);
    if (std::abs(units) < 1e13 && std::abs(units - whole) < 1e-3)
        return values::Currency::fromTenThousandths(static_cast<qint64>(whole));
    return values::Currency::fromDouble(value);
}

QString textOf(const Cell& cell) {
    return QString::fromUtf8(cell.text, cell.size);
}

double realOf(const Cell& cell) {
    if (cell.kind == Cell::Kind::Integer)
        return static_cast<double>(cell.integer);
    if (cell.kind == Cell::Kind::Real)
        return cell.real;
    return QByteArrayView(cell.text, cell.size).toDouble();
}

int digits(const char* at, int count) {
    int value = 0;
    for (int i = 0; i < count; ++i) {
        if (at[i] < '0' || at[i] > '9')
            return -1;
        value = value * 10 + (at[i] - '0');
    }
    return value;
}

/// "yyyy-mm-dd hh:mm:ss" as both engines give it; anything else is read as a person's text, and
/// stays a text if it is no moment.
Value momentOf(const Cell& cell) {
    const char* t = cell.text;
    if (cell.size == 19 && t[4] == '-' && t[7] == '-' && t[13] == ':' && t[16] == ':') {
        const QDate date(digits(t, 4), digits(t + 5, 2), digits(t + 8, 2));
        const QTime time(digits(t + 11, 2), digits(t + 14, 2), digits(t + 17, 2));
        if (date.isValid() && time.isValid())
            return QDateTime(date, time, Qt::UTC);
    }
    const QString text = textOf(cell);
    if (const auto moment = momentFromText(text))
        return *moment;
    return text;
}

Value wholeOf(const Cell& cell) {
    if (cell.kind == Cell::Kind::Integer)
        return cell.integer;
    if (cell.kind == Cell::Kind::Text) {
        qint64 value = 0;
        const auto end = cell.text + cell.size;
        const auto [at, error] = std::from_chars(cell.text, end, value);
        if (error == std::errc() && at == end)
            return value;
        bool isNumber = false;
        const double real = QByteArrayView(cell.text, cell.size).toDouble(&isNumber);
        return isNumber ? Value(real) : Value(textOf(cell));
    }
    const double real = cell.real;
    return std::abs(real) < 9e15 && std::nearbyint(real) == real ? Value(static_cast<qint64>(real))
                                                                 : Value(real);
}

} // namespace

void Rows::clear() {
    m_rows.clear();
    if (m_chunks.size() > 1)
        m_chunks.erase(m_chunks.begin(), m_chunks.end() - 1);
    if (!m_chunks.empty()) {
        m_at = m_chunks.front().get();
        m_end = m_at + m_chunkSize;
    }
}

char* Rows::room(std::size_t bytes) {
    if (static_cast<std::size_t>(m_end - m_at) < bytes) {
        const auto begun = static_cast<std::size_t>(m_at - m_row);
        m_chunkSize = m_chunkSize == 0 ? smallestChunk : std::min(m_chunkSize * 4, largestChunk);
        m_chunkSize = std::max(m_chunkSize, (begun + bytes) * 2);
        auto chunk = std::unique_ptr<char[]>(new char[m_chunkSize]);
        if (begun > 0)
            std::memcpy(chunk.get(), m_row, begun);
        m_row = chunk.get();
        m_at = m_row + begun;
        m_end = m_row + m_chunkSize;
        m_chunks.push_back(std::move(chunk));
    }
    char* place = m_at;
    m_at += bytes;
    return place;
}

void Rows::beginRow() {
    m_row = m_at;
}

void Rows::endRow() {
    *room(1) = static_cast<char>(Tag::End);
    if (m_rows.capacity() == 0)
        m_rows.reserve(8);
    m_rows.push_back(m_row);
}

void Rows::addInteger(qint64 value) {
    const auto narrow = static_cast<qint32>(value);
    if (narrow == value) {
        char* at = room(1 + sizeof narrow);
        *at = static_cast<char>(Tag::Int32);
        std::memcpy(at + 1, &narrow, sizeof narrow);
    } else {
        char* at = room(1 + sizeof value);
        *at = static_cast<char>(Tag::Int64);
        std::memcpy(at + 1, &value, sizeof value);
    }
}

void Rows::addReal(double value) {
    char* at = room(1 + sizeof value);
    *at = static_cast<char>(Tag::Real);
    std::memcpy(at + 1, &value, sizeof value);
}

void Rows::addText(const char* text, int size) {
    const auto bytes = static_cast<std::size_t>(size);
    char* at;
    if (size < 256) {
        at = room(2 + bytes);
        at[0] = static_cast<char>(Tag::ShortText);
        at[1] = static_cast<char>(size);
        at += 2;
    } else {
        at = room(1 + sizeof size + bytes);
        at[0] = static_cast<char>(Tag::LongText);
        std::memcpy(at + 1, &size, sizeof size);
        at += 1 + sizeof size;
    }
    if (bytes > 0)
        std::memcpy(at, text, bytes);
}

Cell Rows::next(const char*& at) {
    Cell cell;
    switch (static_cast<Tag>(*at++)) {
    case Tag::Null:
    case Tag::End:
        break;
    case Tag::Int32:
        cell.kind = Cell::Kind::Integer;
        cell.integer = load<qint32>(at);
        break;
    case Tag::Int64:
        cell.kind = Cell::Kind::Integer;
        cell.integer = load<qint64>(at);
        break;
    case Tag::Real:
        cell.kind = Cell::Kind::Real;
        cell.real = load<double>(at);
        break;
    case Tag::ShortText:
        cell.kind = Cell::Kind::Text;
        cell.size = load<unsigned char>(at);
        cell.text = at;
        at += cell.size;
        break;
    case Tag::LongText:
        cell.kind = Cell::Kind::Text;
        cell.size = load<int>(at);
        cell.text = at;
        at += cell.size;
        break;
    }
    return cell;
}

void Rows::read(int row, std::vector<Cell>& cells) const {
    cells.clear();
    if (cells.capacity() == 0)
        cells.reserve(32);
    const char* at = m_rows[static_cast<std::size_t>(row)];
    while (static_cast<Tag>(*at) != Tag::End)
        cells.push_back(next(at));
}

void Rows::pick(const std::vector<int>& rows) {
    std::vector<const char*> picked;
    picked.reserve(rows.size());
    for (const int row : rows)
        picked.push_back(m_rows[static_cast<std::size_t>(row)]);
    m_rows = std::move(picked);
}

Cell Rows::cell(int row, int column) const {
    const char* at = m_rows[static_cast<std::size_t>(row)];
    while (column-- > 0)
        next(at);
    return next(at);
}

Value valueOf(const Cell& cell, std::optional<ColumnType> type) {
    if (cell.isNull())
        return {};
    if (!type) {
        switch (cell.kind) {
        case Cell::Kind::Integer:
            return cell.integer;
        case Cell::Kind::Real:
            return cell.real;
        default:
            return textOf(cell);
        }
    }
    switch (*type) {
    case ColumnType::Counter:
    case ColumnType::Long:
    case ColumnType::Integer:
        return wholeOf(cell);
    case ColumnType::Double:
        return realOf(cell);
    case ColumnType::Currency:
        if (cell.kind == Cell::Kind::Integer)
            return values::Currency::fromInteger(cell.integer);
        return money(realOf(cell));
    case ColumnType::YesNo:
        if (cell.kind == Cell::Kind::Text && (*cell.text == 't' || *cell.text == 'f'))
            return *cell.text == 't';
        return realOf(cell) != 0;
    case ColumnType::DateTime:
        if (cell.kind == Cell::Kind::Text)
            return momentOf(cell);
        break;
    case ColumnType::Text:
    case ColumnType::Memo:
        break;
    }
    if (cell.kind == Cell::Kind::Text)
        return textOf(cell);
    if (cell.kind == Cell::Kind::Integer)
        return QString::number(cell.integer);
    return values::numberText(cell.real);
}

} // namespace jet
