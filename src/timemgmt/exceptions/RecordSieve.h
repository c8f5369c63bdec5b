#pragma once

#include "platform/jet/Database.h"

#include <array>
#include <optional>
#include <vector>

namespace timemgmt {

/// A quick look at all time records of a database file, which tells those that the rules have to
/// look at closely; never fewer. It holds the attendance and the jobs in memory, so that millions
/// of work records are read as they stand, without a search for each. A server has quicker ways of
/// its own. Once made it may be used from several threads, each with its own connection.
class RecordSieve {
  public:
    /// Of a file. Nothing where the numbers of its records are too high to be held in order.
    static std::optional<RecordSieve> make(jet::Database& database);

    /// Appends the numbers of the work records in question, from one number to another. Those that
    /// were entered by hand are left out: the database finds them quickly.
    void lookAtWork(jet::Database& database, qint64 from, qint64 to,
                    std::vector<qint64>& numbers) const;
    /// The numbers of the attendance records in question.
    std::vector<qint64> attendance() const;

  private:
    /// "yyyy-mm-dd hh:mm:ss", as the file has it and so that it compares as text.
    using Moment = std::array<char, 19>;
    struct Attendance {
        qint64 empId = -1; ///< -1: there is none of this number
        Moment in{}, out{};
    };
    struct Row;

    const Attendance& of(qint64 number) const {
        return m_attendance[static_cast<std::size_t>(number)];
    }
    bool isInQuestion(const Row& row) const;
    bool readAttendance(jet::Database& database);
    bool readLatest(jet::Database& database, const char* columns, const char* from,
                    std::vector<Moment>& latest);

    std::vector<Attendance> m_attendance; ///< by number
    std::vector<Moment> m_jobs;           ///< by number: the end of the day on which it was shipped
    std::vector<Moment> m_employees;      ///< by number: the end of the day on which one left
};

} // namespace timemgmt
