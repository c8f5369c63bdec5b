#pragma once

#include "core/MirsaMain.h"
#include "core/records/DocumentLines.h"
#include "core/records/DocumentModule.h"
#include "platform/controls/LineGrid.h"
#include "platform/screen/Layout.h"

#include <memory>

namespace core {

/// Where the lines of a document are stored.
struct LineTable {
    QString table;
    QString documentKey; ///< the column with the document's number
    QString idColumn;    ///< the counter that tells the lines apart
    QString placeColumn; ///< their number from 1
};

/// A document of a header and lines.
template <class Header, class Row>
struct LinedDocument {
    qint64 documentNo = 0;
    Header header;
    std::vector<Row> lines;
};

/// A column of a grid that shows the lines, by the line's column table: what is typed goes into the
/// member; a column that is locked there takes nothing.
template <class Row>
controls::LineColumn<Row> lineColumn(const DocumentColumns<Row>& columns, const QString& name,
                                     controls::GridColumn look) {
    const DocumentColumn& column = columns.column(name);
    controls::LineColumn<Row> made{std::move(look)};
    made.text = [&column](const Row& row) {
        return maskedText(column.get(&row), column.numberMask);
    };
    if (!column.shownOnly) {
        made.take = [&column](Row& row, const QString& typed) {
            column.set(&row, typedValue(typed, column.numberMask));
            return QString();
        };
    }
    return made;
}

/// The module of a document with lines: a member makes its controls, binds the header's columns,
/// makes its grids on the one set of lines, and says its rules. Rows that stay keep their identity
/// over a save.
template <class Header, class Row>
class LinedModule : public DocumentOf<LinedDocument<Header, Row>> {
  public:
    using Doc = LinedDocument<Header, Row>;
    using Base = DocumentOf<Doc>;

    LinedModule(ModuleDescriptor descriptor, const DocumentColumns<Header>& header,
                const DocumentLines<Row>& lines, LineTable table)
        : Base(std::move(descriptor)), m_header(header), m_how(lines), m_table(std::move(table)) {
        this->on(m_lines->touched, [this] { linesChanged(); });
        this->followLines(*m_lines, u"line"_s);
    }

  protected:
    controls::Grid* makeGrid(const QString& name, const QString& spoken,
                             std::vector<controls::LineColumn<Row>> columns) {
        auto* grid = screen::named(new controls::LineGrid<Row>(m_lines, std::move(columns), this),
                                   name, spoken);
        m_grids.push_back(grid);
        return grid;
    }
    /// Lines came, went or changed: sums are to be made anew.
    virtual void linesChanged() {}
    /// Further statements of the transaction that stores the document.
    virtual void alsoStore(qint64 key, const Doc& document) {
        (void)key;
        (void)document;
    }

    void lockFields(bool locked) override {
        Base::lockFields(locked);
        for (controls::Grid* grid : m_grids)
            grid->setLocked(locked);
    }
    void takeRecord(const jet::Recordset* row) override {
        if (row)
            m_header.show(m_header.columns().load(*row));
        else
            m_header.clear();
        m_lines->setRows(row ? storedLines(this->currentKey()) : std::vector<Row>());
    }
    void reloadLines() override {
        m_lines->setRows(storedLines(this->currentKey()));
        this->m_before.lines = m_lines->rows();
        linesChanged();
    }
    Doc document() override { return {0, m_header.now(), m_lines->visibleRows()}; }
    std::vector<EntryPart> entryParts() override {
        std::vector<EntryPart> parts = Base::entryParts();
        m_header.addParts(parts, u"h:"_s);
        return parts;
    }
    void restorePart(const QString& key, const jet::Value& value) override {
        if (!m_header.restorePart(key, u"h:"_s, value))
            Base::restorePart(key, value);
    }
    void entryRestored() override { linesChanged(); }
    std::optional<Doc> load(qint64 key) override {
        const jet::Recordset row = openRow(key);
        if (row.isEmpty())
            return std::nullopt;
        return Doc{key, m_header.columns().load(row), storedLines(key)};
    }
    bool isSame(const Doc& a, const Doc& b) const override {
        return m_header.columns().same(a.header, b.header) &&
               std::equal(a.lines.begin(), a.lines.end(), b.lines.begin(), b.lines.end(),
                          [this](const Row& one, const Row& other) {
                              return m_how.columns.same(one, other);
                          });
    }
    QJsonObject pack(const Doc& document, const Doc* before) const override {
        return {{u"header"_s, packDocument(m_header.columns(), document.header,
                                           before ? &before->header : nullptr)},
                {u"lines"_s, packLines(m_how.columns, m_how.id, document.lines,
                                       before ? before->lines : std::vector<Row>())}};
    }
    Doc unpack(const QJsonObject& packed, const Doc& stored) const override {
        return {stored.documentNo,
                unpackDocument(m_header.columns(), packed[u"header"_s].toObject(), stored.header),
                unpackLines(m_how.columns, m_how.id, packed[u"lines"_s].toObject(), stored.lines)};
    }
    void showEntry(const Doc& document) override {
        m_header.show(document.header);
        m_lines->setRows(document.lines);
        linesChanged();
    }
    SaveOutcome store(qint64 key, Doc& document, const Doc* before,
                      const QStringList& settled) override {
        jet::Transaction transaction(MainDatabase());
        jet::Recordset row = openRow(key);
        if (before && row.isEmpty())
            throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
        if (auto both = m_header.columns().store(row, document.header,
                                                 before ? &before->header : nullptr, settled))
            return {0, {}, std::move(both)};
        if (!before)
            key = row.lastAddedKey().toLong();
        const std::vector<Row> stored = before ? storedLines(key) : std::vector<Row>();
        if (before) {
            if (auto both = m_how.join(before->lines, stored, document.lines))
                return {0, {}, std::move(both)};
        }
        writeLines(key, stored, document.lines);
        alsoStore(key, document);
        document.documentNo = key;
        transaction.commit();
        return {key};
    }
    void deleteDocument(qint64 key) override {
        jet::Transaction transaction(MainDatabase());
        for (const auto& [table, column] :
             {std::pair{m_table.table, m_table.documentKey},
              std::pair{this->descriptor().table, this->descriptor().keyColumn}}) {
            MainDatabase().execute(u"DELETE * FROM "_s + table + u" WHERE "_s + column + u" = "_s +
                                   QString::number(key));
        }
        transaction.commit();
    }

    ShownDocument<Header> m_header;
    std::shared_ptr<controls::LineModel<Row>> m_lines =
        std::make_shared<controls::LineModel<Row>>();

  private:
    jet::Recordset openRow(qint64 key) const {
        return MainDatabase().openRecordset(u"SELECT * FROM "_s + this->descriptor().table +
                                            u" WHERE "_s + this->descriptor().keyColumn + u" = "_s +
                                            QString::number(key));
    }
    std::vector<Row> storedLines(qint64 key) const {
        std::vector<Row> rows;
        jet::Recordset set = MainDatabase().openRecordset(
            u"SELECT * FROM "_s + m_table.table + u" WHERE "_s + m_table.documentKey + u" = "_s +
                QString::number(key) + u" ORDER BY "_s + m_table.placeColumn,
            jet::RecordsetType::Snapshot);
        for (; !set.eof(); set.moveNext()) {
            rows.push_back(m_how.columns.load(set));
            rows.back().*m_how.id = set[m_table.idColumn].toLong();
        }
        return rows;
    }
    void writeLines(qint64 key, const std::vector<Row>& stored,
                    const std::vector<Row>& rows) const {
        QStringList gone;
        for (const Row& row : stored) {
            if (!m_how.find(rows, row.*m_how.id))
                gone << QString::number(row.*m_how.id);
        }
        const QStringList columns = m_how.columns.names();
        std::vector<std::vector<jet::Value>> added, kept;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const bool isNew = rows[i].*m_how.id == 0;
            std::vector<jet::Value> values{jet::Value(isNew ? key : rows[i].*m_how.id),
                                           jet::Value(static_cast<qint64>(i) + 1)};
            const std::vector<jet::Value> own = m_how.columns.values(rows[i]);
            values.insert(values.end(), own.begin(), own.end());
            (isNew ? added : kept).push_back(std::move(values));
        }
        jet::Database& database = MainDatabase();
        if (!gone.isEmpty())
            database.execute(u"DELETE * FROM "_s + m_table.table + u" WHERE "_s + m_table.idColumn +
                             u" IN ("_s + gone.join(u',') + u")"_s);
        database.updateRows(m_table.table,
                            QStringList{m_table.idColumn, m_table.placeColumn} + columns, 1, kept);
        database.insertRows(m_table.table,
                            QStringList{m_table.documentKey, m_table.placeColumn} + columns, added);
    }

    const DocumentLines<Row>& m_how;
    LineTable m_table;
    std::vector<controls::Grid*> m_grids;
};

} // namespace core
