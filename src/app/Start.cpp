#include "app/Start.h"

#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "core/ToolIcons.h"
#include "platform/jet/Location.h"
#include "platform/screen/Application.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/screen/Seams.h"
#include "platform/system/Locale.h"
#include "platform/system/SingleInstance.h"
#include "platform/values/Literals.h"

namespace app {

Program::Program(screen::Application& application) {
    application.setApplicationName(u"Mirsa"_s);
    application.setQuitOnLastWindowClosed(false);
    application.setWindowIcon(core::programIcon());
}

Program::~Program() = default;

bool Program::openShop(const QString& programFolder) {
    return screen::guardedCall([&] {
        core::SharedState& state = core::shared();
        state.CurrencySymbol = platform::localeCurrencySymbol();
        state.ProgramFolder = programFolder;
        state.MainDatabase = jet::openProgramFolder(programFolder);
        state.DatabasePath = state.MainDatabase->name();
        // A file that was closed is whole by itself: no log beside it that a copy would miss.
        screen::seams().beforeEnd = [&state] { state.MainDatabase.reset(); };
    });
}

bool Program::Main(const QString& programFolder) {
    if (!openShop(programFolder))
        return false;
    m_instance = std::make_unique<platform::SingleInstance>(programFolder);
    if (!m_instance->isFirst()) {
        screen::MsgBox(u"Mirsa is already running."_s, screen::Buttons::Ok, screen::Icon::Critical,
                       u"Mirsa"_s);
        screen::seams().endProcess(0);
        return false;
    }
    core::shared().PreviewWidthFactor = 0.8;
    core::shared().PreviewHeightFactor = 0.8;

    bool signedIn = false;
    const bool ended = screen::guardedCall([&] {
        {
            const screen::BusyPointer hourglass;
            screen::Forms::showModal(u"frmSplash"_s);
        }
        // Nobody is signed in yet, so the menus are cut down to what anybody may use.
        m_shell = std::make_unique<core::MDIMain>();
        m_shell->SecureMenuObjects();
        m_shell->showToolBar(false);
        m_shell->show();
        signedIn = core::LoginUser();
        if (!signedIn) {
            screen::seams().endProcess(0);
            return;
        }
        m_shell->SecureMenuObjects();
        m_shell->showToolBar(true);
        m_shell->bringToFront();
        m_shell->openOnlyModule();
    });
    return ended && signedIn;
}

} // namespace app
