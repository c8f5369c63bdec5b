#pragma once

#include "platform/report/RowSource.h"

#include <QByteArray>
#include <QStringList>

#include <functional>

namespace desk {

/// A column of a printed list.
struct PrintedColumn {
    QString title;
    int width = 12; ///< in characters; they share the page by it
    bool right = false;
    QString total; ///< below the last row; empty for none
};

/// The report file that prints such columns, on paper laid across.
QByteArray listReport(const QString& title, const QString& below,
                      const std::vector<PrintedColumn>& columns);

/// What that file reads: texts by row and column. Everything else comes from the database.
class ListRows : public report::RowSource {
  public:
    using Cell = std::function<QString(int row, int column)>;
    ListRows(jet::Database& database, int rows, int columns, Cell cell)
        : m_database(database), m_rows(rows), m_columns(columns), m_cell(std::move(cell)) {}

    std::unique_ptr<report::Rows> open(const QString& sql) override;
    std::optional<jet::ColumnType> columnType(const QString& table,
                                              const QString& column) const override;

  private:
    report::DatabaseRowSource m_database;
    int m_rows, m_columns;
    Cell m_cell;
};

} // namespace desk
