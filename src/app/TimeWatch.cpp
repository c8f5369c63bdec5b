#include "app/TimeWatch.h"

#include "core/Beside.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Seams.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>
#include <QToolButton>

namespace app {

namespace {

using timemgmt::ExceptionWatch;

constexpr int lookMilliseconds = 500;
constexpr int secondsBetweenReadings = 60;

/// The count, and what of it has been shown so far.
class Count : public QObject {
  public:
    explicit Count(QMainWindow& shell)
        : QObject(&shell), m_button(screen::named(new QToolButton(&shell), u"pnlExceptions"_s,
                                                  u"Time exceptions"_s)) {
        m_button->setAutoRaise(true);
        m_button->setFocusPolicy(Qt::NoFocus);
        m_button->setToolTip(u"Time records that must be looked at. Press to see them."_s);
        m_button->hide();
        shell.statusBar()->insertPermanentWidget(0, m_button);
        connect(m_button, &QToolButton::clicked, this,
                [] { screen::guardedCall([] { screen::Forms::show(u"frmTimeExceptions"_s); }); });
        auto* timer = new QTimer(this);
        timer->setInterval(lookMilliseconds);
        connect(timer, &QTimer::timeout, this, [this] { look(); });
        timer->start();
    }

  private:
    void look() {
        const core::SharedState& state = core::shared();
        if (!state.MainDatabase)
            return;
        if (m_userName != state.CurrentUserName) {
            m_userName = state.CurrentUserName;
            m_allowed = false; // should the next line fail
            m_button->hide();
            m_allowed = core::HasAccess(u"mnuFileTimeManagement"_s);
            m_readings = -1;
        }
        if (!m_allowed) {
            m_button->hide();
            return;
        }
        ExceptionWatch& watch = ExceptionWatch::on(state.MainDatabase->name());
        const QDateTime now = values::now();
        if (!m_asked.isValid() || m_asked.secsTo(now) >= secondsBetweenReadings) {
            m_asked = now;
            watch.check(now);
        }
        if (watch.readings() != m_readings) {
            m_readings = watch.readings();
            show(watch.lines());
        }
    }

    void show(const ExceptionWatch::Lines& lines) {
        m_button->setVisible(lines != nullptr);
        if (lines)
            m_button->setText(lines->size() == 1
                                  ? u"1 time exception"_s
                                  : u"%1 time exceptions"_s.arg(QString::number(lines->size())));
    }

    QToolButton* m_button;
    QString m_userName;
    bool m_allowed = false;
    QDateTime m_asked;
    int m_readings = -1;
};

} // namespace

void watchTimeRecords(QMainWindow& shell) {
    new Count(shell);
    core::addBeside({ExceptionWatch::end, {}}); // the count begins it again
}

} // namespace app
