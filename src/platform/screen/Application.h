#pragma once

#include <QApplication>

namespace screen {

/// The program's application object: what a timer or an event of a widget throws outside of any
/// form's handler is told as guardedCall() does.
class Application : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace screen
