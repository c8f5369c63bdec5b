#pragma once

#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"
#include "reporting/ReportDialogs.h"

namespace reporting {

/// Chooses one of the report files that stand in the program folder.
class frmNewReport : public screen::Form, public NewReportDialog {
  public:
    static constexpr char formName[] = "frmNewReport";
    frmNewReport();
    void Form_Load() override;

    std::optional<QString> choose() override;
    void cmdSelect_Click();

  private:
    controls::ListView* filReport;
    std::optional<QString> m_chosen;
};

} // namespace reporting
