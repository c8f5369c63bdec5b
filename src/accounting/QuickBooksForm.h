#pragma once

#include "accounting/Answer.h"
#include "accounting/Message.h"
#include "accounting/Records.h"
#include "platform/quickbooks/Waiting.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"

#include <QString>

#include <optional>
#include <vector>

namespace accounting {

/// Base of the screens that talk to QuickBooks: they hold the request, the answer, and a stop word
/// that a failed exchange sets.
class QuickBooksForm : public screen::Form {
  public:
    bool isStopped() const { return m_stopWord == u"break"; }
    /// Shows the last request and its answer.
    void cmdMessage_Click();

  protected:
    using Form::Form;

    /// What a request does in QuickBooks: reading can be tried again at will.
    enum class Purpose { Read, Change };
    enum class Verdict { Ok, GoOn, Stop };

    /// Hands the request over. True with an answer; otherwise the user was told why, and the stop
    /// word is set.
    bool exchange(quickbooks::Waiting& waiting, const QString& request, Purpose purpose);
    /// The answer, read; nothing if it is no XML or has no element of that tag, which the user was
    /// told. Without a tag any answer will do.
    std::optional<Answer> readAnswer(quickbooks::Waiting& waiting, Purpose purpose,
                                     const QString& responseTag = {});
    /// The rule for what QuickBooks says: a warning is shown, an error is shown and stops.
    Verdict judge(quickbooks::Waiting& waiting, const Status& status);
    /// Asks QuickBooks for what it has: the elements with that tag in its answer. Nothing if the
    /// user was told that it went wrong.
    std::optional<std::vector<QDomElement>> query(quickbooks::Waiting& waiting, Message question,
                                                  const QString& responseTag);
    /// True if the message has nothing that QuickBooks couldn't take; otherwise tells what.
    static bool isFit(const QStringList& complaints);
    /// Makes sure that QuickBooks knows the terms. Its answer counts for nothing, as long as it is
    /// one: terms that it knows already are refused. True for empty terms.
    bool sendTerms(quickbooks::Waiting& waiting, const QString& terms);
    /// Adds a customer or a vendor, with his terms.
    bool addRecord(const RecordKind& kind, const FieldTexts& fields);

    /// "Last Message", and at the right "Close".
    void makeFoot(screen::ButtonBar& bar);
    static jet::Recordset snapshot(const QString& select);
    static void tell(const QString& text, const QString& title,
                     screen::Icon icon = screen::Icon::Exclamation);

    /// Marks a record that QuickBooks has taken. False if the database refused, which the user was
    /// told.
    static bool markSent(const QString& update);

    /// After an exchange that went wrong: whether QuickBooks may have taken the request.
    bool mayHaveBeenTaken() const { return m_mayHaveBeenTaken; }
    /// What stands for "it" in "whether QuickBooks took it".
    QString m_what = u"what was sent"_s;
    bool m_opensWithReason = true; ///< "loadXML failed, reason: " in front of a parser's reason

  private:
    void tellFailure(const quickbooks::Outcome& outcome, Purpose purpose);

    QString m_request;
    QString m_response;
    QString m_stopWord;
    QString m_lastRequest;
    bool m_mayHaveBeenTaken = false;
};

} // namespace accounting
