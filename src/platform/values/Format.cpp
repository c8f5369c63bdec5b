#include "platform/values/Format.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <array>

namespace values {

namespace {

struct NumberMask {
    QString prefix;
    QString suffix;
    int forcedWhole = 0;    ///< zeros in front of the point
    int shownFraction = 0;  ///< digits behind it at most
    int forcedFraction = 0; ///< of them shown even where they are 0
    bool point = false;
    bool grouped = false;
};

/// Where the places of a mask begin: a point behind letters is part of a currency symbol ("kr.").
qsizetype maskBegin(QStringView mask) {
    if (mask.startsWith(u'.'))
        return 0;
    qsizetype begin = 0;
    while (begin < mask.size() && mask[begin] != u'#' && mask[begin] != u'0')
        ++begin;
    return begin;
}

NumberMask parsedMask(QStringView mask) {
    NumberMask parsed;
    const auto isPlace = [](QChar c) { return c == u'#' || c == u'0' || c == u',' || c == u'.'; };
    const qsizetype begin = maskBegin(mask);
    qsizetype end = begin;
    while (end < mask.size() && isPlace(mask[end]))
        ++end;
    parsed.prefix = mask.left(begin).toString();
    parsed.suffix = mask.mid(end).toString();
    for (qsizetype i = begin; i < end; ++i) {
        const QChar c = mask[i];
        if (c == u'.') {
            parsed.point = true;
        } else if (c == u',') {
            parsed.grouped = true;
        } else if (parsed.point) {
            ++parsed.shownFraction;
            if (c == u'0')
                parsed.forcedFraction = parsed.shownFraction;
        } else if (c == u'0' || parsed.forcedWhole > 0) {
            ++parsed.forcedWhole; // a 0 forces every place to its right
        }
    }
    return parsed;
}

/// Decimal digits of a magnitude without sign or exponent, as it prints in 15 digits.
QString plainDigits(double magnitude) {
    const QByteArray text = QByteArray::number(magnitude, 'e', 14);
    const auto e = text.indexOf('e');
    const int exponent = text.mid(e + 1).toInt();
    QString digits = QString::fromLatin1(text.left(1) + text.mid(2, e - 2));
    const int whole = exponent + 1;
    if (whole <= 0)
        return u"0."_s + QString(-whole, u'0') + digits;
    if (whole >= digits.size())
        return digits + QString(whole - digits.size(), u'0');
    return digits.left(whole) + u'.' + digits.mid(whole);
}

/// Rounds half away from zero to a number of decimals, on the decimal text.
QString roundedDigits(const QString& plain, int decimals) {
    const auto point = plain.indexOf(u'.');
    QString whole = point < 0 ? plain : plain.left(point);
    QString fraction = point < 0 ? QString() : plain.mid(point + 1);
    const bool up = fraction.size() > decimals && fraction[decimals] >= u'5';
    fraction = fraction.left(decimals).leftJustified(decimals, u'0');
    QString digits = whole + fraction;
    if (up) {
        auto i = digits.size() - 1;
        while (i >= 0 && digits[i] == u'9')
            digits[i--] = u'0';
        if (i >= 0)
            digits[i] = QChar(digits[i].unicode() + 1);
        else
            digits.prepend(u'1');
    }
    const auto wholeSize = digits.size() - decimals;
    return digits.left(wholeSize) + u'.' + digits.mid(wholeSize);
}

QString formatDigits(bool negative, const QString& plain, QStringView mask) {
    const NumberMask parsed = parsedMask(mask);
    const QString rounded = roundedDigits(plain, parsed.shownFraction);
    const auto point = rounded.indexOf(u'.');
    QString whole = rounded.left(point);
    QString fraction = rounded.mid(point + 1);
    const bool isZero = (whole + fraction).count(u'0') == whole.size() + fraction.size();

    while (whole.startsWith(u'0'))
        whole.remove(0, 1);
    whole = whole.rightJustified(parsed.forcedWhole, u'0');
    while (fraction.size() > parsed.forcedFraction && fraction.endsWith(u'0'))
        fraction.chop(1);
    if (parsed.grouped) {
        for (auto i = whole.size() - 3; i > 0; i -= 3)
            whole.insert(i, u',');
    }
    QString text = whole;
    if (parsed.point)
        text += u'.' + fraction;
    return (negative && !isZero ? u"-"_s : QString()) + parsed.prefix + text + parsed.suffix;
}

constexpr std::array<const char16_t*, 12> monthNames = {
    u"January", u"February", u"March",     u"April",   u"May",      u"June",
    u"July",    u"August",   u"September", u"October", u"November", u"December"};
constexpr std::array<const char16_t*, 7> dayNames = {
    u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday", u"Sunday"};

QString twoDigits(int n) {
    return QString::number(n).rightJustified(2, u'0');
}

/// One run of a date pattern's letter, such as "mm"; `minutes` where m follows an hour.
QString datePiece(const QDateTime& moment, QChar letter, int count, bool afternoonMark,
                  bool minutes) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    switch (letter.unicode()) {
    case u'y':
        return count > 2 ? QString::number(date.year()).rightJustified(4, u'0')
                         : twoDigits(date.year() % 100);
    case u'm': {
        if (minutes)
            return count > 1 ? twoDigits(time.minute()) : QString::number(time.minute());
        QString name = QString::fromUtf16(monthNames[static_cast<size_t>(date.month() - 1)]);
        if (count >= 4)
            return name;
        if (count == 3)
            return name.left(3);
        return count == 2 ? twoDigits(date.month()) : QString::number(date.month());
    }
    case u'd': {
        QString name = QString::fromUtf16(dayNames[static_cast<size_t>(date.dayOfWeek() - 1)]);
        if (count >= 4)
            return name;
        if (count == 3)
            return name.left(3);
        return count == 2 ? twoDigits(date.day()) : QString::number(date.day());
    }
    case u'h': {
        int hour = time.hour();
        if (afternoonMark)
            hour = hour % 12 == 0 ? 12 : hour % 12;
        return count > 1 ? twoDigits(hour) : QString::number(hour);
    }
    case u'n':
        return count > 1 ? twoDigits(time.minute()) : QString::number(time.minute());
    case u's':
        return count > 1 ? twoDigits(time.second()) : QString::number(time.second());
    default:
        return QString(count, letter);
    }
}

} // namespace

QString format(double value, QStringView mask) {
    if (!std::isfinite(value))
        throw Overflow();
    return formatDigits(value < 0, plainDigits(std::abs(value)), mask);
}

QString format(Currency value, QStringView mask) {
    QString digits = value.toText();
    const bool negative = digits.startsWith(u'-');
    if (negative)
        digits.remove(0, 1);
    return formatDigits(negative, digits, mask);
}

QString format(const QDate& date, QStringView mask) {
    return format(date.startOfDay(Qt::UTC), mask);
}

QString format(const QDateTime& moment, QStringView mask) {
    if (!moment.isValid())
        return {};
    if (mask.compare(u"Short Date", Qt::CaseInsensitive) == 0)
        return format(moment, u"m/d/yyyy");
    if (mask.compare(u"Long Date", Qt::CaseInsensitive) == 0)
        return format(moment, u"dddd, mmmm d, yyyy");

    const bool afternoonMark = mask.contains(u"AM/PM", Qt::CaseInsensitive);
    QString text;
    QChar lastLetter;
    for (qsizetype i = 0; i < mask.size();) {
        if (mask.mid(i, 5).compare(u"AM/PM", Qt::CaseInsensitive) == 0) {
            text += moment.time().hour() < 12 ? u"AM"_s : u"PM"_s;
            i += 5;
            continue;
        }
        const QChar letter = mask[i].toLower();
        if (!QStringView(u"ymdhns").contains(letter)) {
            text += mask[i++];
            continue;
        }
        qsizetype end = i;
        while (end < mask.size() && mask[end].toLower() == letter)
            ++end;
        text += datePiece(moment, letter, static_cast<int>(end - i), afternoonMark,
                          letter == u'm' && lastLetter == u'h');
        lastLetter = letter;
        i = end;
    }
    return text;
}

QDate dateFromText(QStringView text) {
    const QStringView trimmed = text.trimmed();
    const auto number = [](QStringView piece, qsizetype most) {
        if (piece.isEmpty() || piece.size() > most)
            return -1;
        for (const QChar c : piece) {
            if (c < u'0' || c > u'9')
                return -1;
        }
        return piece.toInt();
    };
    if (trimmed.size() == 8 && number(trimmed, 8) >= 0)
        return QDate(trimmed.left(4).toInt(), trimmed.mid(4, 2).toInt(), trimmed.mid(6).toInt());

    QChar separator;
    for (const QChar c : {QChar(u'/'), QChar(u'-'), QChar(u'.')}) {
        if (trimmed.contains(c))
            separator = c;
    }
    if (separator.isNull())
        return {};
    const auto pieces = trimmed.split(separator);
    if (pieces.size() != 3)
        return {};
    const QStringView a = pieces[0].trimmed(), b = pieces[1].trimmed(), c = pieces[2].trimmed();
    if (a.size() == 4) {
        const int year = number(a, 4), month = number(b, 2), day = number(c, 2);
        return year < 0 || month < 0 || day < 0 ? QDate() : QDate(year, month, day);
    }
    const int month = number(a, 2), day = number(b, 2);
    int year = number(c, 4);
    if (month < 0 || day < 0 || year < 0 || c.size() == 3)
        return {};
    if (c.size() <= 2)
        year += year < 30 ? 2000 : 1900;
    return QDate(year, month, day);
}

QDate dateFromShown(QStringView text) {
    const QStringView trimmed = text.trimmed();
    if (trimmed.contains(u'/'))
        return dateFromText(trimmed);
    const auto pieces = trimmed.split(u", ");
    if (pieces.size() != 3)
        return {};
    const auto monthAndDay = pieces[1].split(u' ');
    if (monthAndDay.size() != 2)
        return {};
    const auto name = std::find_if(monthNames.begin(), monthNames.end(), [&](const char16_t* one) {
        return monthAndDay[0].compare(QStringView(one), Qt::CaseInsensitive) == 0;
    });
    return name == monthNames.end() ? QDate()
                                    : QDate(pieces[2].toInt(), int(name - monthNames.begin()) + 1,
                                            monthAndDay[1].toInt());
}

QString sqlDate(const QDate& date) {
    return format(date, u"mm/dd/yyyy");
}

} // namespace values
