#include "app/StartPage.h"

#include "core/Beside.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "desk/find/Indexer.h"
#include "desk/frmStart.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QMdiArea>
#include <QTimer>

namespace app {

namespace {

constexpr int lookMilliseconds = 400;

/// Behind the others: the screen that is in front stays there, with the focus where it was.
void openBehind(QMainWindow& shell) {
    auto* main = dynamic_cast<core::MDIMain*>(&shell);
    QMdiSubWindow* front = main ? main->area()->activeSubWindow() : nullptr;
    const QPointer<QWidget> focus(QApplication::focusWidget());
    screen::Forms::show(u"frmStart"_s);
    if (front)
        main->area()->setActiveSubWindow(front);
    if (front && focus)
        focus->setFocus();
}

} // namespace

void showStartPages(QMainWindow& shell) {
    auto* timer = new QTimer(&shell);
    timer->setInterval(lookMilliseconds);
    QObject::connect(timer, &QTimer::timeout, &shell, [&shell, failed = QString()]() mutable {
        const core::SharedState& state = core::shared();
        // A sign-in closes all screens; whoever closes this one himself doesn't want it.
        if (!state.MainDatabase || QApplication::activeModalWidget() ||
            state.CurrentUserName == failed || screen::Forms::isLoaded(u"frmStart"_s) ||
            !desk::frmStart::isWanted())
            return;
        failed = state.CurrentUserName;
        if (screen::guardedCall([&] { openBehind(shell); }))
            failed.clear();
    });
    const auto index = [] {
        screen::guardedCall([] { desk::Indexer::on(core::MainDatabase().name()); });
    };
    core::addBeside({desk::Indexer::end, index});
    index();
    timer->start();
}

} // namespace app
