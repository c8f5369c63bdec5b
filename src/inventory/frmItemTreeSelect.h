#pragma once

#include "inventory/StockNewItem.h"
#include "platform/screen/Form.h"

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace controls {
class TextField;
}

namespace inventory {

/// Picks a folder of the types or the locations; a folder's sub-folders are read when it is opened.
class frmItemTreeSelect : public screen::Form, public FolderPicker {
  public:
    static constexpr char formName[] = "frmItemTreeSelect";
    frmItemTreeSelect();
    std::pair<qint64, QString> pickFolder(const QString& view) override;

  private:
    void addChildren(QTreeWidgetItem* under);
    void tvItem_Click();
    void cmdSelect_Click();

    QTreeWidget* tvItem;
    controls::TextField* txtPath;
    QPushButton* cmdSelect;
    QString m_table;
    std::pair<qint64, QString> m_chosen{0, {}};
};

} // namespace inventory
