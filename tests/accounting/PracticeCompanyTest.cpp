#include "platform/values/Literals.h"
#include "qbcompany/Company.h"
#include "qbcompany/Elements.h"
#include "support/Print.h"

#include <gtest/gtest.h>

using qbcompany::Company;

namespace {

QString enveloped(const QString& requests) {
    return u"<?xml version=\"1.0\" ?>\r\n<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD "
           "1.0//EN' >\r\n<QBXML><QBXMLMsgsRq onError=\"stopOnError\" >"_s +
           requests + u"</QBXMLMsgsRq></QBXML>"_s;
}

QString customer(const QString& inside) {
    return u"<CustomerAddRq requestID=\"1\"><CustomerAdd>"_s + inside +
           u"</CustomerAdd></CustomerAddRq>"_s;
}

const QString acme = u"<Name>Acme</Name>"_s;

class PracticeCompany : public ::testing::Test {
  protected:
    PracticeCompany() { m_company.addItem(u"Service"_s, u"Machining"_s, u"0.00"_s); }

    /// "code severity" of the first answer, all of which have to be right in form.
    QString status(const QString& requests) {
        QDomDocument answer;
        EXPECT_TRUE(answer.setContent(m_company.answer(enveloped(requests))));
        m_answer = answer.documentElement().firstChildElement().firstChildElement();
        for (QDomElement one = m_answer; !one.isNull(); one = one.nextSiblingElement())
            EXPECT_EQ(qbcompany::faultOf(one), QString());
        return m_answer.attribute(u"statusCode"_s) + u' ' + m_answer.attribute(u"statusSeverity"_s);
    }
    QString said() const { return m_answer.attribute(u"statusMessage"_s); }

    Company m_company;
    QDomElement m_answer;
};

TEST_F(PracticeCompany, TakesNoMessageThatIsWrongInForm) {
    const QString right = enveloped(customer(acme));
    EXPECT_NO_THROW(m_company.answer(right));
    QStringList wrong{QString(right).replace(u"<?xml version=\"1.0\" ?>\r\n"_s, QString()),
                      QString(right).replace(u"QBD 1.0"_s, u"QBD 2.0"_s),
                      QString(right).replace(u"stopOnError"_s, u"onwards"_s),
                      QString(right).replace(u"Acme"_s, u"Äcme"_s),
                      QString(right).replace(u"</CustomerAdd>"_s, QString())};
    for (const QString& inside :
         {QString(), u"<Name>"_s + QString(42, u'x') + u"</Name>"_s, acme + acme,
          u"<CompanyName>A</CompanyName>"_s + acme, acme + u"<Colour>red</Colour>"_s,
          acme + u"<IsActive>perhaps</IsActive>"_s, acme + u"<OpenBalance>1.5</OpenBalance>"_s,
          acme + u"<OpenBalanceDate>2026-02-30</OpenBalanceDate>"_s,
          acme + u"<JobStatus>Late</JobStatus>"_s,
          acme + u"<BillAddress><City>B</City><Addr1>A</Addr1></BillAddress>"_s})
        wrong += enveloped(customer(inside));
    wrong += enveloped(u"<InvoiceAddRq><InvoiceAdd><CustomerRef><FullName>Acme</FullName>"
                       "</CustomerRef></InvoiceAdd></InvoiceAddRq>"_s); // no line
    wrong += enveloped(u"<ItemQueryRq><FullName>A</FullName><ActiveStatus>All</ActiveStatus>"
                       "</ItemQueryRq>"_s);
    for (const QString& message : wrong)
        EXPECT_THROW(m_company.answer(message), qbcompany::Refusal) << message.toStdString();
    EXPECT_EQ(m_company.list(u"CustomerRet"_s).size(), 1U) << "nothing of them was done";
}

TEST_F(PracticeCompany, AnswersWithTheCodesOfTheRealOne) {
    EXPECT_EQ(status(u"<CustomerQueryRq/>"_s), u"1 Info");
    EXPECT_EQ(status(customer(acme + u"<TermsRef><FullName>Net 30</FullName></TermsRef>"_s)),
              u"3140 Error");
    EXPECT_TRUE(said().startsWith(u"There is an invalid reference to QuickBooks Terms \"Net 30\""));
    EXPECT_EQ(status(u"<StandardTermsAddRq><StandardTermsAdd><Name>Net 30</Name><StdDueDays>30"
                     "</StdDueDays></StandardTermsAdd></StandardTermsAddRq>"_s),
              u"0 Info");
    EXPECT_EQ(status(customer(acme + u"<TermsRef><FullName>Net 30</FullName></TermsRef>"_s)),
              u"0 Info");
    // Names are told apart across customers, vendors and employees.
    EXPECT_EQ(status(u"<VendorAddRq><VendorAdd><Name>ACME</Name></VendorAdd></VendorAddRq>"_s),
              u"3100 Error");
    EXPECT_EQ(said(), u"The name \"ACME\" of the list element is already in use.");
    const QString invoice =
        u"<InvoiceAddRq><InvoiceAdd><CustomerRef><FullName>%1</FullName></CustomerRef>"
        "<InvoiceLineAdd><ItemRef><FullName>%2</FullName></ItemRef><Desc>d</Desc><Quantity>2"
        "</Quantity><Rate>1.25</Rate></InvoiceLineAdd></InvoiceAdd></InvoiceAddRq>"_s;
    EXPECT_EQ(status(invoice.arg(u"Nobody"_s, u"Machining"_s)), u"3140 Error");
    EXPECT_TRUE(said().contains(u"QuickBooks Customer \"Nobody\" in the Invoice."));
    EXPECT_EQ(status(invoice.arg(u"Acme"_s, u"Magic"_s)), u"3140 Error");
    EXPECT_TRUE(said().contains(u"QuickBooks Item \"Magic\" in the Invoice line."));
    EXPECT_EQ(status(invoice.arg(u"Acme"_s, u"Machining"_s)), u"0 Info");
    const QDomElement ret = m_answer.firstChildElement(u"InvoiceRet"_s);
    EXPECT_EQ(ret.firstChildElement(u"RefNumber"_s).text(), u"1001");
    EXPECT_EQ(ret.firstChildElement(u"Subtotal"_s).text(), u"2.50");
    EXPECT_EQ(status(u"<BillAddRq><BillAdd><VendorRef><FullName>Nobody</FullName></VendorRef>"
                     "</BillAdd></BillAddRq>"_s),
              u"3140 Error");
    EXPECT_EQ(status(u"<StandardTermsQueryRq><FullName>Net 9</FullName></StandardTermsQueryRq>"_s),
              u"500 Warn");
    EXPECT_EQ(status(u"<ItemQueryRq/>"_s), u"0 Info");
    // What comes behind an error isn't done.
    EXPECT_EQ(status(customer(acme) + customer(u"<Name>Later</Name>"_s)), u"3100 Error");
    EXPECT_EQ(m_company.list(u"CustomerRet"_s).size(), 1U);
}

TEST_F(PracticeCompany, ListsByStatusAndName) {
    for (const char16_t* name : {u"Alder", u"Birch", u"Alp"})
        status(customer(u"<Name>"_s + QString::fromUtf16(name) + u"</Name><IsActive>"_s +
                        (QString::fromUtf16(name) == u"Alp" ? u"false"_s : u"true"_s) +
                        u"</IsActive>"_s));
    const auto count = [&](const QString& filter) {
        status(u"<CustomerQueryRq>"_s + filter + u"</CustomerQueryRq>"_s);
        int found = 0;
        for (QDomElement one = m_answer.firstChildElement(); !one.isNull();
             one = one.nextSiblingElement())
            ++found;
        return found;
    };
    EXPECT_EQ(count({}), 2) << "active ones only";
    EXPECT_EQ(count(u"<ActiveStatus>All</ActiveStatus>"_s), 3);
    EXPECT_EQ(count(u"<MaxReturned>1</MaxReturned>"_s), 1);
    EXPECT_EQ(count(u"<ActiveStatus>All</ActiveStatus><NameFilter><MatchCriterion>StartsWith"
                    "</MatchCriterion><Name>al</Name></NameFilter>"_s),
              2);
    EXPECT_EQ(count(u"<FullName>Birch</FullName>"_s), 1);
}

} // namespace
