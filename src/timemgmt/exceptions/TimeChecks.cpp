#include "timemgmt/exceptions/TimeChecks.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "timemgmt/exceptions/WorkRecord.h"

#include <QSet>

namespace timemgmt {

namespace {

using Record = TimeException::Record;

/// Days by which two overlapping attendances begin apart at most, when the later one is looked at.
constexpr int longestAttendance = 31;

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

QString hoursText(Seconds seconds) {
    return values::format(static_cast<double>(seconds) / 3600.0, u"0.00");
}

/// "the shift Day has 12.00".
QString shiftText(const ShiftHours& shift) {
    return shift.known ? u"the shift %1 has %2"_s.arg(shift.name, hoursText(shift.length))
                       : u"a day has 24"_s;
}

// Work

QString workSelect(const Scope& scope) {
    QString select =
        u"SELECT Timelog.*, Sign_in.EmpID AS SignEmp, Sign_in.Sign_in AS CameIn, Sign_in.Sign_out "
        "AS WentOut, Job.JobNo AS FoundJob, Job.Shipped AS JobShipped, Job.ShipDate AS JobShipDate "
        "FROM ((Timelog LEFT JOIN Sign_in ON Timelog.SignID = Sign_in.ID) LEFT JOIN Job ON "
        "Timelog.JobNo = Job.JobNo) LEFT JOIN Employee ON Timelog.EmpID = Employee.EmpID WHERE "_s +
        scope.condition;
    if (scope.many)
        select +=
            u" AND (Timelog.Status IN ('0', 'A') OR Sign_in.ID IS NULL OR Timelog.EmpID <> "
            "Sign_in.EmpID OR Timelog.StartDate < Sign_in.Sign_in OR Timelog.SuspDate > "
            "Sign_in.Sign_out OR Timelog.FinishDate > Sign_in.Sign_out OR (Timelog.JobNo > 0 "
            "AND Job.JobNo IS NULL) OR (Job.Shipped = True AND Timelog.StartDate > "
            "Job.ShipDate AND DateValue(Timelog.StartDate) > Job.ShipDate) OR Employee.EmpID "
            "IS NULL OR (Employee.EmpStatus = 'Terminated' AND Timelog.StartDate > "
            "Employee.[Terminate] AND DateValue(Timelog.StartDate) > Employee.[Terminate]))"_s;
    return select;
}

class WorkCheck {
  public:
    WorkCheck(const ShopFacts& facts, std::vector<TimeException>& found)
        : m_facts(facts), m_found(found) {}

    void look(const WorkRecord& work) {
        manual(work);
        closedJob(work);
        leftEmployee(work);
        if (work.isManual() || !work.countsInAttendance())
            return;
        openTooLong(work);
        if (!work.isWithinOwnAttendance())
            m_outside.push_back(work);
    }

    /// Those that lie within no attendance at all, the other ones of their employees included.
    void lookOutside(jet::Database& database);

  private:
    TimeException& add(const WorkRecord& work, ExceptionKind kind, const QString& text) {
        return m_found.emplace_back(TimeException{
            .kind = kind,
            .record = Record::Work,
            .id = work.id,
            .empId = work.empId,
            .signId = work.hasOwnAttendance() ? work.signId : 0,
            .jobNo = work.jobNo,
            .when = work.start,
            .employee = m_facts.employeeName(work.empId),
            .text = text,
        });
    }
    QString name(const WorkRecord& work) const { return m_facts.workName(work.jobNo, work.operNo); }
    void manual(const WorkRecord& work);
    void openTooLong(const WorkRecord& work);
    void closedJob(const WorkRecord& work);
    void leftEmployee(const WorkRecord& work);
    QString whyOutside(const WorkRecord& work) const;

    const ShopFacts& m_facts;
    std::vector<TimeException>& m_found;
    std::vector<WorkRecord> m_outside;
};

void WorkCheck::manual(const WorkRecord& work) {
    if (work.isManual())
        add(work, ExceptionKind::Manual,
            u"%1: %2 hours were entered by hand."_s.arg(name(work),
                                                        values::format(work.hours, u"0.00")));
}

void WorkCheck::openTooLong(const WorkRecord& work) {
    if (!work.isRunning() || !work.start.isValid())
        return;
    const ShiftHours& shift = m_facts.shiftOf(work.empId);
    const Seconds open = secondsOf(m_facts.now) - secondsOf(work.start);
    if (open > shift.length)
        add(work, ExceptionKind::OpenTooLong,
            u"%1 has been running for %2 hours; %3."_s.arg(name(work), hoursText(open),
                                                           shiftText(shift)));
}

void WorkCheck::closedJob(const WorkRecord& work) {
    if (work.jobNo <= 0)
        return;
    if (!work.jobFound) {
        add(work, ExceptionKind::ClosedJob,
            u"%1: the job has been deleted, or never was."_s.arg(name(work)));
    } else if (work.shipped && work.isRunning()) {
        add(work, ExceptionKind::ClosedJob,
            u"%1 is running, and the job has been shipped."_s.arg(name(work)));
    } else if (work.shipped && work.shipDate.isValid() && work.start.isValid() &&
               work.start.date() > work.shipDate) {
        add(work, ExceptionKind::ClosedJob,
            u"%1 was worked on after the job was shipped on %2."_s.arg(
                name(work), values::format(work.shipDate, u"Short Date")));
    }
}

void WorkCheck::leftEmployee(const WorkRecord& work) {
    if (!m_facts.hadLeft(work.empId, work.start.date(), work.isRunning()))
        return;
    add(work, ExceptionKind::LeftEmployee, name(work) + u": "_s + m_facts.leaving(work.empId));
}

QString WorkCheck::whyOutside(const WorkRecord& work) const {
    const QString what = work.end.isValid() ? u"%1 until %2"_s.arg(name(work), momentText(work.end))
                                            : u"%1, still running"_s.arg(name(work));
    if (!work.signFound)
        return what + u": its sign-in does not exist."_s;
    if (work.signEmp != work.empId)
        return what + u": its sign-in is another employee's."_s;
    return what + u": the employee was signed in from %1 to %2."_s.arg(momentText(work.cameIn),
                                                                       momentText(work.wentOut));
}

void WorkCheck::lookOutside(jet::Database& database) {
    QSet<qint64> covered;
    for (std::size_t first = 0; first < m_outside.size(); first += Scope::listLength) {
        std::vector<qint64> ids;
        QHash<qint64, const WorkRecord*> byId;
        for (std::size_t i = first; i < std::min(first + Scope::listLength, m_outside.size());
             ++i) {
            ids.push_back(m_outside[i].id);
            byId.insert(m_outside[i].id, &m_outside[i]);
        }
        jet::Recordset row =
            read(database,
                 u"SELECT Timelog.ID, Sign_in.Sign_in AS CameIn, Sign_in.Sign_out AS WentOut FROM "
                 "Timelog INNER JOIN Sign_in ON Timelog.EmpID = Sign_in.EmpID WHERE "_s +
                     Scope::list(u"Timelog"_s, ids).condition +
                     u" AND Sign_in.Sign_in <= Timelog.StartDate AND Sign_in.Sign_in >= "
                     "DateAdd('d', -%1, Timelog.StartDate)"_s.arg(longestAttendance));
        for (; !row.eof(); row.moveNext()) {
            const WorkRecord& work = *byId.value(row[u"ID"].toLong());
            const auto in = row[u"CameIn"].toDateTime();
            // One without an end lasts for a day at most.
            const QDateTime out = row[u"WentOut"].toDateTime().value_or(in->addSecs(secondsPerDay));
            if (work.lastMoment(m_facts.now) <= out)
                covered.insert(work.id);
        }
    }
    for (const WorkRecord& work : m_outside) {
        if (!covered.contains(work.id))
            add(work, ExceptionKind::OutsideAttendance, whyOutside(work));
    }
}

// Attendance

struct Attendance {
    qint64 id = 0, empId = 0;
    QDateTime in, out;
};

TimeException attendanceLine(const ShopFacts& facts, const Attendance& attendance,
                             ExceptionKind kind, const QString& text) {
    return {.kind = kind,
            .record = Record::Attendance,
            .id = attendance.id,
            .empId = attendance.empId,
            .signId = attendance.id,
            .when = attendance.in,
            .employee = facts.employeeName(attendance.empId),
            .text = text};
}

void lookOpen(const ShopFacts& facts, const Attendance& attendance, bool cameLater,
              std::vector<TimeException>& found) {
    const ShiftHours& shift = facts.shiftOf(attendance.empId);
    const Seconds in = secondsOf(attendance.in), now = secondsOf(facts.now);
    const bool dayIsOver =
        shift.known ? shift.dayOf(now) > shift.dayOf(in) : now - in > secondsPerDay;
    if (dayIsOver || cameLater) {
        found.push_back(attendanceLine(
            facts, attendance, ExceptionKind::NeverSignedOut,
            u"Signed in at %1 and never signed out."_s.arg(momentText(attendance.in))));
    } else if (now - in > shift.length) {
        found.push_back(attendanceLine(
            facts, attendance, ExceptionKind::OpenTooLong,
            u"Signed in for %1 hours; %2."_s.arg(hoursText(now - in), shiftText(shift))));
    }
}

void lookOverlaps(jet::Database& database, const ShopFacts& facts, const QString& condition,
                  std::vector<TimeException>& found) {
    jet::Recordset row =
        read(database,
             u"SELECT Later.ID, Later.EmpID, Later.Sign_in AS CameIn, Earlier.ID AS Other, "
             "Earlier.Sign_in AS OtherIn, Earlier.Sign_out AS OtherOut FROM Sign_in AS Earlier "
             "INNER JOIN Sign_in AS Later ON Earlier.EmpID = Later.EmpID WHERE "_s +
                 condition +
                 u" AND Later.Sign_in >= Earlier.Sign_in AND Later.Sign_in < Earlier.Sign_out AND "
                 "(Later.Sign_in > Earlier.Sign_in OR Later.ID > Earlier.ID)"_s);
    for (; !row.eof(); row.moveNext()) {
        TimeException line = attendanceLine(
            facts, {row[u"ID"].toLong(), row[u"EmpID"].toLong(), *row[u"CameIn"].toDateTime(), {}},
            ExceptionKind::OverlappingAttendance,
            u"Signed in while signed in from %1 to %2."_s.arg(
                momentText(row[u"OtherIn"].toDateTime().value_or(QDateTime())),
                momentText(row[u"OtherOut"].toDateTime().value_or(QDateTime()))));
        line.partner = row[u"Other"].toLong();
        found.push_back(line);
    }
}

// Operations

void lookOverEstimate(jet::Database& database, const ShopFacts& facts,
                      std::vector<TimeException>& found) {
    jet::Recordset row =
        read(database,
             u"SELECT JobOper.ID, JobOper.JobNo, JobOper.OperNo, JobOper.EstOper, "
             "SUM(Timelog.AccumTime) AS Booked FROM ((Job INNER JOIN JobOper ON Job.JobNo = "
             "JobOper.JobNo) INNER JOIN Operation ON JobOper.OperNo = Operation.OperNo) INNER JOIN "
             "Timelog ON JobOper.JobNo = Timelog.JobNo AND JobOper.OperNo = Timelog.OperNo WHERE "
             "Job.Shipped = False AND Operation.OperType = 'I' AND JobOper.EstOper > 0 GROUP BY "
             "JobOper.ID, JobOper.JobNo, JobOper.OperNo, JobOper.EstOper"_s);
    for (; !row.eof(); row.moveNext()) {
        const double booked = row[u"Booked"].toDouble(), estimate = row[u"EstOper"].toDouble();
        // Half a hundredth: sums of hours in hundredths are not whole in binary.
        if (booked <= estimate * (100 + facts.hoursOverPercent) / 100 + 0.005)
            continue;
        const qint64 jobNo = row[u"JobNo"].toLong();
        found.push_back(
            {.kind = ExceptionKind::OverEstimate,
             .record = Record::Operation,
             .id = row[u"ID"].toLong(),
             .jobNo = jobNo,
             .text = u"%1 has %2 hours, and %3 were estimated: %4 % more, %5 % pass."_s.arg(
                 facts.workName(jobNo, row[u"OperNo"].toLong()), values::format(booked, u"0.00"),
                 values::format(estimate, u"0.00"),
                 values::format((booked / estimate - 1) * 100, u"0"),
                 QString::number(facts.hoursOverPercent))});
    }
}

void lookOutOfOrder(jet::Database& database, const ShopFacts& facts,
                    std::vector<TimeException>& found) {
    jet::Recordset row = read(
        database,
        u"SELECT JobOper.ID, JobOper.JobNo, JobOper.OperNo, JobOper.Status FROM (Job INNER JOIN "
        "JobOper ON Job.JobNo = JobOper.JobNo) INNER JOIN Operation ON JobOper.OperNo = "
        "Operation.OperNo WHERE Job.Shipped = False AND Job.OrderRequired = True AND "
        "Operation.OperType = 'I' ORDER BY JobOper.JobNo, JobOper.SeqNo"_s);
    qint64 job = 0, operationBefore = 0;
    bool finishedBefore = true;
    for (; !row.eof(); row.moveNext()) {
        const qint64 jobNo = row[u"JobNo"].toLong(), operNo = row[u"OperNo"].toLong();
        const bool finished = row.text(u"Status").compare(u"F"_s, Qt::CaseInsensitive) == 0;
        if (jobNo == job && finished && !finishedBefore)
            found.push_back(
                {.kind = ExceptionKind::OutOfOrder,
                 .record = Record::Operation,
                 .id = row[u"ID"].toLong(),
                 .jobNo = jobNo,
                 .text = u"%1 is finished, and %2 before it is not; the job is "
                         "sequential."_s.arg(facts.workName(jobNo, operNo),
                                             facts.operations.value(operationBefore).description)});
        job = jobNo;
        operationBefore = operNo;
        finishedBefore = finished;
    }
}

} // namespace

Scope Scope::numbers(const QString& table, qint64 from, qint64 to) {
    return {u"%1.ID BETWEEN %2 AND %3"_s.arg(table, QString::number(from), QString::number(to))};
}

Scope Scope::list(const QString& table, const std::vector<qint64>& ids) {
    // Few lengths, so that few statements are prepared: the last number fills up.
    std::size_t length = 1;
    while (length < ids.size())
        length *= 8;
    QStringList numbers;
    for (std::size_t i = 0; i < length; ++i)
        numbers << QString::number(ids.empty() ? 0 : ids[std::min(i, ids.size() - 1)]);
    return {table + u".ID IN ("_s + numbers.join(u", "_s) + u")"_s, false};
}

std::vector<TimeException> checkWork(jet::Database& database, const ShopFacts& facts,
                                     const Scope& scope) {
    std::vector<TimeException> found;
    WorkCheck check(facts, found);
    for (jet::Recordset row = read(database, workSelect(scope)); !row.eof(); row.moveNext())
        check.look(workRecord(row, facts));
    check.lookOutside(database);
    return found;
}

std::vector<TimeException> checkAttendance(jet::Database& database, const ShopFacts& facts,
                                           const Scope& scope) {
    std::vector<TimeException> found;
    QString select =
        u"SELECT Sign_in.ID, Sign_in.EmpID, Sign_in.Sign_in AS CameIn, Sign_in.Sign_out AS "
        "WentOut, (SELECT MAX(Later.Sign_in) FROM Sign_in AS Later WHERE Later.EmpID = "
        "Sign_in.EmpID) AS LastIn FROM Sign_in LEFT JOIN Employee ON Sign_in.EmpID = "
        "Employee.EmpID WHERE "_s +
        scope.condition +
        u" AND (Sign_in.Sign_out IS NULL OR Employee.EmpID IS NULL OR (Employee.EmpStatus = "
        "'Terminated' AND Sign_in.Sign_in > Employee.[Terminate]))"_s;
    for (jet::Recordset row = read(database, select); !row.eof(); row.moveNext()) {
        const Attendance attendance{row[u"ID"].toLong(), row[u"EmpID"].toLong(),
                                    row[u"CameIn"].toDateTime().value_or(QDateTime()),
                                    row[u"WentOut"].toDateTime().value_or(QDateTime())};
        if (!attendance.in.isValid())
            continue;
        const bool open = !attendance.out.isValid();
        if (open)
            lookOpen(facts, attendance,
                     row[u"LastIn"].toDateTime().value_or(attendance.in) > attendance.in, found);
        if (facts.hadLeft(attendance.empId, attendance.in.date(), open))
            found.push_back(attendanceLine(facts, attendance, ExceptionKind::LeftEmployee,
                                           u"Signed in: "_s + facts.leaving(attendance.empId)));
    }
    const auto with = [&](const QString& alias) {
        return QString(scope.condition).replace(u"Sign_in."_s, alias + u'.');
    };
    lookOverlaps(database, facts, with(u"Earlier"_s), found);
    if (scope.all)
        return found;
    lookOverlaps(
        database, facts,
        with(u"Later"_s) +
            u" AND Earlier.Sign_in >= DateAdd('d', -%1, Later.Sign_in)"_s.arg(longestAttendance),
        found);
    return found;
}

std::vector<TimeException> checkOperations(jet::Database& database, const ShopFacts& facts) {
    std::vector<TimeException> found;
    lookOverEstimate(database, facts, found);
    lookOutOfOrder(database, facts, found);
    return found;
}

} // namespace timemgmt
