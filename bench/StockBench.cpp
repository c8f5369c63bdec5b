// The explorer over a large stock: 100,000 items in 5,000 folders of either tree. MIRSA_BENCH_SHOP
// names a program folder with a delivered shop, of a file or a server, which is filled if its stock
// is smaller.

#include "ShopBench.h"
#include "app/Screens.h"
#include "inventory/InventoryDialogs.h"

#include <QPushButton>

using namespace inventory;
using shopbench::shop;

namespace {

constexpr int folderCount = 5000;
constexpr int itemCount = 100'000;

/// Half of a tree's folders stand below the others, which stand below a hundred at the top.
void fillFolders(jet::Database& database, const View& view) {
    std::vector<std::vector<jet::Value>> rows;
    for (int i = 1; i <= folderCount; ++i) {
        const int parent = i <= 100 ? 0 : i <= folderCount / 2 ? 1 + i % 100 : i - folderCount / 2;
        rows.push_back({i, view.word + u" "_s + QString::number(i), parent});
    }
    database.execute(u"DELETE * FROM "_s + view.table);
    database.insertRows(view.table, {u"ID"_s, u"Description"_s, u"Parent"_s}, rows);
}

void fill(jet::Database& database) {
    if (database.lookup(u"SELECT COUNT(*) FROM Items"_s).toLong() >= itemCount)
        return;
    jet::Transaction transaction(database);
    fillFolders(database, typeView());
    fillFolders(database, locationView());
    std::vector<std::vector<jet::Value>> rows;
    for (int i = 0; i < itemCount; ++i) {
        const QString number = QString::number(i * 7919LL % itemCount);
        rows.push_back({u"Made up item of the stock "_s + number, u"P-"_s + number, u"EA"_s,
                        i % 400, values::Currency::fromInteger(3), i % 7, 1 + i % folderCount,
                        1 + i * 31 % folderCount});
        if (rows.size() < 2000)
            continue;
        database.insertRows(u"Items"_s,
                            {u"Description"_s, u"PartNumber"_s, u"Units"_s, u"Quantity"_s,
                             u"PricePer"_s, u"FlagQuantity"_s, u"Type"_s, u"Location"_s},
                            rows);
        rows.clear();
    }
    transaction.commit();
    database.tidy();
}

screen::Form* explorer() {
    shop();
    screen::Form* form = screen::Forms::show(u"frmInventory"_s);
    QApplication::processEvents();
    return form;
}

/// Another folder each time, opened along its path, its list drawn.
void OpenFolder(benchmark::State& state) {
    auto* form = dynamic_cast<Explorer*>(explorer());
    qint64 item = 1;
    for (auto _ : state) {
        item = 1 + (item + 7727) % itemCount;
        form->goToItem(item);
        QApplication::processEvents();
    }
}
BENCHMARK(OpenFolder)->Unit(benchmark::kMillisecond);

void ChangeView(benchmark::State& state) {
    screen::Form* form = explorer();
    auto* button = form->control<QPushButton>(u"Toolbar1"_s);
    for (auto _ : state) {
        button->click();
        QApplication::processEvents();
    }
}
BENCHMARK(ChangeView)->Unit(benchmark::kMillisecond);

/// A piece that is in ten, a hundred, and a part number that is in none.
void Find(benchmark::State& state) {
    const QString pieces[] = {u"stock 1234"_s, u"stock 99"_s, u"nowhere"_s};
    const QString piece = pieces[state.range(0)];
    std::size_t found = 0;
    for (auto _ : state)
        found = findItems(shop(), piece, {}).size();
    state.counters["rows"] = static_cast<double>(found);
}
BENCHMARK(Find)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

void QueryAFolderWithAllBelow(benchmark::State& state) {
    StockQuestion question;
    question.type = {.used = true, .range = false, .first = {}, .second = {}, .folder = 7};
    std::size_t found = 0;
    for (auto _ : state)
        found = findStock(shop(), question).size();
    state.counters["rows"] = static_cast<double>(found);
}
BENCHMARK(QueryAFolderWithAllBelow)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[]) {
    return shopbench::run(argc, argv, [] {
        app::registerAllScreens();
        fill(shop());
    });
}
