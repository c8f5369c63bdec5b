// What people wait for, on a whole shop: the program folder that MIRSA_BENCH_SHOP names. The
// figures in docs/performance.md are of one made with: mirsa-setup sample FOLDER --years 20 --jobs
// 200000. Saving adds an estimate of its own and deletes it again.

#include "ShopBench.h"
#include "app/Screens.h"
#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/records/RecordScreen.h"
#include "estimating/EstimateStore.h"
#include "jobs/JobCosting.h"
#include "jobs/JobStore.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DataControl.h"
#include "platform/controls/DateField.h"
#include "platform/controls/ListView.h"

#include <sqlite3.h>

#include <QCheckBox>
#include <QPushButton>

using screen::Forms;
using shopbench::shop;

namespace {

/// The screens of a record module on the shop, as they stand in the shell.
screen::Form* openModule(const char* name) {
    shop();
    screen::Form* form = Forms::show(QString::fromLatin1(name));
    QApplication::processEvents();
    return form;
}

void closeModule(screen::Form* form) {
    form->unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}

/// From nothing to the login, the splash aside: database, shell with its menus cut down, login
/// shown.
void StartToLogin(benchmark::State& state) {
    core::shared().MainDatabase.reset();
    for (auto _ : state) {
        shop();
        core::MDIMain shell;
        shell.SecureMenuObjects();
        shell.show();
        const auto login = Forms::make(u"frmLogin"_s);
        login->load();
        login->show();
        QApplication::processEvents();
        state.PauseTiming();
        login->hide();
        shell.hide();
        core::shared().MainDatabase.reset();
        state.ResumeTiming();
    }
    Forms::setHost({}, {});
}

void OpenModule(benchmark::State& state, const char* name) {
    for (auto _ : state) {
        screen::Form* form = openModule(name);
        state.PauseTiming();
        closeModule(form);
        state.ResumeTiming();
    }
}

void MoveInModule(benchmark::State& state, const char* name, const char* dataControl) {
    screen::Form* form = openModule(name);
    auto* data = form->control<controls::DataControl>(QString::fromLatin1(dataControl));
    bool forward = false;
    int steps = 0;
    for (auto _ : state) {
        if (steps++ % 50 == 0)
            forward = !forward;
        if (forward)
            data->movePrevious();
        else
            data->moveNext();
        QApplication::processEvents();
    }
    closeModule(form);
}

void GoToByNumber(benchmark::State& state, const char* name, const char* largest) {
    screen::Form* form = openModule(name);
    auto* record = dynamic_cast<core::RecordScreen*>(form);
    const qint64 last = shop().lookup(QString::fromLatin1(largest)).toLong();
    qint64 number = 1;
    for (auto _ : state) {
        number = (number * 7919 + 13) % last + 1;
        record->goToRecord(number);
        QApplication::processEvents();
    }
    closeModule(form);
}

estimating::EstimateDraft draftOf(int lines) {
    estimating::EstimateDraft draft;
    draft.header.custId = 1;
    draft.header.rfqNo = u"BENCH"_s;
    draft.header.partNo = u"BENCH-50"_s;
    draft.header.quantity = 10;
    draft.header.estDate = QDate(2026, 3, 2);
    for (int i = 0; i < lines; ++i) {
        estimating::OperRow row;
        row.operNo = i + 1;
        row.time = i + 0.25;
        row.rate = values::Currency::fromInteger(60);
        draft.operations.push_back(row);
    }
    return draft;
}

void SaveEstimateOf50Lines(benchmark::State& state) {
    jet::Database& database = shop();
    estimating::EstimateDraft draft = draftOf(50);
    const qint64 estNo = estimating::saveEstimate(database, 0, draft).key;
    double n = 0;
    for (auto _ : state) {
        // Unchanged rows would not be written.
        const estimating::EstimateDraft before = draft;
        for (estimating::OperRow& row : draft.operations)
            row.time = ++n;
        estimating::saveEstimate(database, estNo, draft, &before);
    }
    estimating::deleteEstimate(database, estNo);
}

/// The same writes through bare prepared statements: the row, 50 rows deleted, 50 inserted.
void SaveEstimateOf50LinesBare(benchmark::State& state) {
    shop();
    sqlite3* db = nullptr;
    sqlite3_open(QString(core::shared().ProgramFolder + u"/Mirsa.mdb"_s).toUtf8().constData(), &db);
    sqlite3_exec(db, "PRAGMA synchronous = NORMAL", nullptr, nullptr, nullptr);
    sqlite3_busy_timeout(db, 20000);
    const auto prepare = [db](const char* sql) {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
        return statement;
    };
    sqlite3_stmt* update = prepare(
        "UPDATE Estimate SET Quantity = ?1, QtyPriceA = ?1, PartNo = 'BENCH' WHERE EstNo = 1");
    sqlite3_stmt* remove = prepare("DELETE FROM EstOper WHERE EstNo = -7");
    sqlite3_stmt* insert =
        prepare("INSERT INTO EstOper (EstNo, SeqNo, OperNo, OperTime_Amount, OperShopRate) "
                "VALUES (-7, ?1, ?1, ?2, 60)");
    const auto step = [](sqlite3_stmt* statement) {
        sqlite3_step(statement);
        sqlite3_reset(statement);
    };
    sqlite3_exec(db, "SAVEPOINT keep; RELEASE keep", nullptr, nullptr, nullptr);
    const auto restore =
        QByteArray("SELECT Quantity, QtyPriceA, PartNo FROM Estimate WHERE EstNo = 1");
    sqlite3_stmt* read = prepare(restore.constData());
    sqlite3_step(read);
    const int quantity = sqlite3_column_int(read, 0);
    const double price = sqlite3_column_double(read, 1);
    const QByteArray part(reinterpret_cast<const char*>(sqlite3_column_text(read, 2)));
    sqlite3_finalize(read);
    int n = 0;
    for (auto _ : state) {
        sqlite3_exec(db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        sqlite3_bind_int(update, 1, ++n);
        step(update);
        step(remove);
        for (int i = 1; i <= 50; ++i) {
            sqlite3_bind_int(insert, 1, i);
            sqlite3_bind_double(insert, 2, i + n);
            step(insert);
        }
        sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    }
    step(remove);
    for (sqlite3_stmt* statement : {update, remove, insert})
        sqlite3_finalize(statement);
    sqlite3_stmt* back =
        prepare("UPDATE Estimate SET Quantity = ?1, QtyPriceA = ?2, PartNo = ?3 WHERE EstNo = 1");
    sqlite3_bind_int(back, 1, quantity);
    sqlite3_bind_double(back, 2, price);
    sqlite3_bind_text(back, 3, part.constData(), -1, SQLITE_TRANSIENT);
    step(back);
    sqlite3_finalize(back);
    sqlite3_close(db);
}

void UpdateJobCostOfOneJob(benchmark::State& state) {
    jet::Database& database = shop();
    const qint64 last = database.lookup(u"SELECT MAX(JobNo) FROM Job"_s).toLong();
    qint64 number = 1;
    for (auto _ : state) {
        number = (number * 7919 + 13) % last + 1;
        jobs::UpdateJobCost(database, number);
    }
}

/// A job is saved as it stands: its rows read, joined and written, its cost rolled up.
void SaveAJob(benchmark::State& state) {
    jet::Database& database = shop();
    const qint64 jobNo = database
                             .lookup(u"SELECT TOP 1 JobNo FROM JobOper GROUP BY JobNo "
                                     "ORDER BY COUNT(*) DESC"_s)
                             .toLong();
    jobs::JobDraft draft = *jobs::loadJob(database, jobNo);
    const jobs::JobDraft before = draft;
    for (auto _ : state)
        jobs::saveJob(database, jobNo, draft, &before);
    state.counters["operations"] = static_cast<double>(draft.operations.size());
}

/// Time booked by hand: the whole time log opened to add one row, which is undone.
void AddToTheTimeLog(benchmark::State& state) {
    jet::Database& database = shop();
    for (auto _ : state) {
        const jet::Transaction transaction(database);
        jet::Recordset rows = database.openRecordset(u"Select * from timelog"_s);
        rows.addNew();
        rows.set(u"EmpID", 1);
        rows.set(u"AccumTime", 0.25);
        rows.set(u"Status", u"0"_s);
        rows.update();
    }
}

/// A year of one employee's work and attendance, shown in Time Management.
void ShowAYearOfOneEmployee(benchmark::State& state) {
    screen::Form* form = openModule("frmTM");
    const auto last = shop().lookup(u"SELECT MAX(Sign_in) FROM Sign_in"_s).toDate();
    form->control<controls::DataCombo>(u"dbcEmpNum"_s)->setText(u"7"_s);
    form->control<controls::DateField>(u"dbcDate1"_s)->setDate(last->addYears(-1));
    form->control<QCheckBox>(u"chkTO"_s)->click();
    form->control<controls::DateField>(u"dbcDate2"_s)->setDate(last);
    auto* show = form->control<QPushButton>(u"chkShow"_s);
    for (auto _ : state) {
        show->click();
        QApplication::processEvents();
        state.PauseTiming();
        state.counters["rows"] = form->control<controls::ListView>(u"sprMain"_s)->rowCount();
        show->click();
        state.ResumeTiming();
    }
    closeModule(form);
}

BENCHMARK(StartToLogin)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK_CAPTURE(OpenModule, Customer, "frmCustomer")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(OpenModule, Estimate, "frmEstimate")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(OpenModule, Job, "frmJob")->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK_CAPTURE(OpenModule, Operations, "frmOperation")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK_CAPTURE(OpenModule, TimeManagement, "frmTM")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(10);
BENCHMARK(ShowAYearOfOneEmployee)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_CAPTURE(MoveInModule, Estimate, "frmEstimate", "datEstimate")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200);
BENCHMARK_CAPTURE(MoveInModule, Job, "frmJob", "datJob")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200);
BENCHMARK_CAPTURE(GoToByNumber, Estimate, "frmEstimate", "SELECT MAX(EstNo) FROM Estimate")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(100);
BENCHMARK(SaveEstimateOf50LinesBare)->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(SaveEstimateOf50Lines)->Unit(benchmark::kMillisecond)->Iterations(100);
BENCHMARK(UpdateJobCostOfOneJob)->Unit(benchmark::kMillisecond)->Iterations(300);
BENCHMARK(SaveAJob)->Unit(benchmark::kMillisecond)->Iterations(200);
BENCHMARK(AddToTheTimeLog)->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char* argv[]) {
    return shopbench::run(argc, argv, app::registerAllScreens);
}
