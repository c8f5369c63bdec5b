#pragma once

#include <QString>

namespace core {

/// What LoginUser asks of the dialog frmLogin once it is hidden.
class LoginDialog {
  public:
    virtual ~LoginDialog() = default;
    /// "E" if the user gave up; empty after a valid login.
    virtual QString action() const = 0;
    virtual QString userName() const = 0; ///< as typed
    virtual qint64 userNo() const = 0;
    virtual qint64 groupNo() const = 0;
};

/// Shows the login; on success stores the user in the shared state. False if the user gave up,
/// and the shared state is then as before.
bool LoginUser();

/// Closes all screens and logs in again. A screen that refuses to close, or giving up the login,
/// leaves the user who was signed in.
void SwitchUser();

} // namespace core
