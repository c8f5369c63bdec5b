#pragma once

class QWidget;

namespace core {

/// The Edit menu on one control, through the part of its text that is selected. Controls without a
/// selection are passed over; cut, paste and delete leave a locked control as it is.
namespace edit {
void copy(QWidget* control);
void cut(QWidget* control);
void paste(QWidget* control);
void deleteSelection(QWidget* control);
/// Whether the control shows text that takes no entries.
bool isLocked(QWidget* control);
} // namespace edit

} // namespace core
