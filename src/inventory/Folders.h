#pragma once

#include "platform/jet/Database.h"

#include <QString>

#include <optional>
#include <vector>

namespace inventory {

/// One of the two trees that every item stands in.
struct View {
    QString word;      ///< "Type" or "Location"; also the column of Items
    QString table;     ///< "ItemTypes"
    QString root;      ///< "Item Types"
    QString duplicate; ///< what is said of a folder whose name a sibling has
};
const View& typeView();
const View& locationView();
/// By its word; the types for any other.
const View& viewOf(const QString& word);

/// A folder of a tree. The root is no row: it is folder 0.
struct Folder {
    qint64 id = 0;
    QString description;
    qint64 parent = 0;
    bool hasFolders = false; ///< sub-folders
};

std::vector<Folder> foldersIn(jet::Database& database, const View& view, qint64 parent);
/// Its select and its rows, for those who read more in the same wait.
QString foldersSelect(const View& view, qint64 parent);
std::vector<Folder> foldersOf(jet::Recordset set, qint64 parent);
std::optional<Folder> folder(jet::Database& database, const View& view, qint64 id);
/// From the top down to the folder itself; empty for the root and for one that has gone. A ring of
/// parents ends where it closes.
std::vector<Folder> pathTo(jet::Database& database, const View& view, qint64 id);
/// The same to the folder that an item stands in; empty for one that has gone.
std::vector<Folder> pathOfItem(jet::Database& database, const View& view, qint64 itemId);
/// The select that pathOfItem() opens, to be expected by who opens others beside it.
QString pathOfItemSelect(const View& view, qint64 itemId);
/// The descriptions of a path, parted by backslashes.
QString pathText(const std::vector<Folder>& path);

/// A folder and all below it, of a set of all folders with their parents behind them; a ring of
/// parents ends where it closes.
std::vector<qint64> foldersBelow(jet::Recordset folders, qint64 top);

/// Why a folder can't have a description; empty if it can. `id` is 0 for a new one.
QString folderComplaint(jet::Database& database, const View& view, qint64 id, qint64 parent,
                        const QString& description);
/// Adds (id 0) or renames a folder; its number.
qint64 saveFolder(jet::Database& database, const View& view, qint64 id, qint64 parent,
                  const QString& description);

/// Why a folder can't be deleted; empty if it can.
QString deleteRefusal(jet::Database& database, const View& view, qint64 id);
/// Deletes an empty folder and says who takes its place: the next sibling, the one before, or the
/// parent. Nothing, and nothing deleted, if something was put into it meanwhile.
std::optional<qint64> deleteFolder(jet::Database& database, const View& view, qint64 id);

} // namespace inventory
