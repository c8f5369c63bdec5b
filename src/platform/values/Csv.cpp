#include "platform/values/Csv.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <algorithm>

namespace values {

namespace {

bool looksLikeFormula(QStringView text) {
    const auto first = std::find_if(text.begin(), text.end(), [](QChar c) { return c != u'\''; });
    return first != text.end() && QStringView(u"=+-@\t\r").contains(*first);
}

/// Where the digits of a shown number begin, behind sign and currency symbol; -1 if there are none
/// or something stands behind them.
qsizetype digitsFrom(QStringView shown) {
    qsizetype at = shown.size();
    bool point = false;
    bool digit = false;
    while (at > 0) {
        const QChar c = shown[at - 1];
        if (c.isDigit())
            digit = true;
        else if (c == u'.' && !point && (at < 2 || !shown[at - 2].isLetter()))
            point = true; // a letter in front makes it the end of a symbol such as "kr."
        else if (c != u',')
            break;
        --at;
    }
    return digit ? at : -1;
}

/// Date and time of a text; the date is invalid where it is none, the time where none is shown.
std::pair<QDate, QTime> shownMoment(QStringView shown) {
    shown = shown.trimmed();
    const qsizetype blank = shown.contains(u'/') ? shown.indexOf(u' ') : -1;
    if (blank < 0)
        return {dateFromShown(shown), {}};
    const QTime time = QTime::fromString(shown.mid(blank + 1).toString(), u"h:mm:ss AP"_s);
    return {time.isValid() ? dateFromShown(shown.left(blank)) : QDate(), time};
}

} // namespace

void appendCsvText(QString& line, QStringView text) {
    const bool defuse = looksLikeFormula(text);
    const bool quote = std::any_of(text.begin(), text.end(), [](QChar c) {
        return c == u',' || c == u'"' || c == u'\n' || c == u'\r';
    });
    if (quote)
        line += u'"';
    if (defuse)
        line += u'\'';
    if (!quote) {
        line += text;
        return;
    }
    for (const QChar c : text) {
        if (c == u'"')
            line += c;
        line += c;
    }
    line += u'"';
}

QString plainNumber(QStringView shown) {
    shown = shown.trimmed();
    const qsizetype from = digitsFrom(shown);
    if (from < 0)
        return {};
    // In front of the digits there may be a sign and a symbol, and no further digits.
    const QStringView front = shown.left(from);
    if (std::any_of(front.begin(), front.end(), [](QChar c) { return c.isDigit(); }))
        return {};
    QString plain;
    if (front.contains(u'-'))
        plain += u'-';
    if (shown[from] == u'.')
        plain += u'0';
    for (const QChar c : shown.mid(from)) {
        if (c != u',')
            plain += c;
    }
    if (plain.endsWith(u'.'))
        plain.chop(1);
    return plain;
}

std::optional<double> dayNumber(QStringView shown) {
    const auto [date, time] = shownMoment(shown);
    if (!date.isValid())
        return {};
    constexpr double day = 86'400'000;
    return double(date.toJulianDay()) + (time.isValid() ? time.msecsSinceStartOfDay() / day : 0.0);
}

QString isoDate(QStringView shown) {
    const auto [date, time] = shownMoment(shown);
    if (!date.isValid())
        return {};
    int year = 0, month = 0, day = 0;
    date.getDate(&year, &month, &day);
    // QDate's own way goes through printf, which takes as long as all the rest of a large file.
    QString iso;
    iso.reserve(19);
    const auto add = [&iso](int number) {
        iso += QChar(u'0' + number / 10 % 10);
        iso += QChar(u'0' + number % 10);
    };
    add(year / 100);
    add(year);
    iso += u'-';
    add(month);
    iso += u'-';
    add(day);
    if (time.isValid())
        iso += u' ' + time.toString(Qt::ISODate);
    return iso;
}

} // namespace values
