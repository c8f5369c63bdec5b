#include "timemgmt/exceptions/ServerSieve.h"

#include "platform/jet/Native.h"

namespace timemgmt {

namespace {

// The tables that are joined fit into memory, and few rows come out: the server can't know either.
constexpr const char* settings[][2] = {
    {"work_mem", "'128MB'"}, {"parallel_tuple_cost", "0"}, {"jit", "off"}};

// Numbers and dates come first: a comparison of texts costs as much as all of them.
constexpr char work[] =
    "SELECT t.id FROM timelog t LEFT JOIN sign_in s ON t.signid = s.id LEFT JOIN job j ON "
    "t.jobno = j.jobno LEFT JOIN employee e ON t.empid = e.empid WHERE (s.id IS NULL OR t.empid IS "
    "DISTINCT FROM s.empid OR t.startdate < s.sign_in OR t.startdate > s.sign_out OR t.suspdate > "
    "s.sign_out OR t.finishdate > s.sign_out OR (t.jobno > 0 AND j.jobno IS NULL) OR (t.startdate "
    "> j.shipdate AND t.startdate >= date_trunc('day', j.shipdate) + interval '1 day' AND "
    "j.shipped <> 0) OR e.empid IS NULL OR (t.startdate > e.terminate AND e.empstatus = "
    "'Terminated')) AND t.status IS DISTINCT FROM '0'";

// Who shares time with any later attendance shares it with the next one.
constexpr char attendance[] =
    "SELECT s.id FROM (SELECT id, empid, sign_in, sign_out, max(sign_out) OVER before AS latest, "
    "lead(sign_in) OVER (PARTITION BY empid ORDER BY sign_in, id) AS next FROM sign_in WINDOW "
    "before AS (PARTITION BY empid ORDER BY sign_in, id ROWS BETWEEN UNBOUNDED PRECEDING AND 1 "
    "PRECEDING)) s LEFT JOIN employee e ON s.empid = e.empid WHERE s.sign_out IS NULL OR s.sign_in "
    "< s.latest OR s.sign_out > s.next OR e.empid IS NULL OR (s.sign_in > e.terminate AND "
    "e.empstatus = 'Terminated')";

std::vector<qint64> numbers(jet::Database& database, const QByteArray& select) {
    jet::Native native(database);
    for (const auto& [name, value] : settings)
        native.execute(QByteArray("SET ") + name + " = " + value);
    std::vector<qint64> found;
    native.each(select,
                [&](const std::vector<jet::Cell>& cells) { found.push_back(cells[0].integer); });
    for (const auto& [name, value] : settings)
        native.execute(QByteArray("RESET ") + name);
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
