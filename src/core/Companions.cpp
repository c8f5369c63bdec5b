#include "core/Companions.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace core {

namespace {

void start(const QString& fileName) {
    QString error;
    if (!screen::seams().startProgram(programFile(fileName), {}, error))
        screen::MsgBox(error, screen::Buttons::Ok, screen::Icon::Critical);
}

void activateOrStart(const QString& title, const QString& fileName) {
    if (!screen::seams().activateWindow(title))
        start(fileName);
}

} // namespace

void startAutoMirsa() {
    activateOrStart(QStringLiteral("Mirsa - Auto Suspend and Signout"),
                    QStringLiteral("automirsa.exe"));
}

void startTimeTracking() {
    activateOrStart(QStringLiteral("Mirsa Time Tracking"), QStringLiteral("Barcode.exe"));
}

void startBenchline() {
    start(QStringLiteral("Benchline.exe"));
}

void openHelp() {
    const auto page = [](const QString& name) {
        return programFile(QStringLiteral("mirsa-help/") + name + QStringLiteral(".html"));
    };
    QString guide = page(QStringLiteral("index"));
    if (const screen::Form* active = screen::Forms::active();
        active && QFileInfo::exists(page(active->name())))
        guide = page(active->name());
    if (!QFileInfo::exists(guide)) {
        screen::MsgBox(QStringLiteral("The help file is missing!\r\n") + guide, screen::Buttons::Ok,
                       screen::Icon::Exclamation);
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(guide)))
        screen::MsgBox(QStringLiteral("There is no program to show the help with.\r\n") + guide,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
}

} // namespace core
