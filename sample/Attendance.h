#pragma once

#include "sample/Shop.h"

#include <optional>

namespace sample {

/// Who was there on which day, and how much of each day is booked. Writes the attendance rows of
/// all working days before today.
class Attendance {
  public:
    explicit Attendance(Shop& shop);

    struct Stretch {
        qint64 empID = 0, signID = 0;
        QDateTime begin;
        int minutes = 0;
    };

    /// Books minutes of work on or soon after a day, for the wished employee if he has the time;
    /// nothing where everybody is booked or the day lies beyond yesterday.
    std::optional<Stretch> book(const QDate& wanted, int minutes, qint64 empID = 0);

  private:
    std::optional<Stretch> take(int day, std::size_t employee, int minutes);

    Shop& m_shop;
    std::vector<QDate> m_days;
    std::vector<int> m_dayIndex; ///< place in m_days of each day since the start, -1 for a day off
    std::vector<qint64> m_signIds;
    std::vector<std::uint16_t> m_booked; ///< minutes
};

} // namespace sample
