#pragma once

#include <QString>

namespace testsupport {

/// A file or folder of the checkout, by its path from the top.
QString sourceFile(const QString& path = {});
/// A file or folder of the build tree.
QString builtFile(const QString& path = {});

} // namespace testsupport
