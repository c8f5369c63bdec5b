#include "app/DailyBackup.h"

#include "core/MirsaMain.h"
#include "core/keeping/BackupJob.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>

namespace app {

using keeping::BackupJob;

namespace {

constexpr int shownMilliseconds = 15000;

void watch(QMainWindow& shell) {
    auto* timer = new QTimer(&shell);
    timer->setInterval(500);
    QObject::connect(timer, &QTimer::timeout, &shell, [&shell, timer] {
        const auto& job = BackupJob::current();
        if (job && job->isRunning()) {
            shell.statusBar()->showMessage(u"Backup %1 %"_s.arg(job->percent()));
            return;
        }
        timer->deleteLater();
        const QString failure = job ? job->failure() : QString();
        shell.statusBar()->showMessage(failure.isEmpty()
                                           ? u"The day's backup is good."_s
                                           : u"No backup was made today: "_s + failure,
                                       shownMilliseconds);
    });
    timer->start();
}

} // namespace

void keepBackups(QMainWindow& shell) {
    screen::guardedCall([&] {
        const QString folder = core::shared().ProgramFolder;
        if (core::shared().CurrentUserName.toUpper() == u"ADMIN")
            if (const QString warning = keeping::backupWarning(folder, values::now());
                !warning.isEmpty())
                screen::MsgBox(warning, screen::Buttons::Ok, screen::Icon::Exclamation,
                               u"System Message"_s);
        if (!keeping::isBackupDue(folder, values::now()))
            return;
        BackupJob::current() =
            std::make_unique<BackupJob>(folder, keeping::backupSettings(folder).folder);
        watch(shell);
    });
}

} // namespace app
