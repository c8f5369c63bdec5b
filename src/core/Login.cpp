#include "core/Login.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "core/drafts/DraftOffer.h"
#include "platform/screen/Forms.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

namespace core {

bool LoginUser() {
    const auto login = screen::Forms::dialog<LoginDialog>(u"frmLogin"_s);
    login.form().showModal();
    if (login->action() == u"E"_s)
        return false;
    SharedState& state = shared();
    state.CurrentUserName = login->userName();
    state.CurrentUserNo = login->userNo();
    state.CurrentGroupNo = login->groupNo();
    signChanges();
    platform::setPerson(state.CurrentUserName);
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
        main->openOnlyModule();
    }
    offerDrafts();
}

} // namespace core
