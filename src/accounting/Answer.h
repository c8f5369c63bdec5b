#pragma once

#include <QDomDocument>
#include <QString>

#include <optional>
#include <vector>

namespace accounting {

/// How QuickBooks took a request.
struct Status {
    QString code;
    QString severity;
    QString message;

    bool isOk() const { return code == u"0"; }
    bool isError() const { return severity.compare(u"Error", Qt::CaseInsensitive) == 0; }
};

/// An answer of QuickBooks, read.
class Answer {
  public:
    /// One element such as "InvoiceAddRs", with what is in it.
    struct Item {
        Status status;
        QDomElement content;
    };

    /// Nothing, and the parser's reason, if the text is no XML.
    static std::optional<Answer> load(const QString& text, QString& reason);
    /// The elements of a tag, in the answer's order.
    std::vector<Item> items(const QString& responseTag) const;

  private:
    QDomDocument m_document;
};

/// The text of the element at a path of tags parted by '/', below a given one; empty where it isn't
/// there.
QString textAt(const QDomElement& below, const QString& path);

/// The children that are elements.
std::vector<QDomElement> childElements(const QDomElement& of);

/// For 3140, an invalid reference: what kind of thing QuickBooks doesn't know ("Customer", "Item"),
/// as its message tells; empty if it doesn't.
QString unknownKind(const Status& status);

/// Whether an error says that a name is in use already.
bool saysNameInUse(const Status& status);

/// The name in the message that says so: from the eleventh character up to the next double quote.
QString nameInUse(const Status& status);

} // namespace accounting
