#include "inventory/Folders.h"

#include "inventory/Sql.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace inventory {

namespace {

View view(const QString& word) {
    return {word, u"Item"_s + word + u"s"_s, u"Item "_s + word + u"s"_s,
            u"A Sub-%1 with this description already exists in this %1. "
            "Please specify another Sub-%1 description."_s.arg(word)};
}

} // namespace

const View& typeView() {
    static const View types = view(u"Type"_s);
    return types;
}

const View& locationView() {
    static const View locations = view(u"Location"_s);
    return locations;
}

const View& viewOf(const QString& word) {
    return word == locationView().word ? locationView() : typeView();
}

QString foldersSelect(const View& view, qint64 parent) {
    return u"SELECT a.ID, a.Description, COUNT(b.ID) AS Below FROM "_s + view.table +
           u" AS a LEFT JOIN "_s + view.table + u" AS b ON b.Parent = a.ID WHERE a.Parent = "_s +
           num(parent) + u" GROUP BY a.ID, a.Description ORDER BY a.Description"_s;
}

std::vector<Folder> foldersOf(jet::Recordset set, qint64 parent) {
    std::vector<Folder> found;
    for (; !set.eof(); set.moveNext())
        found.push_back(
            {set[u"ID"].toLong(), set.text(u"Description"), parent, set[u"Below"].toLong() > 0});
    return found;
}

std::vector<Folder> foldersIn(jet::Database& database, const View& view, qint64 parent) {
    return foldersOf(
        database.openRecordset(foldersSelect(view, parent), jet::RecordsetType::Snapshot), parent);
}

std::optional<Folder> folder(jet::Database& database, const View& view, qint64 id) {
    const jet::Recordset row =
        database.openRecordset(u"SELECT * FROM "_s + view.table + u" WHERE ID = "_s + num(id),
                               jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return {};
    return Folder{id, row.text(u"Description"), row[u"Parent"].toLong()};
}

namespace {

constexpr int levelsAtOnce = 6;

/// A folder, which may be a number or a select of one, and some levels above it, so that a deep one
/// doesn't cost a wait for each.
QString pathSelect(const View& view, const QString& id) {
    QString columns;
    QString from = view.table + u" AS t0"_s;
    for (int level = 0; level < levelsAtOnce; ++level) {
        const QString table = u"t"_s + num(level);
        columns += u"%1%2.ID AS ID%3, %2.Description AS Description%3, %2.Parent AS Parent%3"_s.arg(
            level == 0 ? QString() : u", "_s, table, num(level));
        if (level > 0)
            from = u"(%1) LEFT JOIN %2 AS %3 ON t%4.Parent = %3.ID"_s.arg(from, view.table, table,
                                                                          num(level - 1));
    }
    return u"SELECT "_s + columns + u" FROM "_s + from + u" WHERE t0.ID = "_s + id;
}

std::vector<Folder> readPath(jet::Database& database, const View& view, QString select) {
    std::vector<Folder> path;
    QSet<qint64> seen{0};
    for (bool goesOn = true; goesOn;) {
        const jet::Recordset row = database.openRecordset(select, jet::RecordsetType::Snapshot);
        if (row.isEmpty())
            break;
        for (int level = 0; level < levelsAtOnce; ++level) {
            const QString n = num(level);
            const jet::Value at = row[u"ID"_s + n];
            if (at.isNull() || seen.contains(at.toLong()))
                break;
            path.push_back(
                {at.toLong(), row.text(u"Description"_s + n), row[u"Parent"_s + n].toLong()});
            seen.insert(path.back().id);
        }
        goesOn = !seen.contains(path.back().parent);
        select = pathSelect(view, num(path.back().parent));
    }
    std::reverse(path.begin(), path.end());
    return path;
}

} // namespace

std::vector<Folder> pathTo(jet::Database& database, const View& view, qint64 id) {
    if (id == 0)
        return {};
    return readPath(database, view, pathSelect(view, num(id)));
}

QString pathOfItemSelect(const View& view, qint64 itemId) {
    return pathSelect(view, u"(SELECT "_s + view.word + u" FROM Items WHERE ID = "_s + num(itemId) +
                                u')');
}

std::vector<Folder> pathOfItem(jet::Database& database, const View& view, qint64 itemId) {
    return readPath(database, view, pathOfItemSelect(view, itemId));
}

QString pathText(const std::vector<Folder>& path) {
    QStringList texts;
    for (const Folder& folder : path)
        texts << folder.description;
    return texts.join(u'\\');
}

std::vector<qint64> foldersBelow(jet::Recordset folders, qint64 top) {
    QHash<qint64, std::vector<qint64>> below;
    for (; !folders.eof(); folders.moveNext())
        below[folders.field(1).toLong()].push_back(folders.field(0).toLong());
    std::vector<qint64> found{top};
    QSet<qint64> seen{top};
    for (std::size_t i = 0; i < found.size(); ++i) {
        const auto children = below.value(found[i]);
        for (const qint64 child : children) {
            if (!seen.contains(child)) {
                seen.insert(child);
                found.push_back(child);
            }
        }
    }
    return found;
}

QString folderComplaint(jet::Database& database, const View& view, qint64 id, qint64 parent,
                        const QString& description) {
    if (description.trimmed().isEmpty())
        return u"Please enter a description."_s;
    if (description.contains(u'\\'))
        return u"You may not use a '\\' character for the description."_s;
    const bool taken =
        database.hasRows(u"SELECT ID FROM "_s + view.table + u" WHERE Description = '"_s +
                         values::quoted(description) + u"' AND Parent = "_s + num(parent) +
                         u" AND ID <> "_s + num(id) + u" ORDER BY ID"_s);
    return taken ? view.duplicate : QString();
}

qint64 saveFolder(jet::Database& database, const View& view, qint64 id, qint64 parent,
                  const QString& description) {
    const QString text = u"'"_s + values::quoted(description) + u"'"_s;
    if (id != 0) {
        database.execute(u"UPDATE "_s + view.table + u" SET Description = "_s + text +
                         u" WHERE id = "_s + num(id));
        return id;
    }
    database.execute(u"INSERT INTO "_s + view.table + u" (Description, Parent) VALUES("_s + text +
                     u", "_s + num(parent) + u")"_s);
    return database.lastCounter();
}

QString deleteRefusal(jet::Database& database, const View& view, qint64 id) {
    if (database.hasRows(u"SELECT Items.ID FROM (Items INNER JOIN ItemTypes ON Items.Type = "
                         "ItemTypes.ID) INNER JOIN ItemLocations ON Items.Location = "
                         "ItemLocations.ID WHERE Items."_s +
                         view.word + u" = "_s + num(id) + u" ORDER BY Items.ID"_s))
        return u"Cannot delete a folder with items."_s;
    if (database.hasRows(u"SELECT ID FROM "_s + view.table + u" WHERE Parent = "_s + num(id) +
                         u" ORDER BY ID"_s))
        return u"Cannot delete a folder with sub-folders."_s;
    return {};
}

std::optional<qint64> deleteFolder(jet::Database& database, const View& view, qint64 id) {
    jet::Transaction transaction(database);
    if (!deleteRefusal(database, view, id).isEmpty())
        return {};
    const auto gone = folder(database, view, id);
    const qint64 parent = gone ? gone->parent : 0;
    const QString siblings = u" AND Parent = "_s + num(parent) + u" ORDER BY ID"_s;
    database.execute(u"DELETE * FROM "_s + view.table + u" WHERE ID = "_s + num(id));
    jet::Value next = database.lookup(u"SELECT TOP 1 ID FROM "_s + view.table + u" WHERE ID > "_s +
                                      num(id) + siblings);
    if (next.isNull())
        next = database.lookup(u"SELECT TOP 1 ID FROM "_s + view.table + u" WHERE ID < "_s +
                               num(id) + siblings + u" DESC"_s);
    transaction.commit();
    return next.isNull() ? parent : next.toLong();
}

} // namespace inventory
