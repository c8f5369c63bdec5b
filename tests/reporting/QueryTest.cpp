#include "reporting/Query.h"
#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/report/Layout.h"
#include "platform/report/Report.h"
#include "platform/report/ReportFile.h"
#include "platform/report/RowSource.h"
#include "platform/screen/Forms.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "reporting/QueryForm.h"
#include "reporting/Screens.h"
#include "sample/Sample.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"

#include <QElapsedTimer>
#include <QGroupBox>

#include <random>

using reporting::Criterion;
using reporting::Given;
using reporting::QueryDescriptor;
using screen::Answer;

namespace {

const QueryDescriptor& query(const QString& form) {
    for (const QueryDescriptor& one : reporting::queries()) {
        if (one.queryForm == form)
            return one;
    }
    throw std::logic_error("no such query");
}

/// The module that results lead to, as far as they need it.
class Module : public screen::Form, public core::RecordScreen, public core::PartScreen {
  public:
    explicit Module(const QString& name) : Form(name, name) {}
    QString mode() const override { return now; }
    qint64 currentKey() const override { return key; }
    bool goToRecord(qint64 wanted) override {
        key = wanted;
        return wanted != missing;
    }
    bool goToPart(const QString& wanted) override {
        part = wanted;
        return true;
    }
    QString now = u"Browse"_s, part;
    qint64 key = 0, missing = -1;
};

/// The queries on the sample shop.
class Queries : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        sample::fill(database(), {.years = 1, .jobs = 60});
        core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
        reporting::registerScreens();
        for (const QString& name : {u"frmJob"_s, u"frmCustomer"_s, u"frmRFQ"_s})
            screen::Forms::add(name, [name] { return std::make_unique<Module>(name); });
    }

    QString one(const QString& select) const { return database().lookup(select).toText(); }

    /// The keys of a select's rows, sorted.
    QStringList keys(const QString& select, const QString& field) {
        QStringList all;
        jet::Recordset found = database().openRecordset(select, jet::RecordsetType::Snapshot);
        for (; !found.eof(); found.moveNext())
            all << found.text(field);
        all.sort();
        return all;
    }
    /// The keys of the rows that the module's list prints by a formula.
    QStringList printed(const QueryDescriptor& of, const QString& formula) {
        // The lists have a row for each row of the grid; documents may have one for several.
        const QString module =
            u" FROM Reports WHERE [Module] = '"_s + of.reportModule + u"' AND "_s;
        QString file = one(u"SELECT FileName"_s + module + u"FileName LIKE '*_List.rpt'"_s);
        if (file.isEmpty())
            file = one(u"SELECT FileName"_s + module + u"[Default] = True"_s);
        report::DatabaseRowSource source(database());
        const report::ReportFile read = report::readReportFile(core::programFile(file));
        return keys(report::reportSql(read.query, source, formula), of.reportKey.section(u'.', -1));
    }
    /// Something a person might enter for a criterion: mostly what the shop has.
    Given someValue(const Criterion& criterion, std::mt19937& random);
};

Given Queries::someValue(const Criterion& criterion, std::mt19937& random) {
    const auto below = [&random](qsizetype count) {
        return count > 0 ? static_cast<qsizetype>(random() % static_cast<std::size_t>(count)) : 0;
    };
    Given given;
    given.used = true;
    given.range = !criterion.rangeBox.isEmpty() && below(2) == 0;
    if (criterion.kind == Criterion::Kind::Choice) {
        given.first =
            criterion.choices[static_cast<std::size_t>(below(qsizetype(criterion.choices.size())))]
                .first;
        return given;
    }
    if (criterion.kind == Criterion::Kind::Date) {
        const QDate day = QDate(2025, 1, 1).addDays(below(430));
        given.firstDay = day;
        given.secondDay = day.addDays(below(60));
        given.first = given.firstDay->toString(u"M/d/yyyy"_s);
        given.second = given.secondDay->toString(u"M/d/yyyy"_s);
        return given;
    }
    QStringList texts, bound;
    jet::Recordset rows = database().openRecordset(criterion.list, jet::RecordsetType::Snapshot);
    const QStringList fields = rows.fieldNames();
    for (; !rows.eof(); rows.moveNext()) {
        if (rows.text(fields.first()).contains(u'\''))
            continue; // ends in the database's error, on purpose
        texts << rows.text(fields.first());
        bound << rows.text(fields.last());
    }
    if (texts.isEmpty()) {
        given.first = given.second = given.key = u"1"_s;
        return given;
    }
    const qsizetype at = below(texts.size());
    given.first = texts[at];
    given.key = bound[at];
    given.second = texts[below(texts.size())];
    return given;
}

} // namespace

TEST(QueryTexts, HoldTheSameCriteriaInTheSameOrder) {
    const QueryDescriptor& jobs = query(u"frmJobQuery"_s);
    const auto day = [](int month, int d) { return QDate(2025, month, d); };
    std::vector<Given> given(6);
    EXPECT_FALSE(reporting::queryTexts(jobs, given));
    given[0] = {true, true, u"Acme Die Works"_s, u"Norton Molds"_s};
    given[1] = {true, true, u"1001"_s, u"1050"_s};
    given[2] = {true, true, u"AB-10"_s, u"AB-99"_s};
    given[3] = {true, true, u"PO-4000"_s, u"PO-4999"_s};
    given[4] = {true, true, u"11/01/2025"_s, u"11/30/2025"_s, {}, day(11, 1), day(11, 30)};
    given[5] = {true, true, u"12/01/2025"_s, u"12/31/2025"_s, {}, day(12, 1), day(12, 31)};
    const auto ranges = reporting::queryTexts(jobs, given);
    ASSERT_TRUE(ranges);
    EXPECT_EQ(ranges->statement,
              u"SELECT * FROM Job where custid in (Select customer.custid from customer where "
              "company between 'Acme Die Works' and 'Norton Molds') and JobNo between 1001 and "
              "1050 and PartNo between 'AB-10' and 'AB-99' and PoNo between 'PO-4000' and "
              "'PO-4999' and JobDateIn between #11/01/2025# and #11/30/2025# and JobDueDate "
              "between #12/01/2025# and #12/31/2025#"_s);
    EXPECT_EQ(ranges->formula,
              u"{customer.company} in 'Acme Die Works' to 'Norton Molds' and {Job.JobNo} in 1001 "
              "to 1050 and {Job.PartNo} in 'AB-10' to 'AB-99' and {Job.PoNo} in 'PO-4000' to "
              "'PO-4999' and {Job.JobDateIn} in date(2025,11,01) to date(2025,11,30) and "
              "{Job.JobDueDate} in date(2025,12,01) to date(2025,12,31)"_s);
    given = std::vector<Given>(6);
    given[0] = {true, false, u"Acme Die Works"_s, {}, u"12"_s};
    given[2] = {true, false, u"100% %1 %2"_s, {}};
    const auto single = reporting::queryTexts(jobs, given);
    ASSERT_TRUE(single);
    EXPECT_EQ(single->statement,
              u"SELECT * FROM Job where CustID = 12 and PartNo = '100% %1 %2'"_s);
    EXPECT_EQ(single->formula, u"{Customer.CustID} = 12 and {Job.PartNo} = '100% %1 %2'"_s);
}

// What the grid shows and what its report prints are the same rows, whatever is asked.
TEST_P(Queries, TheRowsBehindTheFormulaAreTheRowsOfTheGrid) {
    std::mt19937 random(13);
    for (const QueryDescriptor& of : reporting::queries()) {
        SCOPED_TRACE(of.queryForm.toStdString());
        int answered = 0;
        for (int turn = 0; turn < 200; ++turn) {
            std::vector<Given> given(of.criteria.size());
            const std::size_t criteria = 1 + random() % 2;
            for (std::size_t i = 0; i < criteria; ++i) {
                const std::size_t at = random() % given.size();
                // Time is asked by the day of the work and printed by the day of the sign-in.
                if (of.queryForm == u"frmTimeQuery" &&
                    of.criteria[at].kind == Criterion::Kind::Date)
                    continue;
                given[at] = someValue(of.criteria[at], random);
            }
            const auto texts = reporting::queryTexts(of, given);
            if (!texts)
                continue;
            const QStringList shown = keys(texts->statement, of.keyField);
            answered += shown.isEmpty() ? 0 : 1;
            ASSERT_EQ(shown, printed(of, texts->formula)) << texts->statement.toStdString() << "\n"
                                                          << texts->formula.toStdString();
        }
        EXPECT_GT(answered, 20);
    }
}

// Whichever report is chosen, it knows what the query asks.
TEST_P(Queries, EveryReportOfAModuleTakesEveryCriterion) {
    std::mt19937 random(29);
    report::DatabaseRowSource source(database());
    for (const QueryDescriptor& of : reporting::queries()) {
        const QStringList files =
            rows(u"SELECT FileName FROM Reports WHERE [Module] = '%1'"_s.arg(of.reportModule));
        for (const QString& file : files) {
            SCOPED_TRACE((of.queryForm + u' ' + file).toStdString());
            const report::ReportFile read = report::readReportFile(core::programFile(file));
            for (std::size_t i = 0; i < of.criteria.size(); ++i) {
                for (const bool range : {false, true}) {
                    std::vector<Given> given(of.criteria.size());
                    given[i] = someValue(of.criteria[i], random);
                    given[i].range = range && !of.criteria[i].rangeBox.isEmpty();
                    const QString formula = reporting::queryTexts(of, given)->formula;
                    EXPECT_NO_THROW(
                        database().openRecordset(report::reportSql(read.query, source, formula),
                                                 jet::RecordsetType::Snapshot))
                        << formula.toStdString();
                }
            }
            EXPECT_NO_THROW(database().openRecordset(
                report::reportSql(read.query, source, reporting::selectionOf(of, {u"1"_s})),
                jet::RecordsetType::Snapshot));
        }
    }
}

TEST_P(Queries, CriteriaAreForgivingAndTheFormStays) {
    open(u"frmJobQuery"_s);
    const QString nothing = u"Please Enter Criteria For Query!"_s;
    expectBox(nothing, Answer::Ok, u"No Criteria!"_s, {}, screen::Icon::Exclamation);
    press(u"cmdGenerate"_s);
    check(u"chkUsePart"_s);
    expectBox(nothing);
    press(u"cmdGenerate"_s);
    EXPECT_FALSE(isChecked(u"chkUsePart"_s)) << "ticked and empty";

    type(u"etxtDate1"_s, u"2/30/2026"_s);
    expectBox(u"Date In: please enter a date as month/day/year."_s);
    press(u"cmdGenerate"_s);
    EXPECT_EQ(focusName(), u"etxtDate1"_s);
    check(u"chkUseDate"_s, false);

    type(u"dbcJob1"_s, u"12x3"_s);
    EXPECT_EQ(text(u"dbcJob1"_s), u"123"_s) << "digits only";
    EXPECT_TRUE(isChecked(u"chkUseJob"_s)) << "a value ticks its box";
    check(u"chkJob"_s);
    EXPECT_EQ(focusName(), u"dbcJob2"_s);
    expectBox(u"Job #: please enter the second value of the range, or clear \"to\"."_s);
    press(u"cmdGenerate"_s);
    check(u"chkUseJob"_s, false);
    EXPECT_EQ(text(u"dbcJob1"_s), QString());
    EXPECT_FALSE(isEnabled(u"chkJob"_s));
    EXPECT_FALSE(isChecked(u"chkJob"_s));
    EXPECT_FALSE(isVisible(u"dbcJob2"_s));

    type(u"dbcComp1"_s, u"Nobody we know"_s);
    expectBox(u"Customer: please choose one from the list."_s);
    press(u"cmdGenerate"_s);
    check(u"chkUseCust"_s, false);

    // The text goes in as typed: the statement fails, and that is all.
    type(u"dbcPart1"_s, u"O'Ring"_s);
    expectRunTimeError(jet::errors::syntax);
    press(u"cmdGenerate"_s);
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmJobQuery"_s));
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmJobQresults"_s));
    EXPECT_EQ(text(u"dbcPart1"_s), u"O'Ring"_s);

    // No row: a member that doesn't test in the query form says so when the results open.
    type(u"dbcPart1"_s, u"No such part"_s);
    expectBox(u"No Records satisfy your Criteria!"_s, Answer::Ok, u"Mirsa"_s);
    press(u"cmdGenerate"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmJobQresults"_s));
    open(u"frmCustQuery"_s);
    type(u"dbcCity1"_s, u"Atlantis"_s);
    expectBox(u"No Records satisfy your Criteria!"_s, Answer::Ok, u"No Records Found"_s, {},
              screen::Icon::Exclamation);
    press(u"cmdGenerate"_s);
}

TEST_P(Queries, ResultsLeadToTheRecordAndToReports) {
    auto* module = openAs<Module>(u"frmJob"_s);
    open(u"frmJobQuery"_s);
    const QString part = one(u"SELECT TOP 1 PartNo FROM Job ORDER BY JobNo DESC"_s);
    type(u"dbcPart1"_s, part + u'\n');
    ASSERT_TRUE(screen::Forms::isLoaded(u"frmJobQresults"_s));
    use(screen::Forms::find(u"frmJobQresults"_s));
    settle();
    const QStringList found =
        rows(u"SELECT JobNo FROM Job WHERE PartNo = '"_s + part + u"' ORDER BY JobNo"_s);
    ASSERT_EQ(rowCount(u"sprJobFound"_s), found.size());
    EXPECT_EQ(control<QGroupBox>(u"fraMain"_s)->title(),
              QString::number(found.size()) + u" Records Found Matching Query."_s);
    EXPECT_EQ(text(u"dbcReport"_s), u"Job Report"_s);
    EXPECT_EQ(text(u"lbldesc"_s),
              one(u"SELECT Description FROM Reports WHERE Name = 'Job Report'"_s));

    expectBox(u"No Records Selected!"_s, Answer::Ok, u"Error"_s, {}, screen::Icon::Exclamation);
    press(u"cmdPrintSel"_s);
    type(u"dbcReport"_s, u" "_s);
    EXPECT_FALSE(isEnabled(u"cmdPrintScr"_s));

    doubleClickRow(u"sprJobFound"_s, 0);
    EXPECT_EQ(module->key, found.front().toLongLong());
    module->now = u"Edit"_s;
    module->key = 0;
    expectBox(u"The Job Module is currently in 'Edit' or 'Add' mode.  You cannot goto a record "
              "unless the customer module is in 'Browse' mode"_s,
              Answer::Ok, u"Job Screen Locked!"_s, {}, screen::Icon::Critical);
    doubleClickRow(u"sprJobFound"_s, 0);
    EXPECT_EQ(module->key, 0);

    press(u"cmdRedo"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmJobQresults"_s));
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmJobQuery"_s));

    // A request goes by two keys.
    open(u"frmRfqQuery"_s);
    const QString group = one(u"SELECT TOP 1 OrderNumber FROM RFQItem ORDER BY ItemKey"_s);
    type(u"dbcRFQ1"_s, group);
    press(u"cmdGenerate"_s);
    use(screen::Forms::find(u"frmRfqQresults"_s));
    doubleClickRow(u"sprRfqFound"_s, 0);
    auto* request = dynamic_cast<Module*>(screen::Forms::find(u"frmRFQ"_s));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->key, group.toLongLong());
    EXPECT_TRUE(request->part.startsWith(group + u'-'));
    use(screen::Forms::find(u"frmRfqQresults"_s));
    press(u"cmdCancel"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmRfqQuery"_s));
}

TEST_P(Queries, FiveThousandSelectedRowsAreOneCondition) {
    const QueryDescriptor& jobs = query(u"frmJobQuery"_s);
    QStringList wanted;
    for (int job = 1; job <= 5000; ++job)
        wanted << QString::number(job);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(printed(jobs, reporting::selectionOf(jobs, wanted)),
              keys(u"SELECT JobNo FROM Job WHERE JobNo <= 5000"_s, u"JobNo"_s));
    EXPECT_LT(clock.elapsed(), 2000);
    QStringList items;
    for (int item = 1; item <= 5000; ++item)
        items << u"%1-1"_s.arg(item);
    const QueryDescriptor& orders = query(u"frmPOQuery"_s);
    EXPECT_EQ(printed(orders, reporting::selectionOf(orders, items)),
              keys(u"SELECT ItemKey FROM POItem WHERE ItemKey LIKE '*-1'"_s, u"ItemKey"_s));
}

MIRSA_BOTH_ENGINES(Queries);
