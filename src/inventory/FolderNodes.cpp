#include "inventory/FolderNodes.h"

#include "core/MirsaMain.h"
#include "platform/controls/Pictures.h"

namespace inventory {

QString nodeKey(qint64 folder) {
    return folder == 0 ? rootKey : u"C"_s + QString::number(folder);
}

qint64 folderIn(const QString& key) {
    return key.mid(1).toLongLong();
}

controls::TreeNode folderNode(const Folder& folder) {
    return {.key = nodeKey(folder.id),
            .text = folder.description,
            .picture = controls::pictures::folder(),
            .openPicture = controls::pictures::openFolder(),
            .lazy = folder.hasFolders};
}

void showFolders(controls::Tree& tree, const View& view) {
    tree.clearNodes();
    tree.children = [&view](const QString& key) {
        std::vector<controls::TreeNode> nodes;
        for (const Folder& folder : foldersIn(core::MainDatabase(), view, folderIn(key)))
            nodes.push_back(folderNode(folder));
        return nodes;
    };
    tree.addNode({}, {.key = rootKey,
                      .text = view.root,
                      .picture = controls::pictures::folder(),
                      .openPicture = controls::pictures::openFolder(),
                      .lazy = true});
    tree.open(rootKey);
}

} // namespace inventory
