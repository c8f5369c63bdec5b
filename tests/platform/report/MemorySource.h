#pragma once

#include "platform/report/ReportError.h"
#include "platform/report/RowSource.h"
#include "platform/values/Literals.h"

#include <QHash>
#include <QStringList>

/// Rows in memory in the place of a database: each query gets the rows of the table that its text
/// names first.
class MemorySource : public report::RowSource {
  public:
    struct Table {
        QStringList names;
        std::vector<std::vector<jet::Value>> rows;
        std::vector<jet::ColumnType> types = {}; ///< of the columns, for formulas
    };

    void add(const QString& table, Table content) { m_tables.insert(table, std::move(content)); }
    /// The queries so far.
    QStringList asked;

    std::unique_ptr<report::Rows> open(const QString& sql) override {
        asked.append(sql);
        const Table* found = nullptr;
        qsizetype place = sql.size();
        for (auto table = m_tables.cbegin(); table != m_tables.cend(); ++table) {
            const auto at = sql.indexOf(u"FROM "_s + table.key(), 0, Qt::CaseInsensitive);
            if (at >= 0 && at < place) {
                place = at;
                found = &*table;
            }
        }
        if (!found)
            throw report::ReportError(report::codes::databaseError, sql);
        return std::make_unique<MemoryRows>(*found);
    }

    std::optional<jet::ColumnType> columnType(const QString& table,
                                              const QString& column) const override {
        for (auto known = m_tables.cbegin(); known != m_tables.cend(); ++known) {
            const auto at = indexOf(known->names, column);
            if (known.key().compare(table, Qt::CaseInsensitive) == 0 && at >= 0)
                return known->types.empty() ? jet::ColumnType::Text
                                            : known->types[static_cast<std::size_t>(at)];
        }
        return std::nullopt;
    }

  private:
    static qsizetype indexOf(const QStringList& names, const QString& name) {
        for (qsizetype index = 0; index < names.size(); ++index) {
            if (names[index].compare(name, Qt::CaseInsensitive) == 0)
                return index;
        }
        return -1;
    }

    class MemoryRows : public report::Rows {
      public:
        explicit MemoryRows(const Table& table) : m_table(table) {}
        QStringList fieldNames() const override { return m_table.names; }
        bool next(std::vector<jet::Value>& row) override {
            if (m_next == m_table.rows.size())
                return false;
            row = m_table.rows[m_next++];
            return true;
        }

      private:
        const Table& m_table;
        std::size_t m_next = 0;
    };

    QHash<QString, Table> m_tables;
};
