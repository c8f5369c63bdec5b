#include "timemgmt/TimeList.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace timemgmt {

TimeTexts timeTexts(const TimeCriteria& criteria) {
    const QString employee = QString::number(criteria.empId);
    const auto days = [&](const QString& date) {
        const QString first = u"#"_s + values::sqlDate(criteria.first) + u"#"_s;
        if (!criteria.last)
            return u" and datevalue("_s + date + u") = "_s + first;
        return u" and datevalue("_s + date + u") between "_s + first + u" and #"_s +
               values::sqlDate(*criteria.last) + u"#"_s;
    };
    const auto formulaDays = [&](const QString& date) {
        const auto day = [](const QDate& one) {
            return u"date("_s + values::format(one, u"YYYY,MM,DD") + u")"_s;
        };
        if (!criteria.last)
            return u" and {"_s + date + u"} = "_s + day(criteria.first);
        return u" and {"_s + date + u"} in "_s + day(criteria.first) + u" to "_s +
               day(*criteria.last);
    };
    return {u"Select * from TimeLog where empid = "_s + employee + days(u"Startdate"_s) +
                u" and status like '"_s + criteria.pattern + u"' order by Startdate, ID"_s,
            u"Select * from Sign_in where empid = "_s + employee + days(u"Sign_in"_s) +
                u" order by Sign_in"_s,
            u"{TimeLog.EmpID} = "_s + employee + formulaDays(u"Timelog.Startdate"_s) +
                u" and {TimeLog.status} like '"_s + criteria.pattern + u"'"_s,
            u"{Sign_In.EmpID} = "_s + employee + formulaDays(u"Sign_In.Sign_in"_s)};
}

QStringList cannedRanges() {
    return {u"Today"_s,         u"Yesterday"_s, u"Previous 7 Days"_s, u"Previous 14 Days"_s,
            u"Current Month"_s, u"Last Month"_s};
}

std::pair<QDate, std::optional<QDate>> cannedRange(int index, const QDate& today) {
    const QDate month = today.addDays(1 - today.day());
    switch (index) {
    case 1:
        return {today.addDays(-1), {}};
    case 2:
        return {today.addDays(-7), today};
    case 3:
        return {today.addDays(-14), today};
    case 4:
        return {month, month.addMonths(1).addDays(-1)};
    case 5:
        return {month.addMonths(-1), month.addDays(-1)};
    default:
        return {today, {}};
    }
}

QStringList statusChoices() {
    return {u"All Records"_s, u"Active Records"_s, u"Suspended Records"_s, u"Finished Records"_s};
}

QString statusPattern(int index) {
    static const QStringList patterns{u"*"_s, u"A"_s, u"D"_s, u"F"_s};
    return patterns.value(index, u"*"_s);
}

} // namespace timemgmt
