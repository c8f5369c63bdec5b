#pragma once

#include "core/journal/JournalSearch.h"
#include "platform/report/RowSource.h"

namespace core {

/// Lines of the journal as the rows of a report: what it reads from `JournalLines` are these, with
/// the fields At, Who, Rows, Record, What, Field, Before and After, and Heading; everything else it
/// reads from the database.
class JournalRows : public report::RowSource {
  public:
    JournalRows(jet::Database& database, const std::vector<JournalLine>& lines, QString heading)
        : m_database(database), m_lines(lines), m_heading(std::move(heading)) {}

    std::unique_ptr<report::Rows> open(const QString& sql) override;
    std::optional<jet::ColumnType> columnType(const QString& table,
                                              const QString& column) const override;

  private:
    report::DatabaseRowSource m_database;
    const std::vector<JournalLine>& m_lines;
    QString m_heading;
};

} // namespace core
