#include "accounting/QuickBooksForm.h"

#include "accounting/Literals.h"
#include "accounting/MessageWindow.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"

namespace accounting {

using quickbooks::Outcome;
using quickbooks::Waiting;
using screen::Buttons;
using screen::Icon;

void QuickBooksForm::tell(const QString& text, const QString& title, Icon icon) {
    screen::MsgBox(text, Buttons::Ok, icon, title);
}

jet::Recordset QuickBooksForm::snapshot(const QString& select) {
    return core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
}

bool QuickBooksForm::exchange(Waiting& waiting, const QString& request, Purpose purpose) {
    m_request = m_lastRequest = request;
    m_response.clear();
    m_stopWord.clear();
    m_mayHaveBeenTaken = false;
    const auto door = quickbooks::doorOf(core::shared().ProgramFolder);
    const Outcome outcome = waiting.exchange(door, m_request.toUtf8());
    if (outcome.kind == Outcome::Kind::Answered) {
        m_response = outcome.text;
        return true;
    }
    m_mayHaveBeenTaken = purpose == Purpose::Change && (outcome.kind == Outcome::Kind::NoAnswer ||
                                                        outcome.kind == Outcome::Kind::Cancelled);
    m_request.clear();
    m_stopWord = u"break"_s;
    waiting.hide();
    tellFailure(outcome, purpose);
    return false;
}

void QuickBooksForm::tellFailure(const Outcome& outcome, Purpose purpose) {
    const QString unsure = u"\r\n\r\nIt isn't known whether QuickBooks took %1. Look there before "
                           "you send it again."_s.arg(m_what);
    switch (outcome.kind) {
    case Outcome::Kind::NotOpen:
        tell(u"Quickbooks must be running for this module to function."_s,
             u"Quickbooks not Open"_s);
        break;
    case Outcome::Kind::NotSent:
        tell(u"Nothing was sent to QuickBooks. "_s + outcome.text, u"Quickbooks not Open"_s);
        break;
    case Outcome::Kind::NoAnswer:
        tell(u"QuickBooks did not answer. "_s + outcome.text +
                 (purpose == Purpose::Change ? unsure : QString()),
             u"No Answer from QuickBooks"_s, Icon::Critical);
        break;
    case Outcome::Kind::Cancelled:
        // Who only read knows that he cancelled.
        if (purpose == Purpose::Change)
            tell(outcome.text + unsure, u"No Answer from QuickBooks"_s);
        break;
    case Outcome::Kind::Answered:
        break;
    }
}

std::optional<Answer> QuickBooksForm::readAnswer(Waiting& waiting, Purpose purpose,
                                                 const QString& responseTag) {
    QString reason;
    auto answer = Answer::load(m_response, reason);
    if (answer && !responseTag.isEmpty() && answer->items(responseTag).empty()) {
        answer.reset();
        reason = u"there is no %1 in the answer"_s.arg(responseTag);
    }
    if (answer)
        return answer;
    waiting.hide();
    m_mayHaveBeenTaken = purpose == Purpose::Change;
    QString text = (m_opensWithReason ? u"loadXML failed, reason: "_s : QString()) + reason;
    if (m_mayHaveBeenTaken)
        text += u"\r\n\r\nThe answer of QuickBooks can't be read, so it isn't known whether it "
                "took %1. Look there before you send it again."_s.arg(m_what);
    tell(text, u"Error"_s, Icon::Critical);
    return std::nullopt;
}

QuickBooksForm::Verdict QuickBooksForm::judge(Waiting& waiting, const Status& status) {
    if (status.isOk())
        return Verdict::Ok;
    waiting.hide();
    if (status.isError()) {
        tell(status.message, u"Error from QuickBooks"_s, Icon::Critical);
        return Verdict::Stop;
    }
    tell(status.message, u"Warning from QuickBooks"_s);
    return Verdict::GoOn;
}

std::optional<std::vector<QDomElement>> QuickBooksForm::query(Waiting& waiting, Message question,
                                                              const QString& responseTag) {
    if (!isFit(question.complaints()) || !exchange(waiting, question.finish(), Purpose::Read))
        return std::nullopt;
    const auto answer = readAnswer(waiting, Purpose::Read, responseTag);
    if (!answer)
        return std::nullopt;
    std::vector<QDomElement> found;
    for (const auto& item : answer->items(responseTag)) {
        if (judge(waiting, item.status) == Verdict::Stop)
            return std::nullopt;
        found.push_back(item.content);
    }
    return found;
}

bool QuickBooksForm::isFit(const QStringList& complaints) {
    if (complaints.isEmpty())
        return true;
    constexpr qsizetype shown = 12;
    QStringList lines = complaints.mid(0, shown);
    if (complaints.size() > shown)
        lines += u"... and %1 more."_s.arg(complaints.size() - shown);
    tell(u"Nothing was sent, since QuickBooks can't take this:\r\n\r\n"_s + lines.join(u"\r\n"_s),
         u"Not Sent"_s);
    return false;
}

bool QuickBooksForm::sendTerms(Waiting& waiting, const QString& terms) {
    if (terms.isEmpty())
        return true;
    const QString netDue =
        core::MainDatabase()
            .lookup(u"Select netdue from terms where description = "_s + literal(terms))
            .toText();
    Message message = addTermsRequest(terms, netDue);
    if (!isFit(message.complaints()))
        return false;
    const QString what = m_what;
    m_what = u"the terms"_s;
    const bool taken = exchange(waiting, message.finish(), Purpose::Read) &&
                       readAnswer(waiting, Purpose::Read).has_value();
    m_what = what;
    return taken;
}

bool QuickBooksForm::addRecord(const RecordKind& kind, const FieldTexts& fields) {
    Message message = addRequest(kind, fields);
    if (!isFit(message.complaints()))
        return false;
    Waiting waiting(u"Adding %1 to QuickBooks ..."_s.arg(fields.value(kind.name)));
    const QString what = m_what;
    m_what = u"the new name"_s;
    const QString responseTag = kind.record + u"AddRs"_s;
    bool added = false;
    if ((!kind.hasTerms || sendTerms(waiting, fields.value(u"terms"_s))) &&
        exchange(waiting, message.finish(), Purpose::Change)) {
        if (const auto answer = readAnswer(waiting, Purpose::Change, responseTag)) {
            for (const auto& item : answer->items(responseTag))
                added = judge(waiting, item.status) != Verdict::Stop;
        }
    }
    m_what = what;
    return added;
}

bool QuickBooksForm::markSent(const QString& update) {
    QString reason;
    try {
        core::MainDatabase().execute(update);
        return true;
    } catch (const jet::Error& error) {
        reason = error.text();
    }
    tell(
        u"QuickBooks has taken the name, but the database refused to mark it: %1\r\n\r\nMark it by "
        "hand under Import/Export, Manage; don't send it a second time."_s.arg(reason),
        u"Not Recorded"_s, Icon::Critical);
    return false;
}

void QuickBooksForm::makeFoot(screen::ButtonBar& bar) {
    on(bar.button(u"cmdMessage"_s, u"Last &Message"_s), &QuickBooksForm::cmdMessage_Click);
    bar.stretch();
    auto* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdClose, [this] { unload(); });
    setCancelButton(cmdClose);
}

void QuickBooksForm::cmdMessage_Click() {
    screen::Forms::dialog<MessageWindow>(u"DisplayXML"_s)
        ->ShowMessage(m_lastRequest.isEmpty() && m_response.isEmpty()
                          ? u"Nothing was sent yet."_s
                          : m_lastRequest + u"\r\n"_s + m_response);
}

} // namespace accounting
