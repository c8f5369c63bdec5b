#include "platform/values/Letters.h"

#include "platform/values/Literals.h"

#include <QHash>

#include <algorithm>

namespace values {

namespace {

constexpr char16_t firstMark = 0x300, lastMark = 0x36f; ///< accents that follow their letter
constexpr int fewSpellings = 256;

bool isAscii(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

char32_t smallOf(char32_t c) {
    if (c < 0x80)
        return c >= U'A' && c <= U'Z' ? c | 0x20 : c;
    const char32_t small = QChar::toLower(c);
    return small < 0x80 ? c : small;
}

char32_t capitalOf(char32_t c) {
    const char32_t capital = QChar::toUpper(c);
    return c >= 0x80 && capital < 0x80 ? c : capital;
}

/// A text with each of its letters as another.
template <class Other>
QString eachLetter(QStringView text, Other other) {
    QString made = text.toString();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            const char32_t changed = other(QChar::surrogateToUcs4(c, text[i + 1].unicode()));
            made[i] = QChar(QChar::highSurrogate(changed));
            made[++i] = QChar(QChar::lowSurrogate(changed));
        } else if (const auto changed = static_cast<char16_t>(other(c)); changed != c) {
            made[i] = QChar(changed);
        }
    }
    return made;
}

/// Letters that no decomposition makes plain.
constexpr std::pair<char16_t, const char16_t*> ownFolds[] = {
    {u'ß', u"ss"}, {u'æ', u"ae"}, {u'œ', u"oe"}, {u'ø', u"o"}, {u'ł', u"l"}, {u'đ', u"d"},
    {u'ð', u"d"},  {u'þ', u"th"}, {u'ı', u"i"},  {u'ħ', u"h"}, {u'ŧ', u"t"}, {u'ŋ', u"n"},
    {u'ς', u"σ"},  {u'ё', u"е"},  {u'є', u"е"},  {u'і', u"и"}, {u'ї', u"и"}, {u'ґ', u"г"}};

/// What a small letter is without its accents; itself if it has none.
QString plainLetter(char16_t letter) {
    for (const auto& [own, fold] : ownFolds)
        if (own == letter)
            return QString::fromUtf16(fold);
    const QChar c(letter);
    if (c.decompositionTag() != QChar::Canonical && c.decompositionTag() != QChar::Compat)
        return c;
    QString plain;
    const QString parts = c.decomposition();
    if (parts == QString(c))
        return c;
    for (const QChar part : parts)
        if (part.isLetter() && part.category() != QChar::Letter_Modifier)
            plain += plainLetter(static_cast<char16_t>(smallOf(part.unicode())));
    return plain.isEmpty() ? QString(c) : plain;
}

/// All letters with accents of Latin and Greek; of Cyrillic those that don't stand at their place.
struct Folds {
    FoldedLetters data;
    QHash<char16_t, QString> of;

    Folds() {
        for (const auto& [first, last] :
             {std::pair<int, int>{0xc0, 0x24f}, {0x386, 0x3ce}, {0x1e00, 0x1eff}, {0x1f00, 0x1fff}})
            for (int letter = first; letter <= last; ++letter)
                add(static_cast<char16_t>(letter));
        for (const auto& [own, fold] : ownFolds)
            add(own);
        // The dotted capital I is no other case of i, but stands with it.
        take(u'İ', u"i"_s);
        for (char16_t mark = firstMark; mark <= lastMark; ++mark) {
            of.insert(mark, QString());
            data.from += QChar(mark);
        }
    }

    void add(char16_t letter) {
        if (!QChar::isLetter(letter) || smallOf(letter) != letter)
            return;
        if (const QString plain = plainLetter(letter); plain != QChar(letter))
            take(letter, plain);
    }

    void take(char16_t letter, const QString& plain) {
        if (of.contains(letter))
            return;
        of.insert(letter, plain);
        if (plain.size() == 1) {
            data.from += QChar(letter);
            data.to += plain;
        } else {
            data.longer.emplace_back(QString(QChar(letter)), plain);
        }
    }
};

const Folds& folds() {
    static const Folds made;
    return made;
}

/// The letters beyond ASCII that become a small letter.
const QHash<char32_t, std::vector<char32_t>>& casesOf() {
    static const QHash<char32_t, std::vector<char32_t>> made = [] {
        QHash<char32_t, std::vector<char32_t>> all;
        constexpr char32_t lastCased = 0x1efff;
        for (char32_t c = 0x80; c <= lastCased; ++c) {
            const char32_t small = smallOf(c);
            if (small != c)
                all[small].push_back(c);
        }
        for (auto cases = all.begin(); cases != all.end(); ++cases)
            cases->push_back(cases.key());
        return all;
    }();
    return made;
}

} // namespace

QString lowered(QStringView text) {
    return eachLetter(text, smallOf);
}

QString uppered(QStringView text) {
    return eachLetter(text, capitalOf);
}

QString folded(QStringView text) {
    const QString small = lowered(text);
    if (isAscii(small))
        return small;
    QString plain;
    plain.reserve(small.size() + 4);
    for (const QChar c : small) {
        const auto fold =
            c.unicode() < 0x80 ? folds().of.cend() : folds().of.constFind(c.unicode());
        if (fold == folds().of.cend())
            plain += c;
        else
            plain += *fold;
    }
    return plain;
}

bool sameText(QStringView a, QStringView b) {
    if (a.size() != b.size()) // the two cases of a letter are of one length
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        const char16_t x = a[i].unicode(), y = b[i].unicode();
        if (x == y)
            continue;
        if (QChar::isSurrogate(x))
            return lowered(a) == lowered(b);
        if (smallOf(x) != smallOf(y))
            return false;
    }
    return true;
}

int compareText(QStringView a, QStringView b) {
    if (isAscii(a) && isAscii(b))
        return a.compare(b, Qt::CaseInsensitive);
    return sortKey(a.toUtf8()).compare(sortKey(b.toUtf8()));
}

qsizetype indexOfText(QStringView text, QStringView part, qsizetype from) {
    if (isAscii(part)) { // its letters have no other cases than ASCII's
        qsizetype at = text.indexOf(part, from, Qt::CaseInsensitive);
        while (at >= 0 && !isAscii(text.mid(at, part.size())))
            at = text.indexOf(part, at + 1, Qt::CaseInsensitive);
        return at;
    }
    return lowered(text).indexOf(lowered(part), from);
}

bool startsWithText(QStringView text, QStringView start) {
    return sameText(text.left(start.size()), start);
}

qsizetype indexOfText(const QStringList& list, QStringView text) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](const QString& one) { return sameText(one, text); });
    return found == list.end() ? -1 : found - list.begin();
}

bool isPlain(QByteArrayView utf8) {
    return std::all_of(utf8.begin(), utf8.end(),
                       [](char c) { return static_cast<signed char>(c) >= 0; });
}

QByteArray sortKey(QByteArrayView utf8) {
    if (isPlain(utf8)) {
        // Both parts are the same; the second only comes to word against texts with accents.
        const QByteArray small = utf8.toByteArray().toLower();
        return small + '\0' + small;
    }
    const QString text = QString::fromUtf8(utf8);
    return folded(text).toUtf8() + '\0' + lowered(text).toUtf8();
}

Spellings spellingsOf(QStringView text) {
    int count = 1;
    for (const char32_t c : text.toUcs4()) {
        if (c < 0x80)
            continue;
        const auto cases = casesOf().constFind(smallOf(c));
        if (cases != casesOf().cend())
            count *= static_cast<int>(cases->size());
        if (count > fewSpellings)
            return Spellings::Many;
    }
    return count > 1 ? Spellings::Few : Spellings::One;
}

QStringList spellings(QStringView text) {
    QStringList all{u""_s};
    for (const char32_t c : text.toUcs4()) {
        const auto cases = c < 0x80 ? casesOf().cend() : casesOf().constFind(smallOf(c));
        if (cases == casesOf().cend()) {
            for (QString& one : all)
                one += QChar::fromUcs4(c);
            continue;
        }
        QStringList more;
        for (const QString& one : std::as_const(all))
            for (const char32_t other : *cases)
                more << one + QString::fromUcs4(&other, 1);
        all = more;
    }
    return all;
}

const FoldedLetters& foldedLetters() {
    return folds().data;
}

} // namespace values
