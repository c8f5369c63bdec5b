#pragma once

#include "platform/controls/LineGrid.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "purchasing/Dialogs.h"
#include "purchasing/Receiving.h"

namespace purchasing {

/// Takes in what has arrived of an order's open lines, and stocks it if wanted.
class frmPOaddRec : public screen::Form, public ReceiveDialog {
  public:
    static constexpr char formName[] = "frmPOaddRec";
    frmPOaddRec();
    bool receiveInto(qint64 poNumber) override;

    void cmdOK_Click();

  private:
    std::vector<controls::LineColumn<ReceiveLine>> columns();
    void selectAll(bool selected);
    void fillEmployees();
    void stockLeft(const Receipt& receipt, const std::vector<Unstocked>& left);

    std::shared_ptr<controls::LineModel<ReceiveLine>> m_lines =
        std::make_shared<controls::LineModel<ReceiveLine>>();
    controls::LineGrid<ReceiveLine>* vaSpread1;
    controls::DataCombo* dbcEmp;
    controls::TextField* txtName;
    controls::DateField* txtDate;
    qint64 m_po = 0;
    bool m_received = false;
};

} // namespace purchasing
