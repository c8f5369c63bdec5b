#pragma once

#include <QIcon>

namespace estimating {

/// A sheet with lines: the row or operation has a note.
QIcon noteIcon();
/// A sheet in outline: it has none.
QIcon noNoteIcon();

} // namespace estimating
