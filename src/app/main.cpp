#include "app/DailyBackup.h"
#include "app/JournalKeeping.h"
#include "app/Screens.h"
#include "app/ServerWait.h"
#include "app/Start.h"
#include "app/StartPage.h"
#include "app/TimeWatch.h"
#include "core/MDIMain.h"
#include "platform/screen/Application.h"

int main(int argc, char** argv) {
    screen::Application application(argc, argv);
    screen::Application::setApplicationVersion(QStringLiteral(MIRSA_VERSION));
    app::registerAllScreens();
    app::watchServerWaits();

    app::Program program(application);
    if (!program.Main(screen::Application::applicationDirPath()))
        return 1;
    app::keepBackups(*program.shell());
    app::keepJournalShort(*program.shell());
    app::watchTimeRecords(*program.shell());
    app::showStartPages(*program.shell());
    return screen::Application::exec();
}
