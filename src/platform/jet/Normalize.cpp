#include "platform/jet/Translate.h"

#include "platform/jet/Lexer.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QVarLengthArray>

#include <array>
#include <cmath>

namespace jet {

namespace {

/// Letters, digits, _ and $, and everything beyond ASCII: one look in a table.
constexpr std::array<bool, 128> wordTable = [] {
    std::array<bool, 128> table{};
    for (unsigned char c = 'a'; c <= 'z'; ++c)
        table[c] = table[c - 32U] = true;
    for (unsigned char c = '0'; c <= '9'; ++c)
        table[c] = true;
    table['_'] = table['$'] = true;
    return table;
}();

char16_t smallOf(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c | 0x20) : c;
}
bool inWord(char16_t c) {
    return c >= 128 ? c != 0xA0 : wordTable[c];
}
bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}
bool isBlank(char16_t c) {
    return c <= u' ' || c == 0xA0;
}

/// Whether the word (its `length` characters) is `lower`, which is in small letters.
bool isWord(const char16_t* word, qsizetype length, QStringView lower) {
    if (length != lower.size())
        return false;
    for (qsizetype i = 0; i < length; ++i)
        if ((word[i] | 0x20) != lower[i].unicode())
            return false;
    return true;
}

class Normalizer {
  public:
    enum class Letters { Folded, AsWritten };
    Normalizer(QStringView text, bool lift, Letters letters)
        : m_begin(text.utf16()), m_at(m_begin), m_end(m_begin + text.size()), m_lift(lift),
          m_fold(letters == Letters::Folded) {}

    /// False: a literal stands where its value shapes the statement, so that none may be lifted.
    bool run(Normalized& result) {
        result.literals.reserve(8);
        while (m_at < m_end) {
            const char16_t c = *m_at;
            if (isBlank(c)) {
                ++m_at;
                m_pendingBlank = true;
                continue;
            }
            if (m_pendingBlank && !m_key.isEmpty())
                m_key.append(u' ');
            m_pendingBlank = false;
            if (isDigit(c) || (c == u'.' && m_at + 1 < m_end && isDigit(m_at[1]) && !m_afterName)) {
                if (!number(result, m_at))
                    return false;
            } else if (inWord(c)) {
                word();
            } else if (c == u'\'' || c == u'"') {
                if (!text(result, c))
                    return false;
            } else if (c == u'#') {
                if (!date(result))
                    return false;
            } else if (c == u'[') {
                name();
            } else if (!symbol(result, c)) {
                return false;
            }
        }
        while (!m_key.isEmpty() && (m_key.last() == u';' || m_key.last() == u' '))
            m_key.removeLast();
        result.key = QString(reinterpret_cast<const QChar*>(m_key.constData()), m_key.size());
        return true;
    }

  private:
    void copyTo(const char16_t* end) {
        m_key.append(m_at, static_cast<qsizetype>(end - m_at));
        m_at = end;
    }

    /// Copies a name, in small letters unless it is a column's alias.
    void copyName(const char16_t* start, qsizetype length) {
        const qsizetype place = m_key.size();
        m_key.append(start, length);
        if (!m_fold || (m_previous == u'a' && isWord(m_lastWord, m_lastWordLength, u"as")))
            return;
        char16_t* letter = m_key.data() + place;
        for (const char16_t* end = letter + length; letter < end; ++letter)
            *letter = smallOf(*letter);
    }

    /// What a message shows of a statement that ends within a text: its condition.
    QStringView currentExpression() const {
        const QStringView whole(m_begin, m_end);
        const qsizetype where = whole.indexOf(QStringView(u" where "), 0, Qt::CaseInsensitive);
        return where < 0 ? whole : whole.mid(where + 7);
    }

    /// Writes the placeholder of a literal, or says that it mustn't be lifted.
    bool lifted(char16_t kind) {
        if (m_inBy)
            return false;
        m_key.append(u'?');
        m_key.append(kind);
        m_previous = u'?';
        m_afterName = false;
        m_lastWordLength = 0;
        return true;
    }

    void word() {
        const char16_t* start = m_at;
        while (m_at < m_end && inWord(*m_at))
            ++m_at;
        const qsizetype length = m_at - start;
        if (m_key.isEmpty() && (isWord(start, length, u"create") ||
                                isWord(start, length, u"alter") || isWord(start, length, u"drop")))
            m_lift = m_fold = false;
        switch (length) {
        case 2:
            if (isWord(start, length, u"by")) {
                m_inBy = true;
                m_byDepth = m_depth;
            }
            break;
        case 5:
            if (isWord(start, length, u"union"))
                m_inBy = false;
            break;
        case 6:
            if (isWord(start, length, u"having") || isWord(start, length, u"select"))
                m_inBy = false;
            break;
        default:
            break;
        }
        copyName(start, length);
        m_lastWord = start;
        m_lastWordLength = length;
        m_previous = u'a';
        m_afterName = true;
    }

    bool number(Normalized& result, const char16_t* start) {
        const char16_t* digits = *start == u'-' ? start + 1 : start;
        m_at = digits;
        qint64 whole = 0;
        bool isWhole = true;
        while (m_at < m_end) {
            const char16_t c = *m_at;
            if (isDigit(c)) {
                if (isWhole && whole < Q_INT64_C(100000000000000000))
                    whole = whole * 10 + (c - u'0');
                else
                    isWhole = false;
            } else if (c == u'.') {
                isWhole = false;
            } else if ((c | 0x20) == u'e' && m_at + 1 < m_end &&
                       (isDigit(m_at[1]) || ((m_at[1] == u'-' || m_at[1] == u'+') &&
                                             m_at + 2 < m_end && isDigit(m_at[2])))) {
                isWhole = false;
                ++m_at;
            } else {
                break;
            }
            ++m_at;
        }
        const char16_t* end = m_at;
        const bool afterTop = m_lastWordLength == 3 && m_previous == u'a' &&
                              isWord(m_lastWord, m_lastWordLength, u"top");
        if (!m_lift || afterTop) {
            m_at = start;
            copyTo(end);
            m_previous = u'?';
            m_afterName = false;
            return true;
        }
        if (isWhole && whole <= 2147483647) {
            result.literals.emplace_back(digits == start ? whole : -whole);
            return lifted(u'i');
        }
        const double value = QStringView(start, end).toDouble();
        if (!std::isfinite(value))
            throw overflowError();
        result.literals.emplace_back(value);
        return lifted(u'd');
    }

    bool text(Normalized& result, char16_t quote) {
        const char16_t* start = m_at++;
        qsizetype doubled = 0;
        bool hasClass = false, isAscii = true;
        while (true) {
            if (m_at >= m_end)
                throw Error(
                    errors::syntax,
                    u"Syntax error in string in query expression '%1'."_s.arg(currentExpression()));
            if (*m_at == quote) {
                if (m_at + 1 >= m_end || m_at[1] != quote)
                    break;
                ++doubled;
                ++m_at;
            } else if (*m_at == u'[' || *m_at == u'#') {
                hasClass = true;
            } else if (*m_at >= 128) {
                isAscii = false;
            }
            ++m_at;
        }
        const char16_t* end = m_at++;
        if (!m_lift || staysText(hasClass)) {
            const char16_t* behind = m_at;
            m_at = start;
            copyTo(behind);
            m_previous = u'?';
            m_afterName = false;
            return true;
        }
        QString value(reinterpret_cast<const QChar*>(start + 1), end - start - 1);
        if (doubled > 0)
            value.replace(QString(2, QChar(quote)), QString(1, QChar(quote)));
        const char16_t mark = isAscii ? u't' : textMark(values::spellingsOf(value));
        result.literals.emplace_back(std::move(value));
        return lifted(mark);
    }

    /// A pattern with a class, and the unit of DateAdd, DateDiff and DatePart.
    bool staysText(bool hasClass) const {
        if (hasClass && m_previous == u'a')
            return isWord(m_lastWord, m_lastWordLength, u"like");
        return m_previous == u'(' && (isWord(m_lastWord, m_lastWordLength, u"dateadd") ||
                                      isWord(m_lastWord, m_lastWordLength, u"datediff") ||
                                      isWord(m_lastWord, m_lastWordLength, u"datepart"));
    }

    bool date(Normalized& result) {
        const char16_t* start = m_at++;
        while (m_at < m_end && *m_at != u'#')
            ++m_at;
        const auto moment =
            m_at < m_end ? momentFromText(QStringView(start + 1, m_at)) : std::nullopt;
        if (!moment)
            throw Error(errors::syntax, u"Syntax error in date in query expression '%1'."_s.arg(
                                            QStringView(start, m_at < m_end ? m_at + 1 : m_end)));
        const char16_t* behind = ++m_at;
        if (!m_lift) {
            m_at = start;
            copyTo(behind);
            m_previous = u'?';
            m_afterName = false;
            return true;
        }
        result.literals.emplace_back(*moment);
        return lifted(u'm');
    }

    void name() {
        const char16_t* start = m_at;
        while (m_at < m_end && *m_at != u']')
            ++m_at;
        if (m_at >= m_end)
            throw Error(errors::syntax,
                        u"Invalid bracketing of name '%1'."_s.arg(QStringView(start, m_end)));
        ++m_at;
        copyName(start, m_at - start);
        m_previous = u']';
        m_afterName = true;
        m_lastWordLength = 0;
    }

    bool symbol(Normalized& result, char16_t c) {
        if (c == u'?')
            throw Error(errors::syntax,
                        u"Syntax error in query expression '%1'."_s.arg(QStringView(m_at, m_end)));
        if (c == u'(') {
            ++m_depth;
        } else if (c == u')') {
            if (--m_depth < m_byDepth)
                m_inBy = false;
        } else if (c == u'-' && m_at + 1 < m_end && (isDigit(m_at[1]) || m_at[1] == u'.') &&
                   QStringView(u"=<>(,").contains(QChar(m_previous))) {
            return number(result, m_at);
        }
        m_key.append(c);
        ++m_at;
        m_previous = c;
        m_afterName = c == u')';
        return true;
    }

    const char16_t* m_begin;
    const char16_t* m_at;
    const char16_t* m_end;
    bool m_lift;
    bool m_fold;
    QVarLengthArray<char16_t, 1024> m_key;
    bool m_pendingBlank = false;
    char16_t m_previous = 0; ///< last character that isn't blank; 'a' for a word, '?' for a literal
    bool m_afterName = false;
    const char16_t* m_lastWord = nullptr;
    qsizetype m_lastWordLength = 0;
    int m_depth = 0;
    bool m_inBy = false; ///< in GROUP BY or ORDER BY
    int m_byDepth = 0;
};

} // namespace

namespace {

Normalized normalized(const QString& statement, Normalizer::Letters letters) {
    Normalized result;
    result.statement = statement;
    if (Normalizer(statement, true, letters).run(result))
        return result;
    // A literal in GROUP BY or ORDER BY must be the same text as in the select list, or is the
    // number of a column: then the literals are part of the statement.
    result.literals.clear();
    Normalizer(statement, false, letters).run(result);
    return result;
}

} // namespace

Normalized normalize(const QString& statement) {
    return normalized(statement, Normalizer::Letters::Folded);
}

Normalized asWritten(const Normalized& statement) {
    return normalized(statement.statement, Normalizer::Letters::AsWritten);
}

} // namespace jet
