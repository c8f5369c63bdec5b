#pragma once

#include <QString>

namespace core {

/// A place of its own for the copy of a paper that another program opens, in the user's own cache
/// and under the paper's name. Copies older than a week go. Throws keeping::Refusal.
QString placeForCopy(const QString& fileName);

/// Whether a file of that name can be printed behind a traveler: a PDF or a picture.
bool isPrintable(const QString& fileName);

} // namespace core
