#include "timemgmt/exceptions/ExceptionList.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "timemgmt/exceptions/RecordSieve.h"
#include "timemgmt/exceptions/ServerSieve.h"

#include <QSet>

#include <algorithm>
#include <atomic>
#include <exception>
#include <future>
#include <mutex>
#include <thread>

namespace timemgmt {

namespace {

constexpr int recentDays = 14;
/// What was remembered for longer is read anew.
constexpr int rememberedDays = 30;
/// Numbers read at a time: the locks of a read are short.
constexpr qint64 atATime = 200'000;
/// Of the older records in turn, in each refresh.
constexpr qint64 workInTurn = 50'000, attendanceInTurn = 20'000;

const QString timelog = u"Timelog"_s, signIn = u"Sign_in"_s;

qint64 highest(jet::Database& database, const QString& table) {
    return database.lookup(u"SELECT MAX(ID) FROM "_s + table).toLong();
}

void append(std::vector<TimeException>& all, std::vector<TimeException> more) {
    std::move(more.begin(), more.end(), std::back_inserter(all));
}

using Check = std::vector<TimeException> (*)(jet::Database&, const ShopFacts&, const Scope&);

std::vector<TimeException> checkList(jet::Database& database, const ShopFacts& facts, Check check,
                                     const QString& table, const std::vector<qint64>& ids) {
    std::vector<TimeException> found;
    for (std::size_t first = 0; first < ids.size(); first += Scope::listLength) {
        const auto begin = ids.begin() + static_cast<std::ptrdiff_t>(first);
        const auto length = std::min(Scope::listLength, ids.size() - first);
        append(found,
               check(database, facts,
                     Scope::list(table, {begin, begin + static_cast<std::ptrdiff_t>(length)})));
    }
    return found;
}

std::vector<TimeException> checkManual(jet::Database& database, const ShopFacts& facts) {
    return checkWork(database, facts, {u"Timelog.Status = '0'"_s, false});
}

/// Reads all records of a file, on two connections at once where a second one can be had: that one
/// begins with what needs no sieve, then both take parts of the work.
class WholeFile {
  public:
    WholeFile(const ShopFacts& facts, qint64 lastWork, const std::function<bool()>& stop)
        : m_facts(facts), m_last(lastWork), m_stop(stop) {}

    /// Nothing where the file can't be sieved.
    std::optional<std::vector<TimeException>> read(jet::Database& database,
                                                   const ExceptionList::Connect& connect) {
        std::promise<const RecordSieve*> made;
        std::thread second;
        if (connect && m_last > atATime)
            second = std::thread([&, ready = made.get_future()]() mutable {
                guarded([&] {
                    if (const auto own = connect()) {
                        withoutSieve(*own);
                        takeParts(*own, ready.get());
                    }
                });
            });
        std::optional<RecordSieve> sieve;
        guarded([&] { sieve = RecordSieve::make(database); });
        made.set_value(sieve ? &*sieve : nullptr);
        guarded([&] {
            takeParts(database, sieve ? &*sieve : nullptr);
            if (sieve)
                keep(checkList(database, m_facts, checkAttendance, signIn, sieve->attendance()));
            withoutSieve(database);
        });
        if (second.joinable())
            second.join();
        if (m_failure)
            std::rethrow_exception(m_failure);
        if (!sieve)
            return {};
        keep(checkList(database, m_facts, checkWork, timelog, m_numbers));
        return std::move(m_found);
    }

  private:
    /// What one of them throws ends both.
    void guarded(const std::function<void()>& reading) {
        try {
            reading();
        } catch (...) {
            const std::scoped_lock lock(m_mutex);
            m_failure = std::current_exception();
            m_broken = true;
        }
    }
    void keep(std::vector<TimeException> found) {
        const std::scoped_lock lock(m_mutex);
        append(m_found, std::move(found));
    }
    /// By the one who comes first.
    void withoutSieve(jet::Database& database) {
        if (m_othersTaken.exchange(true))
            return;
        keep(checkManual(database, m_facts));
        keep(checkOperations(database, m_facts));
    }
    void takeParts(jet::Database& database, const RecordSieve* sieve) {
        std::vector<qint64> numbers;
        while (sieve && !m_broken && !(m_stop && m_stop())) {
            const qint64 from = m_next.fetch_add(atATime);
            if (from > m_last)
                break;
            sieve->lookAtWork(database, from, std::min(from + atATime - 1, m_last), numbers);
        }
        const std::scoped_lock lock(m_mutex);
        m_numbers.insert(m_numbers.end(), numbers.begin(), numbers.end());
    }

    const ShopFacts& m_facts;
    qint64 m_last;
    const std::function<bool()>& m_stop;
    std::atomic<qint64> m_next = 1;
    std::atomic<bool> m_othersTaken = false, m_broken = false;
    std::mutex m_mutex;
    std::exception_ptr m_failure;
    std::vector<qint64> m_numbers;
    std::vector<TimeException> m_found;
};

/// Reads all records of a server; the attendance on a second connection where one can be had.
std::vector<TimeException> readServer(jet::Database& database, const ShopFacts& facts,
                                      const ExceptionList::Connect& connect,
                                      const std::function<bool()>& stop) {
    const auto ofAttendance = [&facts](jet::Database& on) {
        return checkList(on, facts, checkAttendance, signIn, attendanceInQuestion(on));
    };
    std::future<std::optional<std::vector<TimeException>>> beside;
    if (connect)
        beside = std::async(std::launch::async, [&]() -> decltype(beside.get()) {
            if (const auto own = connect())
                return ofAttendance(*own);
            return {};
        });
    auto found = checkList(database, facts, checkWork, timelog, workInQuestion(database));
    append(found, checkManual(database, facts));
    append(found, checkWork(database, facts, {u"Timelog.Status = 'A'"_s, false}));
    append(found, checkOperations(database, facts));
    auto attendance = beside.valid() ? beside.get() : std::nullopt;
    if (!attendance && !(stop && stop()))
        attendance = ofAttendance(database);
    append(found, std::move(attendance).value_or(std::vector<TimeException>()));
    return found;
}

} // namespace

bool ExceptionList::readAll(jet::Database& database, const QDateTime& now, const Connect& connect,
                            const std::function<bool()>& stop) {
    const ShopFacts facts = readShopFacts(database, now);
    const qint64 lastWork = highest(database, timelog);
    const qint64 lastAttendance = highest(database, signIn);
    std::vector<TimeException> found;
    std::optional<std::vector<TimeException>> ofFile;
    if (!database.isServer())
        ofFile = WholeFile(facts, lastWork, stop).read(database, connect);
    if (ofFile) {
        found = std::move(*ofFile);
    } else if (database.isServer()) {
        found = readServer(database, facts, connect, stop);
    } else {
        for (qint64 from = 1; from <= lastWork && !(stop && stop()); from += atATime)
            append(found,
                   checkWork(database, facts, Scope::numbers(timelog, from, from + atATime - 1)));
        append(found, checkAttendance(database, facts, {u"Sign_in.ID > 0"_s, true, true}));
        append(found, checkOperations(database, facts));
    }
    if (stop && stop())
        return false;
    m_known = {};
    add(std::move(found));
    m_known.lastWork = lastWork;
    m_known.lastAttendance = lastAttendance;
    m_known.readAt = facts.now;
    return m_read = true;
}

void ExceptionList::refresh(jet::Database& database, const QDateTime& now) {
    const ShopFacts facts = readShopFacts(database, now);
    const qint64 lastWork = highest(database, timelog);
    const qint64 lastAttendance = highest(database, signIn);
    std::vector<TimeException> found =
        checkList(database, facts, checkWork, timelog, listed(Record::Work));
    append(found, checkList(database, facts, checkAttendance, signIn, listed(Record::Attendance)));
    append(found, checkOperations(database, facts));

    // Days in which nobody read count too.
    const QDate lately = std::min(facts.now, m_known.readAt).date().addDays(-recentDays);
    const QString recent = u" >= #"_s + values::sqlDate(lately) + u'#';
    append(found, checkWork(database, facts, {u"Timelog.StartDate"_s + recent}));
    append(found, checkWork(database, facts, {u"Timelog.Status = 'A'"_s, false}));
    append(found, checkAttendance(database, facts, {u"Sign_in.Sign_in"_s + recent}));
    const auto part = [](qint64& next, qint64 length, qint64 last) {
        if (next > last)
            next = 1;
        const qint64 from = next;
        next += length;
        return std::pair(from, next - 1);
    };
    const auto numbers = [](const QString& table, std::pair<qint64, qint64> range) {
        return Scope::numbers(table, range.first, range.second);
    };
    append(found, checkWork(database, facts,
                            numbers(timelog, part(m_known.nextWork, workInTurn, lastWork))));
    append(found,
           checkWork(database, facts, Scope::numbers(timelog, m_known.lastWork + 1, lastWork)));
    append(found, checkAttendance(database, facts,
                                  numbers(signIn, part(m_known.nextAttendance, attendanceInTurn,
                                                       lastAttendance))));
    append(found,
           checkAttendance(database, facts,
                           Scope::numbers(signIn, m_known.lastAttendance + 1, lastAttendance)));

    // All that was listed has been looked at again; of what was entered by hand it is enough to
    // count, since such a record can only come and go.
    std::erase_if(m_known.lines,
                  [](const auto& line) { return line.second.kind != ExceptionKind::Manual; });
    add(std::move(found));
    const qint64 manual =
        database.lookup(u"SELECT COUNT(*) FROM Timelog WHERE Status = '0'"_s).toLong();
    const auto isManual = [](const auto& line) {
        return line.second.kind == ExceptionKind::Manual;
    };
    if (std::count_if(m_known.lines.begin(), m_known.lines.end(), isManual) != manual) {
        std::erase_if(m_known.lines, isManual);
        add(checkManual(database, facts));
    }
    m_known.lastWork = std::max(m_known.lastWork, lastWork);
    m_known.lastAttendance = std::max(m_known.lastAttendance, lastAttendance);
    m_known.readAt = facts.now;
}

QByteArray ExceptionList::remembered(jet::Database& database) {
    return packed(m_known, recordSample(database, m_known));
}

bool ExceptionList::recall(jet::Database& database, const QByteArray& content,
                           const QDateTime& now) {
    auto found = unpacked(content);
    if (!found || !found->known.readAt.isValid() ||
        found->known.readAt.date().daysTo(now.date()) >= rememberedDays ||
        recordSample(database, found->known) != found->sample)
        return false;
    m_known = std::move(found->known);
    return m_read = true;
}

void ExceptionList::add(std::vector<TimeException> found) {
    for (TimeException& line : found)
        m_known.lines.insert_or_assign(line.key(), std::move(line));
}

std::vector<qint64> ExceptionList::listed(Record record) const {
    std::vector<qint64> numbers;
    for (const auto& [key, line] : m_known.lines) {
        if (line.record != record || line.kind == ExceptionKind::Manual)
            continue;
        numbers.push_back(line.id);
        if (line.partner != 0)
            numbers.push_back(line.partner);
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

std::vector<TimeException> ExceptionList::lines() const {
    std::vector<TimeException> lines;
    lines.reserve(m_known.lines.size());
    for (const auto& [key, line] : m_known.lines)
        lines.push_back(line);
    std::stable_sort(lines.begin(), lines.end(), [](const auto& a, const auto& b) {
        if (a.when.isValid() != b.when.isValid())
            return !a.when.isValid();
        return a.when > b.when;
    });
    return lines;
}

} // namespace timemgmt
