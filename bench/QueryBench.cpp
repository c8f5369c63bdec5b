// Results of a query that finds 100,000 jobs: shown, sorted, written as CSV and read again.
// MIRSA_BENCH_SHOP names a program folder with a delivered shop, of a file or a server, which is
// filled if it has fewer jobs.

#include "ShopBench.h"
#include "app/Screens.h"
#include "platform/controls/Field.h"
#include "platform/controls/Grid.h"
#include "platform/controls/GridTools.h"
#include "reporting/QueryForm.h"
#include "support/CsvReader.h"

namespace {

constexpr int jobCount = 100'000;

void fill(jet::Database& database) {
    if (database.lookup(u"SELECT COUNT(*) FROM Job"_s).toLong() >= jobCount)
        return;
    jet::Transaction transaction(database);
    std::vector<std::vector<jet::Value>> rows;
    for (int i = 1; i <= jobCount; ++i) {
        const QDate in = QDate(2010, 1, 4).addDays(i * 7919LL % 6000);
        rows.push_back({1 + i % 300, u"PO-%1"_s.arg(i % 5000), u"WW-%1"_s.arg(i * 31 % 90000),
                        u"Bracket, \"as drawn\", rev. %1"_s.arg(i % 9), i % 400, in, in.addDays(30),
                        i % 8 != 0, 0});
        if (rows.size() < 2000)
            continue;
        database.insertRows(u"Job"_s,
                            {u"CustID"_s, u"PONo"_s, u"PartNo"_s, u"Description"_s, u"Quantity"_s,
                             u"JobDateIn"_s, u"JobDueDate"_s, u"Shipped"_s, u"AssemblyJobNo"_s},
                            rows);
        rows.clear();
    }
    transaction.commit();
    database.tidy();
}

reporting::QueryForm* question() {
    auto* form = dynamic_cast<reporting::QueryForm*>(screen::Forms::show(u"frmJobQuery"_s));
    dynamic_cast<controls::Field*>(form->control(u"dbcJob1"_s))->setText(u"1"_s);
    form->control<QAbstractButton>(u"chkJob"_s)->setChecked(true);
    dynamic_cast<controls::Field*>(form->control(u"dbcJob2"_s))->setText(QString::number(jobCount));
    QApplication::processEvents();
    return form;
}

controls::Grid* results() {
    return screen::Forms::find(u"frmJobQresults"_s)->control<controls::Grid>(u"sprJobFound"_s);
}

void close() {
    for (const QString& name : {u"frmJobQresults"_s, u"frmJobQuery"_s}) {
        if (screen::Form* form = screen::Forms::find(name))
            form->unload();
    }
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// From the button to the rows on the screen.
void ShowResults(benchmark::State& state) {
    reporting::QueryForm* form = question();
    int rows = 0;
    for (auto _ : state) {
        form->cmdGenerate_Click();
        QApplication::processEvents();
        rows = results()->rowCount();
    }
    state.counters["rows"] = rows;
    close();
}
BENCHMARK(ShowResults)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A click on a header, and the rows on the screen again.
void SortBy(benchmark::State& state, int column) {
    question()->cmdGenerate_Click();
    bool down = false;
    for (auto _ : state) {
        down = !down;
        results()->sortByColumn(column, down ? Qt::DescendingOrder : Qt::AscendingOrder);
        QApplication::processEvents();
    }
    close();
}
BENCHMARK_CAPTURE(SortBy, number, 1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortBy, text, 4)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(SortBy, date, 6)->Unit(benchmark::kMillisecond)->UseRealTime();

void WriteCsv(benchmark::State& state) {
    question()->cmdGenerate_Click();
    controls::Grid* grid = results();
    QByteArray file;
    for (auto _ : state)
        file = grid->tools().csv();
    const auto read = testsupport::readCsv(file);
    bool same = read.size() == static_cast<size_t>(grid->rowCount()) + 1;
    for (int row = 0; same && row < grid->rowCount(); ++row) {
        const QStringList& line = read[static_cast<size_t>(row) + 1];
        for (const int column : {0, 2, 3, 4, 5}) // texts and numbers are as they are shown
            same = same && line[column] == grid->text(row, column);
        same = same && QDate::fromString(line[6], Qt::ISODate).toString(u"M/d/yyyy"_s) ==
                           grid->text(row, 6);
    }
    if (!same)
        state.SkipWithError("what was written reads back as something else");
    state.counters["bytes"] = static_cast<double>(file.size());
    close();
}
BENCHMARK(WriteCsv)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char* argv[]) {
    return shopbench::run(argc, argv, [] {
        app::registerAllScreens();
        fill(shopbench::shop());
    });
}
