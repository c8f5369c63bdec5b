#include "qbcompany/Elements.h"

#include "platform/values/Literals.h"
#include "qbcompany/ElementText.h"

#include <QDate>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace qbcompany {

namespace {

/// Reads the table's lines into trees.
class Reader {
  public:
    explicit Reader(const QString& text) {
        const QStringList lines = text.split(u'\n');
        for (const QString& line : lines) {
            if (!line.trimmed().isEmpty() && !line.startsWith(u'#'))
                m_lines += line;
        }
    }
    QHash<QString, std::vector<Element>> messages() {
        QHash<QString, std::vector<Element>> all;
        while (m_at < m_lines.size()) {
            const QString name = m_lines[m_at++];
            all[name] = sequence(1);
        }
        return all;
    }

  private:
    static int depthOf(const QString& line) {
        int blanks = 0;
        while (line[blanks] == u' ')
            ++blanks;
        return blanks / 2;
    }
    static void readOccurs(const QString& word, Element& into) {
        into.least = word.section(u".."_s, 0, 0).toInt();
        const QString most = word.section(u".."_s, -1);
        into.most = most == u"n" ? std::numeric_limits<int>::max() : most.toInt();
    }
    std::vector<Element> sequence(int depth) {
        std::vector<Element> found;
        while (m_at < m_lines.size() && depthOf(m_lines[m_at]) == depth) {
            const QString line = m_lines[m_at].trimmed();
            if (line == u"|" || line == u"}")
                break;
            ++m_at;
            if (line.startsWith(u'{'))
                found.push_back(choice(line, depth));
            else
                found.push_back(element(line, depth));
        }
        return found;
    }
    Element choice(const QString& line, int depth) {
        Element made;
        readOccurs(line.section(u' ', 1), made);
        bool more = true;
        while (more) {
            made.alternatives.push_back(sequence(depth));
            more = m_at < m_lines.size() && m_lines[m_at].trimmed() == u"|";
            ++m_at;
        }
        return made;
    }
    Element element(const QString& line, int depth) {
        QString words = line;
        Element made;
        if (const auto values = line.indexOf(u" ="); values >= 0) {
            made.values = line.mid(values + 2).split(u'|');
            words = line.left(values);
        }
        QStringList parts = words.split(u' ');
        made.name = parts.takeFirst();
        if (!parts.isEmpty() && !parts.first()[0].isDigit())
            made.type = parts.takeFirst();
        readOccurs(parts.value(0, u"1"_s), made);
        made.limit = parts.value(1).toInt();
        if (made.limit == 0 && made.type == u"ID")
            made.limit = 36;
        made.children = sequence(depth + 1);
        return made;
    }

    QStringList m_lines;
    qsizetype m_at = 0;
};

const QHash<QString, std::vector<Element>>& messages() {
    static const auto all = Reader(elementText()).messages();
    return all;
}

bool matches(const QString& text, const char16_t* pattern) {
    return QRegularExpression(QRegularExpression::anchoredPattern(QString::fromUtf16(pattern)))
        .match(text)
        .hasMatch();
}

bool isOfType(const QString& text, const QString& type) {
    if (type == u"AMT")
        return matches(text, u"([+\\-]?[0-9]{1,13}(\\.[0-9]{2})?)?");
    if (type == u"PRICE" || type == u"QUAN" || type == u"PERCENT")
        return matches(text, u"([+\\-]?[0-9]{1,10}(\\.[0-9]{1,5})?)?");
    if (type == u"INT")
        return matches(text, u"[+\\-]?[0-9]+");
    if (type == u"BOOL")
        return matches(text, u"(true|false|1|0)?");
    if (type == u"DATE")
        return text.isEmpty() || (matches(text, u"[0-9]{4}-[0-9]{2}-[0-9]{2}") &&
                                  QDate::fromString(text, Qt::ISODate).isValid());
    if (type == u"DATETIME")
        return matches(text, u"([0-9]{4}-[0-9]{1,2}-[0-9]{1,2}(T[0-9]{1,2}(:[0-9]{1,2}(:[0-9]{1,2}("
                             u"[+\\-]?[0-9]{1,2}:[0-9]{1,2})?)?)?)?)?");
    return true;
}

std::vector<QDomElement> childrenOf(const QDomElement& parent) {
    std::vector<QDomElement> children;
    for (QDomElement child = parent.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement())
        children.push_back(child);
    return children;
}

/// Checks the elements of one aggregate against what may stand there.
class Check {
  public:
    static QString content(const QDomElement& parent, const std::vector<Element>& allowed) {
        Check check(childrenOf(parent));
        if (!check.sequence(allowed))
            return check.m_fault;
        if (check.m_at < check.m_children.size())
            return u"the element %1 in %2 is unknown there, or out of order"_s.arg(
                check.m_children[check.m_at].tagName(), parent.tagName());
        return {};
    }

  private:
    explicit Check(std::vector<QDomElement> children) : m_children(std::move(children)) {}

    bool sequence(const std::vector<Element>& allowed) {
        for (const Element& element : allowed) {
            if (!(element.alternatives.empty() ? one(element) : choice(element)))
                return false;
        }
        return true;
    }
    bool one(const Element& element) {
        int count = 0;
        while (count < element.most && m_at < m_children.size() &&
               m_children[m_at].tagName() == element.name) {
            m_fault = value(m_children[m_at], element);
            if (!m_fault.isEmpty())
                return false;
            ++count;
            ++m_at;
        }
        if (count < element.least) {
            m_fault = u"the element %1 is missing"_s.arg(element.name);
            return false;
        }
        return true;
    }
    bool choice(const Element& element) {
        int count = 0;
        for (bool taken = true; taken && count < element.most;) {
            taken = false;
            for (const auto& alternative : element.alternatives) {
                const std::size_t before = m_at;
                if (!canBegin(alternative))
                    continue;
                if (!sequence(alternative))
                    return false;
                if (m_at > before) {
                    taken = true;
                    ++count;
                    break;
                }
            }
        }
        if (count >= element.least)
            return true;
        m_fault = u"one of several elements is missing"_s;
        return false;
    }
    /// Whether the next child is one that the row may begin with.
    bool canBegin(const std::vector<Element>& row) const {
        if (m_at >= m_children.size())
            return false;
        const QString next = m_children[m_at].tagName();
        for (const Element& element : row) {
            if (element.name == next)
                return true;
            for (const auto& alternative : element.alternatives) {
                if (canBegin(alternative))
                    return true;
            }
            if (element.alternatives.empty() && element.least > 0)
                return false;
        }
        return false;
    }
    static QString value(const QDomElement& given, const Element& element) {
        if (element.type.isEmpty())
            return content(given, element.children);
        const QString text = given.text();
        if (!given.firstChildElement().isNull())
            return u"the element %1 holds elements"_s.arg(element.name);
        if (element.limit > 0 && text.size() > element.limit)
            return u"the text of %1 is longer than %2 letters"_s.arg(element.name)
                .arg(element.limit);
        if (!isOfType(text, element.type) ||
            (element.type == u"ENUM" && !element.values.contains(text)))
            return u"\"%1\" is no value for %2"_s.arg(text, element.name);
        return {};
    }

    std::vector<QDomElement> m_children;
    std::size_t m_at = 0;
    QString m_fault;
};

} // namespace

namespace {

/// All elements of a row, those of its choices among them.
std::vector<const Element*> flat(const std::vector<Element>& row) {
    std::vector<const Element*> all;
    for (const Element& element : row) {
        if (element.alternatives.empty())
            all.push_back(&element);
        for (const auto& alternative : element.alternatives) {
            const auto below = flat(alternative);
            all.insert(all.end(), below.begin(), below.end());
        }
    }
    return all;
}

} // namespace

QStringList elementOrder(const QString& message, const QStringList& path) {
    const auto found = messages().constFind(message);
    if (found == messages().constEnd())
        return {};
    auto row = flat(found.value());
    for (const QString& tag : path) {
        const auto at = std::find_if(row.begin(), row.end(),
                                     [&](const Element* element) { return element->name == tag; });
        if (at == row.end())
            return {};
        row = flat((*at)->children);
    }
    QStringList names;
    for (const Element* element : row)
        names += element->name;
    return names;
}

bool isKnownMessage(const QString& name) {
    return messages().contains(name);
}

QString faultOf(const QDomElement& message) {
    const auto found = messages().constFind(message.tagName());
    if (found == messages().constEnd())
        return u"there is no message %1"_s.arg(message.tagName());
    if (message.attribute(u"requestID"_s).size() > 50)
        return u"the request ID is longer than 50 letters"_s;
    return Check::content(message, *found);
}

} // namespace qbcompany
