#include "timemgmt/exceptions/RecordSieve.h"

#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>

namespace timemgmt {

using jet::Cell;

namespace {

/// Some 250 MB of attendance, six times that of a large shop's twenty years.
constexpr qint64 mostNumbers = 5'000'000;

using Moment = std::array<char, 19>;

constexpr Moment allOf(char letter) {
    Moment moment{};
    for (char& each : moment)
        each = letter;
    return moment;
}
/// Smaller and greater than every moment; the first also stands for what isn't there.
constexpr Moment never = allOf('\0');
constexpr Moment always = allOf('~');

Moment momentOf(const Cell& cell, const Moment& ifNull) {
    Moment moment = ifNull;
    if (cell.kind == Cell::Kind::Text && cell.size == static_cast<int>(moment.size()))
        std::memcpy(moment.data(), cell.text, moment.size());
    return moment;
}

/// A moment compared with one of a table; a Null is on the safe side of both.
bool isBefore(const Cell& cell, const Moment& moment) {
    return cell.kind == Cell::Kind::Text &&
           std::memcmp(cell.text, moment.data(), moment.size()) < 0;
}
bool isAfter(const Cell& cell, const Moment& moment) {
    return cell.kind == Cell::Kind::Text &&
           std::memcmp(cell.text, moment.data(), moment.size()) > 0;
}

/// What isn't as the program writes it is left to the rules.
bool isStrange(const Cell& cell) {
    return !cell.isNull() && (cell.kind != Cell::Kind::Text || cell.size != 19);
}

qint64 numberOf(const Cell& cell) {
    return cell.kind == Cell::Kind::Integer ? cell.integer : 0;
}

template <class T>
const T* at(const std::vector<T>& all, qint64 number) {
    return number > 0 && number < std::ssize(all) ? &all[static_cast<std::size_t>(number)]
                                                  : nullptr;
}

} // namespace

struct RecordSieve::Row {
    const Cell &empId, &jobNo, &signId, &status, &start, &susp, &finish;
};

std::optional<RecordSieve> RecordSieve::make(jet::Database& database) {
    RecordSieve sieve;
    // A shipped job passes work until the end of that day, any other always; likewise an employee.
    if (!sieve.readAttendance(database) ||
        !sieve.readLatest(database,
                          "JobNo, CASE WHEN Shipped AND ShipDate IS NOT NULL THEN "
                          "substr(ShipDate, 1, 10) || ' 99:99:99' ELSE '9' END",
                          "FROM Job", sieve.m_jobs) ||
        !sieve.readLatest(database,
                          "EmpID, CASE WHEN EmpStatus = 'Terminated' AND \"Terminate\" IS "
                          "NOT NULL THEN substr(\"Terminate\", 1, 10) || ' 99:99:99' ELSE '9' END",
                          "FROM Employee", sieve.m_employees))
        return {};
    return sieve;
}

bool RecordSieve::readAttendance(jet::Database& database) {
    jet::Native native(database);
    const qint64 last = native.value("SELECT MAX(ID) FROM Sign_in").toInteger();
    if (last > mostNumbers)
        return false;
    m_attendance.resize(static_cast<std::size_t>(last) + 1);
    native.sweep(
        "ID, EmpID, Sign_in, Sign_out", "FROM Sign_in", [&](const std::vector<Cell>& cells) {
            const qint64 number = numberOf(cells[0]);
            if (number > 0 && number <= last)
                m_attendance[static_cast<std::size_t>(number)] = {
                    numberOf(cells[1]), momentOf(cells[2], never), momentOf(cells[3], always)};
        });
    return true;
}

bool RecordSieve::readLatest(jet::Database& database, const char* columns, const char* from,
                             std::vector<Moment>& latest) {
    bool fits = true;
    jet::Native(database).sweep(columns, from, [&](const std::vector<Cell>& cells) {
        const qint64 number = numberOf(cells[0]);
        if (number < 0 || number > mostNumbers) {
            fits = false;
            return;
        }
        if (number >= std::ssize(latest))
            latest.resize(static_cast<std::size_t>(number) + 1, never);
        latest[static_cast<std::size_t>(number)] = momentOf(cells[1], always);
    });
    return fits;
}

bool RecordSieve::isInQuestion(const Row& row) const {
    const char status =
        row.status.kind == Cell::Kind::Text && row.status.size == 1 ? row.status.text[0] : '\0';
    if (status == '0')
        return false;
    if (status == 'A' || status == 'a')
        return true;
    if (isStrange(row.start) || isStrange(row.susp) || isStrange(row.finish))
        return true;
    const qint64 empId = numberOf(row.empId), jobNo = numberOf(row.jobNo);
    const Moment* employee = at(m_employees, empId);
    if (!employee || *employee == never || isAfter(row.start, *employee))
        return true;
    if (jobNo > 0) {
        const Moment* job = at(m_jobs, jobNo);
        if (!job || *job == never || isAfter(row.start, *job))
            return true;
    }
    const Attendance* attendance = at(m_attendance, numberOf(row.signId));
    return !attendance || attendance->empId != empId || isBefore(row.start, attendance->in) ||
           isAfter(row.start, attendance->out) || isAfter(row.susp, attendance->out) ||
           isAfter(row.finish, attendance->out);
}

void RecordSieve::lookAtWork(jet::Database& database, qint64 from, qint64 to,
                             std::vector<qint64>& numbers) const {
    jet::Native(database).sweep("ID, EmpID, JobNo, SignID, Status, StartDate, SuspDate, FinishDate",
                                "FROM Timelog WHERE ID BETWEEN " + QByteArray::number(from) +
                                    " AND " + QByteArray::number(to),
                                [&](const std::vector<Cell>& cells) {
                                    if (isInQuestion({cells[1], cells[2], cells[3], cells[4],
                                                      cells[5], cells[6], cells[7]}))
                                        numbers.push_back(numberOf(cells[0]));
                                });
}

std::vector<qint64> RecordSieve::attendance() const {
    std::vector<qint64> numbers;
    std::unordered_map<qint64, std::vector<qint64>> byEmployee;
    for (qint64 number = 1; number < std::ssize(m_attendance); ++number) {
        const Attendance& each = of(number);
        if (each.empId < 0)
            continue;
        byEmployee[each.empId].push_back(number);
        const Moment* employee = at(m_employees, each.empId);
        if (!employee || *employee == never || each.out == always || each.in > *employee)
            numbers.push_back(number);
    }
    for (auto& [empId, own] : byEmployee) {
        const auto earlier = [this](qint64 a, qint64 b) { return of(a).in < of(b).in; };
        // Most come in the order of their numbers.
        if (!std::is_sorted(own.begin(), own.end(), earlier))
            std::stable_sort(own.begin(), own.end(), earlier);
        // Who comes before the latest end so far shares time with him.
        qint64 latest = 0;
        for (const qint64 number : own) {
            if (latest != 0 && of(number).in < of(latest).out) {
                numbers.push_back(latest);
                numbers.push_back(number);
            }
            if (of(number).out != always && (latest == 0 || of(number).out > of(latest).out))
                latest = number;
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

} // namespace timemgmt
