#include "platform/values/Numbers.h"

#include "platform/values/Literals.h"

#include <cmath>
#include <limits>

namespace values {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Nearest whole number, ties to even, whatever the rounding mode of the processor.
double roundedToEven(double value) {
    const double below = std::floor(value);
    const double rest = value - below;
    if (rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0))
        return below + 1;
    return below;
}

template <class Whole>
Whole whole(double value) {
    const double rounded = roundedToEven(value);
    if (!(rounded >= std::numeric_limits<Whole>::min() &&
          rounded <= std::numeric_limits<Whole>::max()))
        throw Overflow();
    return static_cast<Whole>(rounded);
}

} // namespace

double val(QStringView text) {
    QByteArray number;
    bool point = false, exponent = false, digits = false;
    for (const QChar c : text) {
        if (c.isSpace())
            continue;
        if (isDigit(c)) {
            digits = true;
        } else if (c == u'+' || c == u'-') {
            const char before = number.isEmpty() ? 'e' : number.back();
            if (before != 'e')
                break;
        } else if (c == u'.' && !point && !exponent) {
            point = true;
        } else if ((c == u'e' || c == u'E') && digits && !exponent) {
            exponent = true;
        } else {
            break;
        }
        number += static_cast<char>(c.toLower().unicode());
    }
    if (!digits)
        return 0;
    // An exponent sign without digits behind it isn't part of the number.
    while (!isDigit(QLatin1Char(number.back())) && number.back() != '.')
        number.chop(1);
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok ? value : 0;
}

bool isNumeric(QStringView text) {
    const QStringView trimmed = text.trimmed();
    qsizetype i = 0;
    const auto peek = [&] { return i < trimmed.size() ? trimmed[i] : QChar(); };
    if (peek() == u'+' || peek() == u'-')
        ++i;
    bool digits = false;
    while (isDigit(peek()) || (digits && peek() == u',')) {
        digits = true;
        ++i;
    }
    if (peek() == u'.') {
        ++i;
        while (isDigit(peek())) {
            digits = true;
            ++i;
        }
    }
    if (!digits)
        return false;
    if (peek() == u'e' || peek() == u'E') {
        ++i;
        if (peek() == u'+' || peek() == u'-')
            ++i;
        if (!isDigit(peek()))
            return false;
        while (isDigit(peek()))
            ++i;
    }
    return i == trimmed.size();
}

std::int16_t cInt(double value) {
    return whole<std::int16_t>(value);
}

std::int16_t cInt(QStringView text) {
    return cInt(val(text));
}

std::int32_t cLng(double value) {
    return whole<std::int32_t>(value);
}

QString numberText(double value) {
    if (!std::isfinite(value))
        throw Overflow();
    if (value == 0)
        return u"0"_s;
    if (std::abs(value) < 1e15 && value == std::floor(value))
        return QString::number(static_cast<qint64>(value));
    QString text = QString::number(value, 'g', QLocale::FloatingPointShortest);
    if (text.contains(u'e') && std::abs(value) >= 1e-9 && std::abs(value) < 1e15) {
        text = QString::number(value, 'f', 20);
        while (text.endsWith(u'0'))
            text.chop(1);
    }
    return text;
}

} // namespace values
