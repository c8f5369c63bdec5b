#include "platform/jet/Arguments.h"

#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Numbers.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cmath>
#include <limits>

namespace jet {

namespace {

/// A number, or the one that a text is throughout.
double numberOf(const Value& value) {
    if (value.kind() == Value::Kind::Text && !values::isNumeric(value.toText()))
        throw typeMismatchError();
    const double number = value.toDouble();
    if (!std::isfinite(number))
        throw overflowError();
    return number;
}

qint64 wholeOf(const Value& value, double lowest, double highest) {
    if (value.kind() == Value::Kind::Integer) {
        const qint64 whole = value.toInteger();
        if (static_cast<double>(whole) < lowest || static_cast<double>(whole) > highest)
            throw overflowError();
        return whole;
    }
    const double rounded = std::nearbyint(numberOf(value));
    if (!(rounded >= lowest && rounded <= highest))
        throw overflowError();
    return static_cast<qint64>(rounded);
}

qint64 longOf(const Value& value) {
    return wholeOf(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
}

values::Currency moneyOf(const Value& value) {
    if (value.kind() == Value::Kind::Text && !values::isNumeric(value.toText()))
        throw typeMismatchError();
    try {
        return value.toCurrency();
    } catch (const values::Overflow&) {
        throw overflowError();
    }
}

bool truthOf(const Value& value) {
    if (value.kind() != Value::Kind::Text)
        return value.toBool();
    const QString text = value.toText().trimmed();
    for (const char16_t* word : {u"true", u"yes", u"on"})
        if (text.compare(QStringView(word), Qt::CaseInsensitive) == 0)
            return true;
    for (const char16_t* word : {u"false", u"no", u"off"})
        if (text.compare(QStringView(word), Qt::CaseInsensitive) == 0)
            return false;
    return numberOf(value) != 0;
}

/// A moment; of a number the days since 12/30/1899.
QDateTime momentOf(const Value& value) {
    if (const auto moment = value.toDateTime())
        return *moment;
    if (value.kind() == Value::Kind::Text || value.kind() == Value::Kind::Boolean)
        throw typeMismatchError();
    const double days = value.toDouble();
    if (!(std::abs(days) < 3e6))
        throw overflowError();
    return QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC)
        .addSecs(static_cast<qint64>(std::llround(days * 86400)));
}

QString patternOf(const QString& text) {
    QString pattern;
    pattern.reserve(text.size() + 8);
    for (const QChar c : text) {
        if (c == u'%' || c == u'_' || c == u'\\')
            pattern += u'\\';
        pattern += c == u'*' ? QChar(u'%') : c == u'?' ? QChar(u'_') : c;
    }
    return pattern;
}

QString spellingList(const QString& text) {
    return QString::fromUtf8(QJsonDocument(QJsonArray::fromStringList(values::spellings(text)))
                                 .toJson(QJsonDocument::Compact));
}

void twoDigits(char* at, int value) {
    at[0] = static_cast<char>('0' + value / 10);
    at[1] = static_cast<char>('0' + value % 10);
}

bool isBlank(const Value& value) {
    if (value.kind() != Value::Kind::Text)
        return false;
    const QString text = value.toText();
    return text.trimmed().isEmpty() || text == QStringView(values::blankDate);
}

} // namespace

void Arguments::addMoney(values::Currency value) {
    if (m_money == Money::AsText)
        addText(value.toText());
    else
        addReal(value.toDouble());
}

void Arguments::addText(QStringView text) {
    const qsizetype start = m_texts.size();
    m_texts.resize(start + text.size() + 1);
    char* out = m_texts.data() + start;
    qsizetype i = 0;
    for (; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (c >= 0x80)
            break;
        out[i] = static_cast<char>(c);
    }
    if (i < text.size()) {
        const QByteArray rest = text.mid(i).toUtf8();
        m_texts.resize(start + i + rest.size() + 1);
        out = m_texts.data() + start;
        std::memcpy(out + i, rest.constData(), static_cast<std::size_t>(rest.size()));
        i += rest.size();
    }
    out[i] = 0;
    m_list.append(Argument{Kind::Text, static_cast<int>(i), start, 0});
}

void Arguments::addMoment(const QDateTime& moment) {
    const QDate date = moment.date();
    const QTime time = moment.time();
    if (date.year() < 100 || date.year() > 9999)
        throw overflowError();
    const qsizetype start = m_texts.size();
    m_texts.resize(start + 20);
    char* out = m_texts.data() + start;
    std::memcpy(out, "0000-00-00 00:00:00", 20);
    twoDigits(out, date.year() / 100);
    twoDigits(out + 2, date.year() % 100);
    twoDigits(out + 5, date.month());
    twoDigits(out + 8, date.day());
    twoDigits(out + 11, time.hour());
    twoDigits(out + 14, time.minute());
    twoDigits(out + 17, time.second());
    m_list.append(Argument{Kind::Text, 19, start, 0});
}

void Arguments::add(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        addNull();
        break;
    case Value::Kind::Boolean:
        addInteger(value.toBool() ? 1 : 0);
        break;
    case Value::Kind::Integer:
        addInteger(value.toInteger());
        break;
    case Value::Kind::Double:
        addReal(value.toDouble());
        break;
    case Value::Kind::Money:
        addMoney(value.toCurrency());
        break;
    case Value::Kind::Text:
        addText(value.textView());
        break;
    case Value::Kind::Date:
        addMoment(value.toDateTime().value_or(QDateTime()));
        break;
    }
}

void Arguments::add(const Value& value, Conversion conversion) {
    if (value.isNull()) {
        addNull();
        return;
    }
    switch (conversion) {
    case Conversion::AsIs:
        add(value);
        break;
    case Conversion::ToDate:
        addMoment(momentOf(value));
        break;
    case Conversion::ToYesNo:
        addInteger(truthOf(value) ? 1 : 0);
        break;
    case Conversion::ToWhole:
        addInteger(longOf(value));
        break;
    case Conversion::ToMoney:
        addMoney(moneyOf(value));
        break;
    case Conversion::ToReal:
        addReal(numberOf(value));
        break;
    case Conversion::ToText:
        addText(value.toText());
        break;
    case Conversion::ToSpellings:
        addText(spellingList(value.toText()));
        break;
    case Conversion::ToLowered:
        addText(values::lowered(value.toText()));
        break;
    case Conversion::ToFolded:
        addText(values::folded(value.toText()));
        break;
    case Conversion::ToPattern:
        addText(patternOf(value.toText()));
        break;
    }
}

Value storedValue(const Value& value, const Column& column) {
    if (value.isNull())
        return column.type == ColumnType::YesNo ? Value(false) : Value();
    switch (column.type) {
    case ColumnType::Counter:
    case ColumnType::Long:
        return isBlank(value) ? Value(0) : Value(longOf(value));
    case ColumnType::Integer:
        return isBlank(value) ? Value(0) : Value(wholeOf(value, -32768, 32767));
    case ColumnType::Double:
        return isBlank(value) ? Value(0.0) : Value(numberOf(value));
    case ColumnType::Currency:
        return isBlank(value) ? Value(values::Currency()) : Value(moneyOf(value));
    case ColumnType::YesNo:
        return isBlank(value) ? Value(false) : Value(truthOf(value));
    case ColumnType::DateTime:
        return isBlank(value) ? Value() : Value(momentOf(value));
    case ColumnType::Text:
    case ColumnType::Memo:
        break;
    }
    QString text = value.toText();
    if (column.width > 0 && text.size() > column.width &&
        text.toUcs4().size() > column.width) // the engines count a pair of surrogates as one
        throw fieldTooSmallError();
    return text;
}

} // namespace jet
