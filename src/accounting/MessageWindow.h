#pragma once

#include <QString>

namespace accounting {

/// The window "DisplayXML", which shows the text of a message.
class MessageWindow {
  public:
    virtual ~MessageWindow() = default;
    virtual void ShowMessage(const QString& text) = 0;
};

} // namespace accounting
