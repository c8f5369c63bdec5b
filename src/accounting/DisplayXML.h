#pragma once

#include "accounting/MessageWindow.h"
#include "platform/screen/Form.h"

class QPlainTextEdit;

namespace accounting {

/// The text of a message to QuickBooks and of its answer, to be looked at and copied.
class DisplayXML : public screen::Form, public MessageWindow {
  public:
    static constexpr char formName[] = "DisplayXML";
    DisplayXML();
    void ShowMessage(const QString& text) override;

  private:
    QPlainTextEdit* txtXML;
};

} // namespace accounting
