#include "platform/rows/Store.h"

#include "platform/rows/Fold.h"
#include "platform/values/Currency.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace rows {

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();

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
    for (int row = 0; row < count(); ++row) {
        QByteArray shownText = shown(column, row).toLower().toUtf8();
        if (from.kind == Kind::Money || from.kind == Kind::Hours)
            shownText.replace(",", ""); // nobody types them
        made.add(
            std::string_view(shownText.constData(), static_cast<std::size_t>(shownText.size())));
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
