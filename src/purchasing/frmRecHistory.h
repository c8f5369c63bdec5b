#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"
#include "purchasing/Dialogs.h"

namespace purchasing {

/// The receipts of a purchase order.
class frmRecHistory : public screen::Form, public ReceivedHistory {
  public:
    static constexpr char formName[] = "frmRecHistory";
    frmRecHistory();
    void showHistory(qint64 poNumber, const QString& title) override;

    void cmdNew_Click();
    void cmdDelete_Click();

  private:
    void fill();
    /// Tells when the order became active or inactive.
    void ActiveDetect() const;

    controls::Grid* sprRec;
    qint64 m_po = 0;
};

} // namespace purchasing
