#include "platform/jet/engines/SqliteLetters.h"

#include "platform/values/Letters.h"

#include <sqlite3.h>

#include <vector>

namespace jet {

namespace {

/// nullptr for Null.
const char* textOf(sqlite3_value* value) {
    return reinterpret_cast<const char*>(sqlite3_value_text(value));
}

QByteArrayView bytesOf(sqlite3_value* value) {
    const char* text = textOf(value);
    return {text, sqlite3_value_bytes(value)};
}

void giveText(sqlite3_context* context, const QByteArray& text) {
    sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

/// A function of one text; `plain` is what it does with ASCII.
template <QString (*change)(QStringView), QByteArray (*plain)(const QByteArray&)>
void changed(sqlite3_context* context, int, sqlite3_value** values) {
    if (textOf(values[0]) == nullptr)
        return sqlite3_result_null(context);
    const QByteArrayView bytes = bytesOf(values[0]);
    if (values::isPlain(bytes))
        giveText(context, plain(bytes.toByteArray()));
    else
        giveText(context, change(QString::fromUtf8(bytes)).toUtf8());
}

QByteArray small(const QByteArray& ascii) {
    return ascii.toLower();
}
QByteArray capital(const QByteArray& ascii) {
    return ascii.toUpper();
}

/// A mask of LIKE, whose escape is the backslash.
class Mask {
  public:
    explicit Mask(QByteArrayView utf8) {
        bool escaped = false;
        for (const char32_t c : values::lowered(QString::fromUtf8(utf8)).toUcs4()) {
            if (!escaped && c == U'\\') {
                escaped = true;
                continue;
            }
            m_pieces.push_back({!escaped && c == U'%'   ? Piece::Any
                                : !escaped && c == U'_' ? Piece::One
                                                        : Piece::Letter,
                                c});
            escaped = false;
        }
    }

    bool fits(QByteArrayView utf8) const {
        const QList<uint> text = values::lowered(QString::fromUtf8(utf8)).toUcs4();
        std::size_t piece = 0, afterAny = 0;
        qsizetype at = 0, retry = -1;
        while (at < text.size()) {
            if (piece < m_pieces.size() && m_pieces[piece].kind == Piece::Any) {
                afterAny = ++piece;
                retry = at;
            } else if (piece < m_pieces.size() &&
                       (m_pieces[piece].kind == Piece::One || m_pieces[piece].letter == text[at])) {
                ++piece;
                ++at;
            } else if (retry >= 0) {
                piece = afterAny;
                at = ++retry;
            } else {
                return false;
            }
        }
        while (piece < m_pieces.size() && m_pieces[piece].kind == Piece::Any)
            ++piece;
        return piece == m_pieces.size();
    }

  private:
    struct Piece {
        enum Kind { Letter, One, Any } kind;
        char32_t letter;
    };
    std::vector<Piece> m_pieces;
};

void like(sqlite3_context* context, int, sqlite3_value** values) {
    if (textOf(values[0]) == nullptr || textOf(values[1]) == nullptr)
        return sqlite3_result_null(context);
    const auto* mask = static_cast<const Mask*>(sqlite3_get_auxdata(context, 0));
    if (mask != nullptr)
        return sqlite3_result_int(context, mask->fits(bytesOf(values[1])) ? 1 : 0);
    auto made = std::make_unique<Mask>(bytesOf(values[0]));
    sqlite3_result_int(context, made->fits(bytesOf(values[1])) ? 1 : 0);
    sqlite3_set_auxdata(context, 0, made.release(), // it may let it go at once
                        [](void* kept) { delete static_cast<Mask*>(kept); });
}

} // namespace

void addLetters(sqlite3* db) {
    using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
    const auto add = [db](const char* name, int arguments, Function function) {
        sqlite3_create_function_v2(db, name, arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   function, nullptr, nullptr, nullptr);
    };
    add("letters_lower", 1, changed<values::lowered, small>);
    add("letters_upper", 1, changed<values::uppered, capital>);
    add("letters_fold", 1, changed<values::folded, small>);
    add("letters_like", 2, like);
}

} // namespace jet
