#pragma once

#include "core/Login.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

class QLineEdit;

namespace core {

/// Signs a user in.
class frmLogin : public screen::Form, public LoginDialog {
  public:
    static constexpr const char* formName = "frmLogin";
    frmLogin();
    void Form_Load() override;

    QString action() const override;
    QString userName() const override { return txtUserId->text(); }
    qint64 userNo() const override { return m_userNo; }
    qint64 groupNo() const override { return m_groupNo; }

    void cmdOk_Click();
    void cmdCancel_Click();

  private:
    controls::TextField* txtUserId;
    controls::TextField* txtUserPassword;
    QLineEdit* m_action;
    qint64 m_userNo = 0;
    qint64 m_groupNo = 0;
};

} // namespace core
