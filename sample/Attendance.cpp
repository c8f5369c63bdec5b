#include "sample/Attendance.h"

namespace sample {

namespace {

constexpr int shiftStart = 7 * 60;  ///< minutes after midnight
constexpr int shiftLength = 8 * 60; ///< of which work can be booked

bool isWorkday(const QDate& date) {
    return date.dayOfWeek() <= 5;
}

} // namespace

Attendance::Attendance(Shop& shop) : m_shop(shop) {
    for (QDate day = shop.start; day < shop.today; day = day.addDays(1)) {
        m_dayIndex.push_back(isWorkday(day) ? static_cast<int>(m_days.size()) : -1);
        if (isWorkday(day))
            m_days.push_back(day);
    }
    m_signIds.resize(m_days.size() * shop.employees.size());
    m_booked.resize(m_signIds.size());
    for (std::size_t d = 0; d < m_days.size(); ++d) {
        for (std::size_t e = 0; e < shop.employees.size(); ++e) {
            if (shop.random.chance(4))
                continue; // off that day
            const QDateTime in(
                m_days[d], QTime(6, 50 + shop.random.below(10), shop.random.below(60)), Qt::UTC);
            m_signIds[d * shop.employees.size() + e] =
                Row(u"Sign_in")
                    .set(u"EmpID", shop.employees[e])
                    .set(u"Sign_in", in)
                    .set(u"Sign_out", in.addSecs((shiftLength + 15) * 60 + shop.random.below(600)))
                    .insert(shop.database);
        }
    }
}

std::optional<Attendance::Stretch> Attendance::take(int day, std::size_t employee, int minutes) {
    const std::size_t cell = static_cast<std::size_t>(day) * m_shop.employees.size() + employee;
    if (m_signIds[cell] == 0 || m_booked[cell] + minutes > shiftLength)
        return std::nullopt;
    const QDateTime midnight(m_days[static_cast<std::size_t>(day)], QTime(0, 0), Qt::UTC);
    const Stretch stretch{m_shop.employees[employee], m_signIds[cell],
                          midnight.addSecs((shiftStart + m_booked[cell]) * 60), minutes};
    m_booked[cell] = static_cast<std::uint16_t>(m_booked[cell] + minutes);
    return stretch;
}

std::optional<Attendance::Stretch> Attendance::book(const QDate& wanted, int minutes,
                                                    qint64 empID) {
    const auto wished = std::find(m_shop.employees.begin(), m_shop.employees.end(), empID);
    for (int tries = 0; tries < 20; ++tries) {
        const auto offset = m_shop.start.daysTo(wanted.addDays(tries / 2));
        if (offset < 0 || offset >= static_cast<qint64>(m_dayIndex.size()))
            return std::nullopt;
        const int day = m_dayIndex[static_cast<std::size_t>(offset)];
        if (day < 0)
            continue;
        const auto employee = tries == 0 && wished != m_shop.employees.end()
                                  ? static_cast<std::size_t>(wished - m_shop.employees.begin())
                                  : static_cast<std::size_t>(m_shop.random.below(
                                        static_cast<int>(m_shop.employees.size())));
        if (auto stretch = take(day, employee, minutes))
            return stretch;
    }
    return std::nullopt;
}

} // namespace sample
