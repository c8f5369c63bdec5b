#include "accounting/Documents.h"

#include "accounting/Records.h"
#include "platform/values/Literals.h"

namespace accounting {

namespace {

constexpr int itemLimit = 159;
constexpr int descriptionLimit = 4095;

void line(Message& message, const QString& tag, const QString& priceTag, const DocumentLine& line,
          int number) {
    const QString place = u"line %1, "_s.arg(number);
    message.open(tag);
    message.reference(u"ItemRef"_s, line.item, itemLimit, place + u"item"_s);
    message.text(u"Desc"_s, line.description, descriptionLimit, place + u"description"_s);
    message.number(u"Quantity"_s, line.quantity, place + u"quantity"_s);
    message.number(priceTag, line.price, place + u"unit price"_s);
    message.amount(u"Amount"_s, line.amount, place + u"amount"_s);
    message.close();
}

} // namespace

Message invoiceRequest(const Invoice& invoice) {
    Message message(u"InvoiceAddRq"_s);
    const FieldTexts& customer = invoice.customer;
    message.open(u"InvoiceAdd"_s);
    message.reference(u"CustomerRef"_s, customer.value(u"company"_s), 41, u"the name"_s);
    message.groups(customerAddresses(), customer);
    message.text(u"PONumber"_s, invoice.order, 25, u"purchase order number"_s);
    message.reference(u"TermsRef"_s, customer.value(u"terms"_s), 31, u"customer's terms"_s);
    message.textAlways(u"FOB"_s, customer.value(u"fob"_s), 13, u"customer's FOB"_s);
    int number = 0;
    for (const DocumentLine& one : invoice.lines)
        line(message, u"InvoiceLineAdd"_s, u"Rate"_s, one, ++number);
    return message;
}

Message billRequest(const Bill& bill) {
    Message message(u"BillAddRq"_s);
    message.open(u"BillAdd"_s);
    message.reference(u"VendorRef"_s, bill.vendor, 41, u"vendor's name"_s);
    message.date(u"TxnDate"_s, bill.date);
    if (bill.due)
        message.date(u"DueDate"_s, *bill.due);
    message.text(u"RefNumber"_s, bill.number, 20, u"invoice number"_s);
    int number = 0;
    for (const DocumentLine& one : bill.lines)
        line(message, u"ItemLineAdd"_s, u"Cost"_s, one, ++number);
    return message;
}

} // namespace accounting
