#include "app/Screens.h"
#include "core/MirsaMain.h"
#include "core/records/RecordModule.h"
#include "platform/controls/Field.h"
#include "platform/controls/Grid.h"
#include "platform/jet/Location.h"
#include "platform/screen/Application.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Seams.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QKeyEvent>
#include <QTimer>

#include <cstdio>
#include <random>

// A station whose user types until somebody kills it: EntryTypist DATABASE REMEMBERED MODULE KEY
// FIELD opens an entry (a new one for key 0), and types letter after letter into the field. In a
// list of lines he moves them instead, and saves or cancels now and then.

namespace {

void move(core::RecordModule& module, controls::Grid& lines) {
    static std::mt19937 chance(std::random_device{}());
    const auto once = [](unsigned in) { return chance() % in == 0; };
    if (module.mode() == u"Browse")
        module.cmdEdit_Click();
    lines.setActiveRow(static_cast<int>(chance() % static_cast<unsigned>(lines.rowCount())));
    QKeyEvent key(QEvent::KeyPress, once(2) ? Qt::Key_Up : Qt::Key_Down, Qt::AltModifier);
    QCoreApplication::sendEvent(&lines, &key);
    if (once(12))
        once(3) ? module.cmdCancel_Click() : module.cmdSave_Click();
}

} // namespace

int main(int argc, char* argv[]) {
    screen::Application application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    platform::keepRememberedIn(words[2]);
    app::registerAllScreens();
    core::SharedState& state = core::shared();
    state.MainDatabase = jet::isServerUri(words[1]) ? jet::Database::openServer(words[1])
                                                    : jet::Database::openFile(words[1]);
    state.DatabasePath = state.MainDatabase->name();
    state.CurrentUserName = u"Admin"_s;

    auto* module = dynamic_cast<core::RecordModule*>(screen::Forms::show(words[3]));
    if (!module)
        return 1;
    if (const qint64 key = words[4].toLongLong(); key == 0) {
        module->ShowModuleMode(core::RecordModule::Mode::Add);
    } else {
        module->goToRecord(key);
        module->cmdEdit_Click();
    }
    QTimer typing;
    if (auto* lines = module->control<controls::Grid>(words[5])) {
        screen::seams().msgBox = [](const QString&, screen::Buttons, screen::Icon, const QString&,
                                    screen::Answer) { return screen::Answer::Yes; };
        QObject::connect(&typing, &QTimer::timeout, module, [&, lines] {
            move(*module, *lines);
            std::printf("%s\n", qPrintable(module->mode()));
            std::fflush(stdout);
        });
        typing.start(1);
        return QCoreApplication::exec();
    }
    auto* field = dynamic_cast<controls::Field*>(module->control(words[5]));
    if (!field)
        return 1;
    QObject::connect(&typing, &QTimer::timeout, module, [&] {
        if (field->text().size() < 30)
            field->setText(field->text() + QString::number(field->text().size() % 10));
        std::printf("%s\n", qPrintable(field->text()));
        std::fflush(stdout);
    });
    typing.start(150);
    return QCoreApplication::exec();
}
