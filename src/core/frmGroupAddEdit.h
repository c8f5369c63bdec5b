#pragma once

#include "core/AddEdit.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QPushButton;

namespace core {

/// Adds a group of users or renames one.
class frmGroupAddEdit : public screen::Form, public AddEditDialog {
  public:
    static constexpr const char* formName = "frmGroupAddEdit";
    frmGroupAddEdit();

    bool ShowForm(const QString& mode, qint64 key) override;

    void cmdOK_Click();
    void cmdOKNew_Click();

  private:
    bool save();

    controls::TextField* txtGroupName;
    QPushButton* cmdOKNew;
    qint64 m_key = 0; ///< 0: a new group
    bool m_saved = false;
};

} // namespace core
