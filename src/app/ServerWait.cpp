#include "app/ServerWait.h"

#include "platform/jet/Waiting.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QPointer>
#include <QProgressDialog>

namespace app {

namespace {

using namespace std::chrono_literals;

constexpr auto untilTold = 2s;

QPointer<QProgressDialog> told;

bool goOn(std::chrono::milliseconds waited) {
    if (!qApp || waited < untilTold)
        return true;
    if (!told) {
        told = new QProgressDialog(QString(), u"&Give up"_s, 0, 0, QApplication::activeWindow());
        told->setObjectName(u"ServerWait"_s);
        told->setWindowTitle(u"Mirsa"_s);
        told->setWindowModality(Qt::ApplicationModal);
        told->setMinimumDuration(0);
        told->setAutoClose(false);
        told->show();
    }
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(waited).count();
    told->setLabelText(u"The database server has not answered for %1 seconds.\n"
                       "What you typed is still on the screen."_s.arg(seconds));
    QApplication::processEvents();
    return told && !told->wasCanceled();
}

} // namespace

void watchServerWaits() {
    jet::setWhileWaiting(goOn, [] { delete told; });
}

} // namespace app
