#pragma once

#include "platform/jet/Recordset.h"
#include "platform/screen/Complaint.h"
#include "platform/values/Currency.h"
#include "platform/values/Literals.h"

#include <QDate>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <type_traits>
#include <vector>

namespace core {

/// One thing of a record that two stations have changed, each in its own way.
struct ChangedElsewhere {
    QString what;        ///< "Quantity", "The rate of the operation Milling"
    QString theirs;      ///< as the other station stored it
    QString mine;        ///< as it stands on the screen
    QString column = {}; ///< of the header; empty where it is in the lines under it
    QString control = {};
    /// What has changed and both values.
    QString text() const;
};

using screen::Complaint;

/// How a save ended: with a key, or with the reason why nothing was written.
struct SaveOutcome {
    qint64 key = 0;
    std::optional<Complaint> refusal = {};
    std::optional<ChangedElsewhere> conflict = {};
};

/// A column's content as a member of that type holds it; Null is 0, False or empty.
template <class T>
T memberOf(const jet::Value& value);
template <>
QString memberOf(const jet::Value& value);
template <>
qint64 memberOf(const jet::Value& value);
template <>
int memberOf(const jet::Value& value);
template <>
double memberOf(const jet::Value& value);
template <>
std::optional<double> memberOf(const jet::Value& value);
template <>
bool memberOf(const jet::Value& value);
template <>
values::Currency memberOf(const jet::Value& value);
template <>
std::optional<QDate> memberOf(const jet::Value& value);

/// A column's content as a screen shows it; numbers through their mask, if they have one.
QString maskedText(const jet::Value& value, const QString& mask);
/// What was typed, as a column's content: the thousands that a mask parts are put together again.
jet::Value typedValue(QString typed, const QString& mask);

/// One column of a document: which member of the struct holds it, and which control of the screen
/// shows it. The words behind the first are said in a chain when the table is made.
struct DocumentColumn {
    QString name;
    std::function<jet::Value(const void* document)> get;
    std::function<void(void* document, const jet::Value&)> set;

    QString control = {}; ///< none: the figure stands in the struct alone
    QString words = {};   ///< how messages call it; the column's name if empty
    QString numberMask = {};
    bool hidesMoney = false; ///< from users who may not see prices
    bool shownOnly = false;
    bool byKey = false;    ///< the control is a list to choose from, which holds the column's key
    bool carried = true;   ///< into a copy of the document
    bool reckoned = false; ///< from other columns, so that two stations can't disagree on it

    DocumentColumn& field(const QString& controlName, const QString& spoken = {});
    DocumentColumn& mask(const QString& numbers);
    DocumentColumn& secured();
    DocumentColumn& locked();
    DocumentColumn& key();
    DocumentColumn& copied(bool into);
    DocumentColumn& computed();
};

/// A column for a member of a document, or for whatever a function of the document refers to:
/// `column<JobHeader>(u"PartNo"_s, &JobHeader::partNo)`.
template <class Doc, class Access>
DocumentColumn column(const QString& name, Access access) {
    using Member = std::remove_cvref_t<decltype(std::invoke(access, std::declval<Doc&>()))>;
    return {name,
            [access](const void* document) {
                return jet::Value(std::invoke(access, *static_cast<const Doc*>(document)));
            },
            [access](void* document, const jet::Value& value) {
                std::invoke(access, *static_cast<Doc*>(document)) = memberOf<Member>(value);
            }};
}

/// The columns of a document's table in the order of writing. From them come reading and writing a
/// row, what changed, the copy into a next document, and the joining with what another station
/// wrote; DocumentFields.h shows them. `document` is always of the struct that the columns are made
/// for: use DocumentColumns.
class ColumnTable {
  public:
    explicit ColumnTable(std::vector<DocumentColumn> columns) : m_columns(std::move(columns)) {}
    const std::vector<DocumentColumn>& columns() const { return m_columns; }
    const DocumentColumn& column(QStringView name) const;
    QStringList names() const;

    void load(void* document, const jet::Recordset& row) const;
    std::vector<jet::Value> values(const void* document) const;
    void write(const void* document, jet::Recordset& row) const;
    void writeChanges(const void* document, const void* stored, jet::Recordset& row) const;
    bool same(const void* a, const void* b) const;
    void carry(const void* from, void* into) const;
    std::optional<ChangedElsewhere> join(const void* before, const void* theirs, void* mine,
                                         const QStringList& settled) const;
    QJsonArray pack(const void* document, const void* before, bool withMoney) const;
    void unpack(const QJsonArray& packed, const QStringList& columns, void* document) const;

  private:
    std::vector<DocumentColumn> m_columns;
};

template <class Doc>
class DocumentColumns : public ColumnTable {
  public:
    using ColumnTable::ColumnTable;

    Doc load(const jet::Recordset& row) const {
        Doc document;
        ColumnTable::load(&document, row);
        return document;
    }
    /// What a row of the table is given, in the order of names().
    std::vector<jet::Value> values(const Doc& document) const {
        return ColumnTable::values(&document);
    }
    /// All columns, for a new row.
    void write(const Doc& document, jet::Recordset& row) const {
        ColumnTable::write(&document, row);
    }
    /// Over the row that is stored, joined with what others did to it since `before` was read, or
    /// as a new row without it. Tells what both changed, with nothing written.
    std::optional<ChangedElsewhere> store(jet::Recordset& row, Doc& document, const Doc* before,
                                          const QStringList& settled = {}) const {
        if (!before) {
            row.addNew();
            write(document, row);
        } else {
            const Doc stored = load(row);
            if (auto conflict = join(*before, stored, document, settled))
                return conflict;
            row.edit();
            writeChanges(document, stored, row);
        }
        row.update();
        return std::nullopt;
    }
    /// The columns in which the document differs from what is stored.
    void writeChanges(const Doc& document, const Doc& stored, jet::Recordset& row) const {
        ColumnTable::writeChanges(&document, &stored, row);
    }
    /// Letter by letter: a change of case is one. Computed columns don't count.
    bool same(const Doc& a, const Doc& b) const { return ColumnTable::same(&a, &b); }
    /// For a draft, with the columns in the order of names(). What hides money is left out where
    /// its user may not see it and it is as it was `before`.
    QJsonArray pack(const Doc& document, const Doc* before, bool withMoney) const {
        return ColumnTable::pack(&document, before, withMoney);
    }
    /// What was packed goes into a document; what was left out stays there as it is.
    void unpack(const QJsonArray& packed, const QStringList& columns, Doc& document) const {
        ColumnTable::unpack(packed, columns, &document);
    }
    /// What the next document takes from this one.
    Doc copy(const Doc& from) const {
        Doc next;
        carry(&from, &next);
        return next;
    }
    /// What another station stored since `before` was read goes into `mine` where it wasn't touched
    /// here. Tells the first column that both changed and that isn't among the `settled` ones,
    /// where this station's stands; `mine` is then as it was.
    std::optional<ChangedElsewhere> join(const Doc& before, const Doc& theirs, Doc& mine,
                                         const QStringList& settled = {}) const {
        return ColumnTable::join(&before, &theirs, &mine, settled);
    }
};

/// A header for a draft, and back into what is stored.
template <class Doc>
QJsonObject packDocument(const DocumentColumns<Doc>& columns, const Doc& document,
                         const Doc* before, bool withMoney = true) {
    return {{u"columns"_s, QJsonArray::fromStringList(columns.names())},
            {u"values"_s, columns.pack(document, before, withMoney)}};
}
QStringList packedColumns(const QJsonObject& packed);
template <class Doc>
Doc unpackDocument(const DocumentColumns<Doc>& columns, const QJsonObject& packed, Doc stored) {
    columns.unpack(packed[u"values"_s].toArray(), packedColumns(packed), stored);
    return stored;
}

/// The same for lines that are told apart by `key`; 0 in lines that only this entry has.
template <class Row>
QJsonObject packLines(const DocumentColumns<Row>& columns, qint64 Row::*key,
                      const std::vector<Row>& rows, const std::vector<Row>& before,
                      bool withMoney = true) {
    QHash<qint64, const Row*> was;
    for (const Row& row : before)
        was.insert(row.*key, &row);
    QJsonArray keys, values;
    for (const Row& row : rows) {
        keys.append(row.*key);
        values.append(columns.pack(row, row.*key == 0 ? nullptr : was.value(row.*key), withMoney));
    }
    return {{u"columns"_s, QJsonArray::fromStringList(columns.names())},
            {u"keys"_s, keys},
            {u"values"_s, values}};
}
template <class Row>
std::vector<Row> unpackLines(const DocumentColumns<Row>& columns, qint64 Row::*key,
                             const QJsonObject& packed, const std::vector<Row>& stored) {
    QHash<qint64, const Row*> there;
    for (const Row& row : stored)
        there.insert(row.*key, &row);
    const QStringList names = packedColumns(packed);
    const QJsonArray keys = packed[u"keys"_s].toArray(), values = packed[u"values"_s].toArray();
    std::vector<Row> rows;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        const qint64 number = keys[i].toInteger();
        const Row* stands = number == 0 ? nullptr : there.value(number);
        Row row = stands ? *stands : Row();
        row.*key = number;
        columns.unpack(values[i].toArray(), names, row);
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace core
