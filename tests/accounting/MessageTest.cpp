#include "accounting/Documents.h"
#include "accounting/Records.h"
#include "accounting/XMLBuilder.h"
#include "platform/values/Literals.h"
#include "qbcompany/Company.h"
#include "support/Print.h"

#include <gtest/gtest.h>

using accounting::FieldTexts;
using accounting::Message;
using accounting::XMLBuilder;

namespace {

/// What is wrong with a message in the eyes of a strict reader; empty if nothing is.
QString faultOf(const QString& message) {
    try {
        (void)qbcompany::readMessage(message);
        return {};
    } catch (const qbcompany::Refusal& refusal) {
        return refusal.text;
    }
}

FieldTexts fullCustomer() {
    return {{u"company"_s, u"O'Neil & Söhne"_s},
            {u"billaddress1"_s, u"7 Harbor Row"_s},
            {u"billaddress2"_s, u"Unit <3>"_s},
            {u"billcity"_s, u"Cork"_s},
            {u"billstate"_s, u"CO"_s},
            {u"billzip"_s, u"T12"_s},
            {u"billcountry"_s, u"Ireland"_s},
            {u"shipaddress1"_s, u"Dock 2"_s},
            {u"shipcity"_s, u"Łódź"_s},
            {u"inphone"_s, u"555-1"_s},
            {u"inaltphone"_s, u"555-2"_s},
            {u"infax"_s, u"555-3"_s},
            {u"inemail"_s, u"a@b.example"_s},
            {u"incontact"_s, u"Ann"_s},
            {u"inaltcontact"_s, u"Bob"_s},
            {u"terms"_s, u"Net 30"_s},
            {u"fob"_s, u"Our dock"_s}};
}

} // namespace

TEST(XMLBuilderTest, TheEnvelopeOfAQueryIsRightToTheByte) {
    EXPECT_EQ(Message(u"ItemQueryRq"_s).finish(),
              u"<?xml version=\"1.0\" ?>\r\n"
              "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >\r\n"
              "<QBXML>\r\n"
              "    <QBXMLMsgsRq onError=\"stopOnError\" >\r\n"
              "        <ItemQueryRq requestID=\"1\" >\r\n"
              "        </ItemQueryRq>\r\n"
              "    </QBXMLMsgsRq>\r\n"
              "</QBXML>\r\n"_s);
}

TEST(XMLBuilderTest, ValuesAreEscapedOnceAndLevelsMayGoBelowNothing) {
    XMLBuilder xml;
    xml.init();
    xml.AddEndAggregate(u"a"_s);
    xml.AddElement(u"b"_s, u"R&D 'n' <\"x\">"_s);
    xml.AddAggregate(u"c"_s, 2, {u"p"_s, u"q"_s}, {u"A & B's"_s, u"plain"_s});
    xml.AddElement(u"d"_s, u"plain ~"_s);
    xml.AddElement(u"e"_s, u"Grün 😀"_s);
    EXPECT_EQ(xml.GetXML(), u"</a>\r\n"
                            "<b>R&amp;D &apos;n&apos; &lt;&quot;x&quot;&gt;</b>\r\n"
                            "<c p=\"A &amp; B&apos;s\"  q=\"plain\" >\r\n"
                            "<d>plain ~</d>\r\n"
                            "<e>Gr&#252;n &#128512;</e>\r\n"_s);
    xml.AddAggregateTagOnly(u"f"_s);
    xml.AddElement(u"g"_s, u"1"_s);
    EXPECT_TRUE(xml.GetXML().endsWith(u"<f>\r\n    <g>1</g>\r\n"));
    xml.init();
    xml.AddElement(u"h"_s, {});
    EXPECT_EQ(xml.GetXML(), u"<h></h>\r\n");
}

TEST(Messages, EachRequestConformsFullAndBare) {
    const FieldTexts customer = fullCustomer();
    const FieldTexts bare{{u"company"_s, u"A"_s},
                          {u"name"_s, u"A B"_s},
                          {u"firstname"_s, u"A"_s},
                          {u"description"_s, u"Net 7"_s}};
    FieldTexts vendor{{u"company"_s, u"Steel"_s}, {u"to address1"_s, u"1 Mill"_s},
                      {u"to country"_s, u"US"_s}, {u"to phone"_s, u"1"_s},
                      {u"altcontact"_s, u"C"_s},  {u"terms"_s, u"Net 10"_s}};
    FieldTexts employee{{u"name"_s, u"Ann Lee"_s},     {u"firstname"_s, u"Ann"_s},
                        {u"lastname"_s, u"Lee"_s},     {u"empstatus"_s, u"Active"_s},
                        {u"address1"_s, u"2 Elm"_s},   {u"to ssn"_s, u"123-45-6789"_s},
                        {u"hiredate"_s, u"3/2/2020"_s}};
    std::vector<Message> messages{
        accounting::addRequest(accounting::customerKind(), customer),
        accounting::addRequest(accounting::customerKind(), bare),
        accounting::addRequest(accounting::vendorKind(), vendor),
        accounting::addRequest(accounting::vendorKind(), bare),
        accounting::addRequest(accounting::employeeKind(), employee),
        accounting::addRequest(accounting::employeeKind(), bare),
        accounting::addTermsRequest(u"Net 30"_s, u"30"_s),
        accounting::addTermsRequest(u"Soon"_s, {}),
        accounting::invoiceRequest(
            {customer,
             u"PO-7"_s,
             {{u"Parts"_s, u"KX-1 Bushing"_s, u"10"_s, u"1234.56785"_s, u"1234.56785"_s},
              {{}, {}, {}, {}, {}}}}),
        accounting::invoiceRequest({bare, u"1"_s, {{u"Parts"_s, {}, u"1,000.5"_s, u"-0.1"_s, {}}}}),
        accounting::billRequest({u"Steel"_s,
                                 QDate(2026, 3, 9),
                                 QDate(2026, 4, 9),
                                 u"INV-1"_s,
                                 {{u"Parts"_s, u"x y"_s, u"3"_s, u"2.5"_s, {}}}}),
        accounting::billRequest({u"Steel"_s, QDate(2026, 3, 9), {}, {}, {{}}})};
    for (const char16_t* query : {u"ItemQueryRq", u"CustomerQueryRq", u"VendorQueryRq",
                                  u"EmployeeQueryRq", u"StandardTermsQueryRq"})
        messages.emplace_back(QString::fromUtf16(query));
    for (Message& message : messages) {
        EXPECT_EQ(message.complaints(), QStringList());
        const QString text = message.finish();
        EXPECT_EQ(faultOf(text), QString()) << text.toStdString();
    }
    const QString invoice = messages[8].finish();
    EXPECT_TRUE(invoice.contains(u"<Rate>1234.56785</Rate>")) << invoice.toStdString();
    EXPECT_TRUE(invoice.contains(u"<Amount>1234.57</Amount>")) << invoice.toStdString();
    EXPECT_TRUE(invoice.contains(u"<FOB>Our dock</FOB>"));
    EXPECT_TRUE(messages[9].finish().contains(u"<FOB></FOB>")) << "there even where it is empty";
    EXPECT_TRUE(messages[9].finish().contains(u"<Quantity>1000.5</Quantity>"));
    EXPECT_FALSE(messages[9].finish().contains(u"TermsRef"));
}

TEST(Messages, WhatQuickBooksCantTakeIsToldInWordsAndNoteIsSentWithout) {
    FieldTexts customer = fullCustomer();
    customer[u"company"_s] = QString(42, u'x');
    customer[u"billcity"_s] = QString(32, u'y');
    customer[u"fob"_s] = u"Destination, prepaid"_s;
    Message added = accounting::addRequest(accounting::customerKind(), customer);
    ASSERT_EQ(added.complaints().size(), 2) << added.complaints().join(u'\n').toStdString();
    EXPECT_TRUE(
        added.complaints()[0].contains(u"The name has 42 letters, and QuickBooks takes 41"));
    EXPECT_TRUE(added.complaints()[1].contains(u"Bill address, city has 32 letters"));
    customer[u"company"_s] = u"Acme\x01"_s;
    const Message invoice = accounting::invoiceRequest(
        {customer,
         QString(26, u'9'),
         {{u"Parts"_s, u"d"_s, u"12345678901"_s, u"1.2.3"_s, u"12345678901234"_s}}});
    const QString all = invoice.complaints().join(u'\n');
    for (const char16_t* part : {u"can't be sent", u"Purchase order number has 26 letters",
                                 u"FOB has 20 letters", u"Line 1, quantity is larger",
                                 u"Line 1, unit price is no number", u"Line 1, amount is larger"})
        EXPECT_TRUE(all.contains(QString::fromUtf16(part))) << all.toStdString();
    EXPECT_EQ(accounting::plainFigure(u"$1,234.5000"_s, u"$"_s), u"1234.5000");
    EXPECT_EQ(accounting::plainFigure(u"12.50"_s, u"$"_s), u"12.50");
}
