#pragma once

#include "inventory/Items.h"
#include "platform/controls/ListView.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QLabel;

namespace inventory {

/// Finds items by a piece of their description or part number, and goes to one in the explorer
/// or takes all to the reports.
class frmItemFind : public screen::Form {
  public:
    static constexpr char formName[] = "frmItemFind";
    frmItemFind();
    void Form_Load() override;

  private:
    void cmdFind_Click();
    void cmdGoto_Click();
    void cmdQuery_Click();

    QCheckBox* chkDescription;
    controls::TextField* txtDescription;
    QCheckBox* chkPartNumber;
    controls::TextField* txtPartNumber;
    controls::ListView* sprFound;
    QLabel* txtCount;
    QPushButton* cmdGoto;
    QPushButton* cmdQuery;
    std::vector<ItemRow> m_found;
};

} // namespace inventory
