#include "timemgmt/PayrollReport.h"

#include "platform/values/Literals.h"

namespace timemgmt {

namespace {

class Days : public report::Rows {
  public:
    Days(const std::vector<PayrollLine>& days, const QDate& first, const QDate& last)
        : m_days(days), m_first(first), m_last(last) {}

    QStringList fieldNames() const override {
        return {u"EmpID"_s,  u"Employee"_s, u"Day"_s,         u"SignedIn"_s, u"Outside"_s,
                u"Breaks"_s, u"Paid"_s,     u"OpenSignIns"_s, u"FirstDay"_s, u"LastDay"_s};
    }
    bool next(std::vector<jet::Value>& row) override {
        if (m_next == m_days.size())
            return false;
        const PayrollLine& line = m_days[m_next++];
        const auto hours = [](qint64 hundredths) {
            return jet::Value(static_cast<double>(hundredths) / 100.0);
        };
        row = {line.empId,
               line.employee,
               line.day,
               hours(line.present()),
               hours(line.outside),
               hours(line.breaks),
               hours(line.paid),
               line.open,
               m_first,
               m_last};
        return true;
    }

  private:
    const std::vector<PayrollLine>& m_days;
    QDate m_first, m_last;
    std::size_t m_next = 0;
};

} // namespace

std::unique_ptr<report::Rows> PayrollRows::open(const QString& sql) {
    if (sql.contains(u"PayrollHours"_s, Qt::CaseInsensitive))
        return std::make_unique<Days>(m_days, m_first, m_last);
    return m_database.open(sql);
}

std::optional<jet::ColumnType> PayrollRows::columnType(const QString& table,
                                                       const QString& column) const {
    return m_database.columnType(table, column);
}

} // namespace timemgmt
