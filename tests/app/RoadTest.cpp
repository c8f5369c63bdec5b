#include "app/Screens.h"
#include "core/Login.h"
#include "core/MirsaMain.h"
#include "jobs/JobCosting.h"
#include "platform/report/Painting.h"
#include "platform/report/Report.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"
#include "support/ScreenFixture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using screen::Answer;
using testsupport::EngineKind;
using testsupport::TestDatabase;

namespace {

const QString customerName = u"O'Neil & Söhne"_s;

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
        state.CurrencySymbol = u"$"_s;
        state.CurrentUserName.clear();
        state.ProgramFolder = testsupport::sourceFile(u"reports"_s);
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
                    const QString& button = u"cmdOK"_s) {
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
    fillDialog(u"frmLogin"_s, {{u"txtUserId"_s, u"admin"_s}, {u"txtUserPassword"_s, u"bolts"_s}},
               u"cmdOk"_s);
    ASSERT_TRUE(core::LoginUser());
    EXPECT_TRUE(core::HasAccess(u"ShowDollar"_s));
}

void Road::addCustomer() {
    expectBoxContaining(u"you must add at least one Customer"_s, Answer::Yes);
    open(u"frmCustomer"_s);
    EXPECT_EQ(text(u"lblCustomerMode"_s), u"ADD");
    EXPECT_EQ(text(u"txtFOB"_s), u"Our dock") << "defaults come from the preferences";
    type(u"txtCustomer"_s, customerName);
    type(u"txtAdd1"_s, u"7 Harbor Row"_s);
    type(u"txtCity"_s, u"Cork"_s);
    press(u"cmdSave"_s);
    EXPECT_EQ(text(u"lblCustomerMode"_s), u"BROWSE");
    EXPECT_EQ(rows(u"SELECT company, City, QBSent FROM Customer"_s),
              QStringList{customerName + u"|Cork|0"_s});
    press(u"cmdClose"_s);
}

void Road::addOperations() {
    open(u"frmOperation"_s);
    fillDialog(u"frmOperDeptAddEdit"_s, {{u"txtDescription"_s, u"Machining"_s}});
    press(u"cmdNewDept"_s);
    press(u"cmdView"_s); // the list, where a new operation chooses its department
    for (const auto& [name, rate] : {std::pair{u"Mill", u"40"}, std::pair{u"Turn", u"35"}}) {
        whenShown(u"frmOperAddEdit"_s, [this, name = name, rate = rate] {
            type(u"txtDescription"_s, QString::fromUtf16(name));
            type(u"txtOperShopRate"_s, QString::fromUtf16(rate));
            choose(u"cboDept"_s, u"Machining"_s);
            if (QString::fromUtf16(name) == u"Mill")
                type(u"Text1"_s, u"Use coolant"_s);
            press(u"cmdOK"_s);
        });
        press(u"cmdNewOper"_s);
    }
    fillDialog(u"frmOperAddEdit"_s, {{u"txtDescription"_s, u"Plating"_s}});
    press(u"cmdCOnew"_s);
    EXPECT_EQ(rows(u"SELECT Description, OperType, OperShopRate FROM Operation ORDER BY OperNo"_s),
              (QStringList{u"Mill|I|40"_s, u"Turn|I|35"_s, u"Plating|C|0"_s}));
    press(u"cmdClose"_s);
}

void Road::addFixedCostItem() {
    open(u"frmMiscItems"_s);
    whenShown(u"frmMIAddEdit"_s, [this] {
        type(u"txtDescription"_s, u"Bar stock"_s);
        type(u"cboUnitofMeasure"_s, u"FT"_s);
        type(u"txtUnitPrice"_s, u"12.5"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    EXPECT_EQ(rows(u"SELECT Description, UnitOfMeasure, UnitPrice FROM MiscItems"_s),
              QStringList{u"Bar stock|FT|12.5"_s});
    press(u"cmdClose"_s);
}

void Road::priceEstimate() {
    enum Oper { Seq, Note, Description, Time };
    enum Misc { Item, Unit, Price, Quantity, Total };
    expectBoxContaining(u"you must add at least one Estimate"_s, Answer::Yes);
    open(u"frmEstimate"_s);
    expectBox(u"Are you sure you want to cancel?"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    whenShown(u"frmEstNew"_s, [this] {
        check(u"Option2"_s);
        press(u"cmdOK"_s);
    });
    whenShown(u"frmSelOper"_s, [this] {
        for (int i = 0; i < 3; ++i) { // Mill, Plating, Turn
            selectRow(u"lvwAvail"_s, 0);
            press(u"cmdAddRemove(0)"_s);
        }
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    choose(u"dbcCustomer"_s, customerName);
    type(u"txtRfqno"_s, u"R-77"_s);
    type(u"txtPartno"_s, u"KX-100"_s);
    type(u"txtDescription"_s, u"Guide bushing"_s);
    type(u"txtQuantity"_s, u"10"_s);
    leave();
    setCell(u"sprOper"_s, 0, Time, u"2.5"_s);
    setCell(u"sprOper"_s, 1, Time, u"100"_s);
    setCell(u"sprOper"_s, 2, Time, u"1.125"_s);
    whenShown(u"frmInsItem"_s, [this] {
        selectRow(u"lstItems"_s, 0);
        press(u"cmdOK"_s);
    });
    press(u"cmdMisc(0)"_s);
    setCell(u"sprMisc"_s, 0, Quantity, u"4"_s);
    const char16_t* discounts[] = {u"", u"5", u"10", u"12.5", u"15"};
    for (int i = 0; i < 5; ++i) {
        const QString index = u'(' + QString::number(i) + u')';
        if (i > 0) {
            type(u"txtQtyBreak"_s + index, QString::number(10 * (i + 1)));
            type(u"txtQtyDiscount"_s + index, QString::fromUtf16(discounts[i]));
        }
        type(u"fpQtyQP"_s + index, QString::number(36 - i) + u".25"_s);
        leave();
    }
    expectBoxContaining(u"recalculate the Pricing"_s, Answer::Yes);
    press(u"cmdOperRate(1)"_s); // each operation at its own rate
    // 2.5 h at 40, 1.125 h at 35, 100 outside, 50 of material, by ten pieces.
    EXPECT_EQ(text(u"fpOutContr"_s), u"100.00");
    EXPECT_EQ(text(u"fpFixed"_s), u"50.00");
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), u"28.9375");
    press(u"cmdSave"_s);

    EXPECT_EQ(rows(u"SELECT EstNo, CustID, Quantity, QtyPriceA, QtyPriceB, QtyPriceC, QtyPriceD, "
                   "QtyPriceE, QtyQPA, QtyTotalA, QtyTotalE FROM Estimate"_s),
              QStringList{u"1|1|10|28.9375|27.4906|26.0438|25.3203|24.5969|36.25|362.5|1612.5"_s});
    EXPECT_EQ(rows(u"SELECT SeqNo, OperTime_Amount, OperShopRate FROM EstOper ORDER BY SeqNo"_s),
              (QStringList{u"1|2.5|40"_s, u"2|100|0"_s, u"3|1.125|35"_s}));
    EXPECT_EQ(rows(u"SELECT EstNo, SeqNo, OperNotes FROM EstOperNote"_s),
              QStringList{u"1|1|Use coolant"_s});
}

void Road::createJob() {
    use(screen::Forms::find(u"frmEstimate"_s));
    whenShown(u"frmCreatJob"_s, [this] {
        EXPECT_EQ(text(u"txtQtyQP"_s), u"36.2500");
        expectBoxContaining(u"Please enter Due Date!"_s);
        press(u"cmdOK"_s); // too early
        type(u"mskDate(1)"_s, u"3/30/2026"_s);
        type(u"txtPONo"_s, u"PO 4471"_s);
        check(u"chkNotes"_s);
        check(u"chkPrintTraveler"_s);
        expectBox(u"Job # 1 has been created from Estimate # 1"_s, Answer::Ok, u"Create a Job"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdCreateJob"_s);
    EXPECT_EQ(rows(u"SELECT JobNo, CustID, PONo, Quantity, EstNo, InvoiceEach, InvoiceTotal, "
                   "JobShopCost, JobDateIn, JobDueDate FROM Job"_s),
              QStringList{u"1|1|PO 4471|10|1|36.25|362.5|15|3/2/2026|3/30/2026"_s});
    EXPECT_EQ(rows(u"SELECT SeqNo, OperTime_Amount, EstOper, Status FROM JobOper ORDER BY SeqNo"_s),
              (QStringList{u"1|0|2.5| "_s, u"2|100|100| "_s, u"3|0|1.125| "_s}));
    EXPECT_EQ(rows(u"SELECT JobNo, SeqNo, OperNotes FROM JobOperNote"_s),
              QStringList{u"1|1|Use coolant"_s});

    EXPECT_EQ(m_printTitle, u"Traveler Report");
    const QString printed = printedText();
    for (const QString& wanted :
         {customerName, u"KX-100"_s, u"PO 4471"_s, u"Mill"_s, u"Plating"_s, u"Turn"_s, u"1 of 1"_s})
        EXPECT_TRUE(printed.contains(wanted, Qt::CaseInsensitive))
            << wanted.toStdString() << " in\n"
            << printed.toStdString();
}

/// What a person reads on the traveler, by way of a PDF.
QString Road::printedText() {
    if (!m_printed)
        return {};
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(u"traveler.pdf"_s);
    report::writePdf(*m_printed, pdf);
    QProcess reader;
    reader.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    EXPECT_TRUE(reader.waitForFinished());
    return QString::fromUtf8(reader.readAllStandardOutput());
}

/// Rows as the floor terminal writes them, from a station of its own.
void Road::workOnFloor() {
    const auto floor = m_test->station();
    const auto book = [&](int operNo, const char16_t* hours, const char16_t* status) {
        floor->execute(
            u"INSERT INTO Timelog (EmpID, JobNo, OperNo, SignID, AccumTime, Status, StartDate, "
            "SuspDate) VALUES (1, 1, %1, 1, %2, '%3', #03/03/2026 07:00:00 AM#, "
            "#03/03/2026 09:00:00 AM#)"_s.arg(operNo)
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

    open(u"frmJob"_s);
    EXPECT_EQ(text(u"lblJobNo"_s), u"1");
    EXPECT_EQ(text(u"dbcCustomer"_s), customerName);
    EXPECT_EQ(text(u"lblTotalHours"_s), u"3.85");
    // 2.75 h at 40, 1.1 h at 35, 100 outside, 50 of material, by ten pieces.
    EXPECT_EQ(text(u"lblJobShopCost"_s), u"29.8500");
    EXPECT_EQ(text(u"lblInvoiceTotal"_s), u"362.50");
    EXPECT_EQ(rows(u"SELECT JobShopCost, TotalHours, InvoiceTotal FROM Job"_s),
              QStringList{u"29.85|3.85|362.5"_s});
    EXPECT_EQ(rows(u"SELECT OperTime_Amount, EstOper FROM JobOper ORDER BY SeqNo"_s),
              (QStringList{u"2.75|2.5"_s, u"100|100"_s, u"1.1|1.125"_s}));
    press(u"cmdClose"_s);
    expectNothingLeft();
}

INSTANTIATE_TEST_SUITE_P(BothEngines, Road, ::testing::Values(EngineKind::File, EngineKind::Server),
                         testsupport::engineName);
