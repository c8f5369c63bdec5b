#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace screen {

/// Asks where to save a file, with a name to begin with, and writes what `content` gives; the file
/// is whole or not there. Says why where that fails.
void saveFile(const QString& suggested, const std::function<QByteArray()>& content);

} // namespace screen
