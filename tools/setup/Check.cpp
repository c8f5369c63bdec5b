#include "setup/Check.h"

#include "core/journal/JournalTriggers.h"
#include "core/papers/PaperTriggers.h"
#include "jobs/JobCosting.h"
#include "platform/jet/Native.h"
#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"
#include "setup/Relations.h"
#include "setup/Setup.h"

#include <QSet>

namespace setup {

namespace {

QString keyName(jet::Database& database, const QString& table) {
    const jet::Table* found = database.schema().table(table);
    return found->key() ? found->key()->name : found->columns.front().name;
}

QByteArray orphanCondition(jet::Database& database, const Reference& reference) {
    const jet::Native native(database);
    const jet::Column* column = database.schema().table(reference.table)->column(reference.column);
    const QByteArray value = "a." + native.quoted(reference.column);
    const bool text = column->type == jet::ColumnType::Text;
    return value + " IS NOT NULL AND " + value + (text ? " <> ''" : " <> 0") +
           " AND NOT EXISTS (SELECT 1 FROM " + native.quoted(reference.target) + " b WHERE b." +
           native.quoted(reference.key) + " = " + value + ')';
}

/// One pass over a database.
class Checker {
  public:
    Checker(jet::Database& database, bool mend)
        : m_database(database), m_native(database), m_mend(mend) {}

    std::vector<Finding> findings;

    void engine() {
        for (const QString& line : engineFindings(m_database))
            findings.push_back({{}, {}, line});
    }

    void schema() {
        for (const QString& statement : definitions()) {
            if (!statement.startsWith(u"CREATE TABLE", Qt::CaseInsensitive))
                continue;
            const jet::Table wanted = jet::tableFromDefinition(statement);
            const jet::Table* table = m_database.schema().table(wanted.name);
            if (!table) {
                findings.push_back({wanted.name, {}, u"the table is missing: upgrade adds it"_s});
                continue;
            }
            for (const jet::Column& column : wanted.columns)
                if (!table->column(column.name))
                    findings.push_back(
                        {wanted.name,
                         {},
                         u"the column "_s + column.name + u" is missing: upgrade adds it"_s});
        }
    }

    void journal() {
        if (core::isJournalKept(m_database))
            return;
        if (m_mend)
            core::installJournal(m_database);
        findings.push_back(
            {u"Journal"_s, {}, u"not every change is kept there: triggers are missing"_s, m_mend});
    }

    void papers() {
        if (core::hasPaperTriggers(m_database))
            return;
        if (m_mend)
            core::installPaperTriggers(m_database);
        findings.push_back({u"Papers"_s,
                            {},
                            u"papers don't go with their records: triggers are missing"_s,
                            m_mend});
    }

    void orphans() {
        for (const Reference& reference : references()) {
            if (reference.outlives || !has(reference.table, reference.column) ||
                !has(reference.target, reference.key))
                continue;
            const bool grant =
                reference.table == u"SecurityUsers" || reference.table == u"SecurityGroups";
            for (const Orphan& row : orphansOf(m_database, reference))
                findings.push_back({reference.table, row.record,
                                    reference.column + u" names "_s + reference.target + u' ' +
                                        row.value + u", which isn't there"_s,
                                    m_mend && grant});
            if (m_mend && grant) // a right of nobody, or to nothing
                m_native.execute("DELETE FROM " + m_native.quoted(reference.table) +
                                 " AS a WHERE " + orphanCondition(m_database, reference));
        }
    }

    void repeated() {
        for (const UniqueColumns& unique : uniqueColumns())
            if (has(unique.table, unique.columns.front()))
                for (const Repeat& repeat : repeatsOf(m_database, unique))
                    findings.push_back({unique.table, repeat.record,
                                        u"stands there %1 times"_s.arg(repeat.times)});
    }

    /// A note bound to an operation row belongs at that row's place.
    void notes(const QString& table, const QString& operations, const QString& document) {
        const QString from =
            u" FROM %1 AS n INNER JOIN %2 AS o ON n.ID = o.ID WHERE n.ID <> 0 AND "
            "(n.%3 <> o.%3 OR n.SeqNo <> o.SeqNo)"_s.arg(table, operations, document);
        jet::Recordset rows = m_database.openRecordset(
            u"SELECT n.ID, n.%1 AS NoteOf, n.SeqNo AS NoteAt, o.%1 AS OperOf, o.SeqNo AS OperAt"_s
                    .arg(document) +
                from,
            jet::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext())
            findings.push_back(
                {table, u"ID "_s + rows.text(u"ID"),
                 u"the note stands at %1 %2, operation %3, and belongs to %1 %4, operation %5"_s
                     .arg(document, rows.text(u"NoteOf"), rows.text(u"NoteAt"),
                          rows.text(u"OperOf"), rows.text(u"OperAt")),
                 m_mend});
        if (m_mend && !rows.isEmpty())
            m_database.execute(u"UPDATE %1 AS n INNER JOIN %2 AS o ON n.ID = o.ID SET n.%3 = o.%3, "
                               "n.SeqNo = o.SeqNo WHERE n.ID <> 0 AND (n.%3 <> o.%3 OR n.SeqNo <> "
                               "o.SeqNo)"_s.arg(table, operations, document));
    }

    void counters() {
        for (const jet::Table& table : m_database.schema().tables()) {
            const jet::Column* key = table.key();
            if (!key || key->type != jet::ColumnType::Counter)
                continue;
            const qint64 highest = m_native
                                       .value("SELECT MAX(" + m_native.quoted(key->name) +
                                              ") FROM " + m_native.quoted(table.name))
                                       .toInteger();
            const qint64 given = lastGiven(m_database, table.name, key->name);
            if (highest <= given)
                continue;
            findings.push_back({table.name,
                                {},
                                u"the counter %1 stands at %2, below the highest "
                                "number %3"_s.arg(key->name)
                                    .arg(given)
                                    .arg(highest),
                                m_mend});
            if (m_mend)
                setLastGiven(m_database, table.name, key->name, highest);
        }
    }

    /// Hours of in-house operations against their time records. A job without any time record may
    /// be one whose records were archived: told, and left alone.
    void hours() {
        jet::Recordset rows = m_database.openRecordset(
            u"SELECT o.JobNo, o.OperNo, o.OperTime_Amount, t.Hours, j.AnyTime FROM ((JobOper AS o "
            "INNER JOIN Operation AS p ON o.OperNo = p.OperNo) LEFT JOIN (SELECT JobNo, OperNo, "
            "SUM(AccumTime) AS Hours FROM Timelog GROUP BY JobNo, OperNo) AS t ON o.JobNo = "
            "t.JobNo "
            "AND o.OperNo = t.OperNo) LEFT JOIN (SELECT JobNo, COUNT(*) AS AnyTime FROM Timelog "
            "GROUP BY JobNo) AS j ON o.JobNo = j.JobNo WHERE p.OperType = 'I' AND "
            "IIf(o.OperTime_Amount IS NULL, 0, o.OperTime_Amount) <> IIf(t.Hours IS NULL, 0, "
            "t.Hours) ORDER BY o.JobNo, o.SeqNo"_s,
            jet::RecordsetType::Snapshot);
        QSet<qint64> jobs;
        for (; !rows.eof(); rows.moveNext()) {
            const double shown = rows[u"OperTime_Amount"].toDouble();
            const double booked = rows[u"Hours"].toDouble();
            if (std::abs(shown - booked) < 0.005) // the order of a sum changes its last bits
                continue;
            const bool mendable = rows[u"AnyTime"].toLong() > 0;
            findings.push_back(
                {u"JobOper"_s,
                 u"JobNo %1, OperNo %2"_s.arg(rows.text(u"JobNo"), rows.text(u"OperNo")),
                 u"%1 hours, and its time records come to %2"_s.arg(shown).arg(booked),
                 m_mend && mendable});
            if (mendable)
                jobs.insert(rows[u"JobNo"].toLong());
        }
        if (m_mend)
            for (const qint64 job : std::as_const(jobs))
                jobs::UpdateJobCost(m_database, job);
    }

  private:
    bool has(const QString& table, const QString& column) const {
        const jet::Table* found = m_database.schema().table(table);
        return found && found->column(column);
    }

    jet::Database& m_database;
    jet::Native m_native;
    bool m_mend;
};

} // namespace

std::vector<Orphan> orphansOf(jet::Database& database, const Reference& reference) {
    jet::Native native(database);
    const QString key = keyName(database, reference.table);
    std::vector<Orphan> orphans;
    for (const jet::Native::Row& row :
         native.rows("SELECT a." + native.quoted(key) + ", a." + native.quoted(reference.column) +
                     " FROM " + native.quoted(reference.table) + " a WHERE " +
                     orphanCondition(database, reference)))
        orphans.push_back({key + u' ' + row.front().toText(), row.back().toText()});
    return orphans;
}

std::vector<Repeat> repeatsOf(jet::Database& database, const UniqueColumns& unique) {
    jet::Native native(database);
    QByteArray list;
    for (const QString& column : unique.columns)
        list += (list.isEmpty() ? "" : ", ") + native.quoted(column);
    std::vector<Repeat> repeats;
    for (const jet::Native::Row& row :
         native.rows("SELECT " + list + ", COUNT(*) FROM " + native.quoted(unique.table) +
                     " WHERE " + native.quoted(unique.columns.front()) + " IS NOT NULL GROUP BY " +
                     list + " HAVING COUNT(*) > 1")) {
        QStringList values;
        for (int i = 0; i < unique.columns.size(); ++i)
            values += unique.columns[i] + u' ' + row[static_cast<std::size_t>(i)].toText();
        repeats.push_back({values.join(u", "_s), row.back().toInteger()});
    }
    return repeats;
}

QStringList engineFindings(jet::Database& database) {
    QStringList lines;
    jet::Native native(database);
    if (!database.isServer()) {
        for (const jet::Native::Row& row : native.rows("PRAGMA integrity_check"))
            if (const QString line = row.front().toText(); line != u"ok")
                lines += line;
        return lines;
    }
    // A server has no such check for everybody. Every row is read whole, by which a damaged page
    // shows.
    for (const jet::Table& table : database.schema().tables()) {
        try {
            native.rows("SELECT COUNT(t.*::text) FROM " + native.quoted(table.name) + " t");
        } catch (const jet::Error& error) {
            lines += table.name + u": "_s + error.text();
        }
    }
    return lines;
}

std::vector<Finding> check(jet::Database& database, const CheckOptions& options) {
    Checker checker(database, options.mend);
    checker.engine();
    if (!checker.findings.empty()) // nothing is counted or mended in a broken file
        return checker.findings;
    checker.schema();
    if (!checker.findings.empty())
        return checker.findings;
    std::optional<jet::Transaction> transaction;
    if (options.mend)
        transaction.emplace(database);
    checker.orphans();
    checker.repeated();
    checker.notes(u"JobOperNote"_s, u"JobOper"_s, u"JobNo"_s);
    checker.notes(u"EstOperNote"_s, u"EstOper"_s, u"EstNo"_s);
    checker.counters();
    checker.journal();
    checker.papers();
    checker.hours();
    if (transaction)
        transaction->commit();
    return checker.findings;
}

} // namespace setup
