#pragma once

#include <QDomDocument>
#include <QString>

#include <vector>

namespace qbcompany {

/// The message itself is none that QuickBooks would read: nothing of it is done.
struct Refusal {
    QString text;
};

/// A message, found right in form to the letter: envelope, order, names, lengths and types. Throws
/// Refusal with what is wrong.
QDomDocument readMessage(const QString& message);

/// A company to practise on: lists and transactions as QuickBooks gives them back, in a file of its
/// own. It answers requests as QuickBooks does, and takes nothing from a message that isn't right
/// to the letter.
class Company {
  public:
    /// An empty company that keeps an account of each kind.
    Company();
    /// Throws Refusal if the file can't be read.
    static Company load(const QString& path);
    /// False if it can't be written.
    bool save(const QString& path) const;

    /// Answers a whole message and does what it asks; `trouble` "3180" or "warning" makes what it
    /// adds meet that. Throws Refusal.
    QString answer(const QString& message, const QString& trouble = {});

    /// What the next request of a kind meets (any kind if that is empty): see main.cpp. Taken away
    /// by takeTrouble().
    void setTrouble(const QString& trouble, const QString& request);
    /// The trouble that a message is to meet; empty for none.
    QString takeTrouble(const QString& message);

    /// The number behind which the next invoice gets its own; never goes back.
    void setLastInvoice(int number);
    /// Adds an item that can stand on an invoice or a bill.
    void addItem(const QString& kind, const QString& name, const QString& price);
    /// The records of a list: "CustomerRet".
    std::vector<QDomElement> list(const QString& tag) const;

  private:
    friend class Answers;
    QDomElement root() const { return m_document.documentElement(); }
    QString nextId();

    QDomDocument m_document;
    QString m_pretended; ///< what the request under way is to meet
};

} // namespace qbcompany
