#pragma once

#include "inventory/TickedLines.h"
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
    void fillEmployees();
    void stockLeft(const Receipt& receipt, const std::vector<Unstocked>& left);

    inventory::TickedLines<ReceiveLine> m_lines;
    controls::DataCombo* dbcEmp;
    controls::TextField* txtName;
    controls::DateField* txtDate;
    qint64 m_po = 0;
    bool m_received = false;
};

} // namespace purchasing
