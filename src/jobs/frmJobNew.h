#pragma once

#include "jobs/JobDialogs.h"
#include "platform/screen/Form.h"

class QCheckBox;
class QRadioButton;

namespace jobs {

/// Asks how a new job starts.
class frmJobNew : public screen::Form, public NewJobDialog {
  public:
    static constexpr char formName[] = "frmJobNew";
    frmJobNew();
    std::optional<NewJob> choose(bool hasCurrent) override;

  private:
    void option_Click();
    void cmdOK_Click();
    NewJob::Way way() const;

    QRadioButton* m_options[3];
    QCheckBox* chkCarryCus;
    QCheckBox* chkNotes;
    QCheckBox* chkDefault;
    QCheckBox* chkCopyEstTimeAmt;
    std::optional<NewJob> m_result;
};

} // namespace jobs
