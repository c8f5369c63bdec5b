#include "app/JournalKeeping.h"

#include "core/MirsaMain.h"
#include "core/journal/JournalTrim.h"
#include "platform/screen/Seams.h"
#include "platform/values/Clock.h"

#include <QMainWindow>
#include <QTimer>

namespace app {

using core::JournalTrim;

namespace {

constexpr std::chrono::hours between(6);

void trim() {
    if (!core::shared().MainDatabase)
        return;
    JournalTrim::current().reset();
    JournalTrim::current() =
        std::make_unique<JournalTrim>(core::shared().MainDatabase->name(), values::now());
}

} // namespace

void keepJournalShort(QMainWindow& shell) {
    auto* timer = new QTimer(&shell);
    timer->setInterval(between);
    QObject::connect(timer, &QTimer::timeout, &shell, trim);
    timer->start();
    trim();
    // A file must be let go before its own connection is.
    screen::seams().beforeEnd = [before = screen::seams().beforeEnd] {
        JournalTrim::current().reset();
        if (before)
            before();
    };
}

} // namespace app
