#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

namespace reporting {

/// The catalogue of reports by type: which is the default, and which are the house's own.
class frmConfigReports : public screen::Form {
  public:
    static constexpr char formName[] = "frmConfigReports";
    frmConfigReports();
    void Form_Load() override;

    void dbcRtype_Change();
    void cmdDefault_Click();
    void cmdRemove_Click();
    void cmdAdd_Click();

  private:
    QString selectedName() const;

    controls::ListCombo* dbcRtype;
    controls::Grid* sprReport;
};

} // namespace reporting
