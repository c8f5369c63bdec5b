#include "platform/screen/Application.h"

#include "platform/screen/Seams.h"

namespace screen {

bool Application::notify(QObject* receiver, QEvent* event) {
    bool taken = true;
    guardedCall([&] { taken = QApplication::notify(receiver, event); });
    return taken;
}

} // namespace screen
