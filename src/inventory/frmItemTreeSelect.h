#pragma once

#include "inventory/StockNewItem.h"
#include "platform/screen/Form.h"

class QPushButton;

namespace controls {
class TextField;
class Tree;
} // namespace controls

namespace inventory {

/// Picks a folder of the types or the locations; a folder's sub-folders are read when it is opened.
class frmItemTreeSelect : public screen::Form, public FolderPicker {
  public:
    static constexpr char formName[] = "frmItemTreeSelect";
    explicit frmItemTreeSelect(const QString& name = QString::fromLatin1(formName));
    std::optional<Picked> pickFolder(const QString& word) override;

  private:
    void tvItem_Click();
    void cmdSelect_Click();

    controls::Tree* tvItem;
    controls::TextField* txtPath;
    QPushButton* cmdSelect;
    std::optional<Picked> m_chosen;
};

} // namespace inventory
