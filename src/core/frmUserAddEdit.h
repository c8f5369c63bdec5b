#pragma once

#include "core/AddEdit.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QPushButton;

namespace core {

/// Adds a user or changes one: login name, display name and password. Of the administrator only
/// the password can be changed.
class frmUserAddEdit : public screen::Form, public AddEditDialog {
  public:
    static constexpr const char* formName = "frmUserAddEdit";
    frmUserAddEdit();

    bool ShowForm(const QString& mode, qint64 key) override;

    void cmdOK_Click();
    void cmdOKNew_Click();
    void txtPassword_Change();

  private:
    bool readRow();
    bool save();
    bool isTaken(const QString& column, const QString& text) const;

    controls::TextField* txtUserID;
    controls::TextField* txtUserName;
    controls::TextField* txtPassword;
    controls::TextField* txtVerifyPassword;
    QPushButton* cmdOKNew;
    qint64 m_key = 0; ///< 0: a new user
    bool m_saved = false;
};

} // namespace core
