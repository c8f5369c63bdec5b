#include "AccountingShop.h"

#include "core/ReportLaunch.h"
#include "platform/report/Report.h"

namespace {

/// The reports of what was sent and what is still to be sent.
class SentReports : public AccountingShop {
  protected:
    void prepare() override {
        AccountingShop::prepare();
        core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
        report::setPreviewer([this](auto document, const auto&) { m_printed = document; });
    }
    QString printed(const QString& file) {
        m_printed.reset();
        core::launchReportFile(file, {}, u"Title"_s, nullptr);
        return m_printed ? m_printed->page(0).text() : QString();
    }
    qint64 job(const QString& order, const QString& part, int quantity, bool shipped) {
        return insert(u"Job"_s,
                      u"CustID, PONo, PartNo, Description, Quantity, InvoiceEach, Shipped"_s,
                      u"%1,'%2','%3','Plate',%4,2.5,%5"_s.arg(m_customer)
                          .arg(order, part)
                          .arg(quantity)
                          .arg(shipped ? u"True"_s : u"False"_s));
    }
    void invoiced(const QString& order, const QString& part, int quantity) {
        insert(u"SentInvoice"_s, u"InvoiceNo, Description, Quantity, SentDate, POID"_s,
               u"'1043','%1 Plate',%2,'3/2/2026','%3'"_s.arg(part).arg(quantity).arg(order));
    }
    qint64 m_customer = 0;
    std::shared_ptr<const report::Document> m_printed;
};

TEST_P(SentReports, InvoicesSentAndJobsStillToInvoice) {
    m_customer = insert(u"Customer"_s, u"Company"_s, u"'Ångström'"_s);
    job(u"PO-1"_s, u"DONE-1"_s, 10, true);
    invoiced(u"PO-1"_s, u"DONE-1"_s, 10);
    job(u"PO-1"_s, u"OPEN-2"_s, 10, true);
    insert(u"JobShip"_s, u"JobNo, Quantity"_s,
           u"%1,4"_s.arg(job(u"PO-1"_s, u"PART-3"_s, 10, false)));
    invoiced(u"PO-1"_s, u"PART-3"_s, 3);
    job(u"PO-2"_s, u"ACTIVE-4"_s, 10, false);
    // The same part on another order counts for nothing.
    job(u"PO-3"_s, u"DONE-1"_s, 7, true);
    const QString open = printed(u"Jobs_Not_Invoiced.rpt"_s);
    for (const char16_t* part : {u"Ångström", u"OPEN-2", u"PART-3", u"PO-3", u"3 jobs", u"$2.5000"})
        EXPECT_TRUE(open.contains(QString::fromUtf16(part))) << open.toStdString();
    EXPECT_FALSE(open.contains(u"ACTIVE-4")) << open.toStdString();
    const QString sent = printed(u"Invoices_Sent.rpt"_s);
    for (const char16_t* part :
         {u"Invoice 1043", u"Ångström", u"PART-3 Plate", u"3/2/2026", u"2 lines"})
        EXPECT_TRUE(sent.contains(QString::fromUtf16(part))) << sent.toStdString();
}

TEST_P(SentReports, PayablesSentAndReceiptsStillToSend) {
    insert(u"POVendor"_s, u"OrderNumber, VendorID, Company"_s, u"3004,1,'Steel & Co'"_s);
    const auto line = [&](int number, const char16_t* part, int received) {
        insert(u"POItem"_s,
               u"ItemKey, PONumber, ItemNumber, Quantity, ReceivedQuantity, PartNumber, "
               "Description, UnitPrice"_s,
               u"'3004-%1',3004,%1,10,%2,'%3','Bar',2.5"_s.arg(number).arg(received).arg(
                   QString::fromUtf16(part)));
    };
    line(1, u"DONE-1", 10);
    line(2, u"NONE-2", 0);
    line(3, u"PART-3", 8);
    for (const char16_t* sent : {u"'DONE-1 Bar',10", u"'PART-3 Bar',5"})
        insert(u"SentAP"_s, u"Description, Quantity, SentDate, POID"_s,
               QString::fromUtf16(sent) + u",'3/2/2026',3004"_s);
    const QString open = printed(u"Received_Not_Sent.rpt"_s);
    for (const char16_t* part : {u"Steel & Co", u"PART-3", u"1 line"})
        EXPECT_TRUE(open.contains(QString::fromUtf16(part))) << open.toStdString();
    for (const char16_t* part : {u"DONE-1", u"NONE-2"})
        EXPECT_FALSE(open.contains(QString::fromUtf16(part))) << open.toStdString();
    const QString sent = printed(u"Payables_Sent.rpt"_s);
    for (const char16_t* part : {u"PO 3004", u"Steel & Co", u"DONE-1 Bar", u"2 lines"})
        EXPECT_TRUE(sent.contains(QString::fromUtf16(part))) << sent.toStdString();
}

} // namespace

MIRSA_BOTH_ENGINES(SentReports);
