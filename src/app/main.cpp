#include "app/DailyBackup.h"
#include "app/Screens.h"
#include "app/Start.h"
#include "core/MDIMain.h"
#include "core/ToolIcons.h"
#include "platform/values/Literals.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Mirsa"_s);
    QApplication::setApplicationVersion(QStringLiteral(MIRSA_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(core::programIcon());
    app::registerAllScreens();

    app::Program program;
    if (!program.Main(QApplication::applicationDirPath()))
        return 1;
    app::keepBackups(*program.shell());
    return QApplication::exec();
}
