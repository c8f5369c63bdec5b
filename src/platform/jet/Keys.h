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
