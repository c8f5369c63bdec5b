#pragma once

#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"
#include "purchasing/Dialogs.h"
#include "purchasing/VendorMatrix.h"

namespace purchasing {

/// The offers of a request group side by side: lines down, vendors across. The vendor of the active
/// column can be chosen for a purchase order.
class frmRFQMatrix : public screen::Form, public MatrixDialog {
  public:
    static constexpr char formName[] = "frmRFQMatrix";
    frmRFQMatrix();
    std::optional<QString> choose(qint64 group) override;

  private:
    void fill();
    void cmdCreatePO_Click();
    void cmdExport_Click();
    /// Place of the active column's vendor; -1 if it is none's.
    int activeVendor() const;

    controls::Grid* sprMatrix;
    qint64 m_group = 0;
    VendorMatrix m_matrix;
    std::optional<QString> m_chosen;
};

} // namespace purchasing
