#include "timemgmt/exceptions/ServerSieve.h"

#include "platform/jet/Native.h"

#include <algorithm>
#include <span>

namespace timemgmt {

namespace {

// The tables that are joined fit into memory, and few rows come out: the server can't know either.
constexpr const char* settings[][2] = {
    {"work_mem", "'128MB'"}, {"parallel_tuple_cost", "0"}, {"jit", "off"}};

// Each joined table by itself: rows that carry what three joins need cost twice as much. The status
// comes as plain text, which is compared in a tenth of the time. A day is only taken from a moment
// where the moment itself is later. Who had left when he began either has no attendance then, which
// the first statement finds, or one that lasted longer than he was there.
constexpr const char* work[] = {
    "SELECT t.id FROM timelog t LEFT JOIN sign_in s ON t.signid = s.id WHERE (s.id IS NULL OR "
    "t.empid IS DISTINCT FROM s.empid OR t.startdate < s.sign_in OR "
    "greatest(t.startdate, t.suspdate, t.finishdate) > s.sign_out) AND "
    "t.status::text IS DISTINCT FROM '0'",
    "SELECT t.id FROM timelog t LEFT JOIN job j ON t.jobno = j.jobno WHERE "
    "((t.startdate > j.shipdate AND t.startdate::date > j.shipdate::date AND j.shipped <> 0) OR "
    "(j.jobno IS NULL AND t.jobno > 0)) AND t.status::text IS DISTINCT FROM '0'",
    "SELECT t.id FROM employee e JOIN sign_in s ON s.empid = e.empid AND (s.sign_out IS NULL OR "
    "s.sign_out > e.terminate) JOIN timelog t ON t.signid = s.id WHERE e.empstatus = 'Terminated' "
    "AND t.startdate > e.terminate AND t.status::text IS DISTINCT FROM '0'",
    "WITH RECURSIVE booked(empid) AS ((SELECT min(empid) FROM timelog) UNION ALL SELECT (SELECT "
    "min(empid) FROM timelog WHERE empid > b.empid) FROM booked b WHERE b.empid IS NOT NULL) "
    "SELECT t.id FROM booked b JOIN timelog t ON t.empid = b.empid WHERE NOT EXISTS (SELECT 1 FROM "
    "employee e WHERE e.empid = b.empid) AND t.status::text IS DISTINCT FROM '0' "
    "UNION ALL SELECT id FROM timelog WHERE empid IS NULL AND status::text IS DISTINCT FROM '0'"};

// Who shares time with any later attendance shares it with the next one; those later ones are
// looked up then, as they are few.
constexpr const char* attendance[] = {
    "WITH kept AS (SELECT id, empid, sign_in, sign_out, lead(sign_in) OVER (PARTITION BY empid "
    "ORDER BY sign_in, id) AS next FROM sign_in), shared AS (SELECT * FROM kept WHERE sign_out IS "
    "NULL OR sign_out > next) SELECT id FROM shared UNION ALL SELECT l.id FROM shared s JOIN "
    "sign_in l ON l.empid = s.empid AND l.sign_in >= s.sign_in AND l.sign_in < s.sign_out AND "
    "(l.sign_in, l.id) > (s.sign_in, s.id)",
    "SELECT s.id FROM employee e JOIN sign_in s ON s.empid = e.empid AND s.sign_in > e.terminate "
    "WHERE e.empstatus = 'Terminated'",
    "WITH RECURSIVE there(empid) AS ((SELECT min(empid) FROM sign_in) UNION ALL SELECT (SELECT "
    "min(empid) FROM sign_in WHERE empid > t.empid) FROM there t WHERE t.empid IS NOT NULL) "
    "SELECT s.id FROM there t JOIN sign_in s ON s.empid = t.empid WHERE NOT EXISTS (SELECT 1 FROM "
    "employee e WHERE e.empid = t.empid) UNION ALL SELECT id FROM sign_in WHERE empid IS NULL"};

std::vector<qint64> numbers(jet::Database& database, std::span<const char* const> selects) {
    jet::Native native(database);
    for (const auto& [name, value] : settings)
        native.execute(QByteArray("SET ") + name + " = " + value);
    std::vector<qint64> found;
    for (const char* select : selects)
        native.each(select, [&](const std::vector<jet::Cell>& cells) {
            found.push_back(cells[0].integer);
        });
    for (const auto& [name, value] : settings)
        native.execute(QByteArray("RESET ") + name);
    std::sort(found.begin(), found.end()); // a record may be in question twice
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

} // namespace

std::vector<qint64> workInQuestion(jet::Database& database) {
    return numbers(database, work);
}

std::vector<qint64> attendanceInQuestion(jet::Database& database) {
    return numbers(database, attendance);
}

} // namespace timemgmt
