#include "sample/Sample.h"

#include "core/journal/JournalTriggers.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "sample/Shop.h"

namespace sample {

namespace {

/// A few changes of the last days, so that there is something in the journal.
void makeChanges(const Shop& shop) {
    struct Change {
        const char16_t* who;
        const char16_t* statement;
    };
    static constexpr Change changes[] = {
        {u"planner", u"UPDATE Job SET PONo = '4711-B', TravelerNotes = 'Ship with certificate' "
                     u"WHERE JobNo = (SELECT MAX(JobNo) FROM Job)"},
        {u"Admin", u"UPDATE Customer SET Terms = 'Net 45' WHERE Custid = 1"},
        {u"planner", u"UPDATE POItem SET DeliverySchedule = 'By truck, Friday' WHERE ID = (SELECT "
                     u"MAX(ID) FROM POItem)"},
        {u"Admin", u"UPDATE SystemSettings SET EstOneRate = EstOneRate + 2"},
    };
    QDateTime at(shop.today.addDays(-3), QTime(10, 12), Qt::UTC);
    for (const Change& change : changes) {
        shop.database.execute(QString::fromUtf16(change.statement));
        shop.database.execute(u"UPDATE Journal SET Who = '%1', [At] = #%2# WHERE ID = (SELECT "
                              "MAX(ID) FROM Journal)"_s.arg(QString::fromUtf16(change.who),
                                                            at.toString(u"MM/dd/yyyy hh:mm:ss"_s)));
        at = at.addSecs(22 * 60 * 60 + 291);
    }
}

} // namespace

void fill(jet::Database& database, const Options& options) {
    // Before the shift's start the day's sign-ins would lie in the future.
    const QDate today =
        options.today.isValid() ? options.today : values::now().addSecs(-7 * 3600 - 900).date();
    Shop shop{database,
              options,
              today,
              today.addYears(-options.years),
              Random(20260101),
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {}};
    jet::Transaction transaction(database);
    core::removeJournal(database); // rows that nobody entered are no changes
    makeCatalogue(shop);
    makeMasters(shop);
    makeWork(shop);
    makePurchasing(shop);
    makeInventory(shop);
    makeSent(shop);
    makeUsers(shop);
    core::installJournal(database);
    makeChanges(shop);
    transaction.commit();
}

} // namespace sample
