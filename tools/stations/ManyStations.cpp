// Many stations at once, without windows, by the program's own rules:
//
//   many-stations FOLDER STATIONS FLOORS SECONDS [THINK_MS [KILL_EVERY_MS]]
//
// FOLDER is a program folder with a delivered or filled shop, of a file or a server. Each station
// is a process that edits estimates and jobs which others edit too, each floor program one that
// books time on the same jobs in plain statements. What was acknowledged is kept in memory that all
// share, so that it outlives a process that is killed; at the end the database has to hold just
// that. Exit code 1 where something is lost, twice or half.

#include "estimating/EstimateStore.h"
#include "jobs/JobStore.h"
#include "platform/jet/Location.h"
#include "platform/values/Literals.h"

#include <QCoreApplication>
#include <QFile>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <map>
#include <memory>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr double unit = 0.25; ///< hours by which a station's figure grows with each save
constexpr int floorOperations = 3;
constexpr int mostDocuments = 400, mostStations = 200;

/// How long something took, counted in tenths of milliseconds up to 20 s.
struct Times {
    std::array<std::atomic<unsigned>, 200'000> counts;

    void add(Clock::duration took) {
        const auto tenths =
            std::chrono::duration_cast<std::chrono::microseconds>(took).count() / 100;
        ++counts[std::min(static_cast<std::size_t>(tenths), counts.size() - 1)];
    }
    long total() const {
        long all = 0;
        for (const auto& count : counts)
            all += count;
        return all;
    }
    /// Milliseconds within which this share was done.
    double within(double share) const {
        const double wanted = share * static_cast<double>(total());
        double seen = 0;
        for (std::size_t i = 0; i < counts.size(); ++i) {
            seen += counts[i];
            if (seen >= wanted && seen > 0)
                return (static_cast<double>(i) + 1) / 10;
        }
        return 0;
    }
};

struct Counter {
    std::atomic<int> acknowledged; ///< saves that were said to have succeeded
    std::atomic<bool> pending;     ///< one more is under way, or died on the way
};

/// What all processes share.
struct Shared {
    std::atomic<bool> stop;
    Times opened, saved, booked;
    std::atomic<long> conflicts, lost, refused, zeroRows, newDocuments;
    std::atomic<long long> longestGap; ///< microseconds in which a station could not work
    Counter estimates[mostStations][mostDocuments];
    Counter jobs[mostStations][mostDocuments];
    Counter bookings[mostStations][mostDocuments];
};

Shared* shared = nullptr;

/// The documents and operations that they work on.
struct Shop {
    QString folder;
    std::vector<qint64> estimates, jobs;
    std::vector<qint64> floor;    ///< operations on which floor programs book
    std::vector<qint64> stations; ///< one operation for each station
};

template <class T>
T* sharedMemory() {
    void* room =
        mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    return room == MAP_FAILED ? nullptr : static_cast<T*>(room); // zero is how all of it begins
}

Shop prepare(const QString& folder, int stations) {
    const auto database = jet::openProgramFolder(folder);
    Shop shop;
    shop.folder = folder;
    const QString mark = u"Station work"_s;
    std::vector<std::vector<jet::Value>> operations;
    for (int i = 0; i < stations + floorOperations; ++i)
        operations.push_back({mark + u' ' + QString::number(i), u"I"_s, 60});
    database->insertRows(u"Operation"_s, {u"Description"_s, u"OperType"_s, u"OperShopRate"_s},
                         operations);
    jet::Recordset made = database->openRecordset(
        u"SELECT TOP %1 OperNo FROM Operation WHERE Description LIKE '%2*' ORDER BY OperNo DESC"_s
            .arg(operations.size())
            .arg(mark),
        jet::RecordsetType::Snapshot);
    for (; !made.eof(); made.moveNext()) {
        auto& which = std::ssize(shop.floor) < floorOperations ? shop.floor : shop.stations;
        which.push_back(made[u"OperNo"].toLong());
    }
    const auto base = [&] {
        std::vector<estimating::OperRow> rows;
        for (const qint64 number : shop.floor) {
            estimating::OperRow row;
            row.operNo = number;
            row.time = 0;
            row.estimated = 1;
            row.rate = values::Currency::fromInteger(60);
            rows.push_back(row);
        }
        return rows;
    };
    for (int i = 0; i < std::clamp(stations * 2, 10, mostDocuments); ++i) {
        estimating::EstimateDraft estimate;
        estimate.header.custId = 1;
        estimate.header.rfqNo = u"MANY-%1"_s.arg(i);
        estimate.header.partNo = u"MANY"_s;
        estimate.header.quantity = 10;
        estimate.header.estDate = QDate(2026, 3, 2);
        estimate.operations = base();
        shop.estimates.push_back(estimating::saveEstimate(*database, 0, estimate).key);
        jobs::JobDraft job;
        job.header.custId = 1;
        job.header.poNo = u"MANY"_s;
        job.header.partNo = u"MANY"_s;
        job.header.quantity = 10;
        job.header.dateIn = QDate(2026, 3, 2);
        job.operations = base();
        shop.jobs.push_back(jobs::saveJob(*database, 0, job).key);
    }
    return shop;
}

/// A process at work: what it says once it is connected, and what it does when the line goes.
class Worker {
  public:
    Worker(const Shop& shop, int number, int think)
        : m_shop(shop), m_number(number), m_think(think),
          m_random(static_cast<unsigned>(number) * 7919 + static_cast<unsigned>(getpid())) {}
    virtual ~Worker() = default;

    void run() {
        while (!shared->stop) {
            try {
                if (!m_database)
                    m_database = jet::openProgramFolder(m_shop.folder);
                if (m_brokenAt) {
                    const auto gap = std::chrono::duration_cast<std::chrono::microseconds>(
                                         Clock::now() - *m_brokenAt)
                                         .count();
                    if (gap > shared->longestGap)
                        shared->longestGap = gap;
                    m_brokenAt.reset();
                }
                work();
            } catch (const jet::Error& error) {
                if (error.failure() == jet::Failure::Statement) {
                    std::fprintf(stderr, "%d: %d %s\n", m_number, error.number(), error.what());
                    ++shared->refused;
                    m_database.reset();
                } else {
                    ++shared->lost;
                }
                if (!m_brokenAt)
                    m_brokenAt = Clock::now();
                std::this_thread::sleep_for(100ms);
                continue;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(upTo(2 * m_think + 1)));
        }
    }

  protected:
    virtual void work() = 0;
    int upTo(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }
    template <class T>
    const T& anyOf(const std::vector<T>& all) {
        return all[static_cast<std::size_t>(upTo(static_cast<int>(all.size())))];
    }

    const Shop& m_shop;
    int m_number, m_think;
    std::mt19937 m_random;
    std::unique_ptr<jet::Database> m_database;

  private:
    std::optional<Clock::time_point> m_brokenAt;
};

/// What is left of a figure in whole steps; -1 where there are no such rows.
int stepsIn(double hours) {
    return static_cast<int>(std::lround(hours / unit));
}

class Station : public Worker {
  public:
    using Worker::Worker;

  private:
    void work() override {
        const int document = (m_number * 7 + upTo(10)) % static_cast<int>(m_shop.jobs.size());
        const auto place = static_cast<std::size_t>(document);
        const int deed = upTo(20);
        if (deed == 0) {
            addOne();
        } else if (deed < 11) {
            change<estimating::EstimateDraft>(
                m_shop.estimates[place], shared->estimates[m_number][document],
                estimating::loadEstimate,
                [](auto& database, qint64 key, auto& draft, auto& before) {
                    return estimating::saveEstimate(database, key, draft, &before);
                },
                &estimating::OperRow::time);
        } else {
            change<jobs::JobDraft>(
                m_shop.jobs[place], shared->jobs[m_number][document], jobs::loadJob,
                [](auto& database, qint64 key, auto& draft, auto& before) {
                    return jobs::saveJob(database, key, draft, &before);
                },
                &estimating::OperRow::estimated);
        }
    }

    void addOne() {
        estimating::EstimateDraft draft;
        draft.header.custId = 1;
        draft.header.rfqNo = u"MANY-NEW"_s;
        draft.header.partNo = u"NEW %1"_s.arg(m_number);
        draft.header.quantity = 1;
        draft.header.estDate = QDate(2026, 3, 2);
        const auto from = Clock::now();
        estimating::saveEstimate(*m_database, 0, draft);
        shared->saved.add(Clock::now() - from);
        ++shared->newDocuments;
    }

    /// Opens a document, lets this station's figure grow, and saves.
    template <class Draft, class Load, class Save>
    void change(qint64 key, Counter& counter, Load load, Save save,
                std::optional<double> estimating::OperRow::*figure) {
        auto from = Clock::now();
        std::optional<Draft> draft = load(*m_database, key);
        shared->opened.add(Clock::now() - from);
        if (!draft) {
            std::fprintf(stderr, "document %lld has gone\n", static_cast<long long>(key));
            ++shared->refused;
            return;
        }
        const Draft before = *draft;
        const qint64 own = m_shop.stations[static_cast<std::size_t>(m_number)];
        auto row = std::find_if(draft->operations.begin(), draft->operations.end(),
                                [own](const auto& each) { return each.operNo == own; });
        if (counter.pending) {
            // Nobody heard how the last save ended: the document tells.
            const int steps =
                row == draft->operations.end() ? 0 : stepsIn((*row.*figure).value_or(0));
            counter.acknowledged = steps;
            counter.pending = false;
        }
        if (row == draft->operations.end()) {
            estimating::OperRow made;
            made.operNo = own;
            made.time = 0;
            made.rate = values::Currency::fromInteger(60);
            draft->operations.push_back(made);
            row = draft->operations.end() - 1;
        }
        (*row).*figure = ((*row).*figure).value_or(0) + unit;
        if (upTo(4) == 0)
            draft->header.description = u"by %1, %2"_s.arg(m_number).arg(upTo(1000));
        std::this_thread::sleep_for(std::chrono::milliseconds(upTo(m_think + 1)));
        counter.pending = true;
        from = Clock::now();
        const auto saved = save(*m_database, key, *draft, before);
        if (saved.conflict) { // both changed the description: this one gives way
            counter.pending = false;
            ++shared->conflicts;
            return;
        }
        if (saved.refusal) {
            counter.pending = false;
            ++shared->refused;
            return;
        }
        shared->saved.add(Clock::now() - from);
        ++counter.acknowledged;
        counter.pending = false;
    }
};

/// Books stretches of time as the programs of the floor do, with no turn taken.
class Floor : public Worker {
  public:
    using Worker::Worker;

  private:
    void work() override {
        const int document = upTo(static_cast<int>(m_shop.jobs.size()));
        const QString job = QString::number(m_shop.jobs[static_cast<std::size_t>(document)]);
        const QString operation = QString::number(anyOf(m_shop.floor));
        Counter& counter = shared->bookings[m_number][document];
        if (counter.pending)
            counter.acknowledged = static_cast<int>(
                m_database
                    ->lookup(u"SELECT COUNT(*) FROM Timelog WHERE SupervID = %1 AND JobNo = %2"_s
                                 .arg(m_number)
                                 .arg(job))
                    .toLong());
        counter.pending = true;
        const auto from = Clock::now();
        jet::Transaction transaction(*m_database);
        m_database->execute(
            u"INSERT INTO Timelog (EmpID, JobNo, OperNo, Status, AccumTime, StartDate, SupervID) "
            "VALUES(1,%1,%2,'D',0.25,#3/2/2026 8:00 AM#,%3)"_s.arg(job, operation)
                .arg(m_number));
        const int rows = m_database->execute(u"UPDATE JobOper SET OperTime_Amount = "
                                             u"OperTime_Amount + 0.25, Status = 'D' WHERE JobNo = "
                                             "%1 AND OperNo = %2"_s.arg(job, operation));
        transaction.commit();
        shared->booked.add(Clock::now() - from);
        if (rows != 1)
            ++shared->zeroRows;
        ++counter.acknowledged;
        counter.pending = false;
    }
};

pid_t start(const Shop& shop, int number, int stations, int think) {
    const pid_t process = fork();
    if (process != 0)
        return process;
    if (number < stations)
        Station(shop, number, think).run();
    else
        Floor(shop, number, think).run();
    std::fflush(nullptr);
    _exit(0);
}

/// What the database holds beside what was acknowledged: the number of places where they differ.
int compare(const Shop& shop, int stations, int floors) {
    const auto database = jet::openProgramFolder(shop.folder);
    int wrong = 0;
    const auto say = [&wrong](const char* what, int station, qint64 key, int held, int wanted) {
        ++wrong;
        std::printf("WRONG %s: station %d, document %lld: %d, acknowledged %d\n", what, station,
                    static_cast<long long>(key), held, wanted);
    };
    const auto hours = [&](const QString& sql) {
        std::map<std::pair<qint64, qint64>, std::pair<int, double>> found;
        jet::Recordset rows = database->openRecordset(sql, jet::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext()) {
            auto& [count, sum] = found[{rows.field(0).toLong(), rows.field(1).toLong()}];
            ++count;
            sum += rows.field(2).toDouble();
        }
        return found;
    };
    const auto estimates = hours(u"SELECT EstNo, OperNo, OperTime_Amount FROM EstOper"_s);
    const auto jobRows = hours(u"SELECT JobNo, OperNo, EstOper FROM JobOper"_s);
    const auto actual = hours(u"SELECT JobNo, OperNo, OperTime_Amount FROM JobOper"_s);
    const auto booked =
        hours(u"SELECT JobNo, SupervID, AccumTime FROM Timelog WHERE SupervID >= 0"_s);
    const auto check = [&](const char* what, const auto& rows, const std::vector<qint64>& keys,
                           auto& counters) {
        for (int station = 0; station < stations; ++station) {
            for (std::size_t i = 0; i < keys.size(); ++i) {
                const Counter& counter = counters[station][i];
                const auto row =
                    rows.find({keys[i], shop.stations[static_cast<std::size_t>(station)]});
                const int held = row == rows.end() ? 0 : stepsIn(row->second.second);
                if (row != rows.end() && row->second.first != 1)
                    say("rows twice", station, keys[i], row->second.first, 1);
                if (held != counter.acknowledged &&
                    !(counter.pending && held == counter.acknowledged + 1))
                    say(what, station, keys[i], held, counter.acknowledged);
            }
        }
    };
    check("estimate", estimates, shop.estimates, shared->estimates);
    check("job", jobRows, shop.jobs, shared->jobs);
    for (std::size_t i = 0; i < shop.jobs.size(); ++i) {
        int inLog = 0, inRouting = 0;
        for (int number = stations; number < stations + floors; ++number) {
            const Counter& counter = shared->bookings[number][i];
            const auto rows = booked.find({shop.jobs[i], number});
            const int held = rows == booked.end() ? 0 : rows->second.first;
            inLog += held;
            if (held != counter.acknowledged &&
                !(counter.pending && held == counter.acknowledged + 1))
                say("time record", number, shop.jobs[i], held, counter.acknowledged);
        }
        for (const qint64 operation : shop.floor)
            inRouting += stepsIn(actual.at({shop.jobs[i], operation}).second);
        if (inLog != inRouting)
            say("hours on the job", 0, shop.jobs[i], inRouting, inLog);
    }
    return wrong;
}

void print(const char* what, const Times& times) {
    std::printf("| %s | %ld | %.1f | %.1f | %.1f | %.1f |\n", what, times.total(),
                times.within(0.5), times.within(0.95), times.within(0.99), times.within(1));
}

/// Kilobytes of a process that are its own.
long ownMemory(pid_t process) {
    QFile file(u"/proc/%1/smaps_rollup"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    long own = 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Private_"))
            own += line.simplified().split(' ').value(1).toLong();
    }
    return own;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QStringList words = application.arguments();
    const int stations = words.value(2).toInt(), floors = words.value(3).toInt();
    const int seconds = words.value(4).toInt();
    const int think = words.size() > 5 ? words[5].toInt() : 1000;
    const int killEvery = words.value(6).toInt();
    if (stations < 1 || floors < 0 || seconds < 1 || stations + floors > mostStations) {
        std::fputs("many-stations FOLDER STATIONS FLOORS SECONDS [THINK_MS [KILL_EVERY_MS]]\n",
                   stderr);
        return 2;
    }
    shared = sharedMemory<Shared>();
    if (!shared)
        return 2;
    Shop shop;
    try {
        shop = prepare(words[1], stations);
    } catch (const jet::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    std::vector<pid_t> processes;
    for (int i = 0; i < stations + floors; ++i)
        processes.push_back(start(shop, i, stations, think));

    std::mt19937 random(1);
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    int kills = 0;
    long memory = 0;
    while (Clock::now() < end) {
        std::this_thread::sleep_for(std::min<Clock::duration>(
            killEvery > 0 ? std::chrono::milliseconds(killEvery) : 1s, end - Clock::now()));
        memory = std::max(memory, ownMemory(processes[0]));
        if (killEvery > 0 && Clock::now() < end) {
            const auto victim = random() % processes.size();
            kill(processes[victim], SIGKILL);
            waitpid(processes[victim], nullptr, 0);
            processes[victim] = start(shop, static_cast<int>(victim), stations, think);
            ++kills;
        }
    }
    shared->stop = true;
    int ended = 0;
    for (const pid_t process : processes) {
        int status = 0;
        waitpid(process, &status, 0);
        ended += WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
    }

    std::printf("%d stations, %d floor programs, %d s, %d killed\n\n", stations, floors, seconds,
                kills);
    std::puts("| | Times | p50 ms | p95 | p99 | Longest |\n| --- | --- | --- | --- | --- | --- |");
    print("Document opened", shared->opened);
    print("Document saved", shared->saved);
    print("Time booked", shared->booked);
    std::printf("\nconflicts said %ld, refused %ld, failures of the line %ld (longest without it "
                "%.1f s), updates of no row %ld, memory of a station %.1f MB\n",
                shared->conflicts.load(), shared->refused.load(), shared->lost.load(),
                static_cast<double>(shared->longestGap.load()) / 1e6, shared->zeroRows.load(),
                static_cast<double>(memory) / 1024);
    const int wrong = compare(shop, stations, floors) + ended;
    std::printf("%s\n", wrong == 0 ? "All that was acknowledged is there, once." : "NOT RIGHT");
    return wrong == 0 && shared->zeroRows == 0 ? 0 : 1;
}
