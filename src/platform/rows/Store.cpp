#include "platform/rows/Store.h"

#include "platform/rows/Fold.h"
#include "platform/values/Currency.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace rows {

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

/// What is shown of a number, without commas: very many are made at the first letter in a filter.
class Shown {
  public:
    std::string_view number(double value) {
        if (value == std::floor(value) && std::abs(value) < 1e15)
            return whole(static_cast<long long>(value), m_text);
        m_other = values::numberText(value).toLatin1();
        return {m_other.constData(), static_cast<std::size_t>(m_other.size())};
    }
    std::string_view twoDecimals(double value) {
        const long long units = std::llround(std::abs(value) * 10000.0);
        const long long cents = (units + 50) / 100;
        char* at = m_text;
        if (value < 0 && cents > 0)
            *at++ = '-';
        at = std::to_chars(at, std::end(m_text), cents / 100).ptr;
        *at++ = '.';
        *at++ = static_cast<char>('0' + cents / 10 % 10);
        *at++ = static_cast<char>('0' + cents % 10);
        return {m_text, static_cast<std::size_t>(at - m_text)};
    }
    std::string_view date(double day) {
        int year = 0, month = 0, of = 0;
        QDate::fromJulianDay(static_cast<qint64>(day)).getDate(&year, &month, &of);
        char* at = m_text;
        for (const int part : {month, of}) {
            at = std::to_chars(at, std::end(m_text), part).ptr;
            *at++ = '/';
        }
        return whole(year, at);
    }

  private:
    std::string_view whole(long long value, char* at) {
        at = std::to_chars(at, std::end(m_text), value).ptr;
        return {m_text, static_cast<std::size_t>(at - m_text)};
    }
    char m_text[48] = {};
    QByteArray m_other;
};

} // namespace

Texts Texts::folded() const {
    Texts made;
    made.m_all.reserve(m_all.size());
    made.m_ends.reserve(m_ends.size());
    for (std::uint32_t i = 0; i < count(); ++i) {
        appendFolded(made.m_all, at(i));
        made.m_ends.push_back(static_cast<std::uint32_t>(made.m_all.size()));
    }
    return made;
}

Store::Store(std::vector<Kind> kinds) : m_columns(kinds.size()) {
    for (std::size_t i = 0; i < kinds.size(); ++i)
        m_columns[i].kind = kinds[i];
}

int Store::rowOf(std::int64_t key) const {
    const auto found = std::lower_bound(m_keys.begin(), m_keys.end(), key, std::greater<>());
    return found != m_keys.end() && *found == key ? static_cast<int>(found - m_keys.begin()) : -1;
}

void Store::addEmpty(int column) {
    Column& into = at(column);
    if (into.chosen)
        into.choices.push_back(0);
    else if (into.kind == Kind::Text)
        into.texts.add({});
    else
        into.numbers.push_back(nothing);
}

void Store::setChoices(int column, Texts choices) {
    Texts all;
    all.add({}); // nothing is a choice too
    for (std::uint32_t i = 0; i < choices.count(); ++i)
        all.add(choices.at(i));
    at(column).texts = std::move(all);
    at(column).chosen = true;
}

void Store::addChoice(int column, int choice) {
    at(column).choices.push_back(static_cast<std::uint32_t>(choice + 1));
}

void Store::fill(int column) {
    Column& into = at(column);
    if (into.kind == Kind::Text) {
        if (!into.chosen)
            setChoices(column, {});
        into.choices.assign(m_keys.size(), 0);
    } else {
        into.numbers.assign(m_keys.size(), nothing);
    }
}

void Store::set(int column, int row, double number) {
    at(column).numbers[static_cast<std::size_t>(row)] = number;
}

void Store::choose(int column, int row, int choice) {
    at(column).choices[static_cast<std::size_t>(row)] = static_cast<std::uint32_t>(choice + 1);
}

bool Store::isEmpty(int column, int row) const {
    return kind(column) == Kind::Text ? text(column, row).empty() : std::isnan(number(column, row));
}

std::string_view Store::text(int column, int row) const {
    const Column& from = at(column);
    const auto index = static_cast<std::size_t>(row);
    return from.texts.at(from.chosen ? from.choices[index] : static_cast<std::uint32_t>(index));
}

QString Store::shown(int column, int row) const {
    if (kind(column) == Kind::Text) {
        const std::string_view found = text(column, row);
        return QString::fromUtf8(found.data(), static_cast<qsizetype>(found.size()));
    }
    const double value = number(column, row);
    if (std::isnan(value))
        return {};
    switch (kind(column)) {
    case Kind::Date:
        return values::format(QDate::fromJulianDay(static_cast<qint64>(value)), u"Short Date");
    case Kind::YesNo:
        return value != 0 ? u"Yes"_s : u"No"_s;
    case Kind::Hours:
        return values::format(value, u"#,##0.00");
    case Kind::Money:
        return values::format(values::Currency::fromDouble(value), u"#,##0.00");
    case Kind::Number:
    case Kind::Text:
        break;
    }
    return values::numberText(value);
}

const Texts& Store::searched(int column) const {
    const Column& from = at(column);
    if (from.searched)
        return *from.searched;
    if (from.kind == Kind::Text) {
        from.searched = std::make_unique<Texts>(from.texts.folded());
        return *from.searched;
    }
    Texts made;
    Shown shown;
    for (const double value : from.numbers) {
        if (std::isnan(value))
            made.add({});
        else if (from.kind == Kind::Date)
            made.add(shown.date(value));
        else if (from.kind == Kind::YesNo)
            made.add(value != 0 ? "yes" : "no");
        else if (from.kind == Kind::Number)
            made.add(shown.number(value));
        else
            made.add(shown.twoDecimals(value));
    }
    from.searched = std::make_unique<Texts>(std::move(made));
    return *from.searched;
}

std::uint32_t Store::searchedIndex(int column, int row) const {
    const Column& from = at(column);
    return from.chosen ? from.choices[static_cast<std::size_t>(row)]
                       : static_cast<std::uint32_t>(row);
}

} // namespace rows
