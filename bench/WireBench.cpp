// What each step of a person costs at the far end of a line, and beside it how long another writer
// has to wait meanwhile:
//
//   bench_wire FOLDER [ROUND_TRIP_MS...]
//
// FOLDER is a program folder with a shop. Of a server the steps are taken over a line of each round
// trip (1, 10 and 40 ms); of a file they are taken once with nothing of it in memory ("cold") and
// then warm. The shop gets an estimate of 50 lines and a job of 7 operations, which go again.

#include "app/Screens.h"
#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/records/RecordScreen.h"
#include "estimating/AssemblyTree.h"
#include "estimating/EstimateStore.h"
#include "jobs/JobStore.h"
#include "platform/controls/DataControl.h"
#include "platform/controls/Field.h"
#include "platform/jet/Location.h"
#include "platform/report/Report.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"
#include "support/DelayingLine.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

using screen::Forms;
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point from) {
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

struct Measured {
    std::vector<double> milliseconds;
    quint64 waits = 0;      ///< the most of all rounds
    double otherWriter = 0; ///< the longest that another station's write took meanwhile
};

/// The steps in the order in which they were first taken, measured over one line.
class Column {
  public:
    Measured& of(const QString& step) {
        const auto found = std::find_if(m_steps.begin(), m_steps.end(),
                                        [&](const auto& each) { return each.first == step; });
        if (found != m_steps.end())
            return found->second;
        return m_steps.emplace_back(step, Measured()).second;
    }
    const std::vector<std::pair<QString, Measured>>& steps() const { return m_steps; }

  private:
    std::vector<std::pair<QString, Measured>> m_steps;
};

double median(std::vector<double> values) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// A station beside the server that writes all the time, and how long that took at most.
class OtherWriter {
  public:
    explicit OtherWriter(const QString& folder) {
        m_thread = std::thread([this, folder] {
            const auto database = jet::openProgramFolder(folder);
            while (!m_stop) {
                const auto from = Clock::now();
                jet::Transaction transaction(*database);
                database->execute(u"UPDATE Customer SET Company = Company WHERE CustID = 1"_s);
                transaction.commit();
                const double took = millisecondsSince(from);
                if (took > m_longest)
                    m_longest = took;
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        });
    }
    ~OtherWriter() {
        m_stop = true;
        m_thread.join();
    }
    void begin() { m_longest = 0; }
    double longest() const { return m_longest; }

  private:
    std::atomic<bool> m_stop = false;
    std::atomic<double> m_longest = 0;
    std::thread m_thread;
};

/// A desk at one end of a line.
class Desk {
  public:
    /// `folder` is where the desk finds the shop, `beside` where somebody without the line does.
    Desk(QString folder, const QString& beside, Column& column)
        : m_folder(std::move(folder)), m_column(column) {
        if (!beside.isEmpty())
            m_other = std::make_unique<OtherWriter>(beside);
    }

    /// All steps, `rounds` times.
    void work(int rounds) {
        start();
        prepare();
        for (int round = 0; round < rounds; ++round) {
            module(u"customers"_s, u"frmCustomer"_s, 0, u"txtCustomer"_s, u"a customer"_s);
            module(u"estimates"_s, u"frmEstimate"_s, m_estimate, u"txtDescription"_s,
                   u"an estimate of 50 lines"_s);
            module(u"jobs"_s, u"frmJob"_s, m_job, u"txtDescription"_s, u"a job of 7 operations"_s);
            for (const auto& [words, name] : {std::pair{u"operations"_s, u"frmOperation"_s},
                                              {u"employees"_s, u"frmEmployee"_s},
                                              {u"requests"_s, u"frmRFQ"_s},
                                              {u"orders"_s, u"frmPO"_s},
                                              {u"the stock"_s, u"frmInventory"_s},
                                              {u"time management"_s, u"frmTM"_s}}) {
                step(u"Open "_s + words, [name = name] { Forms::show(name); });
                close(name);
            }
            jobPapers();
        }
        estimating::deleteEstimate(core::MainDatabase(), m_estimate);
        jobs::deleteJob(core::MainDatabase(), m_job);
        end();
    }

  private:
    void start() {
        core::SharedState& state = core::shared();
        state.ProgramFolder = m_folder;
        const auto from = Clock::now();
        state.MainDatabase = jet::openProgramFolder(m_folder);
        m_shell = std::make_unique<core::MDIMain>();
        m_shell->SecureMenuObjects();
        const auto login = Forms::make(u"frmLogin"_s);
        login->load();
        QApplication::processEvents();
        Measured& started = m_column.of(u"Start to login"_s);
        started.milliseconds.push_back(millisecondsSince(from));
        started.waits = std::max(started.waits, state.MainDatabase->waits());
        set(login.get(), u"txtUserId"_s, u"Admin"_s);
        set(login.get(), u"txtUserPassword"_s, u"Bolts"_s);
        step(u"Sign in"_s, [&] { press(login.get(), u"cmdOk"_s); });
        state.CurrentUserName = u"Admin"_s;
        state.CurrentUserNo = 1;
    }

    void end() {
        const auto open = Forms::all();
        for (screen::Form* form : open)
            form->unload();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_shell.reset();
        Forms::setHost({}, {});
        core::shared().MainDatabase.reset();
    }

    void prepare() {
        const auto rows = [](int count) {
            std::vector<estimating::OperRow> made;
            for (int i = 1; i <= count; ++i) {
                estimating::OperRow row;
                row.operNo = i;
                row.time = i + 0.25;
                row.rate = values::Currency::fromInteger(60);
                made.push_back(row);
            }
            return made;
        };
        estimating::EstimateDraft estimate;
        estimate.header.custId = 1;
        estimate.header.rfqNo = u"WIRE"_s;
        estimate.header.partNo = u"WIRE-50"_s;
        estimate.header.quantity = 10;
        estimate.header.estDate = QDate(2026, 3, 2);
        estimate.operations = rows(50);
        m_estimate = estimating::saveEstimate(core::MainDatabase(), 0, estimate).key;
        jobs::JobDraft job;
        job.header.custId = 1;
        job.header.poNo = u"WIRE"_s;
        job.header.partNo = u"WIRE-7"_s;
        job.header.quantity = 10;
        job.header.dateIn = QDate(2026, 3, 2);
        job.header.dueDate = QDate(2026, 4, 2);
        job.operations = rows(7);
        m_job = jobs::saveJob(core::MainDatabase(), 0, job).key;
    }

    void module(const QString& words, const QString& name, qint64 key, const QString& field,
                const QString& record) {
        step(u"Open "_s + words, [&] { Forms::show(name); });
        screen::Form* form = Forms::find(name);
        auto* records = dynamic_cast<core::RecordScreen*>(form);
        if (key == 0)
            key = records->currentKey();
        step(u"Go to "_s + record, [&] { records->goToRecord(key); });
        step(u"Previous, "_s + words, [&] { arrow(form, u"Previous"_s); });
        step(u"Next, "_s + words, [&] { arrow(form, u"Next"_s); });
        records->goToRecord(key);
        step(u"Return to "_s + words, [&] { form->Form_Activate(); });
        step(u"Edit "_s + record, [&] { press(form, u"cmdEdit"_s); });
        step(u"Cancel, "_s + record, [&] { press(form, u"cmdCancel"_s); });
        press(form, u"cmdEdit"_s);
        set(form, field, u"Changed at %1"_s.arg(Clock::now().time_since_epoch().count() % 100'000));
        step(
            u"Save "_s + record, [&] { press(form, u"cmdSave"_s); }, true);
        if (records->mode() != u"Browse")
            std::fprintf(stderr, "%s was not saved\n", qPrintable(record));
        if (name == u"frmEstimate") { // its delete, on a copy of its own
            estimating::EstimateDraft copy =
                *estimating::loadEstimate(core::MainDatabase(), m_estimate);
            const qint64 passing = estimating::saveEstimate(core::MainDatabase(), 0, copy).key;
            form->Form_Activate();
            records->goToRecord(passing);
            if (records->currentKey() == passing)
                step(
                    u"Delete "_s + record, [&] { press(form, u"cmdDelete"_s); }, true);
        }
        close(name);
    }

    void jobPapers() {
        auto tree = Forms::make(u"frmAssemblyInfo"_s);
        step(u"Assembly tree of an order"_s, [&] {
            QTimer::singleShot(0, tree.get(), [&tree] { tree->unload(); }); // it is modal
            if (auto* shown = dynamic_cast<estimating::AssemblyTree*>(tree.get()))
                shown->showTree(1, u"WIRE"_s, m_job, u"Job"_s);
        });
        tree.reset();
        report::setPreviewer([](const auto&, const auto&) {});
        step(u"Traveler, to its preview"_s, [&] { core::launchTraveler(m_job, false, nullptr); });
        report::setPreviewer({});
    }

    static void close(const QString& name) {
        if (screen::Form* form = Forms::find(name))
            form->unload();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }
    static void press(screen::Form* form, const QString& button) {
        form->control<QPushButton>(button)->click();
    }
    static void arrow(screen::Form* form, const QString& where) {
        for (auto* data : form->findChildren<controls::DataControl*>()) {
            if (where == u"Next")
                data->moveNext();
            else
                data->movePrevious();
            return;
        }
    }
    static void set(screen::Form* form, const QString& field, const QString& text) {
        dynamic_cast<controls::Field*>(form->control(field))->setText(text);
    }

    void step(const QString& name, const std::function<void()>& work, bool writes = false) {
        // After a write, nothing that was read before is at hand.
        core::MainDatabase().execute(u"UPDATE SystemSettings SET FOB = FOB"_s);
        const bool watched = writes && m_other;
        if (watched)
            m_other->begin();
        const quint64 before = core::MainDatabase().waits();
        const auto from = Clock::now();
        work();
        QApplication::processEvents();
        Measured& measured = m_column.of(name);
        measured.milliseconds.push_back(millisecondsSince(from));
        measured.waits = std::max(measured.waits, core::MainDatabase().waits() - before);
        if (watched)
            measured.otherWriter = std::max(measured.otherWriter, m_other->longest());
    }

    QString m_folder;
    Column& m_column;
    std::unique_ptr<OtherWriter> m_other;
    std::unique_ptr<core::MDIMain> m_shell;
    qint64 m_estimate = 0, m_job = 0;
};

/// Takes a file out of the system's memory, as if the machine had just been started.
void forget(const QString& path) {
    const int file = open(path.toLocal8Bit().constData(), O_RDONLY);
    if (file < 0)
        return;
    fsync(file);
    posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
    ::close(file);
}

void print(const QStringList& titles, std::vector<Column>& columns, bool isServer) {
    QString head = u"| Step |"_s, line = u"| --- |"_s;
    if (isServer) {
        head += u" Waits |"_s;
        line += u" --- |"_s;
    }
    for (const QString& title : titles) {
        head += u' ' + title + u" |"_s;
        line += u" --- |"_s;
    }
    std::printf("%s\n%s\n", qPrintable(head), qPrintable(line));
    for (const auto& [step, first] : columns.front().steps()) {
        QString row = u"| "_s + step + u" |"_s;
        if (isServer)
            row += u" %1 |"_s.arg(first.waits);
        for (Column& column : columns) {
            const Measured& measured = column.of(step);
            row += u" %1"_s.arg(median(measured.milliseconds), 0, 'f', 1);
            if (measured.otherWriter > 0)
                row += u" (other writer %1)"_s.arg(measured.otherWriter, 0, 'f', 1);
            row += u" |"_s;
        }
        std::printf("%s\n", qPrintable(row));
    }
}

} // namespace

int main(int argc, char* argv[]) {
    if (!qEnvironmentVariableIsSet("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const QStringList words = application.arguments();
    const QString folder = words.value(1);
    if (folder.isEmpty()) {
        std::fputs("bench_wire FOLDER [ROUND_TRIP_MS...]\n", stderr);
        return 2;
    }
    app::registerAllScreens();
    screen::seams().msgBox = [](const QString& text, screen::Buttons buttons, screen::Icon,
                                const QString&, screen::Answer) {
        if (buttons == screen::Buttons::Ok)
            std::fprintf(stderr, "box: %s\n", qPrintable(text));
        return buttons == screen::Buttons::Ok ? screen::Answer::Ok : screen::Answer::Yes;
    };
    std::vector<Column> columns;
    QStringList titles;
    const QString server = jet::serverOfFolder(folder);
    try {
        if (server.isEmpty()) {
            forget(folder + u"/Mirsa.mdb"_s);
            columns.resize(2);
            Desk(folder, {}, columns[0]).work(1);
            Desk(folder, {}, columns[1]).work(5);
            titles = {u"cold, ms"_s, u"warm, ms"_s};
        } else {
            QStringList trips = words.mid(2);
            if (trips.isEmpty())
                trips = {u"1"_s, u"10"_s, u"40"_s};
            columns.resize(static_cast<std::size_t>(trips.size()));
            for (qsizetype i = 0; i < trips.size(); ++i) {
                const testsupport::DelayingLine line(
                    server, std::chrono::microseconds(std::lround(trips[i].toDouble() * 1000)));
                const QTemporaryDir far;
                const QStringList reports = QDir(folder).entryList({u"*.rpt"_s});
                for (const QString& name : reports)
                    QFile::link(QDir(folder).absoluteFilePath(name), far.filePath(name));
                QFile address(far.filePath(u"Mirsa.server"_s));
                if (!address.open(QIODevice::WriteOnly))
                    return 2;
                address.write(line.uri().toUtf8() + '\n');
                address.close();
                Desk(far.path(), folder, columns[static_cast<std::size_t>(i)]).work(5);
                titles << u"%1 ms"_s.arg(trips[i]);
            }
        }
    } catch (const jet::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    print(titles, columns, !server.isEmpty());
    return 0;
}
