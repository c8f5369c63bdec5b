#pragma once

#include "platform/screen/Form.h"
#include "platform/values/Literals.h"

class QBoxLayout;

namespace screen {

/// A dialog that adds rows of a table or changes one: OK saves and closes, "OK and &New" saves and
/// goes on with the next row, Cancel closes.
class AddEditForm : public Form {
  public:
    void cmdOK_Click();
    void cmdOKNew_Click();

  protected:
    using Form::Form;

    /// The three buttons, to the right. Call it when the fields stand.
    void makeButtons(QBoxLayout* into, const QString& cancelCaption = u"Cancel"_s);
    /// Only a new row can be followed by another.
    void setAdding(bool adding);
    /// Shows the dialog; true if something was saved.
    bool run();

    /// Whether what is being saved is to be followed by the next row.
    bool goesOn() const { return m_goesOn; }

    /// Checks and writes. False after a message: the dialog stays as it is.
    virtual bool save() = 0;
    /// Makes the fields ready for the next new row and sends the focus to the first.
    virtual void startNext() = 0;

  private:
    QPushButton* m_okNew = nullptr;
    bool m_saved = false;
    bool m_goesOn = false;
};

} // namespace screen
