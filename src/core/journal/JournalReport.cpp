#include "core/journal/JournalReport.h"

#include "platform/values/Literals.h"

namespace core {

namespace {

class Lines : public report::Rows {
  public:
    Lines(const std::vector<JournalLine>& lines, QString heading)
        : m_lines(lines), m_heading(std::move(heading)) {}

    QStringList fieldNames() const override {
        return {u"At"_s,    u"Who"_s,    u"Rows"_s,  u"Record"_s, u"What"_s,
                u"Field"_s, u"Before"_s, u"After"_s, u"Heading"_s};
    }
    bool next(std::vector<jet::Value>& row) override {
        if (m_next == m_lines.size())
            return false;
        row.clear();
        for (const QString& text : m_lines[m_next])
            row.emplace_back(text);
        row.emplace_back(m_heading);
        ++m_next;
        return true;
    }

  private:
    const std::vector<JournalLine>& m_lines;
    QString m_heading;
    std::size_t m_next = 0;
};

} // namespace

std::unique_ptr<report::Rows> JournalRows::open(const QString& sql) {
    if (sql.contains(u"JournalLines"_s, Qt::CaseInsensitive))
        return std::make_unique<Lines>(m_lines, m_heading);
    return m_database.open(sql);
}

std::optional<jet::ColumnType> JournalRows::columnType(const QString& table,
                                                       const QString& column) const {
    return m_database.columnType(table, column);
}

} // namespace core
