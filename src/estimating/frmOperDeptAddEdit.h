#pragma once

#include "estimating/CatalogueDialogs.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace estimating {

/// Adds or renames a department.
class frmOperDeptAddEdit : public screen::Form, public DepartmentDialog {
  public:
    static constexpr char formName[] = "frmOperDeptAddEdit";
    frmOperDeptAddEdit();
    bool ShowForm(const QString& mode, qint64 id) override;

  private:
    void cmdOK_Click();

    controls::TextField* txtDescription;
    qint64 m_id = 0;
    bool m_saved = false;
};

} // namespace estimating
