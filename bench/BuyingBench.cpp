// A purchase order of 500 lines, and the offers of 20 vendors for 50 lines side by side.
// MIRSA_BENCH_SHOP names a program folder with a delivered shop, of a file or a server; what is
// bought here is added to it, and deleted at the end.

#include "ShopBench.h"
#include "core/Screens.h"
#include "purchasing/PoStore.h"
#include "purchasing/RfqStore.h"
#include "purchasing/Screens.h"
#include "purchasing/VendorMatrix.h"

#include <QKeyEvent>
#include <QPushButton>

using namespace purchasing;
using screen::Forms;
using shopbench::shop;

namespace {

std::vector<OrderLine> madeUpLines(int count, int vendor) {
    std::vector<OrderLine> lines(static_cast<std::size_t>(count));
    int number = 0;
    for (OrderLine& line : lines) {
        line.itemNumber = ++number;
        line.partNumber = u"B-%1"_s.arg(number);
        line.description = u"Made up part of a long order"_s;
        line.units = u"EA"_s;
        line.quantity = number;
        line.unitPrice =
            values::Currency::fromTenThousandths(10000 + (number * 7919 + vendor * 13) % 5000);
        line.complete();
    }
    return lines;
}

std::vector<qint64> addVendors(int count) {
    std::vector<qint64> vendors;
    for (int i = 0; i < count; ++i) {
        shop().execute(u"INSERT INTO Vendor (Company) VALUES ('Bench %1')"_s.arg(i));
        vendors.push_back(shop().lastCounter());
    }
    return vendors;
}

void deleteVendors() {
    shop().execute(u"DELETE * FROM Vendor WHERE Company LIKE 'Bench *'"_s);
}

qint64 addOrder(int lines) {
    const qint64 vendor = addVendors(1).front();
    jet::Transaction transaction(shop());
    shop().execute(u"INSERT INTO PO (Title, Active) VALUES ('Bench', True)"_s);
    const qint64 order = shop().lastCounter();
    shop().execute(u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (%1, %2, "
                   "'Bench 0')"_s.arg(order)
                       .arg(vendor));
    replacePoLines(shop(), order, {}, madeUpLines(lines, 0));
    transaction.commit();
    return order;
}

void close(screen::Form* form) {
    form->unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// The screen opens on the last order.
void OpenAnOrderOf500Lines(benchmark::State& state) {
    const qint64 order = addOrder(500);
    for (auto _ : state) {
        screen::Form* form = Forms::show(u"frmPO"_s);
        QApplication::processEvents();
        state.PauseTiming();
        close(form);
        state.ResumeTiming();
    }
    deleteOrder(shop(), order);
    deleteVendors();
}
BENCHMARK(OpenAnOrderOf500Lines)->Unit(benchmark::kMillisecond);

/// A letter typed into the title, saved, shown again.
void SaveAnOrderOf500Lines(benchmark::State& state) {
    const qint64 order = addOrder(500);
    screen::Form* form = Forms::show(u"frmPO"_s);
    for (auto _ : state) {
        state.PauseTiming();
        form->control<QPushButton>(u"cmdEdit"_s)->click();
        auto* title = form->control(u"txtTitle"_s);
        title->setFocus();
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, u"x"_s);
        QApplication::sendEvent(title, &letter);
        QApplication::processEvents();
        state.ResumeTiming();
        form->control<QPushButton>(u"cmdSave"_s)->click();
        QApplication::processEvents();
    }
    close(form);
    deleteOrder(shop(), order);
    deleteVendors();
}
BENCHMARK(SaveAnOrderOf500Lines)->Iterations(40)->Unit(benchmark::kMillisecond);

void CompareTwentyVendorsByFiftyLines(benchmark::State& state) {
    const std::vector<qint64> vendors = addVendors(20);
    const qint64 group = createGroup(shop(), vendors.front());
    for (std::size_t i = 0; i < vendors.size(); ++i) {
        if (i > 0)
            addVendor(shop(), group, vendors[i]);
        replaceRfqLines(shop(), group, vendors[i], madeUpLines(50, int(i)));
    }
    std::size_t cells = 0;
    for (auto _ : state) {
        const VendorMatrix matrix = loadMatrix(shop(), group);
        cells = matrix.lines.size() * matrix.vendors.size();
    }
    state.counters["offers"] = static_cast<double>(cells);
    deleteGroup(shop(), group);
    deleteVendors();
}
BENCHMARK(CompareTwentyVendorsByFiftyLines)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char* argv[]) {
    return shopbench::run(argc, argv, [] {
        core::registerScreens();
        purchasing::registerScreens();
    });
}
