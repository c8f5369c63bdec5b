#pragma once

#include <QDate>
#include <QString>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rows {

/// What a column holds. Hours and Money are numbers with two decimals, Yes/No is 1 or 0, a date is
/// the number of its day.
enum class Kind { Text, Number, Hours, Money, Date, YesNo };

/// Texts, one after the other.
class Texts {
  public:
    std::uint32_t count() const { return static_cast<std::uint32_t>(m_ends.size()); }
    std::string_view at(std::uint32_t index) const {
        const std::uint32_t begin = index == 0 ? 0 : m_ends[index - 1];
        return std::string_view(m_all).substr(begin, m_ends[index] - begin);
    }
    void add(std::string_view text) {
        m_all.append(text);
        m_ends.push_back(static_cast<std::uint32_t>(m_all.size()));
    }
    /// The same texts as they are searched.
    Texts folded() const;

  private:
    std::string m_all;
    std::vector<std::uint32_t> m_ends;
};

/// Very many rows, packed by columns: each row is told by a key, and the keys go downwards. A
/// column of texts has its own text for each row, or the number of one of a few texts.
class Store {
  public:
    explicit Store(std::vector<Kind> kinds);

    int count() const { return static_cast<int>(m_keys.size()); }
    int columns() const { return static_cast<int>(m_columns.size()); }
    Kind kind(int column) const { return at(column).kind; }
    std::int64_t key(int row) const { return m_keys[static_cast<std::size_t>(row)]; }
    /// Row of a key; -1 if none.
    int rowOf(std::int64_t key) const;

    // Filling: a row is begun, and gets a value for each of its columns that isn't given later.

    void beginRow(std::int64_t key) { m_keys.push_back(key); }
    void addText(int column, std::string_view text) { at(column).texts.add(text); }
    void addNumber(int column, double number) { at(column).numbers.push_back(number); }
    void addEmpty(int column);
    /// A column whose rows name one of these texts by addChoice(): none by -1.
    void setChoices(int column, Texts choices);
    void addChoice(int column, int choice);
    /// Gives a column that was left out, empty but for set() and choose().
    void fill(int column);
    void set(int column, int row, double number);
    void choose(int column, int row, int choice);

    // Reading.

    /// Nothing is NaN.
    double number(int column, int row) const {
        return at(column).numbers[static_cast<std::size_t>(row)];
    }
    bool isEmpty(int column, int row) const;
    std::string_view text(int column, int row) const;
    /// As it is shown: m/d/yyyy, two decimals, "Yes". Money has no symbol.
    QString shown(int column, int row) const;

    /// The texts of a column as they are searched, and which of them is a row's. Made when they
    /// are asked for first, for numbers and dates of what is shown. Not from two threads at a time.
    const Texts& searched(int column) const;
    std::uint32_t searchedIndex(int column, int row) const;

  private:
    struct Column {
        Kind kind = Kind::Text;
        bool chosen = false; ///< rows name one of `texts`, from 1 on
        std::vector<double> numbers;
        std::vector<std::uint32_t> choices;
        Texts texts;
        mutable std::unique_ptr<Texts> searched;
    };
    Column& at(int column) { return m_columns[static_cast<std::size_t>(column)]; }
    const Column& at(int column) const { return m_columns[static_cast<std::size_t>(column)]; }

    std::vector<std::int64_t> m_keys;
    std::vector<Column> m_columns;
};

} // namespace rows
