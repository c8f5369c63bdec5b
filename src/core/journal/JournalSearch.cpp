#include "core/journal/JournalSearch.h"

#include "core/journal/JournalTables.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace core {

using values::quoted;

namespace {

/// A value of a change as a screen would show it.
QString shown(const QJsonValue& value, const jet::Column& column) {
    if (value.isNull() || value.isUndefined())
        return {};
    if (column.type == jet::ColumnType::YesNo)
        return value.toDouble() != 0 ? u"Yes"_s : u"No"_s;
    if (column.type == jet::ColumnType::DateTime) {
        const auto moment =
            QDateTime::fromString(value.toString().replace(u' ', u'T').left(19), Qt::ISODate);
        return moment.isValid() ? jet::Value(moment).toText() : value.toString();
    }
    return value.isString() ? value.toString() : values::numberText(value.toDouble());
}

/// Whether a column follows another table's lines where these are numbered anew.
bool isRenumbered(const JournalChange& change, const jet::Column& column) {
    const JournalTable* table = journalTable(change.table);
    return table && column.name.compare(table->line, Qt::CaseInsensitive) == 0;
}

JournalChange readChange(const jet::Schema& schema, const jet::Recordset& row) {
    using What = JournalChange::What;
    JournalChange change;
    change.at = row[u"At"].toDateTime().value_or(QDateTime());
    change.who = row.text(u"Who");
    change.table = row.text(u"TableName");
    change.record = row.text(u"Record");
    const QString action = row.text(u"Action").toUpper();
    change.what = action == u"I" ? What::Added : action == u"D" ? What::Deleted : What::Changed;
    const jet::Table* table = schema.table(change.table);
    if (!table)
        return change;
    const QJsonObject told = QJsonDocument::fromJson(row.text(u"Changes").toUtf8()).object();
    QHash<QString, QJsonValue> values; // a server writes its names small
    for (auto field = told.begin(); field != told.end(); ++field)
        values[field.key().toLower()] = field.value();
    for (const jet::Column& column : table->columns) {
        const auto found = values.constFind(column.name.toLower());
        if (found == values.constEnd())
            continue;
        const QJsonArray both = found->toArray();
        const bool changed = change.what == What::Changed;
        if (changed && (column.type == jet::ColumnType::Counter || isRenumbered(change, column)))
            continue; // a line that was numbered anew: nobody knows it by that
        const QString before =
            change.what == What::Added ? QString() : shown(changed ? both.at(0) : *found, column);
        const QString after =
            change.what == What::Deleted ? QString() : shown(changed ? both.at(1) : *found, column);
        if (changed && before.isEmpty() && after.isEmpty())
            continue; // an empty text in place of none: a save leaves it so, nobody sees it
        change.fields.push_back(
            {column.name, before, after, column.type == jet::ColumnType::Currency});
    }
    return change;
}

QString dateText(const QDate& date) {
    return u'#' + values::format(date, u"mm/dd/yyyy"_s) + u'#';
}

} // namespace

std::vector<JournalChange> searchJournal(jet::Database& database, const JournalCriteria& criteria,
                                         int most) {
    QStringList parts;
    if (!criteria.who.isEmpty())
        parts += u"Who LIKE '"_s + quoted(criteria.who) + u"*'"_s;
    if (criteria.tables) {
        QStringList names;
        for (const QString& name : *criteria.tables)
            names += u'\'' + quoted(name) + u'\'';
        parts += names.isEmpty() ? u"1 = 0"_s : u"TableName IN ("_s + names.join(u", "_s) + u')';
    }
    if (criteria.record)
        parts += u"Record = %1"_s.arg(*criteria.record);
    if (criteria.from.isValid())
        parts += u"[At] >= "_s + dateText(criteria.from);
    if (criteria.until.isValid())
        parts += (criteria.from.isValid() ? u"[At] < "_s : u"NOT [At] >= "_s) +
                 dateText(criteria.until.addDays(1));
    // In the order of an index, so that no more is read than is shown; a record's changes are few,
    // and are found by its number. Where most of the journal may have to be read for somebody who
    // has changed little, its rows are read as they lie: in a third of the time.
    const QString order = criteria.record           ? u"0 - ID"_s
                          : criteria.from.isValid() ? u"[At] DESC, ID DESC"_s
                                                    : u"ID DESC"_s;
    jet::Recordset rows = database.openRecordset(
        u"SELECT TOP %1 [At], Who, TableName, Record, [Action], Changes FROM Journal%2 ORDER BY %3"_s
            .arg(most)
            .arg(parts.isEmpty() ? QString() : u" WHERE "_s + parts.join(u" AND "_s), order),
        jet::RecordsetType::Snapshot);
    std::vector<JournalChange> changes;
    for (; !rows.eof(); rows.moveNext())
        changes.push_back(readChange(database.schema(), rows));
    return changes;
}

std::vector<JournalLine> journalLines(const std::vector<JournalChange>& changes, bool showMoney) {
    using What = JournalChange::What;
    const QString secret = u"(hidden)"_s;
    std::vector<JournalLine> lines;
    for (const JournalChange& change : changes) {
        const JournalTable* table = journalTable(change.table);
        const QStringList head{change.at.toString(u"yyyy-MM-dd hh:mm:ss"_s), change.who,
                               table ? table->words : change.table, change.record};
        if (change.what == What::Changed) {
            for (const JournalField& field : change.fields) {
                const bool hidden = field.money && !showMoney;
                lines.push_back(head + QStringList{u"Changed"_s, field.column,
                                                   hidden ? secret : field.before,
                                                   hidden ? secret : field.after});
            }
            continue;
        }
        const bool added = change.what == What::Added;
        QStringList all;
        for (const JournalField& field : change.fields)
            if (const QString& value = added ? field.after : field.before;
                !value.isEmpty() && (showMoney || !field.money))
                all += field.column + u' ' + value;
        const QString row = all.join(u", "_s);
        lines.push_back(head + (added ? QStringList{u"Added"_s, QString(), QString(), row}
                                      : QStringList{u"Deleted"_s, QString(), row, QString()}));
    }
    return lines;
}

} // namespace core
