#pragma once

#include "platform/values/Literals.h"

#include <QString>
#include <QStringList>
#include <QStringView>

namespace values {

/// Which keys a field takes; see validKey.
struct KeyFilter {
    QString allowed = u"*"_s;
    bool allowBackspace = true;
    QString denied;

    bool isOpen() const { return allowed == u"*" && denied.isEmpty(); }
};

/// The key sets in use.
namespace keys {
KeyFilter description(); ///< anything but | ' # [ ] and the double quote
KeyFilter treeName();    ///< anything but | ' \ and the double quote
KeyFilter name();        ///< anything but | ' and the double quote
KeyFilter decimal();     ///< 0123456789.
KeyFilter digits();      ///< 0123456789
} // namespace keys

/// The key code to use for a typed character: itself, or 0 to swallow it. "*" allows everything;
/// a denied character is swallowed even where it is allowed; letters match without regard to case.
char16_t validKey(char16_t key, const QString& allowed, bool allowBackspace, const QString& denied);
inline char16_t validKey(char16_t key, const KeyFilter& filter) {
    return validKey(key, filter.allowed, filter.allowBackspace, filter.denied);
}

/// What is left of pasted or dropped text when each character is put through validKey.
QString filtered(const QString& text, const KeyFilter& filter);

/// The trimmed text, with `fill` repeated in front up to `width`; cut to its left `width`
/// characters if longer. A fill that isn't one character becomes one blank, in the caller too.
QString padText(const QString& value, int width, QString& fill);

/// Index of the first item equal to the value, or -1.
int findListIndex(const QStringList& items, const QString& value);

/// What stands before the first NUL; empty if there is no NUL.
QString stripNull(const QString& text);

/// The text with its apostrophes doubled, for use between single quotes in SQL.
QString quoted(const QString& text);

/// The text of a numeric field after it was left: through the mask, or `fallback` if not numeric.
QString numberField(const QString& text, QStringView mask, const QString& fallback = u"0"_s);
/// The text of a date field after it was left: Short Date, or the blank pattern.
QString dateField(const QString& text);

} // namespace values
