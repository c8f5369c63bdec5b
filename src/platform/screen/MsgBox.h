#pragma once

#include <QString>

namespace screen {

enum class Icon { None, Critical, Question, Exclamation, Information };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryClose };
enum class Answer { Ok = 1, Cancel = 2, Retry = 4, Yes = 6, No = 7, Close = 8 };

/// Shows a message and waits for its answer. An empty title is the program's "Mirsa". Escape
/// answers Cancel, or No or Close where there is no Cancel. `defaultButton` is the answer that
/// Enter gives; the first button if not said.
Answer MsgBox(const QString& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None,
              const QString& title = {}, Answer defaultButton = Answer{});

/// Asks before something is deleted; what Enter gives is No, or Cancel.
bool confirmDeletion(const QString& question, const QString& title = {}, Icon icon = Icon::Question,
                     Buttons buttons = Buttons::YesNo);

/// Asks for one line; empty for Cancel.
QString InputBox(const QString& prompt, const QString& title = {}, const QString& text = {});

/// The run-time's own sound for something that can't be done.
void beep();

} // namespace screen
