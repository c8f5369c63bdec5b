#include "platform/jet/Location.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "timemgmt/exceptions/ExceptionList.h"
#include "timemgmt/payroll/PayrollHours.h"

#include <benchmark/benchmark.h>

// The time records of the shop that MIRSA_BENCH_SHOP names: see AppBench.cpp.

namespace {

using timemgmt::ExceptionList;

std::unique_ptr<jet::Database> connect() {
    return jet::openProgramFolder(qEnvironmentVariable("MIRSA_BENCH_SHOP"));
}

void allExceptions(benchmark::State& state) {
    const auto database = connect();
    for (auto _ : state) {
        ExceptionList list;
        list.readAll(*database, values::now(), connect);
        state.counters["lines"] = static_cast<double>(list.count());
    }
    state.counters["records"] = database->lookup(u"SELECT COUNT(*) FROM Timelog"_s).toDouble();
}
BENCHMARK(allExceptions)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(5);

/// What keeps the list up to date.
void refreshExceptions(benchmark::State& state) {
    const auto database = connect();
    ExceptionList list;
    list.readAll(*database, values::now(), connect);
    for (auto _ : state)
        list.refresh(*database, values::now());
}
BENCHMARK(refreshExceptions)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(10);

/// The payroll of everybody, for so many days.
void payroll(benchmark::State& state) {
    const auto database = connect();
    const QDate to = database->lookup(u"SELECT MAX(Sign_in) FROM Sign_in"_s).toDate().value();
    for (auto _ : state)
        benchmark::DoNotOptimize(
            timemgmt::readPayroll(*database, to.addDays(1 - state.range(0)), to));
}
BENCHMARK(payroll)->Arg(7)->Arg(365)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
