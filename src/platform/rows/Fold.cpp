#include "platform/rows/Fold.h"

#include <QString>

#include <algorithm>

namespace rows {

namespace {

/// Letters whose mark no decomposition takes off.
QString plainLetter(char16_t letter) {
    switch (letter) {
    case u'ø':
        return QStringLiteral("o");
    case u'ł':
        return QStringLiteral("l");
    case u'đ':
        return QStringLiteral("d");
    case u'æ':
        return QStringLiteral("ae");
    case u'œ':
        return QStringLiteral("oe");
    case u'þ':
        return QStringLiteral("th");
    case u'ß':
        return QStringLiteral("ss");
    default:
        return QString(QChar(letter));
    }
}

} // namespace

QByteArray folded(QStringView text) {
    const QString small = text.toString().toCaseFolded().normalized(QString::NormalizationForm_KD);
    QString plain;
    plain.reserve(small.size());
    for (const QChar letter : small) {
        if (!letter.isMark())
            plain += letter.unicode() < 128 ? QString(letter) : plainLetter(letter.unicode());
    }
    return plain.toUtf8();
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
