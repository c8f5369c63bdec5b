#pragma once

#include "platform/values/Literals.h"
#include "qbcompany/Company.h"

#include <QDomDocument>
#include <QString>

#include <vector>

namespace qbcompany {

/// The answers of a practice company to requests that were found right in form.
class Answers {
  public:
    explicit Answers(Company& company) : m_company(company) {}

    QString toAll(const QDomElement& messages, bool stopOnError);
    void addItem(const QString& kind, const QString& name, const QString& price);

  private:
    struct Status {
        QString code = u"0"_s, severity = u"Info"_s, message = u"Status OK"_s;
    };
    using Parts = std::vector<QDomElement>;

    QDomElement to(const QDomElement& request, bool& failed);
    Status query(const QDomElement& request, QDomElement& response);
    Status add(const QDomElement& request, QDomElement& response);
    Status addToList(const QString& kind, const QDomElement& given, QDomElement& response);
    Status addDocument(const QString& kind, const QDomElement& given, QDomElement& response);

    /// Fills in the ListID of what a reference names; false if the company doesn't hold it.
    bool resolve(QDomElement& reference, const QStringList& lists) const;
    QDomElement find(const QDomElement& reference, const QStringList& lists) const;
    bool nameIsUsed(const QString& name, const QStringList& lists) const;
    QDomElement text(const QString& tag, const QString& value) const;
    Parts head(const QString& idTag);
    /// An element of those parts that the answers of a message have, in their order.
    QDomElement ordered(const QString& message, const QStringList& path, const Parts& parts) const;
    QDomElement lineOf(const QString& kind, const QDomElement& given, double& total);
    static QStringList tagsOf(const QString& kind);

    Company& m_company;
};

} // namespace qbcompany
