// What the journal of changes adds to a save: the same saves through the stores, without the
// triggers and with them. MIRSA_BENCH_SHOP names a program folder with a sample shop, of a file or
// a server; what is saved here is deleted at the end.

#include "core/journal/JournalTriggers.h"
#include "estimating/EstimateStore.h"
#include "jobs/JobStore.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "purchasing/PoStore.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

jet::Database& shop() {
    static const auto database = jet::openProgramFolder(qEnvironmentVariable("MIRSA_BENCH_SHOP"));
    return *database;
}

/// The journal for a scope; it is kept again afterwards.
class Kept {
  public:
    explicit Kept(bool kept) {
        if (!kept)
            core::removeJournal(shop());
        jet::Native(shop()).setWriter(kept ? u"Bench"_s : QString());
    }
    ~Kept() { core::installJournal(shop()); }
    Kept(const Kept&) = delete;
    Kept& operator=(const Kept&) = delete;
};

/// An estimate of 50 operations, of which so many are changed by each save.
void SaveAnEstimate(benchmark::State& state, bool kept, int changed) {
    estimating::EstimateDraft draft;
    draft.header.custId = 1;
    for (int i = 0; i < 50; ++i) {
        estimating::OperRow row;
        row.operNo = 1 + i % 5;
        row.time = 1;
        draft.operations.push_back(row);
    }
    const qint64 number = estimating::saveEstimate(shop(), 0, draft).key;
    {
        const Kept journal(kept);
        double n = 0;
        for (auto _ : state) {
            const estimating::EstimateDraft before = draft;
            ++n;
            for (int i = 0; i < changed; ++i)
                draft.operations[static_cast<std::size_t>(i)].time = n;
            draft.header.partNo = QString::number(n);
            estimating::saveEstimate(shop(), number, draft, &before);
        }
    }
    estimating::deleteEstimate(shop(), number);
}

/// The job with the most operations: its notes, and the estimated time of one operation.
void SaveAJob(benchmark::State& state, bool kept) {
    const Kept journal(kept);
    const qint64 number = shop()
                              .lookup(u"SELECT TOP 1 JobNo FROM JobOper GROUP BY JobNo ORDER BY "
                                      "COUNT(*) DESC"_s)
                              .toLong();
    const jobs::JobDraft stored = *jobs::loadJob(shop(), number);
    jobs::JobDraft draft = stored, before = stored;
    double n = 0;
    for (auto _ : state) {
        before = draft;
        draft.header.jobNotes = QString::number(++n);
        draft.operations.front().estimated = n;
        jobs::saveJob(shop(), number, draft, &before);
    }
    before = draft;
    draft.header = stored.header;
    draft.operations.front().estimated = stored.operations.front().estimated;
    jobs::saveJob(shop(), number, draft, &before);
}

/// A purchase order of 50 lines; its lines are written anew where one is changed.
void SaveAnOrder(benchmark::State& state, bool kept) {
    purchasing::OrderDocument order;
    order.vendor.vendorId = 1;
    order.vendor.company = u"Bench"_s;
    for (int i = 0; i < 50; ++i) {
        purchasing::OrderLine line;
        line.itemNumber = i + 1;
        line.description = u"Made up part of a long order"_s;
        line.quantity = 1;
        line.complete();
        order.lines.push_back(line);
    }
    purchasing::storeOrder(shop(), 0, order, nullptr);
    const qint64 number = order.documentNo;
    {
        const Kept journal(kept);
        order = *purchasing::loadOrder(shop(), number);
        for (auto _ : state) {
            const purchasing::OrderDocument before = order;
            order.header.title = order.header.title == u"A" ? u"B"_s : u"A"_s;
            ++order.lines.front().quantity;
            order.lines.front().complete();
            purchasing::storeOrder(shop(), number, order, &before);
            state.PauseTiming();
            order = *purchasing::loadOrder(shop(), number);
            state.ResumeTiming();
        }
    }
    purchasing::deleteOrder(shop(), number);
}

BENCHMARK_CAPTURE(SaveAnEstimate, OneLineOf50WithoutJournal, false, 1);
BENCHMARK_CAPTURE(SaveAnEstimate, OneLineOf50, true, 1);
BENCHMARK_CAPTURE(SaveAnEstimate, All50LinesWithoutJournal, false, 50);
BENCHMARK_CAPTURE(SaveAnEstimate, All50Lines, true, 50);
BENCHMARK_CAPTURE(SaveAJob, WithoutJournal, false);
BENCHMARK_CAPTURE(SaveAJob, WithJournal, true);
BENCHMARK_CAPTURE(SaveAnOrder, OneLineOf50WithoutJournal, false);
BENCHMARK_CAPTURE(SaveAnOrder, OneLineOf50, true);

} // namespace

int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("MIRSA_BENCH_SHOP")) {
        std::fputs("MIRSA_BENCH_SHOP has to name a program folder with a sample shop.\n", stderr);
        return 2;
    }
    shop().execute(u"UPDATE SystemSettings SET LargeNumbers = True"_s); // each save takes numbers
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
