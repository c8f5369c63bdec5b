#include "core/Login.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "platform/screen/Forms.h"

namespace core {

bool LoginUser() {
    const auto login = screen::Forms::dialog<LoginDialog>(QStringLiteral("frmLogin"));
    login.form().showModal();
    if (login->action() == QStringLiteral("E"))
        return false;
    SharedState& state = shared();
    state.CurrentUserName = login->userName();
    state.CurrentUserNo = login->userNo();
    state.CurrentGroupNo = login->groupNo();
    return true;
}

void SwitchUser() {
    const auto open = screen::Forms::all();
    for (screen::Form* form : open) {
        // Closing one screen may have closed another.
        if (screen::Forms::all().contains(form))
            form->unload();
    }
    if (!screen::Forms::all().isEmpty() || !LoginUser())
        return;
    if (Shell* main = shell()) {
        main->SecureMenuObjects();
        main->bringToFront();
    }
}

} // namespace core
