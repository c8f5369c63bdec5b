#include "core/Companions.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

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
    activateOrStart(u"Mirsa - Auto Suspend and Signout"_s, u"automirsa.exe"_s);
}

void startTimeTracking() {
    activateOrStart(u"Mirsa Time Tracking"_s, u"Barcode.exe"_s);
}

void startBenchline() {
    start(u"Benchline.exe"_s);
}

void openHelp() {
    const auto page = [](const QString& name) {
        return programFile(u"mirsa-help/"_s + name + u".html"_s);
    };
    QString guide = page(u"index"_s);
    if (const screen::Form* active = screen::Forms::active();
        active && QFileInfo::exists(page(active->name())))
        guide = page(active->name());
    if (!QFileInfo::exists(guide)) {
        screen::MsgBox(u"The help file is missing!\r\n"_s + guide, screen::Buttons::Ok,
                       screen::Icon::Exclamation);
        return;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(guide)))
        screen::MsgBox(u"There is no program to show the help with.\r\n"_s + guide,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
}

} // namespace core
