#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace jet {

enum class ColumnType { Counter, Long, Integer, Double, Currency, Text, Memo, YesNo, DateTime };

struct Column {
    QString name; ///< as created; looked up without regard to case
    ColumnType type = ColumnType::Text;
    int width = 0; ///< characters of a TEXT(n); 0 where unlimited
    bool primaryKey = false;
    QString defaultValue; ///< literal of the dialect, empty for none
};

struct Index {
    QString name;
    QStringList columns;
    bool unique = false;
};

struct Table {
    QString name;
    std::vector<Column> columns;
    std::vector<Index> indexes;

    /// Column by name without regard to case; nullptr if there is none.
    const Column* column(QStringView columnName) const;
    /// The COUNTER or single-column primary key; nullptr if there is none.
    const Column* key() const;
};

/// The tables of a database, as the statements are understood by them.
class Schema {
  public:
    void add(Table table);
    const Table* table(QStringView name) const;
    /// In order of creation where the engine tells it, else by name.
    const std::vector<Table>& tables() const { return m_tables; }
    void clear();

  private:
    std::vector<Table> m_tables;
    QHash<QString, int> m_byName; ///< case-folded name to index
};

} // namespace jet
