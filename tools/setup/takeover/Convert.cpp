#include "setup/takeover/Convert.h"

#include "platform/jet/Types.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <cmath>

namespace takeover {

using jet::ColumnType;
using Kind = OldValue::Kind;
using values::Currency;

namespace {

constexpr double secondsOfDay = 86400;

/// A text as a number, where a person could read only one number in it: 12.5, -7, 1,234.50.
std::optional<double> numberIn(const QString& text) {
    QString digits = text.trimmed();
    const auto comma = digits.indexOf(u',');
    if (comma >= 0) {
        const QString whole = digits.section(u'.', 0, 0);
        const QStringList groups = whole.split(u',');
        // "12,5" is twelve and a half to some and nothing to others.
        for (qsizetype i = 1; i < groups.size(); ++i)
            if (groups[i].size() != 3)
                return std::nullopt;
        if (groups.size() == 2 && !digits.contains(u'.'))
            return std::nullopt;
        digits.remove(u',');
    }
    bool isNumber = false;
    const double number = QLocale::c().toDouble(digits, &isNumber);
    return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

/// An amount of as many digits as the databases' own numbers hold; further ones are cut off.
Currency fifteenDigits(qint64 tenThousandths) {
    constexpr qint64 most = 1'000'000'000'000'000;
    qint64 factor = 1;
    while (tenThousandths / factor >= most || tenThousandths / factor <= -most)
        factor *= 10;
    return Currency::fromTenThousandths(tenThousandths / factor * factor);
}

class Converter {
  public:
    Converter(const OldValue& value, const OldColumn& from, const jet::Column& to,
              const Remarks::Place& place, Remarks& remarks)
        : m_value(value), m_from(from), m_to(to), m_place(place), m_remarks(remarks) {}

    jet::Value convert() {
        if (m_value.kind == Kind::Broken)
            return lost(u"value on a damaged page"_s);
        if (m_value.kind == Kind::Null) {
            if (m_to.type != ColumnType::YesNo)
                return {};
            return changedTo(u"Yes/No without a value"_s, jet::Value(0));
        }
        switch (m_to.type) {
        case ColumnType::Counter:
        case ColumnType::Long:
            return whole(32, -2147483648.0, 2147483647.0);
        case ColumnType::Integer:
            return whole(16, -32768, 32767);
        case ColumnType::Double:
            return real();
        case ColumnType::Currency:
            return money();
        case ColumnType::Text:
        case ColumnType::Memo:
            return text();
        case ColumnType::YesNo:
            return yesNo();
        case ColumnType::DateTime:
            return moment();
        }
        return {};
    }

  private:
    jet::Value lost(const QString& kind) {
        m_remarks.changed(kind, m_place, shown(m_value),
                          m_to.type == ColumnType::YesNo ? u"0"_s : u"(none)"_s);
        return m_to.type == ColumnType::YesNo ? jet::Value(0) : jet::Value();
    }
    jet::Value changedTo(const QString& kind, jet::Value value) {
        m_remarks.changed(kind, m_place, shown(m_value), value.toText());
        return value;
    }

    std::optional<double> number() const {
        switch (m_value.kind) {
        case Kind::Whole:
            return static_cast<double>(m_value.whole);
        case Kind::Money:
            return Currency::fromTenThousandths(m_value.whole).toDouble();
        case Kind::Real:
        case Kind::Date:
            return std::isfinite(m_value.real) ? std::optional(m_value.real) : std::nullopt;
        case Kind::Decimal:
        case Kind::Text:
            return numberIn(QString::fromUtf8(m_value.bytes));
        default:
            return std::nullopt;
        }
    }

    jet::Value whole(int bits, double lowest, double highest) {
        const std::optional<double> read = number();
        if (!read)
            return emptyText() ? jet::Value() : lost(u"text that is no number"_s);
        const double rounded = std::nearbyint(*read);
        if (rounded < lowest || rounded > highest)
            return lost(u"number beyond %1 bits"_s.arg(bits));
        const jet::Value value(static_cast<qint64>(rounded));
        return rounded == *read ? value : changedTo(u"number with decimals"_s, value);
    }

    jet::Value real() {
        const std::optional<double> read = number();
        if (!read)
            return emptyText() ? jet::Value()
                               : lost(m_value.kind == Kind::Real ? u"number that is none"_s
                                                                 : u"text that is no number"_s);
        return {*read};
    }

    jet::Value money() {
        if (m_value.kind == Kind::Money) {
            const Currency exact = Currency::fromTenThousandths(m_value.whole);
            const Currency held = fifteenDigits(m_value.whole);
            if (held != exact)
                m_remarks.changed(u"amount that a double can't hold"_s, m_place, exact.toText(),
                                  held.toText());
            return {held};
        }
        const std::optional<double> read = number();
        if (!read)
            return emptyText() ? jet::Value() : lost(u"text that is no number"_s);
        try {
            const Currency rounded = Currency::fromDouble(*read);
            if (std::abs(rounded.toDouble() - *read) > 1e-9 * std::max(1.0, std::abs(*read)))
                return changedTo(u"amount beyond four decimals"_s, {rounded});
            return {rounded};
        } catch (const values::Overflow&) {
            return lost(u"number beyond money"_s);
        }
    }

    bool emptyText() const {
        return m_value.kind == Kind::Text && m_value.bytes.trimmed().isEmpty();
    }

    jet::Value text() {
        QString text =
            m_value.kind == Kind::Text ? QString::fromUtf8(m_value.bytes) : shown(m_value);
        if (m_from.type == OldType::YesNo)
            text = m_value.whole != 0 ? u"True"_s : u"False"_s;
        if (text.contains(QChar())) {
            const QString without = QString(text).remove(QChar());
            m_remarks.changed(u"character 0 in a text"_s, m_place,
                              QString(text).replace(QChar(), u"\\0"_s), without);
            text = without;
        }
        if (m_to.type == ColumnType::Memo) {
            if (text.size() > 65535)
                m_remarks.count(u"text over 65,535 characters"_s, m_place.table, m_place.column, 1,
                                m_place.key);
            return {text};
        }
        const auto letters = text.toUcs4();
        if (letters.size() <= m_to.width)
            return {text};
        const auto* first = reinterpret_cast<const char32_t*>(letters.constData());
        return changedTo(u"text longer than today's %1"_s.arg(m_to.width),
                         {QString::fromUcs4(first, m_to.width)});
    }

    jet::Value yesNo() {
        if (m_value.kind == Kind::Text) {
            const QString word = QString::fromUtf8(m_value.bytes).trimmed().toLower();
            if (word == u"true" || word == u"yes" || word == u"on")
                return {1};
            if (word.isEmpty() || word == u"false" || word == u"no" || word == u"off")
                return {0};
        }
        const std::optional<double> read = number();
        if (!read)
            return lost(u"text that is no Yes or No"_s);
        const jet::Value value(*read == 0 ? 0 : 1);
        if (*read == 0 || *read == 1 || *read == -1)
            return value;
        return changedTo(u"number as Yes or No"_s, value);
    }

    jet::Value moment() {
        if (m_value.kind == Kind::Text) {
            if (emptyText())
                return {};
            const auto read = jet::momentFromText(QString::fromUtf8(m_value.bytes));
            return read ? jet::Value(*read) : lost(u"text that is no date"_s);
        }
        const std::optional<double> days = number();
        const auto read = days ? momentOf(*days) : std::nullopt;
        if (!read)
            return lost(u"date outside the years 100 to 9999"_s);
        const double seconds = std::abs(*days) * secondsOfDay;
        // A moment is held to about a hundred-thousandth of a second.
        if (std::abs(seconds - std::nearbyint(seconds)) > 0.001)
            m_remarks.changed(u"moment between two seconds"_s, m_place, shown(m_value),
                              read->toString(u"yyyy-MM-dd HH:mm:ss"_s));
        if (read->date() == QDate(1899, 12, 30))
            m_remarks.count(u"time without a date"_s, m_place.table, m_place.column, 1,
                            m_place.key);
        else if (read->date().year() < 1900 || read->date().year() > 2099)
            m_remarks.count(u"date outside 1900 to 2099"_s, m_place.table, m_place.column, 1,
                            m_place.key + u": "_s + read->date().toString(Qt::ISODate));
        return {*read};
    }

    const OldValue& m_value;
    const OldColumn& m_from;
    const jet::Column& m_to;
    const Remarks::Place& m_place;
    Remarks& m_remarks;
};

} // namespace

jet::Value converted(const OldValue& value, const OldColumn& from, const jet::Column& to,
                     const Remarks::Place& place, Remarks& remarks) {
    return Converter(value, from, to, place, remarks).convert();
}

std::optional<QDateTime> momentOf(double days) {
    if (!std::isfinite(days) || days < -657434 || days >= 2958466)
        return std::nullopt;
    // Before the first day the day counts back, and its time forward all the same.
    auto day = static_cast<qint64>(std::trunc(days));
    auto seconds =
        static_cast<qint64>(std::nearbyint(std::abs(days - std::trunc(days)) * secondsOfDay));
    if (seconds >= 86400) {
        ++day;
        seconds -= 86400;
    }
    const QDateTime moment =
        QDateTime(QDate(1899, 12, 30).addDays(day), QTime(0, 0), Qt::UTC).addSecs(seconds);
    return moment.date().year() >= 100 && moment.date().year() <= 9999 ? std::optional(moment)
                                                                       : std::nullopt;
}

QString shown(const OldValue& value) {
    switch (value.kind) {
    case Kind::Null:
        return u"(none)"_s;
    case Kind::Broken:
        return u"(damaged)"_s;
    case Kind::Whole:
        return QString::number(value.whole);
    case Kind::Money:
        return Currency::fromTenThousandths(value.whole).toText();
    case Kind::Real:
        return values::numberText(value.real);
    case Kind::Date: {
        const auto moment = momentOf(value.real);
        return moment ? moment->toString(u"yyyy-MM-dd HH:mm:ss"_s) + u" ("_s +
                            values::numberText(value.real) + u')'
                      : values::numberText(value.real);
    }
    case Kind::Bytes:
        return QString::fromLatin1(value.bytes.toHex());
    default:
        return QString::fromUtf8(value.bytes);
    }
}

} // namespace takeover
