#pragma once

#include "core/AddEdit.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace core {

/// Adds a user or changes one: login name, display name and password. Of the administrator only
/// the password can be changed.
class frmUserAddEdit : public screen::AddEditForm, public AddEditDialog {
  public:
    static constexpr const char* formName = "frmUserAddEdit";
    frmUserAddEdit();

    bool ShowForm(const QString& mode, qint64 key) override;

    void txtPassword_Change();

  private:
    bool readRow();
    bool save() override;
    void startNext() override;
    bool isTaken(const QString& column, const QString& text) const;

    controls::TextField* txtUserID;
    controls::TextField* txtUserName;
    controls::TextField* txtPassword;
    controls::TextField* txtVerifyPassword;
    qint64 m_key = 0; ///< 0: a new user
};

} // namespace core
