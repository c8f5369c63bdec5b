#include "platform/report/RowSource.h"

#include "platform/jet/Database.h"
#include "platform/report/ReportError.h"
#include "platform/values/Literals.h"

namespace report {

namespace {

class DatabaseRows : public Rows {
  public:
    explicit DatabaseRows(jet::Recordset rows)
        : m_rows(std::move(rows)), m_names(m_rows.fieldNames()), m_left(m_rows.recordCount()) {}

    QStringList fieldNames() const override { return m_names; }

    bool next(std::vector<jet::Value>& row) override {
        if (m_left == 0)
            return false;
        try {
            if (m_started)
                m_rows.moveNext();
            m_started = true;
            --m_left;
            row.resize(static_cast<std::size_t>(m_names.size()));
            for (qsizetype index = 0; index < m_names.size(); ++index)
                row[static_cast<std::size_t>(index)] = m_rows.field(static_cast<int>(index));
        } catch (const jet::Error& error) {
            throw ReportError(codes::databaseError, error.text());
        }
        return true;
    }

  private:
    jet::Recordset m_rows;
    QStringList m_names;
    int m_left;
    bool m_started = false;
};

} // namespace

void DatabaseRowSource::expect(const QStringList& queries) {
    m_database.expect({queries.cbegin(), queries.cend()});
}

std::unique_ptr<Rows> DatabaseRowSource::open(const QString& sql) {
    try {
        return std::make_unique<DatabaseRows>(
            m_database.openRecordset(sql, jet::RecordsetType::Snapshot));
    } catch (const jet::Error& error) {
        throw ReportError(codes::databaseError,
                          u"%1 (%2) in: %3"_s.arg(error.text()).arg(error.number()).arg(sql));
    }
}

std::optional<jet::ColumnType> DatabaseRowSource::columnType(const QString& table,
                                                             const QString& column) const {
    const auto* found = m_database.schema().table(table);
    const auto* columnFound = found ? found->column(column) : nullptr;
    if (!columnFound)
        return std::nullopt;
    return columnFound->type;
}

} // namespace report
