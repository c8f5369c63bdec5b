#include "desk/find/RecordTexts.h"

#include "desk/find/FindKinds.h"
#include "platform/jet/Native.h"
#include "platform/rows/Fold.h"

#include <QHash>

#include <string>

namespace desk {

namespace {

const FindKind& kindOf(int kind) {
    return findKinds()[static_cast<std::size_t>(kind)];
}

FileIndex::Texts texts(jet::Database& shop, int kind, const QByteArray& rest) {
    const FindKind& of = kindOf(kind);
    FileIndex::Texts found;
    std::string searched;
    jet::Native(shop).each(
        "SELECT " + of.key + ", " + textOf(of, false) + " FROM " + of.table + rest,
        [&](const std::vector<jet::Cell>& cells) {
            searched.clear();
            if (cells[1].kind == jet::Cell::Kind::Text)
                rows::appendFolded(searched,
                                   {cells[1].text, static_cast<std::size_t>(cells[1].size)});
            found.emplace_back(cells[0].integer, QByteArray(searched.data(), static_cast<qsizetype>(
                                                                                 searched.size())));
        });
    return found;
}

} // namespace

qint64 highestKey(jet::Database& shop, int kind) {
    const FindKind& of = kindOf(kind);
    return jet::Native(shop).value("SELECT max(" + of.key + ") FROM " + of.table).toInteger();
}

FileIndex::Texts textsBelow(jet::Database& shop, int kind, qint64 key, int most) {
    const QByteArray& column = kindOf(kind).key;
    return texts(shop, kind,
                 " WHERE " + column + " < " + QByteArray::number(key) + " ORDER BY " + column +
                     " DESC LIMIT " + QByteArray::number(most));
}

FileIndex::Texts textsBetween(jet::Database& shop, int kind, qint64 first, qint64 last) {
    const QByteArray& column = kindOf(kind).key;
    return texts(shop, kind,
                 " WHERE " + column + " BETWEEN " + QByteArray::number(first) + " AND " +
                     QByteArray::number(last) + " ORDER BY " + column);
}

FileIndex::Texts textsWhere(jet::Database& shop, int kind, const QByteArray& condition) {
    return condition.isEmpty() ? FileIndex::Texts() : texts(shop, kind, " WHERE " + condition);
}

FileIndex::Texts textsOf(jet::Database& shop, int kind, const std::set<qint64>& keys) {
    QByteArrayList list;
    for (const qint64 key : keys)
        list << QByteArray::number(key);
    return keys.empty()
               ? FileIndex::Texts()
               : texts(shop, kind, " WHERE " + kindOf(kind).key + " IN (" + list.join(',') + ")");
}

Changes changesSince(jet::Database& shop, qint64 entry, int most) {
    Changes changes;
    changes.last = entry;
    jet::Native native(shop);
    if (native.value("SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'Journal'")
            .isNull())
        return changes;
    QHash<QByteArray, int> kinds; // of each table that their texts come from
    for (std::size_t kind = 0; kind < findKinds().size(); ++kind) {
        for (const FindKind::Pieces& pieces : findKinds()[kind].pieces)
            kinds.insert(pieces.table.toLower(), static_cast<int>(kind));
    }
    native.each(
        "SELECT ID, TableName, Record FROM Journal WHERE ID > " + QByteArray::number(entry) +
            " ORDER BY ID DESC LIMIT " + QByteArray::number(most),
        [&](const std::vector<jet::Cell>& cells) {
            changes.last = std::max(changes.last, cells[0].integer);
            if (cells[1].isNull() || cells[2].isNull())
                return;
            const int kind = kinds.value(QByteArray(cells[1].text, cells[1].size).toLower(), -1);
            if (kind >= 0)
                changes.keys[kind].insert(cells[2].integer);
        });
    return changes;
}

} // namespace desk
