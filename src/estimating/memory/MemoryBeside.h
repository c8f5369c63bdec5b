#pragma once

#include "estimating/memory/MemoryWindow.h"
#include "platform/screen/Form.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace estimating {

/// Has the window of the shop's memory beside a screen: above the main window without a place in
/// it, where the user put it, gone while another screen is in front, and there again with the next
/// estimate until he closes it.
class MemoryBeside : public QObject {
  public:
    using Shown = std::function<MemoryShown()>;
    /// `bring` takes a figure into an operation's cell.
    MemoryBeside(screen::Form& screen, Shown shown,
                 std::function<void(qint64 operNo, double figure)> bring);
    ~MemoryBeside() override;

    /// Opens it and goes there.
    void open();
    /// Opens it where the user left it open, without going there.
    void openIfWanted();
    /// What stands on the screen may be something else: looks at it when all handlers have ended.
    void followLater();

  private:
    void make();
    void place();
    void goBack();
    void focusMoved(const QWidget* now);

    screen::Form& m_screen;
    Shown m_shown;
    std::function<void(qint64, double)> m_bring;
    QPointer<QWidget> m_form; ///< asked for while it goes too, when it is no more than a widget
    MemoryWindow* m_window = nullptr; ///< the same
    QTimer m_later;
};

} // namespace estimating
