#pragma once

#include "platform/values/Currency.h"

#include <QDateTime>
#include <QString>

#include <optional>
#include <variant>

namespace jet {

/// One field of a row, or one value to bind. Null is a value of its own.
class Value {
  public:
    enum class Kind { Null, Boolean, Integer, Double, Money, Text, Date };

    Value() = default;
    Value(bool value) : m_data(value) {}
    Value(int value) : m_data(qint64{value}) {}
    Value(qint64 value) : m_data(value) {}
    Value(double value) : m_data(value) {}
    Value(values::Currency value) : m_data(value) {}
    Value(QString value) : m_data(std::move(value)) {}
    Value(const char16_t* value) : m_data(QString::fromUtf16(value)) {}
    Value(QDateTime value) : m_data(std::move(value)) {}
    Value(QDate value) : m_data(value.startOfDay(Qt::UTC)) {}
    template <class T>
    Value(const std::optional<T>& value) {
        if (value)
            *this = Value(*value);
    }
    Value(const char*) = delete; // would become a Boolean

    Kind kind() const { return static_cast<Kind>(m_data.index()); }
    bool isNull() const { return kind() == Kind::Null; }

    /// What concatenation with an empty text gives: Null is empty, True and False are words,
    /// numbers have a full stop and no needless zeros, dates are m/d/yyyy with h:nn:ss AM/PM behind
    /// it where the time isn't midnight (the time alone on 12/30/1899).
    QString toText() const;
    /// The text of a Text; empty for all other kinds.
    QStringView textView() const;
    /// The number of an Integer; 0 for all other kinds.
    qint64 toInteger() const;
    /// Val of the text; Null is 0, True is -1.
    double toDouble() const;
    /// As toDouble, rounded ties to even; throws values::Overflow outside 32 bits.
    qint64 toLong() const;
    values::Currency toCurrency() const;
    /// Any number but 0 is true; Null is false.
    bool toBool() const;
    /// The moment (UTC spec, no zone arithmetic); nothing for Null and for what isn't a date.
    std::optional<QDateTime> toDateTime() const;
    std::optional<QDate> toDate() const;

    /// Equal as the database compares: text without regard to case, numbers by value; Null equals
    /// Null.
    friend bool operator==(const Value& a, const Value& b);

  private:
    std::variant<std::monostate, bool, qint64, double, values::Currency, QString, QDateTime> m_data;
};

} // namespace jet
