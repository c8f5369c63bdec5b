#pragma once

#include "platform/screen/Form.h"

namespace reporting {

/// The two prints for the floor terminal: its commands and the employees' badges.
class frmCreports : public screen::Form {
  public:
    static constexpr char formName[] = "frmCreports";
    frmCreports();

    void cmdPrint_Click(int index);
};

} // namespace reporting
