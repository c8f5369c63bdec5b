#pragma once

#include "platform/quickbooks/Door.h"
#include "platform/screen/Pointer.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QString>

#include <memory>

class QWidget;

namespace quickbooks {

/// The wait for QuickBooks over one exchange or several: the hourglass, and after a moment a window
/// that says what is being done, with Cancel. The program goes on painting, but takes no keys and
/// no clicks elsewhere, so that nothing can be sent a second time meanwhile.
class Waiting {
  public:
    explicit Waiting(QString text);
    ~Waiting();
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

    void setText(const QString& text);
    /// Hands a request to the door and returns when it has ended. After Cancel nothing is handed
    /// over any more.
    Outcome exchange(const Door& door, const QByteArray& request);
    bool isCancelled() const { return m_cancelled; }
    /// Takes the window away, for a question.
    void hide();

  private:
    class Blocker;
    void showWindow();
    void cancel();

    QString m_text;
    screen::BusyPointer m_pointer;
    QElapsedTimer m_since;
    std::unique_ptr<QWidget> m_window;
    std::function<void()> m_stop; ///< ends the exchange that is under way
    bool m_cancelled = false;
};

} // namespace quickbooks
