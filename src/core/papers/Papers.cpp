#include "core/papers/Papers.h"

#include "core/keeping/Files.h"
#include "core/keeping/PaperBackup.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace core {

namespace {

const QString columns = u"ID, Kind, Record, FileName, Hash, Bytes, Behind, Added, AddedBy"_s;

/// A file under its name, told from others.
QString identity(const QString& hash, const QString& fileName) {
    return hash + u'/' + fileName.toCaseFolded();
}

QString idList(const std::vector<qint64>& ids) {
    QStringList list;
    for (const qint64 id : ids)
        list += QString::number(id);
    return list.join(u", "_s);
}

} // namespace

bool keepsPapers(jet::Database& database) {
    return database.schema().table(u"Papers"_s) != nullptr;
}

QString papersSelect(const PaperKind& kind, qint64 record, const QStringList& others) {
    const QString number = QString::number(record);
    QString select = u"SELECT %1 FROM Papers WHERE Record = %2 AND Kind = '%3'"_s.arg(
        columns, number, kind.name);
    if (kind.parts.isEmpty())
        return select;
    const QString parts = u"SELECT %1 FROM %2 WHERE %3 = %4 AND %1 <> ''"_s.arg(
        kind.column, kind.parts, kind.owner, number);
    for (const PaperKind& other : paperKinds()) {
        if (other.parts.isEmpty() || !others.contains(other.name))
            continue;
        select += u" UNION ALL SELECT %1 FROM Papers WHERE Kind = '%2' AND Record IN (SELECT %3 "
                  "FROM %4 WHERE %5 IN (%6))"_s.arg(columns, other.name, other.owner, other.parts,
                                                    other.column, parts);
    }
    return select;
}

std::vector<Paper> readPapers(jet::Database& database, const QString& select, const PaperKind& kind,
                              qint64 record) {
    return readPapers(database.openRecordset(select, jet::RecordsetType::Snapshot), kind, record);
}

std::vector<Paper> readPapers(jet::Recordset rows, const PaperKind& kind, qint64 record) {
    std::vector<Paper> papers;
    for (; !rows.eof(); rows.moveNext())
        papers.push_back({rows[u"ID"].toLong(),
                          rows.text(u"Kind"),
                          rows[u"Record"].toLong(),
                          rows.text(u"FileName"),
                          {rows.text(u"Hash"), rows[u"Bytes"].toLong()},
                          rows[u"Behind"].toBool(),
                          rows[u"Added"].toDateTime().value_or(QDateTime()),
                          rows.text(u"AddedBy")});
    const auto isOwn = [&](const Paper& paper) {
        return paper.record == record && paper.kind == kind.name;
    };
    std::stable_sort(papers.begin(), papers.end(), [&](const Paper& a, const Paper& b) {
        return isOwn(a) != isOwn(b) ? isOwn(a) : a.id > b.id;
    });
    QSet<qint64> ids;
    QSet<QString> known;
    std::erase_if(papers, [&](const Paper& paper) {
        const QString file = identity(paper.content.hash, paper.fileName);
        const bool again = ids.contains(paper.id) || (!isOwn(paper) && known.contains(file));
        ids.insert(paper.id);
        known.insert(file);
        return again;
    });
    return papers;
}

std::optional<int> addPapers(jet::Database& database, const PaperKind& kind, qint64 record,
                             const std::vector<NamedContent>& files, const QString& by) {
    jet::Transaction transaction(database);
    QSet<QString> known;
    std::vector<jet::Recordset> sets = database.together(
        {papersSelect(kind, record, {}),
         u"SELECT %1 FROM %2 WHERE %1 = %3"_s.arg(kind.key, kind.table).arg(record)});
    if (sets.back().isEmpty())
        return std::nullopt;
    jet::Recordset& rows = sets.front();
    for (; !rows.eof(); rows.moveNext())
        known.insert(identity(rows.text(u"Hash"), rows.text(u"FileName")));
    const int width = database.width(u"Papers", u"FileName");
    std::vector<std::vector<jet::Value>> added;
    for (const NamedContent& file : files) {
        const QString name = width > 0 ? file.fileName.right(width) : file.fileName;
        if (known.contains(identity(file.content.hash, name)))
            continue;
        known.insert(identity(file.content.hash, name));
        added.push_back({kind.name, record, name, file.content.hash, file.content.bytes, false,
                         values::now(), by.left(60)});
    }
    if (added.empty())
        return 0;
    database.insertRows(u"Papers"_s,
                        {u"Kind"_s, u"Record"_s, u"FileName"_s, u"Hash"_s, u"Bytes"_s, u"Behind"_s,
                         u"Added"_s, u"AddedBy"_s},
                        added);
    transaction.commit();
    return static_cast<int>(added.size());
}

void removePapers(jet::Database& database, const std::vector<qint64>& ids) {
    database.execute(u"DELETE * FROM Papers WHERE ID IN (%1)"_s.arg(idList(ids)));
}

void printBehind(jet::Database& database, const std::vector<qint64>& ids, bool behind) {
    database.execute(u"UPDATE Papers SET Behind = %1 WHERE ID IN (%2)"_s.arg(
        behind ? u"True"_s : u"False"_s, idList(ids)));
}

void carryPapers(jet::Database& database, const QString& fromKind, qint64 from,
                 const QString& toKind, qint64 to) {
    if (!keepsPapers(database))
        return;
    database.execute(u"INSERT INTO Papers (Kind, Record, FileName, Hash, Bytes, Behind, Added, "
                     "AddedBy) SELECT '%1', %2, FileName, Hash, Bytes, Behind, Added, AddedBy FROM "
                     "Papers WHERE Record = %3 AND Kind = '%4' ORDER BY ID"_s.arg(toKind)
                         .arg(to)
                         .arg(from)
                         .arg(fromKind));
}

QString behindSelect(qint64 jobNo) {
    return u"SELECT %1 FROM Papers WHERE Record = %2 AND Kind = 'Job' AND Behind = True ORDER BY "
           "ID"_s.arg(columns)
               .arg(jobNo);
}

bool isGone(jet::Database& database, const keeping::PaperStore& store) {
    return !QFileInfo::exists(store.folder()) && database.hasRows(u"SELECT TOP 1 ID FROM Papers"_s);
}

keeping::PaperStore paperStore(jet::Database& database, const QString& programFolder) {
    const QString folder = keeping::papersFolderOf(database, programFolder);
    if (folder.isEmpty())
        throw keeping::Refusal(
            u"No folder for papers is named yet. Name one that all stations reach under Options, "
            "System Preferences, Papers."_s);
    return keeping::PaperStore(folder);
}

QString sizeInWords(qint64 bytes) {
    const auto kilobytes = static_cast<double>(bytes) / 1024;
    return kilobytes < 1024 ? values::format(std::max(1.0, kilobytes), u"#,##0"_s) + u" KB"_s
                            : values::format(kilobytes / 1024, u"#,##0.0"_s) + u" MB"_s;
}

} // namespace core
