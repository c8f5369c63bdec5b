#pragma once

#include "accounting/XMLBuilder.h"

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace accounting {

/// The fields of a record by their column names in small letters, as they go into messages.
using FieldTexts = QHash<QString, QString>;

/// An element of a message that is filled from a column.
struct Element {
    enum class Kind { Text, Date, Whole };
    QString tag;
    QString column; ///< in small letters
    int limit = 0;  ///< most letters that QuickBooks takes
    QString words;  ///< how a person calls it: "bill address, line 1"
    Kind kind = Kind::Text;
    bool evenEmpty = false; ///< goes out where the column is empty, too
};

/// Elements one behind the other, in an aggregate of their own if it has a tag.
struct Group {
    QString aggregate;
    std::vector<Element> elements;
};

/// One request, from its envelope to its end. What QuickBooks could not take is noted in words
/// instead: a message with complaints must not be sent.
class Message {
  public:
    /// `request` such as "InvoiceAddRq"; `about` begins each complaint ("Customer Acme: ").
    explicit Message(const QString& request, QString about = {});

    void open(const QString& tag);
    void close();

    /// An element, left out where the value is empty.
    void text(const QString& tag, const QString& value, int limit, const QString& words);
    /// The same, there even where it is empty.
    void textAlways(const QString& tag, const QString& value, int limit, const QString& words);
    void date(const QString& tag, const QDate& value);
    void truth(const QString& tag, bool value);
    void whole(const QString& tag, const QString& value, const QString& words);
    /// A number of pieces or a price each: at most five decimals.
    void number(const QString& tag, const QString& value, const QString& words);
    /// Money: two decimals.
    void amount(const QString& tag, const QString& value, const QString& words);
    /// A <...Ref> with the FullName of what it refers to; left out where that is empty.
    void reference(const QString& tag, const QString& fullName, int limit, const QString& words);
    /// Groups in which no column is filled are left out.
    void groups(const std::vector<Group>& groups, const FieldTexts& fields);

    /// Complains of a value that would not fit, and gives false then.
    bool check(const QString& value, int limit, const QString& words);
    /// Once, however many elements take the same value.
    void complain(const QString& text);
    const QStringList& complaints() const { return m_complaints; }
    /// The whole text, all that is open closed.
    QString finish();

  private:
    void element(const Element& element, const FieldTexts& fields);

    XMLBuilder m_xml;
    QStringList m_open;
    QString m_about;
    QStringList m_complaints;
};

/// A figure as people type it: without the currency symbol in front and without commas.
QString plainFigure(const QString& text, const QString& currencySymbol);

} // namespace accounting
