// The list of all jobs of a shop: opened, filtered letter by letter, sorted; the start page; what a
// part took before; and finding among a million records. MIRSA_BENCH_SHOP names a program folder
// with the made shop of twenty years, of a file or a server; records are added to it until there
// are a million.

#include "ShopBench.h"
#include "desk/ListReader.h"
#include "desk/ListScreen.h"
#include "desk/Screens.h"
#include "desk/StartFacts.h"
#include "desk/find/FindKinds.h"
#include "desk/find/Finder.h"
#include "desk/find/Indexer.h"
#include "estimating/memory/Memory.h"
#include "platform/controls/RowTable.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <random>
#include <thread>

namespace {

using shopbench::shop;

controls::RowTable* openList() {
    shop();
    screen::Form* form = screen::Forms::show(u"frmJobList"_s);
    dynamic_cast<desk::ListScreen*>(form)->showView(u"All jobs"_s);
    return dynamic_cast<controls::RowTable*>(form->control(u"lvwRows"_s)->parentWidget());
}

void close() {
    screen::Forms::find(u"frmJobList"_s)->unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

int rowsOf(const controls::RowTable* table) {
    return table->model().order().store() ? table->model().order().store()->count() : 0;
}

/// Until the latest rows stand there, or all of them.
void OpenList(benchmark::State& state, bool all) {
    const auto count = shop().lookup(u"SELECT COUNT(*) FROM Job"_s).toLong();
    for (auto _ : state) {
        const controls::RowTable* table = openList();
        while (rowsOf(table) < (all ? count : 1))
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QApplication::processEvents();
        state.PauseTiming();
        close();
        state.ResumeTiming();
    }
    state.counters["rows"] = static_cast<double>(count);
}
BENCHMARK_CAPTURE(OpenList, latest, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(OpenList, all, true)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadRows(benchmark::State& state) {
    const desk::ListReader reader(*desk::listKind(u"frmJob"_s), true);
    for (auto _ : state)
        benchmark::DoNotOptimize(reader.read(shop()));
}
BENCHMARK(ReadRows)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The longest keystroke of a word, from the key to the rows on the screen.
void Filter(benchmark::State& state, const char* column, const char* word) {
    controls::RowTable* table = openList();
    const auto count = shop().lookup(u"SELECT COUNT(*) FROM Job"_s).toLong();
    while (rowsOf(table) < count)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    int at = 0;
    while (table->model().columns()[static_cast<std::size_t>(at)].title != QLatin1String(column))
        ++at;
    double longest = 0;
    for (auto _ : state) {
        QString typed;
        for (const char* letter = word; *letter; ++letter) {
            typed += QLatin1Char(*letter);
            QElapsedTimer timer;
            timer.start();
            table->setFilter(at, typed);
            QApplication::processEvents();
            longest = std::max(longest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
        table->setFilter(at, {});
    }
    state.counters["longest key ms"] = longest;
    close();
}
BENCHMARK_CAPTURE(Filter, customer, "Customer", "tool")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, description, "Description", "plate a")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, price, "Price", "12.5")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Filter, date, "Due Date", "3/2/2")->Unit(benchmark::kMillisecond);

void Sort(benchmark::State& state, int column) {
    controls::RowTable* table = openList();
    const auto count = shop().lookup(u"SELECT COUNT(*) FROM Job"_s).toLong();
    while (rowsOf(table) < count)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    bool down = false;
    for (auto _ : state) {
        down = !down;
        table->sortBy(column, down);
        QApplication::processEvents();
    }
    close();
}
BENCHMARK_CAPTURE(Sort, customer, 1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, part, 3)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Sort, due, 7)->Unit(benchmark::kMillisecond);

void ReadStartPage(benchmark::State& state) {
    const desk::Rights rights = desk::Rights::read(shop());
    for (auto _ : state)
        benchmark::DoNotOptimize(desk::startSections(shop(), rights, QDate(2026, 11, 23)));
}
BENCHMARK(ReadStartPage)->Unit(benchmark::kMillisecond)->UseRealTime();

// The memory of the shop

/// A part of 40 jobs and one of 4,000, in place of parts that were made once each.
void repeatParts() {
    if (shop().hasRows(u"SELECT JobNo FROM Job WHERE PartNo = 'AGAIN-1'"_s))
        return;
    jet::Transaction transaction(shop());
    for (const char* table : {"Job", "Estimate"}) {
        const QString key = table == QByteArray("Job") ? u"JobNo"_s : u"EstNo"_s;
        shop().execute(u"UPDATE %1 SET PartNo = 'AGAIN-1' WHERE %2 MOD 5000 = 11"_s.arg(
            QString::fromLatin1(table), key));
        shop().execute(u"UPDATE %1 SET PartNo = 'AGAIN-2' WHERE %2 MOD 50 = 12"_s.arg(
            QString::fromLatin1(table), key));
    }
    transaction.commit();
    shop().tidy();
}

/// A look for an estimate of that part with so many operations, among the most used ones.
void Recall(benchmark::State& state, const char* part) {
    repeatParts();
    estimating::MemoryQuestion question{0, QString::fromLatin1(part), {}, true};
    jet::Recordset most = shop().openRecordset(
        u"SELECT TOP %1 OperNo FROM JobOper GROUP BY OperNo ORDER BY COUNT(*) DESC"_s.arg(
            state.range(0)),
        jet::RecordsetType::Snapshot);
    for (; !most.eof(); most.moveNext())
        question.operations.push_back({most[u"OperNo"].toLong(), {}, true});
    double longest = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        benchmark::DoNotOptimize(estimating::recall(shop(), question, QDate(2026, 11, 23)));
        longest = std::max(longest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    state.counters["longest ms"] = longest;
}
BENCHMARK_CAPTURE(Recall, part_of_40_jobs, "AGAIN-1")
    ->Arg(6)
    ->Arg(20)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Recall, part_of_4000_jobs, "AGAIN-2")
    ->Arg(6)
    ->Arg(20)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// Finding

void fillToAMillion() {
    qint64 records = 0;
    for (const desk::ListKind& kind : desk::listKinds())
        records += shop().lookup(u"SELECT COUNT(*) FROM "_s + kind.table).toLong();
    const QStringList words{u"bracket"_s, u"bushing"_s, u"fixture"_s, u"housing"_s, u"spindle"_s,
                            u"shaft"_s,   u"plate"_s,   u"flange"_s,  u"gear"_s,    u"sleeve"_s};
    std::mt19937 random(7);
    std::vector<std::vector<jet::Value>> rows;
    jet::Transaction transaction(shop());
    for (; records < 1'000'000; ++records) {
        const auto any = [&] { return words[static_cast<qsizetype>(random() % 10)]; };
        rows.push_back({static_cast<int>(1 + random() % 300),
                        u"%1%2-%3"_s.arg(QChar(u'A' + char16_t(random() % 26)))
                            .arg(random() % 10000)
                            .arg(random() % 100),
                        u"Shelf %1"_s.arg(random() % 500), u"PO-%1"_s.arg(random() % 90000),
                        u"%1 %2 for %3"_s.arg(any(), any(), any())});
        if (rows.size() == 5000 || records == 999'999) {
            shop().insertRows(u"SpareParts"_s,
                              {u"SCustID"_s, u"SPartNo"_s, u"SLocation"_s, u"SPoNo"_s, u"Notes"_s},
                              rows);
            rows.clear();
        }
    }
    transaction.commit();
    shop().tidy();
}

/// What people type, a letter at a time: numbers, part numbers, orders, words.
QStringList typedTexts() {
    QStringList whole;
    std::mt19937 random(11);
    for (const auto& [column, table, key] : {std::tuple{u"PONo"_s, u"Job"_s, u"JobNo"_s},
                                             {u"PartNo"_s, u"Job"_s, u"JobNo"_s},
                                             {u"PartNo"_s, u"Estimate"_s, u"EstNo"_s},
                                             {u"SPartNo"_s, u"SpareParts"_s, u"Index"_s},
                                             {u"Description"_s, u"Items"_s, u"ID"_s},
                                             {u"company"_s, u"Customer"_s, u"Custid"_s}}) {
        const auto most = shop().lookup(u"SELECT MAX([%1]) FROM %2"_s.arg(key, table)).toLong();
        for (int i = 0; i < 8; ++i) {
            const QString text =
                shop()
                    .lookup(u"SELECT [%1] FROM %2 WHERE [%3] = %4"_s.arg(
                        column, table, key, QString::number(1 + qint64(random()) % most)))
                    .toText();
            if (!text.isEmpty())
                whole << text;
        }
    }
    whole << u"bracket housing"_s << u"spindle for shaft"_s << u"104211"_s << u"acme"_s;
    QStringList typed;
    for (const QString& text : whole) {
        for (qsizetype length = 1; length <= std::min<qsizetype>(12, text.size()); ++length)
            typed << text.left(length);
    }
    return typed;
}

/// From the key to the list, `writes`: each right after another station's insert.
void Find(benchmark::State& state, bool writes) {
    static const QTemporaryDir folder;
    static bool filled = false;
    static double buildSeconds = 0;
    if (!std::exchange(filled, true))
        fillToAMillion();
    const QString location = shop().name();
    static std::unique_ptr<desk::Indexer> indexer;
    if (!shop().isServer() && !indexer) {
        QElapsedTimer building;
        building.start();
        indexer = std::make_unique<desk::Indexer>(location, folder.filePath(u"index"_s));
        while (indexer->looks() == 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        buildSeconds = static_cast<double>(building.elapsed()) / 1000;
        state.counters["index MB"] = static_cast<double>(QFileInfo(indexer->path()).size()) / 1e6;
    }
    const auto reading =
        shop().isServer() ? jet::Database::openServer(location) : jet::Database::openFile(location);
    desk::Finder finder(*reading, indexer ? indexer->path() : QString());
    QSet<int> kinds;
    for (std::size_t i = 0; i < desk::findKinds().size(); ++i)
        kinds.insert(static_cast<int>(i));
    const QStringList typed = typedTexts();
    benchmark::DoNotOptimize(finder.find(u"anything"_s, kinds)); // opened with the dialog
    std::vector<double> times;
    for (auto _ : state) {
        for (const QString& text : typed) {
            if (writes)
                shop().execute(u"INSERT INTO SpareParts (SCustID, SPartNo) VALUES (1, 'NEW')"_s);
            QElapsedTimer timer;
            timer.start();
            benchmark::DoNotOptimize(finder.find(text, kinds));
            times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        }
    }
    std::sort(times.begin(), times.end());
    state.counters["p50"] = times[times.size() / 2];
    state.counters["p95"] = times[times.size() * 95 / 100];
    state.counters["worst"] = times.back();
    state.counters["build s"] = buildSeconds;
    if (writes)
        indexer.reset();
}
BENCHMARK_CAPTURE(Find, quiet, false)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK_CAPTURE(Find, written, true)->Unit(benchmark::kMillisecond)->Iterations(2);

} // namespace

int main(int argc, char* argv[]) {
    return shopbench::run(argc, argv, desk::registerScreens);
}
