#include "platform/jet/Lexer.h"

#include "platform/jet/Error.h"
#include "platform/jet/Types.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

bool startsWord(QChar c) {
    return c.isLetter() || c == u'_' || c == u'$';
}
bool continuesWord(QChar c) {
    return c.isLetterOrNumber() || c == u'_' || c == u'$';
}

class Lexer {
  public:
    explicit Lexer(QStringView key) : m_key(key) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        tokens.reserve(static_cast<std::size_t>(m_key.size() / 5 + 2));
        while (true) {
            while (m_at < m_key.size() && m_key[m_at].isSpace())
                ++m_at;
            Token token;
            token.position = static_cast<int>(m_at);
            if (m_at < m_key.size())
                read(token);
            tokens.push_back(std::move(token));
            if (tokens.back().kind == Token::Kind::End)
                return tokens;
        }
    }

  private:
    QChar peek(qsizetype ahead = 1) const {
        return m_at + ahead < m_key.size() ? m_key[m_at + ahead] : QChar();
    }

    void read(Token& token) {
        const QChar c = m_key[m_at];
        if (c == u'?')
            readPlaceholder(token);
        else if (startsWord(c))
            readWord(token);
        else if (c == u'[')
            readName(token);
        else if (c == u'\'' || c == u'"')
            readText(token, c);
        else if (c == u'#')
            readDate(token);
        else if (c.isDigit() || (c == u'.' && peek().isDigit() && !m_afterName))
            readNumber(token);
        else
            readSymbol(token);
        m_afterName = token.kind == Token::Kind::Word || token.kind == Token::Kind::Name;
    }

    void readPlaceholder(Token& token) {
        token.kind = Token::Kind::Literal;
        switch (peek().unicode()) {
        case textMark(values::Spellings::One):
        case textMark(values::Spellings::Few):
        case textMark(values::Spellings::Many):
            token.literalKind = LiteralKind::Text;
            token.spellings = peek() == u't'   ? values::Spellings::One
                              : peek() == u'u' ? values::Spellings::Few
                                               : values::Spellings::Many;
            break;
        case u'i':
            token.literalKind = LiteralKind::Integer;
            break;
        case u'd':
            token.literalKind = LiteralKind::Double;
            break;
        default:
            token.literalKind = LiteralKind::Date;
        }
        token.literal = m_literals++;
        m_at += 2;
    }

    void readWord(Token& token) {
        const qsizetype start = m_at;
        while (m_at < m_key.size() && continuesWord(m_key[m_at]))
            ++m_at;
        token.kind = Token::Kind::Word;
        token.text = m_key.mid(start, m_at - start).toString();
    }

    void readName(Token& token) {
        const qsizetype end = m_key.indexOf(u']', m_at);
        token.kind = Token::Kind::Name;
        token.text = m_key.mid(m_at + 1, end - m_at - 1).trimmed().toString();
        m_at = end + 1;
    }

    void readText(Token& token, QChar quote) {
        QString text = u""_s;
        ++m_at;
        while (m_at < m_key.size()) {
            if (m_key[m_at] == quote) {
                if (peek() != quote)
                    break;
                ++m_at;
            }
            text += m_key[m_at++];
        }
        ++m_at;
        token.kind = Token::Kind::Literal;
        token.literalKind = LiteralKind::Text;
        token.spellings = values::spellingsOf(text);
        token.value = Value(text);
    }

    void readDate(Token& token) {
        const qsizetype end = m_key.indexOf(u'#', m_at + 1);
        token.kind = Token::Kind::Literal;
        token.literalKind = LiteralKind::Date;
        if (const auto moment = momentFromText(m_key.mid(m_at + 1, end - m_at - 1)))
            token.value = Value(*moment);
        m_at = end + 1;
    }

    void readNumber(Token& token) {
        const qsizetype start = m_at;
        bool whole = true;
        while (m_at < m_key.size()) {
            const QChar c = m_key[m_at];
            if (c == u'.')
                whole = false;
            else if ((c == u'e' || c == u'E') &&
                     (peek().isDigit() ||
                      ((peek() == u'-' || peek() == u'+') && peek(2).isDigit()))) {
                whole = false;
                ++m_at;
            } else if (!c.isDigit())
                break;
            ++m_at;
        }
        const QStringView text = m_key.mid(start, m_at - start);
        bool fits = false;
        const qint64 number = whole ? text.toLongLong(&fits) : 0;
        token.kind = Token::Kind::Literal;
        if (fits && number <= 2147483647) {
            token.literalKind = LiteralKind::Integer;
            token.value = Value(number);
        } else {
            token.literalKind = LiteralKind::Double;
            token.value = Value(text.toDouble());
        }
    }

    void readSymbol(Token& token) {
        static constexpr QStringView single = u"=<>+-*/\\^&().,!;";
        const QChar c = m_key[m_at];
        if (!single.contains(c))
            throw Error(errors::syntax,
                        u"Syntax error in query expression '%1'."_s.arg(m_key.mid(m_at)));
        token.kind = Token::Kind::Symbol;
        const QChar next = peek();
        qsizetype length = 1;
        if ((c == u'<' && (next == u'>' || next == u'=')) || (c == u'>' && next == u'='))
            length = 2;
        token.text = m_key.mid(m_at, length).toString();
        m_at += length;
    }

    QStringView m_key;
    qsizetype m_at = 0;
    int m_literals = 0;
    bool m_afterName = false;
};

} // namespace

std::vector<Token> tokenize(QStringView key) {
    return Lexer(key).run();
}

QString textOfKey(QStringView key, const std::vector<Value>& literals, int position) {
    QString text;
    std::size_t literal = 0;
    QChar quote;
    for (qsizetype i = 0; i < key.size(); ++i) {
        const QChar c = key[i];
        QString piece(c);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == u'\'' || c == u'"' || c == u'#') {
            quote = c;
        } else if (c == u'[') {
            quote = u']';
        } else if (c == u'?' && i + 1 < key.size() && literal < literals.size()) {
            const Value& value = literals[literal++];
            piece = value.toText();
            if (isTextMark(key[i + 1].unicode()))
                piece = u'\'' + piece.replace(u'\'', u"''"_s) + u'\'';
            else if (key[i + 1] == u'm')
                piece = u'#' + piece + u'#';
            if (i >= position)
                text += piece;
            ++i;
            continue;
        }
        if (i >= position)
            text += piece;
    }
    return text;
}

} // namespace jet
