#include "support/Paths.h"

#include "platform/values/Literals.h"

namespace testsupport {

QString sourceFile(const QString& path) {
    return QStringLiteral(MIRSA_SOURCE_DIR "/") + path;
}

QString builtFile(const QString& path) {
    return QStringLiteral(MIRSA_BINARY_DIR "/") + path;
}

} // namespace testsupport
