#pragma once

#include "platform/screen/ListForm.h"

namespace jobs {

/// The consignments of the job that the job module shows.
class frmJobShip : public screen::ListForm {
  public:
    static constexpr char formName[] = "frmJobShip";
    frmJobShip();
    void Form_Load() override;

    void cmdNew_Click() override;
    void cmdEdit_Click() override;
    void cmdDelete_Click() override;

  protected:
    std::vector<controls::ListRow> rows() override;

  private:
    void showDialog(const QString& mode, qint64 jobShipId);

    qint64 m_jobNo = 0;
};

} // namespace jobs
