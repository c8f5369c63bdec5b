#include "accounting/ImportRows.h"

#include "accounting/Literals.h"
#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QSet>

#include <algorithm>

namespace accounting {

namespace {

using Kind = ImportColumn::Kind;

QString joinedName(const jet::Recordset& row, const ImportMember& member) {
    QStringList parts;
    for (const QString& column : member.nameColumns)
        parts += row.text(column);
    return parts.join(u' ').trimmed();
}

jet::Recordset namedRows(jet::Database& database, const ImportMember& member, const QString& rest) {
    QStringList columns{u'[' + member.key + u']'};
    columns += member.nameColumns;
    if (member.hasMarks)
        columns += u"QBSent"_s;
    return database.openRecordset(u"Select "_s + columns.join(u',') + u" from "_s + member.table +
                                      rest,
                                  jet::RecordsetType::Snapshot);
}

/// The names of an employee from his joined one, where QuickBooks tells no other.
void splitName(const ImportMember& member, QStringList& texts) {
    if (member.nameColumns.size() != 2 || !texts[1].isEmpty() || !texts[2].isEmpty())
        return;
    const QString name = texts[0].trimmed();
    const auto at = name.lastIndexOf(u' ');
    texts[1] = at < 0 ? QString() : name.left(at);
    texts[2] = name.mid(at + 1);
}

/// IsActive as the program has it: "Active", or "Terminated" with a day and "Suspended" without.
void tellStatus(const RecordKind& kind, QStringList& texts) {
    if (!kind.tellsActive)
        return;
    const bool active = texts.last() != u"false" && texts.last() != u"0";
    const QString released = texts[texts.size() - 2];
    texts.last() = active ? u"Active"_s : released.isEmpty() ? u"Suspended"_s : u"Terminated"_s;
}

QSet<QString> knownTexts(jet::Database& database, const QString& select) {
    QSet<QString> known;
    jet::Recordset rows = database.openRecordset(select, jet::RecordsetType::Snapshot);
    const auto fields = rows.fieldNames().size();
    for (; !rows.eof(); rows.moveNext()) {
        for (int i = 0; i < fields; ++i)
            known.insert(values::lowered(rows.field(i).toText()));
    }
    return known;
}

jet::Value storedValue(const ImportColumn& column, const QString& text) {
    if (text.isEmpty())
        return {};
    if (column.kind == Kind::Date) {
        const QDate date = values::dateFromText(text);
        return date.isValid() ? jet::Value(date) : jet::Value();
    }
    if (column.kind == Kind::Whole)
        return text.toLongLong();
    return text;
}

} // namespace

std::vector<ListedRecord> listedRecords(jet::Database& database, const ImportMember& member,
                                        bool onlyUnsent) {
    std::vector<ListedRecord> records;
    jet::Recordset rows =
        namedRows(database, member,
                  (onlyUnsent && member.hasMarks ? u" where QBSent = 0"_s : QString()) +
                      u" ORDER BY ["_s + member.key + u']');
    for (; !rows.eof(); rows.moveNext())
        records.push_back({rows[member.key].toLong(), joinedName(rows, member),
                           member.hasMarks && rows[u"QBSent"].toDouble() != 0});
    return records;
}

std::vector<QStringList> offeredRecords(jet::Database& database, const ImportMember& member,
                                        const std::vector<QDomElement>& records) {
    QSet<QString> known;
    jet::Recordset rows = namedRows(database, member, {});
    for (; !rows.eof(); rows.moveNext())
        known.insert(values::lowered(joinedName(rows, member)));
    std::vector<QStringList> offered;
    for (const QDomElement& record : records) {
        // Below a customer stand his jobs, which are no customers.
        if (textAt(record, u"Sublevel"_s).toInt() > 0 ||
            known.contains(values::lowered(textAt(record, u"Name"_s).trimmed())))
            continue;
        QStringList texts;
        for (const ImportColumn& column : member.columns) {
            QString text = textAt(record, column.path);
            if (column.kind == Kind::Date && !text.isEmpty())
                text = values::format(QDate::fromString(text, Qt::ISODate), u"Short Date");
            texts += text;
        }
        splitName(member, texts);
        tellStatus(member.kind(), texts);
        offered.push_back(texts);
    }
    return offered;
}

QStringList unknownTexts(jet::Database& database, const ImportMember& member, Kind kind,
                         const std::vector<QStringList>& records) {
    QStringList unknown;
    QSet<QString> known;
    bool read = false;
    for (const QStringList& record : records) {
        for (std::size_t i = 0; i < member.columns.size(); ++i) {
            const QString& text = record[qsizetype(i)];
            if (member.columns[i].kind != kind || text.isEmpty())
                continue;
            if (!read)
                known = knownTexts(database, kind == Kind::Country
                                                 ? u"Select code, country from country"_s
                                                 : u"Select description from terms"_s);
            read = true;
            if (known.contains(values::lowered(text)))
                continue;
            known.insert(values::lowered(text));
            unknown += text;
        }
    }
    return unknown;
}

QString wordsFor(const ImportMember& member, const QString& country,
                 const std::vector<QStringList>& records) {
    for (const QStringList& record : records) {
        for (std::size_t i = 0; i < member.columns.size(); ++i) {
            if (member.columns[i].kind == Kind::Country && record[qsizetype(i)] == country)
                return member.columns[i].words;
        }
    }
    return {};
}

QStringList importComplaints(const jet::Database& database, const ImportMember& member,
                             const std::vector<QStringList>& records) {
    QStringList complaints;
    for (const QStringList& record : records) {
        for (std::size_t i = 0; i < member.columns.size(); ++i) {
            const ImportColumn& column = member.columns[i];
            const QString& text = record[qsizetype(i)];
            if (column.kind == Kind::Date || column.kind == Kind::Whole)
                continue;
            const bool fits =
                std::all_of(column.columns.begin(), column.columns.end(), [&](const QString& name) {
                    const int width = database.width(member.table, name);
                    return width == 0 || text.size() <= width;
                });
            if (!fits)
                complaints += u"%1: %2 is longer than Mirsa can keep: \"%3\""_s.arg(
                    record[0], column.title, text);
        }
    }
    return complaints;
}

void importRecords(jet::Database& database, const ImportMember& member,
                   const std::vector<QStringList>& records, const QStringList& countries,
                   const std::vector<NewTerms>& terms) {
    using Row = std::vector<jet::Value>;
    std::vector<Row> newCountries, newTerms, rows;
    for (const QString& country : countries)
        newCountries.push_back({country, country});
    for (const NewTerms& one : terms)
        newTerms.push_back(
            {one.netDue.isEmpty() ? jet::Value() : jet::Value(one.netDue.toLongLong()),
             one.description});
    QStringList columns;
    for (const ImportColumn& column : member.columns)
        columns += column.columns;

    jet::Transaction transaction(database);
    Row fixed;
    if (!member.defaults.empty()) {
        const jet::Recordset settings =
            database.openRecordset(u"SELECT * FROM systemsettings"_s, jet::RecordsetType::Snapshot);
        for (const auto& [column, setting] : member.defaults) {
            columns += column;
            fixed.push_back(settings.isEmpty() ? jet::Value() : settings.text(setting));
        }
    }
    if (member.hasMarks) {
        columns += u"QBSent"_s;
        fixed.emplace_back(1);
    }
    for (const QStringList& record : records) {
        Row row;
        for (std::size_t i = 0; i < member.columns.size(); ++i) {
            const ImportColumn& column = member.columns[i];
            const jet::Value value = storedValue(column, record[qsizetype(i)]);
            row.insert(row.end(), static_cast<std::size_t>(column.columns.size()), value);
        }
        row.insert(row.end(), fixed.begin(), fixed.end());
        rows.push_back(std::move(row));
    }
    database.insertRows(u"country"_s, {u"code"_s, u"country"_s}, newCountries);
    database.insertRows(u"terms"_s, {u"netdue"_s, u"description"_s}, newTerms);
    database.insertRows(member.table, columns, rows);
    transaction.commit();
}

} // namespace accounting
