#include "platform/rows/Order.h"

#include "platform/rows/Fold.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <numeric>
#include <optional>

namespace rows {

namespace {

constexpr double endless = std::numeric_limits<double>::infinity();

std::optional<double> valueOf(QString typed, Kind kind) {
    typed = typed.trimmed();
    if (kind == Kind::Date) {
        const bool fromToday = typed.startsWith(u'+') || typed.startsWith(u'-');
        bool isNumber = false;
        const int days = typed.toInt(&isNumber);
        const QDate day = typed.compare(u"today"_s, Qt::CaseInsensitive) == 0 ? values::today()
                          : fromToday && isNumber ? values::today().addDays(days)
                                                  : values::dateFromText(typed);
        return day.isValid() ? std::optional(static_cast<double>(day.toJulianDay())) : std::nullopt;
    }
    if (!typed.isEmpty() && !typed.front().isDigit() && typed.front() != u'-' &&
        typed.front() != u'.')
        typed.remove(0, 1); // the currency's symbol
    return values::isNumeric(typed) ? std::optional(values::val(typed.remove(u','))) : std::nullopt;
}

bool contains(std::string_view text, const QByteArray& word) {
    return memmem(text.data(), text.size(), word.constData(),
                  static_cast<std::size_t>(word.size())) != nullptr;
}

/// The first letters of a text as a number that sorts as they do.
std::uint64_t beginning(std::string_view text) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < 8; ++i)
        number = number << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    return number;
}

} // namespace

Condition::Condition(const QString& typed, Kind kind) {
    const QString text = typed.trimmed();
    if (text.isEmpty())
        return;
    const bool ordered = kind != Kind::Text && kind != Kind::YesNo;
    if (ordered) {
        if (const auto dots = text.indexOf(u".."_s); dots >= 0) {
            const auto from = valueOf(text.left(dots), kind);
            const auto to = valueOf(text.mid(dots + 2), kind);
            if (from || to) {
                m_how = How::Between;
                m_from = from.value_or(-endless);
                m_to = to.value_or(endless);
                return;
            }
        }
        const bool less = text.startsWith(u'<');
        if (less || text.startsWith(u'>')) {
            const bool equal = text.mid(1).startsWith(u'=');
            if (const auto value = valueOf(text.mid(equal ? 2 : 1), kind)) {
                m_how = How::Between;
                m_from = less ? -endless : *value;
                m_to = less ? *value : endless;
                (less ? m_toOpen : m_fromOpen) = !equal;
            } else {
                m_how = How::Any; // the value is still being typed
            }
            return;
        }
        if (text.startsWith(u'=')) {
            if (const auto value = valueOf(text.mid(1), kind)) {
                m_how = How::Between;
                m_from = m_to = *value;
                return;
            }
        }
    }
    if (text.startsWith(u'=')) {
        m_how = How::Exactly;
        m_words = {folded(text.mid(1).trimmed())};
        return;
    }
    m_how = How::Words;
    const QStringList words = text.split(u' ', Qt::SkipEmptyParts);
    for (QString word : words) {
        if (kind == Kind::Money || kind == Kind::Hours || kind == Kind::Number)
            word.remove(u',');
        m_words.push_back(folded(word));
    }
}

bool Condition::holds(const Store& store, int column, int row) const {
    switch (m_how) {
    case How::Any:
        return true;
    case How::Between: {
        const double value = store.number(column, row);
        return (m_fromOpen ? value > m_from : value >= m_from) &&
               (m_toOpen ? value < m_to : value <= m_to);
    }
    case How::Exactly:
        return store.searched(column).at(store.searchedIndex(column, row)) ==
               std::string_view(m_words.front().constData(),
                                static_cast<std::size_t>(m_words.front().size()));
    case How::Words:
        break;
    }
    const std::string_view text = store.searched(column).at(store.searchedIndex(column, row));
    return std::all_of(m_words.begin(), m_words.end(),
                       [&](const QByteArray& word) { return contains(text, word); });
}

bool Condition::narrows(const Condition& other) const {
    if (other.m_how == How::Any)
        return true;
    if (m_how != How::Words || other.m_how != How::Words)
        return false;
    return std::all_of(other.m_words.begin(), other.m_words.end(), [this](const QByteArray& was) {
        return std::any_of(m_words.begin(), m_words.end(),
                           [&](const QByteArray& now) { return now.contains(was); });
    });
}

void Order::setStore(std::shared_ptr<const Store> store) {
    m_store = std::move(store);
    m_filters.resize(static_cast<std::size_t>(m_store->columns()));
    readFilters();
    arrange();
}

void Order::readFilters() {
    for (std::size_t i = 0; i < m_filters.size(); ++i)
        m_filters[i].condition = Condition(m_filters[i].typed, m_store->kind(static_cast<int>(i)));
}

bool Order::passes(int row) const {
    for (std::size_t i = 0; i < m_filters.size(); ++i) {
        if (!m_filters[i].condition.holds(*m_store, static_cast<int>(i), row))
            return false;
    }
    return true;
}

void Order::filterAll() {
    m_shown.clear();
    m_shown.reserve(m_all.size());
    if (!isFiltered()) {
        m_shown = m_all;
        return;
    }
    std::copy_if(m_all.begin(), m_all.end(), std::back_inserter(m_shown),
                 [this](int row) { return passes(row); });
}

void Order::setFilter(int column, const QString& typed) {
    if (static_cast<int>(m_filters.size()) <= column)
        m_filters.resize(static_cast<std::size_t>(column) + 1);
    Filter& filter = m_filters[static_cast<std::size_t>(column)];
    filter.typed = typed;
    if (!m_store)
        return;
    const Condition before =
        std::exchange(filter.condition, Condition(typed, m_store->kind(column)));
    if (filter.condition.narrows(before)) {
        std::erase_if(m_shown,
                      [&](int row) { return !filter.condition.holds(*m_store, column, row); });
    } else {
        filterAll();
    }
}

QString Order::filter(int column) const {
    return column < static_cast<int>(m_filters.size())
               ? m_filters[static_cast<std::size_t>(column)].typed
               : QString();
}

bool Order::isFiltered() const {
    return std::any_of(m_filters.begin(), m_filters.end(),
                       [](const Filter& filter) { return !filter.condition.isAny(); });
}

void Order::sortBy(int column, bool down) {
    m_sortColumn = column;
    m_down = down;
    if (m_store)
        arrange();
}

void Order::arrange() {
    m_all.resize(static_cast<std::size_t>(m_store->count()));
    std::iota(m_all.begin(), m_all.end(), 0);
    const auto sorted = [this](auto less) {
        if (m_down)
            std::stable_sort(m_all.begin(), m_all.end(), [&](int a, int b) { return less(b, a); });
        else
            std::stable_sort(m_all.begin(), m_all.end(), less);
    };
    if (m_sortColumn >= 0 && m_sortColumn < m_store->columns()) {
        std::vector<std::uint64_t> begins;
        if (m_store->kind(m_sortColumn) == Kind::Text) {
            const Texts& texts = m_store->searched(m_sortColumn);
            begins.reserve(m_all.size());
            for (const int row : m_all)
                begins.push_back(beginning(texts.at(m_store->searchedIndex(m_sortColumn, row))));
            sorted([&](int a, int b) {
                const auto left = begins[static_cast<std::size_t>(a)];
                const auto right = begins[static_cast<std::size_t>(b)];
                if (left != right)
                    return left < right;
                return texts.at(m_store->searchedIndex(m_sortColumn, a)) <
                       texts.at(m_store->searchedIndex(m_sortColumn, b));
            });
        } else {
            sorted([&](int a, int b) {
                const double left = m_store->number(m_sortColumn, a);
                const double right = m_store->number(m_sortColumn, b);
                // Nothing comes first.
                return std::isnan(left) ? !std::isnan(right) : left < right;
            });
        }
    }
    filterAll();
}

int Order::placeOf(int row) const {
    const auto found = std::find(m_shown.begin(), m_shown.end(), row);
    return found == m_shown.end() ? -1 : static_cast<int>(found - m_shown.begin());
}

double Order::sum(int column, int first, int last) const {
    // By ten-thousandths, so that the order of the rows makes no difference.
    double units = 0;
    for (int place = first; place <= last; ++place) {
        const double value = m_store->number(column, row(place));
        if (!std::isnan(value))
            units += std::round(value * 10000.0);
    }
    return units / 10000.0;
}

} // namespace rows
