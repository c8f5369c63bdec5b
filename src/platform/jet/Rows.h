#pragma once

#include "platform/jet/Schema.h"
#include "platform/jet/Value.h"

#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace jet {

/// One cell as the engine delivered it; texts point into the rows that hold them.
struct Cell {
    enum class Kind : unsigned char { Null, Integer, Real, Text };
    Kind kind = Kind::Null;
    int size = 0; ///< bytes of a text
    union {
        qint64 integer = 0;
        double real;
        const char* text; ///< UTF-8, not terminated
    };

    bool isNull() const { return kind == Kind::Null; }
};

/// Rows of a result, packed: a row takes about the bytes of its texts. A row never moves once it is
/// finished, so cells stay good until clear().
class Rows {
  public:
    Rows() = default;
    Rows(Rows&&) noexcept = default;
    Rows& operator=(Rows&&) noexcept = default;

    void clear();
    int count() const { return static_cast<int>(m_rows.size()); }
    bool isEmpty() const { return m_rows.empty(); }

    void beginRow();
    void addNull() { *room(1) = static_cast<char>(Tag::Null); }
    void addInteger(qint64 value);
    void addReal(double value);
    void addText(const char* text, int size);
    void endRow();

    /// The cells of a row, in order.
    void read(int row, std::vector<Cell>& cells) const;
    /// A single cell; walks over those before it.
    Cell cell(int row, int column) const;
    /// Keeps these rows, in this order.
    void pick(const std::vector<int>& rows);
    void erase(int row) { m_rows.erase(m_rows.begin() + row); }

  private:
    enum class Tag : char { Null, Int32, Int64, Real, ShortText, LongText, End };

    char* room(std::size_t bytes);
    static Cell next(const char*& at);

    std::vector<std::unique_ptr<char[]>> m_chunks;
    std::size_t m_chunkSize = 0;
    char* m_at = nullptr;
    char* m_end = nullptr;
    char* m_row = nullptr; ///< start of the row being written
    std::vector<const char*> m_rows;
};

/// A cell as a value of its column's type; by its own kind where the type isn't known.
Value valueOf(const Cell& cell, std::optional<ColumnType> type);

} // namespace jet
