#include "platform/jet/Value.h"

#include "platform/jet/Types.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <array>
#include <charconv>

namespace jet {

namespace {

const QDate dayZero(1899, 12, 30);

QDateTime zoneless(const QDateTime& moment) {
    return moment.timeSpec() == Qt::UTC ? moment : QDateTime(moment.date(), moment.time(), Qt::UTC);
}

/// Appends a number with two digits at least where padded.
void append(QString& text, int number, bool padded = false) {
    if (padded && number < 10)
        text += u'0';
    std::array<char, 12> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    text += QLatin1StringView(digits.data(), end);
}

QString momentText(const QDateTime& moment) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    QString text;
    text.reserve(22);
    if (date != dayZero || time == QTime(0, 0)) {
        int year = 0, month = 0, day = 0;
        date.getDate(&year, &month, &day);
        append(text, month);
        append(text += u'/', day);
        append(text += u'/', year);
    }
    if (time == QTime(0, 0))
        return text;
    if (!text.isEmpty())
        text += u' ';
    append(text, time.hour() % 12 == 0 ? 12 : time.hour() % 12);
    append(text += u':', time.minute(), true);
    append(text += u':', time.second(), true);
    return text += time.hour() < 12 ? u" AM"_s : u" PM"_s;
}

} // namespace

QString Value::toText() const {
    switch (kind()) {
    case Kind::Null:
        return {};
    case Kind::Boolean:
        return std::get<bool>(m_data) ? u"True"_s : u"False"_s;
    case Kind::Integer:
        return QString::number(std::get<qint64>(m_data));
    case Kind::Double:
        return values::numberText(std::get<double>(m_data));
    case Kind::Money:
        return std::get<values::Currency>(m_data).toText();
    case Kind::Text:
        return std::get<QString>(m_data);
    case Kind::Date:
        return momentText(std::get<QDateTime>(m_data));
    }
    return {};
}

QStringView Value::textView() const {
    const QString* text = std::get_if<QString>(&m_data);
    return text != nullptr ? QStringView(*text) : QStringView();
}

qint64 Value::toInteger() const {
    const qint64* whole = std::get_if<qint64>(&m_data);
    return whole != nullptr ? *whole : 0;
}

double Value::toDouble() const {
    switch (kind()) {
    case Kind::Null:
        return 0;
    case Kind::Boolean:
        return std::get<bool>(m_data) ? -1 : 0;
    case Kind::Integer:
        return static_cast<double>(std::get<qint64>(m_data));
    case Kind::Double:
        return std::get<double>(m_data);
    case Kind::Money:
        return std::get<values::Currency>(m_data).toDouble();
    case Kind::Text:
        return values::val(std::get<QString>(m_data));
    case Kind::Date: {
        const QDateTime& moment = std::get<QDateTime>(m_data);
        return static_cast<double>(dayZero.daysTo(moment.date())) +
               moment.time().msecsSinceStartOfDay() / 86400000.0;
    }
    }
    return 0;
}

qint64 Value::toLong() const {
    return values::cLng(toDouble());
}

values::Currency Value::toCurrency() const {
    switch (kind()) {
    case Kind::Money:
        return std::get<values::Currency>(m_data);
    case Kind::Integer:
        return values::Currency::fromInteger(std::get<qint64>(m_data));
    case Kind::Text:
        return values::Currency::fromText(std::get<QString>(m_data));
    default:
        return values::Currency::fromDouble(toDouble());
    }
}

bool Value::toBool() const {
    if (kind() == Kind::Boolean)
        return std::get<bool>(m_data);
    if (kind() == Kind::Text &&
        std::get<QString>(m_data).compare(QStringView(u"true"), Qt::CaseInsensitive) == 0)
        return true;
    return toDouble() != 0;
}

std::optional<QDateTime> Value::toDateTime() const {
    if (const QDateTime* moment = std::get_if<QDateTime>(&m_data))
        return moment->isValid() ? std::optional(zoneless(*moment)) : std::nullopt;
    if (const QString* text = std::get_if<QString>(&m_data))
        return momentFromText(*text);
    return std::nullopt;
}

std::optional<QDate> Value::toDate() const {
    const auto moment = toDateTime();
    return moment ? std::optional(moment->date()) : std::nullopt;
}

bool operator==(const Value& a, const Value& b) {
    using Kind = Value::Kind;
    const Kind left = a.kind(), right = b.kind();
    if (left == Kind::Null || right == Kind::Null)
        return left == right;
    if (left == Kind::Text && right == Kind::Text)
        return values::sameText(a.textView(), b.textView());
    if (left == Kind::Date || right == Kind::Date)
        return a.toDateTime() == b.toDateTime() && a.toDateTime().has_value();
    if (left == Kind::Text || right == Kind::Text) {
        const Value& text = left == Kind::Text ? a : b;
        return values::isNumeric(text.textView()) && a.toDouble() == b.toDouble();
    }
    if (left == Kind::Integer && right == Kind::Integer)
        return std::get<qint64>(a.m_data) == std::get<qint64>(b.m_data);
    if (left == Kind::Money && right == Kind::Money)
        return std::get<values::Currency>(a.m_data) == std::get<values::Currency>(b.m_data);
    if (left == Kind::Boolean || right == Kind::Boolean)
        return a.toBool() == b.toBool();
    return a.toDouble() == b.toDouble();
}

} // namespace jet
