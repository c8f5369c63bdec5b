#include "inventory/CopyWork.h"

#include "inventory/Sql.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"

namespace inventory {

namespace {

/// The rows of a document's kind: "%1" in its columns is today.
struct Kind {
    QString table, key, columns;
    QString costs, rows, rowColumns, notes;
};

qint64 copy(jet::Database& database, const Kind& kind, qint64 source) {
    const QString from = u" WHERE "_s + kind.key + u" = "_s + num(source);
    const QString today = u"#"_s + values::sqlDate(values::today()) + u"#"_s;
    jet::Transaction transaction(database);
    if (database.execute(u"INSERT INTO "_s + kind.table + u" SELECT "_s + kind.columns.arg(today) +
                         u" FROM "_s + kind.table + from) == 0)
        return 0;
    const qint64 made = database.lastCounter();
    const QString as = u" SELECT "_s + num(made) + u" AS "_s + kind.key + u", "_s;
    database.execute(u"INSERT INTO "_s + kind.costs + as +
                     u"ItemNo, CostAmount, UnitOFMeasure, UnitPrice, Quantity FROM "_s +
                     kind.costs + from);
    database.execute(u"INSERT INTO "_s + kind.rows + as + kind.rowColumns + u" FROM "_s +
                     kind.rows + from);
    const QString notes = kind.notes, rows = kind.rows;
    database.execute(u"INSERT INTO "_s + notes + as + notes + u".SeqNo, "_s + notes +
                     u".OperNotes, "_s + rows + u".ID as ID FROM "_s + notes + u" INNER JOIN "_s +
                     rows + u" ON "_s + notes + u".SeqNo = "_s + rows + u".SeqNo WHERE "_s + notes +
                     u'.' + kind.key + u" = "_s + num(source) + u" AND "_s + rows + u'.' +
                     kind.key + u" = "_s + num(made));
    transaction.commit();
    return made;
}

} // namespace

qint64 copyJob(jet::Database& database, qint64 jobNo) {
    static const Kind job{
        u"Job"_s,
        u"JobNo"_s,
        u"CustID, PONo, Description, PartNo, Material, TravelerNotes, Quantity, JobShopRate, "
        "QtyQuotedPrice, %1 AS JobDateIn, %1 AS JobDueDate, JobShopCost, InvoiceEach, "
        "InvoiceTotal, JobNotes, OneShopRate, AssemblyJobNo, ScheduleZoom, SchedulePeriod"_s,
        u"JobMiscCost"_s,
        u"JobOper"_s,
        u"SeqNo, OperNo, OperShopRate, EstOper"_s,
        u"JobOperNote"_s};
    return copy(database, job, jobNo);
}

qint64 copyEstimate(jet::Database& database, qint64 estNo) {
    static const Kind estimate{
        u"Estimate"_s,
        u"EstNo"_s,
        u"CustID, RFQNo, PONo, Description, PartNo, Material, Quantity, %1 AS EstDate, "
        "EstShopRate, QtyBreakA, QtyBreakB, QtyBreakC, QtyBreakD, QtyBreakE, QtyDiscountA, "
        "QtyDiscountB, QtyDiscountC, QtyDiscountD, QtyDiscountE, QtyPriceA, QtyPriceB, QtyPriceC, "
        "QtyPriceD, QtyPriceE, QtyTotalA, QtyTotalB, QtyTotalC, QtyTotalD, QtyTotalE, QtyQPA, "
        "QtyQPB, QtyQPC, QtyQPD, QtyQPE, EstNotes, OneShopRate, JobNotes, TravelerNotes, "
        "AssemblyEstno"_s,
        u"EstMiscCost"_s,
        u"EstOper"_s,
        u"SeqNo, OperNo, OperTime_Amount, OperShopRate"_s,
        u"EstOperNote"_s};
    return copy(database, estimate, estNo);
}

} // namespace inventory
