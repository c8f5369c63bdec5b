#include "reporting/Query.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>

namespace reporting {

namespace {

using Kind = Criterion::Kind;

bool isDigits(const QString& text) {
    return !text.isEmpty() && text.size() <= 9 &&
           std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString formulaDay(const std::optional<QDate>& day) {
    return day ? day->toString(u"yyyy,MM,dd"_s) : QString();
}

/// The text with which a clause names a value.
QString inStatement(const Criterion& criterion, const Given& given, bool second) {
    if (criterion.kind == Kind::Named && !given.range)
        return given.key;
    if (criterion.kind == Kind::Choice) {
        for (const auto& [word, code] : criterion.choices) {
            if (word == given.first)
                return code;
        }
    }
    return second ? given.second : given.first;
}

QString inFormula(const Criterion& criterion, const Given& given, bool second) {
    if (criterion.kind == Kind::Date)
        return formulaDay(second ? given.secondDay : given.firstDay);
    return inStatement(criterion, given, second);
}

/// What is wrong with one value of a criterion; empty if nothing is.
QString fault(const Criterion& criterion, const Given& given, bool second) {
    const QString& text = second ? given.second : given.first;
    if (second && text.isEmpty())
        return u": please enter the second value of the range, or clear \"to\"."_s;
    switch (criterion.kind) {
    case Kind::Number:
        return isDigits(text) ? QString() : u": please enter a number of at most nine digits."_s;
    case Kind::Date:
        return (second ? given.secondValid : given.firstValid)
                   ? QString()
                   : u": please enter a date as month/day/year."_s;
    case Kind::Named:
        return given.range || !given.key.isEmpty() ? QString()
                                                   : u": please choose one from the list."_s;
    case Kind::Choice: {
        const bool known =
            std::any_of(criterion.choices.begin(), criterion.choices.end(),
                        [&](const auto& choice) { return choice.first == given.first; });
        return known ? QString() : u": please choose one from the list."_s;
    }
    case Kind::Text:
        break;
    }
    return {};
}

} // namespace

std::optional<screen::Complaint> checkCriteria(const QueryDescriptor& query,
                                               const std::vector<Given>& given) {
    for (std::size_t i = 0; i < query.criteria.size(); ++i) {
        if (!given[i].used)
            continue;
        const Criterion& criterion = query.criteria[i];
        for (const bool second : {false, true}) {
            if (second && !given[i].range)
                continue;
            const QString wrong = fault(criterion, given[i], second);
            if (!wrong.isEmpty())
                return screen::Complaint{criterion.caption + wrong,
                                         second ? criterion.second : criterion.first};
        }
    }
    return std::nullopt;
}

std::optional<QueryTexts> queryTexts(const QueryDescriptor& query,
                                     const std::vector<Given>& given) {
    QString where, formula;
    for (std::size_t i = 0; i < query.criteria.size(); ++i) {
        const Criterion& criterion = query.criteria[i];
        const Given& value = given[i];
        if (!value.used)
            continue;
        if (value.range) {
            where += criterion.range.arg(inStatement(criterion, value, false),
                                         inStatement(criterion, value, true));
            formula += criterion.rangeFormula.arg(inFormula(criterion, value, false),
                                                  inFormula(criterion, value, true));
        } else {
            where += criterion.one.arg(inStatement(criterion, value, false));
            formula += criterion.oneFormula.arg(inFormula(criterion, value, false));
        }
    }
    if (where.trimmed().isEmpty())
        return std::nullopt;
    // The first word is cut by its place, whatever its case.
    constexpr int andLength = 5;
    return QueryTexts{query.statement + u" where "_s + where.mid(andLength),
                      formula.mid(andLength)};
}

QString selectionOf(const QueryDescriptor& query, const QStringList& keys) {
    const QString field = u'{' + query.reportKey + u"} = "_s;
    QStringList terms;
    terms.reserve(keys.size());
    for (const QString& key : keys)
        terms << (query.textKey ? field + u'\'' + key + u'\'' : field + key);
    return terms.join(u" OR "_s);
}

} // namespace reporting
