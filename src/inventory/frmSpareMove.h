#pragma once

#include "inventory/SpareDialogs.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Form.h"

namespace inventory {

/// Moves goods of a customer to another location, which may be a new one.
class frmSpareMove : public screen::Form, public MoveSpareDialog {
  public:
    static constexpr char formName[] = "frmSpareMove";
    frmSpareMove();
    bool move(qint64 custId, const std::vector<qint64>& indexes) override;

  private:
    void cmdOK_Click();

    controls::DataCombo* dbcLocation;
    std::vector<qint64> m_indexes;
    bool m_moved = false;
};

} // namespace inventory
