#include "core/Companions.h"

#include "core/HelpWindow.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>

namespace core {

namespace {

struct Companion {
    const char16_t* menu;
    const char16_t* title; ///< of a window that is brought forward instead; none: always started
    const char16_t* file;
    bool maximised;
};
constexpr Companion companions[] = {
    {u"mnuFileAutoMirsa", u"Mirsa - Auto Suspend and Signout", u"automirsa.exe", false},
    {u"mnuFileBarcode", u"Mirsa Time Tracking", u"Barcode.exe", true},
    {u"mnuFileBenchline", nullptr, u"Benchline.exe", true}};

} // namespace

bool startCompanion(const QString& menu) {
    for (const Companion& one : companions) {
        if (menu.compare(QString::fromUtf16(one.menu), Qt::CaseInsensitive) != 0)
            continue;
        const screen::Seams& seams = screen::seams();
        if (one.title && seams.activateWindow(QString::fromUtf16(one.title)))
            return true;
        const QString program = programFile(QString::fromUtf16(one.file));
        QString error;
        if (!(one.maximised ? seams.startMaximised(program, error)
                            : seams.startProgram(program, {}, error)))
            screen::MsgBox(error, screen::Buttons::Ok, screen::Icon::Critical);
        return true;
    }
    return false;
}

QStringList companionsMissing() {
    QStringList menus;
    for (const Companion& one : companions)
        if (!screen::seams().isInstalled(programFile(QString::fromUtf16(one.file))))
            menus << QString::fromUtf16(one.menu);
    return menus;
}

void openHelp() {
    const QString folder = programFile(u"mirsa-help"_s);
    if (!QFileInfo::exists(folder + u"/index.html"_s)) {
        screen::MsgBox(u"The help file is missing!\r\n"_s + folder, screen::Buttons::Ok,
                       screen::Icon::Exclamation);
        return;
    }
    const screen::Form* dialog = dynamic_cast<screen::Form*>(QApplication::activeModalWidget());
    const screen::Form* form = dialog ? dialog : screen::Forms::active();
    HelpWindow::open(folder, form ? form->name() : QString());
}

namespace {

class HelpKey : public QObject {
  public:
    using QObject::QObject;
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() != QEvent::KeyPress || !object->isWidgetType() ||
            static_cast<QKeyEvent*>(event)->key() != Qt::Key_F1 ||
            !dynamic_cast<screen::Form*>(QApplication::activeModalWidget()))
            return false;
        openHelp();
        return true;
    }
};

} // namespace

void openHelpFromDialogs(QObject* owner) {
    qApp->installEventFilter(new HelpKey(owner));
}

} // namespace core
