#include "platform/values/Text.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace values {

namespace keys {

KeyFilter description() {
    return {u"*"_s, true, u"|'#[]\""_s};
}
KeyFilter treeName() {
    return {u"*"_s, true, u"|'\\\""_s};
}
KeyFilter name() {
    return {u"*"_s, true, u"|'\""_s};
}
KeyFilter decimal() {
    return {u"0123456789."_s, true, {}};
}
KeyFilter digits() {
    return {u"0123456789"_s, true, {}};
}

} // namespace keys

char16_t validKey(char16_t key, const QString& allowed, bool allowBackspace,
                  const QString& denied) {
    constexpr char16_t backspace = 8;
    const QString typed = QString(QChar(key)).toUpper();
    const bool isAllowed = allowed == u"*" || (allowBackspace && key == backspace) ||
                           allowed.toUpper().contains(typed);
    const bool isDenied = !denied.isEmpty() && denied.toUpper().contains(typed);
    return isAllowed && !isDenied ? key : u'\0';
}

QString filtered(const QString& text, const KeyFilter& filter) {
    if (filter.isOpen())
        return text;
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text) {
        if (validKey(c.unicode(), filter) != 0)
            kept += c;
    }
    return kept;
}

QString padText(const QString& value, int width, QString& fill) {
    if (fill.size() != 1)
        fill = u" "_s;
    const QString trimmed = value.trimmed();
    return trimmed.size() < width ? trimmed.rightJustified(width, fill[0]) : trimmed.left(width);
}

int findListIndex(const QStringList& items, const QString& value) {
    return static_cast<int>(items.indexOf(value));
}

QString stripNull(const QString& text) {
    const auto end = text.indexOf(QChar(u'\0'));
    return end < 0 ? QString() : text.left(end);
}

QString quoted(const QString& text) {
    QString doubled = text;
    doubled.replace(u'\'', u"''"_s);
    return doubled;
}

QString numberField(const QString& text, QStringView mask, const QString& fallback) {
    if (!isNumeric(text))
        return fallback;
    QString plain = text;
    plain.remove(u',');
    return format(val(plain), mask);
}

QString dateField(const QString& text) {
    const QDate date = dateFromText(text);
    return date.isValid() ? format(date, u"Short Date") : QString::fromUtf16(blankDate);
}

} // namespace values
