#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/report/Painting.h"
#include "platform/report/Report.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"
#include "reporting/Query.h"
#include "support/Paths.h"
#include "support/SampleFixture.h"

using core::RecordScreen;
using reporting::Criterion;
using reporting::QueryDescriptor;
using screen::Forms;

namespace {

/// The modules with their queries, on the sample shop.
class ModuleQueries : public testsupport::SampleTest {
  protected:
    void prepare() override {
        SampleTest::prepare();
        core::shared().ProgramFolder = testsupport::sourceFile(u"reports"_s);
        report::setPreviewer(
            [this](std::shared_ptr<const report::Document> document, const report::WindowPlacing&) {
                m_pages += document->pageCount();
            });
    }
    /// Asks by the first criterion of the member that the shop has something for.
    void ask(const QueryDescriptor& query) {
        for (const Criterion& criterion : query.criteria) {
            if (criterion.kind != Criterion::Kind::Number &&
                criterion.kind != Criterion::Kind::Text)
                continue;
            const jet::Recordset rows =
                database().openRecordset(criterion.list, jet::RecordsetType::Snapshot);
            const QString value = rows.isEmpty() ? QString() : rows.text(rows.fieldNames().first());
            if (value.isEmpty() || value.contains(u'\''))
                continue;
            type(criterion.first, value);
            press(u"cmdGenerate"_s);
            use(Forms::find(query.resultsForm));
            settle();
            return;
        }
    }

    qsizetype m_pages = 0;
};

} // namespace

TEST_P(ModuleQueries, AModuleOpensItsQueryAndAResultLeadsBackToIt) {
    for (const QueryDescriptor& query : reporting::queries()) {
        const bool spares = query.queryForm == u"frmSpareQuery";
        const QString screen = query.queryForm == u"frmTimeQuery"       ? u"frmTM"_s
                               : query.queryForm == u"frmScheduleQuery" ? u"frmSchedule"_s
                                                                        : query.module;
        SCOPED_TRACE(query.queryForm.toStdString());
        open(screen);
        for (const QString& name : {u"cmdList"_s, u"cmdQryRpt"_s, u"cmdQuery"_s}) {
            const auto* button = form().control<QPushButton>(name);
            if (button && button->text().contains(u"Query/Report")) {
                press(name);
                break;
            }
        }
        ASSERT_TRUE(Forms::isLoaded(query.queryForm)) << "nothing opens it";
        use(Forms::find(query.queryForm));
        ask(query);
        ASSERT_GT(rowCount(query.gridName), 0);

        // Every report of the module prints what is shown.
        const QStringList reports =
            rows(u"SELECT Name FROM Reports WHERE [Module] = '%1'"_s.arg(query.reportModule));
        EXPECT_FALSE(reports.isEmpty());
        for (const QString& report : reports) {
            SCOPED_TRACE(report.toStdString());
            choose(u"dbcReport"_s, report);
            m_pages = 0;
            press(u"cmdPrintScr"_s);
            EXPECT_GT(m_pages, 0);
        }
        if (!query.module.isEmpty()) {
            const QString key = cell(query.gridName, rowCount(query.gridName) - 1, 0);
            doubleClickRow(query.gridName, rowCount(query.gridName) - 1);
            auto* module = Forms::find<RecordScreen>(query.module);
            ASSERT_TRUE(module);
            EXPECT_EQ(QString::number(module->currentKey()), key);
            if (!spares) {
                use(Forms::find(query.module));
                press(u"cmdEdit"_s);
                const qint64 before = module->currentKey();
                use(Forms::find(query.resultsForm));
                if (!query.lockedText.isEmpty())
                    expectBox(query.lockedText, screen::Answer::Ok, query.lockedTitle);
                doubleClickRow(query.gridName, 0);
                EXPECT_EQ(module->currentKey(), before);
                use(Forms::find(query.module));
                expectBoxContaining(u"Are you sure you want to cancel"_s, screen::Answer::Yes);
                press(u"cmdCancel"_s);
            }
        }
        Forms::find(query.resultsForm)->unload();
        Forms::find(query.queryForm)->unload();
        Forms::find(screen)->unload();
        settle();
    }
}

MIRSA_BOTH_ENGINES(ModuleQueries);
