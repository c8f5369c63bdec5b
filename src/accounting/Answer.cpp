#include "accounting/Answer.h"

#include "platform/values/Literals.h"

#include <QRegularExpression>

namespace accounting {

std::optional<Answer> Answer::load(const QString& text, QString& reason) {
    static const QRegularExpression documentType(u"<!DOCTYPE[^>]*>"_s);
    QString plain = text;
    plain.remove(documentType); // names no file, which not every parser takes
    Answer answer;
    int line = 0, column = 0;
    if (answer.m_document.setContent(plain, false, &reason, &line, &column))
        return answer;
    reason += u" (line %1, column %2)"_s.arg(line).arg(column);
    return std::nullopt;
}

std::vector<Answer::Item> Answer::items(const QString& responseTag) const {
    std::vector<Item> found;
    const QDomNodeList nodes = m_document.elementsByTagName(responseTag);
    for (int i = 0; i < nodes.length(); ++i) {
        const QDomElement element = nodes.item(i).toElement();
        const QDomNamedNodeMap attributes = element.attributes();
        const auto value = [&](const QString& name) {
            return attributes.namedItem(name).nodeValue();
        };
        found.push_back(
            {{value(u"statusCode"_s), value(u"statusSeverity"_s), value(u"statusMessage"_s)},
             element});
    }
    return found;
}

QString textAt(const QDomElement& below, const QString& path) {
    QDomElement at = below;
    const QStringList tags = path.split(u'/');
    for (const QString& tag : tags)
        at = at.firstChildElement(tag);
    return at.text();
}

std::vector<QDomElement> childElements(const QDomElement& of) {
    std::vector<QDomElement> children;
    for (QDomElement child = of.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        children.push_back(child);
    return children;
}

QString unknownKind(const Status& status) {
    static const QRegularExpression pattern(u"reference to QuickBooks (.+?) \""_s);
    return pattern.match(status.message).captured(1);
}

bool saysNameInUse(const Status& status) {
    return status.code == u"3100" || status.message.startsWith(u"The name \"");
}

QString nameInUse(const Status& status) {
    constexpr int eleventh = 10;
    const QString rest = status.message.mid(eleventh);
    return rest.left(rest.indexOf(u'"'));
}

} // namespace accounting
