#pragma once

#include "platform/jet/Translate.h"
#include "platform/jet/Value.h"

#include <QVarLengthArray>

namespace jet {

/// The values of one statement's parameters, ready to be bound.
class Arguments {
  public:
    /// How money is bound: as a number, or as a decimal text, since PostgreSQL's numeric is exact.
    enum class Money : unsigned char { AsNumber, AsText };
    explicit Arguments(Money money = Money::AsNumber) : m_money(money) {}
    enum class Kind : unsigned char { Null, Integer, Real, Text };
    struct Argument {
        Kind kind = Kind::Null;
        int size = 0;       ///< bytes of a text, without the closing zero
        qint64 integer = 0; ///< or where a text starts
        double real = 0;
    };

    void clear() {
        m_list.resize(0);
        m_texts.resize(0);
    }
    int count() const { return static_cast<int>(m_list.size()); }
    const Argument& at(int index) const { return m_list[index]; }
    /// UTF-8, closed by a zero.
    const char* text(const Argument& argument) const {
        return m_texts.constData() + argument.integer;
    }

    void addNull() { m_list.append(Argument{}); }
    void addInteger(qint64 value) { m_list.append(Argument{Kind::Integer, 0, value, 0}); }
    void addReal(double value) { m_list.append(Argument{Kind::Real, 0, 0, value}); }
    void addMoney(values::Currency value);
    void addText(QStringView text);
    void addMoment(const QDateTime& moment);
    /// A value as it is: True and False are 1 and 0.
    void add(const Value& value);
    /// A value for a parameter; throws Error(typeMismatch), Error(6) for what the column can't
    /// hold.
    void add(const Value& value, Conversion conversion);

  private:
    QVarLengthArray<Argument, 32> m_list;
    QVarLengthArray<char, 1024> m_texts;
    Money m_money;
};

/// The value as a column of a table holds it: money with four decimals and whole numbers rounded
/// ties to even, Null in a Yes/No column as False, a moment from text. An empty text is Null for a
/// date and 0 for a number. Throws Error: fieldTooSmall, typeMismatch, 6 (Overflow).
Value storedValue(const Value& value, const Column& column);

} // namespace jet
