#pragma once

#include <QMap>
#include <QString>

namespace keeping {

/// The lines "name=value" of a settings file or of a backup's side file; none if it can't be read.
QMap<QString, QString> readLines(const QString& path);

} // namespace keeping
