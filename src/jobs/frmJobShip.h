#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

namespace jobs {

/// The consignments of the job that the job module shows.
class frmJobShip : public screen::Form {
  public:
    static constexpr char formName[] = "frmJobShip";
    frmJobShip();
    void Form_Load() override;

  private:
    void cmdNew_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void showShipments();
    void showDialog(const QString& mode, qint64 jobShipId);

    controls::ListView* lvwShip;
    QPushButton* cmdNew;
    QPushButton* cmdEdit;
    QPushButton* cmdDelete;
    qint64 m_jobNo = 0;
};

} // namespace jobs
