#pragma once

#include "core/MirsaMain.h"
#include "platform/jet/Location.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <cstdio>

/// Benchmarks of screens on a shop: MIRSA_BENCH_SHOP names a program folder with a delivered one,
/// of a file or a server.
namespace shopbench {

/// The shop, the administrator signed in.
inline jet::Database& shop() {
    core::SharedState& state = core::shared();
    if (!state.MainDatabase) {
        state.ProgramFolder = qEnvironmentVariable("MIRSA_BENCH_SHOP");
        state.MainDatabase = jet::openProgramFolder(state.ProgramFolder);
        state.CurrentUserName = u"Admin"_s;
        state.CurrentUserNo = 1;
    }
    return *state.MainDatabase;
}

inline int run(int argc, char* argv[], void (*registerScreens)()) {
    if (qEnvironmentVariableIsEmpty("MIRSA_BENCH_SHOP")) {
        std::fputs("MIRSA_BENCH_SHOP has to name a program folder with a delivered shop.\n",
                   stderr);
        return 2;
    }
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    registerScreens();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    const auto open = screen::Forms::all();
    for (screen::Form* form : open)
        form->unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    core::shared().MainDatabase.reset();
    return 0;
}

} // namespace shopbench
