#pragma once

#include "core/AddEdit.h"
#include "platform/controls/TextField.h"
#include "platform/screen/AddEditForm.h"

namespace core {

/// Adds a group of users or renames one.
class frmGroupAddEdit : public screen::AddEditForm, public AddEditDialog {
  public:
    static constexpr const char* formName = "frmGroupAddEdit";
    frmGroupAddEdit();

    bool ShowForm(const QString& mode, qint64 key) override;

  private:
    bool save() override;
    void startNext() override;

    controls::TextField* txtGroupName;
    qint64 m_key = 0; ///< 0: a new group
};

} // namespace core
