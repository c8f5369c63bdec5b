#pragma once

#include "inventory/Folders.h"
#include "platform/controls/Tree.h"
#include "platform/values/Literals.h"

namespace inventory {

/// The key of a tree's root, which is no row.
inline const QString rootKey = u"x0"_s;
/// The key of a folder's node: "C" and its number.
QString nodeKey(qint64 folder);
/// The folder of a node; 0 for the root.
qint64 folderIn(const QString& key);
controls::TreeNode folderNode(const Folder& folder);
/// Fills a tree with the root of a view, open; further branches are read as they are opened.
void showFolders(controls::Tree& tree, const View& view);

} // namespace inventory
