#pragma once

#include "platform/values/Text.h"

#include <QValidator>

class QFocusEvent;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace controls {

/// What a line takes, whichever way text gets into it: the key filter is put to the part that was
/// inserted (typed, pasted, dropped, composed), the limit cuts the whole to its left part. Text set
/// by the program passes the filter.
class EntryRule : public QValidator {
  public:
    explicit EntryRule(QLineEdit* line);

    values::KeyFilter filter;
    int limit = 0;
    bool upper = false;

    /// Sets the line's text as the program, not as a person.
    void setText(const QString& text);
    /// Whether the key is to be swallowed before the line sees it, so that a selection and the undo
    /// list stay as they are.
    bool swallows(const QKeyEvent* event) const;

    State validate(QString& text, int& position) const override;

  private:
    QLineEdit* m_line;
    QString m_before;
    bool m_program = false;
};

/// Whether the focus goes (or comes back) only for a menu or for another window on top, or because
/// the whole form is put away: nobody left the field then.
bool isPassing(const QWidget* field, const QFocusEvent* event);

/// The character that a key event types; null if it types none.
QChar typedCharacter(const QKeyEvent* event);

} // namespace controls
