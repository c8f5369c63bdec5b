#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QLabel;

namespace inventory {

/// Finds items by a piece of their description or part number, and goes to one in the explorer.
class frmItemFind : public screen::Form {
  public:
    static constexpr char formName[] = "frmItemFind";
    frmItemFind();
    void Form_Load() override;

  private:
    void cmdFind_Click();
    void cmdGoto_Click();

    QCheckBox* chkDescription;
    controls::TextField* txtDescription;
    QCheckBox* chkPartNumber;
    controls::TextField* txtPartNumber;
    controls::ListView* sprFound;
    QLabel* txtCount;
    QPushButton* cmdGoto;
};

} // namespace inventory
