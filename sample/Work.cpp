#include "estimating/Costing.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"
#include "sample/Shop.h"

namespace sample {

namespace {

using estimating::MiscRow;
using estimating::OperRow;
using values::Currency;

constexpr int shiftStart = 7 * 60;  ///< minutes after midnight
constexpr int shiftLength = 8 * 60; ///< of which work can be booked

bool isWorkday(const QDate& date) {
    return date.dayOfWeek() <= 5;
}

/// Who was there on which day, and how much of each day is booked.
class Attendance {
  public:
    explicit Attendance(Shop& shop) : m_shop(shop) {
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
                const QDateTime in(m_days[d],
                                   QTime(6, 50 + shop.random.below(10), shop.random.below(60)),
                                   Qt::UTC);
                m_signIds[d * shop.employees.size() + e] =
                    Row(u"Sign_in")
                        .set(u"EmpID", shop.employees[e])
                        .set(u"Sign_in", in)
                        .set(u"Sign_out",
                             in.addSecs((shiftLength + 15) * 60 + shop.random.below(600)))
                        .insert(shop.database);
            }
        }
    }

    struct Stretch {
        qint64 empID = 0, signID = 0;
        QDateTime begin;
        int minutes = 0;
    };

    /// Books minutes of work on or soon after a day; nothing where everybody is booked or the day
    /// lies beyond yesterday.
    std::optional<Stretch> book(const QDate& wanted, int minutes) {
        for (int tries = 0; tries < 14; ++tries) {
            const auto offset = m_shop.start.daysTo(wanted.addDays(tries / 2));
            if (offset < 0 || offset >= static_cast<qint64>(m_dayIndex.size()))
                return std::nullopt;
            const int day = m_dayIndex[static_cast<std::size_t>(offset)];
            if (day < 0)
                continue;
            const auto e = static_cast<std::size_t>(
                m_shop.random.below(static_cast<int>(m_shop.employees.size())));
            const std::size_t cell = static_cast<std::size_t>(day) * m_shop.employees.size() + e;
            if (m_signIds[cell] == 0 || m_booked[cell] + minutes > shiftLength)
                continue;
            const QDateTime begin(m_days[static_cast<std::size_t>(day)], QTime(0, 0), Qt::UTC);
            Stretch stretch{m_shop.employees[e], m_signIds[cell],
                            begin.addSecs((shiftStart + m_booked[cell]) * 60), minutes};
            m_booked[cell] = static_cast<std::uint16_t>(m_booked[cell] + minutes);
            return stretch;
        }
        return std::nullopt;
    }

  private:
    Shop& m_shop;
    std::vector<QDate> m_days;
    std::vector<int> m_dayIndex;
    std::vector<qint64> m_signIds;
    std::vector<std::uint16_t> m_booked;
};

struct EstimateMade {
    qint64 estNo = 0;
    qint64 custID = 0;
    Part part;
    QDate date;
    std::vector<OperRow> operations;
    std::vector<MiscRow> fixedCosts;
    bool oneShopRate = false;
    Currency rate;
    int quantity = 0;
    Currency quotedEach;
};

EstimateMade makeEstimate(Shop& shop, const QDate& date) {
    Random& random = shop.random;
    EstimateMade estimate;
    estimate.custID = random.of(shop.customers);
    estimate.part = madeUpPart(random);
    estimate.date = date;
    estimate.oneShopRate = random.chance(30);
    estimate.rate = Currency::fromInteger(random.between(55, 75));
    estimate.quantity = random.of(std::vector<int>{1, 2, 5, 10, 25, 50, 100, 250});

    const int rows = random.between(3, 6);
    auto first = static_cast<std::size_t>(random.below(static_cast<int>(shop.inhouse.size())));
    for (int i = 0; i < rows; ++i) {
        // Steps through the catalogue, so that no operation stands twice in a routing.
        const Operation& operation =
            shop.inhouse[(first + static_cast<std::size_t>(i) * 3) % shop.inhouse.size()];
        OperRow row;
        row.operNo = operation.operNo;
        row.description = operation.description;
        row.rate = operation.rate;
        row.time = random.between(1, 40) * 0.25;
        estimate.operations.push_back(row);
    }
    if (random.chance(40)) {
        const Operation& operation = random.of(shop.outside);
        OperRow row;
        row.operNo = operation.operNo;
        row.description = operation.description;
        row.inhouse = false;
        row.time = random.between(20, 400) + random.below(4) * 0.25;
        estimate.operations.insert(estimate.operations.end() - 1, row);
    }
    const int items = random.below(4);
    const auto firstItem =
        static_cast<std::size_t>(random.below(static_cast<int>(shop.fixedCosts.size())));
    for (int i = 0; i < items; ++i) {
        MiscRow item =
            shop.fixedCosts[(firstItem + static_cast<std::size_t>(i)) % shop.fixedCosts.size()];
        item.quantity = Currency::fromInteger(random.between(1, 30));
        item.retotal();
        estimate.fixedCosts.push_back(item);
    }

    const std::array<double, estimating::breakCount> discounts = {0, 5, 10, 12.5, 15};
    const estimating::EstimateCost cost =
        estimating::CalcEstimate(estimate.operations, estimate.fixedCosts, estimate.oneShopRate,
                                 estimate.rate, estimate.quantity, discounts);
    const int breaks = random.of(std::vector<int>{1, 1, 3, 5});
    std::array<double, estimating::breakCount> quantities{}, quoted{};
    Row row(u"Estimate");
    row.set(u"CustID", estimate.custID)
        .set(u"RFQNo", QStringLiteral("RFQ-") + QString::number(random.between(1000, 99999)))
        .set(u"Description", estimate.part.description)
        .set(u"PartNo", estimate.part.number)
        .set(u"Quantity", estimate.quantity)
        .set(u"EstDate", date)
        .set(u"EstShopRate", estimate.rate)
        .set(u"OneShopRate", estimate.oneShopRate)
        .set(u"AssemblyEstno", 0);
    for (int i = 0; i < estimating::breakCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i < breaks) {
            quantities[at] = estimate.quantity * (i + 1.0);
            quoted[at] = Currency::fromDouble(std::ceil(cost.priceEach[at] * 115) / 100).toDouble();
        }
    }
    const auto totals = estimating::CalcQuoteTotals(quoted, quantities);
    for (int i = 0; i < estimating::breakCount; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const char16_t letter = static_cast<char16_t>(u'A' + i);
        const auto column = [letter](const char16_t* name) {
            return (QString::fromUtf16(name) + QChar(letter)).toStdU16String();
        };
        row.set(column(u"QtyBreak").c_str(), quantities[at])
            .set(column(u"QtyDiscount").c_str(), i < breaks ? discounts[at] : 0.0)
            .set(column(u"QtyPrice").c_str(),
                 Currency::fromDouble(i < breaks ? cost.priceEach[at] : cost.priceEach[0]))
            .set(column(u"QtyQP").c_str(), Currency::fromDouble(quoted[at]))
            .set(column(u"QtyTotal").c_str(), Currency::fromDouble(totals[at]));
    }
    if (random.chance(25)) {
        row.set(u"EstNotes", u"Delivery four weeks after receipt of order and material.")
            .set(u"TravelerNotes", u"Tag every piece. Keep cert's with the lot.");
    }
    if (random.chance(15))
        row.set(u"Material", u"Customer supplies the blank; 3 mm over on all sides.");
    estimate.quotedEach = Currency::fromDouble(quoted[0]);
    estimate.estNo = row.insert(shop.database);

    int seqNo = 0;
    for (const OperRow& operation : estimate.operations) {
        const qint64 id = Row(u"EstOper")
                              .set(u"EstNo", estimate.estNo)
                              .set(u"SeqNo", ++seqNo)
                              .set(u"OperNo", operation.operNo)
                              .set(u"OperTime_Amount", *operation.time)
                              .set(u"OperShopRate", operation.inhouse ? operation.rate : Currency())
                              .insert(shop.database);
        if (random.chance(6))
            Row(u"EstOperNote")
                .set(u"ID", id)
                .set(u"EstNo", estimate.estNo)
                .set(u"SeqNo", seqNo)
                .set(u"OperNotes", u"Watch the wall thickness: it isn't on the print.")
                .insert(shop.database);
    }
    for (const MiscRow& item : estimate.fixedCosts) {
        Row(u"EstMiscCost")
            .set(u"EstNo", estimate.estNo)
            .set(u"ItemNo", item.itemNo)
            .set(u"UnitofMeasure", item.unit)
            .set(u"UnitPrice", item.price)
            .set(u"Quantity", item.quantity)
            .set(u"CostAmount", item.total)
            .insert(shop.database);
    }
    shop.estimates.push_back(estimate.estNo);
    return estimate;
}

struct OperationDone {
    double hours = 0;
    QString status = QStringLiteral(" ");
    std::vector<std::pair<Attendance::Stretch, bool>>
        stretches; ///< and whether it was the last one
};

/// Books an operation's hours from a day on, as far as the calendar goes.
OperationDone workOn(Shop& shop, Attendance& attendance, double estimated, QDate& day) {
    OperationDone done;
    // In steps of three minutes, so that hours have two decimals.
    int left =
        std::max(3, static_cast<int>(estimated * shop.random.between(70, 135) / 100 * 20) * 3);
    while (left > 0) {
        const int minutes = std::min(left, shop.random.between(10, 70) * 3);
        const auto stretch = attendance.book(day, minutes);
        if (!stretch)
            break;
        left -= minutes;
        day = stretch->begin.date();
        done.hours += minutes / 60.0;
        done.stretches.push_back({*stretch, left <= 0});
    }
    done.hours = values::val(values::format(done.hours, u"0.00"));
    if (!done.stretches.empty())
        done.status = left <= 0 ? QStringLiteral("F") : QStringLiteral("D");
    return done;
}

void writeStretch(Shop& shop, const Attendance::Stretch& stretch, qint64 jobNo, qint64 operNo,
                  bool last, int quantity) {
    const QDateTime end = stretch.begin.addSecs(stretch.minutes * 60);
    Row(u"Timelog")
        .set(u"EmpID", stretch.empID)
        .set(u"JobNo", jobNo)
        .set(u"OperNo", operNo)
        .set(u"SignID", stretch.signID)
        .set(u"AccumTime", values::val(values::format(stretch.minutes / 60.0, u"0.00")))
        .set(u"Status", last ? u"F" : u"D")
        .set(u"StartDate", stretch.begin)
        .set(u"SuspDate", end)
        .set(u"PartsQty", last ? quantity : 0)
        .set(u"PartsScrap", 0)
        .insert(shop.database);
}

void makeJob(Shop& shop, Attendance& attendance, const EstimateMade& estimate, bool fromEstimate) {
    Random& random = shop.random;
    JobMade job;
    job.custID = estimate.custID;
    job.part = estimate.part;
    job.in = estimate.date.addDays(random.between(2, 12));
    job.due = job.in.addDays(random.between(10, 45));
    job.quantity = estimate.quantity;
    job.poNo = QStringLiteral("PO-") + QString::number(random.between(1000, 99999));

    const bool started = job.in < shop.today.addDays(-3);
    QDate day = job.in.addDays(1);
    std::vector<OperationDone> done(estimate.operations.size());
    Currency inhouse, outside, fixed;
    double inhouseCost = 0;
    float hours = 0;
    for (std::size_t i = 0; i < estimate.operations.size(); ++i) {
        const OperRow& row = estimate.operations[i];
        if (!row.inhouse) {
            outside += Currency::fromDouble(*row.time);
            continue;
        }
        if (started)
            done[i] = workOn(shop, attendance, *row.time, day);
        const Currency rate = estimate.oneShopRate ? estimate.rate : row.rate;
        inhouseCost += done[i].hours * rate.toDouble();
        hours += static_cast<float>(done[i].hours);
    }
    inhouse = Currency::fromDouble(inhouseCost);
    for (const MiscRow& item : estimate.fixedCosts)
        fixed += item.total;
    const bool allDone = std::all_of(done.begin(), done.end(), [](const OperationDone& d) {
        return d.status == u"F" || d.stretches.empty();
    });
    // Some jobs are late: due long ago, still on the floor.
    job.shipped = started && allDone && job.due < shop.today.addDays(-5) && !random.chance(3);
    const QDate shipDate =
        std::min(std::max(day, job.due.addDays(random.between(-6, 9))), shop.today.addDays(-1));

    Row row(u"Job");
    row.set(u"CustID", job.custID)
        .set(u"PONo", job.poNo)
        .set(u"Description", job.part.description)
        .set(u"PartNo", job.part.number)
        .set(u"Quantity", job.quantity)
        .set(u"JobShopRate", estimate.rate)
        .set(u"OneShopRate", estimate.oneShopRate)
        .set(u"OrderRequired", random.chance(20))
        .set(u"QtyQuotedPrice", estimate.quotedEach)
        .set(u"JobDateIn", job.in)
        .set(u"JobDueDate", job.due)
        .set(u"TotalHours", values::val(values::format(static_cast<double>(hours), u"#0.00")))
        .set(u"JobShopCost",
             Currency::fromDouble((inhouse + outside + fixed).toDouble() / job.quantity))
        .set(u"InvoiceEach", estimate.quotedEach)
        .set(u"InvoiceTotal", estimate.quotedEach * Currency::fromInteger(job.quantity))
        .set(u"Shipped", job.shipped);
    if (job.shipped)
        row.set(u"ShipDate", shipDate);
    if (fromEstimate)
        row.set(u"EstNo", estimate.estNo);
    if (random.chance(20))
        row.set(u"TravelerNotes", u"Tag every piece. Keep cert's with the lot.");
    if (random.chance(10))
        row.set(u"JobNotes", u"Customer calls every Friday.\r\nAsk for Müller.");
    job.jobNo = row.insert(shop.database);

    int seqNo = 0;
    for (std::size_t i = 0; i < estimate.operations.size(); ++i) {
        const OperRow& operation = estimate.operations[i];
        const qint64 id =
            Row(u"JobOper")
                .set(u"JobNo", job.jobNo)
                .set(u"SeqNo", ++seqNo)
                .set(u"OperNo", operation.operNo)
                .set(u"OperTime_Amount", operation.inhouse ? done[i].hours : *operation.time)
                .set(u"OperShopRate", operation.inhouse ? operation.rate : Currency())
                .set(u"OperLocated", 0)
                .set(u"Status", done[i].status)
                .set(u"EstOper", *operation.time)
                .insert(shop.database);
        if (random.chance(6))
            Row(u"JobOperNote")
                .set(u"ID", id)
                .set(u"JobNo", job.jobNo)
                .set(u"SeqNo", seqNo)
                .set(u"OperNotes", u"Use the fixture from last time (shelf 4).")
                .insert(shop.database);
        for (const auto& [stretch, last] : done[i].stretches)
            writeStretch(shop, stretch, job.jobNo, operation.operNo, last && done[i].status == u"F",
                         job.quantity);
        if (operation.inhouse && !job.shipped && job.due >= shop.today.addDays(-30)) {
            const QDate begin = job.in.addDays(seqNo * 2);
            Row(u"JobOperSchedule")
                .set(u"JobNo", job.jobNo)
                .set(u"SeqNo", seqNo)
                .set(u"OperNo", operation.operNo)
                .set(u"Description", operation.description)
                .set(u"TextAlign", 3)
                .set(u"StartDate", begin)
                .set(u"StartTime", u"07:00 AM")
                .set(u"EndDate", begin.addDays(1))
                .set(u"EndTime", u"03:30 PM")
                .insert(shop.database);
        }
    }
    for (const MiscRow& item : estimate.fixedCosts) {
        Row(u"JobMiscCost")
            .set(u"JobNo", job.jobNo)
            .set(u"ItemNo", item.itemNo)
            .set(u"CostAmount", item.total)
            .set(u"UnitofMeasure", item.unit)
            .set(u"UnitPrice", item.price)
            .set(u"Quantity", item.quantity)
            .insert(shop.database);
    }
    if (job.shipped) {
        const int firstLot =
            job.quantity > 10 && random.chance(30) ? job.quantity / 2 : job.quantity;
        const auto ship = [&](const QDate& date, int quantity) {
            Row(u"JobShip")
                .set(u"JobNo", job.jobNo)
                .set(u"ShippedDate", date)
                .set(u"Quantity", quantity)
                .set(u"ShippedByEmpID", random.of(shop.employees))
                .insert(shop.database);
        };
        ship(shipDate, firstLot);
        if (firstLot < job.quantity)
            ship(shipDate, job.quantity - firstLot);
    }
    shop.jobs.push_back(job);
}

/// Some people are in right now, a few with a stretch running.
void makeToday(Shop& shop) {
    std::size_t running = 0;
    for (std::size_t e = 0; e < shop.employees.size(); e += 2) {
        const QDateTime in(shop.today, QTime(6, 52, 10), Qt::UTC);
        const qint64 signID = Row(u"Sign_in")
                                  .set(u"EmpID", shop.employees[e])
                                  .set(u"Sign_in", in)
                                  .insert(shop.database);
        shop.database.execute(QStringLiteral("UPDATE Employee SET SignedIn = True WHERE EmpID = ") +
                              QString::number(shop.employees[e]));
        if (e % 4 == 0) {
            while (running < shop.jobs.size() && shop.jobs[shop.jobs.size() - 1 - running].shipped)
                ++running;
            if (running >= shop.jobs.size())
                continue;
            const JobMade& job = shop.jobs[shop.jobs.size() - 1 - running++];
            const jet::Value operNo = shop.database.lookup(
                QStringLiteral(
                    "SELECT TOP 1 JobOper.OperNo FROM JobOper INNER JOIN Operation ON "
                    "JobOper.OperNo = "
                    "Operation.OperNo WHERE Operation.OperType = 'I' AND JobOper.JobNo = ") +
                QString::number(job.jobNo) + QStringLiteral(" ORDER BY JobOper.SeqNo"));
            Row(u"Timelog")
                .set(u"EmpID", shop.employees[e])
                .set(u"JobNo", job.jobNo)
                .set(u"OperNo", operNo.toLong())
                .set(u"SignID", signID)
                .set(u"AccumTime", 0)
                .set(u"Status", u"A")
                .set(u"StartDate", in.addSecs(600))
                .insert(shop.database);
        }
    }
}

} // namespace

void makeWork(Shop& shop) {
    Attendance attendance(shop);
    const auto span = shop.start.daysTo(shop.today);
    std::vector<qint64> gone;
    for (int i = 0; static_cast<int>(shop.jobs.size()) < shop.options.jobs; ++i) {
        const auto made = static_cast<qint64>(shop.jobs.size());
        const EstimateMade estimate =
            makeEstimate(shop, shop.start.addDays(made * (span - 2) / shop.options.jobs));
        const int kind = i % 20;
        if (kind == 7) // never became a job
            continue;
        if (kind == 13) { // thrown away: a gap in the numbers
            gone.push_back(estimate.estNo);
            continue;
        }
        makeJob(shop, attendance, estimate, kind != 17);
        if (kind == 3 && static_cast<int>(shop.jobs.size()) < shop.options.jobs)
            makeJob(shop, attendance, estimate, true);
    }
    for (const qint64 estNo : gone) {
        for (const auto* table : {u"EstOper", u"EstMiscCost", u"EstOperNote", u"Estimate"})
            shop.database.execute(QStringLiteral("DELETE FROM ") + QString::fromUtf16(table) +
                                  QStringLiteral(" WHERE EstNo=") + QString::number(estNo));
        shop.estimates.erase(std::find(shop.estimates.begin(), shop.estimates.end(), estNo));
    }
    // Overhead time, on no job.
    for (QDate day = shop.start; day < shop.today; day = day.addDays(7)) {
        if (const auto stretch = attendance.book(day, 30)) {
            const QDateTime end = stretch->begin.addSecs(1800);
            Row(u"Timelog")
                .set(u"EmpID", stretch->empID)
                .set(u"JobNo", 0)
                .set(u"OperNo", shop.random.of(shop.overhead).operNo)
                .set(u"SignID", stretch->signID)
                .set(u"AccumTime", 0.5)
                .set(u"Status", u"F")
                .set(u"StartDate", stretch->begin)
                .set(u"FinishDate", end)
                .insert(shop.database);
        }
    }
    makeToday(shop);
}

} // namespace sample
