#include "platform/jet/Types.h"

#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"

#include <array>

namespace jet {

QByteArray declaredType(ColumnType type, int width, const Dialect& dialect) {
    const bool sqlite = dialect.engine == Dialect::Engine::Sqlite;
    switch (type) {
    case ColumnType::Counter:
        return sqlite ? "INTEGER" : "integer";
    case ColumnType::Long:
        return sqlite ? "INT" : "integer";
    case ColumnType::Integer:
        return sqlite ? "SMALLINT" : "smallint";
    case ColumnType::Double:
        return sqlite ? "DOUBLE" : "double precision";
    case ColumnType::Currency:
        return sqlite ? "DECIMAL(19,4)" : "numeric(19,4)";
    case ColumnType::Text:
        return sqlite ? "TEXT(" + QByteArray::number(width) + ") COLLATE NOCASE" : "citext";
    case ColumnType::Memo:
        return sqlite ? "LONGTEXT COLLATE NOCASE" : "citext";
    case ColumnType::YesNo:
        return sqlite ? "BOOLEAN" : "yesno";
    case ColumnType::DateTime:
        return sqlite ? "DATETIME" : "timestamp(0)";
    }
    return {};
}

DeclaredType typeFromDeclaration(QStringView declaration, bool automatic, const Dialect& dialect) {
    const QString text = declaration.toString().trimmed().toLower();
    const qsizetype bracket = text.indexOf(u'(');
    const QString name = (bracket < 0 ? text : text.left(bracket)).trimmed();
    int width = 0;
    if (bracket >= 0)
        width = QStringView(text).mid(bracket + 1, text.indexOf(u')') - bracket - 1).toInt();
    const auto starts = [&](const char16_t* prefix) {
        return name.startsWith(QStringView(prefix));
    };

    if (automatic && name.contains(u"int"))
        return {ColumnType::Counter, 0};
    if (starts(u"smallint") || name == u"int2" || name == u"tinyint")
        return {ColumnType::Integer, 0};
    if (starts(u"bool") || starts(u"yesno") || name == u"bit")
        return {ColumnType::YesNo, 0};
    if (starts(u"datetime") || starts(u"timestamp") || name == u"date" || name == u"time")
        return {ColumnType::DateTime, 0};
    if (starts(u"decimal") || starts(u"numeric") || starts(u"currency") || name == u"money")
        return {ColumnType::Currency, 0};
    if (starts(u"double") || starts(u"float") || starts(u"real"))
        return {ColumnType::Double, 0};
    if (name.contains(u"int") || name == u"long")
        return {ColumnType::Long, 0};
    if (dialect.engine == Dialect::Engine::Sqlite && name == u"text" && width > 0)
        return {ColumnType::Text, width};
    if (name.contains(u"char"))
        return {width > 0 ? ColumnType::Text : ColumnType::Memo, width};
    return {ColumnType::Memo, 0};
}

int widthFromCheck(QStringView constraintDefinition) {
    const qsizetype at = constraintDefinition.indexOf(u"<=");
    if (at < 0 || !constraintDefinition.contains(u"length"))
        return 0;
    QString digits;
    for (const QChar c : constraintDefinition.mid(at + 2)) {
        if (c.isDigit())
            digits += c;
        else if (!digits.isEmpty())
            break;
    }
    return digits.toInt();
}

QString widthCheckName(QStringView table, QStringView column) {
    return (table.toString() + u'_' + column.toString() + u"_width"_s).toLower();
}

std::vector<QByteArray> serverPrelude() {
    return {"CREATE EXTENSION IF NOT EXISTS citext",
            "DO $$ BEGIN CREATE DOMAIN yesno AS smallint; "
            "EXCEPTION WHEN duplicate_object THEN NULL; END $$"};
}

namespace {

/// The numbers of a text and the characters between them: 11/21/2025 7:05 PM.
struct Pieces {
    std::array<int, 6> numbers{};
    std::array<int, 6> digits{};
    int count = 0;
};

bool readNumber(QStringView text, qsizetype& at, int& number, int& digits) {
    number = digits = 0;
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9' && digits < 5) {
        number = number * 10 + (text[at].unicode() - u'0');
        ++digits;
        ++at;
    }
    return digits > 0;
}

void skipBlanks(QStringView text, qsizetype& at) {
    while (at < text.size() && text[at].isSpace())
        ++at;
}

std::optional<QDate> dateOf(const Pieces& p) {
    int year = p.numbers[2], month = p.numbers[0], day = p.numbers[1];
    if (p.digits[0] == 4) {
        year = p.numbers[0];
        month = p.numbers[1];
        day = p.numbers[2];
    } else {
        if (p.digits[2] <= 2)
            year += year < 30 ? 2000 : 1900;
        if (month > 12)
            std::swap(month, day);
    }
    const QDate date(year, month, day);
    if (!date.isValid() || year < 100)
        return std::nullopt;
    return date;
}

} // namespace

std::optional<QDateTime> momentFromText(QStringView text) {
    qsizetype at = 0;
    QDate date(1899, 12, 30);
    QTime time(0, 0);
    bool anything = false;

    skipBlanks(text, at);
    const auto separatorBehind = [&](qsizetype from) {
        while (from < text.size() && text[from] >= u'0' && text[from] <= u'9')
            ++from;
        return from < text.size() ? text[from] : QChar();
    };
    const QChar separator = separatorBehind(at);
    if (separator == u'/' || separator == u'-') {
        Pieces pieces;
        for (int i = 0; i < 3; ++i) {
            const auto place = static_cast<std::size_t>(i);
            if (i > 0 && (at >= text.size() || text[at++] != separator))
                return std::nullopt;
            if (!readNumber(text, at, pieces.numbers[place], pieces.digits[place]))
                return std::nullopt;
        }
        const auto read = dateOf(pieces);
        if (!read)
            return std::nullopt;
        date = *read;
        anything = true;
        if (at < text.size() && !text[at].isSpace() && text[at] != u'T')
            return std::nullopt;
        if (at < text.size())
            ++at;
        skipBlanks(text, at);
    }
    if (at < text.size()) {
        int parts[3] = {0, 0, 0};
        int digits = 0, count = 0;
        do {
            if (count == 3 || !readNumber(text, at, parts[count++], digits))
                return std::nullopt;
        } while (at < text.size() && text[at] == u':' && ++at);
        if (count == 3 && at < text.size() && text[at] == u'.') {
            const qsizetype point = at++;
            while (at < text.size() && text[at] >= u'0' && text[at] <= u'9')
                ++at;
            if (at == point + 1)
                return std::nullopt;
        }
        skipBlanks(text, at);
        const QStringView half = text.mid(at).trimmed();
        if (!half.isEmpty()) {
            const bool pm = half.compare(u"PM", Qt::CaseInsensitive) == 0;
            if ((!pm && half.compare(u"AM", Qt::CaseInsensitive) != 0) || parts[0] > 12)
                return std::nullopt;
            parts[0] = parts[0] % 12 + (pm ? 12 : 0);
        } else if (count == 1) {
            return std::nullopt;
        }
        time = QTime(parts[0], parts[1], parts[2]);
        if (!time.isValid())
            return std::nullopt;
        anything = true;
    }
    if (!anything)
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC);
}

} // namespace jet
