#include "app/JournalKeeping.h"

#include "core/Beside.h"
#include "core/MirsaMain.h"
#include "core/journal/JournalTrim.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QMainWindow>
#include <QTimer>

namespace app {

using core::JournalTrim;

namespace {

constexpr std::chrono::hours between(6);
constexpr int lookMilliseconds = 500;

void trim() {
    if (!core::shared().MainDatabase)
        return;
    JournalTrim::current().reset();
    JournalTrim::current() =
        std::make_unique<JournalTrim>(core::shared().MainDatabase->name(), values::now());
}

/// A database that another tool has restored or copied may lack what keeps its journal.
void tellIfNotKept(QMainWindow& shell) {
    if (core::shared().CurrentUserName.toUpper() != u"ADMIN")
        return;
    auto* timer = new QTimer(&shell);
    timer->setInterval(lookMilliseconds);
    QObject::connect(timer, &QTimer::timeout, &shell, [timer] {
        const auto& trim = JournalTrim::current();
        const auto kept = trim ? trim->kept() : JournalTrim::Kept::Yes;
        if (kept == JournalTrim::Kept::Unknown)
            return;
        timer->stop();
        timer->deleteLater();
        if (kept == JournalTrim::Kept::No)
            screen::MsgBox(
                u"The journal of changes is not kept in full: the database lacks triggers that "
                "write it, as one does that another tool has restored, or an earlier release has "
                "made. This command adds them. It changes nothing that is in the database:\n\n"
                "mirsa-setup upgrade \"%1\""_s.arg(core::shared().ProgramFolder),
                screen::Buttons::Ok, screen::Icon::Exclamation, u"System Message"_s);
    });
    timer->start();
}

} // namespace

void keepJournalShort(QMainWindow& shell) {
    auto* timer = new QTimer(&shell);
    timer->setInterval(between);
    QObject::connect(timer, &QTimer::timeout, &shell, trim);
    timer->start();
    trim();
    tellIfNotKept(shell);
    core::addBeside({[] { JournalTrim::current().reset(); }, {}}); // the next time goes on
}

} // namespace app
