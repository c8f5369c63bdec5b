#pragma once

#include "sample/Attendance.h"
#include "sample/Shop.h"

namespace sample {

/// An estimate as far as its jobs need it.
struct EstimateMade {
    qint64 estNo = 0;
    qint64 custID = 0;
    QString rfqNo;
    Part part;
    QDate date;
    std::vector<estimating::OperRow> operations;
    QStringList operNotes; ///< of each operation, empty for none
    std::vector<estimating::MiscRow> fixedCosts;
    bool oneShopRate = false;
    values::Currency rate;
    int quantity = 0;
    values::Currency quotedEach;
    QString material;
};

/// `parent`: the estimate of the whole assembly; a part of it goes to the same customer. `before`:
/// the customer asks again for that part, in another quantity.
EstimateMade makeEstimate(Shop& shop, const QDate& date, const EstimateMade* parent = nullptr,
                          const EstimateMade* before = nullptr);

enum class Origin { Estimate, None, Unknown }; ///< EstNo is the number, 0, Null

/// A job with the routing of the estimate, and the hours booked on it until yesterday.
void makeJob(Shop& shop, Attendance& attendance, const EstimateMade& estimate, Origin origin,
             const JobMade* parent = nullptr);

/// A job that was deleted before anybody worked on it. What outlives a job is left.
void makeDeletedJob(Shop& shop, const EstimateMade& estimate);

} // namespace sample
