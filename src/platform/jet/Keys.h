#pragma once

#include "platform/jet/Rows.h"
#include "platform/jet/Value.h"

#include <vector>

namespace jet {

/// The keys of a set's rows in their order: plain numbers where they are such, else values.
class Keys {
  public:
    void clear();
    /// Takes a column of rows as the keys.
    void take(const Rows& rows, int column, std::optional<ColumnType> type);
    void append(const Value& key);
    void replace(int position, const Value& key);
    void erase(int position);
    /// Of plain numbers in their order: how many are below one.
    int below(qint64 number) const;
    void insert(int position, qint64 number);
    /// Lets go all from a place on.
    void cut(int from);
    /// Puts others, in descending order, in the place of the first ones.
    void replaceFirst(int count, const Rows& rows, int column);
    int count() const;
    Value at(int position) const;
    /// Place of a key; -1 if the set doesn't hold it.
    int find(const Value& key) const;

  private:
    void widen();

    bool m_whole = true;
    std::vector<qint64> m_numbers;
    std::vector<Value> m_values;
};

} // namespace jet
