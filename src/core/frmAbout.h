#pragma once

#include "platform/screen/Form.h"

namespace core {

/// What runs here, and on which database.
class frmAbout : public screen::Form {
  public:
    static constexpr const char* formName = "frmAbout";
    frmAbout();
};

} // namespace core
