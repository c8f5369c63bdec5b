#include "jobs/JobFromEstimate.h"
#include "core/papers/Papers.h"
#include "platform/values/Literals.h"

#include "JobShop.h"
#include "estimating/CreateJob.h"
#include "estimating/EstimateStore.h"
#include "jobs/Screens.h"
#include "platform/values/Clock.h"

using namespace jobs;
using estimating::MiscRow;
using estimating::OperRow;
using screen::Answer;
using values::Currency;

namespace {

class JobFromEstimate : public JobShop {
  protected:
    void prepare() override {
        registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(8, 0), Qt::UTC));
        m_turning = operation(u"Turning"_s, u"I"_s, u"40"_s);
        m_plating = operation(u"Plating"_s, u"C"_s, u"0"_s);
        m_item = item(u"Bar stock"_s);

        OperRow turning;
        turning.operNo = m_turning;
        turning.time = 2.5;
        turning.rate = Currency::fromInteger(40);
        OperRow plating;
        plating.operNo = m_plating;
        plating.inhouse = false;
        plating.time = 100;
        MiscRow stock{
            m_item, u"Bar stock"_s, u"EA"_s, Currency::fromDouble(1.5), Currency::fromInteger(4),
            {}};
        stock.retotal();
        estimating::EstimateDraft estimate;
        estimate.operations = {turning, plating};
        estimate.fixedCosts = {stock};
        estimating::EstimateHeader& header = estimate.header;
        header.custId = m_customer = customer(u"Acme"_s);
        header.partNo = u"12-34"_s;
        header.description = u"Driver's plate"_s;
        header.material = u"Steel"_s;
        header.quantity = 10;
        header.shopRate = Currency::fromInteger(55);
        header.oneShopRate = false;
        header.travelerNotes = u"Handle with care"_s;
        header.jobNotes = u"Call first"_s;
        header.breaks[0].quantity = 10;
        header.breaks[0].quoted = Currency::fromDouble(12.3456);
        header.breaks[3].quantity = 100;
        header.breaks[3].quoted = Currency::fromInteger(9);
        estimating::NoteStaging(database(), estimating::estimateRouting(), 0)
            .stage(2, u"Don't scratch"_s);
        m_estNo = estimating::saveEstimate(database(), 0, estimate).key;
        m_order.quantity = 10;
        m_order.price = Currency::fromDouble(12.3456);
        m_order.dateIn = QDate(2026, 3, 2);
        m_order.dueDate = QDate(2026, 3, 20);
        m_order.poNo = u"PO-1"_s;
        m_order.useNotes = true;
    }

    qint64 m_estNo = 0;
    qint64 m_customer = 0;
    JobOrder m_order;
    qint64 m_turning = 0;
    qint64 m_plating = 0;
    qint64 m_item = 0;
};

TEST_P(JobFromEstimate, StartsWithoutHoursAndKeepsTheEstimateBeside) {
    const qint64 jobNo = createJob(database(), m_estNo, m_order);
    const QString of = u" WHERE JobNo = "_s + QString::number(jobNo);
    EXPECT_EQ(rows(u"SELECT CustID, PONo, PartNo, Description, Quantity, "
                   "JobShopRate, EstNo, QtyQuotedPrice, InvoiceEach, InvoiceTotal, "
                   "JobDateIn, JobDueDate, TravelerNotes, JobNotes, JobShopCost, "
                   "TotalHours FROM Job"_s +
                   of),
              QStringList(u"%1|PO-1|12-34|Driver's plate|10|55|%2|12.3456|12.3456|"
                          "123.456|3/2/2026|3/20/2026|||10.6|0"_s.arg(m_customer)
                              .arg(m_estNo)));
    EXPECT_FALSE(database().hasRows(u"SELECT * FROM Job"_s + of +
                                    u" AND (OneShopRate = True OR Shipped = True)"_s));
    EXPECT_EQ(rows(u"SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate, "
                   "OperLocated, Status, EstOper FROM JobOper"_s +
                   of + u" ORDER BY SeqNo"_s),
              QStringList(
                  {u"1|%1|0|40|0| |2.5"_s.arg(m_turning), u"2|%1|100|0|0| |100"_s.arg(m_plating)}));
    EXPECT_EQ(rows(u"SELECT JobOperNote.SeqNo, JobOperNote.OperNotes, "
                   "JobOper.OperNo FROM JobOperNote INNER JOIN JobOper ON "
                   "JobOperNote.ID = JobOper.ID WHERE JobOperNote.JobNo = %1"_s.arg(jobNo)),
              QStringList(u"2|Don't scratch|%1"_s.arg(m_plating)));
    EXPECT_EQ(rows(u"SELECT ItemNo, UnitofMeasure, UnitPrice, Quantity, CostAmount "
                   "FROM JobMiscCost"_s +
                   of),
              QStringList(u"%1|EA|1.5|4|6"_s.arg(m_item)));
    EXPECT_TRUE(estimateHasJob(database(), m_estNo));

    m_order.useNotes = false;
    core::addPapers(database(), *core::paperKind(u"Estimate"_s), m_estNo,
                    {{u"AX.pdf"_s, {u"aa"_s, 5}}}, u"Ann"_s);
    const qint64 second = createJob(database(), m_estNo, m_order);
    EXPECT_EQ(rows(u"SELECT Record, FileName, Hash, AddedBy FROM Papers WHERE Kind = 'Job'"_s),
              QStringList{u"%1|AX.pdf|aa|Ann"_s.arg(second)});
    EXPECT_FALSE(database().hasRows(u"SELECT * FROM JobOperNote WHERE JobNo = %1"_s.arg(second)));
}

TEST_P(JobFromEstimate, AFailingFixedCostLeavesNothing) {
    database().execute(u"DROP TABLE JobMiscCost"_s);
    EXPECT_THROW(createJob(database(), m_estNo, m_order), jet::Error);
    for (const char16_t* table : {u"Job", u"JobOper", u"JobOperNote"}) {
        EXPECT_FALSE(database().hasRows(u"SELECT * FROM "_s + QString::fromUtf16(table)));
    }
}

TEST_P(JobFromEstimate, TheDialogAsksForWhatIsMissingAndMakesTheJob) {
    const auto create = [&] {
        return screen::Forms::dialog<estimating::CreateJobDialog>(u"frmCreatJob"_s)
            ->createJob(m_estNo);
    };
    const auto ok = u"cmdOK"_s;
    whenShown(u"frmCreatJob"_s, [&] {
        EXPECT_EQ(text(u"cmbQuantity"_s), u"10"_s);
        EXPECT_EQ(text(u"txtQtyQP"_s), u"12.3456"_s);
        EXPECT_EQ(text(u"mskDate(0)"_s), u"3/2/2026"_s);
        EXPECT_EQ(text(u"txtTrvNotes"_s), u"Handle with care"_s);
        EXPECT_FALSE(isEnabled(u"chkPrintNotes"_s));
        type(u"cmbQuantity"_s, u"1"_s);
        EXPECT_EQ(text(u"txtQtyQP"_s), u"0.0000"_s);
        choose(u"cmbQuantity"_s, u"100"_s);
        EXPECT_EQ(text(u"txtQtyQP"_s), u"9.0000"_s);

        type(u"cmbQuantity"_s, u"0"_s);
        expectBox(u"Job Quantity may not be zero or negative number"_s, Answer::Ok, {}, {},
                  screen::Icon::Critical);
        press(ok);
        EXPECT_EQ(focusName(), u"cmbQuantity"_s);
        type(u"cmbQuantity"_s, u"25"_s);
        type(u"txtQtyQP"_s, u"8.5"_s);
        expectBox(u"Please enter Due Date!"_s);
        press(ok);
        type(u"mskDate(1)"_s, u"3/20/2026"_s);
        expectBox(u"Please enter PO number!"_s, Answer::Ok, u"PO Number Missing"_s);
        press(ok);
        EXPECT_EQ(focusName(), u"txtPONo"_s);
        type(u"txtPONo"_s, u"PO-9"_s);
        check(u"chkOrderRequired"_s);
        expectBoxContaining(u" has been created from Estimate # %1"_s.arg(m_estNo));
        press(ok);
    });
    const qint64 jobNo = create();
    EXPECT_EQ(rows(u"SELECT JobNo, Quantity, InvoiceEach, InvoiceTotal, PONo FROM "
                   "Job WHERE OrderRequired = True AND EstNo = %1"_s.arg(m_estNo)),
              QStringList(u"%1|25|8.5|212.5|PO-9"_s.arg(jobNo)));
    EXPECT_FALSE(database().hasRows(u"SELECT * FROM JobOperNote"_s));

    expectBox(u"This estimate has been previously used for a job. Do you want to "
              "create a new job based on this estimate?"_s,
              Answer::No, u"Create a Job"_s);
    EXPECT_EQ(create(), 0);
}

MIRSA_BOTH_ENGINES(JobFromEstimate);

} // namespace
