#include "accounting/Message.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>
#include <cmath>

namespace accounting {

namespace {

QString capital(const QString& words) {
    return words.left(1).toUpper() + words.mid(1);
}

/// Nothing below the blank but tab and line ends, and no half of a pair: what XML can carry.
bool canBeCarried(const QString& value) {
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value[i];
        if (c.isHighSurrogate() && i + 1 < value.size() && value[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (c.isSurrogate() || c.unicode() >= 0xFFFE ||
            (c.unicode() < 32 && c != u'\t' && c != u'\r' && c != u'\n'))
            return false;
    }
    return true;
}

} // namespace

Message::Message(const QString& request, QString about) : m_about(std::move(about)) {
    m_xml.init();
    m_xml.AddTagTopLevel(u"?xml version=\"1.0\" ?"_s);
    m_xml.AddTagTopLevel(u"!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' "_s);
    open(u"QBXML"_s);
    m_xml.AddAggregate(u"QBXMLMsgsRq"_s, 1, {u"onError"_s}, {u"stopOnError"_s});
    m_open += u"QBXMLMsgsRq"_s;
    m_xml.AddAggregate(request, 1, {u"requestID"_s}, {u"1"_s});
    m_open += request;
}

void Message::open(const QString& tag) {
    m_xml.AddAggregateTagOnly(tag);
    m_open += tag;
}

void Message::close() {
    m_xml.AddEndAggregate(m_open.takeLast());
}

QString Message::finish() {
    while (!m_open.isEmpty())
        close();
    return m_xml.GetXML();
}

void Message::complain(const QString& text) {
    if (const QString whole = m_about + text; !m_complaints.contains(whole))
        m_complaints += whole;
}

bool Message::check(const QString& value, int limit, const QString& words) {
    if (value.size() > limit)
        complain(u"%1 has %2 letters, and QuickBooks takes %3: \"%4\""_s.arg(capital(words))
                     .arg(value.size())
                     .arg(limit)
                     .arg(value));
    else if (!canBeCarried(value))
        complain(u"%1 holds a character that can't be sent: \"%2\""_s.arg(capital(words),
                                                                          value.simplified()));
    else
        return true;
    return false;
}

void Message::textAlways(const QString& tag, const QString& value, int limit,
                         const QString& words) {
    if (check(value, limit, words))
        m_xml.AddElement(tag, value);
}

void Message::text(const QString& tag, const QString& value, int limit, const QString& words) {
    if (!value.isEmpty())
        textAlways(tag, value, limit, words);
}

void Message::date(const QString& tag, const QDate& value) {
    m_xml.AddElement(tag, values::format(value, u"yyyy-mm-dd"));
}

void Message::truth(const QString& tag, bool value) {
    m_xml.AddElement(tag, value ? u"true"_s : u"false"_s);
}

void Message::whole(const QString& tag, const QString& value, const QString& words) {
    if (value.isEmpty())
        return;
    bool ok = false;
    const qint64 number = value.toLongLong(&ok);
    if (ok)
        m_xml.AddElement(tag, QString::number(number));
    else
        complain(u"%1 is no whole number: \"%2\""_s.arg(capital(words), value));
}

void Message::number(const QString& tag, const QString& value, const QString& words) {
    constexpr double limit = 1e10; // ten digits in front of the point
    if (value.isEmpty())
        return;
    const double figure = values::val(QString(value).remove(u','));
    if (!values::isNumeric(value)) {
        complain(u"%1 is no number: \"%2\""_s.arg(capital(words), value));
    } else if (std::abs(figure) >= limit) {
        complain(u"%1 is larger than QuickBooks takes: %2"_s.arg(capital(words), value));
    } else {
        QString digits = values::format(figure, u"0.#####");
        if (digits.endsWith(u'.'))
            digits.chop(1);
        m_xml.AddElement(tag, digits);
    }
}

void Message::amount(const QString& tag, const QString& value, const QString& words) {
    constexpr double limit = 1e13;
    if (value.isEmpty())
        return;
    const double figure = values::val(QString(value).remove(u','));
    if (!values::isNumeric(value))
        complain(u"%1 is no amount of money: \"%2\""_s.arg(capital(words), value));
    else if (std::abs(figure) >= limit)
        complain(u"%1 is larger than QuickBooks takes: %2"_s.arg(capital(words), value));
    else
        m_xml.AddElement(tag, values::format(figure, u"0.00"));
}

void Message::reference(const QString& tag, const QString& fullName, int limit,
                        const QString& words) {
    if (fullName.isEmpty())
        return;
    open(tag);
    text(u"FullName"_s, fullName, limit, words);
    close();
}

void Message::element(const Element& element, const FieldTexts& fields) {
    const QString value = fields.value(element.column);
    switch (element.kind) {
    case Element::Kind::Text:
        if (element.evenEmpty)
            textAlways(element.tag, value, element.limit, element.words);
        else
            text(element.tag, value, element.limit, element.words);
        break;
    case Element::Kind::Date:
        if (const QDate day = values::dateFromText(value); day.isValid())
            date(element.tag, day);
        break;
    case Element::Kind::Whole:
        whole(element.tag, value, element.words);
        break;
    }
}

void Message::groups(const std::vector<Group>& groups, const FieldTexts& fields) {
    for (const Group& group : groups) {
        const bool any =
            std::any_of(group.elements.begin(), group.elements.end(), [&](const Element& e) {
                return e.evenEmpty || !fields.value(e.column).isEmpty();
            });
        if (!any)
            continue;
        if (!group.aggregate.isEmpty())
            open(group.aggregate);
        for (const Element& one : group.elements)
            element(one, fields);
        if (!group.aggregate.isEmpty())
            close();
    }
}

QString plainFigure(const QString& text, const QString& currencySymbol) {
    QString figure = text.trimmed();
    if (!currencySymbol.isEmpty() && figure.startsWith(currencySymbol))
        figure = figure.mid(currencySymbol.size()).trimmed();
    return figure.remove(u',');
}

} // namespace accounting
