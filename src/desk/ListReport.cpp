#include "desk/ListReport.h"

#include "platform/values/Literals.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace desk {

namespace {

constexpr double pageWidth = 259.4; // millimetres between the margins of a Letter laid across
constexpr double gap = 1.5;
const QString rowsTable = u"ShownRows"_s;

QString columnName(int column) {
    return u"C"_s + QString::number(column);
}

/// Braces in a text that isn't a field of the report.
QString literal(QString text) {
    return text.replace(u'{', u'(').replace(u'}', u')');
}

class Cells : public report::Rows {
  public:
    Cells(int rows, int columns, const ListRows::Cell& cell)
        : m_rows(rows), m_columns(columns), m_cell(cell) {}
    QStringList fieldNames() const override {
        QStringList names;
        for (int column = 0; column < m_columns; ++column)
            names << columnName(column);
        return names;
    }
    bool next(std::vector<jet::Value>& row) override {
        if (m_next == m_rows)
            return false;
        row.clear();
        for (int column = 0; column < m_columns; ++column)
            row.emplace_back(m_cell(m_next, column));
        ++m_next;
        return true;
    }

  private:
    int m_rows, m_columns;
    const ListRows::Cell& m_cell;
    int m_next = 0;
};

class Writer {
  public:
    explicit Writer(QByteArray& to) : xml(&to) {}
    void open(const QString& name, const QList<std::pair<QString, QString>>& attributes = {}) {
        xml.writeStartElement(name);
        for (const auto& [key, value] : attributes)
            xml.writeAttribute(key, value);
    }
    void empty(const QString& name, const QList<std::pair<QString, QString>>& attributes) {
        open(name, attributes);
        xml.writeEndElement();
    }
    void text(double x, double y, double width, const QString& style, bool right,
              const QString& content) {
        open(u"text"_s, {{u"x"_s, QString::number(x, 'f', 2)},
                         {u"y"_s, QString::number(y, 'f', 2)},
                         {u"w"_s, QString::number(width, 'f', 2)},
                         {u"align"_s, right ? u"right"_s : u"left"_s},
                         {u"style"_s, style}});
        xml.writeCharacters(content);
        xml.writeEndElement();
    }
    QXmlStreamWriter xml;
};

} // namespace

QByteArray listReport(const QString& title, const QString& below,
                      const std::vector<PrintedColumn>& columns) {
    double characters = 0;
    for (const PrintedColumn& column : columns)
        characters += column.width;
    std::vector<std::pair<double, double>> places; // left edge and width
    double left = 0;
    for (const PrintedColumn& column : columns) {
        const double width = pageWidth * column.width / std::max(1.0, characters);
        places.emplace_back(left, width - gap);
        left += width;
    }
    QStringList names;
    for (std::size_t i = 0; i < columns.size(); ++i)
        names << rowsTable + u'.' + columnName(static_cast<int>(i));

    QByteArray made;
    Writer out(made);
    out.xml.writeStartDocument();
    out.open(u"report"_s, {{u"title"_s, title}});
    out.empty(u"page"_s, {{u"size"_s, u"Letter"_s},
                          {u"orientation"_s, u"landscape"_s},
                          {u"left"_s, u"10"_s},
                          {u"top"_s, u"10"_s},
                          {u"right"_s, u"10"_s},
                          {u"bottom"_s, u"10"_s}});
    out.empty(u"style"_s, {{u"size"_s, u"8"_s}});
    out.empty(u"style"_s, {{u"name"_s, u"heading"_s}, {u"size"_s, u"8"_s}, {u"bold"_s, u"yes"_s}});
    out.empty(u"style"_s, {{u"name"_s, u"title"_s}, {u"size"_s, u"14"_s}, {u"bold"_s, u"yes"_s}});
    out.empty(u"style"_s, {{u"name"_s, u"row"_s}, {u"size"_s, u"8"_s}});
    out.open(u"query"_s);
    out.xml.writeTextElement(u"select"_s, names.join(u", "_s));
    out.xml.writeTextElement(u"from"_s, rowsTable);
    out.xml.writeEndElement();
    out.open(u"pageHeader"_s);
    out.open(u"band"_s, {{u"height"_s, u"16"_s}});
    out.text(0, 0, 150, u"title"_s, false, literal(title));
    out.text(150, 1.5, pageWidth - 150, u"row"_s, true, literal(below));
    for (std::size_t i = 0; i < columns.size(); ++i)
        out.text(places[i].first, 10, places[i].second, u"heading"_s, columns[i].right,
                 literal(columns[i].title));
    out.empty(u"line"_s, {{u"y"_s, u"15"_s}});
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.open(u"pageFooter"_s);
    out.open(u"band"_s, {{u"height"_s, u"5"_s}});
    out.text(0, 1, 100, u"row"_s, false, u"Printed {printdate:Short Date}"_s);
    out.text(150, 1, pageWidth - 150, u"row"_s, true, u"Page {page} of {pages}"_s);
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.open(u"body"_s);
    out.open(u"detail"_s);
    out.open(u"band"_s, {{u"height"_s, u"4"_s}});
    for (std::size_t i = 0; i < columns.size(); ++i)
        out.text(places[i].first, 0, places[i].second, u"row"_s, columns[i].right,
                 u'{' + columnName(static_cast<int>(i)) + u'}');
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.open(u"footer"_s);
    out.open(u"band"_s, {{u"height"_s, u"7"_s}});
    out.empty(u"line"_s, {{u"y"_s, u"1"_s}});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!columns[i].total.isEmpty())
            out.text(places[i].first, 2, places[i].second, u"heading"_s, columns[i].right,
                     literal(columns[i].total));
    }
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.xml.writeEndElement();
    out.xml.writeEndDocument();
    return made;
}

std::unique_ptr<report::Rows> ListRows::open(const QString& sql) {
    if (sql.contains(rowsTable, Qt::CaseInsensitive))
        return std::make_unique<Cells>(m_rows, m_columns, m_cell);
    return m_database.open(sql);
}

std::optional<jet::ColumnType> ListRows::columnType(const QString& table,
                                                    const QString& column) const {
    if (table.compare(rowsTable, Qt::CaseInsensitive) == 0)
        return jet::ColumnType::Text;
    return m_database.columnType(table, column);
}

} // namespace desk
