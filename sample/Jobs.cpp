#include "estimating/Routing.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "sample/Work.h"

namespace sample {

using estimating::MiscRow;
using estimating::OperRow;
using values::Currency;

namespace {

struct Booking {
    Attendance::Stretch stretch;
    char16_t status; ///< D suspended, F finished, 0 typed in by the office
};

struct OperationDone {
    double hours = 0;
    QString status = u" "_s;
    std::vector<Booking> bookings;
};

double twoDecimals(double hours) {
    return values::val(values::format(hours, u"0.00"));
}

/// Books part (0 to 1) of an operation's hours from a day on, as far as the calendar goes, and
/// moves the day on to the last booking's.
OperationDone workOn(Shop& shop, Attendance& attendance, double estimated, double part,
                     QDate& day) {
    Random& random = shop.random;
    OperationDone done;
    // In steps of three minutes, so that hours have two decimals.
    const int whole =
        std::max(3, static_cast<int>(estimated * random.between(70, 135) / 100 * 20) * 3);
    const int wanted = std::max(3, static_cast<int>(whole * part) / 3 * 3);
    int left = wanted;
    qint64 empID = 0;
    while (left > 0) {
        const int minutes = std::min(left, random.between(5, 31) * 3);
        const auto stretch = attendance.book(day, minutes, empID);
        if (!stretch)
            break;
        left -= minutes;
        day = stretch->begin.date();
        empID = stretch->empID;
        done.hours += minutes / 60.0;
        done.bookings.push_back({*stretch, u'D'});
    }
    if (left <= 0 && wanted == whole)
        done.bookings.back().status = u'F';
    if (!done.bookings.empty())
        done.status = done.bookings.back().status;
    return done;
}

void writeBooking(Shop& shop, const Booking& booking, qint64 jobNo, qint64 operNo, int quantity) {
    const Attendance::Stretch& stretch = booking.stretch;
    Row row(u"Timelog");
    row.set(u"EmpID", stretch.empID)
        .set(u"JobNo", jobNo)
        .set(u"OperNo", operNo)
        .set(u"SignID", stretch.signID)
        .set(u"AccumTime", twoDecimals(stretch.minutes / 60.0))
        .set(u"Status", QString(QChar(booking.status)));
    if (booking.status == u'0')
        row.set(u"StartDate", stretch.begin.date());
    else
        row.set(u"StartDate", stretch.begin)
            .set(u"SuspDate", stretch.begin.addSecs(stretch.minutes * 60))
            .set(u"PartsQty", booking.status == u'F' ? quantity : 0)
            .set(u"PartsScrap", booking.status == u'F' && shop.random.chance(8) ? 1 : 0);
    row.insert(shop.database);
}

/// What the shop floor did for a job, by operation of its routing.
struct Floor {
    std::vector<OperationDone> done;
    QDate lastDay;
    bool finished = false;
};

Floor workOnJob(Shop& shop, Attendance& attendance, const EstimateMade& estimate, const QDate& in,
                bool inSequence) {
    Random& random = shop.random;
    Floor floor;
    floor.done.resize(estimate.operations.size());
    floor.lastDay = in.addDays(1);
    // A few jobs lie there half done: the late ones.
    const std::size_t stopsAt =
        random.chance(4) ? estimate.operations.size() / 2 : estimate.operations.size();
    floor.finished = true;
    for (std::size_t i = 0; i < estimate.operations.size(); ++i) {
        const OperRow& row = estimate.operations[i];
        if (!row.inhouse) {
            floor.lastDay = floor.lastDay.addDays(random.between(3, 8));
            continue;
        }
        OperationDone& done = floor.done[i];
        if (floor.finished)
            done = workOn(shop, attendance, *row.time, i == stopsAt ? 0.5 : 1, floor.lastDay);
        floor.finished = floor.finished && done.status == u"F";
        if (done.status != u" " && !inSequence && random.chance(4)) {
            if (const auto forgotten = attendance.book(floor.lastDay, random.between(5, 30) * 3)) {
                done.hours += forgotten->minutes / 60.0;
                done.bookings.push_back({*forgotten, u'0'});
            }
        }
        done.hours = twoDecimals(done.hours);
        floor.lastDay = floor.lastDay.addDays(random.between(0, 4));
    }
    return floor;
}

/// Sums in the way of the roll-up: money in four decimals, hours in a 32-bit float.
struct JobSums {
    Currency cost;
    float hours = 0;
};

JobSums sumsOf(const EstimateMade& estimate, const Floor& floor) {
    JobSums sums;
    double inhouse = 0;
    for (std::size_t i = 0; i < estimate.operations.size(); ++i) {
        const OperRow& row = estimate.operations[i];
        if (!row.inhouse) {
            sums.cost += Currency::fromDouble(*row.time);
            continue;
        }
        const Currency rate = estimate.oneShopRate ? estimate.rate : row.rate;
        inhouse += floor.done[i].hours * rate.toDouble();
        sums.hours += static_cast<float>(floor.done[i].hours);
    }
    sums.cost += Currency::fromDouble(inhouse);
    for (const MiscRow& item : estimate.fixedCosts)
        sums.cost += item.total;
    return sums;
}

void ship(Shop& shop, const JobMade& job, const QDate& date, int quantity) {
    Row(u"JobShip")
        .set(u"JobNo", job.jobNo)
        .set(u"ShippedDate", date)
        .set(u"Quantity", quantity)
        .set(u"ShippedByEmpID", shop.random.of(shop.employees))
        .insert(shop.database);
}

void schedule(Shop& shop, const JobMade& job, const OperRow& operation, int seqNo) {
    // Within the job's dates, else the planner couldn't save it again; on work days where it can
    // be.
    QDate begin = std::max(job.in, std::min(job.in.addDays(seqNo * 2), job.due.addDays(-1)));
    while (begin.dayOfWeek() > 4 && begin > job.in)
        begin = begin.addDays(-1);
    Row(u"JobOperSchedule")
        .set(u"JobNo", job.jobNo)
        .set(u"SeqNo", seqNo)
        .set(u"OperNo", operation.operNo)
        .set(u"Description", operation.description)
        .set(u"TextAlign", 3)
        .set(u"StartDate", begin)
        .set(u"StartTime", u"07:00 AM")
        .set(u"EndDate", std::min(begin.addDays(1), std::max(job.due, begin)))
        .set(u"EndTime", u"03:30 PM")
        .insert(shop.database);
}

void writeRouting(Shop& shop, const JobMade& job, const EstimateMade& estimate,
                  const Floor& floor) {
    const bool withNotes = shop.random.chance(70);
    int seqNo = 0;
    for (std::size_t i = 0; i < estimate.operations.size(); ++i) {
        const OperRow& operation = estimate.operations[i];
        const OperationDone& done = floor.done[i];
        const qint64 id =
            Row(u"JobOper")
                .set(u"JobNo", job.jobNo)
                .set(u"SeqNo", ++seqNo)
                .set(u"OperNo", operation.operNo)
                .set(u"OperTime_Amount", operation.inhouse ? done.hours : *operation.time)
                .set(u"OperShopRate", operation.inhouse ? operation.rate : Currency())
                .set(u"OperLocated", 0)
                .set(u"Status", done.status)
                .set(u"EstOper", *operation.time)
                .insert(shop.database);
        const QString note = withNotes ? estimate.operNotes[static_cast<qsizetype>(i)] : QString();
        if (!note.isEmpty() || shop.random.chance(4))
            Row(u"JobOperNote")
                .set(u"ID", id)
                .set(u"JobNo", job.jobNo)
                .set(u"SeqNo", seqNo)
                .set(u"OperNotes",
                     note.isEmpty() ? u"Use the fixture from last time (shelf 4)."_s : note)
                .insert(shop.database);
        for (const Booking& booking : done.bookings)
            writeBooking(shop, booking, job.jobNo, operation.operNo, job.quantity);
        if (operation.inhouse && !job.shipped && job.due >= shop.today.addDays(-30))
            schedule(shop, job, operation, seqNo);
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
}

QString longNote() {
    QString text;
    for (int day = 1; day <= 40; ++day)
        text += u"Call %1 with the customer's engineer: the drawing's section B-B "
                "doesn't agree with the model, keep to the model.\r\n"_s.arg(day);
    return text;
}

/// Writes the job's own row, for an estimate on a date.
JobMade writeJob(Shop& shop, const EstimateMade& estimate, Origin origin, JobMade job, Row& row,
                 const JobSums& sums) {
    Random& random = shop.random;
    row.set(u"CustID", job.custID)
        .set(u"PONo", job.poNo)
        .set(u"Description", job.part.description)
        .set(u"PartNo", job.part.number)
        .set(u"Quantity", job.quantity)
        .set(u"JobShopRate", estimate.rate)
        .set(u"OneShopRate", estimate.oneShopRate)
        .set(u"QtyQuotedPrice", estimate.quotedEach)
        .set(u"JobDateIn", job.in)
        .set(u"JobDueDate", job.due)
        .set(u"TotalHours", values::val(values::format(static_cast<double>(sums.hours), u"#0.00")))
        .set(u"JobShopCost", Currency::fromDouble(sums.cost.toDouble() / job.quantity))
        .set(u"InvoiceEach", estimate.quotedEach)
        .set(u"InvoiceTotal", estimate.quotedEach * Currency::fromInteger(job.quantity))
        .set(u"Shipped", job.shipped);
    if (!estimate.material.isEmpty())
        row.set(u"Material", estimate.material);
    if (origin == Origin::Estimate)
        row.set(u"EstNo", estimate.estNo);
    else if (origin == Origin::Unknown)
        row.setNull(u"EstNo");
    if (random.chance(20))
        row.set(u"TravelerNotes", u"Tag every piece. Keep cert's with the lot.");
    if (shop.jobs.size() == 25)
        row.set(u"JobNotes", longNote());
    else if (random.chance(10))
        row.set(u"JobNotes", u"Customer calls every Friday.\r\nAsk for Müller.");
    job.jobNo = row.insert(shop.database);
    return job;
}

JobMade jobFor(Shop& shop, const EstimateMade& estimate) {
    Random& random = shop.random;
    JobMade job;
    job.custID = estimate.custID;
    job.part = estimate.part;
    job.in = std::min(estimate.date.addDays(random.between(2, 12)), shop.today);
    job.due = job.in.addDays(random.between(10, 45));
    job.quantity = estimate.quantity;
    job.poNo = u"PO-"_s + QString::number(random.between(1000, 99999));
    return job;
}

} // namespace

void makeJob(Shop& shop, Attendance& attendance, const EstimateMade& estimate, Origin origin,
             const JobMade* parent) {
    Random& random = shop.random;
    JobMade job = jobFor(shop, estimate);
    if (parent)
        job.poNo = parent->poNo;
    const bool inSequence = random.chance(20);
    Floor floor;
    floor.done.resize(estimate.operations.size());
    if (job.in < shop.today.addDays(-3))
        floor = workOnJob(shop, attendance, estimate, job.in, inSequence);
    const QDate yesterday = shop.today.addDays(-1);
    job.shipped = floor.finished && job.due < shop.today.addDays(-5);
    const QDate shipDate =
        std::min(std::max(floor.lastDay, job.due.addDays(random.between(-6, 9))), yesterday);

    Row row(u"Job");
    row.set(u"OrderRequired", inSequence).set(u"AssemblyJobNo", parent ? parent->jobNo : 0);
    if (job.shipped)
        row.set(u"ShipDate", shipDate);
    job = writeJob(shop, estimate, origin, job, row, sumsOf(estimate, floor));
    writeRouting(shop, job, estimate, floor);
    if (job.shipped) {
        const int firstLot =
            job.quantity > 10 && random.chance(30) ? job.quantity / 2 : job.quantity;
        if (firstLot < job.quantity)
            ship(shop, job, std::max(job.in, shipDate.addDays(-4)), job.quantity - firstLot);
        ship(shop, job, shipDate, firstLot);
    }
    shop.jobs.push_back(job);
}

void makeDeletedJob(Shop& shop, const EstimateMade& estimate) {
    JobMade job = jobFor(shop, estimate);
    Floor floor;
    floor.done.resize(estimate.operations.size());
    Row row(u"Job");
    job = writeJob(shop, estimate, Origin::Estimate, job, row, sumsOf(estimate, floor));
    writeRouting(shop, job, estimate, floor);
    ship(shop, job, job.in, 1);
    schedule(shop, job, estimate.operations.front(), 1);
    for (const auto* table : {u"JobOperNote", u"JobOper", u"JobMiscCost", u"Job"})
        shop.database.execute(u"DELETE FROM "_s + QString::fromUtf16(table) + u" WHERE JobNo="_s +
                              QString::number(job.jobNo));
}

} // namespace sample
