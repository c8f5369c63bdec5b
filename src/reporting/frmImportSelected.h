#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "reporting/ReportDialogs.h"

class QLabel;

namespace reporting {

/// Gives a report file its type, name and description in the catalogue.
class frmImportSelected : public screen::Form, public ImportReportDialog {
  public:
    static constexpr char formName[] = "frmImportSelected";
    frmImportSelected();

    bool import(const QString& fileName, const QString& type) override;
    void cmdOK_Click();

  private:
    QLabel* lblRpt;
    controls::ListCombo* cboRtype;
    controls::TextField* txtName;
    controls::TextField* txtDesc;
    bool m_imported = false;
};

} // namespace reporting
