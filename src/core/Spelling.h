#pragma once

class QWidget;

namespace core {

/// Checks the spelling of a control's text, in place, in a dialog. Locked controls and those
/// without text are passed over without a word.
void checkSpelling(QWidget* control);

} // namespace core
