#include "platform/jet/Emit.h"
#include "platform/values/Literals.h"

#include <array>

namespace jet {

using Node = Expression::Node;

namespace {

/// A function that each engine writes with a pattern. `arguments` has a letter for each: t text,
/// w whole number, n number, d date; those behind a bar may be left out. {0}, {1} ... stand for the
/// arguments.
struct Function {
    const char16_t* name;
    const char* arguments;
    ColumnType type;
    const char* sqlite;
    const char* postgres;
};

constexpr Function functions[] = {
    {u"left", "tw", ColumnType::Memo, "substr({0}, 1, {1})", "left({0}::text, {1})"},
    {u"right", "tw", ColumnType::Memo, "substr({0}, max(length({0}) - {1}, 0) + 1)",
     "right({0}::text, {1})"},
    {u"mid", "tw", ColumnType::Memo, "substr({0}, {1})", "substr({0}::text, {1})"},
    {u"mid", "tww", ColumnType::Memo, "substr({0}, {1}, {2})", "substr({0}::text, {1}, {2})"},
    {u"len", "t", ColumnType::Long, "length({0})", "length({0}::text)"},
    {u"ucase", "t", ColumnType::Memo, "letters_upper({0})", "upper({0}::text)"},
    {u"lcase", "t", ColumnType::Memo, "letters_lower({0})", "lower({0}::text)"},
    {u"trim", "t", ColumnType::Memo, "trim({0})", "btrim({0}::text)"},
    {u"ltrim", "t", ColumnType::Memo, "ltrim({0})", "ltrim({0}::text)"},
    {u"rtrim", "t", ColumnType::Memo, "rtrim({0})", "rtrim({0}::text)"},
    {u"cstr", "t", ColumnType::Memo, "{0}", "{0}"},
    {u"chr", "w", ColumnType::Memo, "char({0})", "chr({0})"},
    {u"instr", "tt", ColumnType::Long, "instr(letters_lower({0}), letters_lower({1}))",
     "strpos(lower({0}::text), lower({1}::text))"},
    {u"replace", "ttt", ColumnType::Memo, "replace({0}, {1}, {2})",
     "replace({0}::text, {1}::text, {2}::text)"},
    {u"val", "n", ColumnType::Double, "coalesce(CAST({0} AS REAL), 0)",
     "coalesce(({0})::double precision, 0)"},
    {u"cdbl", "n", ColumnType::Double, "CAST({0} AS REAL)", "({0})::double precision"},
    {u"abs", "n", ColumnType::Double, "abs({0})", "abs({0})"},
    {u"int", "n", ColumnType::Double, "(CAST({0} AS INTEGER) - ({0} < CAST({0} AS INTEGER)))",
     "floor({0})"},
    {u"fix", "n", ColumnType::Double, "CAST({0} AS INTEGER)", "trunc({0})"},
    {u"round", "nw", ColumnType::Double, "round({0}, {1})", "round(({0})::numeric, {1})"},
    {u"datevalue", "d", ColumnType::DateTime, "substr({0}, 1, 10) || ' 00:00:00'",
     "date_trunc('day', {0})"},
    {u"timevalue", "d", ColumnType::DateTime, "'1899-12-30 ' || substr({0}, 12)",
     "(timestamp '1899-12-30' + ({0})::time)"},
    {u"dateserial", "www", ColumnType::DateTime,
     "datetime(printf('%04d-01-01', {0}), ({1} - 1) || ' months', ({2} - 1) || ' days')",
     "(make_timestamp({0}, 1, 1, 0, 0, 0) + make_interval(months => {1} - 1, days => {2} - 1))"},
    {u"year", "d", ColumnType::Long, "CAST(substr({0}, 1, 4) AS INTEGER)",
     "extract(year from {0})::integer"},
    {u"month", "d", ColumnType::Long, "CAST(substr({0}, 6, 2) AS INTEGER)",
     "extract(month from {0})::integer"},
    {u"day", "d", ColumnType::Long, "CAST(substr({0}, 9, 2) AS INTEGER)",
     "extract(day from {0})::integer"},
    {u"hour", "d", ColumnType::Long, "CAST(substr({0}, 12, 2) AS INTEGER)",
     "extract(hour from {0})::integer"},
    {u"minute", "d", ColumnType::Long, "CAST(substr({0}, 15, 2) AS INTEGER)",
     "extract(minute from {0})::integer"},
    {u"second", "d", ColumnType::Long, "CAST(substr({0}, 18, 2) AS INTEGER)",
     "extract(second from {0})::integer"},
    {u"weekday", "d", ColumnType::Long, "(CAST(strftime('%w', {0}) AS INTEGER) + 1)",
     "(extract(dow from {0})::integer + 1)"},
};

const Function* functionOf(const Expression& call) {
    for (const Function& function : functions)
        if (call.name == QStringView(function.name) &&
            call.children.size() == qstrlen(function.arguments))
            return &function;
    return nullptr;
}

[[noreturn]] void undefined(const Expression& call) {
    throw Error(errors::undefinedFunction,
                u"Undefined function '%1' in expression."_s.arg(call.name));
}

[[noreturn]] void wrongArguments(const Expression& call) {
    throw Error(errors::syntax, u"Wrong number of arguments used with function in query "
                                "expression '%1'."_s.arg(call.name));
}

/// The units of DateAdd and DateDiff, in the engines' words; months and days carry a factor.
struct Unit {
    const char16_t* name;
    const char* word;
    int factor;
};
constexpr Unit units[] = {{u"yyyy", "months", 12}, {u"q", "months", 3}, {u"m", "months", 1},
                          {u"ww", "days", 7},      {u"d", "days", 1},   {u"y", "days", 1},
                          {u"w", "days", 1},       {u"h", "hours", 1},  {u"n", "minutes", 1},
                          {u"s", "seconds", 1}};

} // namespace

bool Emitter::isAggregate(const QString& function) {
    return function == u"sum" || function == u"avg" || function == u"min" || function == u"max" ||
           function == u"count";
}

Type Emitter::typeOfCall(const Expression& call, const Scope& scope) {
    const auto argument = [&](std::size_t i) {
        return i < call.children.size() ? typeOf(*call.children[i], scope) : Type();
    };
    if (call.name == u"count")
        return ColumnType::Long;
    if (call.name == u"avg")
        return ColumnType::Double;
    if (call.name == u"sum")
        return argument(0) == ColumnType::Currency ? ColumnType::Currency : ColumnType::Double;
    if (call.name == u"min" || call.name == u"max")
        return argument(0) == ColumnType::Counter ? Type(ColumnType::Long) : argument(0);
    if (call.name == u"iif") {
        const Type yes = argument(1), no = argument(2);
        if (!yes || !no || yes == no)
            return yes ? yes : no;
        if (isText(yes) || isText(no))
            return ColumnType::Memo;
        if (yes == ColumnType::DateTime || no == ColumnType::DateTime)
            return ColumnType::DateTime;
        if (yes == ColumnType::Double || no == ColumnType::Double)
            return ColumnType::Double;
        return yes == ColumnType::Currency || no == ColumnType::Currency ? ColumnType::Currency
                                                                         : ColumnType::Long;
    }
    if (call.name == u"nz")
        return argument(0) ? argument(0) : argument(1);
    if (call.name == u"now" || call.name == u"date" || call.name == u"time" ||
        call.name == u"dateadd")
        return ColumnType::DateTime;
    if (call.name == u"datediff" || call.name == u"datepart" || call.name == u"clng" ||
        call.name == u"cint" || (call.name == u"round" && call.children.size() == 1))
        return ColumnType::Long;
    if (call.name == u"ccur")
        return ColumnType::Currency;
    if (call.name == u"abs" && argument(0) != ColumnType::YesNo)
        return argument(0);
    if (call.name == u"isnull")
        return ColumnType::YesNo;
    const Function* function = functionOf(call);
    return function != nullptr ? Type(function->type) : Type();
}

QByteArray Emitter::dateArithmetic(const Expression& call, const Scope& scope) {
    if (call.children.size() != 3)
        wrongArguments(call);
    const Expression& unitName = *call.children[0];
    const Unit* unit = nullptr;
    for (const Unit& candidate : units)
        if (unitName.is(Node::Literal) && unitName.literal < 0 &&
            unitName.value.toText().compare(QStringView(candidate.name), Qt::CaseInsensitive) == 0)
            unit = &candidate;
    if (unit == nullptr)
        wrongArguments(call);
    const QByteArray factor = QByteArray::number(unit->factor);
    if (call.name == u"dateadd") {
        const QByteArray count = asNumber(*call.children[1], scope);
        const QByteArray date = bracketed(*call.children[2], scope, ColumnType::DateTime);
        if (m_postgres)
            return date + " + (" + count + ") * " + factor + " * interval '1 " + unit->word + '\'';
        return "datetime(" + date + ", ((" + count + ") * " + factor + ") || ' " + unit->word +
               "')";
    }
    // Boundaries crossed from the first date to the second.
    const QByteArray a = bracketed(*call.children[1], scope, ColumnType::DateTime);
    const QByteArray b = bracketed(*call.children[2], scope, ColumnType::DateTime);
    const QByteArray word = unit->word;
    if (word == "months") {
        const auto months = [&](const QByteArray& date) {
            const QByteArray year = m_postgres ? "extract(year from " + date + ")::integer"
                                               : "CAST(substr(" + date + ", 1, 4) AS INTEGER)";
            const QByteArray month = m_postgres ? "extract(month from " + date + ")::integer"
                                                : "CAST(substr(" + date + ", 6, 2) AS INTEGER)";
            return '(' + year + " * 12 + " + month + " - 1) / " + factor;
        };
        return months(b) + " - " + months(a);
    }
    const int seconds = word == "days"      ? 86400
                        : word == "hours"   ? 3600
                        : word == "minutes" ? 60
                                            : 1;
    const QByteArray length = QByteArray::number(seconds);
    const auto whole = [&](const QByteArray& date) {
        return m_postgres
                   ? "floor(extract(epoch from " + date + ") / " + length + ")::bigint"
                   : "(CAST(strftime('%s', " + date + ") AS INTEGER) + 4102444800) / " + length;
    };
    const QByteArray difference = whole(b) + " - " + whole(a);
    return unit->factor == 1 ? difference : '(' + difference + ") / " + factor;
}

QByteArray Emitter::datePart(const Expression& call, const Scope& scope) {
    static constexpr std::pair<const char16_t*, const char16_t*> parts[] = {
        {u"yyyy", u"year"}, {u"m", u"month"},  {u"d", u"day"},    {u"w", u"weekday"},
        {u"h", u"hour"},    {u"n", u"minute"}, {u"s", u"second"},
    };
    if (call.children.size() == 2 && call.children[0]->is(Node::Literal) &&
        call.children[0]->literal < 0) {
        const QString unit = call.children[0]->value.toText();
        for (const auto& [name, functionName] : parts) {
            if (unit.compare(QStringView(name), Qt::CaseInsensitive) != 0)
                continue;
            for (const Function& function : functions)
                if (QStringView(function.name) == QStringView(functionName))
                    return QByteArray(m_postgres ? function.postgres : function.sqlite)
                        .replace("{0}", bracketed(*call.children[1], scope, ColumnType::DateTime));
        }
    }
    wrongArguments(call);
}

QByteArray Emitter::call(const Expression& call, const Scope& scope) {
    const std::size_t count = call.children.size();
    if (isAggregate(call.name)) {
        const QByteArray name = call.name.toLatin1();
        if (call.flag)
            return "count(*)";
        if (count != 1)
            wrongArguments(call);
        const Expression& argument = *call.children[0];
        const bool sums = call.name == u"sum" || call.name == u"avg";
        QByteArray sql = sums ? asNumber(argument, scope) : value(argument, scope);
        if (!m_postgres && !sums && !argument.is(Node::Column) && isText(typeOf(argument, scope)))
            sql = '(' + sql + ") COLLATE NOCASE";
        return name + '(' + sql + ')';
    }
    if (call.name == u"now")
        return special(Parameter::now);
    if (call.name == u"date")
        return special(Parameter::today);
    if (call.name == u"time")
        return special(Parameter::timeOfDay);
    if (call.name == u"iif") {
        if (count != 3)
            wrongArguments(call);
        const Type type = typeOfCall(call, scope);
        const auto branch = [&](const Expression& expression) {
            if (isText(type) && !isText(typeOf(expression, scope)))
                return citext(asText(expression, scope));
            return value(expression, scope, type);
        };
        return "CASE WHEN " + condition(*call.children[0], scope) + " THEN " +
               branch(*call.children[1]) + " ELSE " + branch(*call.children[2]) + " END";
    }
    if (call.name == u"nz") {
        if (count != 1 && count != 2)
            wrongArguments(call);
        const Type type = typeOf(*call.children[0], scope);
        const QByteArray otherwise = count == 2 ? value(*call.children[1], scope, type)
                                                : QByteArray(isText(type) ? "''" : "0");
        return "coalesce(" + value(*call.children[0], scope) + ", " + otherwise + ')';
    }
    if (call.name == u"dateadd" || call.name == u"datediff")
        return dateArithmetic(call, scope);
    if (call.name == u"datepart")
        return datePart(call, scope);
    if (call.name == u"clng" || call.name == u"cint" || call.name == u"ccur" ||
        (call.name == u"round" && count == 1)) {
        if (count != 1)
            wrongArguments(call);
        return rounded(asNumber(*call.children[0], scope), call.name == u"ccur" ? 4 : 0);
    }

    const Function* function = functionOf(call);
    if (function == nullptr) {
        for (const Function& candidate : functions)
            if (call.name == QStringView(candidate.name))
                wrongArguments(call);
        undefined(call);
    }
    QByteArray sql = m_postgres ? function->postgres : function->sqlite;
    for (std::size_t i = 0; i < count; ++i) {
        const Expression& argument = *call.children[i];
        QByteArray written;
        switch (function->arguments[i]) {
        case 't':
            written = asText(argument, scope);
            break;
        case 'w':
            written = argument.is(Node::Literal) && argument.kind == LiteralKind::Integer
                          ? value(argument, scope)
                          : '(' + rounded(asNumber(argument, scope), 0) + ')';
            break;
        case 'n':
            written = asNumber(argument, scope);
            break;
        default:
            written = bracketed(argument, scope, ColumnType::DateTime);
        }
        sql.replace('{' + QByteArray::number(static_cast<int>(i)) + '}', written);
    }
    return isText(function->type) ? citext(sql) : sql;
}

} // namespace jet
