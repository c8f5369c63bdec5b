#pragma once

#include "core/journal/RecordHistory.h"
#include "core/records/PaperCount.h"
#include "inventory/InventoryDialogs.h"
#include "platform/screen/Form.h"

#include <memory>

class QLabel;

namespace controls {
class ListView;
class Tree;
} // namespace controls

namespace inventory {

/// The explorer over stock: the folders of one of the two trees to the left, the selected folder's
/// sub-folders and items to the right. A change of view keeps the selected item in sight.
class frmInventory : public screen::Form, public Explorer, public core::ShownRecord {
  public:
    static constexpr char formName[] = "frmInventory";
    frmInventory();
    void Form_Load() override;
    bool Form_QueryUnload() override;
    QSize sizeHint() const override;

    qint64 shownRecord() const override { return selectedItem(); }
    const View& view() const override { return *m_view; }
    void itemChanged(qint64 itemId) override;
    void showAgain() override;
    void goToItem(qint64 itemId) override;
    void folderAdded(const Folder& folder) override;

  private:
    QWidget* buttons();
    void ListSelected(const QString& node);
    /// Opens the path to a folder and selects it; the root if it has gone.
    void expandToNode(qint64 folder);
    void openPath(const std::vector<Folder>& path);
    /// The view's tree from its root on, and the folder of an item in it; the root for none.
    void showView(qint64 item);
    void showCount();
    void countPapers();
    void openRow();
    qint64 folderShown() const;
    /// The selected item; 0 where none is, or a folder.
    qint64 selectedItem() const;
    /// The same, with a message where there is none.
    qint64 itemFor(const QString& complaint);
    /// Key of the folder that Edit and Delete mean: of the list, or of the tree where that was used
    /// last; empty for an item or nothing.
    QString selectedFolder() const;
    bool treeIsMeant() const;

    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdOrder_Click();
    void cmdCount_Click();
    void newFolder();
    void newItem();
    void changeView();
    void deleteTreeNode(qint64 id);
    void deleteListItem(qint64 id);
    void renameFolder(qint64 id);
    void showFor(const QString& form, const QString& complaint);

    const View* m_view;
    controls::Tree* tvMain;
    controls::ListView* lvMain;
    QLabel* txtObjCount;
    QWidget* m_lastUsed = nullptr; ///< tree or list
    QString m_node;                ///< whose list is shown
    std::vector<QPushButton*> m_commands;
    std::unique_ptr<core::PaperCount> m_papers; ///< while it is open
};

} // namespace inventory
