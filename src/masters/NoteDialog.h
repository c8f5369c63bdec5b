#pragma once

#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <QString>

#include <optional>

namespace masters {

/// A dialog that shows a long text large and may change it.
class NoteDialog {
  public:
    virtual ~NoteDialog() = default;
    /// The text to show; a locked one can be read and copied only.
    virtual void begin(const QString& text, bool locked) = 0;
    /// The new text; nothing if the dialog was left without taking it.
    virtual std::optional<QString> taken() const = 0;
};

/// Shows a note dialog over a field, and puts the text that was taken into it.
void editNote(const QString& dialogName, controls::Field& field);

class NoteForm : public screen::Form, public NoteDialog {
  public:
    NoteForm(const QString& formName, const QString& title, const QString& fieldName);

    void begin(const QString& text, bool locked) override;
    std::optional<QString> taken() const override { return m_taken; }

  private:
    controls::MemoField* m_text;
    QPushButton* m_ok;
    QString m_shown;
    std::optional<QString> m_taken;
};

} // namespace masters
