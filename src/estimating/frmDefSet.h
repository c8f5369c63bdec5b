#pragma once

#include "estimating/routing/Dialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

class QPushButton;

namespace estimating {

/// Keeps the default sets of operations, and picks one for a new estimate or job.
class frmDefSet : public screen::Form, public DefaultSetDialog {
  public:
    static constexpr char formName[] = "frmDefSet";
    frmDefSet();
    void Form_Load() override;
    std::optional<qint64> pickSet() override;

  private:
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void cmdSaveAs_Click();
    void cmdSelect_Click();
    void dbcDef_Change();
    void showSets(qint64 setNo);
    qint64 setNo() const;

    controls::DataCombo* dbcDef;
    controls::ListView* sprDef;
    QPushButton* cmdSelect;
    std::vector<QPushButton*> m_needSet; ///< buttons that act on the chosen set
    std::optional<qint64> m_picked;
};

} // namespace estimating
