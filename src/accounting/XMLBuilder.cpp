#include "accounting/XMLBuilder.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <algorithm>

namespace accounting {

namespace {

const QString lineEnd = u"\r\n"_s;

std::int16_t moved(std::int16_t level, int by) {
    return values::cInt(static_cast<double>(level) + by);
}

} // namespace

void XMLBuilder::init() {
    m_text.clear();
    m_level = 0;
}

void XMLBuilder::AddTagTopLevel(const QString& tag) {
    m_text += u'<' + tag + u'>' + lineEnd;
}

void XMLBuilder::AddAggregateTagOnly(const QString& tag) {
    indent();
    m_text += u'<' + tag + u'>' + lineEnd;
    m_level = moved(m_level, 1);
}

void XMLBuilder::AddAggregate(const QString& tag, int count, const QStringList& names,
                              const QStringList& attributeValues) {
    indent();
    m_text += u'<' + tag;
    for (int i = 0; i < count; ++i)
        m_text += u' ' + names[i] + u"=\""_s + escaped(attributeValues[i]) + u"\" "_s;
    m_text += u'>' + lineEnd;
    m_level = moved(m_level, 1);
}

void XMLBuilder::AddEndAggregate(const QString& tag) {
    m_level = moved(m_level, -1);
    indent();
    m_text += u"</"_s + tag + u'>' + lineEnd;
}

void XMLBuilder::AddElement(const QString& tag, const QString& value) {
    indent();
    m_text += u'<' + tag + u'>' + escaped(value) + u"</"_s + tag + u'>' + lineEnd;
}

void XMLBuilder::indent() {
    m_text += QString(std::max<int>(m_level, 0) * 4, u' ');
}

bool XMLBuilder::needsEscaping(const QString& value) {
    return std::any_of(value.begin(), value.end(), [](QChar c) {
        return c.unicode() > 126 || c == u'<' || c == u'>' || c == u'&' || c == u'\'' || c == u'"';
    });
}

QString XMLBuilder::escaped(const QString& value) {
    if (!needsEscaping(value))
        return value;
    QString text = value;
    // The ampersand goes first, so that the others aren't escaped twice.
    text.replace(u"&"_s, u"&amp;"_s);
    text.replace(u"<"_s, u"&lt;"_s);
    text.replace(u">"_s, u"&gt;"_s);
    text.replace(u"'"_s, u"&apos;"_s);
    text.replace(u"\""_s, u"&quot;"_s);
    QString plain;
    const auto codes = text.toUcs4();
    for (const char32_t code : codes) {
        if (code > 126)
            plain += u"&#"_s + QString::number(code) + u';';
        else
            plain += QChar(static_cast<char16_t>(code));
    }
    return plain;
}

} // namespace accounting
