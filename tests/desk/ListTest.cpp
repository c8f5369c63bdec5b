#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "desk/ListReader.h"
#include "desk/ListScreen.h"
#include "desk/Rights.h"
#include "platform/controls/RowTable.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "support/CsvReader.h"
#include "support/SampleFixture.h"

#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

using desk::ListReader;
using screen::Answer;
using screen::Forms;

class ListTest : public testsupport::SampleTest {
  protected:
    controls::RowTable& table() {
        return *dynamic_cast<controls::RowTable*>(control(u"lvwRows"_s)->parentWidget());
    }
    const rows::Order& order() { return table().model().order(); }
    /// Opens a list and waits until all its rows are there.
    void openList(const QString& name) {
        open(name);
        waitForRows();
    }
    void waitForRows() {
        ASSERT_TRUE(QTest::qWaitFor(
            [this] { return order().store() && !text(u"lblTotals"_s).contains(u"eading"_s); }));
    }
    QString filterOf(const QString& title) {
        const auto& columns = table().model().columns();
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (columns[i].title == title)
                return u"lvwRowsFilter(%1)"_s.arg(i);
        }
        ADD_FAILURE() << title.toStdString();
        return {};
    }
    QStringList shownKeys() {
        QStringList keys;
        for (int place = 0; place < order().count(); ++place)
            keys << QString::number(order().store()->key(order().row(place)));
        return keys;
    }
};

TEST_P(ListTest, EveryListReadsWhatASelectOfItsOwnSays) {
    for (const desk::ListKind& kind : desk::listKinds()) {
        SCOPED_TRACE(kind.form.toStdString());
        const ListReader reader(kind, true);
        const auto store = reader.read(database());
        const auto latest = reader.readLatest(database(), 3);
        const QStringList keys =
            rows(u"SELECT [%1] FROM %2 ORDER BY [%1] DESC"_s.arg(kind.key, kind.table));
        ASSERT_EQ(store->count(), keys.size());
        EXPECT_EQ(latest->count(), std::min<qsizetype>(3, keys.size()));
        for (std::size_t i = 0; i < reader.columns().size(); ++i) {
            const desk::ListColumn& column = reader.columns()[i];
            if (column.field.isEmpty() || column.field.contains(u' ') || !column.names.isEmpty())
                continue;
            jet::Recordset set =
                database().openRecordset(u"SELECT [%1], [%2] FROM %3 ORDER BY [%1] DESC"_s.arg(
                    kind.key, column.field, kind.table));
            for (int row = 0; !set.eof(); set.moveNext(), ++row) {
                const jet::Value value = set.field(1);
                const int at = static_cast<int>(i);
                if (column.kind == rows::Kind::Text)
                    ASSERT_EQ(store->shown(at, row), value.toText()) << column.title.toStdString();
                else if (column.kind == rows::Kind::Date)
                    ASSERT_EQ(store->shown(at, row),
                              value.isNull() ? QString() : value.toText().section(u' ', 0, 0));
                else if (value.isNull())
                    ASSERT_TRUE(store->isEmpty(at, row) || column.kind == rows::Kind::YesNo);
                else
                    ASSERT_NEAR(store->number(at, row), std::abs(value.toDouble()), 1e-6)
                        << column.title.toStdString();
            }
        }
    }
    // What stands beside the table.
    const desk::ListKind& orders = *desk::listKind(u"frmPO"_s);
    const auto store = ListReader(orders, true).read(database());
    const QStringList sums =
        rows(u"SELECT PO.PONumber, Company, (SELECT COUNT(*) FROM POItem i WHERE i.PONumber = "
             "PO.PONumber) FROM PO LEFT JOIN POVendor v ON v.OrderNumber = PO.PONumber ORDER BY "
             "PO.PONumber DESC"_s);
    for (int row = 0; row < store->count(); ++row) {
        const QString lines = store->shown(6, row);
        EXPECT_EQ(QString::number(store->key(row)) + u'|' + store->shown(1, row) + u'|' +
                      (lines.isEmpty() ? u"0"_s : lines),
                  sums[row]);
    }
}

TEST_P(ListTest, TypingLeavesWhatHoldsItAndEnterOpensTheRecord) {
    openList(u"frmJobList"_s);
    EXPECT_EQ(shownKeys(),
              rows(u"SELECT JobNo FROM Job WHERE Shipped = False ORDER BY JobNo DESC"_s));
    choose(u"cboView"_s, u"All jobs"_s);
    EXPECT_EQ(order().count(), rows(u"SELECT JobNo FROM Job"_s).size());
    const QString wanted =
        rows(u"SELECT TOP 1 PartNo FROM Job WHERE Shipped = True AND PartNo IN (SELECT PartNo "
             "FROM Job GROUP BY PartNo HAVING COUNT(*) = 1) ORDER BY JobNo"_s)
            .front();
    go(u"lvwRows"_s);
    typeOn(wanted); // goes to a column of texts by itself
    EXPECT_FALSE(focusName() == u"lvwRows");
    control<QLineEdit>(focusName())->clear();
    type(filterOf(u"Part #"_s), wanted);
    settle();
    table().clearFilters();
    type(filterOf(u"Part #"_s), wanted);
    const QStringList found = rows(u"SELECT JobNo FROM Job WHERE PartNo LIKE '*"_s + wanted +
                                   u"*' ORDER BY JobNo DESC"_s);
    EXPECT_EQ(shownKeys(), found);
    // The sums at the foot.
    const double hours =
        database()
            .lookup(u"SELECT SUM(TotalHours) FROM Job WHERE PartNo LIKE '*"_s + wanted + u"*'"_s)
            .toDouble();
    EXPECT_TRUE(
        text(u"lblTotals"_s)
            .contains(u"Hours "_s + QString::number(hours, 'f', 2).replace(u"-0.00"_s, u"0.00"_s)))
        << text(u"lblTotals"_s).toStdString();
    // The module shows active jobs alone: it is asked.
    expectBoxContaining(u"isn't among the active records"_s, Answer::Yes);
    table().sortBy(0, false);
    key(Qt::Key_Return);
    auto* job = Forms::find<core::RecordScreen>(u"frmJob"_s);
    ASSERT_TRUE(job);
    EXPECT_EQ(job->currentKey(), found.back().toLongLong());
    // Edited, it stays as it is.
    use(Forms::find(u"frmJob"_s));
    press(u"cmdEdit"_s);
    use(Forms::find(u"frmJobList"_s));
    expectBoxContaining(u"is in 'Edit' mode"_s);
    press(u"cmdOpen"_s);
    EXPECT_EQ(job->mode(), u"Edit"_s);
    expectBoxContaining(u"cancel"_s, Answer::Yes);
    use(Forms::find(u"frmJob"_s));
    press(u"cmdCancel"_s);
}

TEST_P(ListTest, AnotherStationsRowsComeWhenTheListIsUsedAgain) {
    openList(u"frmItemList"_s);
    const int before = order().count();
    anotherStation()->execute(u"INSERT INTO Items (Description, Quantity, FlagQuantity, PricePer) "
                              "VALUES ('Aaa Łódź bearing', 2, 5, 3)"_s);
    dynamic_cast<desk::ListScreen*>(&form())->showView(u"Under their minimum"_s);
    form().Form_Activate();
    ASSERT_TRUE(QTest::qWaitFor([&] { return order().store()->count() > before; }));
    type(filterOf(u"Description"_s), u"lodz"_s);
    ASSERT_EQ(order().count(), 1);
    EXPECT_TRUE(text(u"lblTotals"_s).contains(u"Value $6.00"_s))
        << text(u"lblTotals"_s).toStdString();
    key(Qt::Key_Return);
    EXPECT_TRUE(Forms::isLoaded(u"frmInventory"_s));
}

TEST_P(ListTest, ViewsAreKeptForTheUserAndMoneyForThoseWhoMaySeeIt) {
    openList(u"frmJobList"_s);
    type(filterOf(u"Description"_s), u"plate"_s);
    table().sortBy(7, true);
    table().showColumn(2, false);
    expectInput(u"Name of the view:"_s, u"Plates"_s);
    press(u"cmdSaveView"_s);
    const QStringList keys = shownKeys();
    form().unload();
    settle();
    openList(u"frmJobList"_s);
    EXPECT_EQ(text(u"cboView"_s), u"Plates"_s);
    EXPECT_EQ(shownKeys(), keys);
    EXPECT_FALSE(table().isColumnShown(2));
    expectBoxContaining(u"Delete the view"_s, Answer::Yes);
    press(u"cmdDeleteView"_s);
    EXPECT_EQ(text(u"cboView"_s), u"Active jobs"_s);
    EXPECT_FALSE(isEnabled(u"cmdDeleteView"_s));
    form().unload();

    core::SharedState& state = core::shared();
    state.CurrentUserName = u"floor"_s;
    state.CurrentUserNo = 77;
    expectBoxContaining(u"don't have the right"_s);
    EXPECT_EQ(Forms::show(u"frmJobList"_s), nullptr);
    database().execute(u"INSERT INTO SecurityUsers (id, objectID) SELECT 77, objectid FROM "
                       "SecurityObjects WHERE securitycode = 'mnuFileJob'"_s);
    openList(u"frmJobList"_s);
    for (const auto& column : table().model().columns())
        EXPECT_NE(column.kind, rows::Kind::Money) << column.title.toStdString();
    EXPECT_FALSE(text(u"lblTotals"_s).contains(u'$'));
}

TEST_P(ListTest, PrintAndCsvHoldWhatIsShown) {
    std::shared_ptr<const report::Document> printed;
    report::setPreviewer([&](std::shared_ptr<const report::Document> document,
                             const report::WindowPlacing&) { printed = std::move(document); });
    openList(u"frmCustomerList"_s);
    const auto lines = testsupport::readCsv(table().csv());
    ASSERT_EQ(static_cast<int>(lines.size()), order().count() + 1);
    EXPECT_EQ(lines.front().front(), u"Cust. #"_s);
    for (int place = 0; place < order().count(); ++place) {
        EXPECT_EQ(lines[static_cast<std::size_t>(place) + 1][1],
                  order().store()->shown(1, order().row(place)));
    }
    press(u"cmdPrint"_s);
    ASSERT_TRUE(printed);
    EXPECT_GE(printed->pageCount(), 1);
}

MIRSA_BOTH_ENGINES(ListTest);

} // namespace
