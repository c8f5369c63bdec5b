#pragma once

#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

namespace core {

/// Changes the signed-in user's own password.
class frmPass : public screen::Form {
  public:
    static constexpr const char* formName = "frmPass";
    frmPass();
    void Form_Load() override;

    void cmdOK_Click();

  private:
    controls::TextField* txtOldPassword;
    controls::TextField* txtNewPassword;
    controls::TextField* txtVerify;
    QString m_stored;
};

} // namespace core
