#pragma once

#include "platform/jet/Tree.h"

#include <QStringView>

#include <vector>

namespace jet {

struct Token {
    enum class Kind { Word, Name, Literal, Symbol, End };
    Kind kind = Kind::End;
    QString text;     ///< word, name without its brackets, symbol
    int position = 0; ///< in the key
    LiteralKind literalKind = LiteralKind::Text;
    int literal = -1;                                     ///< index of a lifted literal
    values::Spellings spellings = values::Spellings::One; ///< of a text
    Value value;                                          ///< of a literal that stayed in the key

    bool isWord(QStringView word) const {
        return kind == Kind::Word && text.compare(word, Qt::CaseInsensitive) == 0;
    }
    bool isSymbol(QStringView symbol) const { return kind == Kind::Symbol && text == symbol; }
};

/// The placeholder of a text tells how it can be compared.
constexpr char16_t textMark(values::Spellings spellings) {
    return spellings == values::Spellings::One   ? u't'
           : spellings == values::Spellings::Few ? u'u'
                                                 : u'w';
}
constexpr bool isTextMark(char16_t mark) {
    return mark == u't' || mark == u'u' || mark == u'w';
}

/// The tokens of a key as normalize() makes it, closed by one of kind End. Throws Error(syntax) on
/// characters that the dialect doesn't have.
std::vector<Token> tokenize(QStringView key);

/// The key from `position` on with its literals put back, for messages.
QString textOfKey(QStringView key, const std::vector<Value>& literals, int position = 0);

} // namespace jet
