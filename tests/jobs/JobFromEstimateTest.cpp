#include "jobs/JobFromEstimate.h"

#include "JobShop.h"
#include "estimating/CreateJob.h"
#include "jobs/Screens.h"
#include "platform/values/Clock.h"

using namespace jobs;
using estimating::EstimateForJob;
using estimating::MiscRow;
using estimating::OperRow;
using screen::Answer;
using values::Currency;

namespace {

class JobFromEstimate : public JobShop {
  protected:
    void SetUp() override {
        JobShop::SetUp();
        if (IsSkipped())
            return;
        registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(8, 0), Qt::UTC));
        m_turning = operation(QStringLiteral("Turning"), QStringLiteral("I"), QStringLiteral("40"));
        m_plating = operation(QStringLiteral("Plating"), QStringLiteral("C"), QStringLiteral("0"));
        m_item = item(QStringLiteral("Bar stock"));

        OperRow turning;
        turning.operNo = m_turning;
        turning.time = 2.5;
        turning.rate = Currency::fromInteger(40);
        OperRow plating;
        plating.operNo = m_plating;
        plating.inhouse = false;
        plating.time = 100;
        MiscRow stock{m_item,
                      QStringLiteral("Bar stock"),
                      QStringLiteral("EA"),
                      Currency::fromDouble(1.5),
                      Currency::fromInteger(4),
                      {}};
        stock.retotal();
        m_estimate.estNo = 501;
        m_estimate.operations = {turning, plating};
        m_estimate.fixedCosts = {stock};
        estimating::EstimateHeader& header = m_estimate.header;
        header.custId = customer(QStringLiteral("Acme"));
        header.partNo = QStringLiteral("12-34");
        header.description = QStringLiteral("Driver's plate");
        header.material = QStringLiteral("Steel");
        header.quantity = 10;
        header.shopRate = Currency::fromInteger(55);
        header.oneShopRate = false;
        header.travelerNotes = QStringLiteral("Handle with care");
        header.jobNotes = QStringLiteral("Call first");
        header.breaks[0].quantity = 10;
        header.breaks[0].quoted = Currency::fromDouble(12.3456);
        header.breaks[3].quantity = 100;
        header.breaks[3].quoted = Currency::fromInteger(9);
        database().execute(QStringLiteral("INSERT INTO EstOperNote (ID, EstNo, SeqNo, OperNotes) "
                                          "VALUES(1,501,2,'Don''t scratch')"));
        m_order.quantity = 10;
        m_order.price = Currency::fromDouble(12.3456);
        m_order.dateIn = QDate(2026, 3, 2);
        m_order.dueDate = QDate(2026, 3, 20);
        m_order.poNo = QStringLiteral("PO-1");
        m_order.useNotes = true;
    }
    void TearDown() override {
        values::setNow(std::nullopt);
        JobShop::TearDown();
    }

    EstimateForJob m_estimate;
    JobOrder m_order;
    qint64 m_turning = 0;
    qint64 m_plating = 0;
    qint64 m_item = 0;
};

TEST_P(JobFromEstimate, StartsWithoutHoursAndKeepsTheEstimateBeside) {
    const qint64 jobNo = createJob(database(), m_estimate, m_order);
    const QString of = QStringLiteral(" WHERE JobNo = ") + QString::number(jobNo);
    EXPECT_EQ(rows(QStringLiteral("SELECT CustID, PONo, PartNo, Description, Quantity, "
                                  "JobShopRate, EstNo, QtyQuotedPrice, InvoiceEach, InvoiceTotal, "
                                  "JobDateIn, JobDueDate, TravelerNotes, JobNotes, JobShopCost, "
                                  "TotalHours FROM Job") +
                   of),
              QStringList(QStringLiteral("%1|PO-1|12-34|Driver's plate|10|55|501|12.3456|12.3456|"
                                         "123.456|3/2/2026|3/20/2026|||10.6|0")
                              .arg(m_estimate.header.custId)));
    EXPECT_FALSE(database().hasRows(QStringLiteral("SELECT * FROM Job") + of +
                                    QStringLiteral(" AND (OneShopRate = True OR Shipped = True)")));
    EXPECT_EQ(rows(QStringLiteral("SELECT SeqNo, OperNo, OperTime_Amount, OperShopRate, "
                                  "OperLocated, Status, EstOper FROM JobOper") +
                   of + QStringLiteral(" ORDER BY SeqNo")),
              QStringList({QStringLiteral("1|%1|0|40|0| |2.5").arg(m_turning),
                           QStringLiteral("2|%1|100|0|0| |100").arg(m_plating)}));
    EXPECT_EQ(rows(QStringLiteral("SELECT JobOperNote.SeqNo, JobOperNote.OperNotes, "
                                  "JobOper.OperNo FROM JobOperNote INNER JOIN JobOper ON "
                                  "JobOperNote.ID = JobOper.ID WHERE JobOperNote.JobNo = %1")
                       .arg(jobNo)),
              QStringList(QStringLiteral("2|Don't scratch|%1").arg(m_plating)));
    EXPECT_EQ(rows(QStringLiteral("SELECT ItemNo, UnitofMeasure, UnitPrice, Quantity, CostAmount "
                                  "FROM JobMiscCost") +
                   of),
              QStringList(QStringLiteral("%1|EA|1.5|4|6").arg(m_item)));
    EXPECT_TRUE(estimateHasJob(database(), 501));

    m_order.useNotes = false;
    const qint64 second = createJob(database(), m_estimate, m_order);
    EXPECT_FALSE(database().hasRows(
        QStringLiteral("SELECT * FROM JobOperNote WHERE JobNo = %1").arg(second)));
}

TEST_P(JobFromEstimate, AFailingFixedCostLeavesNothing) {
    database().execute(QStringLiteral("DROP TABLE JobMiscCost"));
    EXPECT_THROW(createJob(database(), m_estimate, m_order), jet::Error);
    for (const char16_t* table : {u"Job", u"JobOper", u"JobOperNote"}) {
        EXPECT_FALSE(
            database().hasRows(QStringLiteral("SELECT * FROM ") + QString::fromUtf16(table)));
    }
}

TEST_P(JobFromEstimate, TheDialogAsksForWhatIsMissingAndMakesTheJob) {
    const auto create = [&] {
        return screen::Forms::dialog<estimating::CreateJobDialog>(QStringLiteral("frmCreatJob"))
            ->createJob(m_estimate);
    };
    const auto ok = QStringLiteral("cmdOK");
    whenShown(QStringLiteral("frmCreatJob"), [&] {
        EXPECT_EQ(text(QStringLiteral("cmbQuantity")), QStringLiteral("10"));
        EXPECT_EQ(text(QStringLiteral("txtQtyQP")), QStringLiteral("12.3456"));
        EXPECT_EQ(text(QStringLiteral("mskDate(0)")), QStringLiteral("3/2/2026"));
        EXPECT_EQ(text(QStringLiteral("txtTrvNotes")), QStringLiteral("Handle with care"));
        EXPECT_FALSE(isEnabled(QStringLiteral("chkPrintNotes")));
        type(QStringLiteral("cmbQuantity"), QStringLiteral("1"));
        EXPECT_EQ(text(QStringLiteral("txtQtyQP")), QStringLiteral("0.0000"));
        choose(QStringLiteral("cmbQuantity"), QStringLiteral("100"));
        EXPECT_EQ(text(QStringLiteral("txtQtyQP")), QStringLiteral("9.0000"));

        type(QStringLiteral("cmbQuantity"), QStringLiteral("0"));
        expectBox(QStringLiteral("Job Quantity may not be zero or negative number"), Answer::Ok, {},
                  {}, screen::Icon::Critical);
        press(ok);
        EXPECT_EQ(focusName(), QStringLiteral("cmbQuantity"));
        type(QStringLiteral("cmbQuantity"), QStringLiteral("25"));
        type(QStringLiteral("txtQtyQP"), QStringLiteral("8.5"));
        expectBox(QStringLiteral("Please enter Due Date!"));
        press(ok);
        type(QStringLiteral("mskDate(1)"), QStringLiteral("3/20/2026"));
        expectBox(QStringLiteral("Please enter PO number!"), Answer::Ok,
                  QStringLiteral("PO Number Missing"));
        press(ok);
        EXPECT_EQ(focusName(), QStringLiteral("txtPONo"));
        type(QStringLiteral("txtPONo"), QStringLiteral("PO-9"));
        check(QStringLiteral("chkOrderRequired"));
        expectBoxContaining(QStringLiteral(" has been created from Estimate # 501"));
        press(ok);
    });
    const qint64 jobNo = create();
    EXPECT_EQ(rows(QStringLiteral("SELECT JobNo, Quantity, InvoiceEach, InvoiceTotal, PONo FROM "
                                  "Job WHERE OrderRequired = True AND EstNo = 501")),
              QStringList(QStringLiteral("%1|25|8.5|212.5|PO-9").arg(jobNo)));
    EXPECT_FALSE(database().hasRows(QStringLiteral("SELECT * FROM JobOperNote")));

    expectBox(QStringLiteral("This estimate has been previously used for a job. Do you want to "
                             "create a new job based on this estimate?"),
              Answer::No, QStringLiteral("Create a Job"));
    EXPECT_EQ(create(), 0);
}

MIRSA_BOTH_ENGINES(JobFromEstimate);

} // namespace
