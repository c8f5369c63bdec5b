#include "qbcompany/Answers.h"

#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "qbcompany/Elements.h"

#include <QHash>

#include <algorithm>

namespace qbcompany {

namespace {

const QStringList itemTags{u"ItemServiceRet"_s, u"ItemNonInventoryRet"_s, u"ItemOtherChargeRet"_s,
                           u"ItemDiscountRet"_s};
/// Names are told apart across these lists.
const QStringList nameTags{u"CustomerRet"_s, u"VendorRet"_s, u"EmployeeRet"_s};
const QString notInList =
    u"  QuickBooks error message: Invalid argument.  The specified record does "
    "not exist in the list."_s;

QString childText(const QDomElement& of, const QString& tag) {
    return of.firstChildElement(tag).text();
}

bool same(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString money(double value) {
    return QString::number(value, 'f', 2);
}

QString fullName(const QDomElement& entry) {
    const QString full = childText(entry, u"FullName"_s);
    return full.isEmpty() ? childText(entry, u"Name"_s) : full;
}

QStringList textsOf(const QDomElement& of, const QString& tag) {
    QStringList texts;
    for (QDomElement child = of.firstChildElement(tag); !child.isNull();
         child = child.nextSiblingElement(tag))
        texts += child.text();
    return texts;
}

bool passesNameFilter(const QDomElement& request, const QString& name) {
    const QDomElement filter = request.firstChildElement(u"NameFilter"_s);
    if (!filter.isNull()) {
        const QString part = childText(filter, u"Name"_s);
        const QString how = childText(filter, u"MatchCriterion"_s);
        if (how == u"StartsWith")
            return name.startsWith(part, Qt::CaseInsensitive);
        if (how == u"EndsWith")
            return name.endsWith(part, Qt::CaseInsensitive);
        return name.contains(part, Qt::CaseInsensitive);
    }
    const QDomElement range = request.firstChildElement(u"NameRangeFilter"_s);
    const QString from = childText(range, u"FromName"_s);
    const QString to = childText(range, u"ToName"_s);
    return (from.isEmpty() || name.compare(from, Qt::CaseInsensitive) >= 0) &&
           (to.isEmpty() || name.compare(to, Qt::CaseInsensitive) <= 0);
}

bool passesDates(const QDomElement& request, const QDomElement& entry) {
    const QString modified = childText(entry, u"TimeModified"_s);
    const QString from = childText(request, u"FromModifiedDate"_s);
    const QString to = childText(request, u"ToModifiedDate"_s);
    return (from.isEmpty() || modified >= from) && (to.isEmpty() || modified.left(to.size()) <= to);
}

bool passesActive(const QDomElement& request, const QDomElement& entry) {
    const QString wanted = childText(request, u"ActiveStatus"_s);
    const bool active = childText(entry, u"IsActive"_s) != u"false";
    return wanted == u"All" || active == (wanted != u"InactiveOnly");
}

} // namespace

QStringList Answers::tagsOf(const QString& kind) {
    return kind == u"Item" ? itemTags : QStringList{kind + u"Ret"_s};
}

QDomElement Answers::text(const QString& tag, const QString& value) const {
    QDomElement element = m_company.m_document.createElement(tag);
    element.appendChild(m_company.m_document.createTextNode(value));
    return element;
}

Answers::Parts Answers::head(const QString& idTag) {
    const QString now = values::now().toUTC().toString(u"yyyy-MM-ddThh:mm:ss"_s) + u"+00:00"_s;
    return {text(idTag, m_company.nextId()), text(u"TimeCreated"_s, now),
            text(u"TimeModified"_s, now),
            text(u"EditSequence"_s, QString::number(values::now().toSecsSinceEpoch()))};
}

QDomElement Answers::ordered(const QString& message, const QStringList& path,
                             const Parts& parts) const {
    const QStringList order = elementOrder(message, path);
    QDomElement made = m_company.m_document.createElement(path.last());
    for (const QString& tag : order) {
        for (const QDomElement& part : parts) {
            if (part.tagName() == tag)
                made.appendChild(part.cloneNode());
        }
    }
    return made;
}

QDomElement Answers::find(const QDomElement& reference, const QStringList& lists) const {
    const QString id = childText(reference, u"ListID"_s);
    const QString name = childText(reference, u"FullName"_s);
    for (const QString& tag : lists) {
        for (const QDomElement& entry : m_company.list(tag)) {
            if (id.isEmpty() ? same(fullName(entry), name) : childText(entry, u"ListID"_s) == id)
                return entry;
        }
    }
    return {};
}

bool Answers::resolve(QDomElement& reference, const QStringList& lists) const {
    const QDomElement entry = find(reference, lists);
    if (entry.isNull())
        return false;
    const QString tag = reference.tagName();
    reference = m_company.m_document.createElement(tag);
    reference.appendChild(text(u"ListID"_s, childText(entry, u"ListID"_s)));
    reference.appendChild(text(u"FullName"_s, fullName(entry)));
    return true;
}

bool Answers::nameIsUsed(const QString& name, const QStringList& lists) const {
    return std::any_of(lists.begin(), lists.end(), [&](const QString& tag) {
        const auto entries = m_company.list(tag);
        return std::any_of(entries.begin(), entries.end(), [&](const QDomElement& entry) {
            return same(childText(entry, u"Name"_s), name);
        });
    });
}

QString Answers::toAll(const QDomElement& messages, bool stopOnError) {
    QDomDocument answer;
    answer.appendChild(answer.createProcessingInstruction(u"xml"_s, u"version=\"1.0\" "_s));
    QDomElement envelope = answer.createElement(u"QBXML"_s);
    answer.appendChild(envelope);
    QDomElement responses = answer.createElement(u"QBXMLMsgsRs"_s);
    envelope.appendChild(responses);
    bool failed = false;
    for (QDomElement one = messages.firstChildElement(); !one.isNull() && !(failed && stopOnError);
         one = one.nextSiblingElement())
        responses.appendChild(answer.importNode(to(one, failed), true));
    return answer.toString(0);
}

QDomElement Answers::to(const QDomElement& request, bool& failed) {
    QString tag = request.tagName();
    tag.chop(1);
    QDomElement response = m_company.m_document.createElement(tag + u's');
    const Status status =
        tag.endsWith(u"QueryR") ? query(request, response) : add(request, response);
    failed = status.severity == u"Error";
    if (request.hasAttribute(u"requestID"_s))
        response.setAttribute(u"requestID"_s, request.attribute(u"requestID"_s));
    response.setAttribute(u"statusCode"_s, status.code);
    response.setAttribute(u"statusSeverity"_s, status.severity);
    response.setAttribute(u"statusMessage"_s, status.message);
    return response;
}

Answers::Status Answers::query(const QDomElement& request, QDomElement& response) {
    const QString kind = request.tagName().chopped(7); // QueryRq
    const QStringList ids = textsOf(request, u"ListID"_s);
    const QStringList names = textsOf(request, u"FullName"_s);
    if (!request.firstChildElement(u"TotalBalanceFilter"_s).isNull())
        throw Refusal{u"The practice company keeps no balances to look for."_s};
    const QString most = childText(request, u"MaxReturned"_s);
    Status status;
    for (const QString& wanted : ids + names) {
        const QString tag = ids.isEmpty() ? u"FullName"_s : u"ListID"_s;
        QDomElement reference = m_company.m_document.createElement(u"Ref"_s);
        reference.appendChild(text(tag, wanted));
        const QDomElement entry = find(reference, tagsOf(kind));
        if (entry.isNull())
            status = {u"500"_s, u"Warn"_s,
                      u"The query request has not been fully completed. There was a required "
                      "element (\"%1\") that could not be found in QuickBooks."_s.arg(wanted)};
        else
            response.appendChild(entry.cloneNode());
    }
    if (!ids.isEmpty() || !names.isEmpty())
        return status;
    int count = 0;
    for (const QString& tag : tagsOf(kind)) {
        for (const QDomElement& entry : m_company.list(tag)) {
            if ((!most.isEmpty() && count >= most.toInt()) || !passesActive(request, entry) ||
                !passesDates(request, entry) ||
                !passesNameFilter(request, childText(entry, u"Name"_s)))
                continue;
            response.appendChild(entry.cloneNode());
            ++count;
        }
    }
    if (count == 0)
        return {u"1"_s, u"Info"_s,
                u"A query request did not find a matching object in QuickBooks"_s};
    return status;
}

Answers::Status Answers::add(const QDomElement& request, QDomElement& response) {
    const QString kind = request.tagName().chopped(5); // AddRq
    const QDomElement given = request.firstChildElement(kind + u"Add"_s);
    if (m_company.m_pretended == u"3180")
        return {u"3180"_s, u"Error"_s,
                u"There was an error when saving a %1 list, element \"%2\".  QuickBooks error "
                "message: This list has been modified by another user."_s.arg(
                    kind, childText(given, u"Name"_s))};
    Status status = kind == u"Invoice" || kind == u"Bill" ? addDocument(kind, given, response)
                                                          : addToList(kind, given, response);
    if (m_company.m_pretended == u"warning" && status.code == u"0")
        status = {u"500"_s, u"Warn"_s,
                  u"The request has been completed, but a part of it was not used."_s};
    return status;
}

Answers::Status Answers::addToList(const QString& kind, const QDomElement& given,
                                   QDomElement& response) {
    QString name = childText(given, u"Name"_s);
    if (name.isEmpty()) // an employee is named by his parts
        name =
            (childText(given, u"FirstName"_s) + u' ' + childText(given, u"LastName"_s)).trimmed();
    const QString ret = kind + u"Ret"_s;
    if (nameIsUsed(name, nameTags.contains(ret) ? nameTags : QStringList{ret}))
        return {u"3100"_s, u"Error"_s,
                u"The name \"%1\" of the list element is already in use."_s.arg(name)};
    QString full = name;
    int level = 0;
    Parts parts = head(u"ListID"_s);
    for (QDomElement child = given.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        QDomElement part = child;
        const QString tag = child.tagName();
        if (tag == u"TermsRef" && !resolve(part, {u"StandardTermsRet"_s}))
            return {u"3140"_s, u"Error"_s,
                    u"There is an invalid reference to QuickBooks Terms \"%1\" in the %2."_s.arg(
                        childText(child, u"FullName"_s), kind) +
                        notInList};
        if (tag == u"ParentRef") {
            const QDomElement parent = find(child, {ret});
            if (parent.isNull())
                return {u"3140"_s, u"Error"_s,
                        u"There is an invalid reference to QuickBooks %2 \"%1\" in the %2."_s.arg(
                            childText(child, u"FullName"_s), kind) +
                            notInList};
            resolve(part, {ret});
            full = fullName(parent) + u':' + name;
            level = childText(parent, u"Sublevel"_s).toInt() + 1;
        }
        if (tag != u"Name" && tag != u"IsActive")
            parts.push_back(part);
    }
    const QString active = childText(given, u"IsActive"_s);
    parts.insert(parts.end(), {text(u"Name"_s, name), text(u"FullName"_s, full),
                               text(u"IsActive"_s, active.isEmpty() ? u"true"_s : active),
                               text(u"Sublevel"_s, QString::number(level)),
                               text(u"Balance"_s, u"0.00"_s), text(u"TotalBalance"_s, u"0.00"_s)});
    const QDomElement made = ordered(kind + u"QueryRs"_s, {ret}, parts);
    m_company.root().appendChild(made);
    response.appendChild(made.cloneNode());
    return {};
}

QDomElement Answers::lineOf(const QString& kind, const QDomElement& given, double& total) {
    const QString price = kind == u"Invoice" ? u"Rate"_s : u"Cost"_s;
    Parts parts{text(u"TxnLineID"_s, m_company.nextId())};
    for (QDomElement child = given.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        QDomElement part = child;
        if (child.tagName() == u"ItemRef")
            resolve(part, itemTags);
        parts.push_back(part);
    }
    double amount = childText(given, u"Amount"_s).toDouble();
    if (given.firstChildElement(u"Amount"_s).isNull()) {
        const QString quantity = childText(given, u"Quantity"_s);
        amount =
            childText(given, price).toDouble() * (quantity.isEmpty() ? 1 : quantity.toDouble());
        parts.push_back(text(u"Amount"_s, money(amount)));
    }
    total += amount;
    return ordered(kind + u"AddRs"_s,
                   {kind + u"Ret"_s, kind == u"Invoice" ? u"InvoiceLineRet"_s : u"ItemLineRet"_s},
                   parts);
}

Answers::Status Answers::addDocument(const QString& kind, const QDomElement& given,
                                     QDomElement& response) {
    const bool invoice = kind == u"Invoice";
    const auto unknown = [&](const QString& what, const QString& name, const QString& where) {
        return Status{u"3140"_s, u"Error"_s,
                      u"There is an invalid reference to QuickBooks %1 \"%2\" in the %3."_s.arg(
                          what, name, where) +
                          notInList};
    };
    const QHash<QString, std::pair<QString, QString>> references{
        {u"CustomerRef"_s, {u"Customer"_s, u"CustomerRet"_s}},
        {u"VendorRef"_s, {u"Vendor"_s, u"VendorRet"_s}},
        {u"TermsRef"_s, {u"Terms"_s, u"StandardTermsRet"_s}}};
    Parts parts, givenLines;
    for (QDomElement child = given.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        QDomElement part = child;
        const QString tag = child.tagName();
        if (const auto reference = references.constFind(tag); reference != references.constEnd()) {
            if (!resolve(part, {reference->second}))
                return unknown(reference->first, childText(child, u"FullName"_s), kind);
        } else if (tag == u"InvoiceLineAdd" || tag == u"ItemLineAdd") {
            QDomElement item = child.firstChildElement(u"ItemRef"_s);
            if (!item.isNull() && !resolve(item, itemTags))
                return unknown(u"Item"_s,
                               childText(child.firstChildElement(u"ItemRef"_s), u"FullName"_s),
                               kind + u" line"_s);
            givenLines.push_back(child);
            continue;
        } else if (tag.endsWith(u"Add")) {
            throw Refusal{u"The practice company takes no "_s + tag};
        }
        parts.push_back(part);
    }
    const Parts first = head(u"TxnID"_s);
    parts.insert(parts.begin(), first.begin(), first.end());
    double total = 0;
    for (const QDomElement& line : givenLines)
        parts.push_back(lineOf(kind, line, total));
    const QDate today = values::today();
    const auto put = [&](const QString& tag, const QString& value) {
        if (given.firstChildElement(tag).isNull())
            parts.push_back(text(tag, value));
    };
    const QDomElement account = [&] {
        QDomElement made =
            m_company.m_document.createElement(invoice ? u"ARAccountRef"_s : u"APAccountRef"_s);
        made.appendChild(
            text(u"FullName"_s, invoice ? u"Accounts Receivable"_s : u"Accounts Payable"_s));
        return made;
    }();
    parts.push_back(account);
    put(u"TxnDate"_s, today.toString(Qt::ISODate));
    if (invoice) {
        if (given.firstChildElement(u"RefNumber"_s).isNull()) {
            const int number = m_company.root().attribute(u"lastInvoice"_s).toInt() + 1;
            m_company.root().setAttribute(u"lastInvoice"_s, number);
            put(u"RefNumber"_s, QString::number(number));
        }
        put(u"IsPending"_s, u"false"_s);
        put(u"Subtotal"_s, money(total));
        put(u"BalanceRemaining"_s, money(total));
    } else {
        put(u"AmountDue"_s, money(total));
    }
    put(u"IsPaid"_s, u"false"_s);
    const QDomElement made = ordered(kind + u"AddRs"_s, {kind + u"Ret"_s}, parts);
    m_company.root().appendChild(made);
    response.appendChild(made.cloneNode());
    return {};
}

void Answers::addItem(const QString& kind, const QString& name, const QString& price) {
    const QString ret = u"Item"_s + kind + u"Ret"_s;
    Parts parts = head(u"ListID"_s);
    parts.insert(parts.end(), {text(u"Name"_s, name), text(u"FullName"_s, name),
                               text(u"IsActive"_s, u"true"_s), text(u"Sublevel"_s, u"0"_s)});
    if (kind == u"Discount") {
        parts.push_back(text(u"DiscountRatePercent"_s, price));
    } else {
        QDomElement sale = m_company.m_document.createElement(u"SalesOrPurchase"_s);
        if (price.endsWith(u'%'))
            sale.appendChild(text(u"PricePercent"_s, price.chopped(1)));
        else
            sale.appendChild(text(u"Price"_s, price));
        QDomElement account = m_company.m_document.createElement(u"AccountRef"_s);
        account.appendChild(text(u"FullName"_s, u"Sales"_s));
        sale.appendChild(account);
        parts.push_back(sale);
    }
    m_company.root().appendChild(ordered(u"ItemQueryRs"_s, {ret}, parts));
}

} // namespace qbcompany
