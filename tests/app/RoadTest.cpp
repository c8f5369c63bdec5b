#include "app/Screens.h"
#include "core/Login.h"
#include "core/MirsaMain.h"
#include "jobs/JobCosting.h"
#include "platform/report/Painting.h"
#include "platform/report/Report.h"
#include "platform/values/Clock.h"
#include "support/DatabaseFixture.h"
#include "support/ScreenFixture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using screen::Answer;
using testsupport::EngineKind;
using testsupport::TestDatabase;

namespace {

const QString customerName = QStringLiteral("O'Neil & Söhne");

/// The road of a piece of work, walked through the screens by the names of their controls: a new
/// shop, a customer, operations, an estimate, its job, the floor's hours, the traveler.
class Road : public testsupport::ScreenFixture, public ::testing::WithParamInterface<EngineKind> {
  protected:
    void SetUp() override {
        MIRSA_NEEDS_ENGINE(GetParam());
        app::registerAllScreens();
        m_test = std::make_unique<TestDatabase>(GetParam(), TestDatabase::Contents::Shop);
        core::SharedState& state = core::shared();
        state.MainDatabase = m_test->station();
        state.CurrencySymbol = QStringLiteral("$");
        state.CurrentUserName.clear();
        state.ProgramFolder = QStringLiteral(MIRSA_SOURCE_DIR "/reports");
        useDatabase(core::MainDatabase());
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        report::setPreviewer([this](std::shared_ptr<const report::Document> document,
                                    const report::WindowPlacing& placing) {
            m_printed = std::move(document);
            m_printTitle = placing.title;
        });
    }
    void TearDown() override {
        ScreenFixture::TearDown();
        report::setPreviewer({});
        const auto open = screen::Forms::all();
        for (screen::Form* form : open)
            delete form;
        core::shared().MainDatabase.reset();
        values::setNow(std::nullopt);
    }

    void signIn();
    void addCustomer();
    void addOperations();
    void addFixedCostItem();
    void priceEstimate();
    void createJob();
    void workOnFloor();
    QString printedText();

    void fillDialog(const QString& name, const QList<std::pair<QString, QString>>& fields,
                    const QString& button = QStringLiteral("cmdOK")) {
        whenShown(name, [this, fields, button] {
            for (const auto& [field, text] : fields)
                type(field, text);
            press(button);
        });
    }

    std::unique_ptr<TestDatabase> m_test;
    std::shared_ptr<const report::Document> m_printed;
    QString m_printTitle;
};

void Road::signIn() {
    fillDialog(QStringLiteral("frmLogin"),
               {{QStringLiteral("txtUserId"), QStringLiteral("admin")},
                {QStringLiteral("txtUserPassword"), QStringLiteral("bolts")}},
               QStringLiteral("cmdOk"));
    ASSERT_TRUE(core::LoginUser());
    EXPECT_TRUE(core::HasAccess(QStringLiteral("ShowDollar")));
}

void Road::addCustomer() {
    expectBoxContaining(QStringLiteral("you must add at least one Customer"), Answer::Yes);
    open(QStringLiteral("frmCustomer"));
    EXPECT_EQ(text(QStringLiteral("lblCustomerMode")), u"ADD");
    EXPECT_EQ(text(QStringLiteral("txtFOB")), u"Our dock") << "defaults come from the preferences";
    type(QStringLiteral("txtCustomer"), customerName);
    type(QStringLiteral("txtAdd1"), QStringLiteral("7 Harbor Row"));
    type(QStringLiteral("txtCity"), QStringLiteral("Cork"));
    press(QStringLiteral("cmdSave"));
    EXPECT_EQ(text(QStringLiteral("lblCustomerMode")), u"BROWSE");
    EXPECT_EQ(rows(QStringLiteral("SELECT company, City, QBSent FROM Customer")),
              QStringList{customerName + QStringLiteral("|Cork|0")});
    press(QStringLiteral("cmdClose"));
}

void Road::addOperations() {
    open(QStringLiteral("frmOperation"));
    fillDialog(QStringLiteral("frmOperDeptAddEdit"),
               {{QStringLiteral("txtDescription"), QStringLiteral("Machining")}});
    press(QStringLiteral("cmdNewDept"));
    press(QStringLiteral("cmdView")); // the list, where a new operation chooses its department
    for (const auto& [name, rate] : {std::pair{u"Mill", u"40"}, std::pair{u"Turn", u"35"}}) {
        whenShown(QStringLiteral("frmOperAddEdit"), [this, name = name, rate = rate] {
            type(QStringLiteral("txtDescription"), QString::fromUtf16(name));
            type(QStringLiteral("txtOperShopRate"), QString::fromUtf16(rate));
            choose(QStringLiteral("cboDept"), QStringLiteral("Machining"));
            if (QString::fromUtf16(name) == u"Mill")
                type(QStringLiteral("Text1"), QStringLiteral("Use coolant"));
            press(QStringLiteral("cmdOK"));
        });
        press(QStringLiteral("cmdNewOper"));
    }
    fillDialog(QStringLiteral("frmOperAddEdit"),
               {{QStringLiteral("txtDescription"), QStringLiteral("Plating")}});
    press(QStringLiteral("cmdCOnew"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT Description, OperType, OperShopRate FROM Operation ORDER BY OperNo")),
              (QStringList{QStringLiteral("Mill|I|40"), QStringLiteral("Turn|I|35"),
                           QStringLiteral("Plating|C|0")}));
    press(QStringLiteral("cmdClose"));
}

void Road::addFixedCostItem() {
    open(QStringLiteral("frmMiscItems"));
    whenShown(QStringLiteral("frmMIAddEdit"), [this] {
        type(QStringLiteral("txtDescription"), QStringLiteral("Bar stock"));
        type(QStringLiteral("cboUnitofMeasure"), QStringLiteral("FT"));
        type(QStringLiteral("txtUnitPrice"), QStringLiteral("12.5"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNew"));
    EXPECT_EQ(rows(QStringLiteral("SELECT Description, UnitOfMeasure, UnitPrice FROM MiscItems")),
              QStringList{QStringLiteral("Bar stock|FT|12.5")});
    press(QStringLiteral("cmdClose"));
}

void Road::priceEstimate() {
    enum Oper { Seq, Note, Description, Time };
    enum Misc { Item, Unit, Price, Quantity, Total };
    expectBoxContaining(QStringLiteral("you must add at least one Estimate"), Answer::Yes);
    open(QStringLiteral("frmEstimate"));
    expectBox(QStringLiteral("Are you sure you want to cancel?"), Answer::Yes);
    press(QStringLiteral("cmdCancel"));
    whenShown(QStringLiteral("frmEstNew"), [this] {
        check(QStringLiteral("Option2"));
        press(QStringLiteral("cmdOK"));
    });
    whenShown(QStringLiteral("frmSelOper"), [this] {
        for (int i = 0; i < 3; ++i) { // Mill, Plating, Turn
            selectRow(QStringLiteral("lvwAvail"), 0);
            press(QStringLiteral("cmdAddRemove(0)"));
        }
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNew"));
    choose(QStringLiteral("dbcCustomer"), customerName);
    type(QStringLiteral("txtRfqno"), QStringLiteral("R-77"));
    type(QStringLiteral("txtPartno"), QStringLiteral("KX-100"));
    type(QStringLiteral("txtDescription"), QStringLiteral("Guide bushing"));
    type(QStringLiteral("txtQuantity"), QStringLiteral("10"));
    leave();
    setCell(QStringLiteral("sprOper"), 0, Time, QStringLiteral("2.5"));
    setCell(QStringLiteral("sprOper"), 1, Time, QStringLiteral("100"));
    setCell(QStringLiteral("sprOper"), 2, Time, QStringLiteral("1.125"));
    whenShown(QStringLiteral("frmInsItem"), [this] {
        selectRow(QStringLiteral("lstItems"), 0);
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdMisc(0)"));
    setCell(QStringLiteral("sprMisc"), 0, Quantity, QStringLiteral("4"));
    const char16_t* discounts[] = {u"", u"5", u"10", u"12.5", u"15"};
    for (int i = 0; i < 5; ++i) {
        const QString index = u'(' + QString::number(i) + u')';
        if (i > 0) {
            type(QStringLiteral("txtQtyBreak") + index, QString::number(10 * (i + 1)));
            type(QStringLiteral("txtQtyDiscount") + index, QString::fromUtf16(discounts[i]));
        }
        type(QStringLiteral("fpQtyQP") + index, QString::number(36 - i) + QStringLiteral(".25"));
        leave();
    }
    expectBoxContaining(QStringLiteral("recalculate the Pricing"), Answer::Yes);
    press(QStringLiteral("cmdOperRate(1)")); // each operation at its own rate
    // 2.5 h at 40, 1.125 h at 35, 100 outside, 50 of material, by ten pieces.
    EXPECT_EQ(text(QStringLiteral("fpOutContr")), u"100.00");
    EXPECT_EQ(text(QStringLiteral("fpFixed")), u"50.00");
    EXPECT_EQ(text(QStringLiteral("fpQtyPrice(0)")), u"28.9375");
    press(QStringLiteral("cmdSave"));

    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT EstNo, CustID, Quantity, QtyPriceA, QtyPriceB, QtyPriceC, QtyPriceD, "
                  "QtyPriceE, QtyQPA, QtyTotalA, QtyTotalE FROM Estimate")),
              QStringList{QStringLiteral(
                  "1|1|10|28.9375|27.4906|26.0438|25.3203|24.5969|36.25|362.5|1612.5")});
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT SeqNo, OperTime_Amount, OperShopRate FROM EstOper ORDER BY SeqNo")),
              (QStringList{QStringLiteral("1|2.5|40"), QStringLiteral("2|100|0"),
                           QStringLiteral("3|1.125|35")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT EstNo, SeqNo, OperNotes FROM EstOperNote")),
              QStringList{QStringLiteral("1|1|Use coolant")});
}

void Road::createJob() {
    use(screen::Forms::find(QStringLiteral("frmEstimate")));
    whenShown(QStringLiteral("frmCreatJob"), [this] {
        EXPECT_EQ(text(QStringLiteral("txtQtyQP")), u"36.2500");
        expectBoxContaining(QStringLiteral("Please enter Due Date!"));
        press(QStringLiteral("cmdOK")); // too early
        type(QStringLiteral("mskDate(1)"), QStringLiteral("3/30/2026"));
        type(QStringLiteral("txtPONo"), QStringLiteral("PO 4471"));
        check(QStringLiteral("chkNotes"));
        check(QStringLiteral("chkPrintTraveler"));
        expectBox(QStringLiteral("Job # 1 has been created from Estimate # 1"), Answer::Ok,
                  QStringLiteral("Create a Job"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdCreateJob"));
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT JobNo, CustID, PONo, Quantity, EstNo, InvoiceEach, InvoiceTotal, "
                  "JobShopCost, JobDateIn, JobDueDate FROM Job")),
              QStringList{QStringLiteral("1|1|PO 4471|10|1|36.25|362.5|15|3/2/2026|3/30/2026")});
    EXPECT_EQ(rows(QStringLiteral(
                  "SELECT SeqNo, OperTime_Amount, EstOper, Status FROM JobOper ORDER BY SeqNo")),
              (QStringList{QStringLiteral("1|0|2.5| "), QStringLiteral("2|100|100| "),
                           QStringLiteral("3|0|1.125| ")}));
    EXPECT_EQ(rows(QStringLiteral("SELECT JobNo, SeqNo, OperNotes FROM JobOperNote")),
              QStringList{QStringLiteral("1|1|Use coolant")});

    EXPECT_EQ(m_printTitle, u"Traveler Report");
    const QString printed = printedText();
    for (const QString& wanted :
         {customerName, QStringLiteral("KX-100"), QStringLiteral("PO 4471"), QStringLiteral("Mill"),
          QStringLiteral("Plating"), QStringLiteral("Turn"), QStringLiteral("1 of 1")})
        EXPECT_TRUE(printed.contains(wanted, Qt::CaseInsensitive))
            << wanted.toStdString() << " in\n"
            << printed.toStdString();
}

/// What a person reads on the traveler, by way of a PDF.
QString Road::printedText() {
    if (!m_printed)
        return {};
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(QStringLiteral("traveler.pdf"));
    report::writePdf(*m_printed, pdf);
    QProcess reader;
    reader.start(QStringLiteral("pdftotext"),
                 {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput());
}

/// Rows as the floor terminal writes them, from a station of its own.
void Road::workOnFloor() {
    const auto floor = m_test->station();
    const auto book = [&](int operNo, const char16_t* hours, const char16_t* status) {
        floor->execute(
            QStringLiteral(
                "INSERT INTO Timelog (EmpID, JobNo, OperNo, SignID, AccumTime, Status, StartDate, "
                "SuspDate) VALUES (1, 1, %1, 1, %2, '%3', #03/03/2026 07:00:00 AM#, "
                "#03/03/2026 09:00:00 AM#)")
                .arg(operNo)
                .arg(QString::fromUtf16(hours), QString::fromUtf16(status)));
    };
    book(1, u"1.5", u"D");
    book(1, u"1.25", u"F");
    book(2, u"1.1", u"D");
    jobs::UpdateJobCost(*floor, 1);
}

} // namespace

TEST_P(Road, FromTheRequestToACostedJobWithItsTraveler) {
    signIn();
    addCustomer();
    addOperations();
    addFixedCostItem();
    priceEstimate();
    createJob();
    workOnFloor();

    open(QStringLiteral("frmJob"));
    EXPECT_EQ(text(QStringLiteral("lblJobNo")), u"1");
    EXPECT_EQ(text(QStringLiteral("dbcCustomer")), customerName);
    EXPECT_EQ(text(QStringLiteral("lblTotalHours")), u"3.85");
    // 2.75 h at 40, 1.1 h at 35, 100 outside, 50 of material, by ten pieces.
    EXPECT_EQ(text(QStringLiteral("lblJobShopCost")), u"29.8500");
    EXPECT_EQ(text(QStringLiteral("lblInvoiceTotal")), u"362.50");
    EXPECT_EQ(rows(QStringLiteral("SELECT JobShopCost, TotalHours, InvoiceTotal FROM Job")),
              QStringList{QStringLiteral("29.85|3.85|362.5")});
    EXPECT_EQ(rows(QStringLiteral("SELECT OperTime_Amount, EstOper FROM JobOper ORDER BY SeqNo")),
              (QStringList{QStringLiteral("2.75|2.5"), QStringLiteral("100|100"),
                           QStringLiteral("1.1|1.125")}));
    press(QStringLiteral("cmdClose"));
    expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(BothEngines, Road, ::testing::Values(EngineKind::File, EngineKind::Server),
                         testsupport::engineName);
