#include "platform/rows/Fold.h"

#include "platform/values/Letters.h"

#include <algorithm>

namespace rows {

QByteArray folded(QStringView text) {
    return values::folded(text).toUtf8();
}

void appendFolded(std::string& to, std::string_view utf8) {
    const bool plain = std::all_of(utf8.begin(), utf8.end(),
                                   [](char c) { return static_cast<unsigned char>(c) < 128; });
    if (!plain) {
        const QByteArray other =
            folded(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
        to.append(other.constData(), static_cast<std::size_t>(other.size()));
        return;
    }
    for (const char c : utf8)
        to += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace rows
