#include "app/Start.h"

#include "core/Beside.h"
#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "core/ToolIcons.h"
#include "core/drafts/Draft.h"
#include "core/drafts/DraftOffer.h"
#include "platform/jet/Location.h"
#include "platform/screen/Application.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/screen/Seams.h"
#include "platform/system/Locale.h"
#include "platform/system/SingleInstance.h"
#include "platform/values/Literals.h"
#include "setup/Setup.h"

namespace app {

namespace {

/// Why this program can't work with a database; empty if it can.
QString unfit(const jet::Database& database, const QString& programFolder) {
    bool foreign = false;
    QStringList lacking = setup::lacking(database.schema(), foreign);
    const QString name = jet::withoutPassword(database.name());
    if (foreign)
        return u"'%1' is no database of Mirsa Project Manager: it has none of its tables."_s.arg(
            name);
    if (lacking.isEmpty())
        return {};
    constexpr qsizetype most = 6;
    if (const qsizetype more = lacking.size() - most; more > 0)
        lacking = lacking.mid(0, most) << u"and %1 more"_s.arg(more);
    return u"The database '%1' was made for an earlier release. It lacks:\n\n%2\n\nAn "
           "administrator brings it up to date with this command. It changes nothing that is in "
           "the database:\n\nmirsa-setup upgrade \"%3\""_s.arg(name, lacking.join(u'\n'),
                                                               programFolder);
}

} // namespace

Program::Program(screen::Application& application) {
    application.setApplicationName(u"Mirsa"_s);
    application.setQuitOnLastWindowClosed(false);
    application.setWindowIcon(core::programIcon());
}

Program::~Program() = default;

bool Program::openShop(const QString& programFolder) {
    QString wrong;
    const bool opened = screen::guardedCall([&] {
        core::SharedState& state = core::shared();
        state.CurrencySymbol = platform::localeCurrencySymbol();
        state.ProgramFolder = programFolder;
        state.MainDatabase = jet::openProgramFolder(programFolder);
        state.DatabasePath = state.MainDatabase->name();
        // A file that was closed is whole by itself: no log beside it that a copy would miss.
        screen::seams().beforeEnd = [&state] {
            core::endBeside();
            core::drafts::finish();
            state.MainDatabase.reset();
        };
        wrong = unfit(*state.MainDatabase, programFolder);
    });
    if (!opened || wrong.isEmpty())
        return opened;
    screen::MsgBox(wrong, screen::Buttons::Ok, screen::Icon::Critical, u"Mirsa"_s);
    core::shared().MainDatabase.reset();
    return false;
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
        core::offerDrafts();
    });
    return ended && signedIn;
}

} // namespace app
